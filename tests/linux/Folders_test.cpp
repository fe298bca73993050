// SPDX-License-Identifier: MIT
#include "linux/Folders.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>

#include "doubles/ScopedVariable.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

namespace fs = std::filesystem;

class Folders : public testing::Test {
 protected:
  static unsigned modeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777u : 0u;
  }

  void writeUserDirs(const std::string& lines, const std::string& configuration = ".config") const {
    fs::create_directories(folder_.file(configuration));
    std::ofstream(folder_.file(configuration) + "/user-dirs.dirs") << lines;
  }

  TemporaryFolder folder_;
  ScopedVariable home_{"HOME", folder_.path()};
  ScopedVariable configuration_{"XDG_CONFIG_HOME", std::nullopt};
};

TEST_F(Folders, theGroupContainerLiesInTheDataHomeAndIsPrivate) {
  const std::string data = folder_.path() + "/deep/data";
  const ScopedVariable dataHome("XDG_DATA_HOME", data);
  const auto container = groupContainer();
  ASSERT_TRUE(container) << container.error().description;
  EXPECT_EQ(*container, data + "/group.org.pillora.Pillora");
  EXPECT_EQ(modeOf(*container), 0700u);
  EXPECT_EQ(modeOf(data), 0700u);
  EXPECT_TRUE(groupContainer()) << "it is there already";
}

TEST_F(Folders, anEmptyOrRelativeDataHomeCountsAsNone) {
  for (const std::string value : {"", "relative/data"}) {
    const ScopedVariable dataHome("XDG_DATA_HOME", value);
    const auto container = groupContainer();
    ASSERT_TRUE(container);
    EXPECT_EQ(*container, folder_.path() + "/.local/share/group.org.pillora.Pillora");
  }
}

TEST_F(Folders, aFolderThatIsThereStaysAsItIs) {
  const std::string path = folder_.path() + "/group.org.pillora.Pillora";
  fs::create_directory(path);
  chmod(path.c_str(), 0750);
  const ScopedVariable dataHome("XDG_DATA_HOME", folder_.path());
  ASSERT_TRUE(groupContainer());
  EXPECT_EQ(modeOf(path), 0750u);
}

TEST_F(Folders, whatIsInTheWayIsAnErrorThatNamesIt) {
  const std::string file = folder_.path() + "/file";
  std::ofstream(file) << "x";
  const ScopedVariable dataHome("XDG_DATA_HOME", file);
  const auto container = groupContainer();
  ASSERT_FALSE(container);
  EXPECT_NE(container.error().description.find(file), std::string::npos);
}

TEST_F(Folders, documentsLieWhereTheDesktopHasThem) {
  const struct {
    const char* lines;
    const char* folder;  ///< below the home folder, or absolute
  } kCases[] = {
      {"XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n", "Dokumente"},
      {"# comment\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\nXDG_DOCUMENTS_DIR=\"$HOME/My \\\"papers\\\"\"", "My \"papers\""},
      {"XDG_DOCUMENTS_DIR=\"/srv/documents\"\n", "/srv/documents"},
      {"XDG_DOCUMENTS_DIR=\"$HOME/\"\n", ""},
      {"XDG_DOCUMENTS_DIR=\"$HOME/One\"\nXDG_DOCUMENTS_DIR=\"$HOME/Two\"\n", "Two"},
      {"XDG_DOCUMENTS_DIR=\"relative\"\n", "Documents"},
      {"XDG_DOCUMENTS_DIR=\"$HOMEWARD/x\"\n", "Documents"},
      {"XDG_DOCUMENTS_DIR=$HOME/Bare\n", "Documents"},
      {"#XDG_DOCUMENTS_DIR=\"$HOME/Commented\"\n", "Documents"},
      {"", "Documents"},
  };
  for (const auto& [lines, folder] : kCases) {
    writeUserDirs(lines);
    EXPECT_EQ(documentsFolder(), (fs::path(folder_.path()) / folder).string()) << lines;
  }
}

TEST_F(Folders, documentsAreNamedByTheConfigurationFolderInUse) {
  EXPECT_EQ(documentsFolder(), folder_.file("Documents")) << "no file at all";
  writeUserDirs("XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n", "configuration");
  const ScopedVariable configuration("XDG_CONFIG_HOME", folder_.file("configuration"));
  EXPECT_EQ(documentsFolder(), folder_.file("Papers"));
}

TEST_F(Folders, aPrivateFolderIsMadeWithAllThatLeadsToIt) {
  const std::string path = folder_.file("Documents/Backups");
  ASSERT_TRUE(makePrivateFolder(path));
  EXPECT_EQ(modeOf(path), 0700u);
  EXPECT_TRUE(makePrivateFolder(path)) << "it is there already";
}

TEST_F(Folders, thePagesLieBesideAProgramThatWasBuiltAndInTheDataFolderOfOneThatIsInstalled) {
  fs::create_directories(folder_.file("build/ui/pages"));
  fs::create_directories(folder_.file("usr/bin"));
  EXPECT_EQ(pagesFolder(folder_.file("build/ui/pillora")), folder_.file("build/ui/pages"));
  EXPECT_EQ(pagesFolder(folder_.file("usr/bin/pillora")), folder_.file("usr/share/pillora/pages"));
}

}  // namespace
}  // namespace pillora

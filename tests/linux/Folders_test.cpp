// SPDX-License-Identifier: MIT
#include "linux/Folders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <sys/stat.h>

#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

namespace fs = std::filesystem;

/// A variable of the environment while a test runs.
class ScopedVariable {
 public:
  ScopedVariable(std::string name, const std::string& value) : name_(std::move(name)) {
    if (const char* before = std::getenv(name_.c_str())) before_ = before;
    setenv(name_.c_str(), value.c_str(), 1);
  }
  ~ScopedVariable() {
    if (before_) {
      setenv(name_.c_str(), before_->c_str(), 1);
    } else {
      unsetenv(name_.c_str());
    }
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  std::string name_;
  std::optional<std::string> before_;
};

class Folders : public testing::Test {
 protected:
  static unsigned modeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777u : 0u;
  }

  TemporaryFolder folder_;
  ScopedVariable home_{"HOME", folder_.path()};
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

}  // namespace
}  // namespace pillora

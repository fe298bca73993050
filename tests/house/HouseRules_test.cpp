// SPDX-License-Identifier: MIT
#include "house/HouseRules.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace pillora::house {
namespace {

using Findings = std::vector<std::string>;

SourceTree treeOf(std::initializer_list<std::pair<const char*, std::string>> files) {
  SourceTree tree;
  for (const auto& [path, text] : files) tree.add(path, text);
  return tree;
}

/// What `rule` finds in one file.
Findings found(Findings (*rule)(const SourceTree&), const char* path, const std::string& text) {
  return rule(treeOf({{path, text}}));
}

struct Import {
  const char* path;
  const char* header;
  const char* finding;  ///< empty: allowed
};

TEST(HouseRules, importsThatRunBackwardsAreFound) {
  const Import imports[] = {
      {"src/support/A.h", "support/B.h", ""},
      {"src/support/A.h", "platform/Clock.h", "support must not include platform"},
      {"src/platform/A.h", "support/B.h", ""},
      {"src/model/A.h", "platform/Clock.h", ""},
      {"src/model/A.cpp", "schedule/Schedule.h", "model must not include schedule"},
      {"src/model/A.cpp", "store/ModelContext.h", "model must not include store"},
      {"src/schedule/A.cpp", "model/Medicine.h", ""},
      {"src/schedule/A.cpp", "store/ModelContext.h", "schedule must not include store"},
      {"src/store/A.cpp", "schedule/Schedule.h", "store must not include schedule"},
      {"src/notifications/A.cpp", "store/ModelContext.h", ""},
      {"src/notifications/A.cpp", "backup/BackupData.h", "notifications must not include backup"},
      {"src/screens/A.cpp", "notifications/NotificationManager.h", ""},
      {"src/screens/A.cpp", "app/PilloraApp.h", "screens must not include app"},
      {"src/screens/A.cpp", "icu/IcuCalendar.h", "screens must not include icu"},
      {"src/app/A.cpp", "screens/TodayView.h", ""},
      {"src/app/A.cpp", "linux/Folders.h", "app must not include linux"},
      {"src/cli/A.cpp", "app/PilloraApp.h", ""},
      {"src/cli/A.cpp", "icu/IcuCalendar.h", "cli must not include icu"},
      {"src/cli/A.cpp", "ui/Bridge.h", "cli must not include ui"},
      {"src/cli/main.cpp", "icu/IcuCalendar.h", ""},
      {"src/ui/main.cpp", "agent/AgentClient.h", ""},
      {"src/agent/main.cpp", "linux/Folders.h", ""},
      {"src/agent/main.cpp", "icu/IcuCalendar.h", "agent must not include icu"},
      {"src/agent/A.cpp", "model/Medicine.h", "agent must not include model"},
      {"src/icu/A.cpp", "model/Medicine.h", "icu must not include model"},
      {"src/linux/A.cpp", "icu/IcuTexts.h", "linux must not include icu"},
      {"src/model/A.cpp", "Medicine.h", "an include names the room it comes from"},
      {"src/model/A.cpp", "../store/ModelContext.h", "an include names the room it comes from"},
      {"src/attic/A.cpp", "support/UUID.h", "\"attic\" is no room of the table"},
  };
  for (const auto& [path, header, finding] : imports) {
    const Findings expected = *finding == 0 ? Findings{} : Findings{std::string(path) + ":2: " + finding};
    EXPECT_EQ(found(backwardImports, path, "#pragma once\n #  include \"" + std::string(header) + "\"\n"), expected);
  }
}

TEST(HouseRules, testsMayIncludeAnyRoom) {
  EXPECT_EQ(found(backwardImports, "tests/support/A_test.cpp", "#include \"cli/Command.h\"\n"), Findings{});
}

TEST(HouseRules, foreignLibrariesOutsideTheirRoomAreFound) {
  const Import imports[] = {
      {"src/icu/A.cpp", "unicode/calendar.h", ""},
      {"src/icu/A.cpp", "boost/locale/gnu_gettext.hpp", ""},
      {"src/cli/A.cpp", "boost/locale/gnu_gettext.hpp", "boost/locale/gnu_gettext.hpp has no place in cli"},
      {"src/model/A.cpp", "unicode/calendar.h", "unicode/calendar.h has no place in model"},
      {"src/cli/main.cpp", "unicode/calendar.h", "unicode/calendar.h has no place in cli"},
      {"src/store/A.cpp", "SQLiteCpp/Database.h", ""},
      {"src/agent/A.cpp", "sqlite3.h", ""},
      {"src/schedule/A.cpp", "sqlite3.h", "sqlite3.h has no place in schedule"},
      {"src/linux/A.cpp", "systemd/sd-bus.h", ""},
      {"src/store/A.cpp", "systemd/sd-event.h", "systemd/sd-event.h has no place in store"},
      {"src/ui/A.cpp", "QString", ""},
      {"src/screens/A.h", "QString", "QString has no place in screens"},
      {"src/screens/A.h", "QtCore/QString", "QtCore/QString has no place in screens"},
      {"src/cli/A.cpp", "CLI/CLI.hpp", ""},
      {"src/app/A.cpp", "CLI/CLI.hpp", "CLI/CLI.hpp has no place in app"},
      {"src/support/Json.h", "nlohmann/json.hpp", ""},
      {"src/cli/A.cpp", "nlohmann/json.hpp", "nlohmann/json.hpp has no place in cli"},
      {"src/schedule/A.cpp", "libical/ical.h", "libical/ical.h has no place in schedule"},
      {"src/schedule/A.cpp", "gtest/gtest.h", "gtest/gtest.h has no place in schedule"},
      {"src/schedule/A.cpp", "vector", ""},
      {"src/linux/A.cpp", "sys/stat.h", ""},
      {"tests/store/A_test.cpp", "sqlite3.h", ""},
  };
  for (const auto& [path, header, finding] : imports) {
    const Findings expected = *finding == 0 ? Findings{} : Findings{std::string(path) + ":1: " + finding};
    EXPECT_EQ(found(foreignLibraries, path, "#include <" + std::string(header) + ">\n"), expected) << header;
  }
}

TEST(HouseRules, aForeignLibraryInQuotesIsFoundToo) {
  EXPECT_EQ(found(foreignLibraries, "src/model/A.cpp", "#include \"sqlite3.h\"\n").size(), 1U);
}

TEST(HouseRules, theCoreReadingItsSurroundingsIsFound) {
  for (const char* code : {"std::getenv(\"HOME\")", "std::chrono::system_clock::now()", "std::time(nullptr)",
                           "std::cout << 1", "std::setlocale(LC_ALL, \"\")", "std::printf(\"\")"}) {
    EXPECT_EQ(found(ambientReads, "src/screens/A.cpp", code).size(), 1U) << code;
    EXPECT_EQ(found(ambientReads, "src/cli/A.cpp", code), Findings{}) << code;
    EXPECT_EQ(found(ambientReads, "src/screens/A.cpp", "// no " + std::string(code)), Findings{}) << code;
  }
  EXPECT_EQ(found(ambientReads, "src/support/A.cpp", "std::snprintf(buffer, 4, \"\");"), Findings{});
}

TEST(HouseRules, aMissingLicenceLineIsFound) {
  const std::string cpp = "// SPDX-License-Identifier: MIT\n", hash = "# SPDX-License-Identifier: MIT\n";
  EXPECT_EQ(found(missingLicences, "src/a/A.cpp", cpp), Findings{});
  EXPECT_EQ(found(missingLicences, "src/ui/qml/A.qml", "import QtQuick\n"), Findings{"src/ui/qml/A.qml:1: no licence"});
  EXPECT_EQ(found(missingLicences, "src/a/A.h", "\n" + cpp), Findings{"src/a/A.h:1: no licence"});
  EXPECT_EQ(found(missingLicences, "src/a/A.cpp", ""), Findings{"src/a/A.cpp:1: no licence"});
  EXPECT_EQ(found(missingLicences, "cmake/A.cmake", hash), Findings{});
  EXPECT_EQ(found(missingLicences, "src/CMakeLists.txt", cpp), Findings{"src/CMakeLists.txt:1: no licence"});
  EXPECT_EQ(found(missingLicences, "run", "#!/bin/bash\n" + hash), Findings{});
  EXPECT_EQ(found(missingLicences, "run", "#!/bin/bash\n\n" + hash), Findings{"run:2: no licence"});
  EXPECT_EQ(found(missingLicences, "README.md", "# Pillora\n"), Findings{});
}

TEST(HouseRules, aHeaderWithoutPragmaOnceIsFound) {
  EXPECT_EQ(found(missingPragmas, "src/a/A.h", "// a\n#pragma once\n"), Findings{});
  EXPECT_EQ(found(missingPragmas, "src/a/A.h", "// a\n// #pragma once\n"), Findings{"src/a/A.h:1: no #pragma once"});
  EXPECT_EQ(found(missingPragmas, "src/a/A.cpp", "// a\n"), Findings{});
}

TEST(HouseRules, aSourceThatNoBuildFileNamesIsFound) {
  const std::string lists = "# Off.cpp\npillora_room(a SOURCES A.cpp\n  deep/B.cpp ../other/C.cpp)\n";
  const SourceTree tree = treeOf({{"src/a/CMakeLists.txt", lists},
                                  {"src/a/A.cpp", ""},
                                  {"src/a/deep/B.cpp", ""},
                                  {"src/other/C.cpp", ""},
                                  {"src/a/Off.cpp", ""},
                                  {"src/b/A.cpp", ""},
                                  {"src/a/NoA.cpp", ""}});
  EXPECT_EQ(unlistedSources(tree),
            (Findings{"src/a/Off.cpp:1: in no CMakeLists.txt", "src/b/A.cpp:1: in no CMakeLists.txt",
                      "src/a/NoA.cpp:1: in no CMakeLists.txt"}));
}

TEST(HouseRules, globbingIsFound) {
  EXPECT_EQ(found(globbing, "src/CMakeLists.txt", "\nfile(GLOB sources *.cpp)\n").size(), 1U);
  EXPECT_EQ(found(globbing, "cmake/A.cmake", "file( GLOB_RECURSE sources *.cpp)\n").size(), 1U);
  EXPECT_EQ(found(globbing, "src/CMakeLists.txt", "aux_source_directory(. sources)\n").size(), 1U);
  EXPECT_EQ(found(globbing, "src/CMakeLists.txt", "# no GLOB here\nadd_library(GLOBAL a.cpp)\n"), Findings{});
}

TEST(HouseRules, aFileOfMoreThan400LinesIsFound) {
  std::string text;
  for (int line = 0; line < 400; ++line) text += "\n";
  EXPECT_EQ(found(longFiles, "src/a/A.cpp", text), Findings{});
  EXPECT_EQ(found(longFiles, "src/a/A.cpp", text + "\n"), Findings{"src/a/A.cpp:401: too long"});
  EXPECT_EQ(found(longFiles, "tests/data/history.json", text + "\n"), Findings{});
}

TEST(HouseRules, aDocumentThatNamesAMissingPathIsFound) {
  const SourceTree tree = treeOf({{"run", ""},
                                  {"src/a/A.h", ""},
                                  {"docs/guide.md",
                                   "See `src/a/A.h`, src/a/, ./run. Not build/release/x or src/<room>/B.h.\n"
                                   "`src/a/B.h` and [other](other.md#part), [far](https://pillora.org/docs/x)\n"
                                   "| `./walk` | [up](../src/a) [gone](../src/b) | tests/\n"}});
  EXPECT_EQ(missingDocumentPaths(tree),
            (Findings{"docs/guide.md:2: there is no src/a/B.h", "docs/guide.md:2: there is no docs/other.md",
                      "docs/guide.md:3: there is no walk", "docs/guide.md:3: there is no tests",
                      "docs/guide.md:3: there is no src/b"}));
}

TEST(HouseRules, forbiddenWordsAreFound) {
  const std::string unfinished = std::string("TO") + "DO", paper = std::string("the sp") + "ec";
  for (const std::string& line :
       {"// " + unfinished + ": later", "// " + unfinished, "int a;  // NO" + std::string("LINTNEXTLINE(x)"),
        "TEST(A, DISABLED" + std::string("_b) {}"), "GTEST" + std::string("_SKIP();"), "as " + paper + " says",
        "cd /ro" + std::string("ot/pillora"), "X" + std::string("XX fix")}) {
    EXPECT_EQ(found(forbiddenWords, "src/a/A.cpp", line).size(), 1U) << line;
  }
  // Not to be found: words that hold a forbidden one, and the X of a name that mkdtemp fills in.
  for (const std::string& line : {"auto" + unfinished, "name" + std::string("XXXXXX"), paper + "ial case",
                                  std::string("the notification specification"), std::string("Todo")}) {
    EXPECT_EQ(found(forbiddenWords, "README.md", line), Findings{}) << line;
  }
}

class SourceTreeOnDisk : public testing::Test {
 protected:
  SourceTreeOnDisk() {
    std::string pattern = testing::TempDir() + "pillora-house-XXXXXX";  // mkdtemp puts a random name there
    root_ = mkdtemp(pattern.data());
  }
  ~SourceTreeOnDisk() override { std::filesystem::remove_all(root_); }

  void write(const std::string& path, const std::string& text) {
    std::filesystem::create_directories((root_ / path).parent_path());
    std::ofstream(root_ / path) << text;
  }

  std::filesystem::path root_;
};

TEST_F(SourceTreeOnDisk, isReadWithoutBuildFoldersAndHiddenOnes) {
  for (const char* path : {"src/a/A.cpp", ".ci/run", ".gitignore", ".git/config", ".cache/x", "build/core/A.cpp",
                           "out/CMakeCache.txt", "out/A.cpp"}) {
    write(path, "one\n\nthree");
  }
  const SourceTree tree = SourceTree::read(root_);
  std::vector<std::string> paths;
  for (const SourceFile& file : tree.files()) {
    paths.push_back(file.path);
    EXPECT_EQ(file.lines, (std::vector<std::string>{"one", "", "three"})) << file.path;
  }
  EXPECT_EQ(paths, (std::vector<std::string>{".ci/run", ".gitignore", "src/a/A.cpp"}));
  EXPECT_TRUE(tree.contains("src/a"));
  EXPECT_TRUE(tree.contains("src/a/A.cpp"));
  EXPECT_FALSE(tree.contains("src/a/A"));
}

TEST_F(SourceTreeOnDisk, linesOfDataAreNotRead) {
  write("tests/data/old.json", "{}\n");
  write("assets/pill.png", "x\n");
  write("LICENSE", "x\n");
  const SourceTree tree = SourceTree::read(root_);
  EXPECT_EQ(tree.files().size(), 3U);
  for (const SourceFile& file : tree.files()) EXPECT_TRUE(file.lines.empty()) << file.path;
}

TEST_F(SourceTreeOnDisk, aFolderThatIsNotThereIsAnError) {
  EXPECT_THROW(SourceTree::read(root_ / "none"), std::filesystem::filesystem_error);
}

}  // namespace
}  // namespace pillora::house

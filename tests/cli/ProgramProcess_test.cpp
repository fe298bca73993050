// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

#include "cli/CliFixture.h"
#include "doubles/ChildProcess.h"

namespace pillora {
namespace {

namespace fs = std::filesystem;

/// The installed program as a shell sees it, in an environment of its own.
class ProgramProcess : public ::testing::Test {
 protected:
  ChildProcess start(const Words& words, const Words& environment = {}) {
    return ChildProcess(
        Words{PILLORACTL} + words,
        Words{"HOME=" + folder.path(), "XDG_DATA_HOME=" + folder.path() + "/data", "TZ=UTC", "LC_ALL=en_US.UTF-8"} +
            environment);
  }
  ChildProcess::Result run(const Words& words, const Words& environment = {}) {
    return start(words, environment).finish();
  }
  Words inStore(const Words& words) const {
    return Words{"--json",      "--store", folder.path() + "/S", "--now", "2025-01-10T10:30:00Z",
                 "--time-zone", "UTC",     "--locale",           "en_US"} +
           words;
  }

  TemporaryFolder folder;
};

mode_t modeOf(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

TEST_F(ProgramProcess, statusesAndStreams) {
  const auto good = run(inStore({"today"}));
  EXPECT_EQ(good.status, 0);
  EXPECT_EQ(good.err, "");
  EXPECT_TRUE(parseJson(good.out));
  const auto refused = run(inStore({"take", "Nobody"}));
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.err, "pilloractl: no medicine fits 'Nobody'\n");
  const auto wrong = run({"--now", "2025-01-10T10:30:00Z", "today"});
  EXPECT_EQ(wrong.status, 2);
  EXPECT_EQ(wrong.out, "");
  EXPECT_EQ(wrong.err, "pilloractl: --now works only together with --store\n");
}

TEST_F(ProgramProcess, theLanguageIsThatOfTheEnvironmentButForJson) {
  const Words german = {"LANGUAGE=de"};
  EXPECT_EQ(run({"medicines"}, german).out.substr(0, 11), "Medikamente");
  EXPECT_EQ(run({"--help"}, german).out.substr(0, 19), "Pillora im Terminal");
  EXPECT_EQ(run({"--language", "fr", "medicines"}, german).out.substr(0, 12), "Médicaments");
  EXPECT_EQ(run({"--language", "en", "medicines"}, german).out.substr(0, 9), "Medicines");
  EXPECT_EQ(parseJson(run({"--json", "medicines"}, german).out)->at("title"), "Medicines");
  EXPECT_EQ(parseJson(run({"--json", "--language", "de", "medicines"}, german).out)->at("title"), "Medikamente");
}

TEST_F(ProgramProcess, theAppsOwnStoreLiesInAPrivateFolder) {
  ASSERT_EQ(run({"add", "Aspirin"}).status, 0);
  const std::string container = folder.path() + "/data/group.org.pillora.Pillora";
  EXPECT_EQ(modeOf(folder.path() + "/data"), 0700u);
  EXPECT_EQ(modeOf(container), 0700u);
  EXPECT_EQ(modeOf(container + "/Pillora.store"), 0600u);
  EXPECT_NE(run({"medicines"}).out.find("Aspirin"), std::string::npos);
}

TEST_F(ProgramProcess, withoutAnAbsoluteXdgDataHomeTheStoreLiesBelowHome) {
  for (const std::string value : {"XDG_DATA_HOME=", "XDG_DATA_HOME=relative", "UNRELATED="}) {
    const std::string home = folder.path() + "/home of " + value;
    ChildProcess program({PILLORACTL, "today"}, {"HOME=" + home, value, "TZ=UTC"});
    ASSERT_EQ(program.finish().status, 0);
    EXPECT_TRUE(fs::exists(home + "/.local/share/group.org.pillora.Pillora/Pillora.store")) << value;
  }
}

TEST_F(ProgramProcess, aStoreThatCannotBeOpenedIsLeftUntouched) {
  const std::string junk(5000, 'j');
  std::ofstream(folder.path() + "/S") << junk;
  const auto result = run(inStore({"add", "Aspirin"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(result.err.starts_with("pilloractl: Could not create ModelContainer: ")) << result.err;
  EXPECT_EQ(result.err.find('\n'), result.err.size() - 1);
  std::ifstream file(folder.path() + "/S");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), junk);
}

TEST_F(ProgramProcess, aFolderInPlaceOfTheStoreIsARefusal) {
  fs::create_directory(folder.path() + "/S");
  const auto result = run(inStore({"today"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.starts_with("pilloractl: Could not create ModelContainer: ")) << result.err;
}

TEST_F(ProgramProcess, manyTakesOfOneDoseAtOnceMakeOneLog) {
  ASSERT_EQ(run(inStore({"add", "Aspirin", "--daily", "08:00"})).status, 0);
  std::vector<ChildProcess> children;
  for (int i = 0; i < 8; ++i) children.push_back(start(inStore({"take", "Aspirin", "2025-01-10T08:00:00Z"})));
  int recorded = 0;
  for (ChildProcess& child : children) {
    const auto result = child.finish();
    ASSERT_EQ(result.status, 0) << result.err;
    if (!(*parseJson(result.out)).at("log").is_null()) ++recorded;
  }
  EXPECT_EQ(recorded, 1);
  EXPECT_EQ((*parseJson(run(inStore({"logs"})).out)).at("logs").size(), 1u);
}

TEST_F(ProgramProcess, twoMarkingsAtOnceWriteEachMissedDoseOnce) {
  ASSERT_EQ(run(inStore({"add", "Aspirin", "--daily", "08:00", "--start", "2025-01-01T00:00:00Z"})).status, 0);
  std::vector<ChildProcess> children;
  for (int i = 0; i < 4; ++i) children.push_back(start(inStore({"mark-missed"})));
  int64_t marked = 0;
  for (ChildProcess& child : children) {
    const auto result = child.finish();
    ASSERT_EQ(result.status, 0) << result.err;
    marked += (*parseJson(result.out)).at("missed").get<int64_t>();
  }
  EXPECT_EQ(marked, 7);
  EXPECT_EQ((*parseJson(run(inStore({"logs"})).out)).at("logs").size(), 7u);
}

TEST_F(ProgramProcess, remindersAreKeptFromProcessToProcess) {
  const Words file = {"--reminders", folder.path() + "/R"};
  ASSERT_EQ(run(file + inStore({"add", "Aspirin", "--daily", "22:30"})).status, 0);
  EXPECT_EQ((*parseJson(run(file + inStore({"reminders"})).out)).at("requests").size(), 60u);
  EXPECT_EQ(modeOf(folder.path() + "/R"), 0600u);
  EXPECT_TRUE((*parseJson(run(inStore({"reminders"})).out)).at("requests").empty()) << "without the file";
  ASSERT_EQ(run(file + inStore({"delete", "Aspirin"})).status, 0);
  EXPECT_TRUE((*parseJson(run(file + inStore({"reminders"})).out)).at("requests").empty());
}

TEST_F(ProgramProcess, theSessionsOwnRemindersLieInThePrivateStateFolder) {
  ASSERT_EQ(run({"add", "Aspirin"}, {"XDG_STATE_HOME=" + folder.path() + "/state"}).status, 0);
  EXPECT_EQ(modeOf(folder.path() + "/state/pillora"), 0700u);
  EXPECT_EQ(modeOf(folder.path() + "/state/pillora/reminders.db"), 0600u);
  ASSERT_EQ(run({"today"}).status, 0);
  EXPECT_FALSE(fs::exists(folder.path() + "/.local/state")) << "a command that plans nothing opens none";
}

TEST_F(ProgramProcess, aReminderFileThatCannotBeUsedIsARefusalAndNothingIsStored) {
  const std::string junk(5000, 'j');
  std::ofstream(folder.path() + "/R") << junk;
  const auto result = run(Words{"--reminders", folder.path() + "/R"} + inStore({"add", "Aspirin"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(result.err.starts_with("pilloractl: the reminders cannot be opened: ")) << result.err;
  EXPECT_TRUE((*parseJson(run(inStore({"medicines"})).out)).at("sections").empty());
}

TEST_F(ProgramProcess, manyAddsAtOnceAreAllKept) {
  std::vector<ChildProcess> children;
  for (int i = 0; i < 6; ++i) children.push_back(start(inStore({"add", "M" + std::to_string(i)})));
  for (ChildProcess& child : children)
    ASSERT_EQ(child.finish().status, 0) << "the store is made by whoever comes first";
  EXPECT_EQ((*parseJson(run(inStore({"medicines"})).out)).at("sections").at(0).at("rows").size(), 6u);
}

TEST_F(ProgramProcess, argumentsThatAreNoTextAreRefused) {
  const auto result = run(inStore({"add", "\xFF\xFE"}));
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "pilloractl: argument 11 is not UTF-8 text\n");
}

TEST_F(ProgramProcess, pipedTextHasNoColours) {
  run(inStore({"add", "Aspirin", "--daily", "08:00"}));
  const auto result = run({"--store", folder.path() + "/S", "today"}, {"TERM=xterm-256color"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out.find('\x1b'), std::string::npos);
}

TEST_F(ProgramProcess, outputThatCannotBeWrittenIsAFailure) {
  ChildProcess shell({"/bin/sh", "-c", "exec \"$0\" --version > /dev/full", PILLORACTL}, {"HOME=" + folder.path()});
  const auto result = shell.finish();
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "pilloractl: standard output cannot be written\n");
}

}  // namespace
}  // namespace pillora

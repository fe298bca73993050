// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>

#include "cli/CliFixture.h"
#include "cli/CommandLine.h"
#include "cli/DisplayText.h"

namespace pillora {
namespace {

class Usage : public Cli {};

constexpr const char* kInterval =
    R"({"type":"Custom","hourlyInterval":4,"dailyTimes":[],"weeklyDays":[],"weeklyTime":{},"monthlyDays":[],)"
    R"("monthlyTime":{},"customIntervalMinutes":90})";

TEST_F(Usage, wrongUsageIsStatusTwoAndOneLine) {
  const std::vector<Words> wrong = {
      {},
      {"--json"},
      {"--nonsense"},
      {"--nonsense", "today"},
      {"--store"},
      {"--store", "a", "--store", "b", "today"},
      {"--store", "", "today"},
      {"tomorrow"},
      {"Today"},
      {"tod"},
      {"today", "more"},
      {"today", "--json"},
      {"upcoming", "more"},
      {"medicines", "more"},
      {"medicines", "--search"},
      {"add"},
      {"add", "A", "B"},
      {"add", "A", "--unit"},
      {"add", "A", "--size", "3"},
      {"add", "A", "--unit", "pill", "--unit", "ml"},
      {"delete"},
      {"delete", "A", "B"},
      {"take"},
      {"take", "A", "2025-01-10T08:00Z", "more"},
      {"skip"},
      {"undo"},
      {"undo", "12"},
      {"undo", "{6F9619FF-8B86-D011-B42D-00CF4FC964FF}"},
      {"undo", "6F9619FF8B86D011B42D00CF4FC964FF"},
      {"logs", "A", "B"},
      {"next"},
      {"next", "--interval", kInterval, "--count", "x"},
      {"next", "--interval", kInterval, "--count", "-1"},
      {"next", "--interval", kInterval, "--count", "1.5"},
      {"next", "--interval", kInterval, "--count", "1000001"},
      {"next", "--interval", kInterval, "--after", "today"},
      {"--reminders", "today"},
      {"--reminders", "", "today"},
      {"today", "--reminders", "R"},
      {"launch", "more"},
      {"mark-missed", "more"},
      {"run-task"},
      {"run-task", "a", "b"},
      {"reminders", "A", "B"},
      {"snooze"},
      {"snooze", "A", "B"},
      {"edit"},
      {"edit", "A", "B"},
      {"edit", "A", "--end", "2025-01-10T08:00Z"},
      {"edit", "A", "--daily", "08:00"},
      {"edit", "A", "--active", "perhaps"},
      {"edit", "A", "--max-snooze", "many"},
      {"edit", "A", "--start", "2025-01-10"},
      {"completion"},
      {"completion", "tcsh"},
      {"completion", "bash", "zsh"},
      // Commands that this program does not know.
      {"help"},
      {"histories"},
  };
  for (const Words& words : wrong) EXPECT_TRUE(run(words).failedWith(kWrongUsage)) << ::testing::PrintToString(words);
  EXPECT_FALSE(std::filesystem::exists(store)) << "wrong usage opens no store";
}

TEST_F(Usage, malformedInstantsAreWrongUsage) {
  for (const std::string text : {"2025-01-10", "08:00", "2025-01-10T25:00Z", "2025-01-10T24:00:00Z",
                                 "2025-02-30T08:00:00Z", "2025-01-10T08:00:60Z", "2025-1-10T08:00Z", "now", "",
                                 "2025-01-10T08:00:00.1234567Z", "2025-01-10T08:00:00+1", " 2025-01-10T08:00:00Z"}) {
    EXPECT_TRUE(run({"--store", store, "--now", text, "today"}).failedWith(kWrongUsage)) << text;
    EXPECT_TRUE(run({"take", "A", text}).failedWith(kWrongUsage)) << text;
    EXPECT_TRUE(run({"skip", "A", text}).failedWith(kWrongUsage)) << text;
    EXPECT_TRUE(run({"add", "A", "--start", text}).failedWith(kWrongUsage)) << text;
    EXPECT_TRUE(run({"add", "A", "--end", text}).failedWith(kWrongUsage)) << text;
    EXPECT_TRUE(run({"next", "--interval", kInterval, "--after", text}).failedWith(kWrongUsage)) << text;
  }
}

TEST_F(Usage, nowNeedsAStore) {
  for (const Words& command : {Words{"today"}, {"next", "--interval", kInterval}, {"completion", "bash"}}) {
    EXPECT_TRUE(run(Words{"--now", "2025-01-10T08:00:00Z"} + command).failedWith(kWrongUsage));
    EXPECT_EQ(run(Words{"--store", store, "--now", "2025-01-10T08:00:00Z"} + command).status, kDone);
  }
}

TEST_F(Usage, nowIsTheInstantOfTheCall) {
  const auto today = json({"--store", store, "--now", "2025-06-01T20:15:00Z", "--time-zone", "UTC", "add", "Aspirin"});
  ASSERT_TRUE(today.contains("id"));
  EXPECT_EQ(json({"--store", store, "--now", "2025-06-01T20:15:00Z", "today"}).at("date"), "Sunday, June 1, 2025");
  EXPECT_EQ(json({"--store", store, "--now", "2025-06-01T20:15:00Z", "today"}).at("greeting"), "Good Evening");
}

TEST_F(Usage, unknownZonesLocalesAndLanguagesAreRefusedByName) {
  const std::vector<std::pair<std::string, std::string>> unknown = {
      {"--time-zone", "Mars/Olympus"}, {"--time-zone", "GMT+2"},     {"--time-zone", ""},
      {"--locale", "xx_YY"},           {"--locale", "no locale"},    {"--locale", "en_US@calendar=martian"},
      {"--language", "tlh"},           {"--language", "no language"}};
  for (const auto& [option, name] : unknown) {
    const Called called = run({option, name, "today"});
    EXPECT_TRUE(called.failedWith(kWrongUsage)) << option << ' ' << name;
    EXPECT_NE(called.lines.at(0).find(name), std::string::npos) << option << ' ' << name;
  }
}

TEST_F(Usage, invalidUtf8IsRefusedAndStaysOffTheTerminal) {
  for (const std::string bytes : {"\xFF", "a\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
    for (const Words& words : {Words{"add", bytes},
                               {"take", bytes},
                               {"medicines", "--search", bytes},
                               {bytes},
                               {"add", "A", "--dosage", bytes},
                               {"--locale", bytes, "today"}}) {
      const Called called = run(words);
      ASSERT_TRUE(called.failedWith(kWrongUsage));
      EXPECT_TRUE(isUtf8(called.lines[0]));
    }
  }
}

TEST_F(Usage, aStoresNameMayBeAnyBytes) {
  store = folder.path() + "/\xFF";
  EXPECT_EQ(run({"--store", store, "today"}).status, kDone);
  EXPECT_TRUE(std::filesystem::exists(store));
}

TEST_F(Usage, aStoresNameHasNoMeaningToTheDatabase) {
  const auto former = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  for (const std::string name : {":memory:", "file:x?mode=memory"}) {
    EXPECT_EQ(run({"--store", name, "add", "Aspirin"}).status, kDone);
    EXPECT_TRUE(std::filesystem::exists(folder.path() + "/" + name)) << name;
  }
  std::filesystem::current_path(former);
}

TEST_F(Usage, wrongUsageComesBeforeARefusal) {
  EXPECT_TRUE(run({"take", "Nobody", "yesterday"}).failedWith(kWrongUsage));
  EXPECT_TRUE(run({"add", "A", "--unit", "barrel", "--start", "soon"}).failedWith(kWrongUsage));
  EXPECT_TRUE(run({"add", " ", "--active", "maybe"}).failedWith(kWrongUsage));
}

TEST_F(Usage, whyAValueIsRefusedIsSaidInTheLanguageOfTheCall) {
  ASSERT_EQ(run({"add", "Aspirin", "--allow-snooze", "no", "--active", "no"}).status, kDone);
  ASSERT_EQ(run({"add", "Aspirin Forte"}).status, kDone);
  const std::string unknown = "6F9619FF-8B86-D011-B42D-00CF4FC964FF";
  for (const Words& call : {Words{"take", "Nobody"},
                            {"take", ""},
                            {"take", "asp"},
                            {"take", "aspirin"},
                            {"take", "aspirin", "soon"},
                            {"snooze", "aspirin"},
                            {"undo", "x"},
                            {"undo", unknown},
                            {"mark", unknown, "lost"},
                            {"add", " "},
                            {"add", "A", "--unit", "barrel"},
                            {"add", "A", "--active", "maybe"},
                            {"add", "A", "--max-snooze", "many"},
                            {"add", "A", "--max-snooze", "11"},
                            {"add", "A", "--custom", "1:03"},
                            {"add", "A", "--custom", "8"},
                            {"add", "A", "--daily", "8"},
                            {"add", "A", "--daily", "24:00"},
                            {"add", "A", "--monthly", "32@08:00"},
                            {"add", "A", "--weekly", "Monday"},
                            {"settings", "set", "weekStartDay"},
                            {"settings", "set", "colour", "red"},
                            {"settings", "set", "weekStartDay", "3"},
                            {"settings", "set", "weekStartDay", "Monday"},
                            {"settings", "set", "use24HourTime", "maybe"},
                            {"settings", "set", "defaultMaxSnoozeCount", "11"},
                            {"history", "--range", "year"},
                            {"history", "--filter", "late"},
                            {"backup", "delete", "none.json"}}) {
    const Called english = run(call), pseudo = run(Words{"--language", "en-XA"} + call);
    const std::string words = testing::PrintToString(call);
    ASSERT_TRUE(english.failedWith(english.status)) << words << english.status;
    EXPECT_TRUE(pseudo.failedWith(english.status)) << words;
    EXPECT_NE(pseudo.lines, english.lines) << words;
    EXPECT_EQ(run(Words{"--json"} + call).lines, english.lines) << words;
  }
  EXPECT_EQ(run({"--language", "en-XA", "take", "Nobody"}).lines,
            Words{"pilloractl: ñö~ méðîçîñé~~~~ fîţš~~ 'Nobody'"});
}

TEST_F(Usage, errorLinesAreHarmlessToATerminal) {
  const Called called = run({"delete", "evil\x1b[2Jname\nsecond line\u202E"});
  ASSERT_TRUE(called.failedWith(kRefused));
  EXPECT_EQ(called.lines[0], "pilloractl: no medicine fits 'evil\uFFFD[2Jname second line\uFFFD'");
}

TEST_F(Usage, helpIsPrintedForTheProgramAndEachCommandWithin80Columns) {
  const Words commands = {"",       "today",       "upcoming", "medicines", "add",    "delete",
                          "launch", "mark-missed", "run-task", "reminders", "snooze", "edit",
                          "take",   "skip",        "undo",     "logs",      "next",   "completion"};
  for (const std::string& command : commands) {
    const Called help = run(command.empty() ? Words{"--help"} : Words{command, "--help"});
    EXPECT_EQ(help.status, kDone);
    EXPECT_TRUE(help.lines.empty());
    EXPECT_NE(help.out.find("pilloractl " + (command.empty() ? "[OPTIONS] COMMAND" : command)), std::string::npos);
    std::istringstream lines(help.out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(displayWidth(line), 80u) << line;
  }
  EXPECT_EQ(run({"--version"}).out, "pilloractl 1.0.0\n");
}

TEST_F(Usage, everyWordOfTheHelpHasItsLanguage) {
  for (const CommandWords& command : knownWords(*textsOf("en_US", "UTC"))) {
    const Words words = command.name.empty() ? Words{"--help"} : Words{command.name, "--help"};
    const Called help = run(Words{"--language", "en-XA"} + words);
    EXPECT_EQ(help.status, kDone);
    for (const OptionWords& option : command.options) {
      EXPECT_NE(help.out.find(option.name), std::string::npos) << option.name;
      EXPECT_EQ(help.out.find(option.description), std::string::npos) << option.description;
    }
    for (const std::string heading : {"Usage:", "Options:", "Commands:", "Arguments:", "Examples:"}) {
      EXPECT_EQ(help.out.find(heading), std::string::npos) << heading;
    }
    const std::string about = command.name.empty() ? "your medicines" : command.description;
    EXPECT_EQ(help.out.find(about), std::string::npos) << about;
  }
}

TEST_F(Usage, helpInAnUnknownLanguageIsRefused) {
  EXPECT_TRUE(run({"--language", "tlh", "--help"}).failedWith(kWrongUsage));
}

TEST_F(Usage, aMissingFolderOfTheStoreIsARefusalInTheAppsOwnWords) {
  const Called called = run({"--store", folder.path() + "/none/S", "today"});
  ASSERT_TRUE(called.failedWith(kRefused));
  EXPECT_TRUE(called.lines[0].starts_with("pilloractl: Could not create ModelContainer: ")) << called.lines[0];
}

}  // namespace
}  // namespace pillora

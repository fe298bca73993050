// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"
#include "cli/DisplayText.h"

namespace pillora {
namespace {

constexpr const char* kEveryTenMinutes =
    R"({"type":"Custom","hourlyInterval":4,"dailyTimes":[],"weeklyDays":[],"weeklyTime":{},"monthlyDays":[],)"
    R"("monthlyTime":{},"customIntervalMinutes":10})";

class HistoryCommands : public Cli {
 protected:
  /// A dose taken and one skipped, today and the day before, and the missed ones of Vitamin D in between.
  void addTypicalDays() {
    add({"Aspirin", "--daily", "08:00", "--start", "2025-01-10T00:00Z"});
    run({"take", "Aspirin", "2025-01-10T08:00Z"});
    run({"skip", "Aspirin", "2025-01-09T08:00Z"});
    add({"Vitamin D", "--daily", "09:00", "--start", "2025-01-08T00:00Z"});
    run({"mark-missed"});
  }
  std::string idOf(const std::string& status) {
    const Json all = logs();
    for (const Json& log : all) {
      if (log.at("statusRaw") == status) return log.at("id");
    }
    return "";
  }
  Words counts(const Words& options) {
    Words counts;
    const Json history = json(Words{"history"} + options);
    for (const Json& day : history.at("days")) counts.push_back(day.at("count"));
    return counts;
  }
  /// What `history` prints, with plain blanks, identifiers as "<id>".
  std::string printed(const Words& options) {
    std::string text = plainBlanks(run(Words{"history"} + options).out);
    const Json all = logs();
    for (const Json& log : all) {
      const std::string id = log.at("id");
      for (size_t at = 0; (at = text.find(id)) != std::string::npos;) text.replace(at, id.size(), "<id>");
    }
    return text;
  }
};

TEST_F(HistoryCommands, jsonMemberByMember) {
  addTypicalDays();
  const Json history = json({"history"});
  ASSERT_TRUE(hasMembers(history, {"title", "range", "filter", "adherence", "stats", "days", "empty"}));
  EXPECT_EQ(history.at("title"), "History");
  EXPECT_EQ(history.at("range"), "Week");
  EXPECT_EQ(history.at("filter"), "All");
  EXPECT_EQ(history.at("adherence").at("rate"), 0.25);
  EXPECT_EQ(history.at("adherence").at("percent"), 25);
  EXPECT_EQ(history.at("adherence").at("message"), "Needs improvement");
  EXPECT_EQ(history.at("adherence").at("color"), "red");
  ASSERT_EQ(history.at("stats").size(), 3u);
  EXPECT_EQ(history.at("stats").at(1),
            Json::object({{"value", 2}, {"label", "Missed"}, {"icon", "xmark.circle.fill"}, {"color", "red"}}));
  EXPECT_EQ(counts({}), (Words{"1/1", "0/2", "0/1"}));
  EXPECT_TRUE(history.at("empty").is_null());
  const Json log = history.at("days").at(0).at("logs").at(0);
  ASSERT_TRUE(hasMembers(
      log, {"id", "name", "status", "symbol", "color", "timeText", "timing", "timingColor", "canTake", "canSkip"}));
  EXPECT_EQ(log.at("id"), idOf("Taken"));
  EXPECT_EQ(log.at("name"), "Aspirin");
  EXPECT_EQ(log.at("timing"), "2h 30m late");
  EXPECT_EQ(log.at("timingColor"), "orange");
  EXPECT_EQ(log.at("canTake"), false);
}

TEST_F(HistoryCommands, jsonOfAnEmptyStore) {
  const Json history = json({"history"});
  EXPECT_TRUE(history.at("adherence").at("rate").is_null());
  EXPECT_EQ(history.at("adherence").at("percent"), 0);
  EXPECT_EQ(history.at("days"), Json::array());
  EXPECT_EQ(history.at("empty"),
            Json::object({{"symbol", "clock.arrow.circlepath"},
                          {"title", "No History Yet"},
                          {"text", "Your medication history will appear here once you start tracking doses."}}));
}

TEST_F(HistoryCommands, rangesAndFilters) {
  addTypicalDays();
  run({"take", "Aspirin", "2024-12-20T08:00Z"});
  run({"take", "Aspirin", "2004-12-20T08:00Z"});
  EXPECT_EQ(counts({"--range", "today"}), (Words{"1/1"}));
  EXPECT_EQ(counts({"--range", "week"}).size(), 3u);
  EXPECT_EQ(counts({"--range", "month"}).size(), 4u);
  EXPECT_EQ(counts({"--range", "all"}).size(), 5u);
  EXPECT_EQ(counts({"--filter", "taken"}), (Words{"1/1"}));
  EXPECT_EQ(counts({"--filter", "missed"}), (Words{"0/1", "0/1"}));
  EXPECT_EQ(counts({"--filter", "skipped"}), (Words{"0/1"}));
  EXPECT_EQ(counts({"--filter", "all"}), counts({}));
  EXPECT_EQ(json({"history", "--range", "all", "--filter", "skipped"}).at("range"), "All");
}

TEST_F(HistoryCommands, everyRowIsPrinted) {
  add({"A", "--interval", kEveryTenMinutes, "--start", "2025-01-01T00:00Z"});
  run({"mark-missed"});
  const size_t stored = logs().size();
  ASSERT_GT(stored, 900u);
  size_t shown = 0;
  const Json history = json({"history", "--range", "all"});
  for (const Json& day : history.at("days")) shown += day.at("logs").size();
  EXPECT_EQ(shown, stored);
  EXPECT_EQ(history.at("hasMore"), false);
}

TEST_F(HistoryCommands, wrongUsage) {
  for (const Words& words : {Words{"history", "--range", "year"},
                             {"history", "--range", "Week"},
                             {"history", "--range", ""},
                             {"history", "--filter", "pending"},
                             {"history", "week"},
                             {"mark"},
                             {"mark", "6F9619FF-8B86-D011-B42D-00CF4FC964FF"},
                             {"mark", "6F9619FF-8B86-D011-B42D-00CF4FC964FF", "missed"},
                             {"mark", "6F9619FF-8B86-D011-B42D-00CF4FC964FF", "Taken"},
                             {"mark", "6F9619FF", "taken"}}) {
    EXPECT_TRUE(run(words).failedWith(kWrongUsage)) << ::testing::PrintToString(words);
  }
}

TEST_F(HistoryCommands, markChangesWhatWasMissedOrSkipped) {
  addTypicalDays();
  const std::string missed = idOf("Missed"), skipped = idOf("Skipped");
  EXPECT_EQ(json({"mark", missed, "skipped"}), Json::object({{"id", missed}}));
  EXPECT_EQ(plainBlanks(run({"mark", missed, "taken"}).out), "Taken: Vitamin D, Jan 8, 2025, 9:00 AM\n");
  EXPECT_EQ(plainBlanks(run({"mark", skipped, "taken"}).out), "Taken: Aspirin, Jan 9, 2025, 8:00 AM\n");
  const Json all = logs();
  for (const Json& log : all) {
    if (log.at("id") != missed) continue;
    EXPECT_EQ(log.at("statusRaw"), "Taken");
    EXPECT_EQ(log.at("actionTime"), "2025-01-10T10:30:00Z");
  }
  EXPECT_EQ(counts({}), (Words{"1/1", "1/2", "1/1"}));
}

TEST_F(HistoryCommands, whatHistoryDoesNotOfferIsRefusedAndChangesNothing) {
  addTypicalDays();
  const Json before = logs();
  for (const Words& words : {Words{"mark", idOf("Taken"), "taken"},
                             {"mark", idOf("Taken"), "skipped"},
                             {"mark", idOf("Skipped"), "skipped"},
                             {"mark", "6F9619FF-8B86-D011-B42D-00CF4FC964FF", "taken"}}) {
    EXPECT_TRUE(run(words).failedWith(kRefused)) << ::testing::PrintToString(words);
  }
  EXPECT_EQ(logs(), before);
}

TEST_F(HistoryCommands, markPlansAndCancelsNothing) {
  addTypicalDays();
  const auto planned = center.pendingIdentifiers();
  ASSERT_FALSE(planned.empty());
  run({"mark", idOf("Missed"), "taken"});
  EXPECT_EQ(center.pendingIdentifiers(), planned);
}

TEST_F(HistoryCommands, text) {
  addTypicalDays();
  EXPECT_EQ(printed({}), R"(History
Time Range:  Today  [Week]  Month  All

█████░░░░░░░░░░░░░░░ 25%  Adherence Rate  Needs improvement
✓ 1 Taken  ✗ 2 Missed  » 1 Skipped

[≡ All]  ✓ Taken  ✗ Missed  » Skipped

Today  1/1
  ✓  10:30 AM  Aspirin  Taken  2h 30m late

Yesterday  0/2
  ✗  12:00 AM  Vitamin D  Missed
    pilloractl mark <id> taken
  »  10:30 AM  Aspirin    Skipped
    pilloractl mark <id> taken

Jan 8, 2025  0/1
  ✗  12:00 AM  Vitamin D  Missed
    pilloractl mark <id> taken

A missed dose that was skipped:  pilloractl mark LOG-ID skipped
)");
}

TEST_F(HistoryCommands, textOfAnEmptyStore) {
  EXPECT_EQ(printed({"--range", "all", "--filter", "missed"}), R"(History
Time Range:  Today  Week  Month  [All]

░░░░░░░░░░░░░░░░░░░░ 0%  Adherence Rate  Needs improvement
✓ 0 Taken  ✗ 0 Missed  » 0 Skipped

≡ All  ✓ Taken  [✗ Missed]  » Skipped

  ~ No History Yet
    Your medication history will appear here once you start tracking doses.
)");
}

TEST_F(HistoryCommands, coloursAreTheContents) {
  terminal.hasColor = true;
  addTypicalDays();
  const std::string text = printed({});
  EXPECT_NE(text.find("\x1b[31m█████░░░░░░░░░░░░░░░ 25%\x1b[0m"), std::string::npos) << "the ring";
  EXPECT_NE(text.find("\x1b[38;5;208m» 1 Skipped\x1b[0m"), std::string::npos) << "a tile";
  EXPECT_NE(text.find("\x1b[1;34m[≡ All]\x1b[0m"), std::string::npos) << "the selected chip";
  EXPECT_NE(text.find("\x1b[32mTaken\x1b[0m"), std::string::npos) << "a status";
  EXPECT_NE(text.find("\x1b[38;5;208m2h 30m late\x1b[0m"), std::string::npos) << "how late";
}

TEST_F(HistoryCommands, noLineIsWiderThanTheTerminalAndIdentifiersAreWholeAtEightyColumns) {
  const std::string names[] = {std::string(1'000, 'x'), "日本語" + std::string(200, ' ') + "日本",
                               "\x1b[2J\x1b]0;owned\a", "\u202Eright to left\u202C אספירין"};
  for (const std::string& name : names) add({name, "--daily", "08:00", "--start", "2025-01-08T00:00Z"});
  run({"mark-missed"});
  for (const size_t columns : {40u, 80u, 120u}) {
    terminal.columns = columns;
    for (const std::string language : {"en", "en-XA"}) {
      const Called called = run({"--language", language, "history"});
      EXPECT_EQ(called.out.find_first_of("\x1b\a\r"), std::string::npos);
      std::istringstream lines(called.out);
      for (std::string line; std::getline(lines, line);) EXPECT_LE(displayWidth(line), columns) << line;
      const bool hasCommand = called.out.find("mark " + idOf("Missed") + " taken") != std::string::npos;
      EXPECT_TRUE(hasCommand || columns < 80) << columns;
    }
  }
}

TEST_F(HistoryCommands, rawValuesAreTheSameInEveryLanguage) {
  addTypicalDays();
  const Json history = json({"--language", "en-XA", "--locale", "ar_EG", "history"});
  EXPECT_NE(history.at("title"), "History");
  EXPECT_EQ(history.at("range"), "Week");
  EXPECT_EQ(history.at("filter"), "All");
  EXPECT_EQ(history.at("days").at(0).at("logs").at(0).at("status"), "Taken");
}

}  // namespace
}  // namespace pillora

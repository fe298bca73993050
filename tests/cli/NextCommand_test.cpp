// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>

#include "cli/CliFixture.h"
#include "doubles/Intervals.h"

namespace pillora {
namespace {

class NextCommand : public Cli {
 protected:
  Json next(const ReminderInterval& interval, const Words& words = {}, const Words& options = {}) {
    return json(options + Words{"next", "--interval", encodeInterval(interval)} + words).at("occurrences");
  }
};

TEST_F(NextCommand, oneTimeAfterNowIsTheDefault) {
  EXPECT_EQ(next(daily({{8, 0}, {20, 0}})), Json::array({"2025-01-10T20:00:00Z"}));
}

TEST_F(NextCommand, timesFollowOneAnotherAfterAGivenInstant) {
  EXPECT_EQ(next(daily({{8, 0}, {20, 0}}), {"--after", "2025-01-10T08:00:00Z", "--count", "3"}),
            Json::array({"2025-01-10T20:00:00Z", "2025-01-11T08:00:00Z", "2025-01-11T20:00:00Z"}));
  EXPECT_EQ(next(hourly(4), {"--after", "2025-01-10T00:00:00.25Z", "--count", "2"}),
            Json::array({"2025-01-10T04:00:00.25Z", "2025-01-10T08:00:00.25Z"}));
}

TEST_F(NextCommand, zoneAndLocalTimesAreThoseInUse) {
  EXPECT_EQ(
      next(daily({{2, 30}}), {"--after", "2025-03-09T00:00", "--count", "2"}, {"--time-zone", "America/New_York"}),
      Json::array({"2025-03-09T07:30:00Z", "2025-03-10T07:30:00Z"}));
}

TEST_F(NextCommand, theWalkEndsAtATimeThatIsNotLater) {
  EXPECT_EQ(next(custom(0), {"--count", "5"}), Json::array());
  EXPECT_EQ(next(custom(-10), {"--count", "5"}), Json::array());
  EXPECT_EQ(next(hourly(0), {"--count", "5"}), Json::array());
  EXPECT_EQ(next(hourly(9'223'372'036'854'775'807), {"--count", "5"}), Json::array());
  EXPECT_EQ(next(weekly({}, {9, 0}), {"--count", "5"}), Json::array());
  EXPECT_EQ(next(daily({}), {"--count", "5"}), Json::array());
}

TEST_F(NextCommand, noneIsACountToo) { EXPECT_EQ(next(custom(60), {"--count", "0"}), Json::array()); }

TEST_F(NextCommand, noStoreIsOpened) {
  next(custom(60));
  EXPECT_FALSE(std::filesystem::exists(store));
  next(custom(60), {}, {"--store", store, "--now", "2025-01-01T00:00:00Z"});
  EXPECT_FALSE(std::filesystem::exists(store));
}

TEST_F(NextCommand, unreadableIntervalsAreWrongUsage) {
  for (const std::string text : {"", "{", "[]", "null", "{}", "7", R"({"type":"Yearly"})"}) {
    EXPECT_TRUE(run({"next", "--interval", text}).failedWith(kWrongUsage)) << text;
  }
}

TEST_F(NextCommand, inATerminalEachTimeIsALine) {
  const Called called = run({"next", "--interval", encodeInterval(daily({{8, 0}})), "--count", "2"});
  EXPECT_EQ(called.out,
            "Saturday, January 11, 2025, 8:00\u202F"
            "AM\nSunday, January 12, 2025, 8:00\u202F"
            "AM\n");
  EXPECT_EQ(run({"next", "--interval", encodeInterval(custom(0))}).out, "Never again.\n");
}

}  // namespace
}  // namespace pillora

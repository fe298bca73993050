// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/Places.h"
#include "doubles/RefusingCalendar.h"
#include "model/ReminderInterval.h"

namespace pillora {
namespace {

constexpr std::nullopt_t kAbsent = std::nullopt;

/// The next due time in a zone with the Gregorian calendar of en_US, written in UTC; "none" when there is none.
std::string next(const std::string& zone, const ReminderInterval& interval, const char* after) {
  const auto time = interval.nextOccurrence(at(after), *calendarOf("en_US", zone));
  return time ? iso8601(*time) : "none";
}

std::string nextIn(const Calendar& calendar, const ReminderInterval& interval, const char* after) {
  const auto time = interval.nextOccurrence(at(after), calendar);
  return time ? iso8601(*time) : "none";
}

struct Case {
  const char* zone;
  ReminderInterval interval;
  const char* after;
  const char* expected;
};

void check(const std::vector<Case>& cases) {
  for (const Case& each : cases) {
    EXPECT_EQ(next(each.zone, each.interval, each.after), each.expected)
        << each.zone << ' ' << encodeInterval(each.interval) << " after " << each.after;
  }
}

TEST(NextOccurrence, ofHoursAndMinutesCountsFromTheReferenceItself) {
  check({{"UTC", hourly(4), "2025-01-10T10:30:17.25Z", "2025-01-10T14:30:17.25Z"},
         {"UTC", hourly(1), "2025-12-31T23:30:00Z", "2026-01-01T00:30:00Z"},
         {"UTC", custom(90), "2025-01-10T10:30:00Z", "2025-01-10T12:00:00Z"},
         {"UTC", custom(1), "2025-01-10T10:30:00Z", "2025-01-10T10:31:00Z"}});
}

TEST(NextOccurrence, ofHoursAndMinutesIsElapsedTimeAcrossClockChanges) {
  check({{"America/New_York", hourly(4), "2025-03-09T04:59:00Z", "2025-03-09T08:59:00Z"},
         {"America/New_York", hourly(24), "2025-11-02T04:00:00Z", "2025-11-03T04:00:00Z"},
         {"America/New_York", custom(1440), "2025-03-09T05:00:00Z", "2025-03-10T05:00:00Z"},
         {"Australia/Lord_Howe", hourly(1), "2025-10-04T15:15:00Z", "2025-10-04T16:15:00Z"}});
}

TEST(NextOccurrence, ofHoursAndMinutesThatDoNotAdvanceIsNotLater) {
  check({{"UTC", custom(0), "2025-01-10T10:30:00Z", "2025-01-10T10:30:00Z"},
         {"UTC", hourly(0), "2025-01-10T10:30:00Z", "2025-01-10T10:30:00Z"},
         {"UTC", custom(-5), "2025-01-10T10:30:00Z", "2025-01-10T10:25:00Z"},
         {"UTC", hourly(-1), "2025-01-10T10:30:00Z", "2025-01-10T09:30:00Z"}});
}

TEST(NextOccurrence, ofAbsurdStepsIsAbsent) {
  for (const int64_t step : {INT64_MAX, INT64_MIN, kLargestStep + 1, -kLargestStep - 1}) {
    EXPECT_EQ(next("UTC", hourly(step), "2025-01-10T10:30:00Z"), "none") << step;
    EXPECT_EQ(next("UTC", custom(step), "2025-01-10T10:30:00Z"), "none") << step;
  }
  EXPECT_EQ(next("UTC", custom(kLargestStep), "2025-01-10T10:30:00Z"), "2044-01-15T21:10:00Z");
}

TEST(NextOccurrence, ofDailyTimesIsTheEarliestStillAhead) {
  const ReminderInterval twice = daily({{20, 0}, {8, 0}});
  check({{"UTC", twice, "2025-01-10T07:59:59Z", "2025-01-10T08:00:00Z"},
         {"UTC", twice, "2025-01-10T08:00:00Z", "2025-01-10T20:00:00Z"},
         {"UTC", twice, "2025-01-10T08:00:00.000001Z", "2025-01-10T20:00:00Z"},
         {"UTC", twice, "2025-01-10T20:00:00Z", "2025-01-11T08:00:00Z"},
         {"UTC", twice, "2024-12-31T23:00:00Z", "2025-01-01T08:00:00Z"},
         {"UTC", daily({{0, 0}}), "2025-01-09T23:59:00Z", "2025-01-10T00:00:00Z"},
         {"Asia/Kolkata", twice, "2025-01-10T02:29:00Z", "2025-01-10T02:30:00Z"}});
}

TEST(NextOccurrence, ofDailySkipsIncompleteTimes) {
  check({{"UTC", daily({{9, kAbsent}, {kAbsent, 0}, {}, {12, 15}}), "2025-01-10T10:30:00Z", "2025-01-10T12:15:00Z"},
         {"UTC", daily({{9, kAbsent}}), "2025-01-10T10:30:00Z", "none"},
         {"UTC", daily({}), "2025-01-10T10:30:00Z", "none"}});
}

TEST(NextOccurrence, ofTimesBeyondTheDayCarriesOver) {
  check(
      {{"UTC", daily({{25, 0}}), "2025-01-10T10:30:00Z", "2025-01-11T01:00:00Z"},
       {"UTC", daily({{0, 90}}), "2025-01-10T00:30:00Z", "2025-01-10T01:30:00Z"},
       {"UTC", daily({{-1, 0}}), "2025-01-10T10:30:00Z", "2025-01-10T23:00:00Z"},
       {"UTC", daily({{kLargestStep + 1, 0}, {0, INT64_MIN}, {INT64_MAX, INT64_MAX}}), "2025-01-10T10:30:00Z", "none"},
       {"UTC", weekly({6}, {INT64_MAX, 0}), "2025-01-10T10:30:00Z", "none"},
       {"UTC", monthly({10}, {0, INT64_MIN}), "2025-01-10T10:30:00Z", "none"}});
}

TEST(NextOccurrence, ofDailyInAGapMovesForwardByTheGap) {
  check({{"America/New_York", daily({{2, 30}}), "2025-03-09T05:00:00Z", "2025-03-09T07:30:00Z"},
         {"Australia/Lord_Howe", daily({{2, 15}}), "2025-10-04T13:30:00Z", "2025-10-04T15:45:00Z"},
         {"America/Sao_Paulo", daily({{0, 0}}), "2018-11-04T02:59:00Z", "2018-11-04T03:00:00Z"},
         {"America/Sao_Paulo", daily({{0, 30}}), "2018-11-04T03:00:00Z", "2018-11-04T03:30:00Z"}});
}

TEST(NextOccurrence, ofDailyAddsTheDayToTheFormedDate) {
  // After 03:30 EDT, where the gap put 02:30, the day after is 03:30 as well; seen from that day's midnight it is
  // 02:30.
  check({{"America/New_York", daily({{2, 30}}), "2025-03-09T08:00:00Z", "2025-03-10T07:30:00Z"},
         {"America/New_York", daily({{2, 30}}), "2025-03-10T04:00:00Z", "2025-03-10T06:30:00Z"}});
}

TEST(NextOccurrence, ofARepeatedTimeIsItsFirstOccurrence) {
  const ReminderInterval halfPastOne = daily({{1, 30}});
  check({{"America/New_York", halfPastOne, "2025-11-02T04:00:00Z", "2025-11-02T05:30:00Z"},
         {"America/New_York", halfPastOne, "2025-11-02T05:30:00Z", "2025-11-03T06:30:00Z"},
         {"America/New_York", halfPastOne, "2025-11-02T06:00:00Z", "2025-11-03T06:30:00Z"},
         {"America/New_York", halfPastOne, "2025-11-01T05:30:00Z", "2025-11-02T05:30:00Z"},
         {"America/Havana", daily({{0, 0}}), "2025-11-02T03:59:00Z", "2025-11-02T04:00:00Z"},
         {"America/Havana", daily({{0, 0}}), "2025-11-02T04:30:00Z", "2025-11-03T05:00:00Z"}});
}

TEST(NextOccurrence, ofDailyOnADayThatAZoneLeavesOutIsOnTheDayAfter) {
  // Samoa had no 30 December 2011.
  check({{"Pacific/Apia", daily({{10, 0}}), "2011-12-29T21:00:00Z", "2011-12-30T20:00:00Z"}});
}

TEST(NextOccurrence, ofWeekdaysIsTheEarliestStillAhead) {
  // 10 January 2025 is a Friday, day 6.
  check({{"UTC", weekly({6}, {11, 0}), "2025-01-10T10:30:00Z", "2025-01-10T11:00:00Z"},
         {"UTC", weekly({6}, {10, 30}), "2025-01-10T10:30:00Z", "2025-01-17T10:30:00Z"},
         {"UTC", weekly({6, 7}, {11, 0}), "2025-01-10T10:30:00Z", "2025-01-10T11:00:00Z"},
         {"UTC", weekly({1, 6}, {11, 0}), "2025-01-10T10:30:00Z", "2025-01-10T11:00:00Z"},
         {"UTC", weekly({6, 7}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-11T09:00:00Z"},
         {"UTC", weekly({1, 3, 5}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-12T09:00:00Z"},
         {"UTC", weekly({5}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-16T09:00:00Z"},
         {"UTC", weekly({1, 2, 3, 4, 5, 6, 7}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-11T09:00:00Z"},
         {"UTC", weekly({2, 4}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-13T09:00:00Z"},
         {"UTC", weekly({}, {9, 0}), "2025-01-10T10:30:00Z", "none"}});
}

TEST(NextOccurrence, ofSundayAtNineFromSundayAtTenIsTheNextSunday) {
  check({{"UTC", weekly({1}, {9, 0}), "2025-01-12T10:00:00Z", "2025-01-19T09:00:00Z"},
         {"America/New_York", weekly({1}, {9, 0}), "2025-03-02T15:00:00Z", "2025-03-09T13:00:00Z"}});
}

TEST(NextOccurrence, ofWeekdaysAddsTheWeekToTheFormedDate) {
  check({{"America/New_York", weekly({1}, {2, 30}), "2025-03-09T12:00:00Z", "2025-03-16T07:30:00Z"},
         {"America/New_York", weekly({1}, {2, 30}), "2025-03-10T12:00:00Z", "2025-03-16T06:30:00Z"}});
}

TEST(NextOccurrence, withAnIncompleteTimeIsAbsentForWeekdaysAndDaysOfTheMonth) {
  for (const TimeOfDay& time : {TimeOfDay{9, kAbsent}, TimeOfDay{kAbsent, 0}, TimeOfDay{}}) {
    EXPECT_EQ(next("UTC", weekly({1, 2, 3}, time), "2025-01-10T10:30:00Z"), "none");
    EXPECT_EQ(next("UTC", monthly({1, 2, 3}, time), "2025-01-10T10:30:00Z"), "none");
  }
}

TEST(NextOccurrence, ofWeekdayNumbersOutOfRangeAppliesTheFormulaOnce) {
  // From a Friday, 6: 8 is two days ahead, 15 nine days, 0 is six back and seven ahead, -9 stays eight back.
  check({{"UTC", weekly({8}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-12T09:00:00Z"},
         {"UTC", weekly({15}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-19T09:00:00Z"},
         {"UTC", weekly({0}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-11T09:00:00Z"},
         {"UTC", weekly({-9}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-09T09:00:00Z"},
         {"UTC", weekly({-9, 7}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-09T09:00:00Z"},
         {"UTC", weekly({INT64_MIN}, {9, 0}), "2025-01-10T10:30:00Z", "none"},
         {"UTC", weekly({INT64_MAX}, {9, 0}), "2025-01-10T10:30:00Z", "none"},
         {"UTC", weekly({kLargestStep + 7, 7}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-11T09:00:00Z"}});
}

TEST(NextOccurrence, ofDaysOfTheMonthIsTheEarliestStillAhead) {
  check({{"UTC", monthly({1, 15}, {9, 0}), "2025-01-10T10:30:00Z", "2025-01-15T09:00:00Z"},
         {"UTC", monthly({1, 15}, {9, 0}), "2025-01-15T09:00:00Z", "2025-02-01T09:00:00Z"},
         {"UTC", monthly({10}, {10, 31}), "2025-01-10T10:30:00Z", "2025-01-10T10:31:00Z"},
         {"UTC", monthly({15}, {9, 0}), "2025-12-20T10:00:00Z", "2026-01-15T09:00:00Z"},
         {"America/New_York", monthly({9}, {2, 30}), "2025-03-01T12:00:00Z", "2025-03-09T07:30:00Z"},
         {"UTC", monthly({}, {9, 0}), "2025-01-10T10:30:00Z", "none"}});
}

TEST(NextOccurrence, ofADayThatTheMonthLacksRollsOver) {
  const ReminderInterval last = monthly({31}, {9, 0});
  check({{"UTC", last, "2025-04-10T12:00:00Z", "2025-05-01T09:00:00Z"},
         {"UTC", last, "2025-04-30T23:59:59Z", "2025-05-01T09:00:00Z"},
         {"UTC", last, "2025-01-31T09:00:00Z", "2025-03-03T09:00:00Z"},
         {"UTC", monthly({29}, {9, 0}), "2025-02-10T12:00:00Z", "2025-03-01T09:00:00Z"},
         {"UTC", monthly({29}, {9, 0}), "2024-02-10T12:00:00Z", "2024-02-29T09:00:00Z"},
         {"UTC", monthly({30}, {9, 0}), "2025-02-28T12:00:00Z", "2025-03-02T09:00:00Z"}});
}

TEST(NextOccurrence, ofARolledOverDayIsNotTheSameSeenFromTheMonthItFallsIn) {
  check({{"UTC", monthly({31}, {9, 0}), "2025-05-01T00:00:00Z", "2025-05-31T09:00:00Z"},
         {"UTC", monthly({30}, {9, 0}), "2025-03-01T00:00:00Z", "2025-03-30T09:00:00Z"}});
}

TEST(NextOccurrence, ofDaysBeyondTheMonthIsWhatTheCalendarMakesOfThem) {
  check(
      {{"UTC", monthly({0}, {9, 0}), "2025-05-10T12:00:00Z", "2025-05-31T09:00:00Z"},
       {"UTC", monthly({-4}, {9, 0}), "2025-05-10T12:00:00Z", "2025-05-27T09:00:00Z"},
       {"UTC", monthly({45}, {9, 0}), "2025-05-10T12:00:00Z", "2025-06-14T09:00:00Z"},
       {"UTC", monthly({-400}, {9, 0}), "2025-05-10T12:00:00Z", "2024-04-26T09:00:00Z"},
       {"UTC", monthly({INT64_MIN, INT64_MAX, 2147483647, 12}, {9, 0}), "2025-05-10T12:00:00Z", "2025-05-12T09:00:00Z"},
       {"UTC", monthly({kLargestStep + 1}, {9, 0}), "2025-05-10T12:00:00Z", "none"}});
}

TEST(NextOccurrence, aStepThatCannotBeTakenDropsOnlyThatCandidate) {
  const auto calendar = calendarOf("en_US", "UTC");
  const char* const kFriday = "2025-01-10T10:30:00Z";
  const RefusingCalendar noDays(*calendar, {.addingDays = true});
  EXPECT_EQ(nextIn(noDays, daily({{8, 0}, {20, 0}}), kFriday), "2025-01-10T20:00:00Z");
  EXPECT_EQ(nextIn(noDays, daily({{8, 0}}), kFriday), "none");
  EXPECT_EQ(nextIn(noDays, weekly({6, 7}, {20, 0}), kFriday), "none");
  EXPECT_EQ(nextIn(noDays, monthly({11}, {9, 0}), kFriday), "2025-01-11T09:00:00Z");
  const RefusingCalendar noDates(*calendar, {.formingDates = true});
  for (const auto& interval : {daily({{8, 0}}), weekly({6}, {20, 0}), monthly({11}, {9, 0})}) {
    EXPECT_EQ(nextIn(noDates, interval, kFriday), "none");
  }
  EXPECT_EQ(nextIn(noDates, hourly(4), kFriday), "2025-01-10T14:30:00Z");
  EXPECT_EQ(nextIn(RefusingCalendar(*calendar, {.addingHours = true}), hourly(4), kFriday), "none");
  EXPECT_EQ(nextIn(RefusingCalendar(*calendar, {.addingMinutes = true}), custom(4), kFriday), "none");
}

TEST(NextOccurrence, ofDaysOfTheMonthGoesOnToTheNextMonthWhenNoDateCanBeFormed) {
  const auto calendar = calendarOf("en_US", "UTC");
  const RefusingCalendar noJanuary(*calendar, {.formingDatesOfMonth = 1});
  EXPECT_EQ(nextIn(noJanuary, monthly({15, 20}, {9, 0}), "2025-01-10T10:30:00Z"), "2025-02-15T09:00:00Z");
  const RefusingCalendar noFebruary(*calendar, {.formingDatesOfMonth = 2});
  EXPECT_EQ(nextIn(noFebruary, monthly({5, 20}, {9, 0}), "2025-01-10T10:30:00Z"), "2025-01-20T09:00:00Z");
  EXPECT_EQ(nextIn(noFebruary, monthly({5}, {9, 0}), "2025-01-10T10:30:00Z"), "none");
}

TEST(NextOccurrence, followsTheMonthsOfAPersianCalendar) {
  const auto calendar = calendarOf("fa_IR@calendar=persian", "Asia/Tehran");
  // 20 Esfand 1403; Esfand has 30 days that year and 1 Farvardin 1404 is 21 March 2025.
  EXPECT_EQ(nextIn(*calendar, monthly({1}, {9, 0}), "2025-03-10T12:00:00Z"), "2025-03-21T05:30:00Z");
  EXPECT_EQ(nextIn(*calendar, monthly({30}, {9, 0}), "2025-03-10T12:00:00Z"), "2025-03-20T05:30:00Z");
  EXPECT_EQ(nextIn(*calendar, monthly({31}, {9, 0}), "2025-03-10T12:00:00Z"), "2025-03-21T05:30:00Z");
  EXPECT_EQ(nextIn(*calendar, daily({{9, 0}}), "2025-03-20T12:00:00Z"), "2025-03-21T05:30:00Z");
}

TEST(NextOccurrence, followsTheMonthsOfAHebrewCalendar) {
  const auto calendar = calendarOf("he_IL@calendar=hebrew", "Asia/Jerusalem");
  const ReminderInterval tenth = monthly({10}, {9, 0});
  // 5784 is a leap year with two Adars, 5785 is none.
  EXPECT_EQ(nextIn(*calendar, tenth, "2024-01-25T12:00:00Z"), "2024-02-19T07:00:00Z");
  EXPECT_EQ(nextIn(*calendar, tenth, "2025-02-12T12:00:00Z"), "2025-03-10T07:00:00Z");
  // From Elul, the last month of a common year, to Tishri of the next.
  EXPECT_EQ(nextIn(*calendar, monthly({1}, {9, 0}), "2025-09-03T12:00:00Z"), "2025-09-23T06:00:00Z");
  EXPECT_EQ(nextIn(*calendar, monthly({1}, {9, 0}), "2024-09-10T12:00:00Z"), "2024-10-03T06:00:00Z");
}

TEST(NextOccurrence, followsABuddhistCalendarLikeTheGregorian) {
  const auto calendar = calendarOf("th_TH@calendar=buddhist", "Asia/Bangkok");
  EXPECT_EQ(nextIn(*calendar, monthly({15}, {9, 0}), "2025-12-20T12:00:00Z"), "2026-01-15T02:00:00Z");
  EXPECT_EQ(nextIn(*calendar, weekly({6}, {9, 0}), "2025-01-10T12:00:00Z"), "2025-01-17T02:00:00Z");
  EXPECT_EQ(nextIn(*calendar, daily({{9, 0}}), "2025-12-31T12:00:00Z"), "2026-01-01T02:00:00Z");
}

TEST(NextOccurrence, keepsTheLeapMonthOfTheReferenceButNotForTheNextMonth) {
  // The Chinese year that began in 2025 has a leap sixth month, 25 July to 22 August.
  const auto calendar = calendarOf("zh_CN@calendar=chinese", "Asia/Shanghai");
  EXPECT_EQ(nextIn(*calendar, monthly({20}, {9, 0}), "2025-08-01T12:00:00Z"), "2025-08-13T01:00:00Z");
  EXPECT_EQ(nextIn(*calendar, monthly({1}, {9, 0}), "2025-08-01T12:00:00Z"), "2025-08-23T01:00:00Z");
  EXPECT_EQ(nextIn(*calendar, monthly({1}, {9, 0}), "2025-07-01T12:00:00Z"), "2025-08-23T01:00:00Z");
  EXPECT_EQ(nextIn(*calendar, daily({{9, 0}}), "2025-08-01T12:00:00Z"), "2025-08-02T01:00:00Z");
  EXPECT_EQ(nextIn(*calendar, weekly({6}, {21, 0}), "2025-08-01T12:00:00Z"), "2025-08-01T13:00:00Z");
}

TEST(NextOccurrence, keepsTheEraOfTheReference) {
  // Reiwa began on 1 May 2019; 5 May of Heisei 31 is the same day as 5 May of Reiwa 1.
  const auto calendar = calendarOf("ja_JP@calendar=japanese", "Asia/Tokyo");
  EXPECT_EQ(nextIn(*calendar, monthly({5}, {9, 0}), "2019-04-29T12:00:00Z"), "2019-05-05T00:00:00Z");
  EXPECT_EQ(nextIn(*calendar, daily({{9, 0}}), "2019-04-30T12:00:00Z"), "2019-05-01T00:00:00Z");
}

}  // namespace
}  // namespace pillora

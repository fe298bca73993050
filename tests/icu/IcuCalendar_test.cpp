// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <memory>
#include <rapidcheck/gtest.h>
#include <string>

#include "doubles/Instants.h"
#include "icu/Calendars.h"

namespace pillora {

namespace {

std::unique_ptr<Calendar> named(const std::string& calendar, const std::string& zone = "UTC") {
  return std::move(*makeCalendar("en_US@calendar=" + calendar, zone));
}

constexpr const char* kOtherCalendars[] = {
    "buddhist",    "japanese", "roc",      "persian", "hebrew",        "chinese",          "dangi",
    "indian",      "coptic",   "ethiopic", "islamic", "islamic-civil", "islamic-umalqura", "ethiopic-amete-alem",
    "islamic-tbla"};

/// Era and year are left to the calendar where a test does not name them.
DateComponents wall(int64_t year, int64_t month, int64_t day) { return {.year = year, .month = month, .day = day}; }

}  // namespace

TEST(IcuCalendar, buddhistYearsAre543Ahead) {
  const auto buddhist = named("buddhist", "Asia/Bangkok");
  EXPECT_EQ(buddhist->components(at("2025-01-10T10:30:00Z")),
            (DateComponents{.era = 0, .year = 2568, .month = 1, .day = 10, .hour = 17, .minute = 30}));
  EXPECT_EQ(buddhist->date(wall(2568, 2, 29)), at("2025-02-28T17:00:00Z"));
}

TEST(IcuCalendar, persianMonthsCarryOverIntoTheNext) {
  const auto persian = named("persian", "Asia/Tehran");
  EXPECT_EQ(persian->date(wall(1404, 1, 1)), at("2025-03-20T20:30:00Z"));
  EXPECT_EQ(persian->date(wall(1404, 7, 31)), persian->date(wall(1404, 8, 1)));
  EXPECT_EQ(persian->date(wall(1403, 12, 30)), at("2025-03-19T20:30:00Z"));  // a leap year
  EXPECT_EQ(persian->date(wall(1404, 12, 30)), persian->date(wall(1405, 1, 1)));
  EXPECT_EQ(persian->date(wall(1404, 13, 1)), persian->date(wall(1405, 1, 1)));
}

TEST(IcuCalendar, hebrewYearsHaveThirteenMonthNumbers) {
  const auto hebrew = named("hebrew", "Asia/Jerusalem");
  EXPECT_EQ(hebrew->components(at("2024-02-10T12:00:00Z")).month, 6);   // 1 Adar I 5784, a leap year
  EXPECT_EQ(hebrew->components(at("2024-03-11T12:00:00Z")).month, 7);   // 1 Adar II
  EXPECT_EQ(hebrew->components(at("2025-03-01T12:00:00Z")).month, 7);   // 1 Adar 5785: number 6 is left out
  EXPECT_EQ(hebrew->components(at("2025-09-22T12:00:00Z")).month, 13);  // 29 Elul
  EXPECT_EQ(hebrew->date(wall(5785, 6, 1)), hebrew->date(wall(5785, 7, 1)));
  EXPECT_EQ(hebrew->date(wall(5785, 14, 1)), hebrew->date(wall(5786, 1, 1)));
}

TEST(IcuCalendar, japaneseErasAreCarriedAlong) {
  const auto japanese = named("japanese", "Asia/Tokyo");
  DateComponents heisei = japanese->components(at("2019-04-30T03:00:00Z"));
  EXPECT_EQ(heisei.year, 31);
  EXPECT_EQ(japanese->date(heisei), at("2019-04-30T03:00:00Z"));
  ++heisei.month;  // in Reiwa by then
  EXPECT_EQ(japanese->date(heisei), at("2019-05-30T03:00:00Z"));
  EXPECT_EQ(japanese->components(at("2019-05-01T03:00:00Z")).year, 1);
  EXPECT_EQ(japanese->date(wall(7, 1, 10)), at("2025-01-09T15:00:00Z"));
}

TEST(IcuCalendar, aChineseLeapMonthBearsTheNumberOfTheMonthBefore) {
  const auto chinese = named("chinese", "Asia/Shanghai");
  const DateComponents leap = chinese->components(at("2025-07-26T12:00:00Z"));
  EXPECT_EQ(leap.month, 6);
  EXPECT_TRUE(leap.isLeapMonth);
  EXPECT_EQ(leap.day, 2);
  EXPECT_EQ(chinese->date(leap), at("2025-07-26T12:00:00Z"));
  DateComponents plain = leap;
  plain.isLeapMonth = false;
  EXPECT_EQ(chinese->date(plain), at("2025-06-26T12:00:00Z"));
}

TEST(IcuCalendar, gregorianDatesOutsideTheTableAreThoseOfIcu) {
  const auto newYork = std::move(*makeCalendar("en_US", "America/New_York"));
  EXPECT_EQ(newYork->date(wall(2150, 7, 1)), at("2150-07-01T04:00:00Z"));
  EXPECT_EQ(newYork->adding(CalendarUnit::day, 1, at("2150-03-07T07:30:00.5Z")), at("2150-03-08T07:30:00.5Z"));
  EXPECT_EQ(newYork->startOfDay(at("1850-01-01T12:00:00Z")), at("1850-01-01T04:56:02Z"));
  EXPECT_EQ(newYork->startOfMinute(at("1850-01-01T12:00:00Z")), at("1850-01-01T11:59:02Z"));
  EXPECT_EQ(newYork->weekday(at("2150-07-01T12:00:00Z")), 4);
}

RC_GTEST_PROP(IcuCalendar, everyCalendarFindsItsOwnDatesAgain, ()) {
  const auto second = *rc::gen::inRange(at("1900-01-01T00:00:00Z").microseconds() / 1'000'000,
                                        at("2100-01-01T00:00:00Z").microseconds() / 1'000'000);
  for (const char* name : kOtherCalendars) {
    const auto calendar = named(name);
    const Instant t = Instant::fromSeconds(second);
    RC_ASSERT(calendar->date(calendar->components(t)) == t);
  }
}

RC_GTEST_PROP(IcuCalendar, daysAreTheSameInEveryCalendar, ()) {
  const auto micros =
      *rc::gen::inRange(at("1950-01-01T00:00:00Z").microseconds(), at("2050-01-01T00:00:00Z").microseconds());
  const auto days = *rc::gen::inRange<int64_t>(-1000, 1000);
  const Instant t{Instant::Duration(micros)};
  const auto gregorian = named("gregorian", "America/Havana");
  for (const char* name : kOtherCalendars) {
    const auto other = named(name, "America/Havana");
    RC_ASSERT(other->startOfDay(t) == gregorian->startOfDay(t));
    RC_ASSERT(other->startOfMinute(t) == gregorian->startOfMinute(t));
    RC_ASSERT(other->weekday(t) == gregorian->weekday(t));
    RC_ASSERT(other->adding(CalendarUnit::day, days, t) == gregorian->adding(CalendarUnit::day, days, t));
    RC_ASSERT(other->dateOfTime(days, days) == gregorian->dateOfTime(days, days));
  }
}

TEST(IcuCalendar, theEndsOfTimeAndTheLargestFieldsAreHarmlessInEveryCalendar) {
  const DateComponents huge = {.year = 400'000, .month = kLargestStep, .day = kLargestStep, .hour = kLargestStep};
  const DateComponents tiny = {.year = -400'000, .month = -kLargestStep, .day = -kLargestStep};
  for (const char* name : kOtherCalendars) {
    const auto calendar = named(name, "America/New_York");
    for (const Instant end : {Instant::distantPast(), Instant::distantFuture()}) {
      EXPECT_GE(calendar->components(end).month, 1) << name;
      EXPECT_LE(calendar->startOfDay(end), end) << name;
      EXPECT_LE(calendar->startOfMinute(end), end) << name;
    }
    EXPECT_GT(calendar->startOfDay(Instant::distantFuture()), Instant::distantFuture() - std::chrono::days(2)) << name;
    EXPECT_EQ(calendar->adding(CalendarUnit::day, 2, Instant::distantFuture()), std::nullopt) << name;
    EXPECT_EQ(calendar->date(huge), std::nullopt) << name;
    EXPECT_EQ(calendar->date(tiny), std::nullopt) << name;
  }
}

}  // namespace pillora

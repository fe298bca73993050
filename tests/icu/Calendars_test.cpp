// SPDX-License-Identifier: MIT
#include "icu/Calendars.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "doubles/Instants.h"
#include "icu/IcuCalendar.h"
#include "icu/Locales.h"

namespace pillora {

namespace {

DateComponents wall(int64_t year, int64_t month, int64_t day, int64_t hour = 0, int64_t minute = 0) {
  return {.year = year, .month = month, .day = day, .hour = hour, .minute = minute};
}

/// What every Gregorian calendar must answer, whether it computes by itself or asks ICU.
class Gregorian : public testing::TestWithParam<bool> {
 protected:
  static std::unique_ptr<Calendar> in(const std::string& zone) {
    if (!GetParam()) return std::move(*IcuCalendar::make(icu::Locale("en_US"), **timeZoneNamed(zone)));
    return std::move(*makeCalendar("en_US", zone));
  }
};

INSTANTIATE_TEST_SUITE_P(Calendars, Gregorian, testing::Values(true, false),
                         [](const auto& chosen) { return chosen.param ? "made" : "ofIcu"; });

}  // namespace

TEST_P(Gregorian, timesInAGapMoveForwardByTheGap) {
  const auto newYork = in("America/New_York");
  EXPECT_EQ(newYork->date(wall(2025, 3, 9, 2, 30)), at("2025-03-09T07:30:00Z"));
  EXPECT_EQ(newYork->adding(CalendarUnit::day, 1, at("2025-03-08T07:30:00Z")), at("2025-03-09T07:30:00Z"));
  EXPECT_EQ(newYork->adding(CalendarUnit::day, 1, at("2025-03-09T07:30:00Z")), at("2025-03-10T07:30:00Z"));
  EXPECT_EQ(in("Australia/Lord_Howe")->date(wall(2025, 10, 5, 2, 15)), at("2025-10-04T15:45:00Z"));
}

TEST_P(Gregorian, repeatedTimesAreTheirFirstOccurrence) {
  const auto newYork = in("America/New_York");
  EXPECT_EQ(newYork->date(wall(2025, 11, 2, 1, 30)), at("2025-11-02T05:30:00Z"));
  EXPECT_EQ(newYork->adding(CalendarUnit::day, 1, at("2025-11-01T05:30:00Z")), at("2025-11-02T05:30:00Z"));
  EXPECT_EQ(newYork->adding(CalendarUnit::day, -1, at("2025-11-03T06:30:00Z")), at("2025-11-02T05:30:00Z"));
  EXPECT_EQ(in("Australia/Lord_Howe")->date(wall(2025, 4, 6, 1, 45)), at("2025-04-05T14:45:00Z"));
}

TEST_P(Gregorian, addingNoDaysChangesNothingEvenInARepeatedHour) {
  const Instant second = at("2025-11-02T06:30:00.25Z");
  EXPECT_EQ(in("America/New_York")->adding(CalendarUnit::day, 0, second), second);
}

TEST_P(Gregorian, hoursAndMinutesAreElapsedTime) {
  const auto newYork = in("America/New_York");
  EXPECT_EQ(newYork->adding(CalendarUnit::hour, 4, at("2025-03-09T04:59:00Z")), at("2025-03-09T08:59:00Z"));
  EXPECT_EQ(newYork->adding(CalendarUnit::minute, -90, at("2025-11-02T06:30:00Z")), at("2025-11-02T05:00:00Z"));
}

TEST_P(Gregorian, aDayBeginsWithItsFirstMoment) {
  struct Case {
    const char *zone, *instant, *start;
  };
  for (const auto& [zone, instant, start] : {
           Case{"America/Havana", "2025-11-02T12:00:00Z", "2025-11-02T04:00:00Z"},     // midnight twice
           Case{"America/Havana", "2025-11-02T05:20:00Z", "2025-11-02T04:00:00Z"},     // in the second hour of these
           Case{"America/Sao_Paulo", "2018-11-04T12:00:00Z", "2018-11-04T03:00:00Z"},  // no midnight
           Case{"America/Sao_Paulo", "2018-02-18T02:30:00Z", "2018-02-17T02:00:00Z"},  // 23:30 a second time
           Case{"America/St_Johns", "2010-11-07T12:00:00Z", "2010-11-07T02:30:00Z"},   // 00:01 back to 23:01
           Case{"America/St_Johns", "2010-11-07T02:45:00Z", "2010-11-06T02:30:00Z"},   // the day before once more
           Case{"America/Toronto", "1919-03-31T12:00:00Z", "1919-03-31T04:30:00Z"},    // 23:30 on to 00:30
           Case{"Pacific/Apia", "2011-12-31T05:00:00Z", "2011-12-30T10:00:00Z"},       // the 30th never was
           Case{"Pacific/Apia", "2011-12-30T09:59:59Z", "2011-12-29T10:00:00Z"},       // the 29th, its last second
           Case{"Asia/Kolkata", "2025-01-10T12:00:00Z", "2025-01-09T18:30:00Z"},
           Case{"UTC", "1969-12-31T23:59:59.5Z", "1969-12-31T00:00:00Z"},
       }) {
    EXPECT_EQ(in(zone)->startOfDay(at(instant)), at(start)) << zone << ' ' << instant;
  }
}

TEST_P(Gregorian, aDayThatNeverWasMovesForwardByADay) {
  const auto apia = in("Pacific/Apia");
  EXPECT_EQ(apia->date(wall(2011, 12, 30, 12)), at("2011-12-30T22:00:00Z"));
  EXPECT_EQ(apia->adding(CalendarUnit::day, 1, at("2011-12-29T19:00:00Z")), at("2011-12-30T19:00:00Z"));
  EXPECT_EQ(apia->components(at("2011-12-30T19:00:00Z")).day, 31);
}

TEST_P(Gregorian, aLocalMinuteNeedNotStartWithAUtcMinute) {
  const auto newYork = in("America/New_York");
  EXPECT_EQ(newYork->startOfMinute(at("2025-11-02T06:30:20Z")), at("2025-11-02T06:30:00Z"));
  EXPECT_NE(newYork->startOfMinute(at("2025-11-02T05:30:20Z")), newYork->startOfMinute(at("2025-11-02T06:30:20Z")));
  const auto monrovia = in("Africa/Monrovia");  // 44 minutes and 30 seconds behind until 1972-01-07
  EXPECT_EQ(monrovia->startOfMinute(at("1971-06-01T00:00:20Z")), at("1971-05-31T23:59:30Z"));
  EXPECT_EQ(monrovia->startOfMinute(at("1971-06-01T00:00:30Z")), at("1971-06-01T00:00:30Z"));
  EXPECT_EQ(monrovia->startOfMinute(at("1971-06-01T00:00:30Z")),
            monrovia->startOfMinute(at("1971-06-01T00:01:29.999999Z")));
}

TEST_P(Gregorian, theMinuteInWhichAClockChangesBeginsWithTheChange) {
  const auto monrovia = in("Africa/Monrovia");
  EXPECT_EQ(monrovia->startOfMinute(at("1972-01-07T00:44:29Z")), at("1972-01-07T00:43:30Z"));
  EXPECT_EQ(monrovia->startOfMinute(at("1972-01-07T00:44:45Z")), at("1972-01-07T00:44:30Z"));
  EXPECT_EQ(monrovia->startOfMinute(at("1972-01-07T00:45:10Z")), at("1972-01-07T00:45:00Z"));
}

TEST_P(Gregorian, fieldsOutsideTheirRangeCarryOver) {
  const auto utc = in("UTC");
  EXPECT_EQ(utc->date(wall(2025, 4, 31, 9)), at("2025-05-01T09:00:00Z"));
  EXPECT_EQ(utc->date(wall(2025, 13, 10)), at("2026-01-10T00:00:00Z"));
  EXPECT_EQ(utc->date(wall(2025, 0, 10)), at("2024-12-10T00:00:00Z"));
  EXPECT_EQ(utc->date(wall(2025, 3, 0)), at("2025-02-28T00:00:00Z"));
  EXPECT_EQ(utc->date(wall(2025, 1, 10, 25, -5)), at("2025-01-11T00:55:00Z"));
  EXPECT_EQ(utc->date(wall(2025, 1, 400)), at("2026-02-04T00:00:00Z"));
}

TEST_P(Gregorian, microsecondsSurviveAndTimesBefore1970AreRoundedDown) {
  const auto kolkata = in("Asia/Kolkata");
  EXPECT_EQ(kolkata->adding(CalendarUnit::day, 1, at("2025-01-10T10:30:00.123457Z")),
            at("2025-01-11T10:30:00.123457Z"));
  EXPECT_EQ(kolkata->adding(CalendarUnit::day, -1, at("1969-12-31T23:59:59.999999Z")),
            at("1969-12-30T23:59:59.999999Z"));
  const DateComponents before = kolkata->components(at("1969-12-31T23:59:59.999999Z"));
  EXPECT_EQ(before,
            (DateComponents{.era = 1, .year = 1970, .month = 1, .day = 1, .hour = 5, .minute = 29, .second = 59}));
}

TEST_P(Gregorian, numbersOutOfBoundsFormNoDate) {
  const auto newYork = in("America/New_York");
  for (const int64_t beyond : {kLargestStep + 1, -kLargestStep - 1, int64_t{INT32_MAX}, INT64_MAX, INT64_MIN}) {
    EXPECT_EQ(newYork->date(wall(2025, 1, beyond)), std::nullopt) << beyond;
    EXPECT_EQ(newYork->date(wall(2025, 1, 10, beyond)), std::nullopt) << beyond;
    EXPECT_EQ(newYork->date(wall(2025, 1, 10, 9, beyond)), std::nullopt) << beyond;
    EXPECT_EQ(newYork->date(wall(2025, beyond, 10)), std::nullopt) << beyond;
    EXPECT_EQ(newYork->date(wall(beyond, 1, 10)), std::nullopt) << beyond;
    EXPECT_EQ(newYork->dateOfTime(beyond, 0), std::nullopt) << beyond;
    EXPECT_EQ(newYork->dateOfTime(9, beyond), std::nullopt) << beyond;
    for (const auto unit : {CalendarUnit::day, CalendarUnit::hour, CalendarUnit::minute}) {
      EXPECT_EQ(newYork->adding(unit, beyond, at("2025-01-10T10:30:00Z")), std::nullopt) << beyond;
    }
  }
}

TEST_P(Gregorian, theLargestNumbersInBoundsAreExact) {
  const auto utc = in("UTC");
  EXPECT_EQ(utc->date(wall(2025, 1, 1, kLargestStep)), at("2025-01-01T00:00:00Z") + std::chrono::hours(kLargestStep));
  EXPECT_EQ(utc->adding(CalendarUnit::day, kLargestStep, at("2025-01-01T00:00:00Z")),
            at("2025-01-01T00:00:00Z") + std::chrono::days(kLargestStep));
}

TEST_P(Gregorian, sumsBeyond64BitsFormNoDate) {
  const auto newYork = in("America/New_York");
  for (const auto unit : {CalendarUnit::day, CalendarUnit::hour, CalendarUnit::minute}) {
    EXPECT_EQ(newYork->adding(unit, 1, Instant::distantFuture()), std::nullopt);
    EXPECT_EQ(newYork->adding(unit, -1, Instant::distantPast()), std::nullopt);
  }
  EXPECT_EQ(newYork->startOfDay(Instant::distantPast()), Instant::distantPast());
  EXPECT_EQ(newYork->startOfMinute(Instant::distantPast()), Instant::distantPast());
}

TEST_P(Gregorian, weekdaysCountFromSunday) {
  const auto utc = in("UTC");
  for (int day = 0; day < 7; ++day) {
    EXPECT_EQ(utc->weekday(at("2025-01-05T23:59:59Z") + std::chrono::days(day)), day + 1);
    EXPECT_EQ(utc->weekday(at("1931-02-01T00:00:00Z") + std::chrono::days(day)), day + 1);
  }
  EXPECT_EQ(in("Asia/Kolkata")->weekday(at("2025-01-04T18:30:00Z")), 1);
}

TEST_P(Gregorian, tellsTheDistanceFromUtc) {
  EXPECT_EQ(in("Asia/Kolkata")->utcOffset(at("2025-01-10T12:00:00Z")), std::chrono::minutes(330));
  EXPECT_EQ(in("America/New_York")->utcOffset(at("2025-07-01T12:00:00Z")), std::chrono::hours(-4));
  EXPECT_EQ(in("Africa/Monrovia")->utcOffset(at("1971-06-01T00:00:00Z")), std::chrono::seconds(-2670));
}

TEST_P(Gregorian, aBareTimeIsOnADayWithoutAClockChange) {
  for (const char* zone : {"America/New_York", "Europe/London", "Pacific/Apia", "Asia/Tehran"}) {
    const auto calendar = in(zone);
    const auto nine = calendar->dateOfTime(9, 30);
    ASSERT_TRUE(nine);
    EXPECT_EQ(calendar->components(*nine).hour, 9);
    EXPECT_EQ(calendar->components(*nine).minute, 30);
    EXPECT_EQ(calendar->components(*calendar->dateOfTime(25, -5)).hour, 0);
    EXPECT_EQ(*calendar->dateOfTime(47, 59) - *calendar->dateOfTime(-24, 0), std::chrono::minutes(72 * 60 - 1));
  }
}

TEST(MakeCalendar, theLocaleSaysWhichCalendar) {
  struct Case {
    const char *locale, *identifier;
  };
  for (const auto& [locale, identifier] :
       {Case{"en_US", "gregorian"}, Case{"de_DE.UTF-8", "gregorian"}, Case{"de-DE", "gregorian"},
        Case{"de_DE@euro", "gregorian"}, Case{"sr_RS@latin", "gregorian"}, Case{"C", "gregorian"},
        Case{"C.UTF-8", "gregorian"}, Case{"POSIX", "gregorian"}, Case{"en_US_POSIX", "gregorian"},
        Case{"es_419", "gregorian"}, Case{"ar_EG@numbers=arab", "gregorian"}, Case{"th_TH", "buddhist"},
        Case{"th_TH@calendar=gregorian", "gregorian"}, Case{"th_TH@calendar=buddhist", "buddhist"},
        Case{"th-TH-u-ca-buddhist", "buddhist"}, Case{"fa_IR", "persian"}, Case{"ja_JP@calendar=japanese", "japanese"},
        Case{"en_US.UTF-8@calendar=hebrew;numbers=latn", "hebrew"}, Case{"de@collation=phonebook", "gregorian"}}) {
    const auto calendar = makeCalendar(locale, "UTC");
    ASSERT_TRUE(calendar) << locale;
    EXPECT_EQ((*calendar)->identifier(), identifier) << locale;
  }
}

TEST(MakeCalendar, refusesAnUnknownLocaleByName) {
  for (const std::string locale :
       {"xx_YY", "nonsense", "", "en_ZZ", "_DE", "de_", "und", "root", "en US", "../en", "th_TH@calendar=lunar",
        "en_US@numbers=runes", "en_US@sorting=none", "de@collation=none", "en_US_XX", "en_Xxxx_US",
        "@calendar=buddhist", "fr_FR@", "\xff\xfe"}) {
    const auto calendar = makeCalendar(locale, "UTC");
    ASSERT_FALSE(calendar) << locale;
    EXPECT_EQ(calendar.error().description, "unknown locale: " + locale);
  }
  EXPECT_FALSE(makeCalendar(std::string("en_US\0_DE", 9), "UTC"));
}

TEST(MakeCalendar, takesTheNamesOfTheTimeZoneDatabase) {
  for (const char* zone : {"UTC", "GMT", "Etc/GMT+2", "America/New_York", "US/Eastern", "Asia/Calcutta", "Europe/Kyiv",
                           "EST5EDT", "EST", "CET", "Japan", "America/Argentina/Buenos_Aires"}) {
    EXPECT_TRUE(makeCalendar("en_US", zone)) << zone;
  }
}

TEST(MakeCalendar, refusesAnUnknownTimeZoneByName) {
  for (const std::string zone : {"GMT+2", "UTC+1", "+02:00", "", "Mars/Olympus", "america/new_york", "Etc/Unknown",
                                 "PST", "BST", "IST", "SystemV/EST5EDT", "EST5EDT,M3.2.0,M11.1.0", "\xff"}) {
    const auto calendar = makeCalendar("en_US", zone);
    ASSERT_FALSE(calendar) << zone;
    EXPECT_EQ(calendar.error().description, "unknown time zone: " + zone);
  }
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "agent/ZoneRules.h"

#include <gtest/gtest.h>

#include <limits>

#include "doubles/Instants.h"
#include "doubles/ScopedZone.h"
#include "icu/Calendars.h"

namespace pillora {
namespace {

WallTime wall(std::string_view text) { return parseTime(text)->wall; }

TEST(ZoneRules, gapsMoveForwardAndRepeatedTimesAreTheFirst) {
  const struct {
    const char* zone;
    const char* wall;
    const char* instant;
  } kCases[] = {
      {"America/New_York", "2025-01-10T08:00", "2025-01-10T13:00:00Z"},
      {"America/New_York", "2025-03-09T01:59", "2025-03-09T06:59:00Z"},
      {"America/New_York", "2025-03-09T02:00", "2025-03-09T07:00:00Z"},  // the gap's first minute: 03:00
      {"America/New_York", "2025-03-09T02:30", "2025-03-09T07:30:00Z"},  // 03:30
      {"America/New_York", "2025-03-09T02:59", "2025-03-09T07:59:00Z"},
      {"America/New_York", "2025-03-09T03:00", "2025-03-09T07:00:00Z"},
      {"America/New_York", "2025-11-02T00:59", "2025-11-02T04:59:00Z"},
      {"America/New_York", "2025-11-02T01:00", "2025-11-02T05:00:00Z"},  // the first 01:00
      {"America/New_York", "2025-11-02T01:59", "2025-11-02T05:59:00Z"},
      {"America/New_York", "2025-11-02T02:00", "2025-11-02T07:00:00Z"},
      {"Australia/Lord_Howe", "2025-10-05T02:15", "2025-10-04T15:45:00Z"},  // half an hour's gap: 02:45
      {"Australia/Lord_Howe", "2025-04-06T01:45", "2025-04-05T14:45:00Z"},  // half an hour repeated
      {"Australia/Lord_Howe", "2025-04-06T02:00", "2025-04-05T15:30:00Z"},
      {"America/Havana", "2025-11-02T00:00", "2025-11-02T04:00:00Z"},  // midnight twice
      {"America/Havana", "2025-03-09T00:30", "2025-03-09T05:30:00Z"},  // midnight left out
      {"America/Sao_Paulo", "2018-11-04T00:00", "2018-11-04T03:00:00Z"},
      {"America/Sao_Paulo", "2018-02-17T23:30", "2018-02-18T01:30:00Z"},
      {"Asia/Kolkata", "2025-01-10T00:00", "2025-01-09T18:30:00Z"},
      {"Pacific/Apia", "2011-12-30T12:00", "2011-12-30T22:00:00Z"},  // a day that never was
      {"UTC", "2024-02-29T23:59", "2024-02-29T23:59:00Z"},
  };
  for (const auto& each : kCases) {
    const ScopedZone zone(each.zone);
    EXPECT_EQ(LibraryZone().instantOf(wall(each.wall)), at(each.instant)) << each.zone << ' ' << each.wall;
    const auto calendar = makeCalendar("en_US", each.zone);
    ASSERT_TRUE(calendar);
    EXPECT_EQ(CalendarZone(**calendar).instantOf(wall(each.wall)), at(each.instant)) << each.zone << ' ' << each.wall;
  }
}

TEST(ZoneRules, agreesWithTheCalendarInEveryQuarterOfAnHourOfAYear) {
  for (const char* name : {"America/New_York", "Australia/Lord_Howe", "America/Havana", "Africa/Casablanca"}) {
    const ScopedZone zone(name);
    const auto calendar = makeCalendar("en_US", name);
    ASSERT_TRUE(calendar);
    const CalendarZone expected(**calendar);
    const Instant end = at("2026-01-01T00:00:00Z");
    for (Instant time = at("2025-01-01T00:00:00Z"); time < end; time = time + std::chrono::minutes(15)) {
      const WallTime local = utcWallTime(time);
      ASSERT_EQ(LibraryZone().instantOf(local), expected.instantOf(local)) << name << ' ' << iso8601(time);
    }
  }
}

TEST(ZoneRules, refusesWhatIsNoDate) {
  const ScopedZone zone("America/New_York");
  const WallTime good{2025, 1, 10, 8, 0, {}};
  const auto with = [&](auto change) {
    WallTime changed = good;
    change(changed);
    return changed;
  };
  ASSERT_TRUE(LibraryZone().instantOf(good));
  const WallTime bad[] = {
      with([](WallTime& w) { w.month = 0; }),
      with([](WallTime& w) { w.month = 13; }),
      with([](WallTime& w) { w.day = 0; }),
      with([](WallTime& w) { w.month = 2, w.day = 29; }),
      with([](WallTime& w) { w.month = 4, w.day = 31; }),
      with([](WallTime& w) { w.hour = 24; }),
      with([](WallTime& w) { w.minute = 60; }),
      with([](WallTime& w) { w.day = 4'000'000'000; }),
      with([](WallTime& w) { w.year = std::numeric_limits<int64_t>::max(); }),
      with([](WallTime& w) { w.year = std::numeric_limits<int64_t>::min(); }),
  };
  const auto calendar = makeCalendar("en_US", "America/New_York");
  ASSERT_TRUE(calendar);
  for (const WallTime& each : bad) {
    EXPECT_FALSE(LibraryZone().instantOf(each));
    EXPECT_FALSE(CalendarZone(**calendar).instantOf(each));
  }
}

}  // namespace
}  // namespace pillora

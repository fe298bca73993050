// SPDX-License-Identifier: MIT
#include "support/Instant.h"

#include <gtest/gtest.h>

#include <limits>
#include <rapidcheck/gtest.h>
#include <string>

#include "doubles/Instants.h"

namespace pillora {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

constexpr int64_t kInt64Max = std::numeric_limits<int64_t>::max();
constexpr int64_t kInt64Min = std::numeric_limits<int64_t>::min();

TEST(Instant, isWrittenAsUtcWithAFractionOnlyWhereThereIsOne) {
  const struct {
    int64_t microseconds;
    const char* text;
  } kCases[] = {
      {0, "1970-01-01T00:00:00Z"},
      {1'736'504'999'000'000, "2025-01-10T10:29:59Z"},
      {250'000, "1970-01-01T00:00:00.25Z"},
      {1, "1970-01-01T00:00:00.000001Z"},
      {-1, "1969-12-31T23:59:59.999999Z"},
      {-500'000, "1969-12-31T23:59:59.5Z"},
      {951'782'400'000'000, "2000-02-29T00:00:00Z"},
      {253'402'300'799'000'000, "9999-12-31T23:59:59Z"},
      {253'402'300'800'000'000, "+10000-01-01T00:00:00Z"},
      {-62'167'219'200'000'000, "0000-01-01T00:00:00Z"},
      {-62'167'219'201'000'000, "-0001-12-31T23:59:59Z"},
      {kInt64Max, "+294247-01-10T04:00:54.775807Z"},
      {kInt64Min, "-290308-12-21T19:59:05.224192Z"},
  };
  for (const auto& each : kCases) {
    EXPECT_EQ(iso8601(Instant(Instant::Duration(each.microseconds))), each.text) << each.microseconds;
  }
}

TEST(Instant, secondsSince1970KeepMicrosecondsOfOurTimes) {
  EXPECT_EQ(at("2025-01-10T08:00:00Z").secondsSince1970(), 1736496000.0);
  EXPECT_EQ(at("2025-01-10T08:00:00.000001Z").secondsSince1970(), 1736496000.000001);
}

TEST(Instant, addingIsBoundedAndNeverOverflows) {
  const Instant noon = at("2025-01-10T12:00:00Z");
  EXPECT_EQ(checkedAdd(noon, 90, minutes(1)), at("2025-01-10T13:30:00Z"));
  EXPECT_EQ(checkedAdd(noon, -kLargestStep, minutes(1)), noon - minutes(kLargestStep));
  EXPECT_EQ(checkedAdd(noon, kLargestStep, minutes(1)), noon + minutes(kLargestStep));
  for (const int64_t amount : {kLargestStep + 1, -kLargestStep - 1, kInt64Max, kInt64Min}) {
    EXPECT_FALSE(checkedAdd(noon, amount, minutes(1))) << amount;
  }
  EXPECT_FALSE(checkedAdd(Instant::distantFuture(), 1, minutes(1)));
  EXPECT_FALSE(checkedAdd(Instant::distantPast(), -1, minutes(1)));
  EXPECT_EQ(checkedAdd(Instant::distantPast(), 0, minutes(1)), Instant::distantPast());
}

TEST(ParsedTime, readsADateTimeWithZoneOffsetOrNeither) {
  const WallTime halfPastSeven = {2026, 3, 8, 7, 30, Instant::Duration(0)};
  const struct {
    const char* text;
    Instant::Duration second;
    std::optional<seconds> offset;
  } kCases[] = {
      {"2026-03-08T07:30:00Z", {}, seconds(0)},
      {"2026-03-08T07:30Z", {}, seconds(0)},
      {"2026-03-08T07:30:59.25Z", std::chrono::milliseconds(59'250), seconds(0)},
      {"2026-03-08T07:30:00.000001Z", Instant::Duration(1), seconds(0)},
      {"2026-03-08T07:30:00+01:00", {}, seconds(3600)},
      {"2026-03-08T07:30:00-0530", {}, seconds(-19'800)},
      {"2026-03-08T07:30+23:59", {}, seconds(86'340)},
      {"2026-03-08T07:30:00", {}, std::nullopt},
      {"2026-03-08T07:30", {}, std::nullopt},
  };
  for (const auto& each : kCases) {
    const auto parsed = parseTime(each.text);
    ASSERT_TRUE(parsed) << each.text;
    WallTime expected = halfPastSeven;
    expected.second = each.second;
    EXPECT_EQ(parsed->wall, expected) << each.text;
    EXPECT_EQ(parsed->offset, each.offset) << each.text;
  }
}

TEST(ParsedTime, refusesWhatNamesNoDateAndTime) {
  for (const char* text : {"",
                           "2026-03-08",
                           "2026-03-08T",
                           "2026-03-08T07",
                           "2026-03-08T7:30Z",
                           "2026-03-08 07:30:00Z",
                           "2026-03-08t07:30:00Z",
                           "2026-03-08T07:30:00z",
                           "2026-03-08T07:30:00 Z",
                           " 2026-03-08T07:30:00Z",
                           "2026-03-08T07:30:00Z ",
                           "2026-03-08T24:00:00Z",
                           "2026-03-08T07:60:00Z",
                           "2026-03-08T07:30:60Z",
                           "2026-03-08T07:30:00.Z",
                           "2026-03-08T07:30:00.0000001Z",
                           "2026-03-08T07:30:00,5Z",
                           "2026-02-29T07:30:00Z",
                           "2025-02-30T07:30:00Z",
                           "2026-04-31T07:30:00Z",
                           "2026-00-01T07:30:00Z",
                           "2026-13-01T07:30:00Z",
                           "2026-03-00T07:30:00Z",
                           "2026-03-08T07:30:00+1",
                           "2026-03-08T07:30:00+01",
                           "2026-03-08T07:30:00+01:0",
                           "2026-03-08T07:30:00+24:00",
                           "2026-03-08T07:30:00+01:60",
                           "2026-03-08T07:30:00+01:00Z",
                           "+2026-03-08T07:30:00Z",
                           "-026-03-08T07:30:00Z",
                           "1900-02-29T00:00:00Z",
                           "\xD9\xA2\xD9\xA0"}) {
    EXPECT_FALSE(parseTime(text)) << text;
  }
}

TEST(ParsedTime, knowsLeapYears) {
  EXPECT_TRUE(parseTime("2024-02-29T00:00:00Z"));
  EXPECT_TRUE(parseTime("2000-02-29T00:00:00Z"));
  EXPECT_FALSE(parseTime("2100-02-29T00:00:00Z"));
}

RC_GTEST_PROP(Instant, isReadBackAsWritten, ()) {
  // Years 0 to 9999, which are written without a sign.
  const Instant instant(
      Instant::Duration(*rc::gen::inRange<int64_t>(-62'167'219'200'000'000, 253'402'300'800'000'000)));
  RC_ASSERT(at(iso8601(instant)) == instant);
}

TEST(Instant, civilDatesReachAsFarAsInstants) {
  EXPECT_EQ(civilFromDays(106'751'991), (CivilDate{294'247, 1, 10}));
  EXPECT_EQ(civilFromDays(-106'751'992), (CivilDate{-290'308, 12, 21}));
  for (const int64_t year : {-300'000, -1, 0, 1900, 2000, 300'000}) {
    EXPECT_EQ(civilFromDays(daysFromCivil(year, 2, 28)), (CivilDate{year, 2, 28}));
    EXPECT_EQ(daysFromCivil(year, 3, 1) - daysFromCivil(year, 2, 28), year % 4 != 0 || year == 1900 ? 1 : 2) << year;
  }
}

RC_GTEST_PROP(Instant, civilDatesAgreeWithTheStandardLibrary, ()) {
  const auto days = *rc::gen::inRange<int>(-11'000'000, 11'000'000);
  const std::chrono::year_month_day expected{std::chrono::sys_days(std::chrono::days(days))};
  const CivilDate date = civilFromDays(days);
  RC_ASSERT(date == (CivilDate{static_cast<int>(expected.year()), static_cast<unsigned>(expected.month()),
                               static_cast<unsigned>(expected.day())}));
  RC_ASSERT(daysFromCivil(date.year, date.month, date.day) == days);
}

TEST(FloorDiv, roundsTowardMinusInfinity) {
  EXPECT_EQ(floorDiv(7, 3), 2);
  EXPECT_EQ(floorDiv(-7, 3), -3);
  EXPECT_EQ(floorDiv(-6, 3), -2);
  EXPECT_EQ(floorDiv(0, 3), 0);
  EXPECT_EQ(floorDiv(kInt64Min, 1), kInt64Min);
  EXPECT_EQ(floorMod(7, 3), 1);
  EXPECT_EQ(floorMod(-7, 3), 2);
  EXPECT_EQ(floorMod(-6, 3), 0);
  EXPECT_EQ(floorMod(kInt64Min, 1000), 192);
}

}  // namespace
}  // namespace pillora

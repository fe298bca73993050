// SPDX-License-Identifier: MIT
#include "model/ReminderInterval.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <rapidcheck/gtest.h>

#include "doubles/Intervals.h"
#include "doubles/Places.h"
#include "doubles/RandomIntervals.h"
#include "doubles/RefusingCalendar.h"
#include "support/Json.h"

namespace pillora {
namespace {

using Type = ReminderIntervalType;

constexpr const char* kFallbackText =
    R"({"type":"Daily","hourlyInterval":4,"dailyTimes":[{"hour":9,"minute":0}],"weeklyDays":[2,3,4,5,6],)"
    R"("weeklyTime":{"hour":9,"minute":0},"monthlyDays":[1],"monthlyTime":{"hour":9,"minute":0},)"
    R"("customIntervalMinutes":480})";

std::string shown(const ReminderInterval& interval, const std::string& locale = "en_US") {
  return plainBlanks(interval.displayText(*calendarOf(locale, "UTC"), *textsOf(locale, "UTC")));
}

/// The fallback's JSON with one member replaced by `value`, or taken out.
std::string fallbackWith(const std::string& key, const std::optional<std::string>& value) {
  Json object = intervalToJson(fallbackInterval());
  if (value) {
    object[key] = *parseJson(*value);
  } else {
    object.erase(key);
  }
  return jsonText(object);
}

TEST(ReminderIntervalType, hasFiveCasesInOrder) {
  std::vector<std::string_view> texts;
  for (const auto type : kAllReminderIntervalTypes) {
    texts.push_back(rawValue(type));
    EXPECT_EQ(reminderIntervalType(rawValue(type)), type);
  }
  EXPECT_EQ(texts, (std::vector<std::string_view>{"Hourly", "Daily", "Weekly", "Monthly", "Custom"}));
  EXPECT_FALSE(reminderIntervalType("daily"));
  EXPECT_FALSE(reminderIntervalType(""));
}

TEST(DisplayText, ofHours) {
  const std::pair<int64_t, const char*> kCases[] = {{1, "Every 1 hour"},
                                                    {4, "Every 4 hours"},
                                                    {0, "Every 0 hours"},
                                                    {-1, "Every -1 hours"},
                                                    {INT64_MAX, "Every 9223372036854775807 hours"}};
  for (const auto& [hours, text] : kCases) EXPECT_EQ(shown(hourly(hours)), text);
}

TEST(DisplayText, ofCustomMinutes) {
  const std::pair<int64_t, const char*> kCases[] = {
      {45, "Every 45 minutes"},
      {1, "Every 1 minute"},
      {0, "Every 0 minutes"},
      {59, "Every 59 minutes"},
      {60, "Every 1 hour"},
      {61, "Every 1h 1m"},
      {90, "Every 1h 30m"},
      {119, "Every 1h 59m"},
      {120, "Every 2 hours"},
      {121, "Every 2h 1m"},
      {1440, "Every 24 hours"},
      {-1, "Every -1 minutes"},
      {-5, "Every -5 minutes"},
      {-59, "Every -59 minutes"},
      {-60, "Every 0 minutes"},
      {-61, "Every -1 minutes"},
      {INT64_MAX, "Every 153722867280912930h 7m"},
      {INT64_MIN, "Every -8 minutes"},
  };
  for (const auto& [minutes, text] : kCases) EXPECT_EQ(shown(custom(minutes)), text) << minutes;
}

TEST(DisplayText, ofDailyTimesInStoredOrder) {
  EXPECT_EQ(shown(daily({{20, 0}, {8, 0}})), "Daily at 8:00 PM, 8:00 AM");
  EXPECT_EQ(shown(daily({{9, 0}})), "Daily at 9:00 AM");
  EXPECT_EQ(shown(daily({{9, 5}, {0, 0}}), "de_DE"), "Daily at 09:05, 00:00");
}

TEST(DisplayText, ofDailyLeavesOutTimesThatNameNone) {
  const auto calendar = calendarOf("en_US", "UTC");
  const auto texts = textsOf("en_US", "UTC");
  EXPECT_EQ(shown(daily({{9, std::nullopt}, {std::nullopt, 30}, {10, 0}, {}, {INT64_MAX, 0}, {0, INT64_MIN}})),
            "Daily at 10:00 AM");
  EXPECT_EQ(shown(daily({})), "Daily at ");
  const RefusingCalendar refusing(*calendar, {.formingDates = true});
  EXPECT_EQ(daily({{9, 0}}).displayText(refusing, *texts), "Daily at ");
}

TEST(DisplayText, ofDailyIsTheSameInEveryZone) {
  for (const char* zone : {"UTC", "America/New_York", "Australia/Lord_Howe", "Asia/Kolkata"}) {
    const auto text = daily({{2, 30}}).displayText(*calendarOf("en_US", zone), *textsOf("en_US", zone));
    EXPECT_EQ(plainBlanks(text), "Daily at 2:30 AM") << zone;
  }
}

TEST(DisplayText, ofWeekdaysSortedWithNeitherPrefixNorTime) {
  EXPECT_EQ(shown(weekly({7, 1}, {9, 0})), "Sun, Sat");
  EXPECT_EQ(shown(weekly({6, 2, 4}, {})), "Mon, Wed, Fri");
  EXPECT_EQ(shown(weekly({0, 8, 3, -1, INT64_MIN, INT64_MAX}, {9, 0})), "Tue");
  EXPECT_EQ(shown(weekly({}, {9, 0})), "");
  EXPECT_EQ(shown(weekly({0, 8}, {9, 0})), "");
}

TEST(DisplayText, ofDaysOfTheMonthSorted) {
  EXPECT_EQ(shown(monthly({15, 1}, {9, 0})), "Monthly on days 1, 15");
  EXPECT_EQ(shown(monthly({1}, {})), "Monthly on day 1");
  EXPECT_EQ(shown(monthly({}, {9, 0})), "Monthly on days ");
  EXPECT_EQ(shown(monthly({0, 32, -4}, {9, 0})), "Monthly on days -4, 0, 32");
}

TEST(DisplayText, passesThroughTheLanguage) {
  const auto calendar = calendarOf("en_US", "UTC");
  const auto texts = textsOf("en_US", "UTC", "en-XA");
  const ReminderInterval intervals[] = {hourly(1),
                                        hourly(4),
                                        custom(5),
                                        custom(90),
                                        daily({{9, 0}}),
                                        daily({}),
                                        monthly({1}, {9, 0}),
                                        monthly({1, 2}, {9, 0})};
  for (const auto& interval : intervals) EXPECT_NE(interval.displayText(*calendar, *texts), shown(interval));
}

TEST(IntervalJson, hasEightMembersInOrderAndSortedSets) {
  EXPECT_EQ(encodeInterval(fallbackInterval()), kFallbackText);
  ReminderInterval interval = fallbackInterval();
  interval.type = Type::monthly;
  interval.monthlyDays = {31, 1, 15};
  interval.weeklyDays = {7, 1};
  interval.dailyTimes = {{20, 0}, {8, std::nullopt}, {std::nullopt, 5}, {}};
  interval.monthlyTime = {};
  EXPECT_EQ(encodeInterval(interval),
            R"({"type":"Monthly","hourlyInterval":4,"dailyTimes":[{"hour":20,"minute":0},{"hour":8},{"minute":5},{}],)"
            R"("weeklyDays":[1,7],"weeklyTime":{"hour":9,"minute":0},"monthlyDays":[1,15,31],"monthlyTime":{},)"
            R"("customIntervalMinutes":480})");
}

TEST(IntervalJson, isReadInAnyOrderAndIgnoresOtherMembers) {
  const auto interval = decodeInterval(
      R"({"customIntervalMinutes":480,"note":"x","monthlyTime":{"minute":0,"hour":9,"second":30,"era":1},
          "monthlyDays":[1,1],"weeklyTime":{"hour":9,"minute":0},"weeklyDays":[6,5,4,3,2],
          "dailyTimes":[{"minute":0,"hour":9}],"hourlyInterval":4,"type":"Daily"})");
  ASSERT_TRUE(interval) << interval.error().description;
  EXPECT_EQ(*interval, fallbackInterval());
}

TEST(IntervalJson, aMissingMemberMakesItUnreadable) {
  for (const char* key : {"type", "hourlyInterval", "dailyTimes", "weeklyDays", "weeklyTime", "monthlyDays",
                          "monthlyTime", "customIntervalMinutes"}) {
    const auto interval = decodeInterval(fallbackWith(key, std::nullopt));
    ASSERT_FALSE(interval) << key;
    EXPECT_EQ(interval.error().description, "the document: the member \"" + std::string(key) + "\" is missing");
  }
}

TEST(IntervalJson, aMemberOfTheWrongKindMakesItUnreadable) {
  const struct {
    const char* key;
    const char* value;
    const char* error;
  } kCases[] = {
      {"type", R"("daily")", R"(type: "daily" is no kind of schedule)"},
      {"type", "1", "type: expected a text"},
      {"type", "null", "type: expected a text"},
      {"hourlyInterval", "4.0", "hourlyInterval: expected a whole number"},
      {"hourlyInterval", R"("4")", "hourlyInterval: expected a whole number"},
      {"hourlyInterval", "true", "hourlyInterval: expected a whole number"},
      {"hourlyInterval", "9223372036854775808", "hourlyInterval: expected a whole number"},
      {"customIntervalMinutes", "1e2", "customIntervalMinutes: expected a whole number"},
      {"customIntervalMinutes", "null", "customIntervalMinutes: expected a whole number"},
      {"dailyTimes", "{}", "dailyTimes: expected a list"},
      {"dailyTimes", "[9]", "dailyTimes[0]: expected an object"},
      {"dailyTimes", "[{},[]]", "dailyTimes[1]: expected an object"},
      {"dailyTimes", R"([{"hour":"9"}])", "dailyTimes[0].hour: expected a whole number"},
      {"dailyTimes", R"([{"hour":9,"minute":0.5}])", "dailyTimes[0].minute: expected a whole number"},
      {"weeklyDays", "[2,3.5]", "weeklyDays[1]: expected a whole number"},
      {"weeklyDays", "2", "weeklyDays: expected a list"},
      {"weeklyTime", "null", "weeklyTime: expected an object"},
      {"weeklyTime", "[9,0]", "weeklyTime: expected an object"},
      {"monthlyDays", R"([1,"2"])", "monthlyDays[1]: expected a whole number"},
      {"monthlyTime", R"({"minute":false})", "monthlyTime.minute: expected a whole number"},
  };
  for (const auto& each : kCases) {
    const auto interval = decodeInterval(fallbackWith(each.key, each.value));
    ASSERT_FALSE(interval) << each.key << ' ' << each.value;
    EXPECT_EQ(interval.error().description, each.error);
  }
}

TEST(IntervalJson, aTimesPartsMayBeMissingOrNull) {
  for (const char* value : {"{}", R"({"hour":null,"minute":null})", R"({"day":3})"}) {
    const auto interval = decodeInterval(fallbackWith("weeklyTime", value));
    ASSERT_TRUE(interval) << value;
    EXPECT_EQ(interval->weeklyTime, TimeOfDay()) << value;
  }
  EXPECT_EQ(decodeInterval(fallbackWith("weeklyTime", R"({"hour":-9,"minute":null})"))->weeklyTime,
            (TimeOfDay{-9, std::nullopt}));
}

TEST(IntervalJson, whatIsNoObjectIsUnreadable) {
  for (const char* data : {"", " ", "null", "[]", "7", "\"Daily\"", "{", "{}x"}) {
    EXPECT_FALSE(decodeInterval(data)) << data;
  }
}

RC_GTEST_PROP(IntervalJson, readsBackWhatItWrites, ()) {
  const ReminderInterval interval = *anyInterval();
  const auto read = decodeInterval(encodeInterval(interval));
  RC_ASSERT(static_cast<bool>(read));
  RC_ASSERT(*read == interval);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "screens/MedicineForm.h"

#include <gtest/gtest.h>

#include <limits>

#include "doubles/Instants.h"
#include "doubles/Places.h"
#include "doubles/RefusingCalendar.h"

namespace pillora {
namespace {

TEST(MedicineForm, namesAreTrimmedOfTabsAndEveryKindOfSpaceButNotOfLineBreaks) {
  EXPECT_EQ(trimmedName("  \tAspirin 100\t "), "Aspirin 100");
  EXPECT_EQ(trimmedName("\u00A0\u1680\u2000\u200A\u202F\u205F\u3000x\u3000\u2007\u00A0"), "x");
  EXPECT_EQ(trimmedName("\n"), "\n");
  EXPECT_EQ(trimmedName(" \r\n "), "\r\n");
  EXPECT_EQ(trimmedName("\u0085\u2028"), "\u0085\u2028");
  EXPECT_EQ(trimmedName("\u200B"), "\u200B") << "a zero-width space is no space separator";
  EXPECT_EQ(trimmedName(" \t\u00A0"), "");
  EXPECT_EQ(trimmedName(""), "");
}

TEST(MedicineForm, steppersReachTheirStepsAlone) {
  EXPECT_TRUE(kCustomMinutes.reaches(0));
  EXPECT_TRUE(kCustomMinutes.reaches(55));
  for (const int64_t value : {-5, 1, 59, 60}) EXPECT_FALSE(kCustomMinutes.reaches(value)) << value;
  EXPECT_TRUE(kHourlyInterval.reaches(1));
  EXPECT_TRUE(kHourlyInterval.reaches(24));
  EXPECT_FALSE(kHourlyInterval.reaches(0));
  EXPECT_FALSE(kHourlyInterval.reaches(25));
}

TEST(MedicineForm, theScheduleOpensAtNineEveryDay) {
  const auto calendar = calendarOf("en_US", "America/New_York");
  EXPECT_EQ(initialInterval(at("2025-03-09T12:34:00Z"), *calendar), fallbackInterval());
}

TEST(MedicineForm, withACalendarThatKnowsNoNineTheTimesAreThoseOfNow) {
  const auto calendar = calendarOf("en_US", "UTC");
  const RefusingCalendar refusing(*calendar, {.formingDates = true});
  const auto interval = initialInterval(at("2025-01-10T12:34:56Z"), refusing);
  const TimeOfDay now{12, 34};
  EXPECT_EQ(interval.dailyTimes, std::vector<TimeOfDay>{now});
  EXPECT_EQ(interval.weeklyTime, now);
  EXPECT_EQ(interval.monthlyTime, now);
}

TEST(MedicineForm, hoursAndMinutesAddUpToTheMinutesOfACustomInterval) {
  EXPECT_EQ(customIntervalMinutes(8, 0), 480);
  EXPECT_EQ(customIntervalMinutes(0, 0), 0);
  EXPECT_EQ(customIntervalMinutes(168, 55), 10135);
}

TEST(MedicineFormDeathTest, aCustomIntervalBeyondSixtyFourBitsEndsTheProgram) {
  constexpr int64_t kFarthest = std::numeric_limits<int64_t>::max();
  EXPECT_DEATH(customIntervalMinutes(kFarthest, 0), "");
  EXPECT_DEATH(customIntervalMinutes(kFarthest / 60, 59), "");
}

TEST(MedicineForm, kindsOfScheduleHaveTheirSymbols) {
  std::vector<std::string> symbols;
  for (const ReminderIntervalType type : kAllReminderIntervalTypes) symbols.push_back(intervalSymbol(type));
  EXPECT_EQ(symbols,
            (std::vector<std::string>{"clock", "sun.max", "calendar.badge.clock", "calendar", "slider.horizontal.3"}));
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "model/Medicine.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Places.h"

namespace pillora {
namespace {

const Instant kNow = at("2025-01-10T10:30:00Z");

ReminderInterval everyHours(int64_t hours) {
  ReminderInterval interval = fallbackInterval();
  interval.type = ReminderIntervalType::hourly;
  interval.hourlyInterval = hours;
  return interval;
}

TEST(Medicine, hasTheSchemasDefaults) {
  const Medicine medicine;
  EXPECT_NE(medicine.id(), UUID());
  EXPECT_EQ(medicine.name(), "");
  EXPECT_EQ(medicine.dosage(), "1");
  EXPECT_EQ(medicine.unit(), "pill");
  EXPECT_EQ(medicine.instructions(), "");
  EXPECT_EQ(medicine.color(), "blue");
  EXPECT_EQ(medicine.icon(), "pills");
  EXPECT_EQ(medicine.intervalData(), "");
  EXPECT_TRUE(medicine.isActive());
  EXPECT_TRUE(medicine.allowSnooze());
  EXPECT_EQ(medicine.snoozeDurationMinutes(), 10);
  EXPECT_EQ(medicine.maxSnoozeCount(), 3);
  EXPECT_TRUE(medicine.isRepeating());
  EXPECT_FALSE(medicine.endDate());
  EXPECT_TRUE(medicine.doseLogs().empty());
}

TEST(Medicine, listsItsFieldsInOrder) {
  std::vector<std::string_view> names;
  forEachField<Medicine>([&](std::string_view name, auto) { names.push_back(name); });
  EXPECT_EQ(names, (std::vector<std::string_view>{"id", "name", "dosage", "unit", "instructions", "color", "icon",
                                                  "intervalData", "isActive", "allowSnooze", "snoozeDurationMinutes",
                                                  "maxSnoozeCount", "isRepeating", "createdAt", "updatedAt",
                                                  "startDate", "endDate"}));
}

TEST(Medicine, keepsWhatItIsMadeOf) {
  NewMedicine values;
  values.name = "Ibuprofen";
  values.dosage = "2,5";
  values.unit = "ml";
  values.instructions = "after a meal";
  values.color = "teal";
  values.icon = "drop";
  values.interval = everyHours(6);
  values.isActive = false;
  values.allowSnooze = false;
  values.snoozeDurationMinutes = 25;
  values.maxSnoozeCount = 0;
  values.isRepeating = false;
  values.startDate = at("2025-01-11T00:00:00Z");
  values.endDate = at("2025-02-11T00:00:00Z");
  const auto medicine = Medicine::make(values, kNow);
  EXPECT_EQ(medicine->name(), "Ibuprofen");
  EXPECT_EQ(medicine->dosage(), "2,5");
  EXPECT_EQ(medicine->unit(), "ml");
  EXPECT_EQ(medicine->instructions(), "after a meal");
  EXPECT_EQ(medicine->color(), "teal");
  EXPECT_EQ(medicine->icon(), "drop");
  EXPECT_EQ(medicine->interval(), values.interval);
  EXPECT_EQ(medicine->intervalData(), encodeInterval(values.interval));
  EXPECT_FALSE(medicine->isActive());
  EXPECT_FALSE(medicine->allowSnooze());
  EXPECT_EQ(medicine->snoozeDurationMinutes(), 25);
  EXPECT_EQ(medicine->maxSnoozeCount(), 0);
  EXPECT_FALSE(medicine->isRepeating());
  EXPECT_EQ(medicine->createdAt(), kNow);
  EXPECT_EQ(medicine->updatedAt(), kNow);
  EXPECT_EQ(medicine->startDate(), at("2025-01-11T00:00:00Z"));
  EXPECT_EQ(medicine->endDate(), at("2025-02-11T00:00:00Z"));
  EXPECT_TRUE(medicine->doseLogs().empty());
  EXPECT_NE(Medicine::make(values, kNow)->id(), medicine->id());
}

TEST(Medicine, fallsBackToDailyAtNineWhenItsIntervalCannotBeRead) {
  Medicine medicine;
  for (const char* data : {"", "{", "null", "[]", R"({"type":"Hourly"})"}) {
    medicine.intervalData = std::string(data);
    const ReminderInterval& interval = medicine.interval();
    EXPECT_EQ(interval.type, ReminderIntervalType::daily) << data;
    EXPECT_EQ(interval.hourlyInterval, 4);
    EXPECT_EQ(interval.dailyTimes, (std::vector<TimeOfDay>{{9, 0}}));
    EXPECT_EQ(interval.weeklyDays, (std::set<int64_t>{2, 3, 4, 5, 6}));
    EXPECT_EQ(interval.weeklyTime, (TimeOfDay{9, 0}));
    EXPECT_EQ(interval.monthlyDays, std::set<int64_t>{1});
    EXPECT_EQ(interval.monthlyTime, (TimeOfDay{9, 0}));
    EXPECT_EQ(interval.customIntervalMinutes, 480);
    EXPECT_EQ(medicine.intervalData(), data);
  }
}

TEST(Medicine, readsItsIntervalAnewWhenTheDataChanges) {
  NewMedicine values;
  values.interval = everyHours(6);
  const auto medicine = Medicine::make(values, kNow);
  EXPECT_EQ(medicine->interval().hourlyInterval, 6);
  medicine->intervalData = encodeInterval(everyHours(8));
  EXPECT_EQ(medicine->interval().hourlyInterval, 8);
  medicine->intervalData = "";
  EXPECT_EQ(medicine->interval(), fallbackInterval());
}

TEST(Medicine, anEmptyColourIsBlue) {
  Medicine medicine;
  medicine.color = "";
  EXPECT_EQ(medicine.resolvedColorName(), "blue");
  medicine.color = "mint";
  EXPECT_EQ(medicine.resolvedColorName(), "mint");
  medicine.color = "mauve";
  EXPECT_EQ(medicine.resolvedColorName(), "mauve");
}

TEST(Medicine, nextDoseTimeIsThatOfItsIntervalWhileActive) {
  const auto calendar = calendarOf("en_US", "UTC");
  NewMedicine values;
  values.interval = everyHours(6);
  const auto medicine = Medicine::make(values, kNow);
  EXPECT_EQ(medicine->nextDoseTime(kNow, *calendar), at("2025-01-10T16:30:00Z"));
  medicine->intervalData = "";
  EXPECT_EQ(medicine->nextDoseTime(kNow, *calendar), at("2025-01-11T09:00:00Z"));
}

TEST(Medicine, anInactiveOneHasNoNextDoseTimeWhateverItsInterval) {
  const auto calendar = calendarOf("en_US", "UTC");
  for (const auto type : kAllReminderIntervalTypes) {
    NewMedicine values;
    values.interval = fallbackInterval();
    values.interval.type = type;
    values.isActive = false;
    EXPECT_FALSE(Medicine::make(values, kNow)->nextDoseTime(kNow, *calendar)) << rawValue(type);
  }
}

TEST(Medicine, listsTheLogsOfAWindowInTheOrderOfTheirInsertion) {
  const auto medicine = Medicine::make({}, kNow);
  const auto log = [&](const char* time, DoseStatus status) {
    return DoseLog::make(at(time), std::nullopt, status, 0, "", medicine);
  };
  const auto nine = log("2025-01-10T09:00:00Z", DoseStatus::taken);
  const auto seven = log("2025-01-10T07:00:00Z", DoseStatus::skipped);
  const auto eight = log("2025-01-10T08:00:00Z", DoseStatus::missed);
  const auto ten = log("2025-01-10T10:00:00Z", DoseStatus::snoozed);
  const auto eleven = log("2025-01-10T11:00:00Z", DoseStatus::pending);
  EXPECT_EQ(medicine->doseLogs(), (std::vector{nine, seven, eight, ten, eleven}));
  const Instant from = at("2025-01-10T07:00:00Z");
  const Instant to = at("2025-01-10T09:00:00Z");
  EXPECT_EQ(medicine->doseLogs(from, to), (std::vector{seven, eight}));
  EXPECT_EQ(medicine->doseLogs(to, from), std::vector<std::shared_ptr<DoseLog>>());
  EXPECT_EQ(medicine->loggedTimes(from, at("2025-01-10T11:00:00Z")),
            (std::vector{from, at("2025-01-10T08:00:00Z"), to, at("2025-01-10T10:00:00Z")}));
  EXPECT_EQ(medicine->actedOnTimes(from, at("2025-01-10T12:00:00Z")), (std::vector{from, to}));
  EXPECT_EQ(medicine->actedOnTimes(from, to), std::vector{from});
}

}  // namespace
}  // namespace pillora

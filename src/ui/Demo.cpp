// SPDX-License-Identifier: MIT
#include "ui/Demo.h"

#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "schedule/Schedule.h"

namespace pillora {

namespace {

constexpr int kDays = 30;

ReminderInterval interval(ReminderIntervalType type) {
  ReminderInterval interval = fallbackInterval();
  interval.type = type;
  return interval;
}

ReminderInterval daily(std::vector<TimeOfDay> times) {
  ReminderInterval made = interval(ReminderIntervalType::daily);
  made.dailyTimes = std::move(times);
  return made;
}

ReminderInterval weekly(std::set<int64_t> days, TimeOfDay time) {
  ReminderInterval made = interval(ReminderIntervalType::weekly);
  made.weeklyDays = std::move(days);
  made.weeklyTime = time;
  return made;
}

ReminderInterval monthly(std::set<int64_t> days, TimeOfDay time) {
  ReminderInterval made = interval(ReminderIntervalType::monthly);
  made.monthlyDays = std::move(days);
  made.monthlyTime = time;
  return made;
}

struct Sample {
  std::string name, dosage, unit, instructions, color, icon;
  ReminderInterval interval;
  bool isActive = true;
};

std::vector<Sample> samples() {
  return {
      {"Metformin", "500", "mg", "With breakfast and dinner", "blue", "pills", daily({{8, 0}, {19, 0}})},
      {"Lisinopril", "10", "mg", "", "red", "heart", daily({{8, 0}})},
      {"Vitamin D", "5", "drops", "In a spoon of yogurt", "yellow", "sun.max", weekly({2, 4, 6}, {9, 0})},
      {"Eye drops", "2", "drops", "Left eye", "teal", "eye", daily({{10, 0}, {15, 0}, {20, 0}})},
      {"Melatonin", "3", "mg", "Half an hour before bed", "indigo", "moon", daily({{22, 30}})},
      {"Vitamin B12", "1", "mg", "", "pink", "syringe", monthly({1, 15}, {10, 0})},
      {"Amoxicillin", "500", "mg", "Until the pack is empty", "orange", "cross.vial", daily({{9, 0}, {21, 0}}), false}};
}

/// What became of a dose, and how many minutes off it was. Mornings are kept better than nights.
std::pair<DoseStatus, int> outcome(std::mt19937& random, bool isLate) {
  const auto roll = random() % 100;
  if (roll < (isLate ? 8U : 4U)) return {DoseStatus::missed, 0};
  if (roll < (isLate ? 14U : 7U)) return {DoseStatus::skipped, 4};
  const int minutes = static_cast<int>(random() % 12) - 3;
  return {DoseStatus::taken, roll > 90 ? minutes + 35 : minutes};
}

/// The doses of the past days, each with its log. Of today only what has been acted on.
void addHistory(ModelContext& context, const std::shared_ptr<Medicine>& medicine, const Calendar& calendar,
                Instant from, Instant now, std::mt19937& random) {
  const Instant today = calendar.startOfDay(now);
  Instant cursor = from;
  while (const auto due = medicine->interval().nextOccurrence(cursor, calendar)) {
    if (*due <= cursor || *due >= now - std::chrono::minutes(90)) return;
    cursor = *due;
    const auto [status, minutes] = outcome(random, calendar.components(*due).hour >= 18);
    if (status == DoseStatus::missed && *due >= today) continue;
    const bool isMissed = status == DoseStatus::missed;
    const auto nextDay = calendar.adding(CalendarUnit::day, 1, calendar.startOfDay(*due));
    const Instant acted = isMissed && nextDay ? *nextDay : *due + std::chrono::minutes(minutes);
    context.insert(DoseLog::make(*due, acted, status, 0, "", medicine));
  }
}

}  // namespace

DemoClock::DemoClock(const Calendar& gregorian) {
  DateComponents morning;
  morning.year = 2025;
  morning.month = 1;
  morning.day = 10;
  morning.hour = 10;
  morning.minute = 12;
  now_ = gregorian.date(morning).value_or(Instant());
}

void fillWithDemo(ModelContext& context, const Calendar& calendar, Instant now) {
  std::mt19937 random(20'250'110);
  const Instant from = calendar.adding(CalendarUnit::day, -kDays, calendar.startOfDay(now)).value_or(now);
  for (const Sample& sample : samples()) {
    NewMedicine values;
    values.name = sample.name;
    values.dosage = sample.dosage;
    values.unit = sample.unit;
    values.instructions = sample.instructions;
    values.color = sample.color;
    values.icon = sample.icon;
    values.interval = sample.interval;
    values.isActive = sample.isActive;
    values.startDate = from;
    const auto medicine = Medicine::make(std::move(values), from);
    context.insert(medicine);
    addHistory(context, medicine, calendar, from, now, random);
  }
}

}  // namespace pillora

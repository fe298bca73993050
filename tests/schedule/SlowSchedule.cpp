// SPDX-License-Identifier: MIT
#include "schedule/SlowSchedule.h"

#include <algorithm>
#include <cstdlib>

namespace pillora {

namespace {

using std::chrono::hours;
using std::chrono::minutes;

constexpr int64_t kMinutesPerDay = 1440;
constexpr int64_t kNoon = 720;
constexpr minutes kStepOfOffsets{15};

int64_t minutesOf(const DateComponents& wall) { return wall.hour * 60 + wall.minute; }
int64_t minutesOf(const TimeOfDay& time) { return *time.hour * 60 + *time.minute; }

bool isSameDate(const DateComponents& a, const DateComponents& b) {
  return a.era == b.era && a.year == b.year && a.month == b.month && a.isLeapMonth == b.isLeapMonth && a.day == b.day;
}

bool isSameMonth(const DateComponents& a, const DateComponents& b) {
  return a.era == b.era && a.year == b.year && a.month == b.month && a.isLeapMonth == b.isLeapMonth;
}

Instant onMinute(Instant instant) {
  const int64_t micros = instant.microseconds();
  return instant - Instant::Duration(((micros % 60'000'000) + 60'000'000) % 60'000'000);
}

}  // namespace

Instant SlowSchedule::onDayOf(Instant day, int64_t minutesOfDay) const {
  const DateComponents date = calendar_.components(day);
  const Instant near = onMinute(day) + minutes(minutesOfDay - minutesOf(date));
  const Instant first = near - hours(3);
  const Instant last = near + hours(3);
  for (Instant t = first; t <= last; t = t + kStepOfOffsets) {
    const DateComponents wall = calendar_.components(t);
    if (isSameDate(wall, date) && minutesOf(wall) == minutesOfDay) return t;
  }
  for (Instant t = first; t <= last; t = t + minutes(1)) {
    const int64_t before = minutesOf(calendar_.components(t));
    const int64_t after = minutesOf(calendar_.components(t + minutes(1)));
    const int64_t jump = (after - before + kMinutesPerDay) % kMinutesPerDay;
    const int64_t distance = (minutesOfDay - before + kMinutesPerDay) % kMinutesPerDay;
    if (jump > 1 && jump < kNoon && distance < jump) return t + minutes(distance);
  }
  std::abort();  // neither shown nor jumped over: no clock does that
}

Instant SlowSchedule::daysLater(Instant instant, int days) const {
  const Instant noon = onDayOf(instant, kNoon);
  return onDayOf(noon + hours(24 * days), minutesOf(calendar_.components(instant)));
}

Instant SlowSchedule::dayOfMonth(Instant anyOfMonth, int64_t day) const {
  const Instant noon = onDayOf(anyOfMonth, kNoon);
  const auto number = calendar_.components(noon).day;
  return noon + hours(24 * (day - number));
}

Instant SlowSchedule::nextMonth(Instant anyOfMonth) const {
  const DateComponents month = calendar_.components(anyOfMonth);
  Instant t = onDayOf(anyOfMonth, kNoon);
  while (isSameMonth(calendar_.components(t), month)) t = t + hours(24);
  return t;
}

std::optional<Instant> SlowSchedule::nextOccurrence(const ReminderInterval& interval, Instant after) const {
  std::vector<Instant> candidates;
  switch (interval.type) {
    case ReminderIntervalType::hourly:
      return after + hours(interval.hourlyInterval);
    case ReminderIntervalType::custom:
      return after + minutes(interval.customIntervalMinutes);
    case ReminderIntervalType::daily:
      for (const TimeOfDay& time : interval.dailyTimes) {
        const Instant date = onDayOf(after, minutesOf(time));
        candidates.push_back(date > after ? date : daysLater(date, 1));
      }
      break;
    case ReminderIntervalType::weekly:
      for (int ahead = 0; ahead < 7; ++ahead) {
        const Instant day = onDayOf(after, kNoon) + hours(24 * ahead);
        if (!interval.weeklyDays.contains(calendar_.weekday(day))) continue;
        const Instant date = onDayOf(day, minutesOf(interval.weeklyTime));
        candidates.push_back(date > after ? date : daysLater(date, 7));
      }
      break;
    case ReminderIntervalType::monthly:
      for (const int64_t day : interval.monthlyDays) {
        Instant date = onDayOf(dayOfMonth(after, day), minutesOf(interval.monthlyTime));
        if (date <= after) date = onDayOf(dayOfMonth(nextMonth(after), day), minutesOf(interval.monthlyTime));
        candidates.push_back(date);
      }
      break;
  }
  if (candidates.empty()) return std::nullopt;
  return *std::min_element(candidates.begin(), candidates.end());
}

bool SlowSchedule::isDone(const Medicine& medicine, Instant time) const {
  for (const auto& log : medicine.doseLogs()) {
    const bool counts = log->statusRaw() == "Taken" || log->statusRaw() == "Skipped";
    if (counts && onMinute(log->scheduledTime()) == onMinute(time)) return true;
  }
  return false;
}

std::vector<Instant> SlowSchedule::today(const Medicine& medicine, Instant now) const {
  const DateComponents date = calendar_.components(now);
  Instant midnight = onMinute(now);
  while (isSameDate(calendar_.components(midnight - minutes(1)), date)) midnight = midnight - minutes(1);
  const auto time = nextOccurrence(medicine.interval(), midnight - minutes(1));
  if (!time || !isSameDate(calendar_.components(*time), date) || isDone(medicine, *time)) return {};
  return {*time};
}

std::vector<Instant> SlowSchedule::upcoming(const Medicine& medicine, Instant now) const {
  const Instant seconds{now - onMinute(now)};
  const Instant horizon = daysLater(now, 7) + seconds.sinceEpoch();
  std::vector<Instant> times;
  Instant cursor = now - minutes(1);
  while (const auto time = nextOccurrence(medicine.interval(), cursor)) {
    if (*time > horizon) break;
    if (!isDone(medicine, *time)) times.push_back(*time);
    cursor = *time;
  }
  return times;
}

}  // namespace pillora

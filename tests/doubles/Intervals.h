// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>
#include <rapidcheck.h>
#include <set>
#include <utility>
#include <vector>

#include "model/ReminderInterval.h"

namespace pillora {

// Intervals as tests write them; the members that a type does not read are those of the fallback.

inline ReminderInterval intervalOfType(ReminderIntervalType type) {
  ReminderInterval interval = fallbackInterval();
  interval.type = type;
  return interval;
}

inline ReminderInterval hourly(int64_t hours) {
  ReminderInterval interval = intervalOfType(ReminderIntervalType::hourly);
  interval.hourlyInterval = hours;
  return interval;
}

inline ReminderInterval daily(std::vector<TimeOfDay> times) {
  ReminderInterval interval = intervalOfType(ReminderIntervalType::daily);
  interval.dailyTimes = std::move(times);
  return interval;
}

inline ReminderInterval weekly(std::set<int64_t> days, TimeOfDay time) {
  ReminderInterval interval = intervalOfType(ReminderIntervalType::weekly);
  interval.weeklyDays = std::move(days);
  interval.weeklyTime = time;
  return interval;
}

inline ReminderInterval monthly(std::set<int64_t> days, TimeOfDay time) {
  ReminderInterval interval = intervalOfType(ReminderIntervalType::monthly);
  interval.monthlyDays = std::move(days);
  interval.monthlyTime = time;
  return interval;
}

inline ReminderInterval custom(int64_t minutes) {
  ReminderInterval interval = intervalOfType(ReminderIntervalType::custom);
  interval.customIntervalMinutes = minutes;
  return interval;
}

inline void PrintTo(const ReminderInterval& interval, std::ostream* out) { *out << encodeInterval(interval); }

}  // namespace pillora

// SPDX-License-Identifier: MIT
// ReminderInterval::nextOccurrence, which model/ReminderInterval.h declares.
#include <algorithm>

#include "model/ReminderInterval.h"

namespace pillora {

namespace {

constexpr int64_t kDaysPerWeek = 7;

/// The earliest of the candidates it is given.
class Earliest {
 public:
  void consider(std::optional<Instant> candidate) {
    if (candidate && (!instant_ || *candidate < *instant_)) instant_ = candidate;
  }
  std::optional<Instant> instant() const { return instant_; }

 private:
  std::optional<Instant> instant_;
};

/// Sets `date` to the full minute of a complete time of day.
void setTime(DateComponents& date, const TimeOfDay& time) {
  date.hour = *time.hour;
  date.minute = *time.minute;
  date.second = 0;
}

bool isComplete(const TimeOfDay& time) { return time.hour && time.minute; }

std::optional<Instant> nextDaily(const ReminderInterval& interval, Instant after, const Calendar& calendar) {
  DateComponents today = calendar.components(after);
  Earliest earliest;
  for (const TimeOfDay& time : interval.dailyTimes) {
    if (!isComplete(time)) continue;
    setTime(today, time);
    const auto date = calendar.date(today);
    if (!date) continue;
    // Deliberate: a day is added to the formed date, not to the day it was formed of. A time that a clock change moved
    // forward stays moved on the day after.
    earliest.consider(*date > after ? date : calendar.adding(CalendarUnit::day, 1, *date));
  }
  return earliest.instant();
}

/// Finds the earliest date on the chosen weekdays. A date on a farther day is never the earlier one, so only those days
/// are looked at that are no farther than the best so far.
class WeeklySearch {
 public:
  WeeklySearch(const TimeOfDay& time, Instant after, const Calendar& calendar)
      : time_(time), after_(after), weekday_(calendar.weekday(after)), calendar_(calendar) {}

  std::optional<Instant> earliest(const std::set<int64_t>& days) {
    // The nearest days first; that of `after` itself, which is over more often than not, comes last.
    const auto behind = days.upper_bound(weekday_);
    std::for_each(behind, days.end(), [this](int64_t day) { visit(day); });
    std::for_each(days.begin(), behind, [this](int64_t day) { visit(day); });
    return earliest_.instant();
  }

 private:
  void visit(int64_t day) {
    // Deliberate: the formula once, whatever the number. Day 15 is one to two weeks ahead, day -9 lies in the past.
    int64_t distance = 0;
    if (__builtin_sub_overflow(day, weekday_, &distance)) return;
    if (distance < 0) distance += kDaysPerWeek;
    if (distance > nearest_) return;
    const auto sameTime = calendar_.adding(CalendarUnit::day, distance, after_);
    if (!sameTime) return;
    DateComponents then = calendar_.components(*sameTime);
    setTime(then, time_);
    const auto date = calendar_.date(then);
    if (!date) return;
    if (*date > after_) {
      take(*date, distance);
    } else if (distance <= nearest_ - kDaysPerWeek) {
      take(calendar_.adding(CalendarUnit::day, kDaysPerWeek, *date), distance + kDaysPerWeek);
    }
  }

  void take(std::optional<Instant> candidate, int64_t distance) {
    earliest_.consider(candidate);
    if (candidate) nearest_ = std::min(nearest_, distance);
  }

  const TimeOfDay time_;
  const Instant after_;
  const int64_t weekday_;
  const Calendar& calendar_;
  Earliest earliest_;
  int64_t nearest_ = 2 * kLargestStep;  ///< days from `after` to the best so far
};

std::optional<Instant> nextWeekly(const ReminderInterval& interval, Instant after, const Calendar& calendar) {
  if (!isComplete(interval.weeklyTime)) return std::nullopt;
  return WeeklySearch(interval.weeklyTime, after, calendar).earliest(interval.weeklyDays);
}

/// Deliberate: days that a month lacks are neither left out nor moved to its end. The 31st of a month of 30 days is the
/// 1st of the next, seen from the shorter month alone.
std::optional<Instant> nextMonthly(const ReminderInterval& interval, Instant after, const Calendar& calendar) {
  if (!isComplete(interval.monthlyTime)) return std::nullopt;
  DateComponents month = calendar.components(after);
  setTime(month, interval.monthlyTime);
  const bool isLeapMonth = month.isLeapMonth;
  Earliest earliest;
  for (const int64_t day : interval.monthlyDays) {
    month.day = day;
    auto date = calendar.date(month);
    if (!date || *date <= after) {
      ++month.month;
      month.isLeapMonth = false;  // the month of the next number, not its leap month
      date = calendar.date(month);
      --month.month;
      month.isLeapMonth = isLeapMonth;
    }
    earliest.consider(date);
  }
  return earliest.instant();
}

}  // namespace

std::optional<Instant> ReminderInterval::nextOccurrence(Instant after, const Calendar& calendar) const {
  switch (type) {
    case ReminderIntervalType::hourly:
      return calendar.adding(CalendarUnit::hour, hourlyInterval, after);
    case ReminderIntervalType::daily:
      return nextDaily(*this, after, calendar);
    case ReminderIntervalType::weekly:
      return nextWeekly(*this, after, calendar);
    case ReminderIntervalType::monthly:
      return nextMonthly(*this, after, calendar);
    case ReminderIntervalType::custom:
      return calendar.adding(CalendarUnit::minute, customIntervalMinutes, after);
  }
  return std::nullopt;
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <rapidcheck.h>
#include <set>
#include <utility>
#include <vector>

#include "model/ReminderInterval.h"

namespace pillora {

namespace detail {

/// Up to `most` values; RapidCheck's own sets give up on a small range.
template <typename Container, typename T>
rc::Gen<Container> upTo(size_t most, const rc::Gen<T>& value) {
  return rc::gen::mapcat(rc::gen::inRange<size_t>(0, most + 1), [value](size_t count) {
    return rc::gen::map(rc::gen::container<std::vector<T>>(count, value),
                        [](const std::vector<T>& values) { return Container(values.begin(), values.end()); });
  });
}

inline rc::Gen<ReminderInterval> interval(const rc::Gen<int64_t>& hours, const rc::Gen<TimeOfDay>& time,
                                          const rc::Gen<int64_t>& weekday, const rc::Gen<int64_t>& dayOfMonth,
                                          const rc::Gen<int64_t>& minutes) {
  const std::vector<ReminderIntervalType> types(kAllReminderIntervalTypes.begin(), kAllReminderIntervalTypes.end());
  return rc::gen::apply(
      [](ReminderIntervalType type, int64_t hourlyInterval, std::vector<TimeOfDay> dailyTimes,
         std::set<int64_t> weeklyDays, TimeOfDay weeklyTime, std::set<int64_t> monthlyDays, TimeOfDay monthlyTime,
         int64_t customIntervalMinutes) {
        return ReminderInterval{type,       hourlyInterval,         std::move(dailyTimes), std::move(weeklyDays),
                                weeklyTime, std::move(monthlyDays), monthlyTime,           customIntervalMinutes};
      },
      rc::gen::elementOf(types), hours, upTo<std::vector<TimeOfDay>>(4, time), upTo<std::set<int64_t>>(6, weekday),
      time, upTo<std::set<int64_t>>(6, dayOfMonth), time, minutes);
}

}  // namespace detail

/// Times as people set them.
inline rc::Gen<TimeOfDay> plainTime() {
  return rc::gen::apply(
      [](int64_t hour, int64_t minute) {
        return TimeOfDay{hour, minute};
      },
      rc::gen::inRange<int64_t>(0, 24), rc::gen::inRange<int64_t>(0, 60));
}

/// Intervals as people set them.
inline rc::Gen<ReminderInterval> plainInterval() {
  // As often as not a day that some months lack.
  const auto dayOfMonth = rc::gen::oneOf(rc::gen::inRange<int64_t>(1, 32), rc::gen::inRange<int64_t>(29, 32));
  return detail::interval(rc::gen::inRange<int64_t>(1, 25), plainTime(), rc::gen::inRange<int64_t>(1, 8), dayOfMonth,
                          rc::gen::inRange<int64_t>(1, 3000));
}

/// Any number that a file may hold, most often a small one.
inline rc::Gen<int64_t> anyNumber() {
  return rc::gen::weightedOneOf<int64_t>(
      {{6, rc::gen::inRange<int64_t>(-40, 70)},
       {2, rc::gen::inRange<int64_t>(-11'000'000, 11'000'000)},
       {1, rc::gen::arbitrary<int64_t>()},
       {1, rc::gen::element(std::numeric_limits<int64_t>::min(), int64_t{0}, std::numeric_limits<int64_t>::max())}});
}

inline rc::Gen<TimeOfDay> anyTime() {
  return rc::gen::apply(
      [](int present, int64_t hour, int64_t minute) {
        TimeOfDay time;
        if (present != 0) time.hour = hour;
        if (present != 1) time.minute = minute;
        return time;
      },
      rc::gen::inRange(0, 8), anyNumber(), anyNumber());
}

/// Intervals as a broken or hostile file holds them.
inline rc::Gen<ReminderInterval> anyInterval() {
  return detail::interval(anyNumber(), anyTime(), anyNumber(), anyNumber(), anyNumber());
}

/// How RapidCheck prints an interval.
inline void showValue(const ReminderInterval& interval, std::ostream& out) { out << encodeInterval(interval); }

}  // namespace pillora

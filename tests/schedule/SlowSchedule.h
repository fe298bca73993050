// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "model/Medicine.h"
#include "platform/Calendar.h"

namespace pillora {

/// The schedule once more, slow and plain: it knows a calendar only by what the clock on the wall shows at an instant
/// (Calendar::components and weekday) and finds every date by looking at one minute after the other. For intervals as
/// people set them, and for times in which the zone is offset by whole minutes, changes by quarters of an hour and
/// leaves out no day.
class SlowSchedule {
 public:
  explicit SlowSchedule(const Calendar& calendar) : calendar_(calendar) {}

  std::optional<Instant> nextOccurrence(const ReminderInterval& interval, Instant after) const;
  /// The due times of Today and Upcoming for one medicine.
  std::vector<Instant> today(const Medicine& medicine, Instant now) const;
  std::vector<Instant> upcoming(const Medicine& medicine, Instant now) const;

 private:
  /// Where the clock shows the given minutes after midnight on the local day of `day`: the first such instant, or, in
  /// a gap, the instant as far behind the gap's end as the time lies behind its beginning.
  Instant onDayOf(Instant day, int64_t minutesOfDay) const;
  /// `instant` with the same wall time a number of days later.
  Instant daysLater(Instant instant, int days) const;
  /// Some instant of the month's day number `day`, counted on into the next months where it is too short.
  Instant dayOfMonth(Instant anyOfMonth, int64_t day) const;
  Instant nextMonth(Instant anyOfMonth) const;
  bool isDone(const Medicine& medicine, Instant time) const;

  const Calendar& calendar_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/Medicine.h"
#include "platform/Calendar.h"

namespace pillora {

// When doses fall due and when they count as done. Plain functions of records, calendar and instant; this room also
// defines ReminderInterval::nextOccurrence, which the model declares.

/// One open dose of the coming seven days.
struct UpcomingDose {
  std::string id;  ///< medicine identifier, "-", due time in seconds since 1970: see doseIdentifier
  std::shared_ptr<Medicine> medicine;
  Instant time;
};

/// One medicine's open dose of today.
using TodayEntry = std::pair<std::shared_ptr<Medicine>, Instant>;

using Medicines = std::vector<std::shared_ptr<Medicine>>;

/// "6F9619FF-8B86-D011-B42D-00CF4FC964FF-1736496000.0": names a dose in lists and its reminder in the notification
/// centre. The time is the shortest decimal that reads back as the same double, never with an exponent, always with a
/// fractional digit.
std::string doseIdentifier(const UUID& medicine, Instant time);

/// Whether the medicine has a log with status taken or skipped in the local minute of `time`. Missed, snoozed and
/// pending logs never hide a due time.
bool isDoseDone(const Medicine& medicine, Instant time, const Calendar& calendar);

/// Of each active medicine that falls due on the calendar day of `now` the day's first due time, done or not, in the
/// given order.
std::vector<TodayEntry> dosesDueToday(const Medicines& activeMedicines, Instant now, const Calendar& calendar);

/// Of each active medicine the day's first due time, unless it is done; ascending by time, ties in the given order.
/// Deliberate: at most one entry per medicine. Once the day's first dose is done, later doses of the day are not
/// offered, because the search always begins at the start of the day.
std::vector<TodayEntry> todaysPendingReminders(const Medicines& activeMedicines, Instant now, const Calendar& calendar);

/// Every open dose from one minute ago up to and including now + 7 days, ascending by time, ties in the given order.
/// A walk whose next time is not later than its cursor ends there, so an interval of zero lists nothing.
std::vector<UpcomingDose> upcomingDoses(const Medicines& activeMedicines, Instant now, const Calendar& calendar);

}  // namespace pillora

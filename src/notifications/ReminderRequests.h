// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

#include "model/Medicine.h"
#include "platform/Calendar.h"
#include "platform/Texts.h"
#include "platform/UNUserNotificationCenter.h"

namespace pillora {

// What a reminder looks like when it is handed to the notification centre. Plain functions of the medicine, the due
// time, the calendar and the texts. None of the settings plays a part: a reminder is due at the due time itself and
// sounds like every other.

// Names known to the centre, which keeps them with the requests, and read again when an answer comes.
inline constexpr std::string_view kReminderCategory = "MEDICINE_REMINDER";
inline constexpr std::string_view kReminderCategoryNoSnooze = "MEDICINE_REMINDER_NO_SNOOZE";
inline constexpr std::string_view kTakenAction = "TAKEN_ACTION";
inline constexpr std::string_view kSnoozeAction = "SNOOZE_ACTION";
inline constexpr std::string_view kSkipAction = "SKIP_ACTION";
inline constexpr std::string_view kMedicineIdKey = "medicineId";
inline constexpr std::string_view kSnoozeDurationKey = "snoozeDuration";

/// The buttons of the medicine's reminders: taken, snooze where the medicine allows it, skip. The snooze button names
/// the medicine's own minutes.
UNNotificationCategory reminderCategory(const Medicine& medicine, const Texts& texts);

/// The reminder of the dose due at `dueTime`, named "<medicine>-<seconds since 1970>".
UNNotificationRequest reminderRequest(const Medicine& medicine, Instant dueTime, const Calendar& calendar,
                                      const Texts& texts);

/// The reminder that asks again at `time` about the dose due at `dueTime`, named like the dose's reminder with
/// "-followup-<ordinal>" at the end.
UNNotificationRequest followUpRequest(const Medicine& medicine, Instant dueTime, Instant time, int64_t ordinal,
                                      const Calendar& calendar, const Texts& texts);

/// Fires once, at the start of the local minute of `time`: seconds are dropped.
UNCalendarNotificationTrigger minuteTrigger(Instant time, const Calendar& calendar);

}  // namespace pillora

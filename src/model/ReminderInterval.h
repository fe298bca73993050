// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Calendar.h"
#include "platform/Texts.h"
#include "support/JsonForward.h"
#include "support/Result.h"

namespace pillora {

/// The kinds of schedule, in the order in which they are offered.
enum class ReminderIntervalType { hourly, daily, weekly, monthly, custom };

inline constexpr std::array kAllReminderIntervalTypes = {ReminderIntervalType::hourly, ReminderIntervalType::daily,
                                                         ReminderIntervalType::weekly, ReminderIntervalType::monthly,
                                                         ReminderIntervalType::custom};

/// "Hourly", "Daily", "Weekly", "Monthly", "Custom": stored in every medicine and backup, and the type's shown name.
std::string_view rawValue(ReminderIntervalType type);
std::optional<ReminderIntervalType> reminderIntervalType(std::string_view rawValue);

/// A time of day without a day. Either part may be absent in data from elsewhere; whoever computes with the time skips
/// it then. Nothing bounds the numbers: the calendar carries hour 25 over into the next day.
struct TimeOfDay {
  std::optional<int64_t> hour;
  std::optional<int64_t> minute;

  bool operator==(const TimeOfDay&) const = default;
};

/// When a medicine falls due. Every field is always there; only those of the type are read.
struct ReminderInterval {
  ReminderIntervalType type = ReminderIntervalType::daily;
  int64_t hourlyInterval = 4;           ///< hours between two doses
  std::vector<TimeOfDay> dailyTimes;    ///< in the order in which they were entered
  std::set<int64_t> weeklyDays;         ///< 1 = Sunday to 7 = Saturday
  TimeOfDay weeklyTime;                 ///< on each of weeklyDays
  std::set<int64_t> monthlyDays;        ///< days of the month, 1 to 31
  TimeOfDay monthlyTime;                ///< on each of monthlyDays
  int64_t customIntervalMinutes = 480;  ///< minutes between two doses

  bool operator==(const ReminderInterval&) const = default;

  /// The first due time strictly after `after`, or nothing. Hourly and custom intervals count from `after` itself;
  /// there is no grid. With a step of zero or less the result is not later than `after`: whoever walks from one due
  /// time to the next stops there. Defined in schedule/.
  std::optional<Instant> nextOccurrence(Instant after, const Calendar& calendar) const;

  /// The schedule in one line: "Every 4 hours", "Daily at 8:00 AM, 8:00 PM", "Mon, Wed", "Monthly on days 1, 15".
  std::string displayText(const Calendar& calendar, const Texts& texts) const;
};

/// What a medicine whose stored interval cannot be read falls back to: daily at 09:00.
const ReminderInterval& fallbackInterval();

/// The interval's JSON object, as stored in `intervalData` and nested in backups: eight members in this order, both
/// sets ascending, of a time only the parts that are there.
Json intervalToJson(const ReminderInterval& interval);
/// Reads that object. All eight members are required, others are ignored; an hour or minute may be missing or null.
/// Errors name the member.
Result<ReminderInterval> intervalFromJson(const JsonPlace& place);

std::string encodeInterval(const ReminderInterval& interval);
Result<ReminderInterval> decodeInterval(std::string_view data);

}  // namespace pillora

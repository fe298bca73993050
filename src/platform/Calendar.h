// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "support/Instant.h"

namespace pillora {

/// A local date and time of day in some calendar. All fields are the calendar's own: year 2568 is a Buddhist year,
/// month 13 a Hebrew or Ethiopic one. Months and days count from 1.
struct DateComponents {
  std::optional<int64_t> era = std::nullopt;  ///< as the calendar numbers them, carried along. Absent: the usual one
  int64_t year = 0;
  int64_t month = 1;
  bool isLeapMonth = false;  ///< a Chinese or Dangi leap month, which bears the number of the month before it
  int64_t day = 1;
  int64_t hour = 0;
  int64_t minute = 0;
  int64_t second = 0;

  bool operator==(const DateComponents&) const = default;
};

enum class CalendarUnit { minute, hour, day };

/// The user's calendar in the user's time zone: the only way in which Pillora turns instants into local times and
/// back. Weekdays are numbered 1 = Sunday to 7 = Saturday. "Nothing" means that no date can be formed; callers drop
/// that candidate and go on.
///
/// Arithmetic is lenient. Fields outside their range carry over: day 31 of a 30-day month is the 1st of the next,
/// month 13 is January of the next year, hour 25 is 01:00 of the next day. Days, hours and minutes outside
/// ±kLargestStep give nothing.
///
/// Local time has gaps and repeats. A time in a gap moves forward by the length of the gap; a repeated time means its
/// first occurrence. Hours and minutes are elapsed time, days keep the wall clock. Worked examples:
///
///     America/New_York, gap on 2025-03-09: 02:00 EST is followed by 03:00 EDT
///       date({2025-03-09 02:30})                    2025-03-09T07:30:00Z   03:30 EDT, moved forward by the hour
///       adding(day, 1, 2025-03-08T07:30:00Z)        2025-03-09T07:30:00Z   02:30 EST, then 03:30 EDT
///       adding(day, 1, 2025-03-09T07:30:00Z)        2025-03-10T07:30:00Z   03:30 EDT stays 03:30 EDT
///       adding(hour, 4, 2025-03-09T04:59:00Z)       2025-03-09T08:59:00Z   23:59 EST to 04:59 EDT: four hours elapsed
///     America/New_York, repeat on 2025-11-02: 02:00 EDT is followed by 01:00 EST
///       date({2025-11-02 01:30})                    2025-11-02T05:30:00Z   the first 01:30, still EDT
///       adding(day, -1, 2025-11-03T06:30:00Z)       2025-11-02T05:30:00Z   from 01:30 EST to the first 01:30
///       startOfMinute(2025-11-02T06:30:20Z)         2025-11-02T06:30:00Z   the second 01:30 is a minute of its own
///     Australia/Lord_Howe, half-hour gap on 2025-10-05: 02:00 is followed by 02:30
///       date({2025-10-05 02:15})                    2025-10-04T15:45:00Z   02:45
///     America/Havana, midnight repeated on 2025-11-02: 01:00 CDT is followed by 00:00 CST
///       startOfDay(2025-11-02T12:00:00Z)            2025-11-02T04:00:00Z   the first midnight
///     America/Sao_Paulo, no midnight on 2018-11-04: 00:00 is followed by 01:00
///       startOfDay(2018-11-04T12:00:00Z)            2018-11-04T03:00:00Z   01:00, the day's first moment
///     Asia/Kolkata, five and a half hours east, never changing
///       startOfDay(2025-01-10T12:00:00Z)            2025-01-09T18:30:00Z
class Calendar {
 public:
  virtual ~Calendar() = default;

  /// The calendar's CLDR name: "gregorian", "buddhist", "persian", "hebrew" …
  virtual std::string identifier() const = 0;

  virtual DateComponents components(Instant instant) const = 0;
  /// The instant of a local date and time.
  virtual std::optional<Instant> date(const DateComponents& components) const = 0;
  /// The instant of a bare time of day, on a day of the recent past that no clock change touches. For showing a time
  /// that belongs to no day.
  virtual std::optional<Instant> dateOfTime(int64_t hour, int64_t minute) const = 0;
  /// An amount of 0 changes nothing, in a repeated hour either.
  virtual std::optional<Instant> adding(CalendarUnit unit, int64_t amount, Instant instant) const = 0;

  virtual int weekday(Instant instant) const = 0;
  /// The first moment of the local day.
  virtual Instant startOfDay(Instant instant) const = 0;
  /// The start of the local minute as an instant: two instants lie in the same minute when these are equal. Local
  /// minutes need not start at whole UTC minutes; zones once had offsets with odd seconds. A minute within which a
  /// clock changes begins with the change.
  virtual Instant startOfMinute(Instant instant) const = 0;
  /// How far local time is ahead of UTC at this instant.
  virtual std::chrono::seconds utcOffset(Instant instant) const = 0;
};

}  // namespace pillora

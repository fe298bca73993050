// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pillora {

/// A point in time with microseconds, counted from 1970-01-01T00:00:00Z without leap seconds. Every time that Pillora
/// keeps, plans or compares is one of these; a local time exists only inside the calendar.
class Instant {
 public:
  using Duration = std::chrono::microseconds;

  constexpr Instant() = default;
  constexpr explicit Instant(Duration sinceEpoch) : sinceEpoch_(sinceEpoch) {}
  static constexpr Instant fromSeconds(int64_t seconds) { return Instant(std::chrono::seconds(seconds)); }
  static constexpr Instant distantPast() { return Instant(Duration::min()); }
  static constexpr Instant distantFuture() { return Instant(Duration::max()); }

  constexpr Duration sinceEpoch() const { return sinceEpoch_; }
  constexpr int64_t microseconds() const { return sinceEpoch_.count(); }
  /// Seconds since 1970 as identifiers and user-info entries carry them.
  double secondsSince1970() const { return static_cast<double>(sinceEpoch_.count()) / 1e6; }

  friend constexpr auto operator<=>(const Instant&, const Instant&) = default;
  friend constexpr Instant operator+(Instant t, Duration d) { return Instant(t.sinceEpoch_ + d); }
  friend constexpr Instant operator-(Instant t, Duration d) { return Instant(t.sinceEpoch_ - d); }
  friend constexpr Duration operator-(Instant a, Instant b) { return a.sinceEpoch_ - b.sinceEpoch_; }

 private:
  Duration sinceEpoch_{0};
};

/// `instant + amount * unit`, or nothing when the amount lies outside ±kLargestStep or the sum leaves 64 bits. Numbers
/// read from a file reach arithmetic only through this.
std::optional<Instant> checkedAdd(Instant instant, int64_t amount, Instant::Duration unit);

/// The largest amount of minutes, hours or days that is ever added, and the largest day, hour or minute field that is
/// ever turned into a date: beyond it the calendars' own arithmetic is no longer exact.
inline constexpr int64_t kLargestStep = 10'000'000;

/// "2025-01-10T10:30:00Z", Gregorian UTC with ASCII digits; a fraction (".25", up to six digits) only when there is
/// one. Years outside 0000–9999 carry a sign and as many digits as they need.
std::string iso8601(Instant instant);

/// A wall-clock reading without a zone: Gregorian fields as written, checked to name a real date and time of day.
struct WallTime {
  int64_t year = 1970;
  unsigned month = 1, day = 1, hour = 0, minute = 0;
  Instant::Duration second{0};  ///< seconds and fraction, below one minute

  bool operator==(const WallTime&) const = default;
};

/// What an ISO 8601 date-time said: a wall time, and its distance from UTC where one was written.
struct ParsedTime {
  WallTime wall;
  std::optional<std::chrono::seconds> offset;  ///< absent: local time in a zone the text does not name
};

/// Reads "2026-03-08T07:30:00.25Z", with an offset (+01:00, -0530), or with neither. Seconds may be left out, a
/// fraction has one to six digits. Nothing for a date alone, a date that does not exist, 24:00, second 60 or any
/// other text.
std::optional<ParsedTime> parseTime(std::string_view text);

/// The instant at which a clock running at UTC shows `wall`, and what such a clock shows at an instant.
Instant utcInstant(const WallTime& wall);
WallTime utcWallTime(Instant instant);

struct CivilDate {
  int64_t year;
  unsigned month, day;
  bool operator==(const CivilDate&) const = default;
};

// Both count from 1 March, so that the leap day ends its year, and from far enough in the past that nothing is negative
// and 32 bits hold it all: the schedule's walks spend much of their time here. 146,097 days are 400 Gregorian years.
inline constexpr uint32_t kCivilEras = 1000;
inline constexpr uint32_t kCivilDaysTo1970 = kCivilEras * 146'097 + 719'468;

/// Days from 1970-01-01 to a proleptic Gregorian date, and back. Month 1–12, day 1–31; years from -300,000 to 300,000,
/// which is more than an instant can name.
constexpr int64_t daysFromCivil(int64_t year, unsigned month, unsigned day) {
  const auto y = static_cast<uint32_t>(year + kCivilEras * 400 - (month <= 2 ? 1 : 0));
  const uint32_t century = y / 100;
  const uint32_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  const uint32_t days = y * 365 + y / 4 - century + century / 4 + dayOfYear;
  return int64_t{days} - kCivilDaysTo1970;
}

constexpr CivilDate civilFromDays(int64_t days) {
  const auto shifted = static_cast<uint32_t>(days + kCivilDaysTo1970);
  const uint32_t era = shifted / 146'097;
  const uint32_t dayOfEra = shifted % 146'097;
  const uint32_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const uint32_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const uint32_t shiftedMonth = (5 * dayOfYear + 2) / 153;
  const uint32_t day = dayOfYear - (153 * shiftedMonth + 2) / 5 + 1;
  const uint32_t month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
  return {int64_t{yearOfEra + era * 400} - kCivilEras * 400 + (month <= 2 ? 1 : 0), month, day};
}

/// `value / divisor` rounded toward minus infinity, and what is left: 0 or more. `divisor` is positive.
constexpr int64_t floorDiv(int64_t value, int64_t divisor) { return value / divisor - (value % divisor < 0 ? 1 : 0); }
constexpr int64_t floorMod(int64_t value, int64_t divisor) {
  return value % divisor + (value % divisor < 0 ? divisor : 0);
}

}  // namespace pillora

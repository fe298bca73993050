// SPDX-License-Identifier: MIT
#include "support/Instant.h"

#include <cstdio>

namespace pillora {

namespace {

constexpr int64_t kMicrosPerSecond = 1'000'000;
constexpr int64_t kMicrosPerDay = 86'400 * kMicrosPerSecond;

/// Takes fixed-width fields off the front of a text.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  bool done() const { return rest_.empty(); }

  bool accept(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::optional<unsigned> digits(size_t count) {
    if (rest_.size() < count) return std::nullopt;
    unsigned value = 0;
    for (const char c : rest_.substr(0, count)) {
      if (c < '0' || c > '9') return std::nullopt;
      value = value * 10 + static_cast<unsigned>(c - '0');
    }
    rest_.remove_prefix(count);
    return value;
  }

 private:
  std::string_view rest_;
};

unsigned daysInMonth(int64_t year, unsigned month) {
  const int64_t next = month == 12 ? daysFromCivil(year + 1, 1, 1) : daysFromCivil(year, month + 1, 1);
  return static_cast<unsigned>(next - daysFromCivil(year, month, 1));
}

/// Up to six decimal places; nothing when there is none or one too many.
std::optional<Instant::Duration> scanFraction(Scanner& scan) {
  int64_t value = 0;
  int64_t unit = kMicrosPerSecond;
  while (const auto digit = scan.digits(1)) {
    if (unit == 1) return std::nullopt;
    unit /= 10;
    value += *digit * unit;
  }
  if (unit == kMicrosPerSecond) return std::nullopt;
  return Instant::Duration(value);
}

/// "Z", "+hh:mm", "+hhmm" or nothing at all; `ok` tells a missing offset from a malformed one.
std::optional<std::chrono::seconds> scanOffset(Scanner& scan, bool& ok) {
  if (scan.done()) return std::nullopt;
  if (scan.accept('Z')) return std::chrono::seconds(0);
  const bool west = scan.accept('-');
  ok = west || scan.accept('+');
  const auto hours = ok ? scan.digits(2) : std::nullopt;
  if (hours) scan.accept(':');
  const auto minutes = hours ? scan.digits(2) : std::nullopt;
  ok = minutes && *hours < 24 && *minutes < 60;
  if (!ok) return std::nullopt;
  const auto distance = std::chrono::hours(*hours) + std::chrono::minutes(*minutes);
  return west ? -distance : distance;
}

}  // namespace

std::optional<Instant> checkedAdd(Instant instant, int64_t amount, Instant::Duration unit) {
  if (amount < -kLargestStep || amount > kLargestStep) return std::nullopt;
  int64_t step = 0;
  int64_t sum = 0;
  if (__builtin_mul_overflow(amount, unit.count(), &step)) return std::nullopt;
  if (__builtin_add_overflow(instant.microseconds(), step, &sum)) return std::nullopt;
  return Instant(Instant::Duration(sum));
}

std::string iso8601(Instant instant) {
  const int64_t days = floorDiv(instant.microseconds(), kMicrosPerDay);
  const int64_t inDay = floorMod(instant.microseconds(), kMicrosPerDay);
  const CivilDate date = civilFromDays(days);
  const int64_t seconds = inDay / kMicrosPerSecond;
  const bool plainYear = date.year >= 0 && date.year <= 9999;
  char text[64];
  std::snprintf(text, sizeof text, plainYear ? "%04lld-%02u-%02uT%02d:%02d:%02d" : "%+05lld-%02u-%02uT%02d:%02d:%02d",
                static_cast<long long>(date.year), date.month, date.day, static_cast<int>(seconds / 3600),
                static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
  std::string out = text;
  if (const int64_t fraction = inDay % kMicrosPerSecond; fraction != 0) {
    std::snprintf(text, sizeof text, ".%06d", static_cast<int>(fraction));
    out += text;
    out.erase(out.find_last_not_of('0') + 1);
  }
  return out + 'Z';
}

std::optional<ParsedTime> parseTime(std::string_view text) {
  Scanner scan(text);
  const auto year = scan.digits(4);
  if (!year || !scan.accept('-')) return std::nullopt;
  const auto month = scan.digits(2);
  if (!month || !scan.accept('-')) return std::nullopt;
  const auto day = scan.digits(2);
  if (!day || !scan.accept('T')) return std::nullopt;
  const auto hour = scan.digits(2);
  if (!hour || !scan.accept(':')) return std::nullopt;
  const auto minute = scan.digits(2);
  if (!minute) return std::nullopt;

  Instant::Duration second{0};
  if (scan.accept(':')) {
    const auto whole = scan.digits(2);
    if (!whole || *whole > 59) return std::nullopt;
    second = std::chrono::seconds(*whole);
    if (scan.accept('.')) {
      const auto fraction = scanFraction(scan);
      if (!fraction) return std::nullopt;
      second += *fraction;
    }
  }
  if (*month < 1 || *month > 12 || *day < 1 || *day > daysInMonth(*year, *month)) return std::nullopt;
  if (*hour > 23 || *minute > 59) return std::nullopt;

  bool ok = true;
  const auto offset = scanOffset(scan, ok);
  if (!ok || !scan.done()) return std::nullopt;
  return ParsedTime{{*year, *month, *day, *hour, *minute, second}, offset};
}

Instant utcInstant(const WallTime& wall) {
  const int64_t days = daysFromCivil(wall.year, wall.month, wall.day);
  return Instant(std::chrono::hours(days * 24 + wall.hour) + std::chrono::minutes(wall.minute) + wall.second);
}

WallTime utcWallTime(Instant instant) {
  const int64_t days = floorDiv(instant.microseconds(), kMicrosPerDay);
  const CivilDate date = civilFromDays(days);
  const int64_t inDay = floorMod(instant.microseconds(), kMicrosPerDay);
  const int64_t minutes = inDay / (60 * kMicrosPerSecond);
  return {date.year,
          date.month,
          date.day,
          static_cast<unsigned>(minutes / 60),
          static_cast<unsigned>(minutes % 60),
          Instant::Duration(inDay % (60 * kMicrosPerSecond))};
}

}  // namespace pillora

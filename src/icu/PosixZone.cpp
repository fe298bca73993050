// SPDX-License-Identifier: MIT
#include "icu/PosixZone.h"

#include <algorithm>

#include "support/Instant.h"

namespace pillora {

namespace {

constexpr int32_t kSecondsPerHour = 3600;
constexpr int kMostHoursOfOffset = 24, kMostHoursOfChange = 167;
constexpr int32_t kUsualChange = 2 * kSecondsPerHour;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// Takes the parts off the front of the text. What cannot be taken gives nothing, or false.
class Parser {
 public:
  explicit Parser(std::string_view text) : rest_(text) {}

  bool atEnd() const { return rest_.empty(); }
  bool at(char c) const { return !rest_.empty() && rest_.front() == c; }
  bool skip(char c) {
    if (!at(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool skipName();
  /// Hours with or without minutes and seconds, in seconds.
  std::optional<int32_t> clock(int mostHours);
  /// A day of the year and a time of it, at which clocks are `offset` ahead of UTC.
  std::optional<icu::DateTimeRule> change(int32_t offset);

 private:
  std::optional<int32_t> number(int32_t least, int32_t most);
  std::optional<int32_t> timeOfChange();
  std::optional<icu::DateTimeRule> weekdayRule(int32_t offset);
  std::optional<icu::DateTimeRule> dayRule(int32_t month, int32_t day, int32_t offset);

  std::string_view rest_;
};

bool Parser::skipName() {
  constexpr size_t kShortest = 3;
  const bool quoted = skip('<');
  const auto end = std::find_if_not(rest_.begin(), rest_.end(), [&](char c) {
    return isLetter(c) || (quoted && (isDigit(c) || c == '+' || c == '-'));
  });
  const auto length = static_cast<size_t>(end - rest_.begin());
  rest_.remove_prefix(length);
  return length >= kShortest && (!quoted || skip('>'));
}

std::optional<int32_t> Parser::number(int32_t least, int32_t most) {
  int32_t value = 0;
  size_t length = 0;
  for (; length < rest_.size() && isDigit(rest_[length]) && value <= most; ++length) {
    value = value * 10 + (rest_[length] - '0');
  }
  rest_.remove_prefix(length);
  return length > 0 && value >= least && value <= most ? std::optional(value) : std::nullopt;
}

std::optional<int32_t> Parser::clock(int mostHours) {
  const int32_t sign = skip('-') ? -1 : 1;
  if (sign > 0) skip('+');
  const auto hours = number(0, mostHours);
  if (!hours) return std::nullopt;
  int32_t seconds = *hours * kSecondsPerHour;
  for (int32_t unit = 60; unit > 0 && skip(':'); unit /= 60) {
    const auto part = number(0, 59);
    if (!part) return std::nullopt;
    seconds += *part * unit;
  }
  return sign * seconds;
}

std::optional<icu::DateTimeRule> Parser::change(int32_t offset) {
  if (skip('M')) return weekdayRule(offset);
  if (skip('J')) {  // counts from 1 and leaves February 29 out
    const auto day = number(1, 365);
    if (!day) return std::nullopt;
    const CivilDate date = civilFromDays(daysFromCivil(2001, 1, 1) + *day - 1);
    return dayRule(static_cast<int32_t>(date.month), static_cast<int32_t>(date.day), offset);
  }
  const auto day = number(0, 365);
  // Deliberate: ICU takes a day beyond the end of January for one of the following months.
  return day ? dayRule(1, *day + 1, offset) : std::nullopt;
}

std::optional<int32_t> Parser::timeOfChange() { return skip('/') ? clock(kMostHoursOfChange) : kUsualChange; }

std::optional<icu::DateTimeRule> Parser::dayRule(int32_t month, int32_t day, int32_t offset) {
  const auto time = timeOfChange();
  if (!time) return std::nullopt;
  return icu::DateTimeRule(month - 1, day, (*time - offset) * 1000, icu::DateTimeRule::UTC_TIME);
}

std::optional<icu::DateTimeRule> Parser::weekdayRule(int32_t offset) {
  constexpr int32_t kLastWeek = 5;
  const auto month = number(1, 12);
  const auto week = skip('.') ? number(1, kLastWeek) : std::nullopt;
  const auto weekday = skip('.') ? number(0, 6) : std::nullopt;
  const auto time = timeOfChange();
  if (!month || !week || !weekday || !time) return std::nullopt;
  return icu::DateTimeRule(*month - 1, *week == kLastWeek ? -1 : *week, *weekday + 1, (*time - offset) * 1000,
                           icu::DateTimeRule::UTC_TIME);
}

}  // namespace

std::optional<PosixZone> PosixZone::parse(std::string_view text) {
  Parser parser(text);
  const auto behind = parser.skipName() ? parser.clock(kMostHoursOfOffset) : std::nullopt;
  if (!behind) return std::nullopt;
  PosixZone zone{.offset = -*behind};
  if (parser.atEnd()) return zone;
  if (!parser.skipName()) return std::nullopt;
  const auto daylightBehind = parser.at(',') ? *behind - kSecondsPerHour : parser.clock(kMostHoursOfOffset);
  if (!daylightBehind || !parser.skip(',')) return std::nullopt;
  const auto begin = parser.change(zone.offset);
  if (!begin || !parser.skip(',')) return std::nullopt;
  const auto end = parser.change(-*daylightBehind);
  if (!end || !parser.atEnd()) return std::nullopt;
  zone.daylight = Daylight{-*daylightBehind, *begin, *end};
  return zone;
}

}  // namespace pillora

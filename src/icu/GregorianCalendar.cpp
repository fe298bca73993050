// SPDX-License-Identifier: MIT
#include "icu/GregorianCalendar.h"

#include <algorithm>

namespace pillora {

namespace {

constexpr int64_t kMicrosPerSecond = 1'000'000;
constexpr int64_t kMicrosPerMinute = 60 * kMicrosPerSecond;
constexpr int64_t kMicrosPerHour = 60 * kMicrosPerMinute;
constexpr int64_t kMicrosPerDay = 24 * kMicrosPerHour;
constexpr int64_t kEraAD = 1;  // ICU's number

bool within(int64_t value, int64_t limit) { return value >= -limit && value <= limit; }

/// Whether plain arithmetic on these fields is exact and means what ICU means by them.
bool isPlain(const DateComponents& c) {
  return c.era.value_or(kEraAD) == kEraAD && c.year >= 1900 && c.year < 2100 && within(c.month, 1200) &&
         within(c.day, kLargestStep) && within(c.hour, kLargestStep) && within(c.minute, kLargestStep) &&
         within(c.second, kLargestStep);
}

int64_t wallTime(const DateComponents& c) {
  const int64_t months = c.year * 12 + c.month - 1;
  const int64_t year = floorDiv(months, 12);
  const int64_t day = daysFromCivil(year, static_cast<unsigned>(months - year * 12 + 1), 1) + c.day - 1;
  return day * kMicrosPerDay + c.hour * kMicrosPerHour + c.minute * kMicrosPerMinute + c.second * kMicrosPerSecond;
}

constexpr Instant fromMicros(int64_t micros) { return Instant(Instant::Duration(micros)); }

}  // namespace

GregorianCalendar::GregorianCalendar(std::unique_ptr<IcuCalendar> icu, const icu::BasicTimeZone& zone)
    : icu_(std::move(icu)), offsets_(zone) {}

std::string GregorianCalendar::identifier() const { return "gregorian"; }

DateComponents GregorianCalendar::components(Instant instant) const {
  if (!OffsetTable::covers(instant.microseconds())) return icu_->components(instant);
  const int64_t wall = instant.microseconds() + offsets_.at(instant.microseconds()).offset;
  const int64_t day = floorDiv(wall, kMicrosPerDay);
  const auto inDay = static_cast<uint32_t>((wall - day * kMicrosPerDay) / kMicrosPerSecond);
  const CivilDate date = civilFromDays(day);
  return {.era = kEraAD,
          .year = date.year,
          .month = date.month,
          .day = date.day,
          .hour = inDay / 3600,
          .minute = inDay / 60 % 60,
          .second = inDay % 60};
}

std::optional<Instant> GregorianCalendar::date(const DateComponents& components) const {
  if (!isPlain(components)) return icu_->date(components);
  const int64_t wall = wallTime(components);
  if (!OffsetTable::covers(wall)) return icu_->date(components);
  return fromMicros(wall - offsets_.ofWall(wall).offset);
}

std::optional<Instant> GregorianCalendar::dateOfTime(int64_t hour, int64_t minute) const {
  const auto [year, month, day] = kDayOfBareTimes;
  return date({.era = kEraAD, .year = year, .month = month, .day = day, .hour = hour, .minute = minute});
}

std::optional<Instant> GregorianCalendar::adding(CalendarUnit unit, int64_t amount, Instant instant) const {
  if (unit == CalendarUnit::hour) return checkedAdd(instant, amount, std::chrono::hours(1));
  if (unit == CalendarUnit::minute) return checkedAdd(instant, amount, std::chrono::minutes(1));
  const int64_t time = instant.microseconds();
  if (amount == 0 || !within(amount, kLargestStep) || !OffsetTable::covers(time)) {
    return icu_->adding(unit, amount, instant);
  }
  const int64_t wall = time + offsets_.at(time).offset + amount * kMicrosPerDay;
  if (!OffsetTable::covers(wall)) return icu_->adding(unit, amount, instant);
  return fromMicros(wall - offsets_.ofWall(wall).offset);
}

int GregorianCalendar::weekday(Instant instant) const {
  const int64_t time = instant.microseconds();
  if (!OffsetTable::covers(time)) return icu_->weekday(instant);
  const int64_t daysFromSunday = floorDiv(time + offsets_.at(time).offset, kMicrosPerDay) + 4;
  return static_cast<int>(daysFromSunday - floorDiv(daysFromSunday, 7) * 7) + 1;
}

Instant GregorianCalendar::startOfDay(Instant instant) const {
  const int64_t time = instant.microseconds();
  if (!OffsetTable::covers(time)) return icu_->startOfDay(instant);
  const int64_t midnight = floorDiv(time + offsets_.at(time).offset, kMicrosPerDay) * kMicrosPerDay;
  const OffsetTable::Segment& segment = offsets_.ofWall(midnight);
  // A midnight that a clock change removes lies past the end of its segment; the day then begins with the change.
  return fromMicros(std::min(midnight - segment.offset, segment.end));
}

Instant GregorianCalendar::startOfMinute(Instant instant) const {
  const int64_t time = instant.microseconds();
  if (!OffsetTable::covers(time)) return icu_->startOfMinute(instant);
  const OffsetTable::Segment& segment = offsets_.at(time);
  const int64_t start = floorDiv(time + segment.offset, kMicrosPerMinute) * kMicrosPerMinute - segment.offset;
  return fromMicros(std::max(start, segment.start));
}

std::chrono::seconds GregorianCalendar::utcOffset(Instant instant) const {
  const int64_t time = instant.microseconds();
  if (!OffsetTable::covers(time)) return icu_->utcOffset(instant);
  return std::chrono::seconds(offsets_.at(time).offset / kMicrosPerSecond);
}

}  // namespace pillora

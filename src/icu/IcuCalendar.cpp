// SPDX-License-Identifier: MIT
#include "icu/IcuCalendar.h"

#include <cmath>
#include <string_view>
#include <unicode/tztrans.h>

namespace pillora {

namespace {

constexpr int64_t kMicrosPerMilli = 1000;
constexpr int64_t kMillisPerMinute = 60'000;
constexpr int64_t kJulianDayOf1970 = 2'440'588;
constexpr int64_t kMonthsOfHebrewYear = 13;
/// Farther years are beyond what an instant can name in any calendar.
constexpr int64_t kLargestYear = 400'000;

bool within(int64_t value, int64_t limit) { return value >= -limit && value <= limit; }

bool isComputable(const DateComponents& c) {
  return within(c.era.value_or(0), kLargestYear) && within(c.year, kLargestYear) && within(c.month, kLargestStep) &&
         within(c.day, kLargestStep) && within(c.hour, kLargestStep) && within(c.minute, kLargestStep) &&
         within(c.second, kLargestStep);
}

Instant::Duration belowMilli(Instant instant) {
  return Instant::Duration(floorMod(instant.microseconds(), kMicrosPerMilli));
}

std::optional<Instant> fromMillis(double millis) {
  int64_t micros = 0;
  if (!(std::abs(millis) < 1e16)) return std::nullopt;
  if (__builtin_mul_overflow(static_cast<int64_t>(millis), kMicrosPerMilli, &micros)) return std::nullopt;
  return Instant(Instant::Duration(micros));
}

double toMillis(Instant instant) { return static_cast<double>(floorDiv(instant.microseconds(), kMicrosPerMilli)); }

}  // namespace

Result<std::unique_ptr<IcuCalendar>> IcuCalendar::make(const icu::Locale& locale, const icu::BasicTimeZone& zone) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(zone.clone(), locale, status));
  if (U_FAILURE(status)) return Error{std::string("no calendar for ") + locale.getName() + ": " + u_errorName(status)};
  // Deliberate: ICU's own choice for a repeated time is its last occurrence.
  calendar->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
  return std::unique_ptr<IcuCalendar>(new IcuCalendar(std::move(calendar)));
}

IcuCalendar::IcuCalendar(std::unique_ptr<icu::Calendar> calendar) : calendar_(std::move(calendar)) {}

void IcuCalendar::setTime(Instant instant) const {
  UErrorCode status = U_ZERO_ERROR;
  calendar_->setTime(toMillis(instant), status);
}

int32_t IcuCalendar::get(UCalendarDateFields field) const {
  UErrorCode status = U_ZERO_ERROR;
  return calendar_->get(field, status);
}

std::chrono::milliseconds IcuCalendar::offset() const {
  return std::chrono::milliseconds(get(UCAL_ZONE_OFFSET) + get(UCAL_DST_OFFSET));
}

std::optional<Instant> IcuCalendar::time() const {
  UErrorCode status = U_ZERO_ERROR;
  const UDate millis = calendar_->getTime(status);
  return U_SUCCESS(status) ? fromMillis(millis) : std::nullopt;
}

std::string IcuCalendar::identifier() const { return calendar_->getType(); }

DateComponents IcuCalendar::components(Instant instant) const {
  const std::lock_guard lock(mutex_);
  setTime(instant);
  DateComponents out;
  out.era = get(UCAL_ERA);
  out.year = get(UCAL_YEAR);
  out.month = get(UCAL_MONTH) + 1;
  out.isLeapMonth = get(UCAL_IS_LEAP_MONTH) != 0;
  out.day = get(UCAL_DAY_OF_MONTH);
  out.hour = get(UCAL_HOUR_OF_DAY);
  out.minute = get(UCAL_MINUTE);
  out.second = get(UCAL_SECOND);
  return out;
}

std::optional<Instant> IcuCalendar::date(const DateComponents& components) const {
  if (!isComputable(components)) return std::nullopt;
  const std::lock_guard lock(mutex_);
  calendar_->clear();
  if (components.era) calendar_->set(UCAL_ERA, static_cast<int32_t>(*components.era));
  // ICU numbers the months of a Hebrew year from 1 to 13 but takes 12 off a number beyond, so that the month after the
  // last of a common year would be the second of the next.
  const bool isBeyond =
      components.month == kMonthsOfHebrewYear + 1 && std::string_view("hebrew") == calendar_->getType();
  calendar_->set(UCAL_YEAR, static_cast<int32_t>(components.year + (isBeyond ? 1 : 0)));
  calendar_->set(UCAL_MONTH, static_cast<int32_t>(isBeyond ? 0 : components.month - 1));
  if (components.isLeapMonth) calendar_->set(UCAL_IS_LEAP_MONTH, 1);
  calendar_->set(UCAL_DAY_OF_MONTH, static_cast<int32_t>(components.day));
  calendar_->set(UCAL_HOUR_OF_DAY, static_cast<int32_t>(components.hour));
  calendar_->set(UCAL_MINUTE, static_cast<int32_t>(components.minute));
  calendar_->set(UCAL_SECOND, static_cast<int32_t>(components.second));
  return time();
}

std::optional<Instant> IcuCalendar::dateOfTime(int64_t hour, int64_t minute) const {
  if (!within(hour, kLargestStep) || !within(minute, kLargestStep)) return std::nullopt;
  const std::lock_guard lock(mutex_);
  calendar_->clear();
  constexpr int64_t kDay = daysFromCivil(kDayOfBareTimes.year, kDayOfBareTimes.month, kDayOfBareTimes.day);
  calendar_->set(UCAL_JULIAN_DAY, static_cast<int32_t>(kDay + kJulianDayOf1970));
  calendar_->set(UCAL_HOUR_OF_DAY, static_cast<int32_t>(hour));
  calendar_->set(UCAL_MINUTE, static_cast<int32_t>(minute));
  return time();
}

std::optional<Instant> IcuCalendar::adding(CalendarUnit unit, int64_t amount, Instant instant) const {
  if (unit == CalendarUnit::hour) return checkedAdd(instant, amount, std::chrono::hours(1));
  if (unit == CalendarUnit::minute) return checkedAdd(instant, amount, std::chrono::minutes(1));
  if (!within(amount, kLargestStep)) return std::nullopt;
  if (amount == 0) return instant;
  const std::lock_guard lock(mutex_);
  setTime(instant);
  const int32_t day = get(UCAL_JULIAN_DAY);
  const int32_t millis = get(UCAL_MILLISECONDS_IN_DAY);
  // Deliberate: not ICU's add(), which may end on the second occurrence of a repeated time.
  calendar_->clear();
  calendar_->set(UCAL_JULIAN_DAY, day + static_cast<int32_t>(amount));
  calendar_->set(UCAL_MILLISECONDS_IN_DAY, millis);
  const auto moved = time();
  return moved ? checkedAdd(*moved, belowMilli(instant).count(), Instant::Duration(1)) : std::nullopt;
}

int IcuCalendar::weekday(Instant instant) const {
  const std::lock_guard lock(mutex_);
  setTime(instant);
  return get(UCAL_DAY_OF_WEEK);
}

Instant IcuCalendar::startOfDay(Instant instant) const {
  const std::lock_guard lock(mutex_);
  setTime(instant);
  const int32_t day = get(UCAL_JULIAN_DAY);
  calendar_->clear();
  calendar_->set(UCAL_JULIAN_DAY, day);
  const auto midnight = time();
  if (!midnight) return Instant::distantPast();
  const bool exists = get(UCAL_MILLISECONDS_IN_DAY) == 0 && get(UCAL_JULIAN_DAY) == day;
  return exists ? *midnight : changeBefore(*midnight);
}

Instant IcuCalendar::startOfMinute(Instant instant) const {
  const std::lock_guard lock(mutex_);
  setTime(instant);
  const std::chrono::milliseconds here = offset();
  const int64_t wall = floorDiv(instant.microseconds(), kMicrosPerMilli) + here.count();
  const int64_t minute = floorDiv(wall, kMillisPerMinute) * kMillisPerMinute;
  const auto start = fromMillis(static_cast<double>(minute - here.count()));
  if (!start) return Instant::distantPast();
  setTime(*start);
  return offset() == here ? *start : changeBefore(instant);
}

std::chrono::seconds IcuCalendar::utcOffset(Instant instant) const {
  const std::lock_guard lock(mutex_);
  setTime(instant);
  return std::chrono::duration_cast<std::chrono::seconds>(offset());
}

/// The last change of the zone's offset at or before `instant`.
Instant IcuCalendar::changeBefore(Instant instant) const {
  const auto& zone = static_cast<const icu::BasicTimeZone&>(calendar_->getTimeZone());
  icu::TimeZoneTransition change;
  if (!zone.getPreviousTransition(toMillis(instant), true, change)) return instant;
  return fromMillis(change.getTime()).value_or(instant);
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <unicode/basictz.h>

#include "icu/IcuCalendar.h"
#include "icu/OffsetTable.h"
#include "platform/Calendar.h"

namespace pillora {

/// The Gregorian calendar from 1900 to 2100 by plain day arithmetic over a table of offset changes: what the lists of
/// doses ask thousands of times for each redraw. It answers like the ICU calendar that it wraps, and leaves to that one
/// every other year. May be used from several threads at once.
class GregorianCalendar final : public Calendar {
 public:
  /// `icu` is Gregorian and keeps the time of `zone`, which is only read here.
  GregorianCalendar(std::unique_ptr<IcuCalendar> icu, const icu::BasicTimeZone& zone);

  std::string identifier() const override;
  DateComponents components(Instant instant) const override;
  std::optional<Instant> date(const DateComponents& components) const override;
  std::optional<Instant> dateOfTime(int64_t hour, int64_t minute) const override;
  std::optional<Instant> adding(CalendarUnit unit, int64_t amount, Instant instant) const override;
  int weekday(Instant instant) const override;
  Instant startOfDay(Instant instant) const override;
  Instant startOfMinute(Instant instant) const override;
  std::chrono::seconds utcOffset(Instant instant) const override;

 private:
  std::unique_ptr<IcuCalendar> icu_;
  OffsetTable offsets_;
};

}  // namespace pillora

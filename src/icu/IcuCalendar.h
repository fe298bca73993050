// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <unicode/basictz.h>
#include <unicode/calendar.h>
#include <unicode/locid.h>

#include "platform/Calendar.h"
#include "support/Result.h"

namespace pillora {

/// The day that Calendar::dateOfTime uses: no clock changed within a week of it anywhere.
inline constexpr CivilDate kDayOfBareTimes{2025, 1, 15};

/// Any calendar in any zone, computed by ICU. Instants keep their microseconds although ICU counts milliseconds. A
/// calendar may be used from several threads at once; they take turns.
class IcuCalendar final : public Calendar {
 public:
  /// The calendar that `locale` asks for, by keyword or region, in `zone`. Fails only when ICU lacks its data.
  static Result<std::unique_ptr<IcuCalendar>> make(const icu::Locale& locale, const icu::BasicTimeZone& zone);

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
  explicit IcuCalendar(std::unique_ptr<icu::Calendar> calendar);

  void setTime(Instant instant) const;
  int32_t get(UCalendarDateFields field) const;
  std::chrono::milliseconds offset() const;
  std::optional<Instant> time() const;
  Instant changeBefore(Instant instant) const;

  mutable std::mutex mutex_;  ///< guards the calendar, which is where ICU computes
  std::unique_ptr<icu::Calendar> calendar_;
};

}  // namespace pillora

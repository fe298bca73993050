// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Calendar.h"

namespace pillora {

/// A calendar that works like the one it wraps, except that it cannot do what it was told to refuse.
class RefusingCalendar : public Calendar {
 public:
  struct Refused {
    bool addingDays = false, addingHours = false, addingMinutes = false, formingDates = false;
    std::optional<int64_t> formingDatesOfMonth = std::nullopt;
  };

  RefusingCalendar(const Calendar& wrapped, Refused refused) : wrapped_(wrapped), refused_(refused) {}

  std::string identifier() const override { return wrapped_.identifier(); }
  DateComponents components(Instant instant) const override { return wrapped_.components(instant); }
  std::optional<Instant> date(const DateComponents& components) const override {
    const bool refuses = refused_.formingDates || refused_.formingDatesOfMonth == components.month;
    return refuses ? std::nullopt : wrapped_.date(components);
  }
  std::optional<Instant> dateOfTime(int64_t hour, int64_t minute) const override {
    return refused_.formingDates ? std::nullopt : wrapped_.dateOfTime(hour, minute);
  }
  std::optional<Instant> adding(CalendarUnit unit, int64_t amount, Instant instant) const override {
    const bool refuses = unit == CalendarUnit::day    ? refused_.addingDays
                         : unit == CalendarUnit::hour ? refused_.addingHours
                                                      : refused_.addingMinutes;
    return refuses ? std::nullopt : wrapped_.adding(unit, amount, instant);
  }
  int weekday(Instant instant) const override { return wrapped_.weekday(instant); }
  Instant startOfDay(Instant instant) const override { return wrapped_.startOfDay(instant); }
  Instant startOfMinute(Instant instant) const override { return wrapped_.startOfMinute(instant); }
  std::chrono::seconds utcOffset(Instant instant) const override { return wrapped_.utcOffset(instant); }

 private:
  const Calendar& wrapped_;
  Refused refused_;
};

}  // namespace pillora

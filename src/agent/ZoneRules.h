// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "platform/Calendar.h"
#include "support/Instant.h"

namespace pillora {

/// Turns the Gregorian wall time of a trigger into the instant at which it comes. A time in a gap moves forward by the
/// length of the gap, a repeated time means its first occurrence: the same reading as Calendar's.
class ZoneRules {
 public:
  virtual ~ZoneRules() = default;

  /// The instant of the minute that `wall` names, its seconds left out. Nothing when `wall` is no real date and time
  /// or lies too far off to be computed.
  virtual std::optional<Instant> instantOf(const WallTime& wall) const = 0;
  /// Reads the zone in use again, after it changed.
  virtual void refresh() {}
};

/// Whether the fields name a real date and time of day within a range in which all arithmetic is exact. Wall times
/// come off the bus and out of files.
bool isRealMinute(const WallTime& wall);

/// The C library's zone: TZ where it is set, otherwise /etc/localtime. One per process, as the library keeps one zone.
class LibraryZone final : public ZoneRules {
 public:
  std::optional<Instant> instantOf(const WallTime& wall) const override;
  void refresh() override;
};

/// The zone of a calendar, for a program that was told another zone than the machine's. The calendar must be
/// Gregorian and outlive this.
class CalendarZone final : public ZoneRules {
 public:
  explicit CalendarZone(const Calendar& gregorian) : gregorian_(gregorian) {}

  std::optional<Instant> instantOf(const WallTime& wall) const override;

 private:
  const Calendar& gregorian_;
};

}  // namespace pillora

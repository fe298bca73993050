// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unicode/dtrule.h>

namespace pillora {

/// A zone whose clocks go alike every year, as POSIX writes it: "EST5EDT,M3.2.0,M11.1.0". The files of the tz database
/// end with such a text, which holds from their last listed change on.
struct PosixZone {
  /// The part of the year with other clocks. These may also be behind, and the part may span the new year.
  struct Daylight {
    int32_t offset;
    icu::DateTimeRule begin, end;  ///< of type UTC_TIME; their time of day may be negative or beyond a day
  };

  int32_t offset = 0;  ///< wall time minus UTC in seconds, as are all offsets here
  std::optional<Daylight> daylight = std::nullopt;

  /// Takes every form: quoted names, days counted as M, J or from zero, times from -167 to 167 hours. Nothing when the
  /// text is malformed, or names daylight saving time without saying when that is.
  static std::optional<PosixZone> parse(std::string_view text);
};

}  // namespace pillora

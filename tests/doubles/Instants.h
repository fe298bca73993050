// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <iostream>
#include <string_view>

#include "support/Instant.h"

namespace pillora {

/// An instant written in a test: "2025-01-10T10:30:00Z" or with an offset. A text that is none ends the test program.
inline Instant at(std::string_view text) {
  const auto parsed = parseTime(text);
  if (!parsed || !parsed->offset) {
    std::cerr << "not an instant: " << text << '\n';
    std::abort();
  }
  return utcInstant(parsed->wall) - *parsed->offset;
}

/// How GoogleTest prints an instant.
inline void PrintTo(Instant instant, std::ostream* out) { *out << iso8601(instant); }

}  // namespace pillora

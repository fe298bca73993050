// SPDX-License-Identifier: MIT
#pragma once

#include "support/Instant.h"

namespace pillora {

/// Where *now* comes from. Nothing below a main() reads the system's clock.
class Clock {
 public:
  virtual ~Clock() = default;

  virtual Instant now() const = 0;
};

}  // namespace pillora

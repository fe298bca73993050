// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Clock.h"

namespace pillora {

/// The system's real-time clock.
class SystemClock final : public Clock {
 public:
  Instant now() const override;
};

}  // namespace pillora

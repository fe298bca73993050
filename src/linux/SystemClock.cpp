// SPDX-License-Identifier: MIT
#include "linux/SystemClock.h"

#include <chrono>

namespace pillora {

Instant SystemClock::now() const {
  return Instant(std::chrono::floor<Instant::Duration>(std::chrono::system_clock::now().time_since_epoch()));
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Clock.h"

namespace pillora {

/// A clock that stands still until it is told to move.
class FakeClock final : public Clock {
 public:
  explicit FakeClock(Instant now) : now_(now) {}

  Instant now() const override { return now_; }
  void set(Instant now) { now_ = now; }
  void advance(Instant::Duration by) { now_ = now_ + by; }

 private:
  Instant now_;
};

}  // namespace pillora

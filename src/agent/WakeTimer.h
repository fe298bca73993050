// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

#include "support/Instant.h"

namespace pillora {

/// The one timer of the agent, by the wall clock. Main thread only.
class WakeTimer {
 public:
  virtual ~WakeTimer() = default;

  /// What is called when the time has come, and whenever the wall clock was set while the timer was armed.
  virtual void onWake(std::function<void()> wake) = 0;
  /// Takes the place of the time armed before; an instant in the past wakes at once, none stops the timer.
  virtual void arm(std::optional<Instant> instant) = 0;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "support/Result.h"

namespace pillora {

/// How the device's owner is told from others: by a fingerprint or the like alone, or by that or the passcode, whatever
/// the device knows the owner by.
enum class LAPolicy { deviceOwnerAuthenticationWithBiometrics, deviceOwnerAuthentication };

/// One authentication of the device's owner. A context is made for each evaluation and goes with it: destroying it
/// takes an open prompt down, and its reply is not waited for any more.
class LAContext {
 public:
  using Reply = std::function<void(bool success, std::optional<Error> error)>;

  virtual ~LAContext() = default;

  /// Whether the device can ask by this policy at all; the error tells a person why not. Returns within a second or
  /// two, also where a service of the system hangs.
  virtual Result<void> canEvaluatePolicy(LAPolicy policy) = 0;
  /// Asks the owner. `localizedReason` says what for; a platform whose prompt has words of its own does not show it.
  /// `reply` is called once, on any thread, at once or much later. After the context is gone it is called no more,
  /// except for a reply that was on its way already.
  virtual void evaluatePolicy(LAPolicy policy, const std::string& localizedReason, Reply reply) = 0;
  /// Takes an open prompt down as if the owner had cancelled it: its reply is a failure.
  virtual void invalidate() = 0;
};

/// Makes the context of one evaluation. Never null.
using LAContextFactory = std::function<std::unique_ptr<LAContext>()>;

}  // namespace pillora

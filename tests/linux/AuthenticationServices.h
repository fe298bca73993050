// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

#include "linux/StandInService.h"

namespace pillora {

/// A fingerprint service with one reader.
class FingerprintService final : public StandInService {
 public:
  explicit FingerprintService(sd_bus* bus);

  std::vector<std::string> fingers = {"right-index-finger"};
  std::string client;  ///< the connection that claimed the reader last

  /// Tells how a scan went.
  void tell(const std::string& result, bool isDone);

 private:
  friend struct FingerprintMethods;
};

/// An authority that asks nobody: the test answers.
class PolkitService final : public StandInService {
 public:
  explicit PolkitService(sd_bus* bus);

  struct Check {
    std::string kind, action, cancellation;
    uint32_t process = 0, flags = 0;
    uint64_t startTime = 0;
    int32_t user = -1;
    int details = 0;
  };
  bool isChallenge = true, isAuthorized = false;  ///< what a check without a prompt answers
  std::vector<Check> checks;
  /// Whether a prompt is open.
  bool isAsking() const { return prompt_ != nullptr; }
  /// The user answers the open prompt.
  void answer(bool authorized, bool challenge = false, bool dismissed = false);

 private:
  friend struct PolkitMethods;
  BusMessage prompt_;
};

}  // namespace pillora

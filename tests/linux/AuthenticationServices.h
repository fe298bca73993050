// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

#include "linux/SystemBus.h"

namespace pillora {

/// A service of a test's own on a bus connection of its own. The test handles its messages and says how it answers.
class StandInService {
 public:
  /// `refusals` holds the error of each method that fails, by the method's name.
  std::map<std::string, std::string> refusals;
  bool isHung = false;             ///< takes calls and answers none
  std::vector<std::string> calls;  ///< "Claim", with text arguments "Claim:finger"

  sd_bus* bus() const { return bus_.get(); }
  /// As when the service has crashed.
  void vanish();
  int count(const std::string& call) const;

 protected:
  StandInService(sd_bus* bus, const char* name) : bus_(bus), name_(name) {}
  void appear(const char* path, const char* interface, const sd_bus_vtable* table, void* self);
  /// Notes the call, and answers it where it is not to be carried out.
  bool isToBeDone(sd_bus_message* call, const std::string& noted);

 private:
  std::unique_ptr<sd_bus, BusReleaser<sd_bus_flush_close_unref>> bus_;
  std::string name_;
  std::vector<BusSlot> slots_;
};

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

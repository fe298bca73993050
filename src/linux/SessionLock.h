// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "linux/PolledBus.h"

namespace pillora {

/// Whether the screen of the person's session is locked, as logind is told by whoever locks it (LockedHint). Where
/// there is no logind, or no session, nothing is ever told. One that is started anew is asked again.
class SessionLock {
 public:
  /// `changed` is called from the connection's process(): first when the session turns out to be locked already, then
  /// with each change. Null where there is no system bus.
  static std::unique_ptr<SessionLock> open(std::function<void(bool isLocked)> changed);

  PolledBus& connection() { return *bus_; }

 private:
  SessionLock(std::unique_ptr<PolledBus> bus, std::function<void(bool)> changed);
  void findSession(size_t way);
  void askForHint();
  void takeChange(sd_bus_message* signal);
  void take(bool isLocked);

  std::unique_ptr<PolledBus> bus_;
  std::string logind_;   ///< the connection that answered; its signals alone are believed
  std::string session_;  ///< the path of ours; empty while it is not found
  std::function<void(bool)> changed_;
  bool isLocked_ = false;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <systemd/sd-bus.h>

#include "support/Result.h"

namespace pillora {

template <auto release>
struct BusReleaser {
  template <typename T>
  void operator()(T* handle) const {
    release(handle);
  }
};

using BusMessage = std::unique_ptr<sd_bus_message, BusReleaser<sd_bus_message_unref>>;
using BusSlot = std::unique_ptr<sd_bus_slot, BusReleaser<sd_bus_slot_unref>>;

using Deadline = std::chrono::steady_clock::time_point;
inline Deadline after(std::chrono::milliseconds patience) { return std::chrono::steady_clock::now() + patience; }

/// A call that takes arguments in sd-bus's notation. Null when it cannot be made.
BusMessage newCall(sd_bus* bus, const char* service, const char* path, const char* interface, const char* member);
/// The connection that a message comes from. A bus lets anybody send us a signal, and a rule that names a service
/// matches it all the same: whose signals are believed is to be compared.
std::string senderOf(sd_bus_message* message);
/// The sender of what the bus itself says.
inline constexpr const char* kBusItself = "org.freedesktop.DBus";

/// A connection to the system's services for one piece of work on one thread, which waits for what it asked. Services
/// give up what they did for a client when its connection ends. The bus is that of DBUS_SYSTEM_BUS_ADDRESS where it is
/// set.
class SystemBus {
 public:
  /// A readable `cancelled` ends every wait; -1 for work that nobody cancels.
  static Result<std::unique_ptr<SystemBus>> open(int cancelled = -1);

  sd_bus* connection() const { return bus_.get(); }
  /// A call with arguments in sd-bus's notation. Null when it cannot be made, which call() answers as an error.
  BusMessage newCall(const char* service, const char* path, const char* interface, const char* member) const {
    return pillora::newCall(bus_.get(), service, path, interface, member);
  }
  /// Sends a call and waits for its reply. An error is the service's own, or that there was none in time.
  Result<BusMessage> call(const BusMessage& message, Deadline deadline);
  /// Handles what arrives until something has happened.
  Result<void> waitFor(const std::function<bool()>& happened, Deadline deadline);
  /// From now on work goes on although it was cancelled: to leave a service tidily.
  void ignoreCancel() { cancelled_ = -1; }

 private:
  SystemBus(sd_bus* bus, int cancelled) : bus_(bus), cancelled_(cancelled) {}

  std::unique_ptr<sd_bus, BusReleaser<sd_bus_close_unref>> bus_;
  int cancelled_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "linux/SystemBus.h"

namespace pillora {

/// A connection to a message bus for a program whose event loop polls it: what was called for and what is listened to
/// arrives from process(), on the thread that calls it, and nothing is ever waited for but the bus itself. One thread
/// only. What is handed in must not destroy the connection that calls it.
class PolledBus {
 public:
  using Heard = std::function<void(sd_bus_message*)>;

  /// Null where there is no such bus.
  static std::unique_ptr<PolledBus> openSession() { return open(&sd_bus_open_user); }
  static std::unique_ptr<PolledBus> openSystem() { return open(&sd_bus_open_system); }

  int descriptor() const { return sd_bus_get_fd(bus_.get()); }
  bool wantsToWrite() const;
  /// Handles what has arrived and sends what could not be sent before.
  void process();
  /// Sends what was called for, for a program that is not yet in its loop. Waits for the bus itself.
  void flush() { sd_bus_flush(bus_.get()); }
  /// Handles what arrives until something has happened or the time is over, for the same program.
  void processUntil(const std::function<bool()>& happened, Deadline deadline);

  BusMessage newCall(const char* service, const char* path, const char* interface, const char* member) const {
    return pillora::newCall(bus_.get(), service, path, interface, member);
  }
  /// `answered` gets the reply, which may be an error; not when the connection goes before it comes.
  void call(const BusMessage& call, Heard answered);
  /// `heard` gets every message that the rule matches, in the bus's own notation, whoever sent it: see senderOf().
  void listen(const std::string& rule, Heard heard);
  /// Calls `appeared` whenever the service comes up from now on.
  void awaitService(const std::string& service, std::function<void()> appeared);

 private:
  explicit PolledBus(sd_bus* bus) : bus_(bus) {}
  static std::unique_ptr<PolledBus> open(int (*openBus)(sd_bus**));

  std::unique_ptr<sd_bus, BusReleaser<sd_bus_close_unref>> bus_;
};

}  // namespace pillora

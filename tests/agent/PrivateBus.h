// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "agent/Bus.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {

/// A program that a test started. It is killed and waited for at the end.
class StartedProgram {
 public:
  StartedProgram() = default;
  /// `environment` is added to the test's own.
  StartedProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment,
                 int inherited = -1);
  ~StartedProgram() { kill(); }
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(StartedProgram&& other) noexcept;

  pid_t id() const { return process_; }
  /// SIGKILL, and the end of it.
  void kill();
  /// The exit status once it has ended by itself.
  int wait();

 private:
  pid_t process_ = -1;
};

/// A message bus of the test's own, without any services of the machine. Connections made through it are pumped
/// together while a test waits for something.
class PrivateBus {
 public:
  PrivateBus();

  const std::string& address() const { return address_; }
  std::vector<std::string> environment() const { return {"DBUS_SESSION_BUS_ADDRESS=" + address_}; }
  /// A further folder of service files is `services()`; it is read when the bus is told to or a name is asked for.
  std::string services() const { return folder_.path() + "/services"; }

  BusHandle connect() const;
  /// The bus ends, and with it all connections.
  void stop() { daemon_.kill(); }
  /// Handles messages on these connections until `happened`; false when that takes longer than ten seconds.
  static bool pumpUntil(const std::vector<sd_bus*>& connections, const std::function<bool()>& happened);
  /// Whether the name has an owner.
  static bool isOwned(sd_bus* connection, const std::string& name);

 private:
  TemporaryFolder folder_;
  StartedProgram daemon_;
  std::string address_;
};

}  // namespace pillora

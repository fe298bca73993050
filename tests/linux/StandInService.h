// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
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
  std::string caller;              ///< the connection that called last

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

}  // namespace pillora

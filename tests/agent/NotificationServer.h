// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "agent/Bus.h"

namespace pillora {

/// What a notification server was handed.
struct Notified {
  std::string sender, app, icon, summary, body;
  uint32_t replaces = 0, number = 0;
  std::vector<std::string> actions;
  std::map<std::string, std::string> hints;  ///< texts and bytes as text
  int32_t timeout = -1;
};

/// A notification server by the Desktop Notifications Specification in the test's own process: a bubble that is not
/// there is shown under the number it asks for.
class NotificationServer {
 public:
  explicit NotificationServer(BusHandle bus) : bus_(std::move(bus)) {}

  std::vector<std::string> capabilities = {"actions", "body", "body-markup", "persistence"};
  bool refuses = false;
  /// Called before Notify is answered; false leaves it without an answer.
  std::function<bool()> beforeAnswer;

  std::vector<Notified> notified;
  std::map<uint32_t, Notified> onScreen;

  sd_bus* bus() const { return bus_.get(); }
  /// Takes the name org.freedesktop.Notifications.
  void appear();
  /// Leaves the bus; bubbles are gone.
  void disappear();
  bool isThere() const { return bus_ != nullptr; }

  void invoke(uint32_t bubble, const std::string& action, const std::string& token = "");
  /// Reason 2: dismissed by the user; 3: closed by a call.
  void close(uint32_t bubble, uint32_t reason = 2);

 private:
  friend struct ServerMethods;

  BusHandle bus_;
  SlotHandle slot_;
  uint32_t last_ = 0;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "linux/PolledBus.h"
#include "platform/DesktopLook.h"

namespace pillora {

/// How the desktop asks programs to look, as its settings portal says (org.freedesktop.portal.Settings): the settings
/// that all desktops share, and what GNOME's and KDE's say beyond them. They are asked for in one call, then followed.
/// A portal that starts later is asked then; where there is none, nothing is ever said.
class DesktopSettings {
 public:
  /// Asks at once, without waiting for the answer. `changed` is called from the connection's process() with each look
  /// that differs from the one before, the first from the defaults. Null where there is no session bus.
  static std::unique_ptr<DesktopSettings> open(std::function<void(const DesktopLook&)> changed);

  PolledBus& connection() { return *bus_; }
  /// Until the portal has answered or the time is over: for a window that would rather open in its right colours.
  void awaitFirst(std::chrono::milliseconds patience);

 private:
  using Value = std::variant<double, std::string>;
  using Key = std::pair<std::string, std::string>;  ///< a namespace and a name in it

  DesktopSettings(std::unique_ptr<PolledBus> bus, std::function<void(const DesktopLook&)> changed);
  void ask();
  void takeAll(sd_bus_message* reply);
  void takeChange(sd_bus_message* signal);
  void takeValue(sd_bus_message* message, const std::string& group, const std::string& name);
  DesktopLook lookSaid() const;
  double number(const char* group, const char* name, double otherwise) const;
  std::string text(const char* group, const char* name) const;
  void tell();

  std::unique_ptr<PolledBus> bus_;
  std::function<void(const DesktopLook&)> changed_;
  std::map<Key, Value> said_;
  DesktopLook look_;
  bool isAnswered_ = false;
};

}  // namespace pillora

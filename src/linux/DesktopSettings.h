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
  using Changed = std::function<void(const DesktopLook&)>;

  /// Asks at once, without waiting for the answer. Null where there is no session bus.
  static std::unique_ptr<DesktopSettings> open();

  PolledBus& connection() { return *bus_; }
  /// Waits for the answer, if it has not come, for so long at most: a window would rather open in its right colours.
  /// `changed` is called here when there is a look other than the defaults, and later from the connection's process()
  /// with each that differs from the one before.
  void follow(Changed changed, std::chrono::milliseconds patience);

 private:
  using Value = std::variant<double, std::string>;
  using Key = std::pair<std::string, std::string>;  ///< a namespace and a name in it

  explicit DesktopSettings(std::unique_ptr<PolledBus> bus);
  void ask();
  void takeAll(sd_bus_message* reply);
  void takeChange(sd_bus_message* signal);
  void takeValue(sd_bus_message* message, const std::string& group, const std::string& name);
  DesktopLook lookSaid() const;
  double number(const char* group, const char* name, double otherwise) const;
  std::string text(const char* group, const char* name) const;
  void tell();

  std::unique_ptr<PolledBus> bus_;
  std::string portal_;  ///< the connection that answered; its signals alone are believed
  Changed changed_;
  std::map<Key, Value> said_;
  DesktopLook look_;
  bool isAnswered_ = false;
};

}  // namespace pillora

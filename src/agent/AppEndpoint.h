// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "agent/AppLink.h"
#include "agent/Bus.h"
#include "platform/UNUserNotificationCenter.h"

namespace pillora {

/// What the window does for the desktop.
struct AppHooks {
  std::function<bool()> isActive;                   ///< whether a window has the focus
  std::function<void(const Activation&)> activate;  ///< come to the front, and do what is asked there
};

/// The app on the session bus: the name org.pillora.Pillora and the object /org/pillora/Pillora with
/// org.freedesktop.Application, by which the desktop activates it, and org.pillora.Pillora.Delegate1, by which the
/// agent reaches the notification centre's delegate:
///
///     WillPresent(request) → (u options)     an app that is not active, or has no delegate, wants the usual
///     DidReceive(request, s action)          only the agent's answers are believed
class AppEndpoint {
 public:
  /// The bus must outlive the endpoint.
  explicit AppEndpoint(sd_bus* bus) : bus_(bus) {}

  /// Takes the name and offers the object. An error when another app has the name; activating that one is the caller's
  /// choice.
  Result<void> start(AppHooks hooks);
  /// Gives the name back and takes the object away: nothing of the app is called from here on.
  void stop();
  void setDelegate(UNUserNotificationCenterDelegate* delegate) { delegate_ = delegate; }

 private:
  friend struct AppMethods;

  sd_bus* bus_;
  AppHooks hooks_;
  UNUserNotificationCenterDelegate* delegate_ = nullptr;
  SlotHandle delegateSlot_, applicationSlot_;
};

}  // namespace pillora

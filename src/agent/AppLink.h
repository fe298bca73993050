// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "agent/Bus.h"
#include "platform/UNUserNotificationCenter.h"

namespace pillora {

/// What the desktop asks of the app when it opens it.
struct Activation {
  std::string action = {};  ///< of the desktop entry, "add-medicine"; empty: only to come to the front
  std::string token = {};   ///< by which the desktop lets it come there; may be empty
};

/// The call that hands an activation to the app.
MessageHandle activationCall(sd_bus* bus, const Activation& activation);

/// The way to the running app, if one runs: it is asked how to present, and gets the answers. Main thread only.
class AppLink {
 public:
  /// What is done when no app runs, or it does not answer in time: banner, sound and badge.
  static constexpr unsigned kUsualOptions = un_options::kBanner | un_options::kSound | un_options::kBadge;

  /// The bus must outlive the link; `patience` is how long the app may take to say how to present.
  AppLink(sd_bus* bus, std::chrono::milliseconds patience) : bus_(bus), patience_(patience) {}

  /// The completion comes exactly once, later.
  void willPresent(const UNNotificationRequest& request, std::function<void(unsigned options)> completion);
  /// Hands an answer to the app. One that opens the app starts it if need be and brings it to the front, with the
  /// token by which the desktop lets it; any other is dropped when no app runs.
  void didReceive(const UNNotificationResponse& response, bool opensTheApp, const std::string& activationToken);
  /// Tells the desktop's launchers what count the app bears.
  void showBadge(int64_t count);

 private:
  sd_bus* bus_;
  std::chrono::milliseconds patience_;
};

}  // namespace pillora

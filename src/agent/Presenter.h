// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/UNUserNotificationCenter.h"

namespace pillora {

/// One notification to be shown.
struct Delivery {
  UNNotificationRequest request;
  std::vector<UNNotificationAction> actions;  ///< of the category registered now; none when it is not registered
  uint32_t bubble = 0;                        ///< the number to show it under, replacing what stands there
};

/// Shows what has come due. Main thread only.
class Presenter {
 public:
  virtual ~Presenter() = default;

  /// Who shows at present; empty when nobody does. Bubble numbers mean something to that server alone.
  virtual std::string server() const = 0;
  /// Shows one notification. The completion comes exactly once, at once or later: with the number under which the
  /// bubble stands, with 0 when the app wanted none, or with an error when it could not be shown; then it is tried
  /// again.
  virtual void show(const Delivery& delivery, std::function<void(Result<uint32_t>)> completion) = 0;
  virtual void showBadge(int64_t count) = 0;
};

/// Shows nothing and is content with it.
class SilentPresenter final : public Presenter {
 public:
  std::string server() const override { return "silent"; }
  void show(const Delivery& delivery, std::function<void(Result<uint32_t>)> completion) override {
    completion(delivery.bubble);
  }
  void showBadge(int64_t) override {}
};

}  // namespace pillora

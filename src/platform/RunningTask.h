// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <optional>
#include <utility>

#include "platform/BGTaskScheduler.h"

namespace pillora {

/// A background run under way inside this process, as the side that launched it sees it. Any thread.
class RunningTask final : public BGTask {
 public:
  explicit RunningTask(std::string identifier) : identifier_(std::move(identifier)) {}

  std::string identifier() const override { return identifier_; }

  void setExpirationHandler(std::function<void()> handler) override {
    const std::lock_guard lock(mutex_);
    if (!outcome_) expirationHandler_ = std::move(handler);
  }

  void setTaskCompleted(bool success) override { complete(success); }

  /// The time granted is over: calls the expiration handler; a run without one has failed. Nothing after its end.
  void expire() {
    if (const auto handler = takeHandler()) {
      handler();
    } else {
      complete(false);
    }
  }

  /// How it ended; nothing while it runs.
  std::optional<bool> outcome() const {
    const std::lock_guard lock(mutex_);
    return outcome_;
  }

 private:
  std::function<void()> takeHandler() {
    const std::lock_guard lock(mutex_);
    return std::exchange(expirationHandler_, nullptr);
  }

  void complete(bool success) {
    // A handler may hold the task that holds it.
    const auto released = takeHandler();
    const std::lock_guard lock(mutex_);
    if (!outcome_) outcome_ = success;
  }

  const std::string identifier_;
  mutable std::mutex mutex_;
  std::function<void()> expirationHandler_;
  std::optional<bool> outcome_;
};

}  // namespace pillora

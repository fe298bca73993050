// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

#include "platform/MainExecutor.h"

namespace pillora {

/// A main queue for programs without an event loop of their own: whoever owns it ends a turn by calling drain().
class QueuedMainExecutor final : public MainExecutor {
 public:
  void post(std::function<void()> job) override;
  /// Runs what was posted, and what that posts in turn, until nothing is left. Main thread only.
  void drain();
  /// Waits until something was posted, which another thread does, and drains. Main thread only.
  void wait();

 private:
  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<std::function<void()>> jobs_;
};

}  // namespace pillora

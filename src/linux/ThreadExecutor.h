// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/BackgroundExecutor.h"

namespace pillora {

/// A background queue on a thread of its own, which is started with the first job.
class ThreadExecutor final : public BackgroundExecutor {
 public:
  ThreadExecutor() = default;
  /// Waits for the job under way; those that have not begun are dropped.
  ~ThreadExecutor() override;

  void post(std::function<void()> job) override;

 private:
  void runJobs();

  std::mutex mutex_;  ///< guards what follows
  std::condition_variable changed_;
  std::deque<std::function<void()>> jobs_;
  bool isEnding_ = false;
  std::thread thread_;
};

}  // namespace pillora

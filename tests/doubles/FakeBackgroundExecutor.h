// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <utility>

#include "platform/BackgroundExecutor.h"

namespace pillora {

/// A background queue without a thread: its jobs wait until they are told to run, and then run where they are told.
class FakeBackgroundExecutor final : public BackgroundExecutor {
 public:
  void post(std::function<void()> job) override { jobs_.push_back(std::move(job)); }

  size_t waiting() const { return jobs_.size(); }

  /// Runs the job that waits longest; answers whether there was one.
  bool runOne() {
    if (jobs_.empty()) return false;
    const auto job = std::move(jobs_.front());
    jobs_.pop_front();
    job();
    return true;
  }
  void runAll() {
    while (runOne()) {
    }
  }

 private:
  std::deque<std::function<void()>> jobs_;
};

}  // namespace pillora

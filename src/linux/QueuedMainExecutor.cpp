// SPDX-License-Identifier: MIT
#include "linux/QueuedMainExecutor.h"

#include <utility>

namespace pillora {

void QueuedMainExecutor::post(std::function<void()> job) {
  const std::lock_guard lock(mutex_);
  jobs_.push_back(std::move(job));
  posted_.notify_one();
}

void QueuedMainExecutor::drain() {
  for (;;) {
    std::deque<std::function<void()>> turn;
    {
      const std::lock_guard lock(mutex_);
      turn.swap(jobs_);
    }
    if (turn.empty()) return;
    for (const auto& job : turn) job();
  }
}

void QueuedMainExecutor::wait() {
  {
    std::unique_lock lock(mutex_);
    posted_.wait(lock, [this] { return !jobs_.empty(); });
  }
  drain();
}

}  // namespace pillora

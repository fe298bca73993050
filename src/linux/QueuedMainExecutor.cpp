// SPDX-License-Identifier: MIT
#include "linux/QueuedMainExecutor.h"

#include <utility>

namespace pillora {

void QueuedMainExecutor::post(std::function<void()> job) {
  const std::lock_guard lock(mutex_);
  jobs_.push_back(std::move(job));
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

}  // namespace pillora

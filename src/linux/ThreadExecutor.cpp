// SPDX-License-Identifier: MIT
#include "linux/ThreadExecutor.h"

#include <utility>

namespace pillora {

ThreadExecutor::~ThreadExecutor() {
  std::deque<std::function<void()>> dropped;
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
    dropped.swap(jobs_);
  }
  changed_.notify_one();
  dropped.clear();
  if (thread_.joinable()) thread_.join();
}

void ThreadExecutor::post(std::function<void()> job) {
  {
    const std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(job));
    if (!thread_.joinable()) thread_ = std::thread([this] { runJobs(); });
  }
  changed_.notify_one();
}

void ThreadExecutor::runJobs() {
  for (;;) {
    std::function<void()> job;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return isEnding_ || !jobs_.empty(); });
      if (isEnding_) return;
      job = std::move(jobs_.front());
      jobs_.pop_front();
    }
    job();
  }
}

}  // namespace pillora

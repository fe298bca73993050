// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/MainExecutor.h"

namespace pillora {

/// A queue off the main thread for what may take long: reading and writing backups. Jobs run one at a time, in the
/// order in which they were posted. Its owner destroys it on the main thread, before what its jobs use: that waits for
/// the job under way and drops, unrun, those that have not begun.
class BackgroundExecutor {
 public:
  virtual ~BackgroundExecutor() = default;

  /// May be called from any thread.
  virtual void post(std::function<void()> job) = 0;
};

/// Runs `work` on the queue and hands what it returns to `completion` on the main thread. `work` owns what it uses, or
/// uses what outlives the queue; it never touches a record. `completion` is called once at most: never when the queue
/// goes before `work` has begun. Whoever may be gone by then has to guard itself in `completion`, which like all it
/// holds is used and destroyed on the main thread only.
template <typename Work, typename Completion>
void runInBackground(BackgroundExecutor& background, MainExecutor& main, Work work, Completion completion) {
  // Held by pointer, so that what it captured is never copied on the queue's thread.
  auto held = std::make_shared<Completion>(std::move(completion));
  background.post([&main, work = std::move(work), held = std::move(held)]() mutable {
    auto result = work();
    main.post([held = std::move(held), result = std::move(result)]() mutable { (*held)(std::move(result)); });
  });
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace pillora {

/// The main thread's queue: what is posted runs on the main thread, in order, after the code now running has returned
/// to the event loop. The store's automatic save at the end of a turn is posted here.
class MainExecutor {
 public:
  virtual ~MainExecutor() = default;

  /// May be called from any thread.
  virtual void post(std::function<void()> job) = 0;
};

}  // namespace pillora

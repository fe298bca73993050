// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <functional>
#include <thread>

namespace pillora {

/// While it lives, SIGTERM does not end the process but calls `ended`, on a thread of its own. Made on the main thread,
/// before any other thread that outlives it; there is at most one.
class TerminationWatch {
 public:
  explicit TerminationWatch(std::function<void()> ended);
  /// From here on SIGTERM does what it did before.
  ~TerminationWatch();
  TerminationWatch(const TerminationWatch&) = delete;
  TerminationWatch& operator=(const TerminationWatch&) = delete;

 private:
  sigset_t maskBefore_{};
  int signals_ = -1, stop_ = -1;
  std::thread thread_;
};

}  // namespace pillora

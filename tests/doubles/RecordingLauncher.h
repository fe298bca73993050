// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "agent/TaskLauncher.h"

namespace pillora {

/// Starts nothing and writes down what it should have started; fails on demand.
class RecordingLauncher final : public TaskLauncher {
 public:
  bool fails = false;
  std::vector<std::string> launched;
  std::function<void()> atLaunch;  ///< what the run does before launch() returns

  Result<void> launch(const std::string& identifier) override {
    if (fails) return Error{"cannot start"};
    launched.push_back(identifier);
    if (atLaunch) atLaunch();
    return {};
  }
};

}  // namespace pillora

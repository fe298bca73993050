// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "support/Result.h"

namespace pillora {

/// Starts background runs.
class TaskLauncher {
 public:
  virtual ~TaskLauncher() = default;

  /// Starts the run of a task that has come due and does not wait for it. An error means that nothing was started.
  virtual Result<void> launch(const std::string& identifier) = 0;
};

}  // namespace pillora

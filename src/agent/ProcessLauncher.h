// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "agent/TaskLauncher.h"

namespace pillora {

/// Starts a program that goes its own way: standard input empty, signals as at a login. Who starts programs lets the
/// kernel reap them (SIGCHLD ignored) or reaps them itself.
Result<void> spawn(const std::vector<std::string>& command);

/// Runs `PROGRAM run-task IDENTIFIER`.
class ProcessLauncher final : public TaskLauncher {
 public:
  /// `program` is a path, or a name to be looked up in PATH.
  explicit ProcessLauncher(std::string program) : program_(std::move(program)) {}

  Result<void> launch(const std::string& identifier) override { return spawn({program_, "run-task", identifier}); }

 private:
  std::string program_;
};

/// The program of ours called `name` that belongs to the one that is running, or `name` itself to be looked up in PATH.
std::string siblingProgram(const std::string& name);

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "agent/Operation.h"
#include "platform/MainExecutor.h"

namespace pillora {

/// Collects the operations that are issued in one turn of the main thread, so that they travel and are applied as one
/// batch when the turn ends. Main thread only.
class TurnQueue {
 public:
  using Completion = std::function<void(std::optional<Error>)>;
  struct Batch {
    std::vector<Operation> operations;
    std::vector<Completion> completions;  ///< one per operation, possibly empty
  };

  /// `send` gets each batch; it is called from the executor and from flush().
  TurnQueue(MainExecutor& executor, std::function<void(Batch)> send);

  void push(Operation operation, Completion completion = {});
  /// Sends what was collected so far, before something is asked whose answer depends on it.
  void flush();
  /// Calls the completions in order. Failures of operations without one are kept for takeFailure().
  void complete(const Batch& batch, const OperationErrors& errors);
  /// Keeps a failure that no completion tells.
  void fail(const Error& error) {
    if (!failure_) failure_ = error;
  }
  /// What was found; nothing when there was a failure, which is kept.
  template <typename T>
  T foundOrNone(Result<T> found) {
    if (found) return *std::move(found);
    fail(found.error());
    return {};
  }
  /// The first failure since the last call that no completion told.
  Result<void> takeFailure();

 private:
  MainExecutor& executor_;
  std::function<void(Batch)> send_;
  Batch batch_;
  std::optional<Error> failure_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace pillora

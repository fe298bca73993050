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

    /// Calls the completions in order.
    void complete(const OperationErrors& errors) const;
  };

  /// `send` gets each batch; it is called from the executor and from flush().
  TurnQueue(MainExecutor& executor, std::function<void(Batch)> send);

  void push(Operation operation, Completion completion = {});
  /// Sends what was collected so far, before something is asked whose answer depends on it.
  void flush();

 private:
  MainExecutor& executor_;
  std::function<void(Batch)> send_;
  Batch batch_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace pillora

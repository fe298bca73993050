// SPDX-License-Identifier: MIT
#include "agent/TurnQueue.h"

#include <utility>

namespace pillora {

TurnQueue::TurnQueue(MainExecutor& executor, std::function<void(Batch)> send)
    : executor_(executor), send_(std::move(send)) {}

void TurnQueue::push(Operation operation, Completion completion) {
  if (batch_.operations.empty()) {
    executor_.post([this, alive = std::weak_ptr(alive_)] {
      if (!alive.expired()) flush();
    });
  }
  batch_.operations.push_back(std::move(operation));
  batch_.completions.push_back(std::move(completion));
}

void TurnQueue::flush() {
  if (batch_.operations.empty()) return;
  send_(std::exchange(batch_, {}));
}

void TurnQueue::complete(const Batch& batch, const OperationErrors& errors) {
  for (size_t i = 0; i < batch.completions.size(); ++i) {
    if (batch.completions[i]) {
      batch.completions[i](errors[i]);
    } else if (errors[i]) {
      fail(*errors[i]);
    }
  }
}

Result<void> TurnQueue::takeFailure() {
  const auto failure = std::exchange(failure_, std::nullopt);
  if (failure) return *failure;
  return {};
}

}  // namespace pillora

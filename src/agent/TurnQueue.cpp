// SPDX-License-Identifier: MIT
#include "agent/TurnQueue.h"

#include <utility>

namespace pillora {

void TurnQueue::Batch::complete(const OperationErrors& errors) const {
  for (size_t i = 0; i < completions.size(); ++i) {
    if (completions[i]) completions[i](errors[i]);
  }
}

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

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "agent/TaskHandlers.h"

#include <utility>

namespace pillora {

RunningTask::RunningTask(std::string identifier, std::function<void(bool)> completed)
    : identifier_(std::move(identifier)), completed_(std::move(completed)) {}

void RunningTask::setTaskCompleted(bool success) {
  if (std::exchange(isCompleted_, true)) return;
  // The expiration handler holds the task that holds it.
  expirationHandler_ = nullptr;
  if (completed_) completed_(success);
}

void RunningTask::expire() {
  if (isCompleted_ || !expirationHandler_) return;
  const auto handler = std::exchange(expirationHandler_, nullptr);
  handler();
}

void TaskHandlers::registerHandler(const std::string& identifier, Handler handler) {
  handlers_[identifier] = std::move(handler);
}

std::shared_ptr<RunningTask> TaskHandlers::launch(const std::string& identifier,
                                                  std::function<void(bool)> completed) const {
  const auto handler = handlers_.find(identifier);
  if (handler == handlers_.end()) return nullptr;
  auto task = std::make_shared<RunningTask>(identifier, std::move(completed));
  handler->second(task);
  return task;
}

}  // namespace pillora

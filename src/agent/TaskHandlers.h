// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/RunningTask.h"

namespace pillora {

/// The launch handlers that a program has registered. Main thread only.
class TaskHandlers {
 public:
  using Handler = std::function<void(std::shared_ptr<BGTask>)>;

  void registerHandler(const std::string& identifier, Handler handler) { handlers_[identifier] = std::move(handler); }
  /// Hands a new task to the handler of this identifier. Null when none is registered. The caller keeps the task until
  /// it has completed.
  std::shared_ptr<RunningTask> launch(const std::string& identifier) const {
    const auto handler = handlers_.find(identifier);
    if (handler == handlers_.end()) return nullptr;
    auto task = std::make_shared<RunningTask>(identifier);
    handler->second(task);
    return task;
  }

 private:
  std::map<std::string, Handler> handlers_;
};

}  // namespace pillora

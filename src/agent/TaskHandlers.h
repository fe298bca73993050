// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/BGTaskScheduler.h"

namespace pillora {

/// A background run under way inside this process.
class RunningTask final : public BGTask {
 public:
  RunningTask(std::string identifier, std::function<void(bool success)> completed);

  std::string identifier() const override { return identifier_; }
  void setExpirationHandler(std::function<void()> handler) override { expirationHandler_ = std::move(handler); }
  void setTaskCompleted(bool success) override;
  bool isCompleted() const { return isCompleted_; }
  /// The time granted is over: calls the expiration handler, unless the task has completed.
  void expire();

 private:
  std::string identifier_;
  std::function<void(bool)> completed_;
  std::function<void()> expirationHandler_;
  bool isCompleted_ = false;
};

/// The launch handlers that a program has registered. Main thread only.
class TaskHandlers {
 public:
  using Handler = std::function<void(std::shared_ptr<BGTask>)>;

  void registerHandler(const std::string& identifier, Handler handler);
  bool contains(const std::string& identifier) const { return handlers_.contains(identifier); }
  /// Hands a new task to the handler of this identifier; `completed` is called at most once, when the task reports its
  /// end. Null when no handler is registered. The caller keeps the task until it has completed.
  std::shared_ptr<RunningTask> launch(const std::string& identifier, std::function<void(bool success)> completed) const;

 private:
  std::map<std::string, Handler> handlers_;
};

}  // namespace pillora

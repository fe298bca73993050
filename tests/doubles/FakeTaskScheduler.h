// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/BGTaskScheduler.h"

namespace pillora {

/// A background run in a test's hands.
class FakeTask final : public BGTask {
 public:
  explicit FakeTask(std::string identifier) : identifier_(std::move(identifier)) {}

  std::string identifier() const override { return identifier_; }
  void setExpirationHandler(std::function<void()> handler) override { expirationHandler_ = std::move(handler); }
  void setTaskCompleted(bool success) override {
    if (!success_) success_ = success;
  }

  /// Its time is over.
  void expire() {
    if (!success_ && expirationHandler_) expirationHandler_();
  }
  /// How it ended; nothing while it runs.
  std::optional<bool> success() const { return success_; }

 private:
  std::string identifier_;
  std::function<void()> expirationHandler_;
  std::optional<bool> success_;
};

/// A scheduler in memory: one pending request per identifier, and runs that start when a test says so.
class FakeTaskScheduler final : public BGTaskScheduler {
 public:
  std::optional<Error> refusal;                      ///< of submit(); what is refused is not kept
  std::vector<BGProcessingTaskRequest> submissions;  ///< every one that was not refused, in order
  std::map<std::string, BGProcessingTaskRequest> pending;

  void registerForTaskWithIdentifier(const std::string& identifier,
                                     std::function<void(std::shared_ptr<BGTask>)> launchHandler) override {
    launchHandlers_[identifier] = std::move(launchHandler);
  }

  Result<void> submit(BGProcessingTaskRequest request) override {
    if (refusal) return *refusal;
    submissions.push_back(request);
    pending[request.identifier] = std::move(request);
    return {};
  }

  bool isRegistered(const std::string& identifier) const { return launchHandlers_.contains(identifier); }

  /// Starts the run of a pending request, which is used up by it, on the calling thread. Null when there is none.
  std::shared_ptr<FakeTask> launch(const std::string& identifier) {
    if (pending.erase(identifier) == 0 || !isRegistered(identifier)) return nullptr;
    auto task = std::make_shared<FakeTask>(identifier);
    launchHandlers_.at(identifier)(task);
    return task;
  }

 private:
  std::map<std::string, std::function<void(std::shared_ptr<BGTask>)>> launchHandlers_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "support/Instant.h"
#include "support/Result.h"

namespace pillora {

/// A wish to be run in the background, once, not before `earliestBeginDate`.
struct BGProcessingTaskRequest {
  std::string identifier;
  std::optional<Instant> earliestBeginDate;
  bool requiresNetworkConnectivity = false;
  bool requiresExternalPower = false;

  bool operator==(const BGProcessingTaskRequest&) const = default;
};

/// One background run, as handed to the launch handler.
class BGTask {
 public:
  virtual ~BGTask() = default;

  virtual std::string identifier() const = 0;
  /// Called when the time granted is over and the task has not completed.
  virtual void setExpirationHandler(std::function<void()> handler) = 0;
  /// Reports the end. The first call counts, later ones are ignored.
  virtual void setTaskCompleted(bool success) = 0;
};

/// The platform's scheduler of background work: it keeps at most one request per identifier and launches the app's
/// handler for a request that has come due, whether a window is open or not.
class BGTaskScheduler {
 public:
  virtual ~BGTaskScheduler() = default;

  /// Names the handler that runs tasks of this identifier. Once per identifier, at start-up. The handler may be called
  /// on any thread.
  virtual void registerForTaskWithIdentifier(const std::string& identifier,
                                             std::function<void(std::shared_ptr<BGTask>)> launchHandler) = 0;
  /// Replaces the pending request of the same identifier.
  virtual Result<void> submit(BGProcessingTaskRequest request) = 0;
};

}  // namespace pillora

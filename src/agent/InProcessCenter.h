// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "agent/Engine.h"
#include "agent/TaskHandlers.h"
#include "agent/TurnQueue.h"
#include "platform/BGTaskScheduler.h"
#include "platform/Clock.h"
#include "platform/MainExecutor.h"
#include "platform/UNUserNotificationCenter.h"

namespace pillora {

/// The notification centre and task scheduler inside a program: the agent's engine over a file of its own, for a
/// machine without a session bus and for `--reminders FILE`. Permission is granted when it is asked for, and
/// remembered in the file.
///
/// It has no timer. Whoever owns it calls advance() at nextDeadline(); a program that runs one command calls it once
/// at its start and lets pass what fell due up to now. Changes of one turn are applied together when the turn ends, or
/// before anything is read. Main thread only; completions are called on it.
class InProcessCenter final : public UNUserNotificationCenter,
                              public BGTaskScheduler,
                              private TaskLauncher,
                              private Presenter {
 public:
  /// Fails when the file cannot be used, for instance because another program owns it. Everything handed in must
  /// outlive the centre.
  static Result<std::unique_ptr<InProcessCenter>> open(const std::string& path, const Clock& clock, ZoneRules& zone,
                                                       MainExecutor& executor, Presenter& presenter);
  ~InProcessCenter() override;

  void setDelegate(UNUserNotificationCenterDelegate* delegate) override { delegate_ = delegate; }
  void requestAuthorization(unsigned options,
                            std::function<void(bool granted, std::optional<Error>)> completion) override;
  void getNotificationSettings(std::function<void(UNNotificationSettings)> completion) override;
  void setNotificationCategories(std::vector<UNNotificationCategory> categories) override;
  void getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) override;
  void add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) override;
  void getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) override;
  void getPendingNotificationRequestIdentifiers(std::function<void(std::vector<std::string>)> completion) override;
  void removePendingNotificationRequests(std::vector<std::string> identifiers) override;
  void setBadgeCount(int64_t count) override;
  void getBadgeCount(std::function<void(int64_t)> completion) override;

  void registerForTaskWithIdentifier(const std::string& identifier,
                                     std::function<void(std::shared_ptr<BGTask>)> launchHandler) override;
  Result<void> submit(BGProcessingTaskRequest request) override;

  /// The user's answer to the bubble with this number; goes to the delegate. Numbers that are not ours do nothing.
  void answered(uint32_t bubble, const std::string& action);

  std::optional<Instant> nextDeadline();
  Result<Advanced> advance();
  Result<void> zoneChanged() { return engine_->zoneChanged(); }
  std::vector<BGProcessingTaskRequest> tasks();
  /// Applies what was issued. The error is the first since the last call that no completion told: a change that was
  /// refused, a listing that came empty because the file failed.
  Result<void> finish();

 private:
  InProcessCenter(MainExecutor& executor, Presenter& presenter);

  Result<void> launch(const std::string& identifier) override;

  // Asks the delegate how to present, and hands on to the presenter.
  std::string server() const override { return presenter_.server(); }
  void show(const Delivery& delivery, std::function<void(Result<uint32_t>)> completion) override;
  void showBadge(int64_t count) override { presenter_.showBadge(count); }

  Presenter& presenter_;
  UNUserNotificationCenterDelegate* delegate_ = nullptr;
  TaskHandlers handlers_;
  std::vector<std::shared_ptr<RunningTask>> running_;
  std::unique_ptr<Engine> engine_;
  TurnQueue queue_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/Reminders.h"
#include "platform/UNUserNotificationCenter.h"
#include "support/Result.h"

namespace pillora {

/// The notification centre as a command's screens see it. Changes are held until commit(), so that a command whose
/// records cannot be saved plans and cancels nothing either. The centre behind it is opened when it is first needed:
/// most commands never plan.
///
/// Questions go to the centre at once; the answers do not count what is held. Main thread only.
class HeldCenter final : public UNUserNotificationCenter {
 public:
  using Open = std::function<Result<Reminders*>()>;

  /// `open` is called until it succeeds; what it answers outlives this.
  explicit HeldCenter(Open open) : open_(std::move(open)) {}

  /// Opens the centre now, so that a question what is allowed gets its own answer.
  Result<void> open();
  /// Whether what is held can be handed over. The error is that of opening the centre, or of a question to it.
  Result<void> prepare();
  /// Hands over what is held, in order, after prepare() succeeded, and waits until it is kept. After an error the
  /// completions are not called: it stands for them all.
  Result<void> commit();

  void setDelegate(UNUserNotificationCenterDelegate*) override {}  // a command is over before anything is shown
  void requestAuthorization(unsigned options,
                            std::function<void(bool granted, std::optional<Error>)> completion) override;
  /// Deliberate: not determined while the centre is closed. Every manager asks when it is made, and that must not open
  /// the centre for a command that plans nothing.
  void getNotificationSettings(std::function<void(UNNotificationSettings)> completion) override;
  void setNotificationCategories(std::vector<UNNotificationCategory> categories) override;
  void getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) override;
  void add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) override;
  void getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) override;
  void getPendingNotificationRequestIdentifiers(std::function<void(std::vector<std::string>)> completion) override;
  void removePendingNotificationRequests(std::vector<std::string> identifiers) override;
  void setBadgeCount(int64_t count) override;
  void getBadgeCount(std::function<void(int64_t count)> completion) override;

 private:
  /// The centre, or null when it cannot be opened; prepare() then fails.
  UNUserNotificationCenter* center();

  Open open_;
  Reminders* reminders_ = nullptr;
  std::optional<Error> failure_;
  std::vector<std::function<void(UNUserNotificationCenter&)>> held_;
  using Answers = std::vector<std::function<void()>>;
  std::shared_ptr<Answers> answers_ = std::make_shared<Answers>();  ///< completions that are to be called
};

}  // namespace pillora

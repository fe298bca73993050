// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "cli/Reminders.h"

namespace pillora {

namespace {

class InMemoryReminders final : public UNUserNotificationCenter, public BGTaskScheduler {
 public:
  void setDelegate(UNUserNotificationCenterDelegate*) override {}
  void requestAuthorization(unsigned, std::function<void(bool, std::optional<Error>)> completion) override {
    settings_.authorizationStatus = UNAuthorizationStatus::authorized;
    completion(true, std::nullopt);
  }
  void getNotificationSettings(std::function<void(UNNotificationSettings)> completion) override {
    completion(settings_);
  }
  void setNotificationCategories(std::vector<UNNotificationCategory> categories) override {
    categories_ = std::move(categories);
  }
  void getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) override {
    completion(categories_);
  }
  void add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) override {
    removePendingNotificationRequests({request.identifier});
    pending_.push_back(std::move(request));
    completion(std::nullopt);
  }
  void getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) override {
    completion(pending_);
  }
  void removePendingNotificationRequests(std::vector<std::string> identifiers) override {
    std::erase_if(pending_, [&](const auto& request) {
      return std::find(identifiers.begin(), identifiers.end(), request.identifier) != identifiers.end();
    });
  }
  void setBadgeCount(int64_t count) override { badge_ = count; }
  void getBadgeCount(std::function<void(int64_t)> completion) override { completion(badge_); }

  void registerForTaskWithIdentifier(const std::string&, std::function<void(std::shared_ptr<BGTask>)>) override {}
  Result<void> submit(BGProcessingTaskRequest) override { return {}; }

 private:
  UNNotificationSettings settings_;
  std::vector<UNNotificationRequest> pending_;
  std::vector<UNNotificationCategory> categories_;
  int64_t badge_ = 0;
};

}  // namespace

Reminders inMemoryReminders() {
  const auto reminders = std::make_shared<InMemoryReminders>();
  return {*reminders, *reminders, reminders};
}

}  // namespace pillora

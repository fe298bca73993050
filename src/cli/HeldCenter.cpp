// SPDX-License-Identifier: MIT
#include "cli/HeldCenter.h"

#include <utility>

namespace pillora {

UNUserNotificationCenter* HeldCenter::center() {
  if (reminders_ == nullptr) {
    const auto opened = open_();
    failure_ = opened ? std::nullopt : std::optional(opened.error());
    if (opened) reminders_ = *opened;
  }
  return reminders_ != nullptr ? &reminders_->notificationCenter : nullptr;
}

Result<void> HeldCenter::open() {
  if (center() == nullptr) return *failure_;
  return {};
}

Result<void> HeldCenter::prepare() {
  if (!held_.empty()) center();
  if (failure_) return *failure_;
  return reminders_ != nullptr && reminders_->finish ? reminders_->finish() : Result<void>();
}

Result<void> HeldCenter::commit() {
  if (held_.empty()) return {};
  for (const auto& change : std::exchange(held_, {})) change(reminders_->notificationCenter);
  const auto kept = reminders_->finish ? reminders_->finish() : Result<void>();
  const Answers answers = std::exchange(*answers_, {});
  if (!kept) return kept;
  for (const auto& answer : answers) answer();
  return {};
}

void HeldCenter::requestAuthorization(unsigned options, std::function<void(bool, std::optional<Error>)> completion) {
  if (auto* open = center()) return open->requestAuthorization(options, std::move(completion));
  completion(false, failure_);
}

void HeldCenter::getNotificationSettings(std::function<void(UNNotificationSettings)> completion) {
  if (reminders_ != nullptr) return center()->getNotificationSettings(std::move(completion));
  completion({});
}

void HeldCenter::setNotificationCategories(std::vector<UNNotificationCategory> categories) {
  held_.emplace_back([categories = std::move(categories)](auto& open) { open.setNotificationCategories(categories); });
}

void HeldCenter::getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) {
  if (auto* open = center()) return open->getNotificationCategories(std::move(completion));
  completion({});
}

void HeldCenter::add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) {
  held_.emplace_back(
      [request = std::move(request), completion = std::move(completion), answers = answers_](auto& open) {
        open.add(request, [completion, answers](const std::optional<Error>& error) {
          if (completion) answers->push_back([completion, error] { completion(error); });
        });
      });
}

void HeldCenter::getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) {
  if (auto* open = center()) return open->getPendingNotificationRequests(std::move(completion));
  completion({});
}

void HeldCenter::getPendingNotificationRequestIdentifiers(std::function<void(std::vector<std::string>)> completion) {
  if (auto* open = center()) return open->getPendingNotificationRequestIdentifiers(std::move(completion));
  completion({});
}

void HeldCenter::removePendingNotificationRequests(std::vector<std::string> identifiers) {
  if (identifiers.empty()) return;
  held_.emplace_back(
      [identifiers = std::move(identifiers)](auto& open) { open.removePendingNotificationRequests(identifiers); });
}

void HeldCenter::setBadgeCount(int64_t count) {
  held_.emplace_back([count](auto& open) { open.setBadgeCount(count); });
}

void HeldCenter::getBadgeCount(std::function<void(int64_t)> completion) {
  if (auto* open = center()) return open->getBadgeCount(std::move(completion));
  completion(0);
}

}  // namespace pillora

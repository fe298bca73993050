// SPDX-License-Identifier: MIT
#include "cli/HeldCenter.h"

#include <utility>

namespace pillora {

UNUserNotificationCenter* HeldCenter::center() {
  if (center_ != nullptr) return center_;
  const auto opened = open_();
  failure_ = opened ? std::nullopt : std::optional(opened.error());
  if (opened) center_ = *opened;
  return center_;
}

Result<void> HeldCenter::prepare() {
  if (!held_.empty()) center();
  if (failure_) return *failure_;
  return {};
}

void HeldCenter::commit() {
  for (const auto& change : std::exchange(held_, {})) change(*center());
}

void HeldCenter::requestAuthorization(unsigned options, std::function<void(bool, std::optional<Error>)> completion) {
  if (auto* open = center()) return open->requestAuthorization(options, std::move(completion));
  completion(false, failure_);
}

void HeldCenter::getNotificationSettings(std::function<void(UNNotificationSettings)> completion) {
  if (center_ != nullptr) return center_->getNotificationSettings(std::move(completion));
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
  held_.emplace_back([request = std::move(request), completion = std::move(completion)](auto& open) {
    open.add(request, completion);
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

// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/UNUserNotificationCenter.h"

namespace pillora {

/// A notification centre in memory. It keeps requests, categories, badge and permission as the real one does, writes
/// down every call, and on demand holds its completions back or refuses what it is asked. Operations take effect when
/// they are called, also while completions are held back: a listing is what was pending at its call.
class FakeNotificationCenter final : public UNUserNotificationCenter {
 public:
  // How it answers. Change at any time.
  bool answersLate = false;  ///< completions wait for release()
  bool grantsPermission = true;
  std::optional<Error> permissionError;
  UNNotificationSettings settings;
  std::function<std::optional<Error>(const UNNotificationRequest&)> refusal;  ///< a refused request is not kept
  std::function<void()> beforeRemoval;  ///< called at each removal, before anything is taken away

  // What it was asked, in order: "add ID", "remove ID ID", "setNotificationCategories NAME" …
  std::vector<std::string> calls;
  std::vector<UNNotificationRequest> added;  ///< every request handed over, also a refused one

  // What it holds.
  std::vector<UNNotificationRequest> pending;  ///< in the order in which they were added
  std::vector<UNNotificationCategory> categories;
  int64_t badge = 0;
  UNUserNotificationCenterDelegate* delegate = nullptr;

  void setDelegate(UNUserNotificationCenterDelegate* newDelegate) override {
    calls.emplace_back("setDelegate");
    delegate = newDelegate;
  }

  void requestAuthorization(unsigned options, std::function<void(bool, std::optional<Error>)> completion) override {
    calls.push_back("requestAuthorization " + std::to_string(options));
    settings.authorizationStatus = grantsPermission ? UNAuthorizationStatus::authorized : UNAuthorizationStatus::denied;
    answer([completion, granted = grantsPermission, error = permissionError] { completion(granted, error); });
  }

  void getNotificationSettings(std::function<void(UNNotificationSettings)> completion) override {
    calls.emplace_back("getNotificationSettings");
    answer([completion, now = settings] { completion(now); });
  }

  void setNotificationCategories(std::vector<UNNotificationCategory> newCategories) override {
    std::string call = "setNotificationCategories";
    for (const auto& category : newCategories) call += " " + category.identifier;
    calls.push_back(call);
    categories = std::move(newCategories);
  }

  void getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) override {
    calls.emplace_back("getNotificationCategories");
    answer([completion, now = categories] { completion(now); });
  }

  void add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) override {
    calls.push_back("add " + request.identifier);
    added.push_back(request);
    const auto error = refusal ? refusal(request) : std::nullopt;
    if (!error) {
      removeFromPending({request.identifier});
      pending.push_back(std::move(request));
    }
    answer([completion, error] { completion(error); });
  }

  void getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) override {
    calls.emplace_back("getPendingNotificationRequests");
    answer([completion, now = pending] { completion(now); });
  }

  void removePendingNotificationRequests(std::vector<std::string> identifiers) override {
    if (beforeRemoval) beforeRemoval();
    std::string call = "removePendingNotificationRequests";
    for (const auto& identifier : identifiers) call += " " + identifier;
    calls.push_back(call);
    removeFromPending(identifiers);
  }

  void setBadgeCount(int64_t count) override {
    calls.push_back("setBadgeCount " + std::to_string(count));
    badge = count;
  }

  void getBadgeCount(std::function<void(int64_t)> completion) override {
    calls.emplace_back("getBadgeCount");
    answer([completion, now = badge] { completion(now); });
  }

  /// Calls the completions that were held back, in order, on the calling thread.
  void release() {
    for (const auto& completion : std::exchange(held_, {})) completion();
  }

  std::vector<std::string> pendingIdentifiers() const {
    std::vector<std::string> identifiers;
    for (const auto& request : pending) identifiers.push_back(request.identifier);
    return identifiers;
  }

 private:
  void answer(std::function<void()> completion) {
    if (answersLate) {
      held_.push_back(std::move(completion));
    } else {
      completion();
    }
  }

  void removeFromPending(const std::vector<std::string>& identifiers) {
    std::erase_if(pending, [&](const auto& each) {
      return std::find(identifiers.begin(), identifiers.end(), each.identifier) != identifiers.end();
    });
  }

  std::deque<std::function<void()>> held_;
};

}  // namespace pillora

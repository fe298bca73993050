// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Calendar.h"
#include "support/Result.h"
#include "support/UserInfo.h"

namespace pillora {

struct UNNotificationContent {
  std::string title;
  std::string body;
  std::string sound = "default";
  std::optional<int64_t> badge;
  UserInfo userInfo;  ///< for the app that planned it
  std::string categoryIdentifier;

  bool operator==(const UNNotificationContent&) const = default;
};

/// Fires at a local minute. The components are the user's own, in the calendar named; the same minute as Gregorian
/// wall time is what the centre goes by.
struct UNCalendarNotificationTrigger {
  DateComponents dateComponents;  ///< down to the minute, second 0
  std::string calendar;
  WallTime wallTime;
  bool repeats = false;

  bool operator==(const UNCalendarNotificationTrigger&) const = default;
};

struct UNNotificationRequest {
  std::string identifier;
  UNNotificationContent content;
  UNCalendarNotificationTrigger trigger;

  bool operator==(const UNNotificationRequest&) const = default;
};

struct UNNotificationAction {
  std::string identifier;
  std::string title;
  bool foreground = false;  ///< answering opens the application
  bool destructive = false;

  bool operator==(const UNNotificationAction&) const = default;
};

struct UNNotificationCategory {
  std::string identifier;
  std::vector<UNNotificationAction> actions;

  bool operator==(const UNNotificationCategory&) const = default;
};

enum class UNAuthorizationStatus { notDetermined, denied, authorized, provisional, ephemeral };
enum class UNNotificationSetting { notSupported, disabled, enabled };

struct UNNotificationSettings {
  UNAuthorizationStatus authorizationStatus = UNAuthorizationStatus::notDetermined;
  UNNotificationSetting criticalAlertSetting = UNNotificationSetting::notSupported;
};

/// Bits of UNAuthorizationOptions and UNNotificationPresentationOptions.
namespace un_options {
inline constexpr unsigned kBadge = 1, kSound = 2, kAlert = 4, kList = 8, kBanner = 16;
}

struct UNNotificationResponse {
  UNNotificationRequest request;
  std::string actionIdentifier;
};

/// Hears of notifications that are shown while the app is in front, and of the user's answers.
class UNUserNotificationCenterDelegate {
 public:
  virtual ~UNUserNotificationCenterDelegate() = default;

  virtual void willPresent(const UNNotificationRequest& request,
                           const std::function<void(unsigned options)>& completion) = 0;
  virtual void didReceive(const UNNotificationResponse& response, const std::function<void()>& completion) = 0;
};

/// The platform's notification centre: it keeps what was planned and fires it when its minute comes, whether the app
/// runs or not. Operations take effect in the order in which they are issued. Completions are called exactly once, on
/// any thread, at once or later.
class UNUserNotificationCenter {
 public:
  virtual ~UNUserNotificationCenter() = default;

  virtual void setDelegate(UNUserNotificationCenterDelegate* delegate) = 0;
  virtual void requestAuthorization(unsigned options,
                                    std::function<void(bool granted, std::optional<Error>)> completion) = 0;
  virtual void getNotificationSettings(std::function<void(UNNotificationSettings)> completion) = 0;
  /// Replaces the whole registered set.
  virtual void setNotificationCategories(std::vector<UNNotificationCategory> categories) = 0;
  virtual void getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) = 0;
  /// A request replaces the pending one of the same identifier.
  virtual void add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) = 0;
  virtual void getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) = 0;
  /// The same by name alone. A centre that is reached over a bus overrides this, so that a cancel need not carry the
  /// content of thousands of requests.
  virtual void getPendingNotificationRequestIdentifiers(std::function<void(std::vector<std::string>)> completion) {
    getPendingNotificationRequests([completion = std::move(completion)](const auto& requests) {
      std::vector<std::string> identifiers;
      for (const UNNotificationRequest& request : requests) identifiers.push_back(request.identifier);
      completion(std::move(identifiers));
    });
  }
  virtual void removePendingNotificationRequests(std::vector<std::string> identifiers) = 0;
  virtual void setBadgeCount(int64_t count) = 0;
  virtual void getBadgeCount(std::function<void(int64_t count)> completion) = 0;
};

}  // namespace pillora

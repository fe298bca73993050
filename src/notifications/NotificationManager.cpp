// SPDX-License-Identifier: MIT
#include "notifications/NotificationManager.h"

#include <chrono>
#include <utility>

#include "notifications/ReminderRequests.h"

namespace pillora {

namespace {

constexpr int64_t kFollowUpSeconds = 3600;

}  // namespace

NotificationManager::NotificationManager(const NotificationEnvironment& environment)
    : environment_(environment), mainThread_(std::this_thread::get_id()), alive_(std::make_shared<int>()) {
  environment_.notificationCenter.setDelegate(this);
  checkAuthorizationStatus();
}

NotificationManager::~NotificationManager() { environment_.notificationCenter.setDelegate(nullptr); }

std::shared_ptr<void> NotificationManager::observe(std::function<void()> observer) {
  return observers_.add(std::move(observer));
}

/// A completion that may be called on any thread and does its job on the main thread: at once when it is called there.
template <typename... Arguments>
auto NotificationManager::onMainThread(std::function<void(Arguments...)> job) {
  return [alive = std::weak_ptr(alive_), mainThread = mainThread_, &executor = environment_.executor,
          job = std::move(job)](Arguments... arguments) {
    const auto run = [alive, job, ... arguments = std::move(arguments)] {
      if (!alive.expired()) job(arguments...);
    };
    if (std::this_thread::get_id() == mainThread) {
      run();
    } else {
      executor.post(run);
    }
  };
}

void NotificationManager::requestAuthorization() {
  using Answer = std::function<void(bool, std::optional<Error>)>;
  environment_.notificationCenter.requestAuthorization(
      un_options::kAlert | un_options::kBadge | un_options::kSound,
      onMainThread(Answer([this](bool granted, const std::optional<Error>& error) {
        isAuthorized_ = granted;
        authorizationError_ = error;
        if (error) environment_.console.print("Notification authorization error: " + error->description);
        observers_.notify();
      })));
}

void NotificationManager::checkAuthorizationStatus() {
  using Answer = std::function<void(UNNotificationSettings)>;
  environment_.notificationCenter.getNotificationSettings(
      onMainThread(Answer([this](const UNNotificationSettings& settings) {
        isAuthorized_ = settings.authorizationStatus == UNAuthorizationStatus::authorized;
        criticalAlertsAuthorized_ = settings.criticalAlertSetting == UNNotificationSetting::enabled;
        observers_.notify();
      })));
}

void NotificationManager::scheduleNotification(const Medicine& medicine, Instant dueTime,
                                               const std::optional<std::string>& identifier) {
  // Deliberate: this one category replaces all that are registered. The buttons of every pending reminder are those of
  // the medicine planned last, and where its category is another one they have none.
  environment_.notificationCenter.setNotificationCategories({reminderCategory(medicine, environment_.texts)});
  UNNotificationRequest request = reminderRequest(medicine, dueTime, environment_.calendar, environment_.texts);
  if (identifier) request.identifier = *identifier;
  handOver(std::move(request), "Error scheduling notification: ");
  scheduleFollowUps(medicine, dueTime);
}

void NotificationManager::scheduleFollowUps(const Medicine& medicine, Instant dueTime) {
  const Calendar& calendar = environment_.calendar;
  const auto endOfDay = calendar.adding(CalendarUnit::day, 1, calendar.startOfDay(dueTime));
  if (!endOfDay) return;
  // Elapsed hours, so that a day on which the clock changes has one follow-up less or more.
  const auto anHourAfter = [](Instant time) { return checkedAdd(time, kFollowUpSeconds, std::chrono::seconds(1)); };
  auto time = anHourAfter(dueTime);
  for (int64_t ordinal = 1; time && *time < *endOfDay; ++ordinal, time = anHourAfter(*time)) {
    handOver(followUpRequest(medicine, dueTime, *time, ordinal, calendar, environment_.texts),
             "Error scheduling follow-up notification: ");
  }
}

void NotificationManager::handOver(UNNotificationRequest request, std::string_view failureMessage) {
  for (const auto& plannedSince : openCancels_) plannedSince->insert(request.identifier);
  environment_.notificationCenter.add(
      std::move(request), [&console = environment_.console, failureMessage](const std::optional<Error>& error) {
        if (error) console.print(std::string(failureMessage) + error->description);
      });
}

void NotificationManager::scheduleUpcomingNotifications(const Medicine& medicine, int64_t count) {
  if (!medicine.isActive() || !medicine.isRepeating()) return;
  // Deliberate: an interval that does not advance is bounded by the count alone, like every other.
  Instant after = environment_.clock.now();
  for (; count > 0; --count) {
    const auto dueTime = medicine.nextDoseTime(after, environment_.calendar);
    if (!dueTime) return;
    if (const auto& endDate = medicine.endDate(); endDate && *dueTime > *endDate) return;
    scheduleNotification(medicine, *dueTime);
    after = *dueTime;
  }
}

void NotificationManager::cancelNotifications(const Medicine& medicine) {
  const auto plannedSince = openCancels_.emplace_back(std::make_shared<Identifiers>());
  using Answer = std::function<void(std::vector<std::string>)>;
  environment_.notificationCenter.getPendingNotificationRequestIdentifiers(
      onMainThread(Answer([this, plannedSince, prefix = medicine.id().text()](std::vector<std::string> identifiers) {
        std::erase_if(identifiers, [&](const std::string& identifier) { return !identifier.starts_with(prefix); });
        finishCancel(plannedSince, std::move(identifiers));
      })));
}

/// Removes what was pending when the cancel was issued. A request planned since has taken the place of the pending one
/// of its name, which is what cancelling first would have come to.
void NotificationManager::finishCancel(const std::shared_ptr<Identifiers>& plannedSince,
                                       std::vector<std::string> identifiers) {
  std::erase(openCancels_, plannedSince);
  std::erase_if(identifiers, [&](const std::string& identifier) { return plannedSince->contains(identifier); });
  environment_.notificationCenter.removePendingNotificationRequests(std::move(identifiers));
}

}  // namespace pillora

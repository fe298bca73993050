// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "model/Medicine.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "platform/MainExecutor.h"
#include "platform/Texts.h"
#include "platform/UNUserNotificationCenter.h"
#include "support/BroadcastCentre.h"
#include "support/Observers.h"

namespace pillora {

/// What the manager is made from. The referenced objects outlive it and every completion that the centre still owes.
struct NotificationEnvironment {
  UNUserNotificationCenter& notificationCenter;
  const Clock& clock;
  const Calendar& calendar;
  const Texts& texts;
  MainExecutor& executor;
  Console& console;
  BroadcastCentre& broadcasts;
};

// Broadcasts of the user's answers, each with the entry "medicineId" (text); a snooze also with "snoozeDuration"
// (integer, minutes).
inline constexpr std::string_view kMedicineTaken = "medicineTaken";
inline constexpr std::string_view kMedicineSnoozed = "medicineSnoozed";
inline constexpr std::string_view kMedicineSkipped = "medicineSkipped";

/// The one object through which the app talks to the notification centre: it asks for permission, plans and cancels
/// reminders, and is the centre's delegate. The centre's pending requests are the only record of what is planned.
///
/// Made, used and destroyed on the main thread; only the delegate's two operations may come on any thread.
class NotificationManager final : public UNUserNotificationCenterDelegate {
 public:
  explicit NotificationManager(const NotificationEnvironment& environment);
  ~NotificationManager() override;
  NotificationManager(const NotificationManager&) = delete;
  NotificationManager& operator=(const NotificationManager&) = delete;

  // Published state; it changes on the main thread alone.
  bool isAuthorized() const { return isAuthorized_; }
  bool criticalAlertsAuthorized() const { return criticalAlertsAuthorized_; }
  const std::vector<UNNotificationRequest>& pendingNotifications() const { return pendingNotifications_; }
  /// What came with the last answer to requestAuthorization(), if anything was wrong.
  const std::optional<Error>& authorizationError() const { return authorizationError_; }
  /// Calls `observer` after each change of the published state until the returned handle is gone.
  [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> observer);

  /// Asks for permission to show alerts, to sound and to badge; `isAuthorized` takes the answer.
  void requestAuthorization();
  /// Reads what is allowed. Only the full permission counts, not a provisional or ephemeral one.
  void checkAuthorizationStatus();

  /// Plans the reminder of one dose, whatever the medicine's flags say, and one follow-up an hour from then on until
  /// midnight. `identifier` takes the place of the reminder's own name.
  void scheduleNotification(const Medicine& medicine, Instant dueTime,
                            const std::optional<std::string>& identifier = std::nullopt);
  /// Plans the reminders of the next `count` doses up to the medicine's `endDate`, itself included. Nothing for a
  /// medicine that is not active or not repeating. What is pending stays: whoever plans anew cancels first.
  void scheduleUpcomingNotifications(const Medicine& medicine, int64_t count);
  /// Removes what is pending for the medicine at this moment, follow-ups included. What is planned for it afterwards
  /// stays, also when the centre takes its time to answer. Notifications on show are left alone.
  void cancelNotifications(const Medicine& medicine);

  void willPresent(const UNNotificationRequest& request, const std::function<void(unsigned)>& completion) override;
  void didReceive(const UNNotificationResponse& response, const std::function<void()>& completion) override;

 private:
  using Identifiers = std::set<std::string>;

  void scheduleFollowUps(const Medicine& medicine, Instant dueTime);
  void handOver(UNNotificationRequest request, std::string_view failureMessage);
  void finishCancel(const std::shared_ptr<Identifiers>& plannedSince, std::vector<std::string> identifiers);
  template <typename... Arguments>
  auto onMainThread(std::function<void(Arguments...)> job);

  NotificationEnvironment environment_;
  bool isAuthorized_ = false;
  bool criticalAlertsAuthorized_ = false;
  std::optional<Error> authorizationError_;
  std::vector<UNNotificationRequest> pendingNotifications_;  ///< published, filled by nobody
  Observers<> observers_;
  std::vector<std::shared_ptr<Identifiers>> openCancels_;  ///< of each what was planned since it was issued
  std::thread::id mainThread_;
  std::shared_ptr<void> alive_;  ///< what hops to the main thread does nothing once this is gone
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "notifications/NotificationManager.h"

#include <gtest/gtest.h>

#include <optional>
#include <thread>

#include "notifications/NotificationFixture.h"

namespace pillora {
namespace {

using Lines = std::vector<std::string>;

TEST(NotificationManager, isTheDelegateFirstAndThenReadsWhatIsAllowed) {
  NotificationFixture in;
  const NotificationManager manager(in.environment());
  EXPECT_EQ(in.center.delegate, &manager);
  EXPECT_EQ(in.center.calls, (Lines{"setDelegate", "getNotificationSettings"}));
}

TEST(NotificationManager, startsWithNothingAllowedAndNothingPublished) {
  NotificationFixture in;
  const NotificationManager manager(in.environment());
  EXPECT_FALSE(manager.isAuthorized());
  EXPECT_FALSE(manager.criticalAlertsAuthorized());
  EXPECT_TRUE(manager.pendingNotifications().empty());
}

TEST(NotificationManager, onlyTheFullPermissionCounts) {
  for (const auto& [status, authorized] :
       {std::pair(UNAuthorizationStatus::authorized, true), std::pair(UNAuthorizationStatus::notDetermined, false),
        std::pair(UNAuthorizationStatus::denied, false), std::pair(UNAuthorizationStatus::provisional, false),
        std::pair(UNAuthorizationStatus::ephemeral, false)}) {
    NotificationFixture in;
    in.center.settings.authorizationStatus = status;
    EXPECT_EQ(NotificationManager(in.environment()).isAuthorized(), authorized);
  }
}

TEST(NotificationManager, onlyEnabledCriticalAlertsCount) {
  for (const auto& [setting, authorized] :
       {std::pair(UNNotificationSetting::enabled, true), std::pair(UNNotificationSetting::disabled, false),
        std::pair(UNNotificationSetting::notSupported, false)}) {
    NotificationFixture in;
    in.center.settings.criticalAlertSetting = setting;
    EXPECT_EQ(NotificationManager(in.environment()).criticalAlertsAuthorized(), authorized);
  }
}

TEST(NotificationManager, asksForAlertBadgeAndSoundAndTakesTheAnswer) {
  for (const bool granted : {true, false}) {
    NotificationFixture in;
    NotificationManager manager(in.environment());
    in.center.grantsPermission = granted;
    manager.requestAuthorization();
    EXPECT_EQ(in.center.calls.back(), "requestAuthorization 7");
    EXPECT_EQ(manager.isAuthorized(), granted);
    EXPECT_TRUE(in.console.lines().empty());
  }
}

TEST(NotificationManager, aPermissionErrorIsPrintedAndTheAnswerIsTakenAllTheSame) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  in.center.permissionError = Error{"there is no notification server"};
  manager.requestAuthorization();
  EXPECT_TRUE(manager.isAuthorized());
  EXPECT_EQ(in.console.lines(), Lines{"Notification authorization error: there is no notification server"});
}

TEST(NotificationManager, aRevokedPermissionIsSeenAtTheNextCheck) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  manager.requestAuthorization();
  in.center.settings.authorizationStatus = UNAuthorizationStatus::denied;
  manager.checkAuthorizationStatus();
  EXPECT_FALSE(manager.isAuthorized());
}

TEST(NotificationManager, publishedStateChangesOnTheMainThreadAlone) {
  NotificationFixture in;
  in.center.answersLate = true;
  in.center.settings = {UNAuthorizationStatus::authorized, UNNotificationSetting::enabled};
  in.center.permissionError = Error{"no server"};
  NotificationManager manager(in.environment());
  manager.requestAuthorization();
  std::thread([&] { in.center.release(); }).join();
  EXPECT_FALSE(manager.isAuthorized());
  EXPECT_FALSE(manager.criticalAlertsAuthorized());
  EXPECT_TRUE(in.console.lines().empty());
  in.executor.drain();
  EXPECT_TRUE(manager.isAuthorized());
  EXPECT_TRUE(manager.criticalAlertsAuthorized());
  EXPECT_EQ(in.console.lines().size(), 1U);
}

TEST(NotificationManager, screensHearOfEachAnswerUntilTheyLetGo) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  std::vector<bool> seen;
  auto handle = manager.observe([&] { seen.push_back(manager.isAuthorized()); });
  manager.requestAuthorization();
  in.center.settings.authorizationStatus = UNAuthorizationStatus::denied;
  manager.checkAuthorizationStatus();
  handle.reset();
  manager.requestAuthorization();
  EXPECT_EQ(seen, (std::vector<bool>{true, false}));
}

TEST(NotificationManager, answersThatOutliveTheManagerAreIgnored) {
  NotificationFixture in;
  in.center.answersLate = true;
  auto manager = std::make_optional<NotificationManager>(in.environment());
  manager->requestAuthorization();
  manager->cancelNotifications(*aspirin());
  std::thread([&] { in.center.release(); }).join();
  manager->checkAuthorizationStatus();
  manager.reset();
  EXPECT_EQ(in.center.delegate, nullptr);
  const auto calls = in.center.calls;
  in.center.release();
  in.executor.drain();
  EXPECT_EQ(in.center.calls, calls);
}

TEST(NotificationManager, aReminderIsRegisteredHandedOverAndFollowedInThisOrder) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  in.center.calls.clear();
  manager.scheduleNotification(*aspirin(), at("2025-01-10T21:30:00-05:00"));
  const std::string dose = std::string(kAspirinId) + "-1736562600.0";
  EXPECT_EQ(in.center.calls, (Lines{"setNotificationCategories MEDICINE_REMINDER", "add " + dose,
                                    "add " + dose + "-followup-1", "add " + dose + "-followup-2"}));
}

TEST(NotificationManager, aReminderIsHandedOverWithoutWaitingForAnAnswer) {
  NotificationFixture in;
  in.center.answersLate = true;
  NotificationManager manager(in.environment());
  manager.scheduleNotification(*aspirin(), at("2025-01-10T21:30:00-05:00"));
  EXPECT_EQ(in.center.pending.size(), 3U);
}

TEST(NotificationManager, aGivenIdentifierNamesTheReminderAndNotItsFollowUps) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  manager.scheduleNotification(*aspirin(), at("2025-01-10T22:30:00-05:00"), "by-hand");
  EXPECT_EQ(in.center.pendingIdentifiers(), (Lines{"by-hand", std::string(kAspirinId) + "-1736566200.0-followup-1"}));
}

TEST(NotificationManager, oneReminderIsPlannedWhateverTheFlagsSay) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  const auto medicine = aspirin();
  medicine->isActive = false;
  medicine->isRepeating = false;
  medicine->endDate = at("2025-01-01T00:00:00Z");
  manager.scheduleNotification(*medicine, at("2025-01-10T23:30:00-05:00"));
  EXPECT_EQ(in.center.pending.size(), 1U);
}

TEST(NotificationManager, theMedicinePlannedLastLeavesItsCategoryAlone) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  manager.scheduleNotification(*aspirin(), at("2025-01-10T08:00:00-05:00"));
  manager.scheduleNotification(*ibuprofenWithoutSnooze(), at("2025-01-10T08:00:00-05:00"));
  ASSERT_EQ(in.center.categories.size(), 1U);
  EXPECT_EQ(in.center.categories.front().identifier, "MEDICINE_REMINDER_NO_SNOOZE");
  EXPECT_EQ(in.center.categories.front().actions.size(), 2U);
  for (const auto& request : in.center.pending) {
    const bool isAspirins = request.identifier.starts_with(kAspirinId);
    EXPECT_EQ(request.content.categoryIdentifier, isAspirins ? "MEDICINE_REMINDER" : "MEDICINE_REMINDER_NO_SNOOZE");
  }
}

TEST(NotificationManager, theSnoozeTitleIsThatOfTheMedicinePlannedLast) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  const auto medicine = aspirin();
  manager.scheduleNotification(*medicine, at("2025-01-10T08:00:00-05:00"));
  medicine->snoozeDurationMinutes = 15;
  manager.scheduleNotification(*medicine, at("2025-01-11T08:00:00-05:00"));
  ASSERT_EQ(in.center.categories.size(), 1U);
  EXPECT_EQ(in.center.categories.front().actions.at(1).title, "Snooze 15 min");
}

TEST(NotificationManager, whatTheCentreRefusesIsPrintedAndTheRestIsHandedOver) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  in.center.refusal = [](const UNNotificationRequest& request) -> std::optional<Error> {
    if (request.identifier.ends_with("-followup-2")) return std::nullopt;
    return Error{"no room\nfor " + request.content.title};
  };
  manager.scheduleNotification(*aspirin(), at("2025-01-10T20:30:00-05:00"));
  EXPECT_EQ(in.console.lines(), (Lines{"Error scheduling notification: no room for Time for your medicine",
                                       "Error scheduling follow-up notification: no room for Reminder: Aspirin",
                                       "Error scheduling follow-up notification: no room for Reminder: Aspirin"}));
  EXPECT_EQ(in.center.added.size(), 4U);
  EXPECT_EQ(in.center.pending.size(), 1U);
}

TEST(NotificationManager, aRefusalMayComeLateOnAnotherThread) {
  NotificationFixture in;
  in.center.answersLate = true;
  in.center.refusal = [](const UNNotificationRequest&) { return std::optional(Error{"no room"}); };
  auto manager = std::make_optional<NotificationManager>(in.environment());
  manager->scheduleNotification(*aspirin(), at("2025-01-10T23:30:00-05:00"));
  manager.reset();
  std::thread([&] { in.center.release(); }).join();
  EXPECT_EQ(in.console.lines(), Lines{"Error scheduling notification: no room"});
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "contract/NotificationCenterContract.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "doubles/Requests.h"

namespace pillora {

std::vector<UNNotificationRequest> NotificationCenterContract::pending() {
  std::optional<std::vector<UNNotificationRequest>> found;
  center().getPendingNotificationRequests([&](std::vector<UNNotificationRequest> requests) { found = requests; });
  subject->settle();
  EXPECT_TRUE(found) << "the completion did not come";
  auto requests = found.value_or(std::vector<UNNotificationRequest>());
  std::ranges::sort(requests, {}, &UNNotificationRequest::identifier);
  return requests;
}

std::vector<UNNotificationCategory> NotificationCenterContract::categories() {
  std::optional<std::vector<UNNotificationCategory>> found;
  center().getNotificationCategories([&](std::vector<UNNotificationCategory> registered) { found = registered; });
  subject->settle();
  EXPECT_TRUE(found) << "the completion did not come";
  return found.value_or(std::vector<UNNotificationCategory>());
}

int64_t NotificationCenterContract::badge() {
  std::optional<int64_t> found;
  center().getBadgeCount([&](int64_t count) { found = count; });
  subject->settle();
  EXPECT_TRUE(found) << "the completion did not come";
  return found.value_or(-1);
}

namespace {

using Names = std::vector<std::string>;

void ignore(const std::optional<Error>&) {}

TEST_P(NotificationCenterContract, holdsNothingAtFirst) {
  EXPECT_TRUE(pending().empty());
  EXPECT_TRUE(categories().empty());
  EXPECT_EQ(badge(), 0);
}

TEST_P(NotificationCenterContract, listsWhatWasAddedAsItWas) {
  UNNotificationRequest full = request(kAspirin + "-1736514000.25-followup-1", "2025-01-10T13:00");
  full.content.title = "Reminder: „Ünï“ <b>\n";
  full.content.userInfo = {{"medicineId", kAspirin},
                           {"allowSnooze", false},
                           {"snoozeDuration", int64_t{-5}},
                           {"originalTime", 1736514000.0}};
  full.trigger.dateComponents = {std::optional<int64_t>(1), 2568, 1, false, 10, 13, 0, 0};
  full.trigger.calendar = "buddhist";
  UNNotificationRequest plain = request("B", "2025-01-11T08:00");
  plain.content.badge = std::nullopt;
  plain.content.userInfo = {};
  center().add(full, ignore);
  center().add(plain, ignore);
  EXPECT_EQ(pending(), (std::vector{full, plain}));
}

TEST_P(NotificationCenterContract, anAddCompletesOnceWithoutAnError) {
  int completions = 0;
  std::optional<Error> failure;
  center().add(request("A", "2025-01-10T13:00"), [&](std::optional<Error> error) {
    ++completions;
    failure = std::move(error);
  });
  subject->settle();
  EXPECT_EQ(completions, 1);
  EXPECT_FALSE(failure) << failure->description;
}

TEST_P(NotificationCenterContract, anAddWithoutACompletionIsFine) {
  center().add(request("A", "2025-01-10T13:00"), ignore);
  center().removePendingNotificationRequests({});
  EXPECT_EQ(identifiersOf(pending()), Names{"A"});
}

TEST_P(NotificationCenterContract, theSameIdentifierReplaces) {
  center().add(request("A", "2025-01-10T13:00"), ignore);
  center().add(request("A", "2025-01-10T14:00"), ignore);
  EXPECT_EQ(pending(), (std::vector{request("A", "2025-01-10T14:00")}));
}

TEST_P(NotificationCenterContract, aMinuteThatHasPassedIsKeptAsWell) {
  center().add(request("A", "2025-01-10T11:00"), ignore);
  EXPECT_EQ(identifiersOf(pending()), Names{"A"});
}

TEST_P(NotificationCenterContract, removesExactlyTheIdentifiersNamed) {
  for (const char* name : {"A", "A-1", "B", "a", "%"}) center().add(request(name, "2025-01-10T13:00"), ignore);
  center().removePendingNotificationRequests({"A", "%", "unknown"});
  EXPECT_EQ(identifiersOf(pending()), (Names{"A-1", "B", "a"}));
}

TEST_P(NotificationCenterContract, operationsTakeEffectInTheOrderOfTheirIssue) {
  center().add(request("A", "2025-01-10T13:00"), ignore);
  center().removePendingNotificationRequests({"A", "B"});
  center().add(request("B", "2025-01-10T13:00"), ignore);
  EXPECT_EQ(identifiersOf(pending()), Names{"B"});
}

TEST_P(NotificationCenterContract, aListingIsWhatWasPendingWhenItWasAskedFor) {
  center().add(request("A", "2025-01-10T13:00"), ignore);
  Names listed, identifiers;
  center().getPendingNotificationRequests(
      [&](std::vector<UNNotificationRequest> requests) { listed = identifiersOf(requests); });
  center().getPendingNotificationRequestIdentifiers([&](Names found) { identifiers = std::move(found); });
  center().add(request("B", "2025-01-10T13:00"), ignore);
  subject->settle();
  EXPECT_EQ(listed, Names{"A"});
  EXPECT_EQ(identifiers, Names{"A"});
  EXPECT_EQ(identifiersOf(pending()), (Names{"A", "B"}));
}

TEST_P(NotificationCenterContract, categoriesReplaceTheWholeSet) {
  center().setNotificationCategories({reminderCategory(), {"OTHER", {}}});
  subject->settle();
  EXPECT_EQ(categories(), (std::vector{reminderCategory(), UNNotificationCategory{"OTHER", {}}}));
  const UNNotificationCategory second{"MEDICINE_REMINDER_NO_SNOOZE", {{"SKIP_ACTION", "Skip", false, true}}};
  center().setNotificationCategories({second});
  subject->settle();
  EXPECT_EQ(categories(), std::vector{second});
}

TEST_P(NotificationCenterContract, keepsTheBadge) {
  center().setBadgeCount(1);
  center().setBadgeCount(0);
  center().setBadgeCount(7);
  subject->settle();
  EXPECT_EQ(badge(), 7);
}

TEST_P(NotificationCenterContract, permissionIsGrantedWhenAskedForAndThenRead) {
  std::vector<bool> answers;
  std::optional<Error> failure;
  center().requestAuthorization(un_options::kAlert | un_options::kBadge | un_options::kSound,
                                [&](bool granted, std::optional<Error> error) {
                                  answers.push_back(granted);
                                  failure = std::move(error);
                                });
  subject->settle();
  EXPECT_EQ(answers, std::vector{true});
  EXPECT_FALSE(failure);
  std::vector<UNAuthorizationStatus> statuses;
  center().getNotificationSettings(
      [&](UNNotificationSettings settings) { statuses.push_back(settings.authorizationStatus); });
  subject->settle();
  EXPECT_EQ(statuses, std::vector{UNAuthorizationStatus::authorized});
}

TEST_P(NotificationCenterContract, permissionIsUndeterminedBeforeItWasAskedFor) {
  std::optional<UNNotificationSettings> found;
  center().getNotificationSettings([&](UNNotificationSettings settings) { found = settings; });
  subject->settle();
  ASSERT_TRUE(found);
  EXPECT_EQ(found->authorizationStatus, UNAuthorizationStatus::notDetermined);
}

TEST_P(NotificationCenterContract, manyRequestsOfOneTurnAreAllKept) {
  int completed = 0;
  for (int i = 0; i < 720; ++i) {
    center().add(request(kAspirin + "-" + std::to_string(i) + ".0", "2025-01-11T08:00"),
                 [&](const std::optional<Error>& error) { completed += error ? 0 : 1; });
  }
  EXPECT_EQ(pending().size(), 720u);
  EXPECT_EQ(completed, 720);
}

}  // namespace
}  // namespace pillora

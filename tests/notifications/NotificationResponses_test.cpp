// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <thread>

#include "notifications/NotificationFixture.h"

namespace pillora {
namespace {

struct Broadcast {
  std::string name;
  UserInfo userInfo;
  bool operator==(const Broadcast&) const = default;
};

/// A manager, and whoever listens to its broadcasts and awaits its completions.
struct Responses : NotificationFixture {
  Responses() {
    for (const char* name : {"medicineTaken", "medicineSnoozed", "medicineSkipped"}) {
      handles.push_back(broadcasts.observe(name, [this, name](const UserInfo& userInfo) {
        received.push_back({name, userInfo});
        events.push_back(name);
      }));
    }
  }

  void answer(const std::string& action, UserInfo userInfo) {
    UNNotificationResponse response;
    response.actionIdentifier = action;
    response.request.content.userInfo = std::move(userInfo);
    center.delegate->didReceive(response, [this] { events.emplace_back("completed"); });
  }

  NotificationManager manager{environment()};
  std::vector<std::shared_ptr<void>> handles;
  std::vector<Broadcast> received;
  std::vector<std::string> events;
};

const UserInfo kFull = {{"medicineId", std::string(kAspirinId)}, {"snoozeDuration", int64_t{15}}};
const UserInfo kIdAlone = {{"medicineId", std::string(kAspirinId)}};

TEST(NotificationResponses, inFrontANotificationShowsAsBannerWithSoundAndBadge) {
  Responses in;
  std::vector<unsigned> options;
  in.center.delegate->willPresent({}, [&](unsigned each) { options.push_back(each); });
  EXPECT_EQ(options, std::vector<unsigned>{19});
}

TEST(NotificationResponses, eachAnswerIsBroadcastAndThenCompletedOnce) {
  struct Case {
    const char *action, *name;
    UserInfo userInfo;
  };
  for (const Case& each :
       {Case{"TAKEN_ACTION", "medicineTaken", kIdAlone}, Case{"SNOOZE_ACTION", "medicineSnoozed", kFull},
        Case{"SKIP_ACTION", "medicineSkipped", kIdAlone}}) {
    Responses in;
    in.answer(each.action, kFull);
    EXPECT_EQ(in.received, (std::vector<Broadcast>{{each.name, each.userInfo}}));
    EXPECT_EQ(in.events, (std::vector<std::string>{each.name, "completed"}));
  }
}

TEST(NotificationResponses, whatIsMissingOrMistypedIsNotBroadcastAndStillCompleted) {
  struct Case {
    const char *what, *action;
    UserInfo userInfo;
  };
  const Case cases[] = {
      {"a tap on the notification", "DEFAULT_ACTION", kFull},
      {"a dismissal", "DISMISS_ACTION", kFull},
      {"no action", "", kFull},
      {"another case", "taken_action", kFull},
      {"a blank more", "TAKEN_ACTION ", kFull},
      {"taken without a medicine", "TAKEN_ACTION", {{"snoozeDuration", int64_t{15}}}},
      {"skipped without a medicine", "SKIP_ACTION", {}},
      {"snoozed without a medicine", "SNOOZE_ACTION", {{"snoozeDuration", int64_t{15}}}},
      {"taken, the medicine a number", "TAKEN_ACTION", {{"medicineId", int64_t{7}}}},
      {"skipped, the medicine a number", "SKIP_ACTION", {{"medicineId", 7.0}}},
      {"snoozed, the medicine a truth", "SNOOZE_ACTION", {{"medicineId", true}, {"snoozeDuration", int64_t{15}}}},
      {"snoozed without minutes", "SNOOZE_ACTION", kIdAlone},
      {"minutes as text", "SNOOZE_ACTION", {{"medicineId", std::string("A")}, {"snoozeDuration", std::string("15")}}},
      {"minutes as a double", "SNOOZE_ACTION", {{"medicineId", std::string("A")}, {"snoozeDuration", 15.0}}},
      {"minutes as a truth", "SNOOZE_ACTION", {{"medicineId", std::string("A")}, {"snoozeDuration", true}}},
  };
  for (const Case& each : cases) {
    Responses in;
    in.answer(each.action, each.userInfo);
    EXPECT_EQ(in.events, std::vector<std::string>{"completed"}) << each.what;
    EXPECT_TRUE(in.console.lines().empty()) << each.what;
  }
}

TEST(NotificationResponses, anyTextIsAMedicine) {
  Responses in;
  in.answer("TAKEN_ACTION", {{"medicineId", std::string()}});
  EXPECT_EQ(in.received, (std::vector<Broadcast>{{"medicineTaken", {{"medicineId", std::string()}}}}));
}

TEST(NotificationResponses, anAnswerToAFollowUpIsLikeOneToItsReminder) {
  Responses in;
  in.manager.scheduleNotification(*aspirin(), at("2025-01-10T22:00:00-05:00"));
  ASSERT_EQ(in.center.added.size(), 2U);
  for (const auto& request : in.center.added) in.answer("SNOOZE_ACTION", request.content.userInfo);
  const Broadcast snoozed = {"medicineSnoozed",
                             {{"medicineId", std::string(kAspirinId)}, {"snoozeDuration", int64_t{10}}}};
  EXPECT_EQ(in.received, (std::vector<Broadcast>{snoozed, snoozed}));
}

TEST(NotificationResponses, anAnswerPlansAndCancelsNothing) {
  Responses in;
  in.manager.scheduleNotification(*aspirin(), at("2025-01-10T22:00:00-05:00"));
  const auto calls = in.center.calls;
  for (const char* action : {"TAKEN_ACTION", "SNOOZE_ACTION", "SKIP_ACTION"}) in.answer(action, kFull);
  EXPECT_EQ(in.center.calls, calls);
}

TEST(NotificationResponses, anAnswerIsBroadcastOnTheThreadThatBringsIt) {
  Responses in;
  std::thread::id heardOn, broughtOn;
  const auto handle =
      in.broadcasts.observe("medicineTaken", [&](const UserInfo&) { heardOn = std::this_thread::get_id(); });
  std::thread([&] {
    broughtOn = std::this_thread::get_id();
    in.answer("TAKEN_ACTION", kFull);
  }).join();
  EXPECT_EQ(heardOn, broughtOn);
  EXPECT_EQ(in.events, (std::vector<std::string>{"medicineTaken", "completed"}));
}

TEST(NotificationResponses, anAnswerThatNobodyListensToIsCompleted) {
  Responses in;
  in.handles.clear();
  in.answer("TAKEN_ACTION", kFull);
  EXPECT_EQ(in.events, std::vector<std::string>{"completed"});
}

}  // namespace
}  // namespace pillora

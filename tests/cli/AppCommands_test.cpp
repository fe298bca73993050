// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"

namespace pillora {
namespace {

// UTC, en_US; Friday, 2025-01-10, 10:30.
class AppCommands : public Cli {
 protected:
  void addSinceNewYear() { add({"Aspirin", "--daily", "08:00", "--start", "2025-01-01T00:00:00Z"}); }
};

constexpr const char* kTask = "org.pillora.Pillora.missedDoseCheck";
constexpr const char* kScheduled = "Background task scheduled for missed dose check";

TEST_F(AppCommands, launchMarksTheWeekAndSubmitsTheNextCheck) {
  addSinceNewYear();
  center.badge = 3;
  center.calls.clear();
  const Called called = run({"--json", "launch"});
  EXPECT_EQ(called.status, kDone);
  EXPECT_EQ(called.lines, (Words{kScheduled})) << "the app's lines go to the console as well";
  EXPECT_EQ(called.json(),
            Json::object({{"console", {kScheduled}}, {"missed", 7}, {"nextCheck", "2025-01-11T00:00:00Z"}}));
  EXPECT_EQ(logs().size(), 7u);
  EXPECT_EQ(logs().at(0).at("statusRaw"), "Missed");
  EXPECT_EQ(logs().at(0).at("actionTime"), "2025-01-10T00:00:00Z");
  ASSERT_TRUE(scheduler.pending.contains(kTask));
  EXPECT_EQ(scheduler.pending.at(kTask).earliestBeginDate, at("2025-01-11T00:00:00Z"));
  EXPECT_EQ(center.badge, 0);
  EXPECT_EQ(center.settings.authorizationStatus, UNAuthorizationStatus::authorized);
}

TEST_F(AppCommands, launchingTwiceMarksNothingTwice) {
  addSinceNewYear();
  EXPECT_EQ(json({"launch"}).at("missed"), 7);
  EXPECT_EQ(json({"launch"}).at("missed"), 0);
  EXPECT_EQ(logs().size(), 7u);
  EXPECT_EQ(scheduler.pending.size(), 1u);
}

TEST_F(AppCommands, whatFailsOnTheWayIsPrintedAndLaunchGoesOn) {
  scheduler.refusal = Error{"no\nscheduler"};
  center.permissionError = Error{"no permission"};
  const Json launched = json({"launch"});
  EXPECT_EQ(launched.at("console"), (Json{"Notification authorization error: no permission",
                                          "Failed to schedule background task: no scheduler"}));
  EXPECT_EQ(launched.at("missed"), 0);
}

TEST_F(AppCommands, launchInWords) {
  addSinceNewYear();
  EXPECT_EQ(plainBlanks(run({"launch"}).out),
            "Marked 7 doses as missed.\nNext check for missed doses: Jan 11, 2025, 12:00 AM\n");
  EXPECT_EQ(run({"mark-missed"}).out, "No doses were missed in the past seven days.\n");
}

TEST_F(AppCommands, permissionIsRememberedInTheReminderFileAndTasksStayThere) {
  const Words file = {"--reminders", folder.path() + "/R"};
  addSinceNewYear();
  EXPECT_EQ(json(file + Words{"launch"}).at("missed"), 7);
  clock.set(at("2025-01-12T10:30:00Z"));
  EXPECT_EQ(json(file + Words{"reminders"}).at("requests"), Json::array());
  EXPECT_EQ(logs().size(), 7u) << "a task that came due is not run by reading";
  EXPECT_EQ(json(file + Words{"launch"}).at("missed"), 2);
}

TEST_F(AppCommands, markMissedMarksWithoutTouchingReminders) {
  addSinceNewYear();
  openings = 0;
  EXPECT_EQ(json({"mark-missed"}), Json::object({{"missed", 7}}));
  EXPECT_EQ(json({"mark-missed"}), Json::object({{"missed", 0}}));
  EXPECT_EQ(openings, 0);
}

TEST_F(AppCommands, todaysDosesAndThoseOfInactiveMedicinesAreNotMarked) {
  add({"Today", "--daily", "08:00"});
  add({"Inactive", "--daily", "08:00", "--active", "no", "--start", "2025-01-01T00:00:00Z"});
  EXPECT_EQ(json({"mark-missed"}).at("missed"), 0);
}

TEST_F(AppCommands, runTaskSubmitsTheNextCheckAndMarks) {
  addSinceNewYear();
  const Called called = run({"--json", "run-task", kTask});
  EXPECT_EQ(called.json(), Json::object({{"identifier", kTask}, {"success", true}}));
  EXPECT_EQ(called.lines, (Words{kScheduled}));
  EXPECT_EQ(logs().size(), 7u);
  EXPECT_EQ(scheduler.pending.at(kTask).earliestBeginDate, at("2025-01-11T00:00:00Z"));
}

TEST_F(AppCommands, anUnknownTaskIsRefused) {
  addSinceNewYear();
  for (const std::string task : {"missedDoseCheck", "org.pillora.Pillora.missedDoseCheck ", ""}) {
    EXPECT_TRUE(run({"run-task", task}).failedWith(kRefused)) << task;
  }
  EXPECT_TRUE(logs().empty());
  EXPECT_TRUE(scheduler.submissions.empty());
}

TEST_F(AppCommands, aStoreThatCannotBeOpenedRefusesEachOfThem) {
  store = folder.path() + "/none/S";
  for (const Words& words : {Words{"launch"}, {"mark-missed"}, {"run-task", kTask}, {"reminders"}, {"edit", "A"}}) {
    EXPECT_TRUE(run(words).failedWith(kRefused)) << words[0];
  }
}

}  // namespace
}  // namespace pillora

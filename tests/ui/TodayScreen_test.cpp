// SPDX-License-Identifier: MIT
// Today as a person uses it, and what comes of it in the store and among the planned reminders.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class TodayScreen : public WindowTest {};

const Instant kEight = at("2025-01-10T08:00:00-05:00");

TEST_F(TodayScreen, aCardIsExpandedAndCollapsedByAPress) {
  add("Aspirin", {{8, 0}});
  open();
  EXPECT_FALSE(has("Take"));
  tap("Aspirin");
  EXPECT_TRUE(has("Take") && has("Snooze") && has("Skip"));
  touch("Aspirin");
  EXPECT_FALSE(has("Take"));
  ASSERT_TRUE(tabTo("Aspirin"));
  key(Qt::Key_Return);
  EXPECT_TRUE(has("Take"));
}

TEST_F(TodayScreen, aDoseIsTakenAndOneReminderPlanned) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  open();
  tap("Aspirin");
  tap("Take");
  ASSERT_EQ(logs().size(), 1U);
  const auto log = logs().front();
  EXPECT_EQ(log->status(), DoseStatus::taken);
  EXPECT_EQ(log->scheduledTime(), kEight);
  EXPECT_EQ(log->actionTime(), clock.now());
  EXPECT_EQ(plannedFor(*aspirin), std::vector{aspirin->id().text() + "-1736600400.0"});
  EXPECT_EQ(desktop_.calls, std::vector<std::string>{"vibrate"});
  EXPECT_FALSE(has("Aspirin, 1 pill"));
  EXPECT_TRUE(shows("All done for today!") && shows("100%") && shows("1h late"));
}

TEST_F(TodayScreen, aDoseIsSkippedAndNothingPlanned) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  open();
  tap("Aspirin");
  touch("Skip");
  ASSERT_EQ(logs().size(), 1U);
  EXPECT_EQ(logs().front()->status(), DoseStatus::skipped);
  EXPECT_EQ(logs().front()->scheduledTime(), kEight);
  EXPECT_TRUE(center.pending.empty());
}

TEST_F(TodayScreen, aSnoozePlansOneReminderAndLeavesTheDoseOpen) {
  NewMedicine values;
  values.name = "Aspirin";
  values.interval = daily({{8, 0}});
  values.snoozeDurationMinutes = 15;
  const auto aspirin = add(std::move(values));
  open();
  tap("Aspirin");
  tap("Snooze");
  EXPECT_EQ(plannedFor(*aspirin), std::vector{aspirin->id().text() + "-1736518500.0"});
  EXPECT_TRUE(logs().empty());
  EXPECT_TRUE(has("Take"));
  EXPECT_EQ(desktop_.calls, std::vector<std::string>{"vibrate"});
}

TEST_F(TodayScreen, aMedicineWithoutSnoozeOffersNone) {
  NewMedicine values;
  values.name = "Aspirin";
  values.interval = daily({{8, 0}});
  values.allowSnooze = false;
  add(std::move(values));
  open();
  tap("Aspirin");
  EXPECT_TRUE(has("Take") && has("Skip"));
  EXPECT_FALSE(has("Snooze"));
}

TEST_F(TodayScreen, withoutHapticFeedbackNothingIsFelt) {
  add("Aspirin", {{8, 0}});
  settings()->enableHaptics = false;
  open();
  tap("Aspirin");
  tap("Take");
  EXPECT_EQ(logs().size(), 1U);
  EXPECT_TRUE(desktop_.calls.empty());
}

TEST_F(TodayScreen, anExpandedCardStaysSoWhenAnotherDoseIsTaken) {
  add("Aspirin", {{8, 0}});
  add("Biotin", {{8, 30}});
  open();
  tap("Aspirin");
  tap("Biotin");
  ASSERT_EQ(controls("Take").size(), 2U);
  tap("Take");
  EXPECT_FALSE(has("Aspirin, 1 pill"));
  EXPECT_EQ(controls("Take").size(), 1U);
  tap("Take");
  ASSERT_EQ(logs().size(), 2U);
  EXPECT_EQ(logs().back()->medicine()->name(), "Biotin");
}

TEST_F(TodayScreen, undoingIsAskedForAndCanBeCancelled) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  addLog(aspirin, kEight, DoseStatus::taken);
  open();
  tap("Undo, Aspirin");
  EXPECT_TRUE(shows("Undo Taken") && shows("This will remove the \"taken\" record for this medicine."));
  tap("Cancel");
  EXPECT_FALSE(shows("Undo Taken"));
  EXPECT_EQ(logs().size(), 1U);
}

TEST_F(TodayScreen, aRecordIsUndoneAndItsDoseIsOpenAgain) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  addLog(aspirin, kEight, DoseStatus::skipped);
  open();
  ASSERT_FALSE(has("Aspirin, 1 pill"));
  tap("Undo, Aspirin");
  EXPECT_TRUE(shows("Undo Skipped"));
  tap("Undo");
  EXPECT_TRUE(logs().empty());
  EXPECT_TRUE(has("Aspirin, 1 pill"));
  EXPECT_FALSE(shows("Undo Skipped"));
}

TEST_F(TodayScreen, anAlertWhoseRecordIsGoneChangesNothing) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  const auto log = addLog(aspirin, kEight, DoseStatus::taken);
  open();
  tap("Undo, Aspirin");
  context().delete_(log);
  settleAll();
  tap("Undo");
  EXPECT_FALSE(shows("Undo Taken"));
  tap("Aspirin");
  EXPECT_TRUE(has("Take"));
}

TEST_F(TodayScreen, theFormOpensFromTheEmptyScreenAndFromTheToolbar) {
  open();
  EXPECT_TRUE(shows("No Medicines Added"));
  ASSERT_EQ(controls("Add Medicine").size(), 2U);
  for (const int which : {0, 1}) {
    tap("Add Medicine", which);
    EXPECT_TRUE(app_->addMedicine()->isOpen()) << which;
    tap("Cancel");
    EXPECT_FALSE(app_->addMedicine()->isOpen()) << which;
  }
  add("Aspirin", {{8, 0}});
  settleAll();
  EXPECT_FALSE(shows("No Medicines Added"));
  tap("Add Medicine");
  EXPECT_TRUE(app_->addMedicine()->isOpen());
}

TEST_F(TodayScreen, whatIsShownFollowsTheMinuteAndTheDay) {
  add("Aspirin", {{10, 0}});
  open();
  constexpr auto kAlmostAMinute = std::chrono::milliseconds(59900);
  leave();
  comeBack(clock.now() + kAlmostAMinute);
  EXPECT_TRUE(shows("In 59 min"));
  clock.advance(std::chrono::seconds(1));
  EXPECT_TRUE(QTest::qWaitFor([&] { return shows("In 58 min"); }));
  leave();
  comeBack(at("2025-01-10T23:59:00-05:00") + kAlmostAMinute);
  EXPECT_TRUE(shows("Friday, January 10, 2025") && shows("Overdue"));
  clock.advance(std::chrono::seconds(1));
  EXPECT_TRUE(QTest::qWaitFor([&] { return shows("Saturday, January 11, 2025"); }));
  EXPECT_FALSE(shows("Overdue"));
}

}  // namespace
}  // namespace pillora

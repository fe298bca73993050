// SPDX-License-Identifier: MIT
// The details of a medicine as a person uses them, and what comes of it in the record and among the planned reminders.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class DetailScreen : public WindowTest {
 protected:
  /// The details of an Aspirin that is due daily at 20:00, with one reminder planned that was never asked for here.
  void openDetail() {
    NewMedicine values;
    values.name = "Aspirin";
    values.interval = daily({{20, 0}});
    aspirin_ = add(std::move(values));
    pillora_->notificationManager().scheduleNotification(*aspirin_, at("2025-01-10T09:30:00-05:00"));
    executor.drain();
    updated_ = aspirin_->updatedAt();
    clock.advance(std::chrono::minutes(1));
    open();
    key(Qt::Key_3, Qt::ControlModifier);
    tap("Aspirin");
    ASSERT_TRUE(app_->detail()->isOpen());
  }
  void edit() {
    tap("More");
    tap("Edit");
    ASSERT_TRUE(shows("Edit Medicine"));
  }
  /// Whether the one reminder is all there is: nothing was planned here.
  bool isAsPlannedBefore() { return plannedFor(*aspirin_) == std::vector{aspirin_->id().text() + "-1736519400.0"}; }
  /// Whether thirty were planned instead, the first of them for tonight.
  bool isPlannedAnew() {
    const auto planned = plannedFor(*aspirin_);
    return planned.size() == 30 && planned.front() == aspirin_->id().text() + "-1736557200.0";
  }
  bool isRested() {
    return QTest::qWaitFor([&] { return aspirin_->name() != "Aspirin"; });
  }

  std::shared_ptr<Medicine> aspirin_;
  Instant updated_;
};

TEST_F(DetailScreen, whatIsTypedIsInTheRecordWhenTheTypingRests) {
  openDetail();
  edit();
  fill("Name", "Aspirin 500");
  EXPECT_EQ(aspirin_->name(), "Aspirin");
  EXPECT_TRUE(isRested());
  EXPECT_EQ(aspirin_->name(), "Aspirin 500");
}

TEST_F(DetailScreen, everyTextIsEdited) {
  openDetail();
  edit();
  fill("Name", "Ibuprofen");
  fill("Instructions", "After a meal");
  fill("Amount", "2.5");
  tap("Save");
  EXPECT_EQ(aspirin_->name(), "Ibuprofen");
  EXPECT_EQ(aspirin_->instructions(), "After a meal");
  EXPECT_EQ(aspirin_->dosage(), "2.5");
  EXPECT_TRUE(shows("Ibuprofen") && shows("2.5 pill") && shows("After a meal"));
}

TEST_F(DetailScreen, theUnitIsChosenFromAMenu) {
  openDetail();
  edit();
  tap("Unit");
  tap("capsules");
  EXPECT_EQ(aspirin_->unit(), "capsules");
  ASSERT_TRUE(tabTo("Unit"));
  for (const Qt::Key each : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return}) key(each);
  EXPECT_EQ(aspirin_->unit(), "ml");
}

TEST_F(DetailScreen, colourAndIconAreChosen) {
  openDetail();
  edit();
  tap("Purple");
  EXPECT_EQ(aspirin_->color(), "purple");
  EXPECT_TRUE(isOn("Purple"));
  touch("Heart");
  EXPECT_EQ(aspirin_->icon(), "heart");
  EXPECT_TRUE(isOn("Heart") && !isOn("Blue"));
}

TEST_F(DetailScreen, theSwitchesWriteAtOnceAndPlanNothing) {
  openDetail();
  tap("Active");
  EXPECT_FALSE(aspirin_->isActive());
  tap("Repeating");
  EXPECT_FALSE(aspirin_->isRepeating());
  tap("Allow Snooze");
  EXPECT_FALSE(aspirin_->allowSnooze() || has("Duration") || has("Max Count"));
  touch("Allow Snooze");
  ASSERT_TRUE(tabTo("Repeating"));
  key(Qt::Key_Space);
  EXPECT_TRUE(aspirin_->allowSnooze() && aspirin_->isRepeating() && has("Duration"));
  EXPECT_TRUE(isAsPlannedBefore());
  EXPECT_EQ(aspirin_->updatedAt(), updated_);
}

TEST_F(DetailScreen, theSteppersStep) {
  openDetail();
  stepUp("Duration");
  stepUp("Duration");
  stepDown("Max Count");
  EXPECT_EQ(aspirin_->snoozeDurationMinutes(), 12);
  EXPECT_EQ(aspirin_->maxSnoozeCount(), 2);
  EXPECT_TRUE(shows("Duration: 12 min") && shows("Max Count: 2"));
  ASSERT_TRUE(tabTo("Duration"));
  key(Qt::Key_Down);
  EXPECT_EQ(aspirin_->snoozeDurationMinutes(), 11);
  stepDown("Max Count");
  stepDown("Max Count");
  EXPECT_EQ(aspirin_->maxSnoozeCount(), 1);
}

TEST_F(DetailScreen, theStartDateIsPickedAndKeepsItsTimeOfDay) {
  openDetail();
  edit();
  tap("Start Date");
  EXPECT_TRUE(shows("January 2025"));
  tap("Next Month");
  tap("Next Month");
  tap("Previous Month");
  EXPECT_TRUE(shows("February 2025"));
  tap("Monday, February 3, 2025");
  EXPECT_EQ(aspirin_->startDate(), at("2025-02-03T00:00:00-05:00"));
  EXPECT_FALSE(has("Next Month"));
  EXPECT_TRUE(shows("Feb 3, 2025"));
}

TEST_F(DetailScreen, aMonthThatIsLeftPicksNothing) {
  openDetail();
  edit();
  const Instant start = aspirin_->startDate();
  for (const bool byKey : {true, false}) {
    tap("Start Date");
    tap("Next Month");
    byKey ? key(Qt::Key_Escape) : tapBeside();
    EXPECT_FALSE(has("Next Month"));
    EXPECT_TRUE(shows("Edit Medicine"));
    EXPECT_EQ(aspirin_->startDate(), start);
  }
}

TEST_F(DetailScreen, saveKeepsStampsAndPlansAnew) {
  openDetail();
  edit();
  fill("Name", "Ibuprofen");
  tap("Save");
  EXPECT_EQ(aspirin_->name(), "Ibuprofen");
  EXPECT_EQ(aspirin_->updatedAt(), clock.now());
  EXPECT_TRUE(isPlannedAnew());
  EXPECT_EQ(center.pending.front().content.body, "Ibuprofen - 1 pill");
  EXPECT_TRUE(app_->detail()->isOpen() && shows("Details"));
}

TEST_F(DetailScreen, cancelKeepsWhatWasEditedAndPlansNothing) {
  openDetail();
  edit();
  fill("Name", "Ibuprofen");
  tap("Cancel");
  EXPECT_EQ(aspirin_->name(), "Ibuprofen");
  EXPECT_EQ(aspirin_->updatedAt(), updated_);
  EXPECT_TRUE(isAsPlannedBefore());
  EXPECT_TRUE(app_->detail()->isOpen() && shows("Details"));
  tap("Done");
  EXPECT_TRUE(isPlannedAnew());
  EXPECT_EQ(center.pending.front().content.body, "Ibuprofen - 1 pill");
}

TEST_F(DetailScreen, donePlansAnewAndCloses) {
  openDetail();
  stepUp("Duration");
  tap("Done");
  EXPECT_FALSE(app_->detail()->isOpen());
  EXPECT_TRUE(isPlannedAnew());
  EXPECT_EQ(aspirin_->updatedAt(), updated_);
  EXPECT_TRUE(has("Search medicines"));
}

TEST_F(DetailScreen, doneOfAMedicineThatIsOffLeavesItWithoutReminders) {
  openDetail();
  tap("Active");
  tap("Done");
  EXPECT_TRUE(center.pending.empty());
}

TEST_F(DetailScreen, goingBackKeepsWhatWasChangedAndPlansNothing) {
  openDetail();
  tap("Active");
  edit();
  fill("Name", "Ibuprofen");
  key(Qt::Key_Escape);
  EXPECT_FALSE(app_->detail()->isOpen());
  EXPECT_EQ(aspirin_->name(), "Ibuprofen");
  EXPECT_FALSE(aspirin_->isActive());
  EXPECT_TRUE(isAsPlannedBefore());
}

TEST_F(DetailScreen, deletingIsAskedForAndCanBeCancelled) {
  openDetail();
  for (const bool byMenu : {true, false}) {
    if (byMenu) tap("More");
    tap(byMenu ? "Delete" : "Delete Medicine");
    EXPECT_TRUE(shows("Delete Medicine?"));
    EXPECT_TRUE(shows("This will permanently delete Aspirin and all its history. This action cannot be undone."));
    byMenu ? tap("Cancel") : key(Qt::Key_Escape);
    EXPECT_FALSE(shows("Delete Medicine?"));
  }
  EXPECT_EQ(medicines().size(), 1U);
  EXPECT_TRUE(isAsPlannedBefore());
}

TEST_F(DetailScreen, deletingTakesReminderAndLogsAlongAndCloses) {
  openDetail();
  addLog(aspirin_, at("2025-01-09T20:00:00-05:00"), DoseStatus::taken);
  tap("Delete Medicine");
  tap("Delete");
  EXPECT_FALSE(app_->detail()->isOpen());
  EXPECT_TRUE(medicines().empty() && logs().empty() && center.pending.empty());
  EXPECT_TRUE(shows("No Medicines Added"));
}

TEST_F(DetailScreen, aRestoredSnoozeOutOfRangeIsShownAndComesBackByOnePress) {
  openDetail();
  aspirin_->snoozeDurationMinutes = 1000;
  settleAll();
  EXPECT_TRUE(shows("Duration: 1000 min"));
  edit();
  tap("Save");
  EXPECT_EQ(aspirin_->snoozeDurationMinutes(), 1000);
  stepUp("Duration");
  EXPECT_EQ(aspirin_->snoozeDurationMinutes(), 1000);
  stepDown("Duration");
  EXPECT_EQ(aspirin_->snoozeDurationMinutes(), 60);
}

TEST_F(DetailScreen, aMedicineThatAnotherProgramDeletedClosesItsDetails) {
  openDetail();
  context().delete_(aspirin_);
  settleAll();
  EXPECT_FALSE(app_->detail()->isOpen());
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
// The form of a new medicine as a person fills it, and the record and the reminders that come of it.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class AddForm : public WindowTest {
 protected:
  void openForm() {
    open();
    key(Qt::Key_N, Qt::ControlModifier);
    ASSERT_TRUE(app_->addMedicine()->isOpen());
  }
  void saveAs(const QString& name) {
    fill("Medicine Name", name);
    tap("Save");
    EXPECT_FALSE(app_->addMedicine()->isOpen());
  }
  std::shared_ptr<Medicine> made() {
    const auto all = medicines();
    EXPECT_EQ(all.size(), 1U);
    return all.empty() ? add("none", {}) : all.front();
  }
  void chooseFrequency(const QString& type) {
    tap("Frequency");
    tap(type);
  }
  /// What the form begins with.
  static ReminderInterval initial(ReminderIntervalType type) {
    ReminderInterval interval;
    interval.type = type;
    interval.hourlyInterval = 4;
    interval.dailyTimes = {{9, 0}};
    interval.weeklyDays = {2, 3, 4, 5, 6};
    interval.weeklyTime = {9, 0};
    interval.monthlyDays = {1};
    interval.monthlyTime = {9, 0};
    interval.customIntervalMinutes = 480;
    return interval;
  }
};

TEST_F(AddForm, onlyANameThatIsNotBlankCanBeSaved) {
  openForm();
  EXPECT_FALSE(isEnabled("Save"));
  tap("Save");
  fill("Medicine Name", "   ");
  EXPECT_FALSE(isEnabled("Save"));
  tap("Save");
  EXPECT_TRUE(app_->addMedicine()->isOpen() && medicines().empty());
  fill("Medicine Name", "  Zinc ");
  EXPECT_TRUE(isEnabled("Save"));
  tap("Save");
  EXPECT_EQ(made()->name(), "Zinc");
}

TEST_F(AddForm, aNameAloneMakesADailyMedicineWithThirtyReminders) {
  openForm();
  clock.advance(std::chrono::minutes(2));
  saveAs("Zinc");
  const auto zinc = made();
  EXPECT_EQ(zinc->interval(), initial(ReminderIntervalType::daily));
  EXPECT_EQ(zinc->dosage() + " " + zinc->unit() + " " + zinc->color() + " " + zinc->icon(), "1 pill blue pills");
  EXPECT_TRUE(zinc->isActive() && zinc->allowSnooze() && zinc->isRepeating());
  EXPECT_EQ(zinc->snoozeDurationMinutes(), 10);
  EXPECT_EQ(zinc->maxSnoozeCount(), 3);
  EXPECT_EQ(zinc->startDate(), at("2025-01-10T09:00:00-05:00"));
  EXPECT_EQ(zinc->createdAt(), clock.now());
  EXPECT_FALSE(zinc->endDate());
  const auto planned = plannedFor(*zinc);
  ASSERT_EQ(planned.size(), 30U);
  EXPECT_EQ(planned.front(), zinc->id().text() + "-1736604000.0");
}

TEST_F(AddForm, whatIsCancelledIsNotKept) {
  openForm();
  for (const bool byKey : {true, false}) {
    fill("Medicine Name", "Zinc");
    byKey ? key(Qt::Key_Escape) : tap("Cancel");
    EXPECT_FALSE(app_->addMedicine()->isOpen());
    EXPECT_TRUE(medicines().empty() && center.pending.empty());
    key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(textIn("Medicine Name"), "");
  }
}

TEST_F(AddForm, textsUnitColourAndIconAreKept) {
  openForm();
  fill("Dosage Amount", "500");
  tap("Unit");
  tap("mg");
  fill("Instructions (optional)", "With food");
  tap("Teal");
  touch("Leaf");
  EXPECT_TRUE(isOn("Teal") && isOn("Leaf"));
  saveAs("Zinc");
  const auto zinc = made();
  EXPECT_EQ(zinc->dosage(), "500");
  EXPECT_EQ(zinc->unit(), "mg");
  EXPECT_EQ(zinc->instructions(), "With food");
  EXPECT_EQ(zinc->color(), "teal");
  EXPECT_EQ(zinc->icon(), "leaf");
}

TEST_F(AddForm, theSwitchesAndSteppersOfSnoozingAreKept) {
  openForm();
  stepUp("Snooze Duration");
  stepDown("Max Snooze Count");
  tap("Repeating");
  tap("Allow Snooze");
  EXPECT_FALSE(has("Snooze Duration"));
  saveAs("Zinc");
  EXPECT_EQ(made()->snoozeDurationMinutes(), 11);
  EXPECT_EQ(made()->maxSnoozeCount(), 2);
  EXPECT_FALSE(made()->allowSnooze() || made()->isRepeating());
  EXPECT_TRUE(center.pending.empty());
}

TEST_F(AddForm, aMedicineThatIsOffIsKeptAndPlansNothing) {
  openForm();
  touch("Active");
  saveAs("Zinc");
  EXPECT_FALSE(made()->isActive());
  EXPECT_TRUE(center.pending.empty());
}

TEST_F(AddForm, hourly) {
  openForm();
  chooseFrequency("Hourly");
  stepDown("Every 4 hours");
  stepDown("Every 3 hours");
  stepDown("Every 2 hours");
  stepDown("Every 1 hour");
  EXPECT_TRUE(has("Every 1 hour"));
  stepUp("Every 1 hour");
  saveAs("Zinc");
  ReminderInterval expected = initial(ReminderIntervalType::hourly);
  expected.hourlyInterval = 2;
  EXPECT_EQ(made()->interval(), expected);
  EXPECT_EQ(plannedFor(*made()).front(), made()->id().text() + "-1736524800.0");
}

TEST_F(AddForm, dailyWithTimesThatAreAddedAndTakenAway) {
  openForm();
  EXPECT_FALSE(has("Remove Time"));
  clock.set(at("2025-01-10T10:15:00-05:00"));
  tap("Add Time");
  clock.set(at("2025-01-10T21:40:00-05:00"));
  touch("Add Time");
  EXPECT_EQ(controls("Remove Time").size(), 3U);
  tap("Remove Time, Time 1");
  EXPECT_TRUE(has("Time 2") && !has("Time 3"));
  saveAs("Zinc");
  ReminderInterval expected = initial(ReminderIntervalType::daily);
  expected.dailyTimes = {{10, 15}, {21, 40}};
  EXPECT_EQ(made()->interval(), expected);
}

TEST_F(AddForm, theLastTimeOfADayCannotBeTakenAway) {
  openForm();
  tap("Add Time");
  tap("Remove Time", 1);
  EXPECT_TRUE(has("Time 1") && !has("Remove Time"));
}

TEST_F(AddForm, weekly) {
  openForm();
  chooseFrequency("Weekly");
  tap("Sun", 1);  // not the icon
  for (const char* day : {"Mon", "Thu", "Fri"}) tap(day);
  EXPECT_TRUE(isOn("Sun", 1) && isOn("Tue") && !isOn("Fri"));
  tap("Time");
  for (const Qt::Key each : {Qt::Key_Down, Qt::Key_Escape}) key(each);
  saveAs("Zinc");
  ReminderInterval expected = initial(ReminderIntervalType::weekly);
  expected.weeklyDays = {1, 3, 4};
  expected.weeklyTime = {10, 0};
  EXPECT_EQ(made()->interval(), expected);
}

TEST_F(AddForm, monthly) {
  openForm();
  chooseFrequency("Monthly");
  for (const char* day : {"1", "15", "31"}) touch(day);
  tap("Time");
  for (const Qt::Key each : {Qt::Key_Up, Qt::Key_Right, Qt::Key_Up, Qt::Key_Escape}) key(each);
  saveAs("Zinc");
  ReminderInterval expected = initial(ReminderIntervalType::monthly);
  expected.monthlyDays = {15, 31};
  expected.monthlyTime = {8, 59};
  EXPECT_EQ(made()->interval(), expected);
}

TEST_F(AddForm, custom) {
  openForm();
  chooseFrequency("Custom");
  stepDown("Hours");
  stepUp("Minutes");
  stepUp("Minutes");
  EXPECT_TRUE(has("Hours: 7") && has("Minutes: 10"));
  saveAs("Zinc");
  ReminderInterval expected = initial(ReminderIntervalType::custom);
  expected.customIntervalMinutes = 430;
  EXPECT_EQ(made()->interval(), expected);
}

TEST_F(AddForm, whatOtherFrequenciesWereSetToStays) {
  openForm();
  chooseFrequency("Monthly");
  tap("7");
  chooseFrequency("Hourly");
  stepUp("Every 4 hours");
  chooseFrequency("Daily");
  saveAs("Zinc");
  ReminderInterval expected = initial(ReminderIntervalType::daily);
  expected.monthlyDays = {1, 7};
  expected.hourlyInterval = 5;
  EXPECT_EQ(made()->interval(), expected);
}

TEST_F(AddForm, aTimeIsPickedByTurningTheDrums) {
  openForm();
  tap("Time 1");
  turnDrum("9 AM", -3);
  turnDrum("00", -2);
  tapBeside();
  EXPECT_TRUE(has("Time 1, 12:02 PM"));
  saveAs("Zinc");
  EXPECT_EQ(made()->interval().dailyTimes, (std::vector<TimeOfDay>{{12, 2}}));
}

TEST_F(AddForm, aTimeIsPickedByPressingAChoice) {
  openForm();
  tap("Time 1");
  tapText("11 AM");
  key(Qt::Key_Escape);
  saveAs("Zinc");
  EXPECT_EQ(made()->interval().dailyTimes, (std::vector<TimeOfDay>{{11, 0}}));
}

TEST_F(AddForm, datesArePickedFromMonths) {
  openForm();
  EXPECT_FALSE(has("End Date"));
  tap("Start Date");
  tap("Previous Month");
  EXPECT_TRUE(shows("December 2024"));
  tap("Tuesday, December 31, 2024");
  tap("Set End Date");
  EXPECT_TRUE(has("End Date, Feb 9, 2025"));
  tap("End Date");
  EXPECT_TRUE(isOn("Sunday, February 9, 2025"));
  ASSERT_TRUE(tabTo("Sunday, February 9, 2025"));
  for (const Qt::Key each : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_Space}) {
    key(each);
  }
  saveAs("Zinc");
  EXPECT_EQ(made()->startDate(), at("2024-12-31T09:00:00-05:00"));
  EXPECT_EQ(made()->endDate(), at("2025-02-16T09:00:00-05:00"));
}

TEST_F(AddForm, anEndDateThatIsNotTouchedIsThirtyDaysAway) {
  openForm();
  clock.advance(std::chrono::hours(2));
  tap("Set End Date");
  saveAs("Zinc");
  EXPECT_EQ(made()->endDate(), at("2025-02-09T09:00:00-05:00"));
}

}  // namespace
}  // namespace pillora

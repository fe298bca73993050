// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"
#include "doubles/TemporaryFolder.h"
#include "screens/FormRows.h"
#include "screens/MedicineDetailView.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10, 22:10. A dose at 22:30 has one follow-up, at 23:30.
const Instant kCreated = at("2025-01-10T22:00:00-05:00");
const Instant kNow = at("2025-01-10T22:10:00-05:00");

class MedicineDetailActions : public testing::Test {
 protected:
  MedicineDetailActions() {
    fixture_.notifications.scheduleUpcomingNotifications(*medicine_, 1);
    fixture_.center.calls.clear();
    fixture_.clock.set(kNow);
  }
  FakeNotificationCenter& center() { return fixture_.center; }
  size_t pending() const { return fixture_.center.pending.size(); }

  ScreenFixture fixture_{kCreated};
  std::shared_ptr<Medicine> medicine_ = fixture_.add(medicineNamed("Aspirin", daily({{22, 30}})));
  MedicineDetailView view_{fixture_.environment(), medicine_->id()};
};

TEST_F(MedicineDetailActions, everyControlWritesIntoTheRecordAtOnce) {
  view_.edit();
  EXPECT_TRUE(view_.setText("name", " New\tname "));
  EXPECT_TRUE(view_.setText("instructions", "with water"));
  EXPECT_TRUE(view_.setText("dosage", "2.5"));
  EXPECT_TRUE(view_.choose("unit", "ml"));
  EXPECT_TRUE(view_.choose("color", "mint"));
  EXPECT_TRUE(view_.choose("icon", "drop"));
  EXPECT_TRUE(view_.setDate("startDate", kNow - 48h));
  EXPECT_TRUE(view_.setOn("isActive", false));
  EXPECT_TRUE(view_.setOn("isRepeating", false));
  EXPECT_TRUE(view_.increment("snoozeDurationMinutes"));
  EXPECT_TRUE(view_.decrement("maxSnoozeCount"));
  EXPECT_TRUE(view_.setOn("allowSnooze", false));
  EXPECT_EQ(medicine_->name(), " New\tname ") << "as it was typed";
  EXPECT_EQ(medicine_->instructions(), "with water");
  EXPECT_EQ(medicine_->dosage(), "2.5");
  EXPECT_EQ(medicine_->unit(), "ml");
  EXPECT_EQ(medicine_->color(), "mint");
  EXPECT_EQ(medicine_->icon(), "drop");
  EXPECT_EQ(medicine_->startDate(), kNow - 48h);
  EXPECT_FALSE(medicine_->isActive());
  EXPECT_FALSE(medicine_->isRepeating());
  EXPECT_EQ(medicine_->snoozeDurationMinutes(), 11);
  EXPECT_EQ(medicine_->maxSnoozeCount(), 2);
  EXPECT_FALSE(medicine_->allowSnooze());
  EXPECT_EQ(medicine_->updatedAt(), kCreated);
  EXPECT_TRUE(center().calls.empty()) << "no reminder follows a control";
}

TEST_F(MedicineDetailActions, switchesAndSteppersWorkWithoutEditingTheRestDoesNot) {
  EXPECT_TRUE(view_.setOn("isActive", false));
  EXPECT_TRUE(view_.setOn("isRepeating", false));
  EXPECT_TRUE(view_.increment("snoozeDurationMinutes"));
  EXPECT_TRUE(view_.increment("maxSnoozeCount"));
  EXPECT_TRUE(view_.setOn("allowSnooze", false));
  EXPECT_FALSE(view_.increment("snoozeDurationMinutes")) << "hidden now";
  EXPECT_FALSE(view_.setText("name", "x"));
  EXPECT_FALSE(view_.setText("instructions", "x"));
  EXPECT_FALSE(view_.setText("dosage", "x"));
  EXPECT_FALSE(view_.choose("unit", "ml"));
  EXPECT_FALSE(view_.choose("color", "mint"));
  EXPECT_FALSE(view_.choose("icon", "drop"));
  EXPECT_FALSE(view_.setDate("startDate", kNow - 48h));
  EXPECT_FALSE(view_.openSheet("startDate"));
  EXPECT_EQ(medicine_->name(), "Aspirin");
}

TEST_F(MedicineDetailActions, whatIsNotOfferedCannotBeChosenOrWritten) {
  view_.edit();
  EXPECT_FALSE(view_.choose("unit", "barrel"));
  EXPECT_FALSE(view_.choose("color", "Red"));
  EXPECT_FALSE(view_.choose("icon", ""));
  EXPECT_FALSE(view_.setText("intervalData", "{}"));
  EXPECT_FALSE(view_.setText("color", "mint"));
  EXPECT_FALSE(view_.setDate("endDate", kNow));
  EXPECT_FALSE(view_.setDate("createdAt", kNow));
  EXPECT_FALSE(view_.setOn("name", true));
  EXPECT_EQ(medicine_->interval(), daily({{22, 30}}));
}

TEST_F(MedicineDetailActions, steppersStopAtTheirEnds) {
  struct Case {
    const char* row;
    Stored<int64_t> Medicine::*field;
    int64_t least, most;
  };
  for (const auto& [row, field, least, most] : {Case{"snoozeDurationMinutes", &Medicine::snoozeDurationMinutes, 1, 60},
                                                Case{"maxSnoozeCount", &Medicine::maxSnoozeCount, 1, 10}}) {
    while (view_.decrement(row)) {
    }
    EXPECT_EQ(((*medicine_).*field)(), least);
    while (view_.increment(row)) {
    }
    EXPECT_EQ(((*medicine_).*field)(), most);
  }
}

TEST_F(MedicineDetailActions, aStepFromOutsideTheRangeLandsOnItsEnd) {
  medicine_->snoozeDurationMinutes = 1000;
  EXPECT_FALSE(view_.increment("snoozeDurationMinutes"));
  EXPECT_EQ(medicine_->snoozeDurationMinutes(), 1000);
  EXPECT_TRUE(view_.decrement("snoozeDurationMinutes"));
  EXPECT_EQ(medicine_->snoozeDurationMinutes(), 60);
  medicine_->maxSnoozeCount = -5;
  EXPECT_FALSE(view_.decrement("maxSnoozeCount"));
  EXPECT_TRUE(view_.increment("maxSnoozeCount"));
  EXPECT_EQ(medicine_->maxSnoozeCount(), 1);
}

TEST_F(MedicineDetailActions, saveMarksTheUpdatePlansAnewAndEndsTheEditing) {
  view_.edit();
  view_.setText("name", "Ibuprofen");
  view_.save();
  EXPECT_EQ(medicine_->updatedAt(), kNow);
  EXPECT_EQ(pending(), 60U);
  for (const auto& request : center().pending) {
    EXPECT_NE((request.content.title + request.content.body).find("Ibuprofen"), std::string::npos);
  }
  EXPECT_FALSE(view_.isEditing());
  EXPECT_FALSE(view_.isDismissed());
  EXPECT_EQ(view_.content().title, "Details");
}

TEST_F(MedicineDetailActions, saveOfAMedicineThatIsSwitchedOffOnlyCancels) {
  view_.edit();
  view_.setOn("isActive", false);
  EXPECT_EQ(pending(), 2U) << "until then its reminders stay";
  view_.save();
  EXPECT_EQ(pending(), 0U);
}

TEST_F(MedicineDetailActions, saveOfAMedicineThatDoesNotRepeatPlansNothing) {
  view_.edit();
  view_.setOn("isRepeating", false);
  view_.save();
  EXPECT_EQ(pending(), 0U);
}

TEST_F(MedicineDetailActions, cancelKeepsTheEditsAndPlansNothing) {
  view_.edit();
  view_.setText("name", "Ibuprofen");
  view_.cancel();
  EXPECT_EQ(medicine_->name(), "Ibuprofen");
  EXPECT_EQ(medicine_->updatedAt(), kCreated);
  EXPECT_TRUE(center().calls.empty());
  EXPECT_FALSE(view_.isEditing());
  EXPECT_FALSE(view_.isDismissed());
}

TEST_F(MedicineDetailActions, cancelAndThenDoneKeepTheNewNameAndPlanWithIt) {
  view_.edit();
  view_.setText("name", "Ibuprofen");
  view_.cancel();
  view_.done();
  EXPECT_EQ(medicine_->name(), "Ibuprofen");
  ASSERT_EQ(pending(), 60U);
  EXPECT_EQ(center().pending[0].content.body, "Ibuprofen - 1 tablet");
}

TEST_F(MedicineDetailActions, donePlansAnewAndClosesWithoutMarkingAnUpdate) {
  view_.done();
  EXPECT_EQ(pending(), 60U);
  EXPECT_EQ(medicine_->updatedAt(), kCreated);
  EXPECT_TRUE(view_.content().isDismissed);
}

TEST_F(MedicineDetailActions, doneOfAnInactiveMedicineOnlyCancels) {
  view_.setOn("isActive", false);
  view_.done();
  EXPECT_EQ(pending(), 0U);
}

TEST_F(MedicineDetailActions, goingBackPlansNothing) {
  view_.setOn("isActive", false);
  view_.goBack();
  EXPECT_TRUE(view_.content().isDismissed);
  EXPECT_TRUE(center().calls.empty());
  EXPECT_EQ(pending(), 2U);
}

TEST_F(MedicineDetailActions, theButtonsOfTheOtherModeDoNothing) {
  view_.save();
  EXPECT_EQ(medicine_->updatedAt(), kCreated);
  view_.edit();
  view_.done();
  EXPECT_FALSE(view_.isDismissed());
  EXPECT_TRUE(center().calls.empty());
}

TEST_F(MedicineDetailActions, deletingCancelsEveryReminderBeforeTheRecordGoes) {
  const auto log = fixture_.log(medicine_, kNow, DoseStatus::taken);
  fixture_.endTurn();
  int removals = 0;
  center().beforeRemoval = [&] {
    ++removals;
    EXPECT_FALSE(medicine_->isDeleted());
  };
  view_.askToDelete();
  view_.delete_();
  EXPECT_EQ(removals, 1);
  EXPECT_EQ(pending(), 0U) << "reminder and follow-up";
  EXPECT_TRUE(medicine_->isDeleted());
  EXPECT_TRUE(log->isDeleted()) << "the history goes with it";
  const auto content = view_.content();
  EXPECT_TRUE(content.isDismissed);
  EXPECT_TRUE(content.sections.empty());
  EXPECT_FALSE(content.deleteAlert);
}

TEST_F(MedicineDetailActions, nothingIsDeletedUnlessTheAlertIsUp) {
  view_.delete_();
  view_.askToDelete();
  view_.dismissDeleteAlert();
  view_.delete_();
  EXPECT_FALSE(medicine_->isDeleted());
  EXPECT_EQ(pending(), 2U);
}

TEST_F(MedicineDetailActions, anotherMedicinesRemindersStay) {
  const auto other = fixture_.add(medicineNamed("Zinc", daily({{22, 30}})));
  fixture_.notifications.scheduleUpcomingNotifications(*other, 3);
  view_.askToDelete();
  view_.delete_();
  EXPECT_EQ(pending(), 6U);
}

TEST_F(MedicineDetailActions, theStartDateIsPickedOnItsSheetAndKeepsItsClockTime) {
  medicine_->startDate = at("2025-01-09T10:30:15.25-05:00");
  view_.edit();
  ASSERT_TRUE(view_.openSheet("startDate"));
  view_.showPreviousMonth();
  view_.showPreviousMonth();
  view_.showNextMonth();
  const auto sheet = *view_.content().monthSheet;
  EXPECT_EQ(sheet.title, "December 2024");
  ASSERT_TRUE(view_.pickDay(sheet.weeks.at(0).cells.at(0).id));
  EXPECT_EQ(medicine_->startDate(), at("2024-12-01T10:30:15.25-05:00"));
  view_.save();
  EXPECT_FALSE(view_.content().monthSheet);
  EXPECT_FALSE(view_.pickDay(sheet.weeks.at(0).cells.at(1).id));
}

TEST_F(MedicineDetailActions, theScreenFollowsTheRecord) {
  medicine_->name = "Ibuprofen";
  medicine_->isActive = false;
  const auto content = view_.content();
  EXPECT_EQ(rowNamed<HeaderRow>(content.sections, "header")->name, "Ibuprofen");
  EXPECT_FALSE(rowNamed<ToggleRow>(content.sections, "isActive")->isOn);
}

/// Every action and control of a view whose medicine is gone.
void useEverything(MedicineDetailView& view) {
  view.edit();
  EXPECT_FALSE(view.setText("name", "x"));
  EXPECT_FALSE(view.setOn("isActive", false));
  EXPECT_FALSE(view.increment("maxSnoozeCount"));
  EXPECT_FALSE(view.choose("color", "mint"));
  EXPECT_FALSE(view.setDate("startDate", kNow));
  EXPECT_FALSE(view.openSheet("startDate"));
  view.save();
  view.cancel();
  view.done();
  view.askToDelete();
  view.delete_();
}

TEST_F(MedicineDetailActions, aMedicineThatIsGoneDismissesTheScreenAndNothingHasAnyEffect) {
  fixture_.context().delete_(medicine_);
  fixture_.endTurn();
  EXPECT_TRUE(view_.content().isDismissed);
  EXPECT_EQ(view_.content().title, "Details");
  useEverything(view_);
  EXPECT_TRUE(center().calls.empty());
  EXPECT_EQ(medicine_->updatedAt(), kCreated);
}

TEST_F(MedicineDetailActions, aMedicineThatNeverWasIsDismissed) {
  MedicineDetailView view(fixture_.environment(), UUID::random());
  EXPECT_TRUE(view.content().isDismissed);
  useEverything(view);
  EXPECT_TRUE(center().calls.empty());
}

TEST(MedicineDetailInTwoProcesses, aMedicineDeletedByTheOtherGetsNoReminders) {
  const TemporaryFolder folder;
  const ModelConfiguration file{.path = folder.path() + "/Pillora.store"};
  ScreenFixture here(kNow, {}, file), there(kNow, {}, file);
  for (const bool isEditing : {false, true}) {
    const UUID id = here.add(medicineNamed("Aspirin", daily({{22, 30}})))->id();
    here.endTurn();
    MedicineDetailView view(here.environment(), id);
    if (isEditing) view.edit();
    there.context().refresh();
    there.context().delete_(there.context().find<Medicine>(id));
    there.endTurn();
    EXPECT_FALSE(view.isDismissed()) << "nobody has looked yet";
    isEditing ? view.save() : view.done();
    EXPECT_TRUE(view.content().isDismissed);
    EXPECT_TRUE(here.center.added.empty());
  }
}

}  // namespace
}  // namespace pillora

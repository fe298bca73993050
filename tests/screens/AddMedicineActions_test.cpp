// SPDX-License-Identifier: MIT
// What a person does with the form, and what is saved.
#include <gtest/gtest.h>

#include "doubles/Intervals.h"
#include "screens/AddMedicineFixture.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

using AddMedicineActions = AddMedicineViewTest;

TEST_F(AddMedicineActions, anEndDateThatIsSwitchedOffAgainIsNotStored) {
  form_.setOn("hasEndDate", true);
  form_.setOn("hasEndDate", false);
  EXPECT_EQ(saved()->endDate(), std::nullopt);
}

TEST_F(AddMedicineActions, everyControlReachesTheRecord) {
  EXPECT_TRUE(form_.setText("dosage", ""));
  EXPECT_TRUE(form_.setText("instructions", " with\nwater "));
  EXPECT_TRUE(form_.choose("selectedUnit", "ml"));
  EXPECT_TRUE(form_.choose("selectedColor", "pink"));
  EXPECT_TRUE(form_.choose("selectedIcon", "drop"));
  EXPECT_TRUE(form_.increment("snoozeDuration"));
  EXPECT_TRUE(form_.decrement("maxSnoozeCount"));
  EXPECT_TRUE(form_.setOn("allowSnooze", false));
  EXPECT_TRUE(form_.setOn("isRepeating", false));
  EXPECT_TRUE(form_.setOn("isActive", false));
  EXPECT_TRUE(form_.setDate("startDate", kOpened + 48h));
  const auto medicine = saved();
  EXPECT_EQ(medicine->dosage(), "");
  EXPECT_EQ(medicine->instructions(), " with\nwater ") << "as typed";
  EXPECT_EQ(medicine->unit(), "ml");
  EXPECT_EQ(medicine->color(), "pink");
  EXPECT_EQ(medicine->icon(), "drop");
  EXPECT_EQ(medicine->snoozeDurationMinutes(), 11);
  EXPECT_EQ(medicine->maxSnoozeCount(), 2);
  EXPECT_FALSE(medicine->allowSnooze());
  EXPECT_FALSE(medicine->isRepeating());
  EXPECT_FALSE(medicine->isActive());
  EXPECT_EQ(medicine->startDate(), kOpened + 48h);
}

TEST_F(AddMedicineActions, aNameIsSavedWithoutTheBlanksAroundIt) {
  form_.setText("name", "\t Baby  aspirin \u00A0");
  EXPECT_EQ(fixture_.context().find<Medicine>(*form_.save())->name(), "Baby  aspirin");
}

TEST_F(AddMedicineActions, savingInsertsPlansThirtyDosesAndClosesInThisOrder) {
  // Each dose has one follow-up: 22:30 and 23:30.
  ASSERT_TRUE(form_.setTime("dailyTimes-0", 22, 30));
  fixture_.center.refusal = [&](const UNNotificationRequest&) -> std::optional<Error> {
    EXPECT_EQ(stored().size(), 1U) << "inserted before its reminders are planned";
    EXPECT_FALSE(form_.isDismissed()) << "closed after they are planned";
    return std::nullopt;
  };
  const auto medicine = saved();
  EXPECT_EQ(fixture_.center.pending.size(), 60U);
  for (const auto& identifier : fixture_.center.pendingIdentifiers()) {
    EXPECT_TRUE(identifier.starts_with(medicine->id().text()));
  }
  for (const auto& call : fixture_.center.calls) EXPECT_FALSE(call.starts_with("remove")) << call;
  EXPECT_TRUE(form_.isDismissed());
}

TEST_F(AddMedicineActions, anInactiveMedicineIsStoredAndNothingIsPlanned) {
  form_.setOn("isActive", false);
  ASSERT_NE(saved(), nullptr);
  EXPECT_EQ(stored().size(), 1U);
  EXPECT_TRUE(fixture_.center.added.empty());
}

TEST_F(AddMedicineActions, aSecondSaveMakesNoSecondMedicine) {
  ASSERT_NE(saved(), nullptr);
  EXPECT_EQ(form_.save(), std::nullopt);
  EXPECT_EQ(stored().size(), 1U);
}

TEST_F(AddMedicineActions, cancelClosesWithoutStoringAnything) {
  form_.setText("name", "Aspirin");
  form_.cancel();
  EXPECT_TRUE(form_.content().isDismissed);
  EXPECT_EQ(form_.save(), std::nullopt);
  EXPECT_TRUE(stored().empty());
  EXPECT_TRUE(fixture_.center.added.empty());
}

TEST_F(AddMedicineActions, steppersStopAtTheirEnds) {
  struct Case {
    const char *type, *row;
    int64_t least, most, step;
    int64_t AddMedicineState::*value;
  };
  using State = AddMedicineState;
  for (const auto& [type, row, least, most, step, value] : {
           Case{"Hourly", "hourlyInterval", 1, 24, 1, &State::hourlyInterval},
           Case{"Custom", "customIntervalHours", 0, 168, 1, &State::customIntervalHours},
           Case{"Custom", "customIntervalMinutes", 0, 55, 5, &State::customIntervalMinutes},
           Case{"Daily", "snoozeDuration", 1, 60, 1, &State::snoozeDuration},
           Case{"Daily", "maxSnoozeCount", 1, 10, 1, &State::maxSnoozeCount},
       }) {
    ASSERT_TRUE(form_.choose("intervalType", type));
    while (form_.decrement(row)) {
    }
    EXPECT_EQ(form_.state().*value, least) << row;
    for (int64_t expected = least + step; form_.increment(row); expected += step) {
      ASSERT_EQ(form_.state().*value, expected) << row;
    }
    EXPECT_EQ(form_.state().*value, most) << row;
    const auto sections = form_.content().sections;
    EXPECT_FALSE(rowNamed<StepperRow>(sections, row)->canIncrement) << row;
    EXPECT_TRUE(rowNamed<StepperRow>(sections, row)->canDecrement) << row;
  }
}

TEST_F(AddMedicineActions, thereMayBeAnyNumberOfTimesAndTheyKeepTheirOrder) {
  for (int64_t i = 1; i <= 30; ++i) {
    ASSERT_TRUE(form_.addTime());
    ASSERT_TRUE(form_.setTime("dailyTimes-" + std::to_string(i), 23 - i % 24, 7));
  }
  ASSERT_TRUE(form_.removeTime("dailyTimes-0"));
  const auto times = saved()->interval().dailyTimes;
  ASSERT_EQ(times.size(), 30U);
  EXPECT_EQ(times[0], (TimeOfDay{22, 7}));
  EXPECT_EQ(times[1], (TimeOfDay{21, 7}));
  EXPECT_EQ(times[29], (TimeOfDay{17, 7}));
}

TEST_F(AddMedicineActions, aRowOfAKindThatIsNotChosenCannotBeUsed) {
  EXPECT_FALSE(form_.choose("weeklyDays", "1"));
  EXPECT_FALSE(form_.setTime("weeklyTime", 8, 0));
  EXPECT_FALSE(form_.increment("hourlyInterval"));
  EXPECT_FALSE(form_.setDate("endDate", kOpened));
  form_.choose("intervalType", "Hourly");
  EXPECT_FALSE(form_.addTime());
  EXPECT_FALSE(form_.setTime("dailyTimes-0", 8, 0));
}

TEST_F(AddMedicineActions, whatIsNotOfferedCannotBeChosen) {
  form_.choose("intervalType", "Weekly");
  for (const auto& [row, option] : std::vector<std::pair<const char*, const char*>>{{"selectedUnit", "barrel"},
                                                                                    {"selectedUnit", "Pill"},
                                                                                    {"selectedColor", "grey"},
                                                                                    {"selectedIcon", "pill"},
                                                                                    {"intervalType", "daily"},
                                                                                    {"weeklyDays", "0"},
                                                                                    {"weeklyDays", "8"},
                                                                                    {"weeklyDays", ""},
                                                                                    {"name", "x"},
                                                                                    {"nothing", "x"}}) {
    EXPECT_FALSE(form_.choose(row, option)) << row << ' ' << option;
  }
  EXPECT_FALSE(form_.setText("nothing", ""));
  EXPECT_FALSE(form_.setText("isActive", ""));
  EXPECT_FALSE(form_.setOn("name", true));
  EXPECT_FALSE(form_.setDate("weeklyTime", kOpened));
  EXPECT_FALSE(form_.setTime("startDate", 8, 0));
  EXPECT_FALSE(form_.increment("name"));
}

TEST_F(AddMedicineActions, everyKindOfScheduleIsBuilt) {
  form_.choose("intervalType", "Weekly");
  for (const char* day : {"2", "4", "7"}) form_.choose("weeklyDays", day);
  form_.setTime("weeklyTime", 20, 15);
  form_.choose("intervalType", "Monthly");
  form_.choose("monthlyDays", "31");
  form_.setTime("monthlyTime", 0, 0);
  form_.choose("intervalType", "Custom");
  form_.decrement("customIntervalHours");
  form_.increment("customIntervalMinutes");
  form_.choose("intervalType", "Hourly");
  form_.increment("hourlyInterval");
  // Switching the kind has cleared nothing: the fields of the other kinds are carried along.
  const ReminderInterval expected = {
      ReminderIntervalType::hourly, 5, {{9, 0}}, {3, 5, 6, 7}, {20, 15}, {1, 31}, {0, 0}, 425};
  EXPECT_EQ(saved()->interval(), expected);
}

TEST_F(AddMedicineActions, aWeeklyOrMonthlyMedicineWithoutADayMayBeSaved) {
  form_.choose("intervalType", "Weekly");
  for (const char* day : {"2", "3", "4", "5", "6"}) form_.choose("weeklyDays", day);
  form_.choose("intervalType", "Monthly");
  form_.choose("monthlyDays", "1");
  const auto medicine = saved();
  ASSERT_NE(medicine, nullptr);
  EXPECT_TRUE(medicine->interval().weeklyDays.empty());
  EXPECT_TRUE(medicine->interval().monthlyDays.empty());
  EXPECT_TRUE(fixture_.center.added.empty());
}

TEST_F(AddMedicineActions, aCustomIntervalOfNothingMayBeSaved) {
  form_.choose("intervalType", "Custom");
  while (form_.decrement("customIntervalHours")) {
  }
  EXPECT_EQ(saved()->interval().customIntervalMinutes, 0);
}

TEST_F(AddMedicineActions, timesAreReducedToTheirHourAndMinuteInTheCalendarInUse) {
  form_.addTime();  // 22:10:00 in New York
  EXPECT_EQ(saved()->interval().dailyTimes, (std::vector<TimeOfDay>{{9, 0}, {22, 10}}));
}

TEST(AddMedicineView, aTimeIsPickedAsItReadsAlsoOnADayOnWhichItDoesNotExist) {
  ScreenFixture fixture(at("2025-03-09T12:00:00-04:00"));
  AddMedicineView form(fixture.environment());
  ASSERT_TRUE(form.addTime());
  ASSERT_TRUE(form.setTime("dailyTimes-1", 2, 30));
  form.setText("name", "Aspirin");
  EXPECT_EQ(fixture.context().find<Medicine>(*form.save())->interval().dailyTimes[1], (TimeOfDay{2, 30}));
}

TEST_F(AddMedicineActions, aDateIsPickedOnTheSheetAndKeepsItsClockTime) {
  ASSERT_TRUE(form_.setOn("hasEndDate", true));
  ASSERT_TRUE(form_.openSheet("endDate"));
  auto sheet = form_.content().monthSheet;
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->row, "endDate");
  EXPECT_EQ(sheet->title, "February 2025");
  form_.showNextMonth();
  sheet = form_.content().monthSheet;
  EXPECT_EQ(sheet->title, "March 2025");
  const DayCell day = sheet->weeks.at(2).cells.at(0);
  EXPECT_EQ(day.label, "Sunday, March 9, 2025");
  ASSERT_TRUE(form_.pickDay(day.id));
  EXPECT_EQ(form_.state().endDate, at("2025-03-09T22:10:00-04:00"));
  EXPECT_TRUE(form_.content().monthSheet->weeks.at(2).cells.at(0).isSelected) << "the sheet stays open";
  form_.showPreviousMonth();
  EXPECT_EQ(form_.content().monthSheet->title, "February 2025");
  form_.closeSheet();
  EXPECT_FALSE(form_.content().monthSheet);
  EXPECT_FALSE(form_.pickDay(day.id));
  EXPECT_EQ(form_.state().startDate, kOpened);
}

TEST_F(AddMedicineActions, theSheetOfARowThatIsGoneIsGone) {
  form_.setOn("hasEndDate", true);
  form_.openSheet("endDate");
  form_.setOn("hasEndDate", false);
  EXPECT_FALSE(form_.content().monthSheet);
  form_.addTime();
  form_.openSheet("dailyTimes-1");
  EXPECT_TRUE(form_.content().timeSheet);
  form_.removeTime("dailyTimes-1");
  EXPECT_FALSE(form_.content().timeSheet);
}

TEST_F(AddMedicineActions, oneSheetIsOpenAtATime) {
  form_.openSheet("startDate");
  ASSERT_TRUE(form_.openSheet("dailyTimes-0"));
  EXPECT_FALSE(form_.content().monthSheet);
  EXPECT_EQ(form_.content().timeSheet->title, "Time 1");
  EXPECT_TRUE(form_.content().timeSheet->hours[9].isSelected);
  ASSERT_TRUE(form_.openSheet("startDate"));
  EXPECT_FALSE(form_.content().timeSheet);
  EXPECT_FALSE(form_.openSheet("name"));
  EXPECT_TRUE(form_.content().monthSheet) << "a row without a sheet leaves the open one";
}

}  // namespace
}  // namespace pillora

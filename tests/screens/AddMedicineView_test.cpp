// SPDX-License-Identifier: MIT
#include "screens/AddMedicineView.h"

#include <gtest/gtest.h>

#include "doubles/RefusingCalendar.h"
#include "screens/AddMedicineFixture.h"
#include "screens/MedicineForm.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

TEST_F(AddMedicineViewTest, opensWithItsTitleToolbarAndSixSections) {
  const auto content = form_.content();
  EXPECT_EQ(content.title, "Add Medicine");
  ASSERT_EQ(content.toolbar.size(), 2U);
  EXPECT_EQ(content.toolbar[0].id, "cancel");
  EXPECT_EQ(content.toolbar[0].title, "Cancel");
  EXPECT_EQ(content.toolbar[0].slot, "cancellation");
  EXPECT_TRUE(content.toolbar[0].isEnabled);
  EXPECT_EQ(content.toolbar[1].id, "save");
  EXPECT_EQ(content.toolbar[1].title, "Save");
  EXPECT_EQ(content.toolbar[1].slot, "confirmation");
  EXPECT_FALSE(content.toolbar[1].isEnabled);
  EXPECT_EQ(titlesOf(content.sections),
            (Lines{"Basic Information", "Appearance", "Schedule", "Duration", "Snooze Options", "-"}));
  EXPECT_EQ(content.monthSheet.has_value() || content.timeSheet.has_value() || content.isDismissed, false);
}

TEST_F(AddMedicineViewTest, opensWithTheInitialValues) {
  EXPECT_EQ(section("basicInformation"),
            (Lines{"# Basic Information", "textField name 'Medicine Name': ", "textField dosage 'Dosage Amount': 1",
                   "picker selectedUnit 'Unit': pill", "textField instructions 'Instructions (optional)': "}));
  EXPECT_EQ(section("appearance"),
            (Lines{"# Appearance", "grid selectedColor 'Color': blue", "grid selectedIcon 'Icon': pills"}));
  EXPECT_EQ(section("schedule"), (Lines{"# Schedule", "picker intervalType 'Frequency': Daily",
                                        "time dailyTimes-0 'Time 1': 9:00 AM", "button addTime 'Add Time': "}));
  EXPECT_EQ(section("duration"),
            (Lines{"# Duration", "date startDate 'Start Date': Jan 10, 2025", "toggle hasEndDate 'Set End Date': off",
                   "toggle isRepeating 'Repeating': on"}));
  EXPECT_EQ(section("snoozeOptions"), (Lines{"# Snooze Options", "toggle allowSnooze 'Allow Snooze': on",
                                             "stepper snoozeDuration 'Snooze Duration: 10 min': -+",
                                             "stepper maxSnoozeCount 'Max Snooze Count: 3': -+"}));
  EXPECT_EQ(section("activity"),
            (Lines{"# -", "toggle isActive 'Active': on", "footer: Inactive medicines won't trigger reminders."}));
}

TEST_F(AddMedicineViewTest, otherKindsOfScheduleOpenWithTheirOwnValues) {
  const std::vector<std::pair<std::string, Lines>> rows = {
      {"Hourly", {"stepper hourlyInterval 'Every 4 hours': -+"}},
      {"Weekly", {"grid weeklyDays 'Days': 2,3,4,5,6", "time weeklyTime 'Time': 9:00 AM"}},
      {"Monthly", {"grid monthlyDays 'Days of Month': 1", "time monthlyTime 'Time': 9:00 AM"}},
      {"Custom", {"stepper customIntervalHours 'Hours: 8': -+", "stepper customIntervalMinutes 'Minutes: 0': +"}}};
  for (const auto& [type, expected] : rows) {
    ASSERT_TRUE(form_.choose("intervalType", type));
    Lines lines = {"# Schedule", "picker intervalType 'Frequency': " + type};
    lines.insert(lines.end(), expected.begin(), expected.end());
    EXPECT_EQ(section("schedule"), lines);
  }
}

TEST_F(AddMedicineViewTest, unitsColoursAndIconsAreOfferedInTheirOrder) {
  const auto sections = form_.content().sections;
  const auto* units = rowNamed<PickerRow>(sections, "selectedUnit");
  ASSERT_EQ(units->options.size(), kUnitWords.size());
  for (size_t i = 0; i < kUnitWords.size(); ++i) {
    EXPECT_EQ(units->options[i], (PickerOption{std::string(kUnitWords[i]), std::string(kUnitWords[i])}));
  }
  const auto* colors = rowNamed<GridRow>(sections, "selectedColor");
  EXPECT_EQ(std::tuple(colors->style, colors->columns, colors->spacing), std::tuple("swatches", 5, 12));
  ASSERT_EQ(colors->cells.size(), kColorNames.size());
  for (size_t i = 0; i < kColorNames.size(); ++i) EXPECT_EQ(colors->cells[i].color, kColorNames[i]);
  EXPECT_EQ(colors->cells[9].title, "Mint");
  const auto* icons = rowNamed<GridRow>(sections, "selectedIcon");
  EXPECT_EQ(std::tuple(icons->style, icons->columns, icons->spacing, icons->cellSize), std::tuple("icons", 5, 12, 44));
  ASSERT_EQ(icons->cells.size(), kIconNames.size());
  for (size_t i = 0; i < kIconNames.size(); ++i) {
    EXPECT_EQ(icons->cells[i].symbol, kIconNames[i]);
    EXPECT_FALSE(icons->cells[i].title.empty()) << "screen readers need a name";
  }
}

TEST_F(AddMedicineViewTest, frequenciesAreOfferedWithTheirSymbols) {
  const auto sections = form_.content().sections;
  EXPECT_EQ(rowNamed<PickerRow>(sections, "intervalType")->options,
            (std::vector<PickerOption>{{"Hourly", "Hourly", "clock"},
                                       {"Daily", "Daily", "sun.max"},
                                       {"Weekly", "Weekly", "calendar.badge.clock"},
                                       {"Monthly", "Monthly", "calendar"},
                                       {"Custom", "Custom", "slider.horizontal.3"}}));
}

TEST_F(AddMedicineViewTest, theSelectedIconIsDrawnInTheSelectedColourAndTheOthersGrey) {
  ASSERT_TRUE(form_.choose("selectedColor", "mint"));
  ASSERT_TRUE(form_.choose("selectedIcon", "lungs"));
  const auto sections = form_.content().sections;
  for (const GridCell& cell : rowNamed<GridRow>(sections, "selectedIcon")->cells) {
    EXPECT_EQ(cell.isSelected, cell.id == "lungs");
    EXPECT_EQ(cell.color, cell.id == "lungs" ? "mint" : "grey");
  }
  for (const GridCell& cell : rowNamed<GridRow>(sections, "selectedColor")->cells) {
    EXPECT_EQ(cell.isSelected, cell.id == "mint");
  }
}

TEST_F(AddMedicineViewTest, weekdaysAreTheCalendarsShortSymbolsFromSunday) {
  form_.choose("intervalType", "Weekly");
  const auto sections = form_.content().sections;
  const auto* days = rowNamed<GridRow>(sections, "weeklyDays");
  EXPECT_EQ(std::tuple(days->style, days->columns, days->spacing, days->cellSize), std::tuple("days", 7, 8, 36));
  Lines titles;
  for (const GridCell& cell : days->cells) titles.push_back(cell.id + cell.title);
  EXPECT_EQ(titles, (Lines{"1Sun", "2Mon", "3Tue", "4Wed", "5Thu", "6Fri", "7Sat"}));
}

TEST_F(AddMedicineViewTest, everyMonthOffersThirtyOneDays) {
  form_.choose("intervalType", "Monthly");
  const auto sections = form_.content().sections;
  const auto* days = rowNamed<GridRow>(sections, "monthlyDays");
  EXPECT_EQ(std::tuple(days->style, days->columns, days->spacing, days->cellSize), std::tuple("days", 7, 8, 32));
  ASSERT_EQ(days->cells.size(), 31U);
  EXPECT_EQ(days->cells.front().title, "1");
  EXPECT_EQ(days->cells.back().title, "31");
}

TEST_F(AddMedicineViewTest, saveIsEnabledExactlyWhenTheTrimmedNameIsNotEmpty) {
  const std::vector<std::pair<std::string, bool>> names = {{"", false},       {"   ", false},    {" \t ", false},
                                                           {"\u00A0", false}, {"\u3000", false}, {"\n", true},
                                                           {" a ", true},     {"Aspirin", true}};
  for (const auto& [name, isValid] : names) {
    ASSERT_TRUE(form_.setText("name", name));
    EXPECT_EQ(canSave(), isValid) << '"' << name << '"';
    EXPECT_EQ(form_.isValid(), isValid);
    EXPECT_EQ(isValid || !form_.save(), true);
  }
  EXPECT_TRUE(stored().empty());
  EXPECT_FALSE(form_.isDismissed());
}

TEST_F(AddMedicineViewTest, savingAtOnceStoresTheInitialValues) {
  const auto medicine = saved();
  ASSERT_NE(medicine, nullptr);
  EXPECT_EQ(medicine->name(), "Aspirin");
  EXPECT_EQ(medicine->dosage(), "1");
  EXPECT_EQ(medicine->unit(), "pill");
  EXPECT_EQ(medicine->instructions(), "");
  EXPECT_EQ(medicine->color(), "blue");
  EXPECT_EQ(medicine->icon(), "pills");
  EXPECT_EQ(medicine->interval(), fallbackInterval());
  EXPECT_TRUE(medicine->isActive());
  EXPECT_TRUE(medicine->allowSnooze());
  EXPECT_EQ(medicine->snoozeDurationMinutes(), 10);
  EXPECT_EQ(medicine->maxSnoozeCount(), 3);
  EXPECT_TRUE(medicine->isRepeating());
  EXPECT_EQ(medicine->startDate(), kOpened);
  EXPECT_EQ(medicine->endDate(), std::nullopt);
  EXPECT_TRUE(form_.content().isDismissed);
}

TEST_F(AddMedicineViewTest, theDatesAreThoseOfTheOpeningAndTheTimesOfTheRecordThoseOfSaving) {
  fixture_.clock.set(kOpened + 3h);
  ASSERT_TRUE(form_.setOn("hasEndDate", true));
  EXPECT_EQ(section("duration")[3], "date endDate 'End Date': Feb 9, 2025");
  const auto medicine = saved();
  EXPECT_EQ(medicine->startDate(), kOpened);
  EXPECT_EQ(medicine->endDate(), kOpened + 30 * 24h);
  EXPECT_EQ(medicine->createdAt(), kOpened + 3h);
  EXPECT_EQ(medicine->updatedAt(), kOpened + 3h);
}

TEST(AddMedicineView, theEndDateIsThirtyCalendarDaysAheadAcrossAClockChange) {
  ScreenFixture fixture(at("2025-02-20T08:00:00-05:00"));
  EXPECT_EQ(AddMedicineView(fixture.environment()).state().endDate, at("2025-03-22T08:00:00-04:00"));
}

TEST_F(AddMedicineViewTest, stepperTextsFollowTheirValues) {
  form_.choose("intervalType", "Hourly");
  for (int i = 0; i < 3; ++i) form_.decrement("hourlyInterval");
  EXPECT_EQ(section("schedule")[2], "stepper hourlyInterval 'Every 1 hour': +");
  form_.increment("hourlyInterval");
  EXPECT_EQ(section("schedule")[2], "stepper hourlyInterval 'Every 2 hours': -+");
  form_.choose("intervalType", "Custom");
  form_.increment("customIntervalMinutes");
  EXPECT_EQ(section("schedule")[3], "stepper customIntervalMinutes 'Minutes: 5': -+");
}

TEST_F(AddMedicineViewTest, withSnoozeOffItsSteppersAreHiddenAndKeepTheirValues) {
  form_.increment("snoozeDuration");
  form_.setOn("allowSnooze", false);
  EXPECT_EQ(section("snoozeOptions"), (Lines{"# Snooze Options", "toggle allowSnooze 'Allow Snooze': off"}));
  EXPECT_FALSE(form_.increment("snoozeDuration")) << "what is not on show cannot be pressed";
  EXPECT_EQ(saved()->snoozeDurationMinutes(), 11);
}

TEST_F(AddMedicineViewTest, aSingleTimeCannotBeRemovedTwoBothCan) {
  EXPECT_FALSE(form_.removeTime("dailyTimes-0"));
  ASSERT_TRUE(form_.addTime());
  EXPECT_EQ(
      section("schedule"),
      (Lines{"# Schedule", "picker intervalType 'Frequency': Daily", "time dailyTimes-0 'Time 1': 9:00 AM removable",
             "time dailyTimes-1 'Time 2': 10:10 PM removable", "button addTime 'Add Time': "}))
      << "a new time is the current one";
  const auto sections = form_.content().sections;
  EXPECT_EQ(rowNamed<TimeRow>(sections, "dailyTimes-1")->remove,
            (ActionItem{"removeTime", "Remove Time", "minus.circle.fill"}));
  EXPECT_EQ(rowNamed<ButtonRow>(sections, "addTime")->symbol, "plus.circle.fill");
  ASSERT_TRUE(form_.removeTime("dailyTimes-0"));
  EXPECT_EQ(section("schedule")[2], "time dailyTimes-1 'Time 1': 10:10 PM") << "the row keeps its id";
  EXPECT_FALSE(form_.removeTime("dailyTimes-1"));
  EXPECT_FALSE(form_.removeTime("dailyTimes-0"));
}

TEST_F(AddMedicineViewTest, switchingTheFrequencyShowsTheOtherTypesFieldsAsTheyWereLeft) {
  form_.addTime();
  form_.choose("intervalType", "Weekly");
  form_.choose("weeklyDays", "1");
  form_.choose("intervalType", "Daily");
  EXPECT_EQ(section("schedule").size(), 5U);
  form_.choose("intervalType", "Weekly");
  EXPECT_EQ(section("schedule")[2], "grid weeklyDays 'Days': 1,2,3,4,5,6");
}

TEST(AddMedicineView, withACalendarThatFormsNoDatesTheTimesAreThoseOfTheOpening) {
  ScreenFixture fixture(kOpened);
  const RefusingCalendar refusing(*fixture.calendar, {.addingDays = true, .formingDates = true});
  AddMedicineView form(
      ScreenEnvironment{fixture.context(), fixture.clock, refusing, *fixture.texts, fixture.notifications});
  EXPECT_EQ(form.state().dailyTimes.at(0).time, kOpened);
  EXPECT_EQ(form.state().weeklyTime, kOpened);
  EXPECT_EQ(form.state().monthlyTime, kOpened);
  EXPECT_EQ(form.state().endDate, kOpened);
  EXPECT_FALSE(form.setTime("dailyTimes-0", 8, 0));
  EXPECT_EQ(form.state().dailyTimes.at(0).time, kOpened);
}

TEST_F(AddMedicineViewTest, timesFollowTheTwentyFourHourSetting) {
  const auto settings = AppSettings::make();
  settings->use24HourTime = true;
  fixture_.context().insert(settings);
  EXPECT_EQ(section("schedule")[2], "time dailyTimes-0 'Time 1': 09:00");
  form_.openSheet("dailyTimes-0");
  EXPECT_EQ(form_.content().timeSheet->hours[21].text, "21");
}

TEST_F(AddMedicineViewTest, theSettingsSnoozeDefaultsAreNotTaken) {
  const auto settings = AppSettings::make();
  settings->defaultSnoozeDurationMinutes = 25;
  settings->defaultMaxSnoozeCount = 9;
  fixture_.context().insert(settings);
  const AddMedicineView form(fixture_.environment());
  EXPECT_EQ(form.state().snoozeDuration, 10);
  EXPECT_EQ(form.state().maxSnoozeCount, 3);
}

TEST(AddMedicineView, ownTextsAreThoseOfTheLanguageAndValuesStay) {
  ScreenFixture fixture(kOpened, {"America/New_York", "en_US", "en-XA"});
  const AddMedicineContent content = AddMedicineView(fixture.environment()).content();
  EXPECT_NE(content.title, "Add Medicine");
  const auto* type = rowNamed<PickerRow>(content.sections, "intervalType");
  EXPECT_EQ(type->selected, "Daily");
  EXPECT_NE(type->valueText, "Daily");
  const auto* unit = rowNamed<PickerRow>(content.sections, "selectedUnit");
  EXPECT_EQ(unit->selected, "pill");
  EXPECT_NE(unit->valueText, "pill");
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "screens/AddMedicineView.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/RefusingCalendar.h"
#include "doubles/ScreenFixture.h"
#include "screens/FormRows.h"
#include "screens/MedicineForm.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10, 22:10.
const Instant kOpened = at("2025-01-10T22:10:00-05:00");

class AddMedicineViewTest : public testing::Test {
 protected:
  Lines section(std::string_view id) const { return linesOf(sectionNamed(form_.content().sections, id)); }
  bool canSave() const { return form_.content().toolbar.at(1).isEnabled; }
  std::shared_ptr<Medicine> saved() {
    form_.setText("name", "Aspirin");
    const auto id = form_.save();
    return id ? fixture_.context().find<Medicine>(*id) : nullptr;
  }
  std::vector<std::shared_ptr<Medicine>> stored() { return *fixture_.context().fetch<Medicine>(); }

  ScreenFixture fixture_{kOpened};
  AddMedicineView form_{fixture_.environment()};
};

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

TEST_F(AddMedicineViewTest, anEndDateThatIsSwitchedOffAgainIsNotStored) {
  form_.setOn("hasEndDate", true);
  form_.setOn("hasEndDate", false);
  EXPECT_EQ(saved()->endDate(), std::nullopt);
}

TEST_F(AddMedicineViewTest, everyControlReachesTheRecord) {
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

TEST_F(AddMedicineViewTest, aNameIsSavedWithoutTheBlanksAroundIt) {
  form_.setText("name", "\t Baby  aspirin \u00A0");
  EXPECT_EQ(fixture_.context().find<Medicine>(*form_.save())->name(), "Baby  aspirin");
}

TEST_F(AddMedicineViewTest, savingInsertsPlansThirtyDosesAndClosesInThisOrder) {
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

TEST_F(AddMedicineViewTest, anInactiveMedicineIsStoredAndNothingIsPlanned) {
  form_.setOn("isActive", false);
  ASSERT_NE(saved(), nullptr);
  EXPECT_EQ(stored().size(), 1U);
  EXPECT_TRUE(fixture_.center.added.empty());
}

TEST_F(AddMedicineViewTest, aSecondSaveMakesNoSecondMedicine) {
  ASSERT_NE(saved(), nullptr);
  EXPECT_EQ(form_.save(), std::nullopt);
  EXPECT_EQ(stored().size(), 1U);
}

TEST_F(AddMedicineViewTest, cancelClosesWithoutStoringAnything) {
  form_.setText("name", "Aspirin");
  form_.cancel();
  EXPECT_TRUE(form_.content().isDismissed);
  EXPECT_EQ(form_.save(), std::nullopt);
  EXPECT_TRUE(stored().empty());
  EXPECT_TRUE(fixture_.center.added.empty());
}

TEST_F(AddMedicineViewTest, steppersStopAtTheirEnds) {
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

TEST_F(AddMedicineViewTest, thereMayBeAnyNumberOfTimesAndTheyKeepTheirOrder) {
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

TEST_F(AddMedicineViewTest, aRowOfAKindThatIsNotChosenCannotBeUsed) {
  EXPECT_FALSE(form_.choose("weeklyDays", "1"));
  EXPECT_FALSE(form_.setTime("weeklyTime", 8, 0));
  EXPECT_FALSE(form_.increment("hourlyInterval"));
  EXPECT_FALSE(form_.setDate("endDate", kOpened));
  form_.choose("intervalType", "Hourly");
  EXPECT_FALSE(form_.addTime());
  EXPECT_FALSE(form_.setTime("dailyTimes-0", 8, 0));
}

TEST_F(AddMedicineViewTest, whatIsNotOfferedCannotBeChosen) {
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

TEST_F(AddMedicineViewTest, everyKindOfScheduleIsBuilt) {
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

TEST_F(AddMedicineViewTest, switchingTheFrequencyShowsTheOtherTypesFieldsAsTheyWereLeft) {
  form_.addTime();
  form_.choose("intervalType", "Weekly");
  form_.choose("weeklyDays", "1");
  form_.choose("intervalType", "Daily");
  EXPECT_EQ(section("schedule").size(), 5U);
  form_.choose("intervalType", "Weekly");
  EXPECT_EQ(section("schedule")[2], "grid weeklyDays 'Days': 1,2,3,4,5,6");
}

TEST_F(AddMedicineViewTest, aWeeklyOrMonthlyMedicineWithoutADayMayBeSaved) {
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

TEST_F(AddMedicineViewTest, aCustomIntervalOfNothingMayBeSaved) {
  form_.choose("intervalType", "Custom");
  while (form_.decrement("customIntervalHours")) {
  }
  EXPECT_EQ(saved()->interval().customIntervalMinutes, 0);
}

TEST_F(AddMedicineViewTest, timesAreReducedToTheirHourAndMinuteInTheCalendarInUse) {
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

TEST_F(AddMedicineViewTest, aDateIsPickedOnTheSheetAndKeepsItsClockTime) {
  ASSERT_TRUE(form_.setOn("hasEndDate", true));
  ASSERT_TRUE(form_.openSheet("endDate"));
  auto sheet = form_.content().monthSheet;
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->row, "endDate");
  EXPECT_EQ(sheet->title, "February 2025");
  form_.showNextMonth();
  sheet = form_.content().monthSheet;
  EXPECT_EQ(sheet->title, "March 2025");
  const DayCell day = sheet->weeks.at(2).at(0);
  EXPECT_EQ(day.label, "Sunday, March 9, 2025");
  ASSERT_TRUE(form_.pickDay(day.id));
  EXPECT_EQ(form_.state().endDate, at("2025-03-09T22:10:00-04:00"));
  EXPECT_TRUE(form_.content().monthSheet->weeks.at(2).at(0).isSelected) << "the sheet stays open";
  form_.showPreviousMonth();
  EXPECT_EQ(form_.content().monthSheet->title, "February 2025");
  form_.closeSheet();
  EXPECT_FALSE(form_.content().monthSheet);
  EXPECT_FALSE(form_.pickDay(day.id));
  EXPECT_EQ(form_.state().startDate, kOpened);
}

TEST_F(AddMedicineViewTest, theSheetOfARowThatIsGoneIsGone) {
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

TEST_F(AddMedicineViewTest, oneSheetIsOpenAtATime) {
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

TEST(AddMedicineView, ownTextsAreThoseOfTheLanguageAndValuesStay) {
  ScreenFixture fixture(kOpened, {"America/New_York", "en_US", "en-XA"});
  const AddMedicineContent content = AddMedicineView(fixture.environment()).content();
  EXPECT_NE(content.title, "Add Medicine");
  const auto* type = rowNamed<PickerRow>(content.sections, "intervalType");
  EXPECT_EQ(type->selected, "Daily");
  EXPECT_NE(type->valueText, "Daily");
  EXPECT_EQ(rowNamed<PickerRow>(content.sections, "selectedUnit")->valueText, "pill");
}

}  // namespace
}  // namespace pillora

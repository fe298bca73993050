// SPDX-License-Identifier: MIT
#include "screens/MedicineDetailView.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"
#include "screens/FormRows.h"
#include "screens/MedicineForm.h"

// What the details show. What their buttons do is in MedicineDetailActions_test.cpp.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10, 10:30.
const Instant kMidnight = at("2025-01-10T00:00:00-05:00");
const Instant kNow = at("2025-01-10T10:30:00-05:00");

class MedicineDetailViewTest : public testing::Test {
 protected:
  MedicineDetailViewTest() {
    medicine_->startDate = kNow - 24h;
    medicine_->dosage = "2";
  }

  MedicineDetailContent content() const { return view_.content(); }
  Lines section(std::string_view id) const { return linesOf(sectionNamed(content().sections, id)); }
  Lines titles() const { return titlesOf(content().sections); }

  ScreenFixture fixture_{kNow};
  std::shared_ptr<Medicine> medicine_ = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}, {20, 0}})));
  MedicineDetailView view_{fixture_.environment(), medicine_->id()};
};

TEST_F(MedicineDetailViewTest, showsTheMedicineInItsSections) {
  EXPECT_EQ(content().title, "Details");
  EXPECT_FALSE(content().isEditing);
  EXPECT_EQ(titles(), (Lines{"-", "Schedule", "Snooze Options", "Duration", "-"}));
  EXPECT_EQ(section("header"),
            (Lines{"# -", "header header 'Aspirin': pills blue 2 tablet", "toggle isActive 'Active': on"}));
  EXPECT_EQ(section("schedule"), (Lines{"# Schedule", "value frequency 'Frequency': Daily",
                                        "value details 'Details': Daily at 8:00 AM, 8:00 PM",
                                        "value nextDose 'Next Dose': 8:00 PM | in 9 hr."}));
  EXPECT_EQ(section("snoozeOptions"), (Lines{"# Snooze Options", "toggle allowSnooze 'Allow Snooze': on",
                                             "stepper snoozeDurationMinutes 'Duration: 10 min': -+",
                                             "stepper maxSnoozeCount 'Max Count: 3': -+"}));
  EXPECT_EQ(section("duration"),
            (Lines{"# Duration", "value startDate 'Start Date': Jan 9, 2025", "toggle isRepeating 'Repeating': on"}));
  EXPECT_EQ(section("deletion"), (Lines{"# -", "button delete 'Delete Medicine': destructive"}));
  EXPECT_FALSE(content().deleteAlert);
  EXPECT_FALSE(content().isDismissed);
}

TEST_F(MedicineDetailViewTest, theSwitchInTheHeaderShowsNoLabelButHasAName) {
  const auto sections = content().sections;
  EXPECT_TRUE(rowNamed<ToggleRow>(sections, "isActive")->isLabelHidden);
  EXPECT_FALSE(rowNamed<ToggleRow>(sections, "isRepeating")->isLabelHidden);
}

TEST_F(MedicineDetailViewTest, whileEditingThereAreFieldsDosageAndAppearance) {
  medicine_->instructions = "with water";
  view_.edit();
  EXPECT_EQ(content().title, "Edit Medicine");
  EXPECT_TRUE(content().isEditing);
  EXPECT_EQ(titles(), (Lines{"-", "Dosage", "Appearance", "Schedule", "Snooze Options", "Duration", "-"}));
  EXPECT_EQ(section("header"),
            (Lines{"# -", "textField name 'Name': Aspirin", "header header '-': pills blue 2 tablet",
                   "textField instructions 'Instructions': with water", "toggle isActive 'Active': on"}));
  EXPECT_EQ(section("dosage"), (Lines{"# Dosage", "textField dosage 'Amount': 2", "picker unit 'Unit': tablet"}));
  EXPECT_EQ(section("appearance"), (Lines{"# Appearance", "grid color 'Color': blue", "grid icon 'Icon': pills"}));
  EXPECT_EQ(section("duration"),
            (Lines{"# Duration", "date startDate 'Start Date': Jan 9, 2025", "toggle isRepeating 'Repeating': on"}));
  const auto sections = content().sections;
  EXPECT_EQ(rowNamed<TextFieldRow>(sections, "dosage")->keypad, "decimal");
  EXPECT_EQ(rowNamed<TextFieldRow>(sections, "name")->style, "title");
  EXPECT_EQ(rowNamed<PickerRow>(sections, "unit")->options.size(), kUnitWords.size());
  EXPECT_EQ(rowNamed<GridRow>(sections, "color")->cells.size(), kColorNames.size());
  EXPECT_EQ(rowNamed<GridRow>(sections, "icon")->cells.size(), kIconNames.size());
}

TEST_F(MedicineDetailViewTest, toolbarOfBothModes) {
  const auto shown = content().toolbar;
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_EQ(std::tuple(shown[0].id, shown[0].slot, shown[0].symbol),
            std::tuple("more", "primary", std::optional<std::string>("ellipsis.circle")));
  ASSERT_EQ(shown[0].menu.size(), 2U);
  EXPECT_EQ(std::tuple(shown[0].menu[0].title, shown[0].menu[0].symbol, shown[0].menu[0].isDestructive),
            std::tuple("Edit", "pencil", false));
  EXPECT_EQ(std::tuple(shown[0].menu[1].title, shown[0].menu[1].symbol, shown[0].menu[1].isDestructive),
            std::tuple("Delete", "trash", true));
  EXPECT_EQ(std::tuple(shown[1].slot, shown[1].title, shown[1].isSemibold), std::tuple("confirmation", "Done", true));

  view_.edit();
  const auto editing = content().toolbar;
  ASSERT_EQ(editing.size(), 2U);
  EXPECT_EQ(std::tuple(editing[0].slot, editing[0].title, editing[0].isSemibold),
            std::tuple("cancellation", "Cancel", false));
  EXPECT_EQ(std::tuple(editing[1].slot, editing[1].title, editing[1].isSemibold),
            std::tuple("confirmation", "Save", true));
}

TEST_F(MedicineDetailViewTest, everyKindOfScheduleIsNamedAndDescribed) {
  const std::vector<std::pair<ReminderInterval, Lines>> cases = {
      {hourly(1), {"Hourly", "Every 1 hour"}},
      {daily({{9, 0}}), {"Daily", "Daily at 9:00 AM"}},
      {weekly({2, 4}, {9, 0}), {"Weekly", "Mon, Wed"}},
      {monthly({15, 1}, {9, 0}), {"Monthly", "Monthly on days 1, 15"}},
      {custom(90), {"Custom", "Every 1h 30m"}}};
  for (const auto& [interval, expected] : cases) {
    const auto medicine = fixture_.add(medicineNamed("Zinc", interval));
    const auto shown = MedicineDetailView(fixture_.environment(), medicine->id()).content();
    EXPECT_EQ(shown.frequency, expected[0]);
    EXPECT_EQ(plainBlanks(*shown.details), expected[1]);
    EXPECT_EQ(linesOf(sectionNamed(shown.sections, "schedule"))[1], "value frequency 'Frequency': " + expected[0]);
  }
}

TEST_F(MedicineDetailViewTest, anInactiveMedicineOrOneThatIsNeverDueHasNoNextDose) {
  medicine_->isActive = false;
  EXPECT_EQ(section("schedule").size(), 3U);
  EXPECT_EQ(content().nextDose, std::nullopt);
  const auto never = fixture_.add(medicineNamed("Zinc", weekly({}, {9, 0})));
  const auto shown = MedicineDetailView(fixture_.environment(), never->id()).content();
  EXPECT_EQ(rowNamed<ValueRow>(shown.sections, "nextDose"), nullptr);
  EXPECT_EQ(shown.nextDoseText, std::nullopt);
  EXPECT_EQ(shown.nextDoseRelative, std::nullopt);
}

TEST_F(MedicineDetailViewTest, theNextDoseDoesNotAskForTheEndDate) {
  medicine_->endDate = kNow - 48h;
  EXPECT_EQ(content().nextDose, kMidnight + 20h);
  EXPECT_EQ(section("duration")[2], "value endDate 'End Date': Jan 8, 2025");
  view_.edit();
  EXPECT_EQ(section("duration")[2], "value endDate 'End Date': Jan 8, 2025") << "it cannot be edited here";
}

TEST_F(MedicineDetailViewTest, instructionsAreShownWhenThereAreAnyAndNothingIsEdited) {
  medicine_->instructions = "with water";
  EXPECT_EQ(titles(), (Lines{"-", "Schedule", "Snooze Options", "Instructions", "Duration", "-"}));
  EXPECT_EQ(section("instructions"), (Lines{"# Instructions", "value instructionsText '-': with water"}));
  view_.edit();
  EXPECT_TRUE(section("instructions").size() == 1 && sectionNamed(content().sections, "instructions").id.empty());
}

TEST_F(MedicineDetailViewTest, withSnoozeOffBothSteppersAreHidden) {
  medicine_->allowSnooze = false;
  EXPECT_EQ(section("snoozeOptions"), (Lines{"# Snooze Options", "toggle allowSnooze 'Allow Snooze': off"}));
  EXPECT_EQ(medicine_->snoozeDurationMinutes(), 10);
  EXPECT_EQ(medicine_->maxSnoozeCount(), 3);
}

TEST_F(MedicineDetailViewTest, withoutLogsThereIsNoRecentHistory) {
  EXPECT_TRUE(content().recentHistory.empty());
  EXPECT_EQ(sectionNamed(content().sections, "recentHistory").id, "");
}

TEST_F(MedicineDetailViewTest, ofEightLogsTheFiveLatestAreShownLatestFirst) {
  for (const int day : {3, 8, 1, 6, 2, 7, 4, 5}) {
    fixture_.log(medicine_, kMidnight - day * 24h + 8h, DoseStatus::taken);
  }
  fixture_.log(fixture_.add(medicineNamed("Zinc", hourly(4))), kNow, DoseStatus::taken);
  EXPECT_EQ(titles(), (Lines{"-", "Schedule", "Snooze Options", "Duration", "Recent History", "-"}));
  Lines dates;
  for (const DoseRow& row : content().recentHistory) dates.push_back(row.dateText);
  EXPECT_EQ(dates, (Lines{"Jan 9, 2025", "Jan 8, 2025", "Jan 7, 2025", "Jan 6, 2025", "Jan 5, 2025"}));
}

TEST_F(MedicineDetailViewTest, logsOfOneTimeKeepTheOrderOfTheirInsertion) {
  std::vector<std::string> ids;
  for (int i = 0; i < 6; ++i) {
    ids.push_back(fixture_.log(medicine_, kMidnight + 8h, DoseStatus::taken)->id().text());
  }
  std::vector<std::string> shown;
  for (const DoseRow& row : content().recentHistory) shown.push_back(row.id);
  EXPECT_EQ(shown, std::vector(ids.begin(), ids.begin() + 5));
}

TEST_F(MedicineDetailViewTest, everyStatusHasItsSymbolColourAndWord) {
  int hour = 10;
  for (const DoseStatus status : kAllDoseStatuses) fixture_.log(medicine_, kMidnight + 1h * hour--, status);
  Lines lines = section("recentHistory");
  for (std::string& line : lines) {
    const size_t quote = line.find("': ");
    if (quote != std::string::npos) line = line.substr(quote + 3);
  }
  EXPECT_EQ(lines, (Lines{"# Recent History", "checkmark.circle.fill green Jan 10, 2025 10:00 AM Taken",
                          "xmark.circle.fill red Jan 10, 2025 9:00 AM Missed",
                          "forward.circle.fill orange Jan 10, 2025 8:00 AM Skipped",
                          "clock.arrow.circlepath yellow Jan 10, 2025 7:00 AM Snoozed",
                          "circle grey Jan 10, 2025 6:00 AM Pending"}));
}

TEST_F(MedicineDetailViewTest, anUnknownStatusReadsAsPendingAndIsNotRewritten) {
  const auto log = fixture_.log(medicine_, kNow, DoseStatus::taken);
  log->statusRaw = "Forgotten";
  EXPECT_EQ(content().recentHistory.at(0).status, "Pending");
  EXPECT_EQ(log->statusRaw(), "Forgotten");
}

TEST_F(MedicineDetailViewTest, ofElevenThousandLogsOnlyTheLatestAreRead) {
  for (int i = 0; i < 11'000; ++i) fixture_.log(medicine_, kMidnight - i * 1h, DoseStatus::taken);
  fixture_.endTurn();
  const auto shown = content();
  ASSERT_EQ(shown.recentHistory.size(), 5U);
  EXPECT_EQ(plainBlanks(shown.recentHistory[0].timeText), "12:00 AM");
  fixture_.log(medicine_, kNow, DoseStatus::skipped);
  EXPECT_EQ(content().recentHistory[0].status, "Skipped") << "a new log is shown at once";
}

TEST_F(MedicineDetailViewTest, valuesThatNoControlCouldGiveAreShownAsTheyAreAndNotRewritten) {
  medicine_->snoozeDurationMinutes = 1000;
  medicine_->maxSnoozeCount = -2;
  medicine_->unit = "barrel";
  medicine_->color = "Red";
  medicine_->icon = "rocket";
  view_.edit();
  EXPECT_EQ(section("snoozeOptions")[2], "stepper snoozeDurationMinutes 'Duration: 1000 min': -");
  EXPECT_EQ(section("snoozeOptions")[3], "stepper maxSnoozeCount 'Max Count: -2': +");
  EXPECT_EQ(section("dosage")[2], "picker unit 'Unit': barrel");
  EXPECT_EQ(section("appearance")[1], "grid color 'Color': ") << "no swatch is the stored one";
  EXPECT_EQ(section("appearance")[2], "grid icon 'Icon': ");
  EXPECT_EQ(section("header")[2], "header header '-': rocket blue 2 barrel") << "an unknown colour is blue";
  view_.cancel();
  view_.goBack();
  EXPECT_EQ(medicine_->snoozeDurationMinutes(), 1000);
  EXPECT_EQ(medicine_->maxSnoozeCount(), -2);
  EXPECT_EQ(std::tuple(medicine_->unit(), medicine_->color(), medicine_->icon()),
            std::tuple("barrel", "Red", "rocket"));
}

TEST_F(MedicineDetailViewTest, timesFollowTheTwentyFourHourSettingButTheDescriptionTheLocale) {
  const auto settings = AppSettings::make();
  settings->use24HourTime = true;
  fixture_.context().insert(settings);
  fixture_.log(medicine_, kMidnight + 8h, DoseStatus::taken);
  EXPECT_EQ(content().nextDoseText, "20:00");
  EXPECT_EQ(content().recentHistory.at(0).timeText, "08:00");
  EXPECT_EQ(plainBlanks(*content().details), "Daily at 8:00 AM, 8:00 PM");
}

TEST_F(MedicineDetailViewTest, theAlertNamesTheMedicine) {
  medicine_->name = "{name} & \"Co\"";
  view_.askToDelete();
  EXPECT_EQ(
      content().deleteAlert,
      (ConfirmationAlert{"Delete Medicine?",
                         "This will permanently delete {name} & \"Co\" and all its history. This action cannot be "
                         "undone.",
                         "Cancel", "Delete"}));
  view_.dismissDeleteAlert();
  EXPECT_FALSE(content().deleteAlert);
}

TEST(MedicineDetailView, ownTextsAreThoseOfTheLanguageAndValuesStay) {
  ScreenFixture fixture(kNow, {"America/New_York", "en_US", "en-XA"});
  const auto medicine = fixture.add(medicineNamed("Aspirin", hourly(4)));
  fixture.log(medicine, kNow, DoseStatus::missed);
  const auto content = MedicineDetailView(fixture.environment(), medicine->id()).content();
  EXPECT_NE(content.title, "Details");
  EXPECT_EQ(content.frequency, "Hourly");
  EXPECT_NE(rowNamed<ValueRow>(content.sections, "frequency")->text, "Hourly");
  EXPECT_EQ(content.recentHistory.at(0).status, "Missed");
  EXPECT_NE(content.recentHistory.at(0).statusText, "Missed");
  EXPECT_EQ(rowNamed<HeaderRow>(content.sections, "header")->name, "Aspirin");
}

TEST(MedicineDetailView, datesAreThoseOfTheUsersCalendar) {
  ScreenFixture fixture(kNow, {"Asia/Bangkok", "th_TH", "en"});
  NewMedicine values = medicineNamed("Aspirin", hourly(4));
  values.startDate = kNow;
  const auto medicine = fixture.add(values);
  MedicineDetailView view(fixture.environment(), medicine->id());
  view.edit();
  EXPECT_EQ(rowNamed<DateRow>(view.content().sections, "nothing"), nullptr);
  const auto sections = view.content().sections;
  EXPECT_EQ(rowNamed<DateRow>(sections, "startDate")->valueText, "10 ม.ค. 2568");
  ASSERT_TRUE(view.openSheet("startDate"));
  EXPECT_EQ(view.content().monthSheet->title, "มกราคม 2568");
}

}  // namespace
}  // namespace pillora

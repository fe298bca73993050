// SPDX-License-Identifier: MIT
#include "screens/SettingsView.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "SettingsFixture.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "support/Json.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kNow = at("2025-01-10T10:30:00-05:00");

using Names = std::vector<std::string>;

class SettingsViewTest : public testing::Test {
 protected:
  SettingsContent content() const { return view_.content(); }

  SettingsFixture fixture_{kNow};
  SettingsView view_ = fixture_.makeView();
};

/// Every row as "kind label", with its section's title before them.
Names outline(const SettingsContent& content) {
  Names lines;
  for (const FormSection& section : content.sections) {
    lines.push_back("# " + section.title.value_or(""));
    for (const FormRow& one : section.rows) {
      const Json json = toJson(one);
      lines.push_back(std::string(json["kind"]) + ' ' + std::string(json[json.contains("label") ? "label" : "title"]));
    }
  }
  return lines;
}

TEST_F(SettingsViewTest, theSevenSectionsAndTheirRowsInOrder) {
  EXPECT_EQ(content().title, "Settings");
  EXPECT_EQ(outline(content()), (Names{"# Calendar",
                                       "picker Week Starts On",
                                       "toggle Use 24-Hour Time",  //
                                       "# Notifications",
                                       "value Status",
                                       "picker Sound",  //
                                       "# Default Snooze",
                                       "stepper Duration: 10 min",
                                       "stepper Max Count: 3",  //
                                       "# Display",
                                       "toggle Show Medicine Icons",
                                       "toggle Haptic Feedback",  //
                                       "# Backup & Sync",
                                       "toggle iCloud Sync",
                                       "toggle Local Backup",
                                       "picker Auto-Backup",
                                       "button Create Backup",
                                       "button Restore from Backup",  //
                                       "# Privacy",
                                       "toggle Require Authentication",  //
                                       "# About",
                                       "value Version",
                                       "value Medicines",
                                       "link Privacy Policy",
                                       "link Terms of Service"}));
}

TEST_F(SettingsViewTest, everyRowHasAnIdOfItsOwn) {
  Names ids;
  const SettingsContent shown = content();
  for (const FormSection& section : shown.sections) {
    for (const FormRow& one : section.rows) ids.push_back(std::visit([](const auto& each) { return each.id; }, one));
  }
  EXPECT_EQ(ids, (Names{"weekStartDay", "use24HourTime", "notificationStatus", "notificationSound",
                        "defaultSnoozeDurationMinutes", "defaultMaxSnoozeCount", "showMedicineIcons", "enableHaptics",
                        "enableiCloudSync", "enableLocalBackup", "backupFrequency", "createBackup", "restoreFromBackup",
                        "requireAuthentication", "version", "medicines", "privacyPolicy", "termsOfService"}));
}

TEST_F(SettingsViewTest, openingTheScreenMakesTheRecordWithItsDefaults) {
  EXPECT_EQ(fixture_.recordCount(), 0);
  view_.appeared();
  ASSERT_EQ(fixture_.recordCount(), 1);
  const AppSettings& record = fixture_.record();
  EXPECT_EQ(record.weekStartDayRaw(), 1);
  EXPECT_EQ(record.notificationSoundRaw(), "default");
  EXPECT_EQ(record.autoMarkMissedAfterMinutes(), 60);
  EXPECT_EQ(record.backupFrequencyRaw(), "weekly");
  EXPECT_FALSE(record.requireAuthentication());
  view_.appeared();
  EXPECT_EQ(fixture_.recordCount(), 1);
}

TEST_F(SettingsViewTest, drawingMakesNoRecordAndShowsTheDefaults) {
  EXPECT_EQ(row<PickerRow>(content(), "backupFrequency").valueText, "Weekly");
  EXPECT_TRUE(row<ToggleRow>(content(), "enableHaptics").isOn);
  fixture_.endTurn();
  EXPECT_EQ(fixture_.recordCount(), 0);
}

TEST_F(SettingsViewTest, theFirstRecordIsTheOneInUse) {
  const auto first = AppSettings::make(), second = AppSettings::make();
  fixture_.context().insert(first);
  fixture_.context().insert(second);
  EXPECT_TRUE(view_.setToggle("requireAuthentication", true));
  EXPECT_TRUE(first->requireAuthentication());
  EXPECT_FALSE(second->requireAuthentication());
  EXPECT_TRUE(row<ToggleRow>(content(), "requireAuthentication").isOn);
}

TEST_F(SettingsViewTest, pickersOfferTheirCasesUnderTheirOwnNames) {
  struct Case {
    std::string id, selected, shown;
    std::vector<PickerOption> options;
  };
  for (const Case& expected :
       std::vector<Case>{{"weekStartDay", "1", "Sunday", {{"1", "Sunday"}, {"2", "Monday"}, {"7", "Saturday"}}},
                         {"notificationSound",
                          "default",
                          "Default",
                          {{"default", "Default"},
                           {"chime", "Chime"},
                           {"bell", "Bell"},
                           {"gentle", "Gentle"},
                           {"urgent", "Urgent"},
                           {"silent", "Silent"}}},
                         {"backupFrequency",
                          "weekly",
                          "Weekly",
                          {{"never", "Never"}, {"daily", "Daily"}, {"weekly", "Weekly"}, {"monthly", "Monthly"}}}}) {
    const auto picker = row<PickerRow>(content(), expected.id);
    EXPECT_EQ(picker.selected, expected.selected);
    EXPECT_EQ(picker.valueText, expected.shown);
    EXPECT_EQ(picker.options, expected.options);
  }
}

TEST_F(SettingsViewTest, pickersWriteTheRawValue) {
  for (const auto& [option, raw] : {std::pair{"2", 2}, {"7", 7}, {"1", 1}}) {
    EXPECT_TRUE(view_.pick("weekStartDay", option));
    EXPECT_EQ(fixture_.record().weekStartDayRaw(), raw);
    EXPECT_EQ(row<PickerRow>(content(), "weekStartDay").selected, option);
  }
  for (const NotificationSound sound : kAllNotificationSounds) {
    EXPECT_TRUE(view_.pick("notificationSound", rawValue(sound)));
    EXPECT_EQ(fixture_.record().notificationSoundRaw(), rawValue(sound));
  }
  for (const BackupFrequency frequency : kAllBackupFrequencies) {
    EXPECT_TRUE(view_.pick("backupFrequency", rawValue(frequency)));
    EXPECT_EQ(fixture_.record().backupFrequencyRaw(), rawValue(frequency));
  }
}

TEST_F(SettingsViewTest, togglesWriteTheirField) {
  view_.appeared();
  const AppSettings& record = fixture_.record();
  for (const auto& [id, field] : std::initializer_list<std::pair<const char*, const Stored<bool>&>>{
           {"use24HourTime", record.use24HourTime},
           {"showMedicineIcons", record.showMedicineIcons},
           {"enableHaptics", record.enableHaptics},
           {"enableiCloudSync", record.enableiCloudSync},
           {"enableLocalBackup", record.enableLocalBackup},
           {"requireAuthentication", record.requireAuthentication}}) {
    for (const bool isOn : {true, false}) {
      EXPECT_TRUE(view_.setToggle(id, isOn));
      EXPECT_EQ(field(), isOn) << id;
      EXPECT_EQ(row<ToggleRow>(content(), id).isOn, isOn) << id;
    }
  }
}

TEST_F(SettingsViewTest, steppersGoOneByOneWithinTheirRange) {
  struct Case {
    std::string id, least, most;
    int64_t last;
  };
  for (const Case& stepper : {Case{"defaultSnoozeDurationMinutes", "Duration: 1 min", "Duration: 60 min", 60},
                              Case{"defaultMaxSnoozeCount", "Max Count: 1", "Max Count: 10", 10}}) {
    while (view_.decrement(stepper.id)) {
    }
    auto shown = row<StepperRow>(content(), stepper.id);
    EXPECT_EQ(shown.label, stepper.least);
    EXPECT_FALSE(shown.canDecrement);
    int64_t steps = 0;
    while (view_.increment(stepper.id)) ++steps;
    EXPECT_EQ(steps, stepper.last - 1);
    shown = row<StepperRow>(content(), stepper.id);
    EXPECT_EQ(shown.label, stepper.most);
    EXPECT_EQ(shown.value, stepper.last);
    EXPECT_FALSE(shown.canIncrement);
    EXPECT_EQ((std::array{shown.least, shown.most, shown.step}), (std::array<int64_t, 3>{1, stepper.last, 1}));
  }
}

TEST_F(SettingsViewTest, aValueOutsideTheRangeIsShownUnchangedUntilSomebodySteps) {
  view_.appeared();
  AppSettings& record = fixture_.record();
  record.defaultSnoozeDurationMinutes = 1000;
  record.defaultMaxSnoozeCount = -5;
  fixture_.endTurn();
  EXPECT_EQ(row<StepperRow>(content(), "defaultSnoozeDurationMinutes").label, "Duration: 1000 min");
  EXPECT_EQ(row<StepperRow>(content(), "defaultMaxSnoozeCount").label, "Max Count: -5");
  fixture_.endTurn();
  EXPECT_EQ(record.defaultSnoozeDurationMinutes(), 1000);
  EXPECT_EQ(record.defaultMaxSnoozeCount(), -5);

  EXPECT_FALSE(view_.increment("defaultSnoozeDurationMinutes"));
  EXPECT_EQ(record.defaultSnoozeDurationMinutes(), 1000);
  EXPECT_TRUE(view_.decrement("defaultSnoozeDurationMinutes"));
  EXPECT_EQ(record.defaultSnoozeDurationMinutes(), 60);
  EXPECT_TRUE(view_.increment("defaultMaxSnoozeCount"));
  EXPECT_EQ(record.defaultMaxSnoozeCount(), 1);
}

TEST_F(SettingsViewTest, aPickerShowsWhatAnUnknownValueReadsAsAndKeepsItUntilSomebodyPicks) {
  view_.appeared();
  AppSettings& record = fixture_.record();
  record.weekStartDayRaw = 3;
  record.notificationSoundRaw = "gong";
  record.backupFrequencyRaw = "yearly";
  EXPECT_EQ(row<PickerRow>(content(), "weekStartDay").valueText, "Sunday");
  EXPECT_EQ(row<PickerRow>(content(), "notificationSound").valueText, "Default");
  EXPECT_EQ(row<PickerRow>(content(), "backupFrequency").valueText, "Weekly");
  fixture_.endTurn();
  EXPECT_EQ(record.weekStartDayRaw(), 3);
  EXPECT_EQ(record.notificationSoundRaw(), "gong");
  EXPECT_EQ(record.backupFrequencyRaw(), "yearly");
  EXPECT_TRUE(view_.pick("notificationSound", "default"));
  EXPECT_EQ(record.notificationSoundRaw(), "default");
}

TEST_F(SettingsViewTest, whatNoControlOffersChangesNothing) {
  view_.appeared();
  EXPECT_FALSE(view_.setToggle("enableCriticalAlerts", true)) << "has no control on this screen";
  EXPECT_FALSE(view_.setNumber("reminderAdvanceMinutes", 5));
  EXPECT_FALSE(view_.setNumber("autoMarkMissedAfterMinutes", 5));
  EXPECT_FALSE(view_.increment("autoMarkMissedAfterMinutes"));
  EXPECT_FALSE(view_.decrement("weekStartDay"));
  EXPECT_FALSE(view_.pick("weekStartDay", "3"));
  EXPECT_FALSE(view_.pick("weekStartDay", "monday"));
  EXPECT_FALSE(view_.pick("notificationSound", "Chime"));
  EXPECT_FALSE(view_.pick("backupFrequency", ""));
  EXPECT_FALSE(view_.pick("use24HourTime", "true"));
  EXPECT_FALSE(view_.setNumber("defaultSnoozeDurationMinutes", 0));
  EXPECT_FALSE(view_.setNumber("defaultSnoozeDurationMinutes", 61));
  EXPECT_FALSE(view_.setNumber("defaultMaxSnoozeCount", 11));
  const AppSettings untouched;
  forEachField<AppSettings>([&](std::string_view name, auto member) {
    if (name == "id") return;
    EXPECT_EQ((fixture_.record().*member)(), (untouched.*member)()) << name;
  });
}

TEST_F(SettingsViewTest, aSetterMakesTheRecordWhenThereIsNone) {
  EXPECT_TRUE(view_.setNumber("defaultMaxSnoozeCount", 7));
  ASSERT_EQ(fixture_.recordCount(), 1);
  EXPECT_EQ(fixture_.record().defaultMaxSnoozeCount(), 7);
}

TEST_F(SettingsViewTest, statusOffersToEnableNotificationsUntilTheyAreAllowed) {
  auto status = row<ValueRow>(content(), "notificationStatus");
  EXPECT_EQ(status.label, "Status");
  EXPECT_EQ(status.text, "");
  EXPECT_EQ(status.action, (ActionItem{"enableNotifications", "Enable", ""}));
  fixture_.center.calls.clear();
  view_.enableNotifications();
  EXPECT_EQ(fixture_.center.calls, Names{"requestAuthorization 7"});
  status = row<ValueRow>(content(), "notificationStatus");
  EXPECT_EQ(status.text, "Enabled");
  EXPECT_EQ(status.symbol, "checkmark.circle.fill");
  EXPECT_EQ(status.action, std::nullopt);
}

TEST_F(SettingsViewTest, statusStaysWhenPermissionIsRefused) {
  fixture_.center.grantsPermission = false;
  view_.enableNotifications();
  EXPECT_EQ(row<ValueRow>(content(), "notificationStatus").action, (ActionItem{"enableNotifications", "Enable", ""}));
}

TEST_F(SettingsViewTest, lastBackupIsShownRelativeToNowOnceThereIsOne) {
  view_.appeared();
  EXPECT_EQ(rowIn(content().sections, "lastBackup"), nullptr);
  fixture_.record().lastBackupDate = kNow - 3h;
  const auto last = row<ValueRow>(content(), "lastBackup");
  EXPECT_EQ(last.label, "Last Backup");
  EXPECT_EQ(last.text, "3 hr. ago");
  const Names rows = outline(content());
  const auto found = std::find(rows.begin(), rows.end(), "value Last Backup");
  ASSERT_NE(found, rows.end());
  EXPECT_EQ(*(found - 1), "picker Auto-Backup");
  EXPECT_EQ(*(found + 1), "button Create Backup");
}

TEST_F(SettingsViewTest, aboutTellsTheVersionAndTheNumberOfMedicines) {
  EXPECT_EQ(row<ValueRow>(content(), "version").text, "2.5");
  EXPECT_EQ(row<ValueRow>(content(), "medicines").text, "0");
  for (const std::string name : {"Aspirin", "Zinc"})
    fixture_.add(medicineNamed(name, daily({{8, 0}})))->isActive = false;
  EXPECT_EQ(row<ValueRow>(content(), "medicines").text, "2");
  for (const std::string id : {"privacyPolicy", "termsOfService"}) {
    EXPECT_EQ(row<LinkRow>(content(), id).symbol, "arrow.up.right.square");
  }
}

TEST_F(SettingsViewTest, aProgramWithoutAVersionShowsOnePointZero) {
  fixture_.bundle.shortVersion.clear();
  EXPECT_EQ(row<ValueRow>(fixture_.makeView().content(), "version").text, "1.0");
}

TEST_F(SettingsViewTest, changesElsewhereAreFollowed) {
  view_.appeared();
  EXPECT_FALSE(row<ToggleRow>(content(), "use24HourTime").isOn);
  fixture_.record().use24HourTime = true;
  EXPECT_TRUE(row<ToggleRow>(content(), "use24HourTime").isOn);
}

/// Every text that the languages lay over differs in the pseudo language.
TEST_F(SettingsViewTest, everyOwnTextPassesThroughTheLanguage) {
  SettingsFixture pseudo(kNow, {.language = "en-XA"});
  SettingsView other = pseudo.makeView();
  for (SettingsView* view : {&view_, &other}) {
    view->openBackupSheet();
    view->openRestoreSheet();
  }
  fixture_.settle();
  pseudo.settle();
  const Json english = toJson(content()), drawnOut = toJson(other.content());
  const std::function<void(const Json&, const Json&, const std::string&)> compare =
      [&](const Json& one, const Json& two, const std::string& name) {
        static const Names kOwn = {"title", "label", "footer", "valueText", "text"};
        ASSERT_EQ(one.size(), two.size()) << name;
        if (one.is_structured()) {
          auto at = two.begin();
          for (const auto& [key, value] : one.items()) compare(value, *at++, one.is_object() ? key : name);
        } else if (std::count(kOwn.begin(), kOwn.end(), name) > 0 && one.is_string() && one != "" && one != "0" &&
                   one != "2.5") {
          EXPECT_NE(one, two) << name;
        }
      };
  compare(english, drawnOut, "");
}

}  // namespace
}  // namespace pillora

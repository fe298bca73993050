// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"
#include "platform/Bundle.h"

namespace pillora {
namespace {

class SettingsCommands : public Cli {};

TEST_F(SettingsCommands, membersOfSettings) {
  add({"Aspirin"});
  const Json settings = json({"settings"});
  ASSERT_TRUE(hasMembers(settings, {"title", "record", "notificationStatus", "medicines", "version", "lastBackup",
                                    "unsaved", "sections", "notes"}));
  EXPECT_EQ(settings.at("title"), "Settings");
  EXPECT_EQ(settings.at("medicines"), 1);
  EXPECT_EQ(settings.at("version"), Bundle().shortVersion);
  EXPECT_TRUE(settings.at("lastBackup").is_null());
  EXPECT_TRUE(settings.at("unsaved").is_null());
  EXPECT_EQ(settings.at("sections").size(), 7u);
  const Json record = settings.at("record");
  EXPECT_EQ(membersOf(record),
            (Words{"id", "weekStartDayRaw", "notificationSoundRaw", "enableCriticalAlerts", "reminderAdvanceMinutes",
                   "autoMarkMissedAfterMinutes", "defaultSnoozeDurationMinutes", "defaultMaxSnoozeCount",
                   "backupFrequencyRaw", "lastBackupDate", "enableiCloudSync", "enableLocalBackup", "use24HourTime",
                   "showMedicineIcons", "enableHaptics", "requireAuthentication"}));
  EXPECT_EQ(record.at("weekStartDayRaw"), 1);
  EXPECT_EQ(record.at("backupFrequencyRaw"), "weekly");
  EXPECT_TRUE(record.at("lastBackupDate").is_null());
  EXPECT_EQ(record.at("requireAuthentication"), false);
}

TEST_F(SettingsCommands, openingTheScreenMakesTheRecordOnce) {
  const std::string id = json({"settings"}).at("record").at("id");
  EXPECT_EQ(json({"settings"}).at("record").at("id"), id);
}

TEST_F(SettingsCommands, statusIsThatOfTheNotificationCentre) {
  EXPECT_EQ(json({"settings"}).at("notificationStatus"), "Enable");
  center.settings.authorizationStatus = UNAuthorizationStatus::authorized;
  EXPECT_EQ(json({"settings"}).at("notificationStatus"), "Enabled");
  EXPECT_EQ(json({"--store", store, "settings"}).at("notificationStatus"), "Enable") << "a centre of its own";
  const std::string reminders = folder.file("reminders.db");
  run({"--store", store, "--reminders", reminders, "launch"});
  EXPECT_EQ(json({"--store", store, "--reminders", reminders, "settings"}).at("notificationStatus"), "Enabled");
}

TEST_F(SettingsCommands, setWritesEachOfTheElevenFields) {
  struct Case {
    std::string field, value, stored;
    Json expected;
  };
  for (const Case& change :
       std::vector<Case>{{"weekStartDay", "2", "weekStartDayRaw", 2},
                         {"weekStartDay", "7", "weekStartDayRaw", 7},
                         {"notificationSound", "gentle", "notificationSoundRaw", "gentle"},
                         {"backupFrequency", "never", "backupFrequencyRaw", "never"},
                         {"defaultSnoozeDurationMinutes", "60", "defaultSnoozeDurationMinutes", 60},
                         {"defaultMaxSnoozeCount", "1", "defaultMaxSnoozeCount", 1},
                         {"use24HourTime", "yes", "use24HourTime", true},
                         {"showMedicineIcons", "no", "showMedicineIcons", false},
                         {"enableHaptics", "no", "enableHaptics", false},
                         {"enableiCloudSync", "no", "enableiCloudSync", false},
                         {"enableLocalBackup", "no", "enableLocalBackup", false},
                         {"requireAuthentication", "no", "requireAuthentication", false}}) {
    EXPECT_EQ(json({"settings", "set", change.field, change.value}).at("record").at(change.stored), change.expected)
        << change.field;
    EXPECT_EQ(json({"settings"}).at("record").at(change.stored), change.expected) << change.field;
  }
}

TEST_F(SettingsCommands, aValueThatTheControlDoesNotOfferIsRefused) {
  const Json before = json({"settings"}).at("record");
  for (const Words& words : std::vector<Words>{{"weekStartDay", "3"},
                                               {"notificationSound", "gong"},
                                               {"notificationSound", "Chime"},
                                               {"backupFrequency", ""},
                                               {"defaultSnoozeDurationMinutes", "0"},
                                               {"defaultSnoozeDurationMinutes", "61"},
                                               {"defaultMaxSnoozeCount", "-1"},
                                               {"defaultMaxSnoozeCount", "99999999999999999999"}}) {
    const Called called = run(Words{"settings", "set"} + words);
    EXPECT_TRUE(called.failedWith(kRefused)) << words[0] << ' ' << words[1] << ' ' << called.status;
  }
  EXPECT_EQ(run({"settings", "set", "weekStartDay", "3"}).lines,
            Words{"pilloractl: weekStartDay does not offer '3', only 1, 2, 7"});
  EXPECT_EQ(run({"settings", "set", "defaultMaxSnoozeCount", "11"}).lines,
            Words{"pilloractl: defaultMaxSnoozeCount goes from 1 to 10, '11' is not among them"});
  EXPECT_EQ(json({"settings"}).at("record"), before);
}

TEST_F(SettingsCommands, wrongUsage) {
  for (const Words& words : std::vector<Words>{{"settings", "get"},
                                               {"settings", "set"},
                                               {"settings", "set", "weekStartDay"},
                                               {"settings", "set", "weekStartDay", "1", "2"},
                                               {"settings", "set", "weekStartDay", "monday"},
                                               {"settings", "set", "use24HourTime", "maybe"},
                                               {"settings", "set", "defaultMaxSnoozeCount", "few"},
                                               {"settings", "set", "enableCriticalAlerts", "yes"},
                                               {"settings", "set", "lastBackupDate", "2025-01-01T00:00:00Z"},
                                               {"settings", "set", "", "yes"},
                                               {"--documents", "", "settings"},
                                               {"--cloud", "", "settings"}}) {
    EXPECT_TRUE(run(words).failedWith(kWrongUsage)) << words.back();
  }
  EXPECT_FALSE(std::filesystem::exists(store)) << "found before anything is opened";
}

TEST_F(SettingsCommands, settingsAsText) {
  add({"Aspirin"});
  const std::string text = run({"settings"}).out;
  EXPECT_EQ(text.substr(0, text.find("Good to Know")), R"(Settings

Calendar
  Week Starts On          Sunday       weekStartDay
  Use 24-Hour Time        No           use24HourTime

Notifications
  Status                  Not enabled  pilloractl launch
  Sound                   Default      notificationSound

Default Snooze
  Duration: 10 min                     defaultSnoozeDurationMinutes
  Max Count: 3                         defaultMaxSnoozeCount

Display
  Show Medicine Icons     Yes          showMedicineIcons
  Haptic Feedback         Yes          enableHaptics

Backup & Sync
  iCloud Sync             Yes          enableiCloudSync
  Local Backup            Yes          enableLocalBackup
  Auto-Backup             Weekly       backupFrequency
  Create Backup                        pilloractl backup create
  Restore from Backup                  pilloractl backup restore FILE

Privacy
  Require Authentication  No           requireAuthentication

About
  Version                 1.0.0
  Medicines               1

)");
  EXPECT_NE(text.find("  - Restoring a backup plans no reminders."), std::string::npos);
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
}

TEST_F(SettingsCommands, setTellsTheNewValueInOneLine) {
  EXPECT_EQ(run({"settings", "set", "weekStartDay", "2"}).out, "Week Starts On: Monday\n");
  EXPECT_EQ(run({"settings", "set", "defaultSnoozeDurationMinutes", "15"}).out, "Duration: 15 min\n");
  EXPECT_EQ(run({"settings", "set", "enableHaptics", "no"}).out, "Haptic Feedback: No\n");
}

TEST_F(SettingsCommands, aLockedAppShowsAndChangesNoSetting) {
  run({"settings", "set", "requireAuthentication", "yes"});
  EXPECT_EQ(run({"--store", store, "settings"}).status, kLocked);
  EXPECT_EQ(run({"--store", store, "settings", "set", "requireAuthentication", "no"}).status, kLocked);
  EXPECT_EQ(json({"--store", store, "--authenticator", "allow", "settings"}).at("record").at("requireAuthentication"),
            true);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
// The settings as a person changes them, and what comes of it in their record.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class SettingsScreen : public WindowTest {
 protected:
  void openSettings() {
    open();
    key(Qt::Key_5, Qt::ControlModifier);
  }
};

struct Switch {
  const char* label;
  Stored<bool> AppSettings::*field;
};

class EverySwitch : public SettingsScreen, public testing::WithParamInterface<Switch> {};

TEST_P(EverySwitch, writesItsOwnField) {
  const auto& [label, field] = GetParam();
  openSettings();
  const auto record = settings();
  const bool before = (*record.*field)();
  EXPECT_EQ(isOn(label), before);
  tap(label);
  EXPECT_EQ((*record.*field)(), !before);
  EXPECT_EQ(isOn(label), !before);
  touch(label);
  EXPECT_EQ((*record.*field)(), before);
  ASSERT_TRUE(tabTo(label));
  key(Qt::Key_Space);
  EXPECT_EQ((*record.*field)(), !before);
}

INSTANTIATE_TEST_SUITE_P(All, EverySwitch,
                         testing::Values(Switch{"Use 24-Hour Time", &AppSettings::use24HourTime},
                                         Switch{"Show Medicine Icons", &AppSettings::showMedicineIcons},
                                         Switch{"Haptic Feedback", &AppSettings::enableHaptics},
                                         Switch{"iCloud Sync", &AppSettings::enableiCloudSync},
                                         Switch{"Local Backup", &AppSettings::enableLocalBackup}),
                         [](const auto& each) {
                           std::string name = each.param.label;
                           std::erase_if(name, [](char letter) { return letter == ' ' || letter == '-'; });
                           return name;
                         });

TEST_F(SettingsScreen, thePickersWriteWhatIsChosen) {
  openSettings();
  for (const auto& [picker, option] :
       {std::pair("Week Starts On", "Saturday"), std::pair("Sound", "Gentle"), std::pair("Auto-Backup", "Never")}) {
    tap(picker);
    tap(option);
    EXPECT_TRUE(has(QStringLiteral("%1, %2").arg(QLatin1String(picker), QLatin1String(option))));
  }
  EXPECT_EQ(settings()->weekStartDay(), WeekStartDay::saturday);
  EXPECT_EQ(settings()->notificationSound(), NotificationSound::gentle);
  EXPECT_EQ(settings()->backupFrequency(), BackupFrequency::never);
}

TEST_F(SettingsScreen, aMenuThatIsLeftChangesNothing) {
  openSettings();
  const auto before = settings()->notificationSound();
  for (const bool byKey : {true, false}) {
    tap("Sound");
    key(Qt::Key_Down);
    byKey ? key(Qt::Key_Escape) : tapBeside();
    EXPECT_FALSE(has("Chime"));
    EXPECT_EQ(settings()->notificationSound(), before);
  }
}

TEST_F(SettingsScreen, theSteppersStep) {
  openSettings();
  const int64_t minutes = settings()->defaultSnoozeDurationMinutes(), count = settings()->defaultMaxSnoozeCount();
  stepUp("Duration");
  stepDown("Max Count");
  EXPECT_EQ(settings()->defaultSnoozeDurationMinutes(), minutes + 1);
  EXPECT_EQ(settings()->defaultMaxSnoozeCount(), count - 1);
  ASSERT_TRUE(tabTo("Duration"));
  for (const Qt::Key each : {Qt::Key_Minus, Qt::Key_Left}) key(each);
  EXPECT_EQ(settings()->defaultSnoozeDurationMinutes(), minutes - 1);
}

TEST_F(SettingsScreen, aSnoozeOutOfRangeIsShownAndNotRewritten) {
  settings()->defaultSnoozeDurationMinutes = 1000;
  openSettings();
  EXPECT_TRUE(shows("Duration: 1000 min"));
  stepUp("Duration");
  EXPECT_EQ(settings()->defaultSnoozeDurationMinutes(), 1000);
  stepDown("Duration");
  EXPECT_EQ(settings()->defaultSnoozeDurationMinutes(), 60);
}

TEST_F(SettingsScreen, notificationsAreEnabledByAPress) {
  center.grantsPermission = false;
  openSettings();
  EXPECT_TRUE(shows("Notifications are not enabled. Nothing reminds you until they are."));
  center.grantsPermission = true;
  const size_t asked = center.calls.size();
  tap("Enable");
  EXPECT_GT(center.calls.size(), asked);
  EXPECT_TRUE(shows("Enabled"));
  EXPECT_FALSE(has("Enable") || shows("Notifications are not enabled. Nothing reminds you until they are."));
}

TEST_F(SettingsScreen, theLinksOpenTheirPages) {
  openSettings();
  tap("Privacy Policy");
  touch("Terms of Service");
  EXPECT_EQ(desktop_.calls, (std::vector<std::string>{"privacyPolicy", "termsOfService"}));
}

TEST_F(SettingsScreen, theMedicinesAreCounted) {
  for (const char* name : {"Aspirin", "Biotin", "Zinc"}) add(name, {{8, 0}});
  openSettings();
  EXPECT_TRUE(shows("3"));
  add("Iron", {{8, 0}});
  settleAll();
  EXPECT_TRUE(shows("4"));
}

TEST_F(SettingsScreen, whatIsChosenHereIsSeenElsewhere) {
  add("Aspirin", {{20, 0}});
  openSettings();
  tap("Use 24-Hour Time");
  key(Qt::Key_1, Qt::ControlModifier);
  EXPECT_EQ(shows("20:00"), settings()->use24HourTime());
  key(Qt::Key_5, Qt::ControlModifier);
  tap("Use 24-Hour Time");
  key(Qt::Key_1, Qt::ControlModifier);
  EXPECT_EQ(shows("20:00"), settings()->use24HourTime());
  EXPECT_NE(shows("20:00"), shows("8:00 PM"));
}

TEST_F(SettingsScreen, aSwitchHalfUnderTheTabBarIsSwitchedWhereItCanBeSeen) {
  openSettings();
  QQuickItem* const row = seek("text", "Use 24-Hour Time", "ToggleRow");
  ASSERT_NE(row, nullptr);
  constexpr int kStrip = 14, kTabBar = 62;
  const QPoint place = row->mapToScene({40, kStrip / 2.0}).toPoint();
  window_->resize(360, static_cast<int>(row->mapToScene({0, 0}).y()) + kStrip + kTabBar);
  settleAll();
  QTest::mouseClick(window_.get(), Qt::LeftButton, {}, place);
  settleAll();
  EXPECT_TRUE(settings()->use24HourTime());
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "model/AppSettings.h"

#include <gtest/gtest.h>

namespace pillora {
namespace {

TEST(AppSettings, beginWithTheirDefaults) {
  const auto settings = AppSettings::make();
  EXPECT_NE(settings->id(), UUID());
  EXPECT_EQ(settings->weekStartDayRaw(), 1);
  EXPECT_EQ(settings->notificationSoundRaw(), "default");
  EXPECT_FALSE(settings->enableCriticalAlerts());
  EXPECT_EQ(settings->reminderAdvanceMinutes(), 0);
  EXPECT_EQ(settings->autoMarkMissedAfterMinutes(), 60);
  EXPECT_EQ(settings->defaultSnoozeDurationMinutes(), 10);
  EXPECT_EQ(settings->defaultMaxSnoozeCount(), 3);
  EXPECT_EQ(settings->backupFrequencyRaw(), "weekly");
  EXPECT_FALSE(settings->lastBackupDate());
  EXPECT_TRUE(settings->enableiCloudSync());
  EXPECT_TRUE(settings->enableLocalBackup());
  EXPECT_FALSE(settings->use24HourTime());
  EXPECT_TRUE(settings->showMedicineIcons());
  EXPECT_TRUE(settings->enableHaptics());
  EXPECT_FALSE(settings->requireAuthentication());
  EXPECT_NE(AppSettings::make()->id(), settings->id());
}

TEST(AppSettings, listTheirFieldsInOrder) {
  std::vector<std::string_view> names;
  forEachField<AppSettings>([&](std::string_view name, auto) { names.push_back(name); });
  EXPECT_EQ(names,
            (std::vector<std::string_view>{
                "id", "weekStartDayRaw", "notificationSoundRaw", "enableCriticalAlerts", "reminderAdvanceMinutes",
                "autoMarkMissedAfterMinutes", "defaultSnoozeDurationMinutes", "defaultMaxSnoozeCount",
                "backupFrequencyRaw", "lastBackupDate", "enableiCloudSync", "enableLocalBackup", "use24HourTime",
                "showMedicineIcons", "enableHaptics", "requireAuthentication"}));
}

TEST(AppSettings, aWeekStartThatIsNoneReadsAsSundayAndStays) {
  const struct {
    int64_t raw;
    WeekStartDay day;
  } kCases[] = {{0, WeekStartDay::sunday},         {1, WeekStartDay::sunday},   {2, WeekStartDay::monday},
                {3, WeekStartDay::sunday},         {7, WeekStartDay::saturday}, {8, WeekStartDay::sunday},
                {INT64_MIN, WeekStartDay::sunday}, {-7, WeekStartDay::sunday},  {INT64_MAX, WeekStartDay::sunday}};
  AppSettings settings;
  for (const auto& each : kCases) {
    settings.weekStartDayRaw = each.raw;
    EXPECT_EQ(settings.weekStartDay(), each.day) << each.raw;
    EXPECT_EQ(settings.weekStartDayRaw(), each.raw);
  }
}

TEST(AppSettings, unknownSoundAndFrequencyReadAsTheDefaultsAndStay) {
  AppSettings settings;
  for (const char* text : {"", "Chime", "gong", "default "}) {
    settings.notificationSoundRaw = std::string(text);
    settings.backupFrequencyRaw = std::string(text);
    EXPECT_EQ(settings.notificationSound(), NotificationSound::default_) << text;
    EXPECT_EQ(settings.backupFrequency(), BackupFrequency::weekly) << text;
    EXPECT_EQ(settings.notificationSoundRaw(), text);
    EXPECT_EQ(settings.backupFrequencyRaw(), text);
  }
}

TEST(AppSettings, writingACaseStoresItsRawValue) {
  AppSettings settings;
  settings.setNotificationSound(NotificationSound::urgent);
  settings.setBackupFrequency(BackupFrequency::never);
  settings.setWeekStartDay(WeekStartDay::saturday);
  EXPECT_EQ(settings.notificationSoundRaw(), "urgent");
  EXPECT_EQ(settings.backupFrequencyRaw(), "never");
  EXPECT_EQ(settings.weekStartDayRaw(), 7);
  EXPECT_EQ(settings.notificationSound(), NotificationSound::urgent);
  EXPECT_EQ(settings.backupFrequency(), BackupFrequency::never);
  EXPECT_EQ(settings.weekStartDay(), WeekStartDay::saturday);
}

TEST(WeekStartDay, isMadeOfThreeNumbersOnly) {
  EXPECT_EQ(weekStartDay(1), WeekStartDay::sunday);
  EXPECT_EQ(weekStartDay(2), WeekStartDay::monday);
  EXPECT_EQ(weekStartDay(7), WeekStartDay::saturday);
  for (const int64_t raw : {int64_t{0}, int64_t{3}, int64_t{6}, int64_t{8}, int64_t{-1}, int64_t{1} << 32 | 1}) {
    EXPECT_FALSE(weekStartDay(raw)) << raw;
  }
}

TEST(NotificationSound, hasSixCasesInOrder) {
  std::vector<std::string_view> texts;
  for (const auto sound : kAllNotificationSounds) {
    texts.push_back(rawValue(sound));
    EXPECT_EQ(notificationSound(rawValue(sound)), sound);
  }
  EXPECT_EQ(texts, (std::vector<std::string_view>{"default", "chime", "bell", "gentle", "urgent", "silent"}));
  EXPECT_FALSE(notificationSound("Default"));
  EXPECT_FALSE(notificationSound(""));
}

TEST(BackupFrequency, hasFourCasesInOrder) {
  std::vector<std::string_view> texts;
  for (const auto frequency : kAllBackupFrequencies) {
    texts.push_back(rawValue(frequency));
    EXPECT_EQ(backupFrequency(rawValue(frequency)), frequency);
  }
  EXPECT_EQ(texts, (std::vector<std::string_view>{"never", "daily", "weekly", "monthly"}));
  EXPECT_FALSE(backupFrequency("Weekly"));
}

}  // namespace
}  // namespace pillora

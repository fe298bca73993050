// SPDX-License-Identifier: MIT
#include "store/SettingsInUse.h"

#include <gtest/gtest.h>

#include "StoreTest.h"

namespace pillora {
namespace {

class SettingsInUseTest : public StoreTest {};

TEST_F(SettingsInUseTest, aStoreWithoutSettingsGetsExactlyOneRecordWithTheDefaults) {
  const auto container = openInMemory();
  const auto settings = settingsInUse(container->mainContext());
  queue_.drain();
  EXPECT_EQ(settingsInUse(container->mainContext()), settings);
  EXPECT_EQ(all<AppSettings>(container->mainContext()), std::vector{settings});
  EXPECT_EQ(settings->autoMarkMissedAfterMinutes(), 60);
  EXPECT_EQ(settings->backupFrequencyRaw(), "weekly");
  EXPECT_FALSE(settings->requireAuthentication());
}

TEST_F(SettingsInUseTest, ofSeveralRecordsTheFirstInsertedIsInUse) {
  const auto container = openInMemory();
  const auto first = AppSettings::make();
  container->mainContext().insert(first);
  container->mainContext().insert(AppSettings::make());
  queue_.drain();
  EXPECT_EQ(settingsInUse(container->mainContext()), first);
}

TEST_F(SettingsInUseTest, everyFieldIsKept) {
  {
    const auto container = open(store());
    const auto settings = settingsInUse(container->mainContext());
    settings->setNotificationSound(NotificationSound::urgent);
    settings->setWeekStartDay(WeekStartDay::saturday);
    settings->lastBackupDate = kMorning;
    settings->requireAuthentication = true;
    queue_.drain();
  }
  const auto container = open(store());
  const auto settings = settingsInUse(container->mainContext());
  EXPECT_EQ(settings->notificationSoundRaw(), "urgent");
  EXPECT_EQ(settings->weekStartDayRaw(), 7);
  EXPECT_EQ(settings->lastBackupDate(), kMorning);
  EXPECT_TRUE(settings->requireAuthentication());
  EXPECT_TRUE(settings->enableiCloudSync());
}

TEST_F(SettingsInUseTest, twoProgramsThatStartTogetherMakeOneRecord) {
  const auto one = open(store());
  const auto other = open(store());
  EXPECT_TRUE(all<AppSettings>(other->mainContext()).empty());
  const auto settings = settingsInUse(one->mainContext());
  queue_.drain();
  EXPECT_EQ(settingsInUse(other->mainContext())->id(), settings->id());
  queue_.drain();
  EXPECT_EQ(all<AppSettings>(other->mainContext()).size(), 1U);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
// Backups between two stores, with real files and a real queue.
#include <gtest/gtest.h>

#include <future>
#include <memory>

#include "backup/BackupService.h"
#include "backup/SampleBackup.h"
#include "doubles/FakeClock.h"
#include "doubles/Places.h"
#include "doubles/TemporaryFolder.h"
#include "linux/PosixFileManager.h"
#include "linux/QueuedMainExecutor.h"
#include "linux/ThreadExecutor.h"
#include "store/ModelContainer.h"
#include "store/SettingsInUse.h"

namespace pillora {
namespace {

class BackupRestore : public testing::Test {
 protected:
  std::unique_ptr<ModelContainer> emptyStore() {
    return valueOrAbort(ModelContainer::open({.isStoredInMemoryOnly = true}, executor_));
  }

  static std::vector<std::shared_ptr<Medicine>> medicinesOf(ModelContainer& store) {
    return *store.mainContext().fetch(FetchDescriptor<Medicine>());
  }

  std::shared_ptr<Medicine> aspirin() const {
    NewMedicine values;
    values.name = "Aspirin";
    return Medicine::make(values, clock_.now());
  }

  /// What a restore does with a file.
  void restore(const std::string& path, ModelContainer& store) {
    const auto text = files_.contents(path);
    ASSERT_TRUE(text) << text.error().description;
    const auto backup = decodeBackup(*text);
    ASSERT_TRUE(backup) << backup.error().description;
    for (const MedicineBackup& each : backup->medicines) {
      store.mainContext().insert(Medicine::make(newMedicine(each), clock_.now()));
    }
    if (backup->settings) restoreSettings(*backup->settings, *settingsInUse(store.mainContext()));
    executor_.drain();
  }

  Result<std::string> backUp(ModelContainer& store) {
    const auto settings = store.mainContext().fetch(FetchDescriptor<AppSettings>());
    std::optional<Result<std::string>> outcome;
    service_.createLocalBackup(medicinesOf(store), settings->empty() ? nullptr : settings->front().get(),
                               [&](Result<std::string> result) { outcome = std::move(result); });
    waitForQueue();
    return *std::move(outcome);
  }

  void waitForQueue() {
    std::promise<void> done;
    background_.post([&] { done.set_value(); });
    done.get_future().wait();
    executor_.drain();
  }

  TemporaryFolder folder_;
  FakeClock clock_{at("2025-01-10T13:00:00Z")};
  std::unique_ptr<Texts> texts_ = textsOf("en_US", "America/New_York");
  QueuedMainExecutor executor_;
  PosixFileManager files_{[this] { return folder_.path(); }, [] { return std::nullopt; }};
  ThreadExecutor background_;
  BackupService service_{{files_, background_, executor_, clock_, *texts_, {}}};
};

TEST_F(BackupRestore, whatOneStoreHeldTheOtherHolds) {
  const auto from = emptyStore();
  const BackupData sample = sampleBackup();
  for (const MedicineBackup& each : sample.medicines) {
    from->mainContext().insert(Medicine::make(newMedicine(each), at("2025-01-01T00:00:00Z")));
  }
  restoreSettings(*sample.settings, *settingsInUse(from->mainContext()));
  executor_.drain();
  const auto path = backUp(*from);
  ASSERT_TRUE(path) << path.error().description;

  const auto to = emptyStore();
  const auto settings = settingsInUse(to->mainContext());
  settings->lastBackupDate = at("2024-12-24T18:00:00Z");
  const UUID settingsId = settings->id();
  restore(*path, *to);

  const auto originals = medicinesOf(*from), copies = medicinesOf(*to);
  ASSERT_EQ(copies.size(), 2u);
  for (size_t i = 0; i < copies.size(); ++i) {
    EXPECT_NE(copies[i]->id(), originals[i]->id()) << "a restored medicine is a new one";
    EXPECT_EQ(copies[i]->createdAt(), clock_.now());
    EXPECT_EQ(copies[i]->updatedAt(), clock_.now());
    EXPECT_EQ(copies[i]->intervalData(), originals[i]->intervalData());
    EXPECT_EQ(copies[i]->interval(), sample.medicines[i].interval);
    EXPECT_EQ(copies[i]->doseLogs().size(), 0u);
  }
  // Backed up again, the two stores differ in nothing but identities.
  const auto again = backUp(*to);
  ASSERT_TRUE(again);
  auto copied = decodeBackup(*files_.contents(*again));
  ASSERT_TRUE(copied);
  for (size_t i = 0; i < copied->medicines.size(); ++i) copied->medicines[i].id = sample.medicines[i].id;
  EXPECT_EQ(copied->medicines, sample.medicines);
  EXPECT_EQ(copied->settings, sample.settings);
  EXPECT_EQ(settings->lastBackupDate(), at("2024-12-24T18:00:00Z"));
  EXPECT_EQ(settings->id(), settingsId);
}

TEST_F(BackupRestore, withoutASettingsRecordEverySettingStaysAsItWas) {
  const auto from = emptyStore();
  from->mainContext().insert(aspirin());
  const auto path = backUp(*from);
  ASSERT_TRUE(path);
  const auto to = emptyStore();
  settingsInUse(to->mainContext())->setNotificationSound(NotificationSound::bell);
  restore(*path, *to);
  EXPECT_EQ(medicinesOf(*to).size(), 1u);
  EXPECT_EQ(settingsInUse(to->mainContext())->notificationSound(), NotificationSound::bell);
}

TEST_F(BackupRestore, restoringTwiceGivesEveryMedicineTwice) {
  const auto store = emptyStore();
  store->mainContext().insert(aspirin());
  const auto path = backUp(*store);
  ASSERT_TRUE(path);
  restore(*path, *store);
  restore(*path, *store);
  EXPECT_EQ(medicinesOf(*store).size(), 3u);
}

TEST_F(BackupRestore, aBackupIsListedWithItsSizeAndAgeAndCanBeDeleted) {
  const auto path = backUp(*emptyStore());
  ASSERT_TRUE(path);
  std::optional<Result<std::vector<BackupInfo>>> listed;
  service_.listLocalBackups([&](auto result) { listed = std::move(result); });
  waitForQueue();
  ASSERT_TRUE(listed && *listed);
  ASSERT_EQ((*listed)->size(), 1u);
  const BackupInfo& info = (*listed)->front();
  EXPECT_EQ(info.url, *path);
  EXPECT_EQ(info.fileSize, static_cast<int64_t>(files_.contents(*path)->size()));
  EXPECT_EQ(info.createdAt, files_.attributesOfItem(*path)->creationDate.value_or(clock_.now()));
  std::optional<Result<void>> removed;
  service_.deleteBackup(info.url, [&](auto result) { removed = std::move(result); });
  waitForQueue();
  EXPECT_TRUE(removed && *removed);
  EXPECT_FALSE(files_.fileExists(*path));
}

TEST_F(BackupRestore, tenThousandMedicinesFit) {
  BackupData backup = sampleBackup();
  const MedicineBackup aspirin = backup.medicines[0];
  backup.medicines.assign(10'000, aspirin);
  const auto text = encodeBackup(backup);
  ASSERT_TRUE(text) << text.error().description;
  EXPECT_LT(text->size(), kLargestFile / 4);
  EXPECT_EQ(decodeBackup(*text)->medicines.size(), 10'000u);
}

}  // namespace
}  // namespace pillora

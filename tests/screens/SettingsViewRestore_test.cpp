// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <thread>

#include "SettingsFixture.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "linux/ThreadExecutor.h"

// How the settings screen restores a backup.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kNow = at("2025-01-10T10:30:00-05:00");
constexpr const char* kLocalFile = "/documents/Backups/Pillora_Backup_2025-01-10_10-30-00.json";
constexpr const char* kCloudFile = "/cloud/Backups/Pillora_Backup_2025-01-10_10-30-00.json";

using Names = std::vector<std::string>;

class SettingsViewRestore : public testing::Test {
 protected:
  SettingsContent content() const { return view_.content(); }
  std::shared_ptr<Medicine> add(const std::string& name) {
    return fixture_.add(medicineNamed(name, daily({{8, 0}, {20, 0}})));
  }
  std::string put(const std::string& name, const std::string& contents) {
    const std::string path = "/documents/Backups/" + name;
    EXPECT_TRUE(fixture_.files.write(path, contents));
    return path;
  }
  void restore(const std::string& path) {
    view_.restoreBackup(path);
    fixture_.settle();
  }
  std::string errorMessage() const {
    for (const MessageAlert& alert : content().alerts) {
      if (alert.id == "backupError") return alert.message;
    }
    return {};
  }

  SettingsFixture fixture_{kNow};
  SettingsView view_ = fixture_.makeView();
};

constexpr const char* kEmptyBackup = R"({"medicines": [], "createdAt": "2025-01-01T00:00:00Z", "appVersion": "9.9"})";

/// Files that notice on which thread they are used.
struct WatchedFiles final : FileManager {
  explicit WatchedFiles(FileManager& files) : inner(files) {}
  std::optional<std::string> documentDirectory() override { return note(inner.documentDirectory()); }
  std::optional<std::string> ubiquityContainer() override { return note(inner.ubiquityContainer()); }
  Result<void> createDirectory(const std::string& path) override { return note(inner.createDirectory(path)); }
  bool fileExists(const std::string& path) override { return note(inner.fileExists(path)); }
  Result<std::vector<std::string>> contentsOfDirectory(const std::string& path) override {
    return note(inner.contentsOfDirectory(path));
  }
  Result<FileAttributes> attributesOfItem(const std::string& path) override {
    return note(inner.attributesOfItem(path));
  }
  Result<void> write(const std::string& path, std::string_view text) override { return note(inner.write(path, text)); }
  Result<std::string> contents(const std::string& path) override { return note(inner.contents(path)); }
  Result<void> removeItem(const std::string& path) override { return note(inner.removeItem(path)); }
  template <typename T>
  T note(T answer) {
    EXPECT_NE(std::this_thread::get_id(), mainThread);
    ++operations;
    return answer;
  }
  FileManager& inner;
  const std::thread::id mainThread = std::this_thread::get_id();
  int operations = 0;
};

TEST_F(SettingsViewRestore, aBackupOfOneStoreRestoresMedicinesAndSettingsInAnother) {
  NewMedicine values = medicineNamed("Aspirin", weekly({2, 4}, {7, 30}));
  values.dosage = "2";
  values.instructions = "with food";
  values.color = "mint";
  values.icon = "lungs";
  values.isActive = false;
  values.allowSnooze = false;
  values.snoozeDurationMinutes = 25;
  values.maxSnoozeCount = 9;
  values.isRepeating = false;
  values.startDate = at("2024-12-01T08:00:00Z");
  values.endDate = at("2025-12-01T08:00:00Z");
  const auto original = fixture_.add(values);
  fixture_.log(original, kNow, DoseStatus::taken);
  add("Zinc");
  view_.appeared();
  AppSettings& settings = fixture_.record();
  settings.weekStartDayRaw = 7;
  settings.notificationSoundRaw = "bell";
  settings.enableCriticalAlerts = true;
  settings.reminderAdvanceMinutes = 5;
  settings.autoMarkMissedAfterMinutes = 90;
  settings.defaultSnoozeDurationMinutes = 42;
  settings.defaultMaxSnoozeCount = 8;
  settings.backupFrequencyRaw = "monthly";
  settings.enableiCloudSync = false;
  settings.enableLocalBackup = false;
  settings.use24HourTime = true;
  settings.showMedicineIcons = false;
  settings.enableHaptics = false;
  settings.requireAuthentication = true;
  view_.createLocalBackup();
  fixture_.settle();

  SettingsFixture other(kNow + 48h, {"Europe/Berlin", "de_DE"});
  other.files.files = fixture_.files.files;
  SettingsView view = other.makeView();
  std::optional<Result<RestoredBackup>> restored;
  view.openRestoreSheet();
  view.restoreBackup(kLocalFile, [&](const auto& outcome) { restored = outcome; });
  EXPECT_FALSE(restored);
  other.settle();

  ASSERT_TRUE(restored && *restored);
  EXPECT_EQ((*restored)->medicines, 2u);
  EXPECT_TRUE((*restored)->settings);
  EXPECT_FALSE(view.content().restoreSheet);
  EXPECT_EQ(view.content().alerts, (std::vector<MessageAlert>{{"restoreComplete", "Restore Complete",
                                                               "Your data has been restored successfully.", "OK"}}));
  EXPECT_EQ(other.medicineNames(), (Names{"Aspirin", "Zinc"})) << "in the file's order";
  const auto medicine = other.context().fetch<Medicine>()->front();
  forEachField<Medicine>([&](std::string_view name, auto member) {
    if (name == "id") {
      EXPECT_NE(medicine->id(), original->id());
    } else if (name == "createdAt" || name == "updatedAt") {
      return;
    } else {
      EXPECT_EQ(((*medicine).*member)(), ((*original).*member)()) << name;
    }
  });
  EXPECT_EQ(medicine->createdAt(), kNow + 48h);
  EXPECT_EQ(medicine->updatedAt(), kNow + 48h);
  EXPECT_TRUE(medicine->doseLogs().empty());
  forEachField<AppSettings>([&](std::string_view name, auto member) {
    if (name != "id" && name != "lastBackupDate") {
      EXPECT_EQ((other.record().*member)(), (settings.*member)()) << name;
    }
  });
  EXPECT_EQ(other.record().lastBackupDate(), std::nullopt);
  EXPECT_TRUE(other.center.added.empty()) << "a restore plans no reminder";
  view.dismissAlert("restoreComplete");
  EXPECT_TRUE(view.content().alerts.empty());
}

TEST_F(SettingsViewRestore, aRestoreKeepsTheDateOfTheLastBackup) {
  view_.createLocalBackup();
  fixture_.settle();
  fixture_.clock.advance(1h);
  restore(kLocalFile);
  EXPECT_EQ(fixture_.record().lastBackupDate(), kNow);
}

TEST_F(SettingsViewRestore, restoringTwiceAddsEveryMedicineTwice) {
  add("Aspirin");
  add("Zinc");
  view_.createLocalBackup();
  fixture_.settle();
  restore(kLocalFile);
  restore(kLocalFile);
  EXPECT_EQ(fixture_.medicineNames(), (Names{"Aspirin", "Zinc", "Aspirin", "Zinc", "Aspirin", "Zinc"}));
}

TEST_F(SettingsViewRestore, pressingRestoreAgainWhileItRunsRestoresOnce) {
  add("Aspirin");
  view_.createLocalBackup();
  fixture_.settle();
  view_.openRestoreSheet();
  fixture_.settle();
  view_.restoreBackup(kLocalFile);
  EXPECT_EQ(content().restoreSheet->progress, "Restoring backup...");
  EXPECT_FALSE(content().restoreSheet->sections.at(0).rows.at(0).isEnabled);
  view_.restoreBackup(kLocalFile);
  fixture_.settle();
  EXPECT_EQ(fixture_.medicineNames(), (Names{"Aspirin", "Aspirin"}));
}

TEST_F(SettingsViewRestore, aFileWithoutSettingsLeavesEverySettingAsItWas) {
  view_.setToggle("use24HourTime", true);
  view_.setNumber("defaultMaxSnoozeCount", 9);
  std::string file = put("a.json", kEmptyBackup);
  restore(file);
  EXPECT_EQ(alertIds(content()), Names{"restoreComplete"});
  EXPECT_TRUE(fixture_.record().use24HourTime());
  EXPECT_EQ(fixture_.record().defaultMaxSnoozeCount(), 9);
}

TEST_F(SettingsViewRestore, aFileWithoutSettingsAddsItsMedicines) {
  view_.appeared();
  fixture_.context().delete_(fixture_.context().fetch<AppSettings>()->front());
  add("Aspirin");
  const auto medicines = *fixture_.context().fetch<Medicine>();
  fixture_.backups.createLocalBackup(medicines, nullptr, [](const auto& made) { EXPECT_TRUE(made); });
  fixture_.settle();
  restore(kLocalFile);
  EXPECT_EQ(fixture_.medicineNames(), (Names{"Aspirin", "Aspirin"}));
  EXPECT_EQ(fixture_.recordCount(), 0) << "no settings, no record";
}

TEST_F(SettingsViewRestore, settingsOfAFileMakeTheRecordWhenThereIsNone) {
  view_.setNumber("defaultMaxSnoozeCount", 9);
  view_.createLocalBackup();
  fixture_.settle();
  SettingsFixture other(kNow);
  other.files.files = fixture_.files.files;
  SettingsView view = other.makeView();
  EXPECT_EQ(other.recordCount(), 0);
  view.restoreBackup(kLocalFile);
  other.settle();
  ASSERT_EQ(other.recordCount(), 1);
  EXPECT_EQ(other.record().defaultMaxSnoozeCount(), 9);
}

TEST_F(SettingsViewRestore, aFileThatIsNoBackupShowsTheDecodersTextAndAddsNothing) {
  add("Aspirin");
  view_.createLocalBackup();
  fixture_.settle();
  view_.dismissAlert("backupCreated");
  const std::string whole = fixture_.files.files.at(kLocalFile).contents;
  ASSERT_NE(whole.find("\"Aspirin\""), std::string::npos);
  const auto replaced = [&](const std::string& from, const std::string& to) {
    std::string text = whole;
    const size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
  };
  view_.openRestoreSheet();
  for (const std::string& hostile :
       {std::string(), std::string("not JSON"), std::string("[]"), std::string("{\"medicines\": []}"),
        whole.substr(0, whole.size() / 2), whole + "x", replaced("\"Aspirin\"", "17"),
        replaced("\"Aspirin\"", "\"\xFF\""), replaced("\"isActive\": true", "\"isActive\": 1"),
        replaced("\"weekly\"", "\"yearly\""), replaced("2025-01-10T15:30:00Z", "2025-01-10T15:30:00.5Z"),
        std::string(100'000, '[')}) {
    const std::string file = put("bad.json", hostile);
    const auto decoded = decodeBackup(hostile);
    ASSERT_FALSE(decoded) << hostile.substr(0, 80);
    restore(file);
    EXPECT_EQ(alertIds(content()), Names{"backupError"});
    EXPECT_EQ(errorMessage(), decoded.error().description);
    EXPECT_FALSE(errorMessage().empty());
    EXPECT_EQ(fixture_.medicineNames(), Names{"Aspirin"});
    EXPECT_TRUE(content().restoreSheet) << "the sheet stays, to try another";
    EXPECT_EQ(content().restoreSheet->progress, std::nullopt);
    view_.dismissAlert("backupError");
  }
}

TEST_F(SettingsViewRestore, aBadMedicineAtTheEndKeepsTheOnesBeforeItOut) {
  for (int i = 0; i < 1000; ++i) add("Medicine " + std::to_string(i));
  view_.createLocalBackup();
  fixture_.settle();
  std::string text = fixture_.files.files.at(kLocalFile).contents;
  const size_t last = text.rfind("\"isRepeating\": true");
  ASSERT_NE(last, std::string::npos);
  text.replace(last, 19, "\"isRepeating\": null");
  SettingsFixture other(kNow);
  ASSERT_TRUE(other.files.write("/bad.json", text));
  SettingsView view = other.makeView();
  view.restoreBackup("/bad.json");
  other.settle();
  EXPECT_EQ(alertIds(view.content()), Names{"backupError"});
  EXPECT_NE(view.content().alerts.at(0).message.find("medicines[999].isRepeating"), std::string::npos)
      << view.content().alerts.at(0).message;
  EXPECT_EQ(*other.context().fetchCount<Medicine>(), 0);
  EXPECT_EQ(other.recordCount(), 0);
}

TEST_F(SettingsViewRestore, aFileThatCannotBeReadShowsWhy) {
  restore("/nowhere.json");
  EXPECT_EQ(errorMessage(), "no such file: /nowhere.json");
  EXPECT_TRUE(fixture_.medicineNames().empty());
}

TEST_F(SettingsViewRestore, restoredValuesAreTakenAsTheyAre) {
  NewMedicine values = medicineNamed("", custom(-61));
  values.color = "plaid";
  values.snoozeDurationMinutes = -1;
  fixture_.add(values);
  view_.createLocalBackup();
  fixture_.settle();
  restore(kLocalFile);
  const auto restored = fixture_.context().fetch<Medicine>()->back();
  EXPECT_EQ(restored->color(), "plaid");
  EXPECT_EQ(restored->snoozeDurationMinutes(), -1);
  EXPECT_EQ(restored->interval().customIntervalMinutes, -61);
}

TEST_F(SettingsViewRestore, whatEndsAfterTheScreenIsGoneChangesNothing) {
  add("Aspirin");
  view_.createLocalBackup();
  fixture_.settle();
  auto gone = std::make_unique<SettingsView>(fixture_.makeView());
  gone->restoreBackup(kLocalFile, [](const auto&) { FAIL(); });
  gone->createiCloudBackup([](const auto&) { FAIL(); });
  gone->openRestoreSheet();
  gone.reset();
  fixture_.settle();
  EXPECT_EQ(fixture_.medicineNames(), Names{"Aspirin"});
  EXPECT_TRUE(fixture_.files.fileExists(kCloudFile)) << "a backup that was begun is still written";
}

TEST_F(SettingsViewRestore, filesAreReadOffTheMainThread) {
  add("Aspirin");
  WatchedFiles files(fixture_.files);
  ThreadExecutor background;
  const BackupEnvironment environment{files,          background,      fixture_.executor,
                                      fixture_.clock, *fixture_.texts, fixture_.bundle};
  BackupService service(environment);
  SettingsView view(fixture_.environment(), environment, service, fixture_.console);
  const auto mainThread = std::this_thread::get_id();
  int outcomes = 0;
  const auto count = [&](const auto&) {
    EXPECT_EQ(std::this_thread::get_id(), mainThread);
    ++outcomes;
  };
  view.createLocalBackup(count);
  while (outcomes < 1) fixture_.endTurn();
  view.restoreBackup(kLocalFile, count);
  while (outcomes < 2) fixture_.endTurn();
  EXPECT_GT(files.operations, 3);
  EXPECT_EQ(fixture_.medicineNames(), (Names{"Aspirin", "Aspirin"}));
}

}  // namespace
}  // namespace pillora

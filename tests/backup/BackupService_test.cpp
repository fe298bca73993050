// SPDX-License-Identifier: MIT
#include "backup/BackupService.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>

#include "backup/BackupData.h"
#include "doubles/FakeBackgroundExecutor.h"
#include "doubles/FakeClock.h"
#include "doubles/InMemoryFileManager.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/Places.h"
#include "linux/QueuedMainExecutor.h"

namespace pillora {
namespace {

using Backups = std::vector<BackupInfo>;
using Medicines = std::vector<std::shared_ptr<Medicine>>;

/// A clock that goes on by a second with every look at it.
class TickingClock final : public Clock {
 public:
  Instant now() const override { return now_ = now_ + std::chrono::seconds(1); }

 private:
  mutable Instant now_ = at("2025-01-10T12:59:58Z");
};

class BackupServices : public testing::Test {
 protected:
  static std::shared_ptr<Medicine> medicineNamed(const std::string& name) {
    NewMedicine values;
    values.name = name;
    values.interval = hourly(6);
    values.startDate = at("2025-01-01T05:00:00Z");
    return Medicine::make(values, at("2025-01-01T05:00:00Z"));
  }

  BackupEnvironment environment() { return {files_, background_, executor_, clock_, *texts_, bundle_}; }

  /// Runs the queue and ends the main thread's turn.
  void finish() {
    background_.runAll();
    executor_.drain();
  }

  template <typename T>
  static auto into(std::optional<Result<T>>& outcome) {
    return [&outcome](Result<T> result) { outcome = std::move(result); };
  }

  Result<std::string> create(bool isCloud, const Medicines& medicines, const AppSettings* settings) {
    std::optional<Result<std::string>> outcome;
    if (isCloud) {
      service_->createiCloudBackup(medicines, settings, into(outcome));
    } else {
      service_->createLocalBackup(medicines, settings, into(outcome));
    }
    finish();
    return *std::move(outcome);
  }

  Result<Backups> list(bool isCloud = false) {
    std::optional<Result<Backups>> outcome;
    isCloud ? service_->listiCloudBackups(into(outcome)) : service_->listLocalBackups(into(outcome));
    finish();
    return *std::move(outcome);
  }

  Result<void> remove(const std::string& url) {
    std::optional<Result<void>> outcome;
    service_->deleteBackup(url, into(outcome));
    finish();
    return *std::move(outcome);
  }

  void put(const std::string& path, std::optional<Instant> createdAt, std::optional<int64_t> size = 1) {
    static_cast<void>(files_.createDirectory(std::filesystem::path(path).parent_path()));
    files_.files[path] = {"{}", createdAt, size};
  }

  static std::vector<std::string> urlsOf(const Backups& backups) {
    std::vector<std::string> urls;
    for (const BackupInfo& each : backups) urls.push_back(each.url);
    return urls;
  }

  FakeClock clock_{at("2025-01-10T13:00:00.75Z")};
  std::unique_ptr<Texts> texts_ = textsOf("en_US", "America/New_York");
  Bundle bundle_{"org.example.Test", "2.3.4"};
  InMemoryFileManager files_{clock_};
  FakeBackgroundExecutor background_;
  QueuedMainExecutor executor_;
  std::unique_ptr<BackupService> service_ = std::make_unique<BackupService>(environment());
};

TEST_F(BackupServices, aBackupIsWrittenToTheFolderOfItsKind) {
  const auto local = create(false, {}, nullptr);
  ASSERT_TRUE(local) << local.error().description;
  EXPECT_EQ(*local, "/documents/Backups/Pillora_Backup_2025-01-10_08-00-00.json");
  const auto cloud = create(true, {}, nullptr);
  ASSERT_TRUE(cloud);
  EXPECT_EQ(*cloud, "/cloud/Backups/Pillora_Backup_2025-01-10_08-00-00.json");
  EXPECT_EQ(files_.files.size(), 2u);
  EXPECT_EQ(files_.files.at(*local).contents, files_.files.at(*cloud).contents) << "nothing says where it lies";
}

TEST_F(BackupServices, aBackupHoldsTheMedicinesInTheirOrderAndTheSettings) {
  const Medicines medicines = {medicineNamed("Zinc"), medicineNamed("Aspirin")};
  medicines[1]->instructions = "with water";
  medicines[1]->isActive = false;
  medicines[1]->endDate = at("2025-02-01T05:00:00Z");
  AppSettings settings;
  settings.setWeekStartDay(WeekStartDay::monday);
  settings.requireAuthentication = true;
  settings.lastBackupDate = at("2024-12-24T18:00:00Z");
  const auto path = create(false, medicines, &settings);
  ASSERT_TRUE(path);
  const auto backup = decodeBackup(files_.files.at(*path).contents);
  ASSERT_TRUE(backup) << backup.error().description;
  ASSERT_EQ(backup->medicines.size(), 2u);
  const MedicineBackup& zinc = backup->medicines[0];
  EXPECT_EQ(zinc.id, medicines[0]->id());
  EXPECT_EQ(zinc.name, "Zinc");
  EXPECT_EQ(zinc.dosage, "1");
  EXPECT_EQ(zinc.unit, "pill");
  EXPECT_EQ(zinc.instructions, "");
  EXPECT_EQ(zinc.color, "blue");
  EXPECT_EQ(zinc.icon, "pills");
  EXPECT_EQ(zinc.interval, hourly(6));
  EXPECT_EQ(zinc.startDate, at("2025-01-01T05:00:00Z"));
  EXPECT_EQ(zinc.endDate, std::nullopt);
  const MedicineBackup& aspirin = backup->medicines[1];
  EXPECT_EQ(aspirin.name, "Aspirin");
  EXPECT_EQ(aspirin.instructions, "with water");
  EXPECT_FALSE(aspirin.isActive);
  EXPECT_EQ(aspirin.endDate, at("2025-02-01T05:00:00Z"));
  ASSERT_TRUE(backup->settings);
  SettingsBackup expected;
  expected.weekStartDay = WeekStartDay::monday;
  expected.requireAuthentication = true;
  EXPECT_EQ(*backup->settings, expected);
  EXPECT_EQ(backup->createdAt, at("2025-01-10T13:00:00Z"));
  EXPECT_EQ(backup->appVersion, "2.3.4");
}

TEST_F(BackupServices, withoutASettingsRecordTheFileHasNone) {
  const auto path = create(false, {medicineNamed("Aspirin")}, nullptr);
  ASSERT_TRUE(path);
  const std::string& text = files_.files.at(*path).contents;
  EXPECT_EQ(text.find("\"settings\""), std::string::npos);
  EXPECT_EQ(decodeBackup(text)->settings, std::nullopt);
}

TEST_F(BackupServices, rawValuesThatAreNoCaseAreWrittenAsTheyRead) {
  AppSettings settings;
  settings.weekStartDayRaw = 5;
  settings.notificationSoundRaw = "foghorn";
  settings.backupFrequencyRaw = "hourly";
  const auto path = create(false, {}, &settings);
  ASSERT_TRUE(path);
  EXPECT_EQ(decodeBackup(files_.files.at(*path).contents)->settings, SettingsBackup());
  EXPECT_EQ(settings.weekStartDayRaw(), 5) << "the record is not put right";
}

TEST_F(BackupServices, anIntervalThatCannotBeReadIsWrittenAsTheFallback) {
  const auto medicine = medicineNamed("Aspirin");
  for (const std::string data : {"", "{", "{\"type\":\"Daily\"}"}) {
    medicine->intervalData = data;
    const auto path = create(false, {medicine}, nullptr);
    ASSERT_TRUE(path);
    EXPECT_EQ(decodeBackup(files_.files.at(*path).contents)->medicines[0].interval, fallbackInterval());
  }
}

TEST_F(BackupServices, withoutAVersionOneIsAssumed) {
  bundle_.shortVersion = "";
  service_ = std::make_unique<BackupService>(environment());
  const auto path = create(false, {}, nullptr);
  ASSERT_TRUE(path);
  EXPECT_EQ(decodeBackup(files_.files.at(*path).contents)->appVersion, "1.0");
}

TEST_F(BackupServices, theRecordsAreReadBeforeTheCallReturns) {
  auto medicine = medicineNamed("Before");
  auto settings = AppSettings::make();
  std::optional<Result<std::string>> outcome;
  service_->createLocalBackup({medicine}, settings.get(), into(outcome));
  medicine->name = "After";
  settings->use24HourTime = true;
  medicine.reset();
  settings.reset();
  finish();
  ASSERT_TRUE(outcome && *outcome);
  const auto backup = decodeBackup(files_.files.at(**outcome).contents);
  EXPECT_EQ(backup->medicines[0].name, "Before");
  EXPECT_FALSE(backup->settings->use24HourTime);
}

TEST_F(BackupServices, theTimeInTheNameAndTheTimeInTheFileAreTwoLooksAtTheClock) {
  const TickingClock clock;
  BackupService service({files_, background_, executor_, clock, *texts_, bundle_});
  std::optional<Result<std::string>> outcome;
  service.createLocalBackup({}, nullptr, into(outcome));
  finish();
  ASSERT_TRUE(outcome && *outcome);
  EXPECT_EQ(decodeBackup(files_.files.at(**outcome).contents)->createdAt, at("2025-01-10T12:59:59Z"));
  EXPECT_EQ(**outcome, "/documents/Backups/Pillora_Backup_2025-01-10_08-00-00.json");
}

TEST_F(BackupServices, theNameHasTheLocalesCalendarAndDigitsInTheZone) {
  const struct {
    const char* locale;
    const char* zone;
    const char* time;
  } kCases[] = {
      {"en_US", "UTC", "2025-01-10_13-00-00"},
      {"de_DE", "Asia/Kolkata", "2025-01-10_18-30-00"},
      {"th_TH", "Asia/Bangkok", "2568-01-10_20-00-00"},
      {"fa_IR", "Asia/Tehran", "۱۴۰۳-۱۰-۲۱_۱۶-۳۰-۰۰"},
      {"ar_EG@numbers=arab", "UTC", "٢٠٢٥-٠١-١٠_١٣-٠٠-٠٠"},
  };
  for (const auto& [locale, zone, time] : kCases) {
    texts_ = textsOf(locale, zone);
    service_ = std::make_unique<BackupService>(environment());
    const auto path = create(false, {}, nullptr);
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, "/documents/Backups/Pillora_Backup_" + std::string(time) + ".json") << locale;
    EXPECT_EQ(decodeBackup(files_.files.at(*path).contents)->createdAt, at("2025-01-10T13:00:00Z")) << locale;
  }
}

TEST_F(BackupServices, twoBackupsInTheSameSecondMakeOneFile) {
  const auto first = create(false, {medicineNamed("First")}, nullptr);
  clock_.advance(std::chrono::milliseconds(200));
  const auto second = create(false, {medicineNamed("Second")}, nullptr);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(*first, *second);
  EXPECT_EQ(files_.files.size(), 1u);
  EXPECT_EQ(decodeBackup(files_.files.at(*second).contents)->medicines[0].name, "Second");
}

TEST_F(BackupServices, withoutAFolderNothingIsWrittenAndTheErrorSaysSo) {
  files_.documents = files_.cloud = std::nullopt;
  EXPECT_EQ(create(false, {}, nullptr).error().description, "Backup directory not found");
  EXPECT_EQ(create(true, {}, nullptr).error().description, "iCloud is not available");
  EXPECT_TRUE(files_.files.empty());
  EXPECT_TRUE(files_.folders.empty());
}

TEST_F(BackupServices, foldersAreLookedForAnewEveryTime) {
  files_.cloud = std::nullopt;
  EXPECT_FALSE(create(true, {}, nullptr));
  files_.cloud = "/mounted";
  EXPECT_TRUE(create(true, {}, nullptr));
  EXPECT_EQ(list(true)->size(), 1u);
  files_.cloud = std::nullopt;
  EXPECT_EQ(list(true)->size(), 0u);
}

TEST_F(BackupServices, theFourErrorsHaveTheirTexts) {
  EXPECT_EQ(localizedDescription(BackupError::directoryNotFound), "Backup directory not found");
  EXPECT_EQ(localizedDescription(BackupError::iCloudNotAvailable), "iCloud is not available");
  EXPECT_EQ(localizedDescription(BackupError::invalidBackupFile), "Invalid backup file");
  EXPECT_EQ(localizedDescription(BackupError::restoreFailed), "Failed to restore backup");
}

TEST_F(BackupServices, failuresOfFilesArePassedOnAsTheyAre) {
  const auto check = [&](const char* operation, auto run) {
    files_.failures = {{operation, std::string("no ") + operation}};
    const auto result = run();
    ASSERT_FALSE(result) << operation;
    EXPECT_EQ(result.error().description, std::string("no ") + operation);
    files_.failures.clear();
  };
  put("/documents/Backups/a.json", clock_.now());
  check("createDirectory", [&] { return create(false, {}, nullptr); });
  check("write", [&] { return create(false, {}, nullptr); });
  check("contentsOfDirectory", [&] { return list(); });
  check("attributesOfItem", [&] { return list(); });
  check("removeItem", [&] { return remove("/documents/Backups/a.json"); });
}

TEST_F(BackupServices, aHalfWrittenFileIsLeft) {
  files_.failures["write"] = "the disk is full";
  EXPECT_EQ(create(false, {medicineNamed("Aspirin")}, nullptr).error().description, "the disk is full");
  ASSERT_EQ(files_.files.size(), 1u);
  EXPECT_FALSE(decodeBackup(files_.files.begin()->second.contents));
}

TEST_F(BackupServices, aBackupThatCouldNotBeReadBackIsNotWritten) {
  const auto medicine = medicineNamed("Aspirin");
  medicine->startDate = Instant::distantFuture();
  EXPECT_FALSE(create(false, {medicine}, nullptr));
  EXPECT_TRUE(files_.files.empty());
}

TEST_F(BackupServices, aFolderThatWasNeverMadeListsNothing) {
  EXPECT_EQ(*list(false), Backups());
  EXPECT_EQ(*list(true), Backups());
  files_.documents = files_.cloud = std::nullopt;
  EXPECT_EQ(*list(false), Backups());
  EXPECT_EQ(*list(true), Backups());
}

TEST_F(BackupServices, whatEndsInJsonIsListedAndNothingElse) {
  for (const char* name : {"Pillora_Backup_a.json", "notes.txt", ".hidden.json", "x.JSON", "json", "b.json.bak",
                           ".json", "other.json", "c.json~"}) {
    put(std::string("/documents/Backups/") + name, clock_.now());
  }
  put("/documents/Backups/folder.json/deeper.json", clock_.now());
  const auto backups = list();
  ASSERT_TRUE(backups);
  const auto urls = urlsOf(*backups);
  EXPECT_EQ(std::set(urls.begin(), urls.end()),
            (std::set<std::string>{"/documents/Backups/Pillora_Backup_a.json", "/documents/Backups/folder.json",
                                   "/documents/Backups/other.json"}));
}

TEST_F(BackupServices, theNewestBirthComesFirstWhateverTheNameSays) {
  put("/documents/Backups/Pillora_Backup_2030-01-01_00-00-00.json", at("2025-01-01T00:00:00Z"), 1500);
  put("/documents/Backups/a.json", at("2025-01-03T00:00:00Z"));
  put("/documents/Backups/b.json", at("2025-01-02T00:00:00Z"));
  const auto backups = list();
  ASSERT_TRUE(backups);
  EXPECT_EQ(urlsOf(*backups), (std::vector<std::string>{"/documents/Backups/a.json", "/documents/Backups/b.json",
                                                        "/documents/Backups/Pillora_Backup_2030-01-01_00-00-00.json"}));
  EXPECT_EQ(backups->back().createdAt, at("2025-01-01T00:00:00Z"));
  EXPECT_EQ(backups->back().fileSize, 1500);
  EXPECT_FALSE(backups->back().isCloudBackup);
}

TEST_F(BackupServices, whatTheFileSystemDoesNotSayIsNowAndZero) {
  put("/cloud/Backups/a.json", std::nullopt, std::nullopt);
  const auto backups = list(true);
  ASSERT_TRUE(backups);
  ASSERT_EQ(backups->size(), 1u);
  EXPECT_EQ(backups->front().createdAt, clock_.now());
  EXPECT_EQ(backups->front().fileSize, 0);
  EXPECT_TRUE(backups->front().isCloudBackup);
}

TEST_F(BackupServices, everyListingGivesNewIdentifiers) {
  put("/documents/Backups/a.json", clock_.now());
  put("/documents/Backups/b.json", clock_.now());
  const auto first = list();
  const auto second = list();
  ASSERT_TRUE(first && second);
  EXPECT_EQ(urlsOf(*first), urlsOf(*second));
  std::set<UUID> ids;
  for (const auto& backups : {*first, *second}) {
    for (const BackupInfo& each : backups) ids.insert(each.id);
  }
  EXPECT_EQ(ids.size(), 4u);
}

TEST_F(BackupServices, exactlyOneFileIsDeleted) {
  put("/documents/Backups/a.json", clock_.now());
  put("/documents/Backups/b.json", clock_.now());
  ASSERT_TRUE(remove("/documents/Backups/a.json"));
  EXPECT_EQ(urlsOf(*list()), std::vector<std::string>{"/documents/Backups/b.json"});
  EXPECT_FALSE(remove("/documents/Backups/a.json"));
}

TEST_F(BackupServices, operationsRunOneByOneOffTheMainThreadAndAnswerOnIt) {
  std::vector<std::string> answers;
  service_->createLocalBackup({}, nullptr, [&](const Result<std::string>&) { answers.push_back("created"); });
  service_->listLocalBackups([&](Result<Backups> backups) { answers.push_back(std::to_string(backups->size())); });
  service_->deleteBackup("/documents/Backups/Pillora_Backup_2025-01-10_08-00-00.json",
                         [&](const Result<void>&) { answers.push_back("deleted"); });
  service_->listLocalBackups([&](Result<Backups> backups) { answers.push_back(std::to_string(backups->size())); });
  EXPECT_TRUE(files_.files.empty()) << "nothing happens within the calls";
  EXPECT_EQ(background_.waiting(), 4u);
  background_.runOne();
  EXPECT_EQ(files_.files.size(), 1u);
  EXPECT_TRUE(answers.empty()) << "the main thread has not come to it";
  executor_.drain();
  EXPECT_EQ(answers, std::vector<std::string>{"created"});
  finish();
  EXPECT_EQ(answers, (std::vector<std::string>{"created", "1", "deleted", "0"}));
}

TEST_F(BackupServices, nobodyIsAnsweredOnceTheServiceIsGone) {
  bool answered = false;
  service_->createLocalBackup({}, nullptr, [&](const Result<std::string>&) { answered = true; });
  service_->listLocalBackups([&](const Result<Backups>&) { answered = true; });
  background_.runOne();
  service_.reset();
  finish();
  EXPECT_FALSE(answered);
  EXPECT_EQ(files_.files.size(), 1u) << "what was asked for is carried through";
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "SettingsFixture.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"

// How the settings screen makes, lists and deletes backups.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kNow = at("2025-01-10T10:30:00-05:00");
constexpr const char* kLocalFile = "/documents/Backups/Pillora_Backup_2025-01-10_10-30-00.json";
constexpr const char* kCloudFile = "/cloud/Backups/Pillora_Backup_2025-01-10_10-30-00.json";

using Names = std::vector<std::string>;

class SettingsViewBackups : public testing::Test {
 protected:
  SettingsContent content() const { return view_.content(); }
  std::shared_ptr<Medicine> add(const std::string& name) {
    return fixture_.add(medicineNamed(name, daily({{8, 0}, {20, 0}})));
  }
  /// Puts a file of this name into the local folder, `later` than now.
  std::string put(const std::string& name, const std::string& contents, Instant::Duration later = 0s) {
    const std::string path = "/documents/Backups/" + name;
    EXPECT_TRUE(fixture_.files.createDirectory("/documents/Backups"));
    EXPECT_TRUE(fixture_.files.write(path, contents));
    fixture_.files.files[path].creationDate = kNow + later;
    return path;
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

TEST_F(SettingsViewBackups, theBackupSheetOffersBothKinds) {
  EXPECT_FALSE(content().backupSheet);
  view_.openBackupSheet();
  const auto sheet = content().backupSheet;
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->title, "Create Backup");
  ASSERT_EQ(sheet->toolbar.size(), 1u);
  EXPECT_EQ(sheet->toolbar[0].id, "cancel");
  EXPECT_EQ(sheet->toolbar[0].title, "Cancel");
  ASSERT_EQ(sheet->section.rows.size(), 2u);
  const auto& local = std::get<ButtonRow>(sheet->section.rows[0]);
  EXPECT_EQ(local.id, "createLocalBackup");
  EXPECT_EQ(local.title, "Create Local Backup");
  EXPECT_EQ(local.symbol, "folder");
  const auto& cloud = std::get<ButtonRow>(sheet->section.rows[1]);
  EXPECT_EQ(cloud.id, "createiCloudBackup");
  EXPECT_EQ(cloud.title, "Create iCloud Backup");
  EXPECT_EQ(cloud.symbol, "icloud.and.arrow.up");
  EXPECT_EQ(sheet->section.footer, "Backups include all medicines, dose history, and settings.");
  EXPECT_EQ(sheet->progress, std::nullopt);
  view_.closeBackupSheet();
  EXPECT_FALSE(content().backupSheet);
}

TEST_F(SettingsViewBackups, aLocalBackupShowsItsProgressAndThenItsSuccess) {
  add("Aspirin");
  view_.openBackupSheet();
  view_.createLocalBackup();
  EXPECT_EQ(content().backupSheet->progress, "Creating backup...");
  EXPECT_FALSE(std::get<ButtonRow>(content().backupSheet->section.rows[0]).isEnabled);
  EXPECT_EQ(fixture_.record().lastBackupDate(), std::nullopt);
  fixture_.clock.advance(2s);
  fixture_.background.runAll();
  EXPECT_TRUE(content().backupSheet) << "nothing changes before the main thread's turn";
  fixture_.settle();
  EXPECT_FALSE(content().backupSheet);
  EXPECT_EQ(content().alerts, (std::vector<MessageAlert>{{"backupCreated", "Backup Created",
                                                          "Your data has been backed up successfully.", "OK"}}));
  EXPECT_EQ(fixture_.record().lastBackupDate(), kNow + 2s);
  EXPECT_EQ(row<ValueRow>(content(), "lastBackup").text, "in 0 sec.");
  EXPECT_TRUE(fixture_.files.fileExists("/documents/Backups/Pillora_Backup_2025-01-10_10-30-02.json"));
  view_.dismissAlert("backupCreated");
  EXPECT_TRUE(content().alerts.empty());
}

TEST_F(SettingsViewBackups, aCloudBackupLiesInTheCloudFolder) {
  std::optional<Result<std::string>> path;
  view_.createiCloudBackup([&](const Result<std::string>& made) { path = made; });
  EXPECT_FALSE(path);
  fixture_.settle();
  ASSERT_TRUE(path && *path);
  EXPECT_EQ(**path, kCloudFile);
  EXPECT_TRUE(fixture_.files.fileExists(kCloudFile));
  EXPECT_EQ(fixture_.files.files.size(), 1u);
}

TEST_F(SettingsViewBackups, withoutACloudFolderTheErrorIsShownAndNoDateIsSet) {
  fixture_.files.cloud.reset();
  view_.openBackupSheet();
  view_.createiCloudBackup();
  fixture_.settle();
  EXPECT_EQ(content().alerts,
            (std::vector<MessageAlert>{{"backupError", "Backup Error", "iCloud is not available", "OK"}}));
  EXPECT_EQ(fixture_.record().lastBackupDate(), std::nullopt);
  EXPECT_TRUE(content().backupSheet) << "the sheet stays, to try the other kind";
  EXPECT_EQ(content().backupSheet->progress, std::nullopt);
  EXPECT_TRUE(fixture_.files.files.empty());
  view_.dismissAlert("backupError");
  EXPECT_TRUE(content().alerts.empty());
}

TEST_F(SettingsViewBackups, aFailureLeavesAnEarlierBackupsDateAlone) {
  view_.appeared();
  fixture_.record().lastBackupDate = kNow - 24h;
  fixture_.files.documents.reset();
  view_.createLocalBackup();
  fixture_.settle();
  EXPECT_EQ(errorMessage(), "Backup directory not found");
  EXPECT_EQ(fixture_.record().lastBackupDate(), kNow - 24h);
}

TEST_F(SettingsViewBackups, aFullDiskIsShownAsItIsReported) {
  fixture_.files.failures["write"] = "the disk is full";
  view_.createLocalBackup();
  fixture_.settle();
  EXPECT_EQ(errorMessage(), "the disk is full");
  fixture_.files.failures.clear();
  view_.createLocalBackup();
  fixture_.settle();
  EXPECT_EQ(alertIds(content()), (Names{"backupCreated", "backupError"})) << "an error stays until it is dismissed";
}

TEST_F(SettingsViewBackups, anErrorWithoutATextIsShownAsOne) {
  fixture_.files.failures["write"] = "";
  view_.createLocalBackup();
  fixture_.settle();
  EXPECT_EQ(errorMessage(), "An error occurred");
}

TEST_F(SettingsViewBackups, oneBackupIsMadeAtATime) {
  view_.createLocalBackup();
  view_.createLocalBackup();
  view_.createiCloudBackup();
  EXPECT_EQ(fixture_.background.waiting(), 1u);
  fixture_.settle();
  EXPECT_TRUE(fixture_.files.fileExists(kLocalFile));
  EXPECT_EQ(fixture_.files.files.size(), 1u);
}

TEST_F(SettingsViewBackups, theRestoreSheetListsLocalAndCloudBackupsNewestFirst) {
  put("old.json", std::string(4096, ' '), -24h);
  put("new.json", std::string(512, ' '), -1h);
  ASSERT_TRUE(fixture_.files.createDirectory("/cloud/Backups"));
  ASSERT_TRUE(fixture_.files.write("/cloud/Backups/c.json", std::string(1'234'567, ' ')));
  view_.openRestoreSheet();
  EXPECT_EQ(content().restoreSheet->progress, "Looking for backups...");
  EXPECT_EQ(content().restoreSheet->empty, std::nullopt);
  fixture_.settle();
  const auto sheet = content().restoreSheet;
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->title, "Restore Backup");
  EXPECT_EQ(sheet->toolbar.at(0).title, "Cancel");
  EXPECT_EQ(sheet->empty, std::nullopt);
  EXPECT_EQ(sheet->progress, std::nullopt);
  ASSERT_EQ(sheet->sections.size(), 2u);
  EXPECT_EQ(sheet->sections[0].title, "Local Backups");
  EXPECT_EQ(sheet->sections[1].title, "iCloud Backups");
  ASSERT_EQ(sheet->sections[0].rows.size(), 2u);
  const BackupRow& first = sheet->sections[0].rows[0];
  EXPECT_EQ(first.backup.url, "/documents/Backups/new.json");
  EXPECT_EQ(plainBlanks(first.title), "Jan 10, 2025, 9:30 AM");
  EXPECT_EQ(first.detail, "512 bytes");
  EXPECT_EQ(first.restore, (ActionItem{"restore", "Restore", "arrow.counterclockwise"}));
  EXPECT_EQ(first.color, "blue");
  EXPECT_EQ(first.remove, (ActionItem{"delete", "Delete", "trash"}));
  EXPECT_EQ(plainBlanks(sheet->sections[0].rows[1].title), "Jan 9, 2025, 10:30 AM");
  EXPECT_EQ(sheet->sections[0].rows[1].detail, "4 KB");
  EXPECT_EQ(sheet->sections[1].rows.at(0).detail, "1.2 MB");
  view_.closeRestoreSheet();
  EXPECT_FALSE(content().restoreSheet);
}

TEST_F(SettingsViewBackups, theTimeOfABackupFollowsThe24HourSetting) {
  put("a.json", "", 5h);
  view_.setToggle("use24HourTime", true);
  view_.openRestoreSheet();
  fixture_.settle();
  EXPECT_EQ(content().restoreSheet->sections.at(0).rows.at(0).title, "Jan 10, 2025, 15:30");
}

TEST_F(SettingsViewBackups, withoutBackupFoldersTheSheetIsEmpty) {
  for (const bool haveFolders : {true, false}) {
    if (!haveFolders) {
      fixture_.files.documents.reset();
      fixture_.files.cloud.reset();
    }
    view_.openRestoreSheet();
    fixture_.settle();
    EXPECT_EQ(content().restoreSheet->empty, (Panel{"folder", "No Backups", "Create a backup to see it here."}));
    EXPECT_TRUE(content().restoreSheet->sections.empty());
    EXPECT_TRUE(fixture_.console.lines().empty());
  }
}

TEST_F(SettingsViewBackups, aSectionWithoutBackupsIsLeftOut) {
  put("a.json", "");
  view_.openRestoreSheet();
  fixture_.settle();
  ASSERT_EQ(content().restoreSheet->sections.size(), 1u);
  EXPECT_EQ(content().restoreSheet->sections[0].id, "local");
  EXPECT_EQ(content().restoreSheet->empty, std::nullopt);
}

TEST_F(SettingsViewBackups, theListsAreReadAnewEachTimeTheSheetOpens) {
  view_.openRestoreSheet();
  fixture_.settle();
  view_.closeRestoreSheet();
  put("a.json", "");
  view_.openRestoreSheet();
  fixture_.settle();
  EXPECT_EQ(content().restoreSheet->sections.size(), 1u);
}

TEST_F(SettingsViewBackups, aListingThatFailsIsPrintedAndTheListsStayAsTheyWere) {
  put("a.json", "");
  ASSERT_TRUE(fixture_.files.createDirectory("/cloud/Backups"));
  view_.openRestoreSheet();
  fixture_.settle();
  const UUID shown = content().restoreSheet->sections.at(0).rows.at(0).id;
  fixture_.files.failures["contentsOfDirectory"] = "input/output error";
  std::optional<Result<void>> outcome;
  view_.openRestoreSheet([&](const Result<void>& listed) { outcome = listed; });
  fixture_.settle();
  ASSERT_TRUE(outcome);
  EXPECT_FALSE(*outcome);
  EXPECT_EQ(fixture_.console.lines(),
            (Names{"Error loading backups: input/output error", "Error loading backups: input/output error"}));
  EXPECT_EQ(content().restoreSheet->sections.at(0).rows.at(0).id, shown);
  EXPECT_TRUE(content().alerts.empty());
}

TEST_F(SettingsViewBackups, whenOneListFailsTheOtherIsStored) {
  ASSERT_TRUE(fixture_.files.createDirectory("/documents/Backups"));
  ASSERT_TRUE(fixture_.files.createDirectory("/cloud/Backups"));
  ASSERT_TRUE(fixture_.files.write("/cloud/Backups/c.json", ""));
  view_.openRestoreSheet();
  fixture_.files.failures["contentsOfDirectory"] = "input/output error";
  ASSERT_TRUE(fixture_.background.runOne());
  fixture_.files.failures.clear();
  fixture_.settle();
  EXPECT_EQ(fixture_.console.lines(), Names{"Error loading backups: input/output error"});
  ASSERT_EQ(content().restoreSheet->sections.size(), 1u);
  EXPECT_EQ(content().restoreSheet->sections[0].id, "cloud");
}

TEST_F(SettingsViewBackups, aDeletedBackupIsGoneFromTheListRightAway) {
  const std::string kept = put("kept.json", ""), gone = put("gone.json", "", 1h);
  view_.openRestoreSheet();
  fixture_.settle();
  std::optional<bool> succeeded;
  view_.deleteBackup(gone, [&](bool done) { succeeded = done; });
  fixture_.settle();
  EXPECT_EQ(succeeded, true);
  EXPECT_FALSE(fixture_.files.fileExists(gone));
  const auto sections = content().restoreSheet->sections;
  ASSERT_EQ(sections.at(0).rows.size(), 1u);
  EXPECT_EQ(sections[0].rows[0].backup.url, kept);
}

TEST_F(SettingsViewBackups, anErrorInDeletingIsDropped) {
  const std::string file = put("a.json", "");
  view_.openRestoreSheet();
  fixture_.settle();
  fixture_.files.failures["removeItem"] = "permission denied";
  std::optional<bool> succeeded;
  view_.deleteBackup(file, [&](bool done) { succeeded = done; });
  fixture_.settle();
  EXPECT_EQ(succeeded, false);
  EXPECT_TRUE(content().alerts.empty());
  EXPECT_TRUE(fixture_.console.lines().empty());
  EXPECT_EQ(content().restoreSheet->sections.at(0).rows.size(), 1u);
}

TEST_F(SettingsViewBackups, onlyAListedFileIsDeleted) {
  put("a.json", "");
  ASSERT_TRUE(fixture_.files.write("/documents/letter.txt", "dear"));
  view_.openRestoreSheet();
  fixture_.settle();
  std::optional<bool> succeeded;
  view_.deleteBackup("/documents/letter.txt", [&](bool done) { succeeded = done; });
  fixture_.settle();
  EXPECT_EQ(succeeded, false);
  EXPECT_TRUE(fixture_.files.fileExists("/documents/letter.txt"));
}

TEST_F(SettingsViewBackups, whoObservesHearsOfEveryStep) {
  int changes = 0;
  const auto handle = view_.observe([&] { ++changes; });
  const auto expectChange = [&](const char* what) {
    EXPECT_GT(changes, 0) << what;
    changes = 0;
  };
  view_.openBackupSheet();
  expectChange("opening the sheet");
  view_.createLocalBackup();
  expectChange("beginning a backup");
  fixture_.settle();
  expectChange("ending a backup");
  view_.dismissAlert("backupCreated");
  expectChange("dismissing an alert");
  view_.openRestoreSheet();
  expectChange("opening the other sheet");
  fixture_.settle();
  expectChange("the lists");
  view_.restoreBackup(kLocalFile);
  expectChange("beginning a restore");
  fixture_.settle();
  expectChange("ending a restore");
  view_.closeRestoreSheet();
  expectChange("closing");
}

}  // namespace
}  // namespace pillora

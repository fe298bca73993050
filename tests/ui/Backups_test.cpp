// SPDX-License-Identifier: MIT
// Backups as a person makes, restores and deletes them.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class Backups : public WindowTest {
 protected:
  void openSettings() {
    open();
    key(Qt::Key_5, Qt::ControlModifier);
  }
  /// Makes one and reads the message away.
  void makeBackup() {
    tap("Create Backup");
    tap("Create Local Backup");
    finishBackground();
    tap("OK");
  }
  void openRestoreSheet() {
    tap("Restore from Backup");
    finishBackground();
  }
};

constexpr QPointF kPartly(-120, 0);

TEST_F(Backups, aLocalBackupIsMadeWithItsProgressAndListed) {
  add("Aspirin", {{8, 0}});
  openSettings();
  EXPECT_FALSE(shows("Last Backup"));
  tap("Create Backup");
  EXPECT_TRUE(shows("Backups include all medicines, dose history, and settings."));
  tap("Create Local Backup");
  EXPECT_TRUE(shows("Creating backup..."));
  EXPECT_FALSE(isEnabled("Create Local Backup"));
  finishBackground();
  EXPECT_TRUE(shows("Backup Created") && shows("Your data has been backed up successfully."));
  EXPECT_FALSE(has("Create Local Backup"));
  key(Qt::Key_Return);
  EXPECT_FALSE(shows("Backup Created"));
  EXPECT_EQ(settings()->lastBackupDate(), clock.now());
  EXPECT_TRUE(shows("Last Backup"));
  ASSERT_EQ(files_.files.size(), 1U);
  EXPECT_NE(files_.files.begin()->second.contents.find("Aspirin"), std::string::npos);
  openRestoreSheet();
  EXPECT_TRUE(shows("Local Backups") && shows("Jan 10, 2025, 9:00 AM"));
  EXPECT_FALSE(shows("iCloud Backups"));
}

TEST_F(Backups, withoutACloudItIsSaidSo) {
  files_.cloud.reset();
  openSettings();
  tap("Create Backup");
  tap("Create iCloud Backup");
  finishBackground();
  EXPECT_TRUE(shows("Backup Error") && shows("iCloud is not available"));
  tap("OK");
  EXPECT_FALSE(shows("Backup Error"));
  EXPECT_FALSE(settings()->lastBackupDate());
  EXPECT_TRUE(has("Create Local Backup"));
  tap("Cancel");
  EXPECT_FALSE(has("Create Local Backup"));
}

TEST_F(Backups, aCloudBackupIsListedApart) {
  openSettings();
  tap("Create Backup");
  touch("Create iCloud Backup");
  finishBackground();
  key(Qt::Key_Escape);
  openRestoreSheet();
  EXPECT_TRUE(shows("iCloud Backups") && !shows("Local Backups"));
}

TEST_F(Backups, restoringAddsTheMedicinesAndPlansNothing) {
  add("Aspirin", {{8, 0}});
  openSettings();
  makeBackup();
  openRestoreSheet();
  tap("Restore");
  EXPECT_TRUE(shows("Restoring backup..."));
  EXPECT_FALSE(isEnabled("Restore"));
  finishBackground();
  EXPECT_TRUE(shows("Restore Complete") && shows("Your data has been restored successfully."));
  tap("OK");
  EXPECT_FALSE(shows("Restore Complete") || has("Restore"));
  ASSERT_EQ(medicines().size(), 2U);
  EXPECT_EQ(medicines().back()->name(), "Aspirin");
  EXPECT_NE(medicines().back()->id(), medicines().front()->id());
  EXPECT_TRUE(center.pending.empty());
}

TEST_F(Backups, aBrokenFileIsRefusedAndChangesNothing) {
  openSettings();
  makeBackup();
  files_.files.begin()->second.contents = "no backup";
  openRestoreSheet();
  touch("Restore");
  finishBackground();
  EXPECT_TRUE(shows("Backup Error"));
  key(Qt::Key_Escape);
  EXPECT_FALSE(shows("Backup Error"));
  EXPECT_TRUE(medicines().empty());
  EXPECT_TRUE(has("Restore"));
}

TEST_F(Backups, aSwipeUncoversDeleteAndItsPressDeletesOne) {
  openSettings();
  makeBackup();
  clock.advance(std::chrono::hours(1));
  makeBackup();
  ASSERT_EQ(files_.files.size(), 2U);
  openRestoreSheet();
  ASSERT_EQ(controls("Restore").size(), 2U);
  swipeText("Jan 10, 2025, 9:00 AM", kPartly);
  EXPECT_EQ(files_.files.size(), 2U);
  tap("Delete");
  finishBackground();
  ASSERT_EQ(files_.files.size(), 1U);
  EXPECT_EQ(files_.files.begin()->second.creationDate, clock.now());
  EXPECT_EQ(controls("Restore").size(), 1U);
}

TEST_F(Backups, theLastOneThatIsDeletedByKeyLeavesTheSheetEmpty) {
  openSettings();
  makeBackup();
  openRestoreSheet();
  ASSERT_TRUE(tabTo("Restore"));
  key(Qt::Key_Delete);
  finishBackground();
  EXPECT_TRUE(files_.files.empty());
  EXPECT_TRUE(shows("No Backups") && shows("Create a backup to see it here."));
}

TEST_F(Backups, aFingerThatRestsOnRestoreOpensTheMenuAndRestoresNothing) {
  openSettings();
  makeBackup();
  openRestoreSheet();
  touchLong("Restore");
  finishBackground();
  EXPECT_FALSE(shows("Restore Complete"));
  tap("Delete");
  finishBackground();
  EXPECT_TRUE(files_.files.empty());
}

TEST_F(Backups, nothingIsDeletedWhileABackupIsRestored) {
  openSettings();
  makeBackup();
  openRestoreSheet();
  swipeText("Jan 10, 2025, 9:00 AM", kPartly);
  ASSERT_TRUE(has("Delete"));
  tap("Restore");
  ASSERT_TRUE(shows("Restoring backup..."));
  EXPECT_FALSE(has("Delete"));
  swipeText("Jan 10, 2025, 9:00 AM", kPartly);
  EXPECT_FALSE(has("Delete"));
  key(Qt::Key_Delete);
  key(Qt::Key_Menu);
  EXPECT_FALSE(has("Delete"));
  finishBackground();
  EXPECT_TRUE(shows("Restore Complete"));
  EXPECT_EQ(files_.files.size(), 1U);
}

TEST_F(Backups, aMessageGivesTheFocusBackToWhatWasPressed) {
  openSettings();
  ASSERT_TRUE(tabTo("Create Backup"));
  key(Qt::Key_Return);
  ASSERT_TRUE(tabTo("Create Local Backup"));
  key(Qt::Key_Return);
  finishBackground();
  ASSERT_TRUE(shows("Backup Created"));
  key(Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return control("Create Backup") && control("Create Backup")->hasActiveFocus(); }));
}

TEST_F(Backups, theSheetOfRestoringIsLeftByItsButtonAndByEscape) {
  openSettings();
  for (const bool byKey : {true, false}) {
    openRestoreSheet();
    EXPECT_TRUE(shows("No Backups"));
    byKey ? key(Qt::Key_Escape) : tap("Cancel");
    EXPECT_FALSE(shows("No Backups"));
    EXPECT_TRUE(has("Restore from Backup"));
  }
}

TEST_F(Backups, aListThatCannotBeReadStaysAndIsToldToTheConsole) {
  openSettings();
  makeBackup();
  openRestoreSheet();
  key(Qt::Key_Escape);
  files_.failures["contentsOfDirectory"] = "cannot read";
  openRestoreSheet();
  EXPECT_TRUE(shows("Jan 10, 2025, 9:00 AM"));
  EXPECT_EQ(console.lines().back(), "Error loading backups: cannot read");
}

}  // namespace
}  // namespace pillora

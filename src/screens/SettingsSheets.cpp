// SPDX-License-Identifier: MIT
#include <utility>

#include "screens/SettingsView.h"

// What lies over the settings screen: the sheets of backups, and the alerts.

namespace pillora {

namespace {

ToolbarButton cancelButton(const Texts& texts) { return {"cancel", "cancellation", texts.text("Cancel")}; }

}  // namespace

BackupSheet SettingsView::backupSheet() const {
  const Texts& texts = environment_.texts;
  BackupSheet sheet{texts.text("Create Backup"), {cancelButton(texts)}, {.id = "kinds"}, std::nullopt};
  const auto button = [&](std::string id, std::string_view title, std::string symbol) {
    return ButtonRow{std::move(id), texts.text(title), std::move(symbol), false, !isCreatingBackup_};
  };
  sheet.section.rows = {button("createLocalBackup", ownText("Create Local Backup"), "folder"),
                        button("createiCloudBackup", ownText("Create iCloud Backup"), "icloud.and.arrow.up")};
  sheet.section.footer = texts.text("Backups include all medicines, dose history, and settings.");
  if (isCreatingBackup_) sheet.progress = texts.text("Creating backup...");
  return sheet;
}

RestoreSheet SettingsView::restoreSheet() const {
  const Texts& texts = environment_.texts;
  RestoreSheet sheet{texts.text("Restore Backup"), {cancelButton(texts)}, {}, std::nullopt, std::nullopt};
  addBackups(sheet, "local", texts.text("Local Backups"), localBackups_);
  addBackups(sheet, "cloud", texts.text("iCloud Backups"), cloudBackups_);
  if (isRestoring_) {
    sheet.progress = texts.text("Restoring backup...");
  } else if (sheet.sections.empty() && listingsUnderWay_ > 0) {
    sheet.progress = texts.text("Looking for backups...");
  } else if (sheet.sections.empty()) {
    sheet.empty = Panel{"folder", texts.text("No Backups"), texts.text("Create a backup to see it here.")};
  }
  return sheet;
}

void SettingsView::addBackups(RestoreSheet& sheet, std::string id, std::string title,
                              const std::vector<BackupInfo>& backups) const {
  if (backups.empty()) return;
  const Texts& texts = environment_.texts;
  BackupSection section{std::move(id), std::move(title), {}};
  for (const BackupInfo& backup : backups) {
    section.rows.push_back({backup.id,
                            backup,
                            texts.mediumDateAndShortTime(backup.createdAt, settingsShown(settings_).use24HourTime()),
                            texts.fileSize(backup.fileSize),
                            {"restore", texts.text("Restore"), "arrow.counterclockwise"},
                            "blue",
                            {"delete", texts.text("Delete"), "trash"},
                            !isRestoring_});
  }
  sheet.sections.push_back(std::move(section));
}

std::vector<MessageAlert> SettingsView::alerts() const {
  const Texts& texts = environment_.texts;
  std::vector<MessageAlert> alerts;
  const auto add = [&](std::string id, std::string_view title, std::string message) {
    alerts.push_back({std::move(id), texts.text(title), std::move(message), texts.text("OK")});
  };
  if (showingBackupSuccess_) {
    add("backupCreated", ownText("Backup Created"), texts.text("Your data has been backed up successfully."));
  }
  if (showingRestoreSuccess_) {
    add("restoreComplete", ownText("Restore Complete"), texts.text("Your data has been restored successfully."));
  }
  if (backupError_) {
    add("backupError", ownText("Backup Error"),
        backupError_->empty() ? texts.text("An error occurred") : *backupError_);
  }
  return alerts;
}

void SettingsView::dismissAlert(std::string_view id) {
  if (id == "backupCreated") showingBackupSuccess_ = false;
  if (id == "restoreComplete") showingRestoreSuccess_ = false;
  if (id == "backupError") backupError_.reset();
  observers_.notify();
}

}  // namespace pillora

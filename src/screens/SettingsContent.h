// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "backup/BackupService.h"
#include "screens/Content.h"
#include "screens/FormContent.h"
#include "support/Fields.h"
#include "support/UUID.h"

namespace pillora {

// What the settings screen shows, its sheets and alerts included.

/// One backup of a list.
struct BackupRow {
  UUID id;                ///< of this listing; the next one numbers anew
  BackupInfo backup;      ///< its `url` is what the actions are called with
  std::string title;      ///< when it was made
  std::string detail;     ///< how large it is
  ActionItem restore;     ///< at once, without a question
  std::string color;      ///< of the restoring symbol
  ActionItem remove;      ///< behind a swipe
  bool isEnabled = true;  ///< off while a restore is under way

  static constexpr auto fields() {
    using Row = BackupRow;
    return std::tuple(field("id", &Row::id), field("backup", &Row::backup), field("title", &Row::title),
                      field("detail", &Row::detail), field("restore", &Row::restore), field("color", &Row::color),
                      field("remove", &Row::remove), field("isEnabled", &Row::isEnabled));
  }
};

/// "local" or "cloud"
struct BackupSection {
  std::string id, title;
  std::vector<BackupRow> rows;

  static constexpr auto fields() {
    return std::tuple(field("id", &BackupSection::id), field("title", &BackupSection::title),
                      field("rows", &BackupSection::rows));
  }
};

/// Where a backup is made.
struct BackupSheet {
  std::string title;
  std::vector<ToolbarButton> toolbar;   ///< "cancel"
  FormSection section;                  ///< "createLocalBackup", "createiCloudBackup"
  std::optional<std::string> progress;  ///< while a backup is being written

  static constexpr auto fields() {
    return std::tuple(field("title", &BackupSheet::title), field("toolbar", &BackupSheet::toolbar),
                      field("section", &BackupSheet::section), field("progress", &BackupSheet::progress));
  }
};

/// Where a backup is restored.
struct RestoreSheet {
  std::string title;
  std::vector<ToolbarButton> toolbar;   ///< "cancel"
  std::vector<BackupSection> sections;  ///< without those that have no rows
  std::optional<Panel> empty;
  std::optional<std::string> progress;  ///< while backups are being listed or one is being restored

  static constexpr auto fields() {
    return std::tuple(field("title", &RestoreSheet::title), field("toolbar", &RestoreSheet::toolbar),
                      field("sections", &RestoreSheet::sections), field("empty", &RestoreSheet::empty),
                      field("progress", &RestoreSheet::progress));
  }
};

/// A message with one button, which dismisses it.
struct MessageAlert {
  std::string id, title, message, button;

  bool operator==(const MessageAlert&) const = default;
  static constexpr auto fields() {
    return std::tuple(field("id", &MessageAlert::id), field("title", &MessageAlert::title),
                      field("message", &MessageAlert::message), field("button", &MessageAlert::button));
  }
};

struct SettingsContent {
  std::string title;
  std::optional<FormSection> unsaved;  ///< above all others, while changes cannot be saved
  std::vector<FormSection> sections;
  FormSection notes;  ///< below all others: what Pillora does not do, for those who rely on it
  std::optional<BackupSheet> backupSheet;
  std::optional<RestoreSheet> restoreSheet;
  std::vector<MessageAlert> alerts;  ///< "backupCreated", "restoreComplete", "backupError"

  static constexpr auto fields() {
    using Settings = SettingsContent;
    return std::tuple(field("title", &Settings::title), field("unsaved", &Settings::unsaved),
                      field("sections", &Settings::sections), field("notes", &Settings::notes),
                      field("backupSheet", &Settings::backupSheet), field("restoreSheet", &Settings::restoreSheet),
                      field("alerts", &Settings::alerts));
  }
};

}  // namespace pillora

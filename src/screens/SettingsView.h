// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backup/BackupData.h"
#include "backup/BackupService.h"
#include "platform/Console.h"
#include "platform/LAContext.h"
#include "screens/Screen.h"
#include "screens/SettingsContent.h"
#include "support/Observers.h"
#include "support/Result.h"

namespace pillora {

/// The ids of the controls, in the order of the screen.
inline constexpr std::array<std::string_view, 11> kSettingsFields = {
    "weekStartDay",          "use24HourTime",     "notificationSound",    "defaultSnoozeDurationMinutes",
    "defaultMaxSnoozeCount", "showMedicineIcons", "enableHaptics",        "enableiCloudSync",
    "enableLocalBackup",     "backupFrequency",   "requireAuthentication"};

/// When what is planned is shown to the person.
enum class ReminderService {
  fromEveryLogin,
  untilLogout,  ///< whoever shows it does not start by itself
  never,        ///< there is no desktop session to show it in
};

/// What a restore added and changed.
struct RestoredBackup {
  size_t medicines = 0;
  bool settings = false;
};

/// The tab of preferences and backups. Controls write straight into the settings record in use and only when the person
/// changes them; drawing writes nothing.
///
/// Backups are written, listed and read off the main thread; their outcome is applied, and told to `done` if there is
/// one, on the main thread. Destroying the screen lets what is under way come to its end, but nothing of it is told or
/// applied any more. Main thread only.
class SettingsView {
 public:
  template <typename T>
  using Done = std::function<void(const Result<T>&)>;

  /// What is referred to outlives the screen. `makeContext` is for a screen that says when the device cannot ask for
  /// its owner; its contexts are used on the background queue.
  SettingsView(ScreenEnvironment environment, const BackupEnvironment& backupEnvironment, BackupService& backups,
               Console& console, LAContextFactory makeContext = {});

  ReminderService reminderService = ReminderService::fromEveryLogin;  ///< for the notes; set by whoever knows

  /// The screen is shown: a settings record with the defaults is made when the store holds none, and it is found out
  /// whether the device can ask for its owner.
  void appeared();
  SettingsContent content() const;
  /// Calls `observer` after each change of what is shown that is no change of the store or of the permission to notify.
  [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> observer) { return observers_.add(observer); }

  // The controls, by the ids of their rows. An id that there is not, or a value that the control does not offer,
  // changes nothing and answers false.
  bool setToggle(std::string_view id, bool isOn);
  bool pick(std::string_view id, std::string_view option);
  bool increment(std::string_view id);
  bool decrement(std::string_view id);
  /// Sets a stepper to one of the values that it can reach.
  bool setNumber(std::string_view id, int64_t value);

  void enableNotifications() { environment_.notifications.requestAuthorization(); }
  /// Tries to write what could not be saved.
  void saveAgain() { static_cast<void>(environment_.context.save()); }

  void openBackupSheet();
  void closeBackupSheet();
  /// Writes a backup; answers its path. While one is being written another is not begun, and `done` is not called.
  void createLocalBackup(Done<std::string> done = {});
  void createiCloudBackup(Done<std::string> done = {});

  /// Shows the sheet and lists the backups anew. A list that cannot be read is printed and stays as it was; `done` is
  /// told when both have been asked for.
  void openRestoreSheet(Done<void> done = {});
  void closeRestoreSheet();
  /// Adds what the file holds: all its medicines as new ones, and its settings if it has any. A file that cannot be
  /// read changes nothing. While one is being restored another is not begun, and `done` is not called.
  void restoreBackup(const std::string& url, Done<RestoredBackup> done = {});
  /// Removes one of the listed backups and lists them anew; tells whether the file is gone.
  void deleteBackup(const std::string& url, std::function<void(bool succeeded)> done = {});

  void dismissAlert(std::string_view id);

 private:
  using CreateOperation = void (BackupService::*)(const std::vector<std::shared_ptr<Medicine>>&, const AppSettings*,
                                                  BackupService::Completion<std::string>);
  using Listing = Result<std::vector<BackupInfo>>;

  // What is shown (SettingsView.cpp, SettingsNotes.cpp, SettingsSheets.cpp).
  std::vector<FormSection> sections() const;
  FormSection backupSection(const AppSettings& settings) const;
  FormSection privacySection(const AppSettings& settings) const;
  FormSection aboutSection() const;
  ValueRow statusRow() const;
  int64_t medicineCount() const;
  std::optional<FormSection> unsaved() const;
  FormSection notes() const;
  BackupSheet backupSheet() const;
  RestoreSheet restoreSheet() const;
  void addBackups(RestoreSheet& sheet, std::string id, std::string title, const std::vector<BackupInfo>& backups) const;
  std::vector<MessageAlert> alerts() const;

  // Backups (SettingsBackups.cpp).
  void createBackup(CreateOperation operation, Done<std::string> done);
  void finishCreating(const Result<std::string>& path);
  void loadBackups(Done<void> done);
  void takeOver(std::vector<BackupInfo>& list, Listing listing, Result<void>& outcome);
  Result<RestoredBackup> restore(const Result<BackupData>& data);
  /// `job` while the screen is there, nothing afterwards.
  template <typename Job>
  auto whileShown(Job job) const;

  ScreenEnvironment environment_;
  BackupEnvironment backupEnvironment_;
  BackupService& backups_;
  Console& console_;
  LAContextFactory makeContext_;
  LiveQuery<AppSettings> settings_;
  mutable int64_t medicineCount_ = 0;  ///< as of the last count that succeeded

  bool canAskForOwner_ = true;
  bool showingBackupSheet_ = false;
  bool showingRestoreSheet_ = false;
  bool showingBackupSuccess_ = false;
  bool showingRestoreSuccess_ = false;
  std::optional<std::string> backupError_;
  bool isCreatingBackup_ = false;
  bool isRestoring_ = false;
  int listingsUnderWay_ = 0;
  std::vector<BackupInfo> localBackups_, cloudBackups_;

  Observers<> observers_;
  std::shared_ptr<void> alive_;  ///< outcomes go nowhere once this is gone
};

}  // namespace pillora

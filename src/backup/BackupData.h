// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "model/AppSettings.h"
#include "model/Medicine.h"
#include "model/ReminderInterval.h"
#include "support/Fields.h"
#include "support/Instant.h"
#include "support/Result.h"
#include "support/UUID.h"

namespace pillora {

/// What a backup file holds: every medicine with its schedule, and the settings. The members of each struct are those
/// of the file, written in this order; docs/backup-format.md lays the file down. Dose logs are not part of it.
struct MedicineBackup {
  UUID id;  ///< of the medicine that was backed up; a restored one gets its own
  std::string name;
  std::string dosage;
  std::string unit;
  std::string instructions;
  std::string color;
  std::string icon;
  ReminderInterval interval;
  bool isActive = true;
  bool allowSnooze = true;
  int64_t snoozeDurationMinutes = 10;
  int64_t maxSnoozeCount = 3;
  bool isRepeating = true;
  Instant startDate;
  std::optional<Instant> endDate;  ///< left out of the file when absent

  bool operator==(const MedicineBackup&) const = default;

  static constexpr auto fields() {
    return std::tuple(field("id", &MedicineBackup::id), field("name", &MedicineBackup::name),
                      field("dosage", &MedicineBackup::dosage), field("unit", &MedicineBackup::unit),
                      field("instructions", &MedicineBackup::instructions), field("color", &MedicineBackup::color),
                      field("icon", &MedicineBackup::icon), field("interval", &MedicineBackup::interval),
                      field("isActive", &MedicineBackup::isActive), field("allowSnooze", &MedicineBackup::allowSnooze),
                      field("snoozeDurationMinutes", &MedicineBackup::snoozeDurationMinutes),
                      field("maxSnoozeCount", &MedicineBackup::maxSnoozeCount),
                      field("isRepeating", &MedicineBackup::isRepeating),
                      field("startDate", &MedicineBackup::startDate), field("endDate", &MedicineBackup::endDate));
  }
};

struct SettingsBackup {
  WeekStartDay weekStartDay = WeekStartDay::sunday;
  NotificationSound notificationSound = NotificationSound::default_;
  bool enableCriticalAlerts = false;
  int64_t reminderAdvanceMinutes = 0;
  int64_t autoMarkMissedAfterMinutes = 60;
  int64_t defaultSnoozeDurationMinutes = 10;
  int64_t defaultMaxSnoozeCount = 3;
  BackupFrequency backupFrequency = BackupFrequency::weekly;
  bool enableiCloudSync = true;
  bool enableLocalBackup = true;
  bool use24HourTime = false;
  bool showMedicineIcons = true;
  bool enableHaptics = true;
  bool requireAuthentication = false;

  bool operator==(const SettingsBackup&) const = default;

  static constexpr auto fields() {
    return std::tuple(field("weekStartDay", &SettingsBackup::weekStartDay),
                      field("notificationSound", &SettingsBackup::notificationSound),
                      field("enableCriticalAlerts", &SettingsBackup::enableCriticalAlerts),
                      field("reminderAdvanceMinutes", &SettingsBackup::reminderAdvanceMinutes),
                      field("autoMarkMissedAfterMinutes", &SettingsBackup::autoMarkMissedAfterMinutes),
                      field("defaultSnoozeDurationMinutes", &SettingsBackup::defaultSnoozeDurationMinutes),
                      field("defaultMaxSnoozeCount", &SettingsBackup::defaultMaxSnoozeCount),
                      field("backupFrequency", &SettingsBackup::backupFrequency),
                      field("enableiCloudSync", &SettingsBackup::enableiCloudSync),
                      field("enableLocalBackup", &SettingsBackup::enableLocalBackup),
                      field("use24HourTime", &SettingsBackup::use24HourTime),
                      field("showMedicineIcons", &SettingsBackup::showMedicineIcons),
                      field("enableHaptics", &SettingsBackup::enableHaptics),
                      field("requireAuthentication", &SettingsBackup::requireAuthentication));
  }
};

struct BackupData {
  std::vector<MedicineBackup> medicines;   ///< in the order in which they were handed over
  std::optional<SettingsBackup> settings;  ///< left out of the file when there was no settings record
  Instant createdAt;                       ///< when the backup was made
  std::string appVersion;                  ///< for people alone; never compared

  bool operator==(const BackupData&) const = default;

  static constexpr auto fields() {
    return std::tuple(field("medicines", &BackupData::medicines), field("settings", &BackupData::settings),
                      field("createdAt", &BackupData::createdAt), field("appVersion", &BackupData::appVersion));
  }
};

/// The file's text: indented JSON, dates floored to the second. What this returns, decodeBackup() reads; data that
/// could not be read back (a date outside the years 0000 to 9999) is an error. Texts that are not UTF-8 and NULs get
/// U+FFFD in place of what is wrong.
Result<std::string> encodeBackup(const BackupData& backup);

/// Reads a file, wholly or not at all. The members may come in any order, others are ignored, of two with one name the
/// last wins; null is as good as absent for `settings` and `endDate` and for nothing else. The values themselves are
/// taken as they are: hour 25 and colour "plaid" are no errors. The error is for the person who wanted to restore and
/// says where the file is wrong: the first wrong member in the order of the tables ("medicines[3].startDate"), or the
/// byte at which it is no JSON. Any thread.
Result<BackupData> decodeBackup(std::string_view text);

// What a restore makes of a file. Nothing is checked or put right.

/// The values of a new medicine; its identity and times of creation are those that Medicine::make gives it.
NewMedicine newMedicine(const MedicineBackup& backup);
/// Copies all fourteen settings into the record; its last-backup date stays.
void restoreSettings(const SettingsBackup& backup, AppSettings& settings);

}  // namespace pillora

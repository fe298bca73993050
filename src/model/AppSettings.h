// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "model/Record.h"
#include "support/Fields.h"

namespace pillora {

/// Raw values are the calendar's weekday numbers.
enum class WeekStartDay : int { sunday = 1, monday = 2, saturday = 7 };
enum class NotificationSound { default_, chime, bell, gentle, urgent, silent };
enum class BackupFrequency { never, daily, weekly, monthly };

inline constexpr std::array kAllWeekStartDays = {WeekStartDay::sunday, WeekStartDay::monday, WeekStartDay::saturday};
inline constexpr std::array kAllNotificationSounds = {NotificationSound::default_, NotificationSound::chime,
                                                      NotificationSound::bell,     NotificationSound::gentle,
                                                      NotificationSound::urgent,   NotificationSound::silent};
inline constexpr std::array kAllBackupFrequencies = {BackupFrequency::never, BackupFrequency::daily,
                                                     BackupFrequency::weekly, BackupFrequency::monthly};

int64_t rawValue(WeekStartDay day);
std::string_view rawValue(NotificationSound sound);    ///< "default", "chime" …
std::string_view rawValue(BackupFrequency frequency);  ///< "never", "daily" …

// The case of a raw value, nothing for any other value.
std::optional<WeekStartDay> weekStartDay(int64_t rawValue);
std::optional<NotificationSound> notificationSound(std::string_view rawValue);
std::optional<BackupFrequency> backupFrequency(std::string_view rawValue);

/// The user's preferences. A store holds one such record; readers take the first that an unsorted fetch returns.
class AppSettings final : public Record {
 public:
  /// Every field at its default, with a new identity.
  AppSettings();
  static std::shared_ptr<AppSettings> make() { return std::make_shared<AppSettings>(); }

  Stored<UUID> id;
  Stored<int64_t> weekStartDayRaw;
  Stored<std::string> notificationSoundRaw;
  Stored<bool> enableCriticalAlerts;           ///< kept and backed up; no reminder depends on it
  Stored<int64_t> reminderAdvanceMinutes;      ///< kept and backed up; reminders fire at the due time
  Stored<int64_t> autoMarkMissedAfterMinutes;  ///< kept and backed up; the marking looks at whole past days
  Stored<int64_t> defaultSnoozeDurationMinutes;
  Stored<int64_t> defaultMaxSnoozeCount;
  Stored<std::string> backupFrequencyRaw;  ///< kept and backed up; backups are made by hand
  Stored<std::optional<Instant>> lastBackupDate;
  Stored<bool> enableiCloudSync;
  Stored<bool> enableLocalBackup;
  Stored<bool> use24HourTime;
  Stored<bool> showMedicineIcons;
  Stored<bool> enableHaptics;
  Stored<bool> requireAuthentication;

  // Typed access. A raw value that is no case reads as the default and stays as it is until written.
  WeekStartDay weekStartDay() const;
  NotificationSound notificationSound() const;
  BackupFrequency backupFrequency() const;
  void setWeekStartDay(WeekStartDay day) { weekStartDayRaw = rawValue(day); }
  void setNotificationSound(NotificationSound sound) { notificationSoundRaw = std::string(rawValue(sound)); }
  void setBackupFrequency(BackupFrequency frequency) { backupFrequencyRaw = std::string(rawValue(frequency)); }

  static constexpr std::string_view kEntityName = "AppSettings";
  static constexpr auto fields() {
    return std::tuple(field("id", &AppSettings::id), field("weekStartDayRaw", &AppSettings::weekStartDayRaw),
                      field("notificationSoundRaw", &AppSettings::notificationSoundRaw),
                      field("enableCriticalAlerts", &AppSettings::enableCriticalAlerts),
                      field("reminderAdvanceMinutes", &AppSettings::reminderAdvanceMinutes),
                      field("autoMarkMissedAfterMinutes", &AppSettings::autoMarkMissedAfterMinutes),
                      field("defaultSnoozeDurationMinutes", &AppSettings::defaultSnoozeDurationMinutes),
                      field("defaultMaxSnoozeCount", &AppSettings::defaultMaxSnoozeCount),
                      field("backupFrequencyRaw", &AppSettings::backupFrequencyRaw),
                      field("lastBackupDate", &AppSettings::lastBackupDate),
                      field("enableiCloudSync", &AppSettings::enableiCloudSync),
                      field("enableLocalBackup", &AppSettings::enableLocalBackup),
                      field("use24HourTime", &AppSettings::use24HourTime),
                      field("showMedicineIcons", &AppSettings::showMedicineIcons),
                      field("enableHaptics", &AppSettings::enableHaptics),
                      field("requireAuthentication", &AppSettings::requireAuthentication));
  }
};

}  // namespace pillora

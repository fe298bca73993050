// SPDX-License-Identifier: MIT
#include "model/AppSettings.h"

#include <algorithm>
#include <utility>

namespace pillora {

namespace {

/// The case whose raw value is `raw`, nothing when there is none.
template <typename Cases, typename Raw>
std::optional<typename Cases::value_type> caseOf(const Cases& cases, const Raw& raw) {
  const auto found = std::find_if(cases.begin(), cases.end(), [&](auto each) { return rawValue(each) == raw; });
  if (found == cases.end()) return std::nullopt;
  return *found;
}

}  // namespace

int64_t rawValue(WeekStartDay day) { return static_cast<int64_t>(day); }

std::string_view rawValue(NotificationSound sound) {
  constexpr std::array<std::string_view, kAllNotificationSounds.size()> kTexts = {"default", "chime",  "bell",
                                                                                  "gentle",  "urgent", "silent"};
  return kTexts[static_cast<size_t>(sound)];
}

std::string_view rawValue(BackupFrequency frequency) {
  constexpr std::array<std::string_view, kAllBackupFrequencies.size()> kTexts = {"never", "daily", "weekly", "monthly"};
  return kTexts[static_cast<size_t>(frequency)];
}

std::optional<WeekStartDay> weekStartDay(int64_t raw) { return caseOf(kAllWeekStartDays, raw); }
std::optional<NotificationSound> notificationSound(std::string_view raw) { return caseOf(kAllNotificationSounds, raw); }
std::optional<BackupFrequency> backupFrequency(std::string_view raw) { return caseOf(kAllBackupFrequencies, raw); }

AppSettings::AppSettings()
    : id(this, UUID::random()),
      weekStartDayRaw(this, 1),
      notificationSoundRaw(this, "default"),
      enableCriticalAlerts(this, false),
      reminderAdvanceMinutes(this, 0),
      autoMarkMissedAfterMinutes(this, 60),
      defaultSnoozeDurationMinutes(this, 10),
      defaultMaxSnoozeCount(this, 3),
      backupFrequencyRaw(this, "weekly"),
      lastBackupDate(this, std::nullopt),
      enableiCloudSync(this, true),
      enableLocalBackup(this, true),
      use24HourTime(this, false),
      showMedicineIcons(this, true),
      enableHaptics(this, true),
      requireAuthentication(this, false) {}

WeekStartDay AppSettings::weekStartDay() const {
  return pillora::weekStartDay(weekStartDayRaw()).value_or(WeekStartDay::sunday);
}

NotificationSound AppSettings::notificationSound() const {
  return pillora::notificationSound(notificationSoundRaw()).value_or(NotificationSound::default_);
}

BackupFrequency AppSettings::backupFrequency() const {
  return pillora::backupFrequency(backupFrequencyRaw()).value_or(BackupFrequency::weekly);
}

}  // namespace pillora

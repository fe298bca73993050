// SPDX-License-Identifier: MIT
#include "backup/BackupService.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <utility>

#include "backup/BackupData.h"

namespace pillora {

namespace {

constexpr const char* kExtension = ".json";

/// A medicine as it was when the backup was asked for; the interval is decoded on the queue.
struct MedicineSnapshot {
  MedicineBackup values;
  std::string intervalData;
};

MedicineSnapshot snapshotOf(const Medicine& medicine) {
  return {{medicine.id(),
           medicine.name(),
           medicine.dosage(),
           medicine.unit(),
           medicine.instructions(),
           medicine.color(),
           medicine.icon(),
           {},
           medicine.isActive(),
           medicine.allowSnooze(),
           medicine.snoozeDurationMinutes(),
           medicine.maxSnoozeCount(),
           medicine.isRepeating(),
           medicine.startDate(),
           medicine.endDate()},
          medicine.intervalData()};
}

MedicineBackup backupOf(const MedicineSnapshot& snapshot) {
  MedicineBackup backup = snapshot.values;
  auto interval = decodeInterval(snapshot.intervalData);
  backup.interval = interval ? *std::move(interval) : fallbackInterval();
  return backup;
}

SettingsBackup snapshotOf(const AppSettings& settings) {
  return {settings.weekStartDay(),
          settings.notificationSound(),
          settings.enableCriticalAlerts(),
          settings.reminderAdvanceMinutes(),
          settings.autoMarkMissedAfterMinutes(),
          settings.defaultSnoozeDurationMinutes(),
          settings.defaultMaxSnoozeCount(),
          settings.backupFrequency(),
          settings.enableiCloudSync(),
          settings.enableLocalBackup(),
          settings.use24HourTime(),
          settings.showMedicineIcons(),
          settings.enableHaptics(),
          settings.requireAuthentication()};
}

struct Snapshot {
  std::vector<MedicineSnapshot> medicines;
  std::optional<SettingsBackup> settings;
};

// What runs on the queue. It has the environment and values of its own, never the service or a record.

/// The folder of backups; nothing when there is nowhere to keep any.
std::optional<std::string> folder(const BackupEnvironment& environment, bool isCloud) {
  FileManager& files = environment.fileManager;
  auto root = isCloud ? files.ubiquityContainer() : files.documentDirectory();
  if (!root) return std::nullopt;
  return (std::filesystem::path(*root) / "Backups").string();
}

std::string fileName(const BackupEnvironment& environment) {
  std::string time = environment.texts.timestamp(environment.clock.now());
  std::replace(time.begin(), time.end(), '/', '-');  // whatever a locale writes, the file stays in its folder
  return "Pillora_Backup_" + time + kExtension;
}

Result<std::string> create(const BackupEnvironment& environment, bool isCloud, const Snapshot& snapshot) {
  const auto directory = folder(environment, isCloud);
  if (!directory) {
    const auto error = isCloud ? BackupError::iCloudNotAvailable : BackupError::directoryNotFound;
    return Error{environment.texts.text(localizedDescription(error))};
  }
  if (auto made = environment.fileManager.createDirectory(*directory); !made) return made.error();

  BackupData backup;
  backup.medicines.reserve(snapshot.medicines.size());
  for (const MedicineSnapshot& medicine : snapshot.medicines) backup.medicines.push_back(backupOf(medicine));
  backup.settings = snapshot.settings;
  backup.createdAt = environment.clock.now();
  backup.appVersion = environment.bundle.versionOrDefault();
  const auto text = encodeBackup(backup);
  if (!text) return text.error();

  // Deliberate: the clock is read again for the name, which says when the file was written.
  const std::string path = *directory + '/' + fileName(environment);
  if (auto written = environment.fileManager.write(path, *text); !written) return written.error();
  return path;
}

Result<std::vector<BackupInfo>> list(const BackupEnvironment& environment, bool isCloud) {
  FileManager& files = environment.fileManager;
  std::vector<BackupInfo> backups;
  const auto directory = folder(environment, isCloud);
  if (!directory || !files.fileExists(*directory)) return backups;
  const auto paths = files.contentsOfDirectory(*directory);
  if (!paths) return paths.error();
  for (const std::string& path : *paths) {
    if (std::filesystem::path(path).extension() != kExtension) continue;
    const auto attributes = files.attributesOfItem(path);
    if (!attributes) return attributes.error();
    const Instant createdAt = attributes->creationDate ? *attributes->creationDate : environment.clock.now();
    backups.push_back({UUID::random(), path, createdAt, attributes->size.value_or(0), isCloud});
  }
  std::stable_sort(backups.begin(), backups.end(),
                   [](const BackupInfo& a, const BackupInfo& b) { return a.createdAt > b.createdAt; });
  return backups;
}

}  // namespace

std::string_view localizedDescription(BackupError error) {
  constexpr std::array<std::string_view, 4> kTexts = {
      ownText("Backup directory not found"), ownText("iCloud is not available"), ownText("Invalid backup file"),
      ownText("Failed to restore backup")};
  return kTexts[static_cast<size_t>(error)];
}

BackupService::BackupService(const BackupEnvironment& environment)
    : environment_(environment), alive_(std::make_shared<int>()) {}

template <typename T, typename Work>
void BackupService::run(Work work, Completion<T> completion) {
  runInBackground(environment_.background, environment_.executor, std::move(work),
                  [alive = std::weak_ptr(alive_), completion = std::move(completion)](Result<T> result) {
                    if (!alive.expired()) completion(std::move(result));
                  });
}

void BackupService::createLocalBackup(const std::vector<std::shared_ptr<Medicine>>& medicines,
                                      const AppSettings* settings, Completion<std::string> completion) {
  createBackup(false, medicines, settings, std::move(completion));
}

void BackupService::createiCloudBackup(const std::vector<std::shared_ptr<Medicine>>& medicines,
                                       const AppSettings* settings, Completion<std::string> completion) {
  createBackup(true, medicines, settings, std::move(completion));
}

void BackupService::createBackup(bool isCloud, const std::vector<std::shared_ptr<Medicine>>& medicines,
                                 const AppSettings* settings, Completion<std::string> completion) {
  Snapshot snapshot;
  snapshot.medicines.reserve(medicines.size());
  for (const auto& medicine : medicines) snapshot.medicines.push_back(snapshotOf(*medicine));
  if (settings != nullptr) snapshot.settings = snapshotOf(*settings);
  run<std::string>([environment = environment_, isCloud,
                    snapshot = std::move(snapshot)] { return create(environment, isCloud, snapshot); },
                   std::move(completion));
}

void BackupService::listLocalBackups(Completion<std::vector<BackupInfo>> completion) {
  run<std::vector<BackupInfo>>([environment = environment_] { return list(environment, false); },
                               std::move(completion));
}

void BackupService::listiCloudBackups(Completion<std::vector<BackupInfo>> completion) {
  run<std::vector<BackupInfo>>([environment = environment_] { return list(environment, true); }, std::move(completion));
}

void BackupService::deleteBackup(const std::string& url, Completion<void> completion) {
  run<void>([environment = environment_, url] { return environment.fileManager.removeItem(url); },
            std::move(completion));
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "model/AppSettings.h"
#include "model/Medicine.h"
#include "platform/BackgroundExecutor.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/MainExecutor.h"
#include "platform/Texts.h"
#include "support/Fields.h"
#include "support/Instant.h"
#include "support/Result.h"
#include "support/UUID.h"

namespace pillora {

/// One backup found in a folder.
struct BackupInfo {
  UUID id;                     ///< made anew by every listing, to tell rows apart
  std::string url;             ///< absolute path of the file
  Instant createdAt;           ///< the file's birth; now when the file system does not know it
  int64_t fileSize = 0;        ///< bytes; 0 when the file system does not say
  bool isCloudBackup = false;  ///< lies in the cloud folder

  bool operator==(const BackupInfo&) const = default;

  static constexpr auto fields() {
    return std::tuple(field("id", &BackupInfo::id), field("url", &BackupInfo::url),
                      field("createdAt", &BackupInfo::createdAt), field("fileSize", &BackupInfo::fileSize),
                      field("isCloudBackup", &BackupInfo::isCloudBackup));
  }
};

/// The service's own failures. The service raises the first two; a restore reports what the decoder says instead of
/// the others.
enum class BackupError { directoryNotFound, iCloudNotAvailable, invalidBackupFile, restoreFailed };

/// What a person reads, in English: "Backup directory not found", "iCloud is not available", "Invalid backup file",
/// "Failed to restore backup".
std::string_view localizedDescription(BackupError error);

/// What the service works with; all of it outlives the service and the queue. Clock and texts are used on the queue's
/// thread as well as on the main thread.
struct BackupEnvironment {
  FileManager& fileManager;
  BackgroundExecutor& background;
  MainExecutor& executor;
  const Clock& clock;
  const Texts& texts;
  Bundle bundle;
};

/// Writes, lists and deletes backup files in the folder "Backups" of the documents folder and of the cloud container.
/// Both are looked for anew every time. One service lives as long as the app.
///
/// Main thread only. Each operation runs on the background queue, one at a time in the order of the calls, and hands
/// its outcome to `completion` on the main thread, never before the call has returned and once at most: not when the
/// service is gone by then. An operation that has begun is carried through even so. Failures of files are passed on
/// as they are; nothing is retried or cleaned up.
class BackupService {
 public:
  template <typename T>
  using Completion = std::function<void(Result<T>)>;

  explicit BackupService(const BackupEnvironment& environment);

  /// Writes all of `medicines`, in their order, and `settings` unless null, and answers the file's path. The records
  /// are read before this returns. A second backup in the same second replaces the first; after a failure a
  /// half-written file may be left.
  void createLocalBackup(const std::vector<std::shared_ptr<Medicine>>& medicines, const AppSettings* settings,
                         Completion<std::string> completion);
  void createiCloudBackup(const std::vector<std::shared_ptr<Medicine>>& medicines, const AppSettings* settings,
                          Completion<std::string> completion);

  /// The entries whose names end in ".json", newest first by their birth. Empty when there is no folder.
  void listLocalBackups(Completion<std::vector<BackupInfo>> completion);
  void listiCloudBackups(Completion<std::vector<BackupInfo>> completion);

  /// Removes this one file.
  void deleteBackup(const std::string& url, Completion<void> completion);

 private:
  void createBackup(bool isCloud, const std::vector<std::shared_ptr<Medicine>>& medicines, const AppSettings* settings,
                    Completion<std::string> completion);
  template <typename T, typename Work>
  void run(Work work, Completion<T> completion);

  BackupEnvironment environment_;
  std::shared_ptr<void> alive_;  ///< what comes back from the queue goes nowhere once this is gone
};

}  // namespace pillora

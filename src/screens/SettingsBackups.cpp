// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "screens/SettingsView.h"
#include "store/SettingsInUse.h"

// How the settings screen makes, lists, restores and deletes backups.

namespace pillora {

namespace {

Result<BackupData> readBackup(FileManager& files, const std::string& url) {
  const auto contents = files.contents(url);
  return contents ? decodeBackup(*contents) : contents.error();
}

}  // namespace

template <typename Job>
auto SettingsView::whileShown(Job job) const {
  return [alive = std::weak_ptr<void>(alive_), job = std::move(job)](auto&& outcome) mutable {
    if (!alive.expired()) job(std::forward<decltype(outcome)>(outcome));
  };
}

void SettingsView::openBackupSheet() {
  showingBackupSheet_ = true;
  observers_.notify();
}

void SettingsView::closeBackupSheet() {
  showingBackupSheet_ = false;
  observers_.notify();
}

void SettingsView::createLocalBackup(Done<std::string> done) {
  createBackup(&BackupService::createLocalBackup, std::move(done));
}

void SettingsView::createiCloudBackup(Done<std::string> done) {
  createBackup(&BackupService::createiCloudBackup, std::move(done));
}

void SettingsView::createBackup(CreateOperation operation, Done<std::string> done) {
  if (isCreatingBackup_) return;
  ModelContext& context = environment_.context;
  isCreatingBackup_ = true;
  auto finish = whileShown([this, done = std::move(done)](const Result<std::string>& path) {
    finishCreating(path);
    if (done) done(path);
  });
  static_cast<void>(context.takeReadError());  // of an earlier read, which says nothing about this one
  const auto medicines = context.fetch<Medicine>();
  const auto settings = settingsInUse(context);
  if (const auto error = medicines ? context.takeReadError() : medicines.error()) {
    // A backup of what can be read would pass for a whole one.
    return finish(Result<std::string>(*error));
  }
  (backups_.*operation)(*medicines, settings.get(), finish);
  observers_.notify();
}

void SettingsView::finishCreating(const Result<std::string>& path) {
  isCreatingBackup_ = false;
  if (path) {
    settingsInUse(environment_.context)->lastBackupDate = environment_.clock.now();
    showingBackupSheet_ = false;
    showingBackupSuccess_ = true;
  } else {
    backupError_ = path.error().description;
  }
  observers_.notify();
}

void SettingsView::openRestoreSheet(Done<void> done) {
  showingRestoreSheet_ = true;
  loadBackups(std::move(done));
}

void SettingsView::closeRestoreSheet() {
  showingRestoreSheet_ = false;
  observers_.notify();
}

void SettingsView::loadBackups(Done<void> done) {
  listingsUnderWay_ += 2;
  const auto outcome = std::make_shared<Result<void>>();
  backups_.listLocalBackups(whileShown([this, outcome](Listing listing) {  //
    takeOver(localBackups_, std::move(listing), *outcome);
  }));
  backups_.listiCloudBackups(whileShown([this, outcome, done = std::move(done)](Listing listing) {
    takeOver(cloudBackups_, std::move(listing), *outcome);
    if (done) done(*outcome);
  }));
  observers_.notify();
}

void SettingsView::takeOver(std::vector<BackupInfo>& list, Listing listing, Result<void>& outcome) {
  --listingsUnderWay_;
  if (listing) {
    list = *std::move(listing);
  } else {
    console_.print("Error loading backups: " + listing.error().description);
    outcome = listing.error();
  }
  observers_.notify();
}

void SettingsView::restoreBackup(const std::string& url, Done<RestoredBackup> done) {
  if (isRestoring_) return;
  isRestoring_ = true;
  runInBackground(
      backupEnvironment_.background, backupEnvironment_.executor,
      [&files = backupEnvironment_.fileManager, url] { return readBackup(files, url); },
      whileShown([this, done = std::move(done)](const Result<BackupData>& data) {
        const auto restored = restore(data);
        if (done) done(restored);
      }));
  observers_.notify();
}

/// All of it between two turns, so that one transaction writes all of it.
Result<RestoredBackup> SettingsView::restore(const Result<BackupData>& data) {
  isRestoring_ = false;
  Result<RestoredBackup> restored = RestoredBackup();
  if (data) {
    ModelContext& context = environment_.context;
    const Instant now = environment_.clock.now();
    // Deliberate: what is there stays, and no reminder is planned for what is added. The notes tell people so.
    for (const MedicineBackup& backup : data->medicines) {
      context.insert(Medicine::make(newMedicine(backup), now));
    }
    if (data->settings) restoreSettings(*data->settings, *settingsInUse(context));
    restored = RestoredBackup{data->medicines.size(), data->settings.has_value()};
    showingRestoreSheet_ = false;
    showingRestoreSuccess_ = true;
  } else {
    backupError_ = data.error().description;
    restored = data.error();
  }
  observers_.notify();
  return restored;
}

void SettingsView::deleteBackup(const std::string& url, std::function<void(bool)> done) {
  const auto isListed = [&](const std::vector<BackupInfo>& list) {
    return std::any_of(list.begin(), list.end(), [&](const BackupInfo& backup) { return backup.url == url; });
  };
  if (!isListed(localBackups_) && !isListed(cloudBackups_)) {
    if (done) done(false);
    return;
  }
  backups_.deleteBackup(url, whileShown([this, done = std::move(done)](const Result<void>& deleted) {
                          loadBackups({});
                          if (done) done(static_cast<bool>(deleted));
                        }));
}

}  // namespace pillora

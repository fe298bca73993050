// SPDX-License-Identifier: MIT
#include <array>
#include <chrono>
#include <filesystem>

#include "lives/Life.h"

namespace pillora {

// What the simulated person does with settings and backups.

namespace {

/// What a backup file can tell of a time.
Instant wholeSecond(Instant time) { return Instant::fromSeconds(floorDiv(time.microseconds(), 1'000'000)); }

}  // namespace

void Life::changeSetting() {
  SettingsView& screen = process_->settings;
  SettingsBackup& must = *ledger_.records.settings;
  const auto toggle = [&](const char* id, bool& value) {
    note(std::string("switches ") + id);
    value = !value;
    expect(screen.setToggle(id, value), "a switch of Settings");
  };
  switch (below(9)) {
    case 0:
      return toggle("use24HourTime", must.use24HourTime);
    case 1:
      return toggle("showMedicineIcons", must.showMedicineIcons);
    case 2:
      return toggle("enableHaptics", must.enableHaptics);
    case 3:
      return toggle("requireAuthentication", must.requireAuthentication);
    case 4:
      return toggle("enableLocalBackup", must.enableLocalBackup);
    case 5:
      must.weekStartDay = oneOf(kAllWeekStartDays);
      return expect(screen.pick("weekStartDay", std::to_string(rawValue(must.weekStartDay))), "the week's start");
    case 6:
      must.notificationSound = oneOf(kAllNotificationSounds);
      return expect(screen.pick("notificationSound", rawValue(must.notificationSound)), "the sound");
    case 7:
      must.backupFrequency = oneOf(kAllBackupFrequencies);
      return expect(screen.pick("backupFrequency", rawValue(must.backupFrequency)), "the frequency of backups");
    default:
      if (screen.increment("defaultSnoozeDurationMinutes")) ++must.defaultSnoozeDurationMinutes;
      if (oneIn(2) && screen.decrement("defaultMaxSnoozeCount")) --must.defaultMaxSnoozeCount;
  }
}

void Life::makeBackup() {
  const bool isCloud = oneIn(3);
  note(isCloud ? "makes a cloud backup" : "makes a backup");
  Backup must{{}, *ledger_.records.settings};
  for (const BookedMedicine& each : ledger_.records.medicines) {
    must.medicines.push_back(each.values);
    NewMedicine& values = must.medicines.back();
    values.startDate = wholeSecond(values.startDate);
    if (values.endDate) values.endDate = wholeSecond(*values.endDate);
  }
  std::optional<std::string> path;
  const auto done = [&](const Result<std::string>& made) {
    if (made) path = *made;
  };
  SettingsView& screen = process_->settings;
  screen.openBackupSheet();
  isCloud ? screen.createiCloudBackup(done) : screen.createLocalBackup(done);
  // The file holds what there was when the button was pressed.
  if (oneIn(2)) takeToday();
  if (oneIn(2)) changeSetting();
  process_->settle();
  if (!path) return expect(false, "a backup was not made");
  ledger_.records.lastBackupDate = now();
  backups_[*path] = std::move(must);
  expect(!screen.content().backupSheet && screen.content().alerts.size() == 1, "what is shown after a backup");
  screen.dismissAlert("backupCreated");
}

void Life::restore() {
  if (backups_.empty()) return;
  SettingsView& screen = process_->settings;
  screen.openRestoreSheet();
  process_->settle();
  Inspection::Lines listed, expected;
  const auto sheet = screen.content().restoreSheet;
  for (const auto& section : sheet->sections) {
    for (const auto& row : section.rows) listed.push_back(row.backup.url);
  }
  for (const auto& [path, backup] : backups_) expected.push_back(path);
  std::sort(listed.begin(), listed.end());
  inspect([&](Inspection& look) { look.expectEqual("the backups listed", expected, listed); });

  const auto& [path, backup] = *std::next(backups_.begin(), static_cast<std::ptrdiff_t>(below(backups_.size())));
  note("restores " + std::to_string(backup.medicines.size()) + " medicines of " +
       std::filesystem::path(path).filename().string());
  screen.restoreBackup(path);
  if (oneIn(3)) takeToday();
  process_->settle();
  const auto medicines = process_->context().fetch<Medicine>();
  if (!medicines || medicines->size() != ledger_.records.medicines.size() + backup.medicines.size()) {
    return expect(false, "the number of medicines after a restore");
  }
  for (size_t i = 0; i < backup.medicines.size(); ++i) {
    ledger_.add((*medicines)[medicines->size() - backup.medicines.size() + i]->id(), backup.medicines[i], now());
  }
  ledger_.records.settings = backup.settings;
  expect(!screen.content().restoreSheet && screen.content().alerts.size() == 1, "what is shown after a restore");
  screen.dismissAlert("restoreComplete");
}

void Life::deleteBackup() {
  // People keep a few.
  if (backups_.size() < 4) return;
  const auto oldest = backups_.begin();
  note("deletes a backup");
  bool isGone = false;
  process_->settings.openRestoreSheet();
  process_->settle();
  process_->settings.deleteBackup(oldest->first, [&](bool succeeded) { isGone = succeeded; });
  process_->settle();
  process_->settings.closeRestoreSheet();
  expect(isGone && !std::filesystem::exists(oldest->first), "a backup was not deleted");
  backups_.erase(oldest);
}

/// Nothing is applied of it.
void Life::restoreWhatIsNoBackup() {
  if (backups_.empty()) return;
  const std::string& whole = backups_.begin()->first;
  const auto contents = world_.files.contents(whole);
  if (!contents) return expect(false, "a backup cannot be read");
  const std::string part = whole + ".part";
  expect(static_cast<bool>(world_.files.write(part, contents->substr(0, below(contents->size() - 2)))), "writing");
  note("restores what is no backup");
  process_->settings.restoreBackup(part);
  process_->settle();
  const auto alerts = process_->settings.content().alerts;
  expect(alerts.size() == 1 && alerts.front().id == "backupError", "what is shown after a failed restore");
  process_->settings.dismissAlert("backupError");
  std::filesystem::remove(part);
}

}  // namespace pillora

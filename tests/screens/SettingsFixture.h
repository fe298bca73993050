// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "doubles/FakeBackgroundExecutor.h"
#include "doubles/InMemoryFileManager.h"
#include "doubles/ScreenFixture.h"
#include "screens/SettingsView.h"

namespace pillora {

/// The settings screen on a store of its own, with files in memory and a background queue that runs when told to.
struct SettingsFixture : ScreenFixture {
  explicit SettingsFixture(Instant now, const Place& place = {},
                           const ModelConfiguration& configuration = {.isStoredInMemoryOnly = true})
      : ScreenFixture(now, place, configuration) {}

  BackupEnvironment backupEnvironment() { return {files, background, executor, clock, *texts, bundle}; }
  SettingsView makeView(LAContextFactory makeContext = {}) {
    return SettingsView(environment(), backupEnvironment(), backups, console, std::move(makeContext));
  }

  /// Runs what waits in the background and on the main queue, until nothing is left.
  void settle() {
    do {
      background.runAll();
      endTurn();
    } while (background.waiting() > 0);
  }

  /// The settings record; there must be one.
  AppSettings& record() {
    held_ = context().fetch<AppSettings>()->at(0);
    return *held_;
  }
  int64_t recordCount() { return *context().fetchCount<AppSettings>(); }
  std::vector<std::string> medicineNames() {
    std::vector<std::string> names;
    const auto medicines = *context().fetch<Medicine>();
    for (const auto& medicine : medicines) names.push_back(medicine->name());
    return names;
  }

  InMemoryFileManager files{clock};
  FakeBackgroundExecutor background;
  Bundle bundle{"org.pillora.Pillora", "2.5"};
  BackupService backups{backupEnvironment()};

 private:
  std::shared_ptr<AppSettings> held_;
};

/// The row with this id, of whichever kind.
inline const FormRow* rowIn(const std::vector<FormSection>& sections, std::string_view id) {
  for (const FormSection& section : sections) {
    for (const FormRow& row : section.rows) {
      if (std::visit([&](const auto& one) { return one.id == id; }, row)) return &row;
    }
  }
  return nullptr;
}

/// The row with this id as a row of this kind; an empty one when there is no such row.
template <typename Row>
Row row(const SettingsContent& content, std::string_view id) {
  const FormRow* found = rowIn(content.sections, id);
  const Row* typed = found == nullptr ? nullptr : std::get_if<Row>(found);
  return typed == nullptr ? Row{} : *typed;
}

inline std::vector<std::string> alertIds(const SettingsContent& content) {
  std::vector<std::string> ids;
  for (const MessageAlert& alert : content.alerts) ids.push_back(alert.id);
  return ids;
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "lives/World.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <filesystem>
#include <unistd.h>

#include "doubles/ScopedVariable.h"

namespace pillora {

namespace {

namespace fs = std::filesystem;

constexpr const char* kMemory = "/dev/shm";

/// In memory, if there is a folder for that.
std::unique_ptr<TemporaryFolder> folderInMemory() {
  if (access(kMemory, W_OK | X_OK) != 0) return std::make_unique<TemporaryFolder>();
  const ScopedVariable place("TMPDIR", kMemory);
  return std::make_unique<TemporaryFolder>();
}

}  // namespace

World::World(Instant now, std::string locale, const std::string& zone)
    : clock(now),
      locale_(std::move(locale)),
      folder_(folderInMemory()),
      files([this] { return folder_->file("Documents"); }, [this] { return folder_->file("Cloud"); }) {
  fs::create_directory(processFolder());
  travelTo(zone);
}

void World::travelTo(const std::string& zone) {
  const auto [place, isNew] = places_.try_emplace(zone);
  Here& here = place->second;
  if (isNew) here = {calendarOf(locale_, zone), calendarOf("en_US", zone), textsOf(locale_, zone)};
  zoneName_ = zone;
  calendar.be(*here.calendar);
  gregorian.be(*here.gregorian);
  texts.be(*here.texts);
}

void World::killNow() {
  const std::string left = processFolder();
  ++generation_;
  fs::create_directory(processFolder());
  for (const char* name : {"/Pillora.store", "/Pillora.store-wal", "/reminders.db", "/reminders.db-wal"}) {
    if (fs::exists(left + name)) fs::copy_file(left + name, processFolder() + name);
  }
}

std::vector<std::string> World::remindersLeft() const {
  std::vector<std::string> names;
  SQLite::Database database(remindersPath(), SQLite::OPEN_READWRITE);
  SQLite::Statement query(database, "SELECT identifier FROM requests ORDER BY serial");
  while (query.executeStep()) names.push_back(query.getColumn(0).getString());
  return names;
}

Process::Process(World& in)
    : world(in),
      center(valueOrAbort(InProcessCenter::open(in.remindersPath(), in.clock, in.zoneRules, executor, in.presenter))),
      app(valueOrAbort(PilloraApp::start(
          {in.clock, in.calendar, in.texts, *center, *center, executor, in.console, in.device.factory(), {}},
          {.path = in.storePath()}))),
      backups(backupEnvironment()),
      root(environment(), app->authenticationManager()),
      today(environment()),
      upcoming(environment()),
      list(environment()),
      history(environment()),
      settings(environment(), backupEnvironment(), backups, in.console) {}

BackupEnvironment Process::backupEnvironment() {
  return {world.files, background, executor, world.clock, world.texts, {}};
}

void Process::settle() {
  do {
    background.runAll();
    executor.drain();
  } while (background.waiting() > 0);
}

}  // namespace pillora

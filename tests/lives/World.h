// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "agent/InProcessCenter.h"
#include "app/ContentView.h"
#include "app/PilloraApp.h"
#include "backup/BackupService.h"
#include "doubles/FakeBackgroundExecutor.h"
#include "doubles/FakeClock.h"
#include "doubles/Places.h"
#include "doubles/RecordingPresenter.h"
#include "doubles/ScriptedAuthenticator.h"
#include "doubles/TemporaryFolder.h"
#include "linux/PosixFileManager.h"
#include "screens/AddMedicineView.h"
#include "screens/MedicineDetailView.h"
#include "screens/MedicineListView.h"
#include "screens/ReminderHistoryView.h"
#include "screens/SettingsView.h"
#include "screens/TodayView.h"
#include "screens/UpcomingView.h"

namespace pillora {

/// The calendar of wherever the person is at the moment.
class TravellingCalendar final : public Calendar {
 public:
  void be(const Calendar& here) { here_ = &here; }

  std::string identifier() const override { return here_->identifier(); }
  DateComponents components(Instant instant) const override { return here_->components(instant); }
  std::optional<Instant> date(const DateComponents& components) const override { return here_->date(components); }
  std::optional<Instant> dateOfTime(int64_t hour, int64_t minute) const override {
    return here_->dateOfTime(hour, minute);
  }
  std::optional<Instant> adding(CalendarUnit unit, int64_t amount, Instant instant) const override {
    return here_->adding(unit, amount, instant);
  }
  int weekday(Instant instant) const override { return here_->weekday(instant); }
  Instant startOfDay(Instant instant) const override { return here_->startOfDay(instant); }
  Instant startOfMinute(Instant instant) const override { return here_->startOfMinute(instant); }
  std::chrono::seconds utcOffset(Instant instant) const override { return here_->utcOffset(instant); }

 private:
  const Calendar* here_ = nullptr;
};

/// The texts of wherever the person is; own texts stay English.
class TravellingTexts final : public Texts {
 public:
  void be(const Texts& here) { here_ = &here; }

  bool readsRightToLeft() const override { return false; }
  std::string shortTime(Instant instant, bool use24HourTime) const override {
    return here_->shortTime(instant, use24HourTime);
  }
  std::string fullDate(Instant instant) const override { return here_->fullDate(instant); }
  std::string mediumDate(Instant instant) const override { return here_->mediumDate(instant); }
  std::string mediumDateAndShortTime(Instant instant, bool use24HourTime) const override {
    return here_->mediumDateAndShortTime(instant, use24HourTime);
  }
  std::string weekdayAndDay(Instant instant) const override { return here_->weekdayAndDay(instant); }
  std::string monthAndYear(Instant instant) const override { return here_->monthAndYear(instant); }
  std::string dayOfMonth(Instant instant) const override { return here_->dayOfMonth(instant); }
  std::string hour(Instant instant, bool use24HourTime) const override { return here_->hour(instant, use24HourTime); }
  std::string minute(Instant instant) const override { return here_->minute(instant); }
  std::string timestamp(Instant instant) const override { return here_->timestamp(instant); }
  std::string shortWeekdaySymbol(int weekday) const override { return here_->shortWeekdaySymbol(weekday); }
  std::string relative(Instant instant, Instant now) const override { return here_->relative(instant, now); }
  int compareNames(std::string_view a, std::string_view b) const override { return here_->compareNames(a, b); }
  bool containsIgnoringCase(std::string_view text, std::string_view part) const override {
    return here_->containsIgnoringCase(text, part);
  }

 protected:
  std::string number(double value, int) const override { return std::to_string(value); }
  std::string translated(std::string_view, std::string_view english) const override { return std::string(english); }
  std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const override {
    return std::string(n == 1 ? one : other);
  }

 private:
  const Texts* here_ = nullptr;
};

/// Keeps what is printed except for the line that all is well.
class Complaints final : public Console {
 public:
  void print(std::string_view line) override {
    if (line != "Background task scheduled for missed dose check") lines.emplace_back(line);
  }

  std::vector<std::string> lines;
};

/// What outlives every process: the clock, the place, the device and the disk. Files lie in memory where there is such
/// a folder, since all that is written is synced.
class World {
 public:
  World(Instant now, std::string locale, const std::string& zone);

  void travelTo(const std::string& zone);
  const std::string& zone() const { return zoneName_; }
  std::string storePath() const { return processFolder() + "/Pillora.store"; }
  std::string remindersPath() const { return processFolder() + "/reminders.db"; }
  /// From now on the store and the reminder file are copies of what lies on the disk at this moment: what a process
  /// that is killed now leaves behind. The process itself is to be destroyed next; it no longer writes to them.
  void killNow();
  /// The names in the reminder file, in the order in which they were planned. No process must have it open.
  std::vector<std::string> remindersLeft() const;

  FakeClock clock;
  TravellingCalendar calendar, gregorian;
  TravellingTexts texts;
  CalendarZone zoneRules{gregorian};
  RecordingPresenter presenter;
  Complaints console;
  ScriptedAuthenticator device;

 private:
  struct Here {
    std::unique_ptr<Calendar> calendar, gregorian;
    std::unique_ptr<Texts> texts;
  };

  std::string processFolder() const { return folder_->file(std::to_string(generation_)); }

  const std::string locale_;
  std::string zoneName_;
  std::map<std::string, Here> places_;
  std::unique_ptr<TemporaryFolder> folder_;
  int generation_ = 0;

 public:
  PosixFileManager files;
};

/// A main queue that can be stopped between two jobs.
class StoppingExecutor final : public MainExecutor {
 public:
  void post(std::function<void()> job) override { jobs_.push_back(std::move(job)); }
  bool runOne() {
    if (jobs_.empty()) return false;
    const auto job = std::move(jobs_.front());
    jobs_.pop_front();
    job();
    return true;
  }
  void drain() {
    while (runOne()) {
    }
  }

 private:
  std::deque<std::function<void()>> jobs_;
};

/// One run of the program: everything that main() makes, on the world's files.
class Process {
 public:
  explicit Process(World& world);

  ModelContext& context() { return app->container().mainContext(); }
  ScreenEnvironment environment() { return {context(), world.clock, world.calendar, world.texts, notifications()}; }
  NotificationManager& notifications() { return app->notificationManager(); }
  /// Runs what waits in the background and on the main queue, until nothing is left.
  void settle();

  World& world;
  StoppingExecutor executor;
  std::unique_ptr<InProcessCenter> center;
  std::unique_ptr<PilloraApp> app;
  FakeBackgroundExecutor background;
  BackupService backups;
  ContentView root;
  TodayView today;
  UpcomingView upcoming;
  MedicineListView list;
  ReminderHistoryView history;
  SettingsView settings;

 private:
  BackupEnvironment backupEnvironment();
};

}  // namespace pillora

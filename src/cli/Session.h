// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/PilloraApp.h"
#include "backup/BackupService.h"
#include "cli/CliEnvironment.h"
#include "cli/CommandLine.h"
#include "cli/HeldCenter.h"
#include "model/Medicine.h"
#include "screens/Screen.h"
#include "screens/SettingsView.h"
#include "store/ModelContainer.h"
#include "support/Result.h"

namespace pillora {

/// One call's zone, locale, instant, store and reminders. A call has a single *now*, read once.
class Session {
 public:
  /// Reads the options before the command. Errors are wrong usage.
  static Result<std::unique_ptr<Session>> begin(const CommandLine& line, const CliEnvironment& environment);

  /// Closes the store. What was not saved is given up.
  ~Session();

  bool json() const { return line_.json; }
  const Terminal& terminal() const { return environment_.terminal; }
  Instant now() const { return clock_.now(); }
  const Calendar& calendar() const { return *calendar_; }
  const Texts& texts() const { return *texts_; }
  Console& console() const { return environment_.console; }
  /// Of the session's own centre; that of another store shows nothing by its nature.
  ReminderService reminderService() const {
    const bool starts = line_.store || environment_.agentStartsAtLogin();
    return starts ? ReminderService::fromEveryLogin : ReminderService::untilLogout;
  }

  /// Reads an instant; without an offset it is local time in the zone in use. Errors are wrong usage.
  Result<Instant> instant(std::string_view text) const;
  /// The instant of a Gregorian local time in the zone in use.
  std::optional<Instant> instantOf(const WallTime& wall) const;

  /// Whether the call may go on: the app is not locked, or its owner has now authenticated. Opens the store and
  /// nothing else; an error is a store that cannot be opened or read.
  Result<bool> unlock();
  /// Why it may not.
  std::string lockedText() const;

  /// Opens the store at the first call, for the screens to work on. A reminder file that was named is opened too and
  /// lets pass what fell due; any other centre is opened when a screen plans or cancels.
  Result<ScreenEnvironment> open();
  /// Opens the notification centre at the first call.
  Result<UNUserNotificationCenter*> notificationCenter();
  /// Lets the notification manager know what is allowed; opens the centre.
  Result<void> readPermission();
  /// What backups work with, in the folders of the call; jobs of its queue run at once.
  BackupEnvironment backupEnvironment();
  /// Starts the app on the call's store and reminders; its lines go to `console`. It must not outlive the session.
  Result<std::unique_ptr<PilloraApp>> startApp(Console& console);
  /// Whether times are shown in the 24-hour form; opens the store.
  bool use24HourTime();
  /// The medicine that `ref` names: its identifier in either case, else a name that only one medicine has, else a
  /// beginning of a name that fits one medicine only, both without regard to case.
  Result<std::shared_ptr<Medicine>> medicine(std::string_view ref);
  /// Writes what the command changed, all of it or nothing, then hands over what it planned and cancelled.
  Result<void> save();
  /// Runs what was left for the end of the turn, and waits for what the notification centre has to answer. The error is
  /// of a change or a question that no completion told.
  Result<void> endTurn();
  /// See CliEnvironment; null where nobody tells.
  std::shared_ptr<void> whenToldToEnd(std::function<void()> ended) const;

 private:
  struct FixedClock final : Clock {
    explicit FixedClock(Instant instant) : instant_(instant) {}
    Instant now() const override { return instant_; }
    Instant instant_;
  };

  struct SameThread final : BackgroundExecutor {
    void post(std::function<void()> job) override { job(); }
  };

  Session(const CommandLine& line, const CliEnvironment& environment);
  Result<void> prepare();
  Result<Reminders*> reminders();
  Region region() const { return {line_.timeZone, line_.locale}; }
  Result<ModelConfiguration> storeConfiguration() const;
  Result<ModelContext*> openStore();
  /// In the zone in use: ISO 8601 dates and the reminders' wall times are Gregorian, whatever the locale's calendar.
  Result<const Calendar*> gregorian() const;

  const CommandLine& line_;
  const CliEnvironment& environment_;
  FixedClock clock_;
  std::unique_ptr<Calendar> calendar_;
  std::unique_ptr<Texts> texts_;
  mutable std::unique_ptr<Calendar> gregorian_;  ///< made when it is first needed
  std::optional<Reminders> reminders_;
  std::unique_ptr<ModelContainer> container_;
  HeldCenter heldCenter_;
  std::unique_ptr<FileManager> files_;  ///< made when it is first needed
  SameThread background_;
  BroadcastCentre broadcasts_;
  std::optional<NotificationManager> notifications_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "cli/Reminders.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "platform/FileManager.h"
#include "platform/LAContext.h"
#include "platform/MainExecutor.h"
#include "platform/Texts.h"
#include "support/Result.h"

namespace pillora {

/// Where text is printed: how wide a line may be, and whether colours show.
struct Terminal {
  size_t columns = 80;
  bool hasColor = false;
};

/// A time zone and a locale by name; what is absent is the system's.
struct Region {
  std::optional<std::string> timeZone, locale;
};

/// Where backups lie.
struct BackupPlaces {
  std::optional<std::string> documents, cloud;  ///< absolute paths
  bool orOwn = false;                           ///< what is absent is the user's own folder, else there is none
};

/// The device's owner, who is asked while the app is locked.
struct DeviceOwner {
  LAContextFactory makeContext;
  std::function<void()> await;  ///< waits until something is posted to the call's executor, then runs it
  /// Says something to the person at the terminal, apart from what the call prints; nothing where nobody sits.
  std::function<void(const std::string& line)> tell;
};

/// What pilloractl is run on. main() fills it with the real adapters, tests with their own. The makers answer an error
/// that names a zone, locale or language which they do not know; what they make outlives the environment's users.
struct CliEnvironment {
  const Clock& clock;
  Console& console;  ///< standard error: each failure is one line
  MainExecutor& executor;
  Terminal terminal;
  std::function<Result<std::unique_ptr<Calendar>>(const Region&)> makeCalendar;
  /// Without a language, own texts are in that of the system.
  std::function<Result<std::unique_ptr<Texts>>(const Region&, const std::optional<std::string>& language)> makeTexts;
  /// The app's own store file, its folder made when missing.
  std::function<Result<std::string>()> defaultStore;
  /// Opens the session's own notification centre, or one that is kept in a file; from the latter what fell due is let
  /// pass, unseen.
  std::function<Result<Reminders>(const RemindersPlace&)> openReminders;
  std::function<void()> endTurn;  ///< runs what was posted to `executor`
  DeviceOwner deviceOwner = {};
  /// While the answer is kept, a request to the process to end calls `ended`, on another thread, and does nothing else.
  std::function<std::shared_ptr<void>(std::function<void()> ended)> whenToldToEnd = {};
  std::function<bool()> agentStartsAtLogin = [] { return true; };
  /// The files that backups are made of.
  std::function<std::unique_ptr<FileManager>(const BackupPlaces&)> makeFileManager = {};
};

}  // namespace pillora

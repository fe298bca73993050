// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "cli/CommandLine.h"
#include "cli/Session.h"
#include "support/JsonForward.h"
#include "support/Result.h"

namespace pillora {

// Every command in two steps, so that wrong usage is found before anything is opened: its function reads the words and
// answers what to do, an error being wrong usage; doing it answers what is printed, an error being a refusal.

using Action = std::function<Result<std::string>()>;

// The screens.
Result<Action> todayCommand(const CommandLine& line, Session& session);
Result<Action> upcomingCommand(const CommandLine& line, Session& session);
Result<Action> medicinesCommand(const CommandLine& line, Session& session);
Result<Action> historyCommand(const CommandLine& line, Session& session);

// Medicines.
Result<Action> medicineCommand(const CommandLine& line, Session& session);
Result<Action> addCommand(const CommandLine& line, Session& session);
Result<Action> editCommand(const CommandLine& line, Session& session);
Result<Action> deleteCommand(const CommandLine& line, Session& session);

// Doses and their logs.
Result<Action> takeCommand(const CommandLine& line, Session& session);
Result<Action> skipCommand(const CommandLine& line, Session& session);
Result<Action> snoozeCommand(const CommandLine& line, Session& session);
Result<Action> undoCommand(const CommandLine& line, Session& session);
Result<Action> markCommand(const CommandLine& line, Session& session);
Result<Action> logsCommand(const CommandLine& line, Session& session);

// The app's own work and what it planned.
Result<Action> launchCommand(const CommandLine& line, Session& session);
Result<Action> markMissedCommand(const CommandLine& line, Session& session);
Result<Action> runTaskCommand(const CommandLine& line, Session& session);
Result<Action> remindersCommand(const CommandLine& line, Session& session);

// Preferences and backups.
Result<Action> settingsCommand(const CommandLine& line, Session& session);
Result<Action> backupCommand(const CommandLine& line, Session& session);

// What needs no store.
Result<Action> nextCommand(const CommandLine& line, Session& session);
Result<Action> completionCommand(const CommandLine& line, Session& session);

/// One JSON value as one line.
std::string jsonLine(const Json& json);
/// A sentence to a person at a terminal.
std::string messageLine(std::string_view text, const Session& session);

}  // namespace pillora

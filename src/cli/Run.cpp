// SPDX-License-Identifier: MIT
#include "cli/Run.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/Page.h"
#include "support/Json.h"

namespace pillora {

namespace {

struct Command {
  std::string_view name;
  Result<Action> (*read)(const CommandLine& line, Session& session);
};

constexpr std::array kCommands = {
    Command{"launch", launchCommand},
    Command{"today", todayCommand},
    Command{"upcoming", upcomingCommand},
    Command{"medicines", medicinesCommand},
    Command{"history", historyCommand},
    Command{"medicine", medicineCommand},
    Command{"add", addCommand},
    Command{"edit", editCommand},
    Command{"delete", deleteCommand},
    Command{"take", takeCommand},
    Command{"skip", skipCommand},
    Command{"snooze", snoozeCommand},
    Command{"undo", undoCommand},
    Command{"mark", markCommand},
    Command{"logs", logsCommand},
    Command{"reminders", remindersCommand},
    Command{"mark-missed", markMissedCommand},
    Command{"run-task", runTaskCommand},
    Command{"settings", settingsCommand},
    Command{"backup", backupCommand},
    Command{"next", nextCommand},
    Command{"completion", completionCommand},
};

ExitStatus fail(const CliEnvironment& environment, const Error& error, ExitStatus status) {
  environment.console.print("pilloractl: " + harmless(error.description));
  return status;
}

/// Whether a command goes on while the app is locked: those that know nothing of a person, and a run that the scheduler
/// began, which prints nothing and does what it would do at the same hour with the app unlocked.
bool passesTheLock(const CommandLine& line) {
  return line.command == "next" || line.command == "completion" || line.isScheduled;
}

}  // namespace

int run(const std::vector<std::string>& arguments, const CliEnvironment& environment, std::ostream& out) {
  const auto parsed =
      parseCommandLine(arguments, [&](const auto& language) { return environment.makeTexts({}, language); });
  if (!parsed) return fail(environment, parsed.error(), kWrongUsage);
  if (const auto* help = std::get_if<HelpText>(&*parsed)) {
    out << help->text;
    return kDone;
  }
  const auto& line = std::get<CommandLine>(*parsed);
  const auto session = Session::begin(line, environment);
  if (!session) return fail(environment, session.error(), kWrongUsage);
  const auto command =
      std::find_if(kCommands.begin(), kCommands.end(), [&](const Command& one) { return one.name == line.command; });
  const auto action = command->read(line, **session);
  if (!action) return fail(environment, action.error(), kWrongUsage);
  if (!passesTheLock(line)) {
    const auto unlocked = (*session)->unlock();
    if (!unlocked) return fail(environment, unlocked.error(), kRefused);
    if (!*unlocked) return fail(environment, Error{(*session)->lockedText()}, kLocked);
  }
  const auto printed = (*action)();
  if (!printed) return fail(environment, printed.error(), kRefused);
  out << *printed;
  return kDone;
}

std::string messageLine(std::string_view text, const Session& session) {
  Page page(session.terminal());
  page.paragraph({std::string(text)});
  return page.text();
}

std::string jsonLine(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n'; }

}  // namespace pillora

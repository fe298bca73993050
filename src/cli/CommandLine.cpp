// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/DisplayText.h"

namespace pillora {

namespace {

using Word = CommandLine::Word;

CLI::Option* value(CLI::App& app, const std::string& name, Word& into, const std::string& placeholder,
                   const std::string& description) {
  auto* option = app.add_option_function<std::string>(
      name, [&into](const std::string& text) { into = text; }, description);
  option->option_text(placeholder)->type_name("value");
  return option;
}

CLI::Option* argument(CLI::App& app, const std::string& name, Word& into, const std::string& description) {
  return value(app, name, into, " ", description);
}

CLI::App& command(CLI::App& app, const std::string& name, const std::string& description,
                  const std::string& examples = {}) {
  CLI::App& subcommand = *app.add_subcommand(name, description);
  subcommand.group("Commands");
  if (!examples.empty()) subcommand.footer("Examples:\n" + examples);
  return subcommand;
}

void addGlobalOptions(CLI::App& app, CommandLine& line) {
  app.add_flag("--json", line.json, "Print one JSON object");
  value(app, "--store", line.store, "FILE", "The store, made when missing (default: the app's)");
  value(app, "--reminders", line.reminders, "FILE", "Keep reminders in FILE, where none is shown");
  value(app, "--documents", line.documents, "DIR", "Where local backups lie (default: your documents)");
  value(app, "--cloud", line.cloud, "DIR", "Where cloud backups lie (default: your sync folder)");
  value(app, "--now", line.now, "INSTANT", "Act as at this instant; only together with --store");
  value(app, "--time-zone", line.timeZone, "ID", "Instead of the system's: Europe/Berlin");
  value(app, "--locale", line.locale, "ID", "Instead of the system's: th_TH@calendar=buddhist");
  value(app, "--language", line.language, "ID", "Of Pillora's own words: de, fr, es, ar, zh_CN, en");
  value(app, "--authenticator", line.authenticator, "allow|refuse", "Answers the lock; only together with --store");
  app.add_flag("--no-prompt", line.noPrompt, "While locked, end without asking anybody");
}

void addScreens(CLI::App& app, CommandLine& line) {
  command(app, "today", "What is due today and what was done");
  command(app, "upcoming", "Every open dose of the next seven days");
  auto& medicines = command(app, "medicines", "All medicines and when each is due next");
  value(medicines, "--search", line.search, "TEXT", "Only those whose name holds TEXT");
  auto& medicine =
      command(app, "medicine", "One medicine, when it is due, and its last doses", "  pilloractl medicine aspirin");
  argument(medicine, "REF", line.ref, "The medicine")->required();
  auto& history = command(app, "history", "What became of every dose, and how many were taken",
                          "  pilloractl history --range month\n"
                          "  pilloractl history --range all --filter missed");
  value(history, "--range", line.range, "today|week|month|all", "How far back (default: week)");
  value(history, "--filter", line.filter, "all|taken|missed|skipped", "Only these doses (default: all)");
}

void addScheduleOptions(CLI::App& add, CommandLine& line) {
  const std::vector<CLI::Option*> schedules = {
      value(add, "--every-hours", line.everyHours, "N", "A dose every N hours, 1 to 24"),
      value(add, "--daily", line.daily, "HH:MM,...", "Every day at these times (default: 09:00)"),
      value(add, "--weekly", line.weekly, "D,...@HH:MM", "On these weekdays, 1 = Sunday to 7 = Saturday"),
      value(add, "--monthly", line.monthly, "D,...@HH:MM", "On these days of the month, 1 to 31"),
      value(add, "--custom", line.custom, "H:M", "Every H hours and M minutes, M a multiple of 5"),
      value(add, "--interval", line.interval, "JSON", "A schedule as stored")};
  for (CLI::Option* one : schedules) {
    for (CLI::Option* other : schedules) {
      if (one != other) one->excludes(other);
    }
    one->group("Schedule (at most one)");
  }
}

/// What `add` and `edit` share; only a new medicine has defaults.
void addFieldOptions(CLI::App& app, CommandLine& line, bool isNew) {
  const auto field = [&](const std::string& name, Word& into, const std::string& placeholder,
                         const std::string& description, const std::string& standard) {
    value(app, name, into, placeholder, isNew ? description + " (default: " + standard + ")" : description);
  };
  field("--dosage", line.dosage, "TEXT", "Amount of one dose", "1");
  field("--unit", line.unit, "WORD", "pill, tablets, ml, drops and so on", "pill");
  field("--instructions", line.instructions, "TEXT", "How to take it", "none");
  field("--color", line.color, "NAME", "blue, green, red and so on", "blue");
  field("--icon", line.icon, "NAME", "pills, drop, syringe and so on", "pills");
  field("--active", line.active, "yes|no", "Whether it has doses and reminders", "yes");
  field("--allow-snooze", line.allowSnooze, "yes|no", "Whether doses may be snoozed", "yes");
  field("--snooze-minutes", line.snoozeMinutes, "N", "Length of a snooze, 1 to 60", "10");
  field("--max-snooze", line.maxSnooze, "N", "Snooze limit, 1 to 10", "3");
  field("--repeating", line.repeating, "yes|no", "Whether reminders go on", "yes");
  field("--start", line.start, "INSTANT", "First day", "now");
}

void addMedicineCommands(CLI::App& app, CommandLine& line) {
  auto& add = command(app, "add", "Add a medicine",
                      "  pilloractl add Aspirin --dosage 2 --unit tablets --daily 08:00,20:00\n"
                      "  pilloractl add \"Vitamin D\" --unit drops --weekly 2,4,6@09:00 --color yellow\n"
                      "  pilloractl add Inhaler --unit puff --every-hours 6 --icon lungs");
  argument(add, "NAME", line.name, "What the medicine is called")->required();
  addFieldOptions(add, line, true);
  value(add, "--end", line.end, "INSTANT", "Last day (default: none)");
  addScheduleOptions(add, line);

  auto& edit = command(app, "edit", "Change a medicine and plan its reminders anew",
                       "  pilloractl edit aspirin --dosage 2 --snooze-minutes 15\n"
                       "  pilloractl edit aspirin --active no\n"
                       "  pilloractl edit aspirin");
  argument(edit, "REF", line.ref, "The medicine")->required();
  value(edit, "--name", line.name, "TEXT", "What the medicine is called");
  addFieldOptions(edit, line, false);

  auto& remove = command(app, "delete", "Delete a medicine and its whole history", "  pilloractl delete \"Vitamin D\"");
  argument(remove, "REF", line.ref, "The medicine")->required();
}

void addDoseCommands(CLI::App& app, CommandLine& line) {
  const auto doseCommand = [&](const std::string& name, const std::string& description) {
    auto& dose = command(app, name, description,
                         "  pilloractl " + name + " aspirin\n  pilloractl " + name + " aspirin 2026-03-08T20:00");
    argument(dose, "REF", line.ref, "The medicine")->required();
    argument(dose, "INSTANT", line.instant, "When the dose is due (default: today's open dose)");
  };
  doseCommand("take", "Record a dose as taken");
  doseCommand("skip", "Record a dose as skipped");

  auto& snooze =
      command(app, "snooze", "Be reminded again in the medicine's snooze minutes", "  pilloractl snooze aspirin");
  argument(snooze, "REF", line.ref, "The medicine")->required();

  auto& undo =
      command(app, "undo", "Take a record of a dose back", "  pilloractl undo 6F9619FF-8B86-D011-B42D-00CF4FC964FF");
  argument(undo, "LOG-ID", line.logId, "The record, as 'today' and 'logs' print it")->required();
  auto& mark = command(app, "mark", "Change a missed or skipped dose",
                       "  pilloractl mark 6F9619FF-8B86-D011-B42D-00CF4FC964FF taken");
  argument(mark, "LOG-ID", line.logId, "The record, as 'history' and 'logs' print it")->required();
  argument(mark, "STATUS", line.status, "taken or skipped")->required();
  auto& logs = command(app, "logs", "The records of doses, earliest first");
  argument(logs, "REF", line.ref, "Only of this medicine");
}

void addSettingsCommands(CLI::App& app, CommandLine& line) {
  auto& settings = command(app, "settings", "Your preferences, and how to change one",
                           "  pilloractl settings\n"
                           "  pilloractl settings set weekStartDay 2\n"
                           "  pilloractl settings set notificationSound chime\n"
                           "  pilloractl settings set use24HourTime yes");
  argument(settings, "ACTION", line.action, "set, to change one (default: show all)");
  argument(settings, "FIELD", line.field, "Which one, as 'settings' prints it in its last column");
  argument(settings, "VALUE", line.value, "Its new value");

  auto& backup = command(app, "backup", "Write, list, restore or delete backups",
                         "  pilloractl backup create\n"
                         "  pilloractl backup create --cloud\n"
                         "  pilloractl backup list\n"
                         "  pilloractl backup restore Pillora_Backup_2026-03-08_07-30-00.json");
  argument(backup, "ACTION", line.action, "create, list, restore or delete")->required();
  argument(backup, "FILE", line.file, "The backup to restore or delete, as 'backup list' names it, or its path");
  backup.add_flag("--cloud", line.isCloud, "Create it in the cloud folder");
}

void addAppCommands(CLI::App& app, CommandLine& line) {
  command(app, "launch", "Do what the app does when it is opened");
  auto& reminders = command(app, "reminders", "The reminders that are planned");
  argument(reminders, "REF", line.ref, "Only of this medicine");
  command(app, "mark-missed", "Record the missed doses of the past seven days");
  auto& task = command(app, "run-task", "Run a background task that is due",
                       "  pilloractl run-task org.pillora.Pillora.missedDoseCheck");
  argument(task, "IDENTIFIER", line.taskIdentifier, "The task")->required();
  task.add_flag("--scheduled", line.isScheduled, "The scheduler's own: prints nothing, passes the lock");
}

void addOtherCommands(CLI::App& app, CommandLine& line) {
  auto& next = command(app, "next", "When a schedule falls due",
                       "  pilloractl next --count 3 --interval \"$(cat interval.json)\"");
  value(next, "--interval", line.interval, "JSON", "The schedule as stored")->required();
  value(next, "--after", line.after, "INSTANT", "Only later times (default: now)");
  value(next, "--count", line.count, "N", "How many times (default: 1)");

  auto& completion = command(app, "completion", "Print a completion script for a shell",
                             "  source <(pilloractl completion bash)\n"
                             "  pilloractl completion zsh > \"${fpath[1]}/_pilloractl\"\n"
                             "  pilloractl completion fish > ~/.config/fish/completions/pilloractl.fish");
  argument(completion, "SHELL", line.shell, "bash, zsh or fish")->required();
}

constexpr const char* kFooter =
    "INSTANT is a date and a time, local unless it says otherwise:\n"
    "  2026-03-08T07:30, 2026-03-08T07:30:00Z, 2026-03-08T07:30+01:00\n"
    "REF is a medicine's identifier, its name, or the beginning of a name that fits\n"
    "one medicine only; capitals do not matter.\n"
    "'pilloractl COMMAND --help' tells what a command takes.\n"
    "\n"
    "Examples:\n"
    "  pilloractl add Aspirin --unit tablet --daily 08:00,20:00\n"
    "  pilloractl today\n"
    "  pilloractl take aspirin";

void describe(CLI::App& app, CommandLine& line) {
  app.name("pilloractl");
  app.footer(kFooter);
  app.set_version_flag("--version", "pilloractl " PILLORA_VERSION, "Print the version");
  app.get_formatter()->column_width(28);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.get_formatter()->label("Positionals", "Arguments");
  app.require_subcommand(1);
  addGlobalOptions(app, line);
  addScreens(app, line);
  addMedicineCommands(app, line);
  addDoseCommands(app, line);
  addSettingsCommands(app, line);
  addAppCommands(app, line);
  addOtherCommands(app, line);
}

/// The words that a command's first argument offers.
std::string choicesOf(const std::string& command) {
  if (command == "settings") return "set";
  if (command == "backup") return "create list restore delete";
  return command == "completion" ? "bash zsh fish" : "";
}

CommandWords wordsOf(const CLI::App& app, const std::string& name) {
  CommandWords words{name, app.get_description(), {}, {}, choicesOf(name)};
  for (const CLI::Option* option : app.get_options({})) {
    if (option->get_positional()) {
      if (words.argument.empty()) words.argument = option->get_name();
    } else {
      const bool isFlag = option->get_items_expected_max() == 0;
      words.options.push_back(
          {"--" + option->get_lnames().at(0), option->get_description(), isFlag ? "" : option->get_option_text()});
    }
  }
  return words;
}

/// What was wrong, in words for the person who typed it.
std::string complaint(const CLI::App& app, const CLI::ParseError& error) {
  const auto commands = app.get_subcommands();
  const auto extra = app.remaining(true);
  if (!extra.empty()) {
    const std::string quoted = "'" + extra[0] + "'";
    if (!commands.empty() && app.get_option_no_throw(extra[0]) != nullptr) return quoted + " goes before the command";
    if (extra[0].starts_with('-')) return "unknown option " + quoted;
    return (commands.empty() ? "unknown command " : "too many words: ") + quoted;
  }
  if (commands.empty() && error.get_name() == "RequiredError") return "a command is missing";
  return error.what();
}

Error usageError(const CLI::App& app, const CLI::ParseError& error) {
  const auto commands = app.get_subcommands();
  const std::string command = commands.empty() ? "" : commands[0]->get_name() + ' ';
  return {complaint(app, error) + " (see pilloractl " + command + "--help)"};
}

/// "--dosage=" with nothing behind it means the empty text, not the argument that follows.
std::vector<std::string> withEmptyValues(const std::vector<std::string>& arguments) {
  std::vector<std::string> out;
  for (const std::string& argument : arguments) {
    const bool isEmptied = argument.starts_with("--") && argument.size() > 3 && argument.ends_with('=') &&
                           argument.find('=') == argument.size() - 1;
    out.push_back(isEmptied ? argument.substr(0, argument.size() - 1) : argument);
    if (isEmptied) out.emplace_back();
  }
  return out;
}

/// File names are bytes; every other argument is text.
Result<void> checkEncoding(const std::vector<std::string>& arguments) {
  for (size_t i = 0; i < arguments.size(); ++i) {
    const auto holdsFile = [&](const std::string& option) {
      return arguments[i].starts_with(option + '=') || (i > 0 && arguments[i - 1] == option);
    };
    const bool isFile = holdsFile("--store") || holdsFile("--reminders") || holdsFile("--documents") ||
                        holdsFile("--cloud") || (i > 1 && arguments[i - 2] == "backup");
    if (!isFile && !isUtf8(arguments[i])) return Error{"argument " + std::to_string(i + 1) + " is not UTF-8 text"};
  }
  return {};
}

}  // namespace

std::vector<CommandWords> knownWords() {
  CommandLine line;
  CLI::App app;
  describe(app, line);
  std::vector<CommandWords> words = {wordsOf(app, "")};
  for (const CLI::App* one : app.get_subcommands({})) words.push_back(wordsOf(*one, one->get_name()));
  return words;
}

Result<std::variant<CommandLine, HelpText>> parseCommandLine(const std::vector<std::string>& arguments) {
  using Parsed = std::variant<CommandLine, HelpText>;
  if (const auto checked = checkEncoding(arguments); !checked) return checked.error();
  CommandLine line;
  CLI::App app("Pillora in a terminal: your medicines, what is due, and what was taken.");
  describe(app, line);
  try {
    auto words = withEmptyValues(arguments);
    std::reverse(words.begin(), words.end());  // the order in which CLI11 takes them
    app.parse(std::move(words));
  } catch (const CLI::CallForHelp&) {
    const auto commands = app.get_subcommands();
    return Parsed(HelpText{commands.empty() ? app.help() : commands[0]->help("pilloractl")});
  } catch (const CLI::CallForVersion& version) {
    return Parsed(HelpText{std::string(version.what()) + '\n'});
  } catch (const CLI::ParseError& error) {
    return usageError(app, error);
  }
  line.command = app.get_subcommands()[0]->get_name();
  return Parsed(std::move(line));
}

}  // namespace pillora

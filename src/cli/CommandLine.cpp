// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/DisplayText.h"
#include "cli/HelpTexts.h"
#include "platform/Texts.h"

namespace pillora {

namespace {

using Word = CommandLine::Word;

CLI::Option* value(CLI::App& app, const std::string& name, Word& into, const std::string& placeholder,
                   std::string_view description) {
  auto* option = app.add_option_function<std::string>(
      name, [&into](const std::string& text) { into = text; }, std::string(description));
  option->option_text(placeholder)->type_name("value");
  return option;
}

CLI::Option* argument(CLI::App& app, const std::string& name, Word& into, std::string_view description) {
  return value(app, name, into, " ", description);
}

void flag(CLI::App& app, const std::string& name, bool& into, std::string_view description) {
  app.add_flag(name, into, std::string(description));
}

CLI::App& command(CLI::App& app, const std::string& name, std::string_view description,
                  const std::string& examples = {}) {
  CLI::App& subcommand = *app.add_subcommand(name, std::string(description));
  subcommand.group(std::string(ownText("Commands")));
  if (!examples.empty()) subcommand.footer(std::string(kExamples) + '\n' + examples);
  return subcommand;
}

void addGlobalOptions(CLI::App& app, CommandLine& line) {
  flag(app, "--json", line.json, ownText("Print one JSON object"));
  value(app, "--store", line.store, "FILE", ownText("The store, made when missing (default: the app's)"));
  value(app, "--reminders", line.reminders, "FILE", ownText("Keep reminders in FILE, where none is shown"));
  value(app, "--documents", line.documents, "DIR", ownText("Where local backups lie (default: your documents)"));
  value(app, "--cloud", line.cloud, "DIR", ownText("Where cloud backups lie (default: your sync folder)"));
  value(app, "--now", line.now, "INSTANT", ownText("Act as at this instant; only together with --store"));
  value(app, "--time-zone", line.timeZone, "ID", ownText("Instead of the system's: Europe/Berlin"));
  value(app, "--locale", line.locale, "ID", ownText("Instead of the system's: th_TH@calendar=buddhist"));
  value(app, "--language", line.language, "ID", ownText("Of Pillora's own words: de, fr, es, ar, zh_CN, en"));
  value(app, "--authenticator", line.authenticator, "allow|refuse",
        ownText("Answers the lock; only together with --store"));
  flag(app, "--no-prompt", line.noPrompt, ownText("While locked, end without asking anybody"));
}

void addScreens(CLI::App& app, CommandLine& line) {
  command(app, "today", ownText("What is due today and what was done"));
  command(app, "upcoming", ownText("Every open dose of the next seven days"));
  auto& medicines = command(app, "medicines", ownText("All medicines and when each is due next"));
  value(medicines, "--search", line.search, "TEXT", ownText("Only those whose name holds TEXT"));
  auto& medicine = command(app, "medicine", ownText("One medicine, when it is due, and its last doses"),
                           "  pilloractl medicine aspirin");
  argument(medicine, "REF", line.ref, ownText("The medicine"))->required();
  auto& history = command(app, "history", ownText("What became of every dose, and how many were taken"),
                          "  pilloractl history --range month\n"
                          "  pilloractl history --range all --filter missed");
  value(history, "--range", line.range, "today|week|month|all", ownText("How far back (default: week)"));
  value(history, "--filter", line.filter, "all|taken|missed|skipped", ownText("Only these doses (default: all)"));
}

void addScheduleOptions(CLI::App& add, CommandLine& line) {
  const std::vector<CLI::Option*> schedules = {
      value(add, "--every-hours", line.everyHours, "N", ownText("A dose every N hours, 1 to 24")),
      value(add, "--daily", line.daily, "HH:MM,...", ownText("Every day at these times (default: 09:00)")),
      value(add, "--weekly", line.weekly, "D,...@HH:MM", ownText("On these weekdays, 1 = Sunday to 7 = Saturday")),
      value(add, "--monthly", line.monthly, "D,...@HH:MM", ownText("On these days of the month, 1 to 31")),
      value(add, "--custom", line.custom, "H:M", ownText("Every H hours and M minutes, M a multiple of 5")),
      value(add, "--interval", line.interval, "JSON", ownText("A schedule as stored"))};
  for (CLI::Option* one : schedules) {
    for (CLI::Option* other : schedules) {
      if (one != other) one->excludes(other);
    }
    one->group(std::string(ownText("Schedule (at most one)")));
  }
}

/// What `add` and `edit` share; only a new medicine has defaults.
void addFieldOptions(CLI::App& app, CommandLine& line, bool isNew) {
  const auto field = [&](const std::string& name, Word& into, const std::string& placeholder,
                         std::string_view description, std::string_view withDefault) {
    value(app, name, into, placeholder, isNew ? withDefault : description);
  };
  field("--dosage", line.dosage, "TEXT", ownText("Amount of one dose"), ownText("Amount of one dose (default: 1)"));
  field("--unit", line.unit, "WORD", ownText("pill, tablets, ml, drops and so on"),
        ownText("pill, tablets, ml, drops and so on (default: pill)"));
  field("--instructions", line.instructions, "TEXT", ownText("How to take it"),
        ownText("How to take it (default: none)"));
  field("--color", line.color, "NAME", ownText("blue, green, red and so on"),
        ownText("blue, green, red and so on (default: blue)"));
  field("--icon", line.icon, "NAME", ownText("pills, drop, syringe and so on"),
        ownText("pills, drop, syringe and so on (default: pills)"));
  field("--active", line.active, "yes|no", ownText("Whether it has doses and reminders"),
        ownText("Whether it has doses and reminders (default: yes)"));
  field("--allow-snooze", line.allowSnooze, "yes|no", ownText("Whether doses may be snoozed"),
        ownText("Whether doses may be snoozed (default: yes)"));
  field("--snooze-minutes", line.snoozeMinutes, "N", ownText("Length of a snooze, 1 to 60"),
        ownText("Length of a snooze, 1 to 60 (default: 10)"));
  field("--max-snooze", line.maxSnooze, "N", ownText("Snooze limit, 1 to 10"),
        ownText("Snooze limit, 1 to 10 (default: 3)"));
  field("--repeating", line.repeating, "yes|no", ownText("Whether reminders go on"),
        ownText("Whether reminders go on (default: yes)"));
  field("--start", line.start, "INSTANT", ownText("First day"), ownText("First day (default: now)"));
}

void addMedicineCommands(CLI::App& app, CommandLine& line) {
  auto& add = command(app, "add", ownText("Add a medicine"),
                      "  pilloractl add Aspirin --dosage 2 --unit tablets --daily 08:00,20:00\n"
                      "  pilloractl add \"Vitamin D\" --unit drops --weekly 2,4,6@09:00 --color yellow\n"
                      "  pilloractl add Inhaler --unit puff --every-hours 6 --icon lungs");
  argument(add, "NAME", line.name, ownText("What the medicine is called"))->required();
  addFieldOptions(add, line, true);
  value(add, "--end", line.end, "INSTANT", ownText("Last day (default: none)"));
  addScheduleOptions(add, line);

  auto& edit = command(app, "edit", ownText("Change a medicine and plan its reminders anew"),
                       "  pilloractl edit aspirin --dosage 2 --snooze-minutes 15\n"
                       "  pilloractl edit aspirin --active no\n"
                       "  pilloractl edit aspirin");
  argument(edit, "REF", line.ref, ownText("The medicine"))->required();
  value(edit, "--name", line.name, "TEXT", ownText("What the medicine is called"));
  addFieldOptions(edit, line, false);

  auto& remove =
      command(app, "delete", ownText("Delete a medicine and its whole history"), "  pilloractl delete \"Vitamin D\"");
  argument(remove, "REF", line.ref, ownText("The medicine"))->required();
}

void addDoseCommands(CLI::App& app, CommandLine& line) {
  const auto doseCommand = [&](const std::string& name, std::string_view description) {
    auto& dose = command(app, name, description,
                         "  pilloractl " + name + " aspirin\n  pilloractl " + name + " aspirin 2026-03-08T20:00");
    argument(dose, "REF", line.ref, ownText("The medicine"))->required();
    argument(dose, "INSTANT", line.instant, ownText("When the dose is due (default: today's open dose)"));
  };
  doseCommand("take", ownText("Record a dose as taken"));
  doseCommand("skip", ownText("Record a dose as skipped"));

  auto& snooze = command(app, "snooze", ownText("Be reminded again in the medicine's snooze minutes"),
                         "  pilloractl snooze aspirin");
  argument(snooze, "REF", line.ref, ownText("The medicine"))->required();

  auto& undo = command(app, "undo", ownText("Take a record of a dose back"),
                       "  pilloractl undo 6F9619FF-8B86-D011-B42D-00CF4FC964FF");
  argument(undo, "LOG-ID", line.logId, ownText("The record, as 'today' and 'logs' print it"))->required();
  auto& mark = command(app, "mark", ownText("Change a missed or skipped dose"),
                       "  pilloractl mark 6F9619FF-8B86-D011-B42D-00CF4FC964FF taken");
  argument(mark, "LOG-ID", line.logId, ownText("The record, as 'history' and 'logs' print it"))->required();
  argument(mark, "STATUS", line.status, ownText("taken or skipped"))->required();
  auto& logs = command(app, "logs", ownText("The records of doses, earliest first"));
  argument(logs, "REF", line.ref, ownText("Only of this medicine"));
}

void addSettingsCommands(CLI::App& app, CommandLine& line) {
  auto& settings = command(app, "settings", ownText("Your preferences, and how to change one"),
                           "  pilloractl settings\n"
                           "  pilloractl settings set weekStartDay 2\n"
                           "  pilloractl settings set notificationSound chime\n"
                           "  pilloractl settings set use24HourTime yes");
  argument(settings, "ACTION", line.action, ownText("set, to change one (default: show all)"));
  argument(settings, "FIELD", line.field, ownText("Which one, as 'settings' prints it in its last column"));
  argument(settings, "VALUE", line.value, ownText("Its new value"));

  auto& backup = command(app, "backup", ownText("Write, list, restore or delete backups"),
                         "  pilloractl backup create\n"
                         "  pilloractl backup create --cloud\n"
                         "  pilloractl backup list\n"
                         "  pilloractl backup restore Pillora_Backup_2026-03-08_07-30-00.json");
  argument(backup, "ACTION", line.action, ownText("create, list, restore or delete"))->required();
  argument(backup, "FILE", line.file,
           ownText("The backup to restore or delete, as 'backup list' names it, or its path"));
  flag(backup, "--cloud", line.isCloud, ownText("Create it in the cloud folder"));
}

void addAppCommands(CLI::App& app, CommandLine& line) {
  command(app, "launch", ownText("Do what the app does when it is opened"));
  auto& reminders = command(app, "reminders", ownText("The reminders that are planned"));
  argument(reminders, "REF", line.ref, ownText("Only of this medicine"));
  command(app, "mark-missed", ownText("Record the missed doses of the past seven days"));
  auto& task = command(app, "run-task", ownText("Run a background task that is due"),
                       "  pilloractl run-task org.pillora.Pillora.missedDoseCheck");
  argument(task, "IDENTIFIER", line.taskIdentifier, ownText("The task"))->required();
  flag(task, "--scheduled", line.isScheduled, ownText("The scheduler's own: prints nothing, passes the lock"));
}

void addOtherCommands(CLI::App& app, CommandLine& line) {
  auto& next = command(app, "next", ownText("When a schedule falls due"),
                       "  pilloractl next --count 3 --interval \"$(cat interval.json)\"");
  value(next, "--interval", line.interval, "JSON", ownText("The schedule as stored"))->required();
  value(next, "--after", line.after, "INSTANT", ownText("Only later times (default: now)"));
  value(next, "--count", line.count, "N", ownText("How many times (default: 1)"));

  auto& completion = command(app, "completion", ownText("Print a completion script for a shell"),
                             "  source <(pilloractl completion bash)\n"
                             "  pilloractl completion zsh > \"${fpath[1]}/_pilloractl\"\n"
                             "  pilloractl completion fish > ~/.config/fish/completions/pilloractl.fish");
  argument(completion, "SHELL", line.shell, ownText("bash, zsh or fish"))->required();
}

constexpr std::string_view kFooter = ownText(
    "INSTANT is a date and a time, local unless it says otherwise:\n"
    "  2026-03-08T07:30, 2026-03-08T07:30:00Z, 2026-03-08T07:30+01:00\n"
    "REF is a medicine's identifier, its name, or the beginning of a name that fits\n"
    "one medicine only; capitals do not matter.\n"
    "'pilloractl COMMAND --help' tells what a command takes.");
constexpr std::string_view kFirstExamples =
    "  pilloractl add Aspirin --unit tablet --daily 08:00,20:00\n"
    "  pilloractl today\n"
    "  pilloractl take aspirin";

void describe(CLI::App& app, CommandLine& line) {
  app.name("pilloractl");
  app.option_defaults()->group(std::string(ownText("Options")));
  app.footer(std::string(kFooter).append("\n\n").append(kExamples).append("\n").append(kFirstExamples));
  app.set_help_flag("-h,--help", std::string(ownText("Print this help message and exit")));
  app.set_version_flag("--version", "pilloractl " PILLORA_VERSION, std::string(ownText("Print the version")));
  app.get_formatter()->column_width(28);
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

std::vector<CommandWords> knownWords(const Texts& texts) {
  CommandLine line;
  CLI::App app;
  describe(app, line);
  translateHelp(app, texts);
  std::vector<CommandWords> words = {wordsOf(app, "")};
  for (const CLI::App* one : app.get_subcommands({})) words.push_back(wordsOf(*one, one->get_name()));
  return words;
}

Result<std::variant<CommandLine, HelpText>> parseCommandLine(const std::vector<std::string>& arguments,
                                                             const MakeTexts& makeTexts) {
  using Parsed = std::variant<CommandLine, HelpText>;
  if (const auto checked = checkEncoding(arguments); !checked) return checked.error();
  CommandLine line;
  CLI::App app(std::string(ownText("Pillora in a terminal: your medicines, what is due, and what was taken.")));
  describe(app, line);
  try {
    auto words = withEmptyValues(arguments);
    std::reverse(words.begin(), words.end());  // the order in which CLI11 takes them
    app.parse(std::move(words));
  } catch (const CLI::CallForHelp&) {
    const auto language = app.get_option("--language")->results();
    const auto texts = makeTexts(language.empty() ? std::nullopt : std::optional(language.back()));
    if (!texts) return texts.error();
    translateHelp(app, **texts);
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

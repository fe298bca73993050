// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Texts.h"
#include "support/Result.h"

namespace pillora {

/// The words of one call of pilloractl, sorted by where they stood but not yet read: every value is the text that was
/// typed, or nothing where none was.
struct CommandLine {
  using Word = std::optional<std::string>;

  // Options before the command.
  bool json = false, noPrompt = false;
  Word store, reminders, documents, cloud, now, timeZone, locale, language, authenticator;

  std::string command;

  // Words and options after it.
  Word ref, instant, logId, status, shell, search, range, filter, taskIdentifier;
  bool isScheduled = false;
  Word action, field, value, file;
  bool isCloud = false;
  Word interval, after, count;
  Word name, dosage, unit, instructions, color, icon, active, allowSnooze, snoozeMinutes, maxSnooze, repeating, start,
      end;
  Word everyHours, daily, weekly, monthly, custom;
};

/// One option as help and completion name it.
struct OptionWords {
  std::string name, description;  ///< "--unit"
  std::string placeholder;        ///< "WORD"; empty for an option without a value
};

/// One command; the one without a name stands for the options before the command.
struct CommandWords {
  std::string name, description;
  std::vector<OptionWords> options;
  std::string argument;  ///< its first argument: "REF"; empty when it takes none
  std::string choices;   ///< the words that this argument offers, apart by blanks; empty when it is free
};

/// Everything that a command line may hold.
std::vector<CommandWords> knownWords(const Texts& texts);

/// Makes the texts of a language, of the system's where none is named.
using MakeTexts = std::function<Result<std::unique_ptr<Texts>>(const std::optional<std::string>& language)>;

/// What `--help` or `--version` asked for, ready to print.
struct HelpText {
  std::string text;
};

/// Sorts the arguments, the program's own name left out. Errors are wrong usage: an unknown word, a missing one, an
/// option twice, invalid UTF-8 anywhere but in the name of a file.
/// Help is in the language that stands before it, else in that of the system; errors are in English.
Result<std::variant<CommandLine, HelpText>> parseCommandLine(const std::vector<std::string>& arguments,
                                                             const MakeTexts& makeTexts);

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <array>
#include <set>

#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "screens/MedicineForm.h"
#include "screens/SettingsView.h"
#include "support/Json.h"

namespace pillora {

namespace {

// The scripts are made from the words that the command line knows. Medicines' names are fetched while completing;
// they are data: what a shell would take apart or run never reaches the line unquoted. Completing asks nobody for a
// fingerprint or a password: while the app is locked there are no names.

template <typename Range>
std::string joined(const Range& words) {
  std::string text;
  for (const auto& word : words) text.append(text.empty() ? "" : " ").append(word);
  return text;
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

/// The words that an option offers, apart by blanks; empty when its value is free.
std::string offered(const OptionWords& option) {
  if (option.placeholder.find('|') != std::string::npos) return replaced(option.placeholder, "|", " ");
  if (option.name == "--unit") return joined(kUnitWords);
  if (option.name == "--color") return joined(kColorNames);
  if (option.name == "--icon") return joined(kIconNames);
  return {};
}

std::vector<std::string> optionNames(const CommandWords& command) {
  std::vector<std::string> names;
  for (const OptionWords& option : command.options) names.push_back(option.name);
  return names;
}

std::vector<std::string> commandNames(const std::vector<CommandWords>& words) {
  std::vector<std::string> names;
  for (const CommandWords& command : words) {
    if (!command.name.empty()) names.push_back(command.name);
  }
  return names;
}

/// Options before the command whose value is the next word, as a shell pattern.
std::string globalsWithValue(const std::vector<CommandWords>& words) {
  std::string pattern;
  for (const OptionWords& option : words.front().options) {
    if (!option.placeholder.empty() && option.name != "--store") pattern += (pattern.empty() ? "" : "|") + option.name;
  }
  return pattern;
}

bool takesPath(const OptionWords& option) { return option.placeholder == "FILE" || option.placeholder == "DIR"; }

/// Shell cases of the options before which nothing but their value stands: one for each that offers words, and one for
/// all others.
template <typename Offer>
std::string valueCases(const std::vector<CommandWords>& words, Offer offer) {
  std::string cases;
  std::set<std::string> free;
  for (const CommandWords& command : words) {
    for (const OptionWords& option : command.options) {
      if (option.placeholder.empty() || takesPath(option)) continue;
      if (const std::string choices = offered(option); choices.empty()) {
        free.insert(option.name);
      } else {
        cases += "    " + option.name + ") " + offer(choices) + "; return ;;\n";
      }
    }
  }
  return cases + "    " + replaced(joined(free), " ", "|") + ") return ;;\n";
}

constexpr std::string_view kBash = R"sh(# bash completion for pilloractl

_pilloractl_fetch() {  # PROGRAM PATTERN: matches in what the screens hold, one a line; nothing that JSON escapes
  "$1" "${store[@]}" --no-prompt --json "$2" 2>/dev/null | grep -o "$3" | cut -d'"' -f4
}

_pilloractl() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} command= quote= words= name i
  local -a store=()
  COMPREPLY=()
  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      --store) store=(--store "${COMP_WORDS[i+1]/#\~/$HOME}"); ((i++)) ;;
      @GLOBALS@) ((i++)) ;;
      -*) ;;
      *) command=${COMP_WORDS[i]}; break ;;
    esac
  done
  case $prev in
    --store|--reminders|--documents|--cloud)
      compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- "$cur"); return ;;
@VALUES@
  esac
  case $command in
@COMMANDS@
  esac
  if [[ $cur == -* || -z $command || @CHOOSERS@ && $prev == "$command" ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
    return
  fi
  case $command in
    @REFS@)
      case $cur in [\"\']*) quote=${cur:0:1}; cur=${cur:1} ;; esac
      cur=${cur//\\/}
      while IFS= read -r name; do
        [[ ${name,,} == "${cur,,}"* ]] || continue
        if [[ -z $quote ]]; then
          COMPREPLY+=("$(printf %q "$name")")
        elif [[ $name != *[\$\`\!\'\"\\]* ]]; then
          COMPREPLY+=("$name")
        fi
      done < <(_pilloractl_fetch "$1" medicines '"name":"[^"\\]*"') ;;
    settings) [[ $prev != set ]] || mapfile -t COMPREPLY < <(compgen -W '@FIELDS@' -- "$cur") ;;
    backup)
      [[ $prev != restore && $prev != delete ]] || {
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
      } ;;
    undo)
      mapfile -t COMPREPLY < <(compgen -W "$(_pilloractl_fetch "$1" today '"id":"[0-9A-F-]\{36\}"')" -- "$cur") ;;
    mark)
      words='taken skipped'
      [[ $prev != mark ]] || words=$(_pilloractl_fetch "$1" history '"id":"[0-9A-F-]\{36\}"')
      mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur") ;;
  esac
}
complete -F _pilloractl pilloractl
)sh";

/// The commands whose first argument names a medicine, as a shell pattern.
std::string refCommands(const std::vector<CommandWords>& words, std::string_view separator) {
  std::string pattern;
  for (const CommandWords& command : words) {
    if (command.argument == "REF") pattern.append(pattern.empty() ? "" : separator).append(command.name);
  }
  return pattern;
}

/// The commands whose first argument offers words, as a shell pattern.
std::string choosers(const std::vector<CommandWords>& words) {
  std::string pattern;
  for (const CommandWords& command : words) {
    if (!command.choices.empty()) pattern.append(pattern.empty() ? "" : "|").append(command.name);
  }
  return pattern;
}

std::string bashScript(const std::vector<CommandWords>& words) {
  std::string commands;
  for (const CommandWords& command : words) {
    const std::string own = joined(optionNames(command));
    const std::string more = command.name.empty() ? ' ' + joined(commandNames(words)) : ' ' + command.choices;
    commands.append("    ").append(command.name.empty() ? "''" : command.name).append(") words='");
    commands.append(own).append(more).append("' ;;\n");
  }
  const auto values = valueCases(words, [](const std::string& choices) {
    return "mapfile -t COMPREPLY < <(compgen -W '" + choices + "' -- \"$cur\")";
  });
  std::string script(kBash);
  script = replaced(script, "@GLOBALS@", globalsWithValue(words));
  script = replaced(script, "@VALUES@\n", values);
  script = replaced(script, "@COMMANDS@\n", commands);
  script = replaced(script, "@CHOOSERS@", "$command == @(" + choosers(words) + ')');
  script = replaced(script, "@FIELDS@", joined(kSettingsFields));
  return replaced(script, "@REFS@", refCommands(words, "|"));
}

std::string zshQuoted(const std::string& text) { return "'" + replaced(text, "'", "'\\''") + "'"; }

constexpr std::string_view kZsh = R"sh(#compdef pilloractl
# zsh completion for pilloractl

_pilloractl_fetch() {  # SCREEN PATTERN: matches in what a screen holds, one a line; nothing that JSON escapes
  $words[1] $store --no-prompt --json $1 2>/dev/null | grep -o $2 | cut -d'"' -f4
}

_pilloractl() {
  local -a store described found
  local command= i
  for ((i = 2; i < CURRENT; i++)); do
    case $words[i] in
      --store) store=(--store ${${(Q)words[i+1]}/#\~/$HOME}); ((i++)) ;;
      @GLOBALS@) ((i++)) ;;
      -*) ;;
      *) command=$words[i]; break ;;
    esac
  done
  case $words[CURRENT-1] in
    --store|--reminders|--documents|--cloud) _files; return ;;
@VALUES@
  esac
  case $command in
@COMMANDS@
  esac
  if [[ $PREFIX == -* || -z $command ]]; then
    _describe word described
    return
  fi
  case $command in
    @REFS@) found=("${(@f)$(_pilloractl_fetch medicines '"name":"[^"\\]*"')}") ;;
    undo) found=("${(@f)$(_pilloractl_fetch today '"id":"[0-9A-F-]\{36\}"')}") ;;
    mark)
      found=(taken skipped)
      [[ $words[CURRENT-1] == mark ]] && found=("${(@f)$(_pilloractl_fetch history '"id":"[0-9A-F-]\{36\}"')}") ;;
    settings) [[ $words[CURRENT-1] == set ]] && found=(@FIELDS@) ;;
    backup) if [[ $words[CURRENT-1] == (restore|delete) ]]; then _files; return; fi ;;
  esac
  if [[ $words[CURRENT-1] == $command ]]; then
    case $command in
@CHOICES@
    esac
  fi
  compadd -M 'm:{a-zA-Z}={A-Za-z}' -a found
}

if [[ $funcstack[1] == _pilloractl ]]; then
  _pilloractl "$@"
else
  compdef _pilloractl pilloractl
fi
)sh";

std::string zshScript(const std::vector<CommandWords>& words) {
  std::string commands, cases;
  for (const CommandWords& command : words) {
    if (!command.choices.empty()) cases += "      " + command.name + ") found=(" + command.choices + ") ;;\n";
    commands += "    " + (command.name.empty() ? "''" : command.name) + ") described=(\n";
    for (const OptionWords& option : command.options) {
      commands += "      " + zshQuoted(option.name + ':' + option.description) + '\n';
    }
    if (command.name.empty()) {
      for (size_t i = 1; i < words.size(); ++i) {
        commands += "      " + zshQuoted(words[i].name + ':' + words[i].description) + '\n';
      }
    }
    commands += "    ) ;;\n";
  }
  const auto values = valueCases(words, [](const std::string& choices) { return "compadd -- " + choices; });
  std::string script(kZsh);
  script = replaced(script, "@GLOBALS@", globalsWithValue(words));
  script = replaced(script, "@VALUES@\n", values);
  script = replaced(script, "@COMMANDS@\n", commands);
  script = replaced(script, "@CHOICES@\n", cases);
  script = replaced(script, "@FIELDS@", joined(kSettingsFields));
  return replaced(script, "@REFS@", refCommands(words, "|"));
}

std::string fishQuoted(const std::string& text) {
  return "'" + replaced(replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
}

constexpr std::string_view kFish = R"sh(# fish completion for pilloractl

function __pilloractl_fetch  # SCREEN PATTERN: matches in what a screen holds; nothing that JSON escapes
    set -l typed (commandline -opc)
    set -l store
    if set -l at (contains -i -- --store $typed); and test (count $typed) -gt $at
        set store --store $typed[(math $at + 1)]
    end
    $typed[1] $store --no-prompt --json $argv[1] 2>/dev/null | grep -o $argv[2] | cut -d'"' -f4
end

complete -c pilloractl -f
)sh";

std::string fishScript(const std::vector<CommandWords>& words) {
  std::string script(kFish);
  const std::string names = joined(commandNames(words));
  const std::string beforeCommand = "not __fish_seen_subcommand_from " + names;
  for (const CommandWords& command : words) {
    const std::string seen = command.name.empty() ? beforeCommand : "__fish_seen_subcommand_from " + command.name;
    const std::string line = "complete -c pilloractl -n " + fishQuoted(seen);
    for (const OptionWords& option : command.options) {
      const std::string choices = offered(option);
      script += line + " -l " + option.name.substr(2) + " -d " + fishQuoted(option.description);
      if (takesPath(option)) {
        script += " -r -F";
      } else if (!option.placeholder.empty()) {
        script += " -x";
      }
      if (!choices.empty()) script += " -a " + fishQuoted(choices);
      script += '\n';
    }
    if (!command.name.empty()) {
      script += "complete -c pilloractl -n " + fishQuoted(beforeCommand) + " -a " + command.name + " -d " +
                fishQuoted(command.description) + '\n';
    }
  }
  const auto values = [](const std::string& commands, const std::string& found) {
    return "complete -c pilloractl -n " + fishQuoted("__fish_seen_subcommand_from " + commands) + " -a " +
           fishQuoted(found) + '\n';
  };
  script += values(refCommands(words, " "), R"((__pilloractl_fetch medicines '"name":"[^"\\]*"'))");
  script += values("undo", R"((__pilloractl_fetch today '"id":"[0-9A-F-]\{36\}"'))");
  script += values("mark", R"((__pilloractl_fetch history '"id":"[0-9A-F-]\{36\}"') taken skipped)");
  for (const CommandWords& command : words) {
    const std::string once = command.name + "; and not __fish_seen_subcommand_from " + command.choices;
    if (!command.choices.empty()) script += values(once, command.choices);
  }
  script += values("settings; and __fish_seen_subcommand_from set", joined(kSettingsFields));
  return script + "complete -c pilloractl -n '__fish_seen_subcommand_from backup; and __fish_seen_subcommand_from " +
         "restore delete' -F\n";
}

}  // namespace

Result<Action> completionCommand(const CommandLine& line, Session& session) {
  using Script = std::string (*)(const std::vector<CommandWords>&);
  static constexpr std::array<std::pair<std::string_view, Script>, 3> kShells = {
      {{"bash", bashScript}, {"zsh", zshScript}, {"fish", fishScript}}};
  for (const auto& [shell, script] : kShells) {
    if (*line.shell != shell) continue;
    return Action([&session, script = script]() -> Result<std::string> {
      const std::string text = script(knownWords(session.texts()));
      return session.json() ? jsonLine(Json::object({{"script", text}})) : text;
    });
  }
  return Error{"there is no completion for '" + *line.shell + "', only for bash, zsh and fish"};
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "cli/HelpTexts.h"

#include <CLI/CLI.hpp>
#include <string>

namespace pillora {

namespace {

std::string translated(const std::string& english, const Texts& texts) {
  return english.empty() ? english : texts.text(english);
}

/// A footer is a text, examples, or a text and a blank line and examples.
std::string translatedFooter(const std::string& footer, const Texts& texts) {
  const size_t examples = footer.find(kExamples);
  if (examples == std::string::npos) return translated(footer, texts);
  const std::string before = examples == 0 ? "" : texts.text(footer.substr(0, examples - 2)) + "\n\n";
  return before + texts.text(kExamples) + footer.substr(examples + kExamples.size());
}

void translateDescriptions(CLI::App& app, const Texts& texts) {
  app.description(translated(app.get_description(), texts));
  app.footer(translatedFooter(app.get_footer(), texts));
  if (!app.get_group().empty()) app.group(texts.text(app.get_group()));
  for (CLI::Option* option : app.get_options({})) {
    option->description(translated(option->get_description(), texts));
    if (!option->get_group().empty()) option->group(texts.text(option->get_group()));
  }
  for (CLI::App* command : app.get_subcommands({})) translateDescriptions(*command, texts);
}

}  // namespace

void translateHelp(CLI::App& app, const Texts& texts) {
  translateDescriptions(app, texts);
  const auto formatter = app.get_formatter();
  formatter->label("Usage", texts.text("Usage"));
  formatter->label("OPTIONS", texts.text("OPTIONS"));
  formatter->label("SUBCOMMAND", texts.text("COMMAND"));
  formatter->label("Positionals", texts.text("Arguments"));
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
// What the manual pages name is what the programs know: both are read, the pages' sources and the programs' own help.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "doubles/ChildProcess.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

using Names = std::set<std::string>;

/// A page's subsections, and the sections that have none, with their options.
using Options = std::map<std::string, Names>;

std::string helpOf(const std::vector<std::string>& command) {
  const TemporaryFolder home;
  auto words = command;
  words.emplace_back("--help");
  const auto called = ChildProcess(words, {"HOME=" + home.path(), "LC_ALL=C.UTF-8"}).finish();
  EXPECT_EQ(called.status, 0) << called.err;
  return called.out;
}

Names matchesIn(const std::string& text, const char* pattern) {
  Names found;
  const std::regex wanted(pattern, std::regex::multiline);
  for (std::sregex_iterator at(text.begin(), text.end(), wanted), end; at != end; ++at) found.insert((*at)[1]);
  return found;
}

/// The options that a help text lists, one at the beginning of a line.
Names listedOptions(const std::string& help) { return matchesIn(help, "^  (?:-[a-z], ?)?(--[a-z-]+)"); }

std::string pagePath(const std::string& name) { return PILLORA_MANUAL_PAGES "/" + name + ".1"; }

/// A page's text without the escapes of its language.
std::vector<std::string> linesOf(const std::string& page) {
  std::ifstream file(pagePath(page));
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    line = std::regex_replace(line, std::regex(R"(\\-)"), "-");
    lines.push_back(std::regex_replace(line, std::regex(R"(\\f[A-Z])"), ""));
  }
  EXPECT_FALSE(lines.empty()) << page;
  return lines;
}

/// The options below each heading: those in the line of a tag, where they are set in bold.
Options optionsIn(const std::string& page) {
  Options options;
  std::string heading;
  for (const std::string& line : linesOf(page)) {
    if (line.starts_with(".SH ") || line.starts_with(".SS ")) {
      heading = line.substr(4, line.find(' ', 4) - 4);
      options[heading];
    }
    if (!line.starts_with(".B ") && !line.starts_with(".BI ") && !line.starts_with(".BR ")) continue;
    options[heading].merge(matchesIn(line, "^\\.B[IR]? (?:-[a-z] \", \" )?(--[a-z-]+)"));
  }
  return options;
}

TEST(ManualPages, theTerminalProgramsPageListsItsOptions) {
  EXPECT_EQ(optionsIn("pilloractl").at("OPTIONS"), listedOptions(helpOf({PILLORACTL})));
}

TEST(ManualPages, theTerminalProgramsPageListsItsCommandsWithTheirOptions) {
  const std::string help = helpOf({PILLORACTL});
  const Names commands = matchesIn(help.substr(help.find("Commands:")), "^  ([a-z-]+)  ");
  ASSERT_GT(commands.size(), 20U);
  Options listed = optionsIn("pilloractl"), expected;
  std::erase_if(listed, [](const auto& section) { return section.first != "" && isupper(section.first[0]); });
  for (const std::string& command : commands) {
    expected[command] = listedOptions(helpOf({PILLORACTL, command}));
    expected[command].erase("--help");
  }
  EXPECT_EQ(listed, expected);
}

TEST(ManualPages, theAgentsPageListsItsOptions) {
  EXPECT_EQ(optionsIn("pillora-agent").at("OPTIONS"), listedOptions(helpOf({PILLORA_AGENT})));
}

#ifdef PILLORA
TEST(ManualPages, theWindowsPageListsItsOptions) {
  EXPECT_EQ(optionsIn("pillora").at("OPTIONS"), listedOptions(helpOf({PILLORA})));
}
#endif

TEST(ManualPages, everyProgramTellsTheVersionThatItsPageNames) {
  std::map<std::string, std::string> programs = {{"pilloractl", PILLORACTL}, {"pillora-agent", PILLORA_AGENT}};
#ifdef PILLORA
  programs.emplace("pillora", PILLORA);
#endif
  for (const auto& [name, path] : programs) {
    const auto called = ChildProcess({path, "--version"}, {"LC_ALL=C.UTF-8"}).finish();
    EXPECT_EQ(called.out, name + " " PILLORA_VERSION "\n");
    const std::string head = linesOf(name).at(1);
    EXPECT_NE(head.find("\"Pillora " PILLORA_VERSION "\""), std::string::npos) << head;
  }
}

TEST(ManualPages, anUnknownOptionIsRefused) {
  EXPECT_EQ(ChildProcess({PILLORA_AGENT, "--no-such-option"}, {}).finish().status, 2);
  EXPECT_EQ(ChildProcess({PILLORACTL, "--no-such-option"}, {}).finish().status, 2);
}

TEST(ManualPages, theFormatterFindsNoFault) {
  for (const char* page : {"pillora", "pilloractl", "pillora-agent"}) {
    const auto called =
        ChildProcess({PILLORA_MAN, "--warnings=all", "--local-file", "--encoding=UTF-8", "-Tutf8", pagePath(page)},
                     {"PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8", "MANWIDTH=80"})
            .finish();
    EXPECT_EQ(called.status, 0);
    EXPECT_EQ(called.err, "") << page;
    EXPECT_NE(called.out.find("planned"), std::string::npos) << page;
  }
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "house/HouseRules.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "house/Words.h"

namespace pillora::house {
namespace {

using Findings = std::vector<std::string>;
using Names = std::vector<std::string_view>;

/// What each room may include, besides itself.
const std::map<std::string_view, Names>& roomTable() {
  static const std::map<std::string_view, Names> table = [] {
    const Names base = {"support", "platform"};
    const auto with = [](Names names, const Names& more) {
      names.insert(names.end(), more.begin(), more.end());
      return names;
    };
    const Names records = with(base, {"model"});
    const Names services = with(records, {"schedule", "store"});
    const Names screens = with(services, {"notifications", "backup"});
    const Names app = with(screens, {"screens"});
    const Names programs = with(app, {"app"});
    return std::map<std::string_view, Names>{
        {"support", {}},       {"platform", {"support"}}, {"model", base},
        {"schedule", records}, {"store", records},        {"notifications", services},
        {"backup", services},  {"screens", screens},      {"app", app},
        {"cli", programs},     {"ui", programs},          {"icu", base},
        {"linux", base},       {"agent", base},
    };
  }();
  return table;
}

/// A foreign library by the beginning of its headers' names, and the rooms that may see it.
struct Library {
  std::string_view header;
  Names rooms;
};

const std::vector<Library>& libraryTable() {
  static const std::vector<Library> table = {
      {"unicode/", {"icu"}},
      {"boost/locale/", {"icu"}},
      {"SQLiteCpp/", {"store", "agent"}},
      {"sqlite3.h", {"store", "agent"}},
      {"systemd/", {"linux", "agent"}},
      {"Q", {"ui"}},
      {"CLI/", {"cli"}},
      {"nlohmann/", {"support"}},
      {"gtest/", {}},
      {"gmock/", {}},
      {"rapidcheck", {}},
      {"benchmark/", {}},
      {"libical/", {}},
  };
  return table;
}

/// Rooms that get the instant, the calendar and the texts handed in.
const Names kCore = {"support", "platform", "model", "schedule", "store", "notifications", "backup", "screens", "app"};
const Names kAmbient = {"getenv(",        "system_clock::now", "time(nullptr)", "gettimeofday(",
                        "clock_gettime(", "localtime_r(",      "setlocale(",    "std::locale",
                        "std::cout",      "std::cerr",         "printf("};

/// Refused where they stand by themselves, and refused wherever they stand. Each is cut in two, so that the tables do
/// not find themselves.
const std::vector<std::pair<std::string, std::string>> kForbiddenWords = {
    {"TO", "DO"}, {"FIX", "ME"}, {"X", "XX"}, {"the sp", "ec"}, {"/ho", "me/"}, {"/ro", "ot/"}, {"/wo", "rk/"}};
const std::vector<std::pair<std::string, std::string>> kForbiddenPieces = {
    {"NO", "LINT"}, {"DISABLED", "_"}, {"GTEST", "_SKIP"}};

bool isOneOf(std::string_view name, const Names& names) { return std::ranges::find(names, name) != names.end(); }

/// "store" of "src/store/ModelContext.h"; empty outside the rooms.
std::string_view roomOf(std::string_view path) {
  if (!path.starts_with("src/")) return {};
  const std::string_view rest = path.substr(4);
  return rest.find('/') == std::string_view::npos ? std::string_view() : rest.substr(0, rest.find('/'));
}

bool isCpp(const SourceFile& file) {
  const std::string_view extension = extensionOf(file.path);
  return extension == "cpp" || extension == "h";
}

bool isBuildFile(const SourceFile& file) {
  return nameOf(file.path) == "CMakeLists.txt" || extensionOf(file.path) == "cmake";
}

bool isScript(const SourceFile& file) {
  return extensionOf(file.path) == "sh" || (!file.lines.empty() && file.lines.front().starts_with("#!"));
}

bool isSource(const SourceFile& file) {
  return isCpp(file) || isBuildFile(file) || isScript(file) || extensionOf(file.path) == "qml";
}

std::string finding(const SourceFile& file, size_t line, std::string_view what) {
  return file.path + ":" + std::to_string(line + 1) + ": " + std::string(what);
}

bool maySee(const SourceFile& file, std::string_view from, std::string_view to) {
  if (from == to || isOneOf(to, roomTable().at(from))) return true;
  if (nameOf(file.path) != "main.cpp" || folderOf(file.path) != "src/" + std::string(from)) return false;
  return to == "linux" || to == "agent" || (to == "icu" && from != "agent");
}

/// The paths that a build file's words would be, its comments left out.
void addListedPaths(const SourceFile& file, std::set<std::string>& paths) {
  const std::filesystem::path folder = folderOf(file.path);
  for (std::string_view line : file.lines) {
    for (std::string_view word : wordsOf(line.substr(0, line.find('#')), " \t()\"")) {
      paths.insert((folder / word).lexically_normal());
    }
  }
}

template <typename Check>
Findings eachLine(const SourceTree& tree, bool (*wanted)(const SourceFile&), Check check) {
  Findings findings;
  for (const SourceFile& file : tree.files()) {
    if (!wanted(file)) continue;
    for (size_t line = 0; line < file.lines.size(); ++line) {
      if (const std::string what = check(file, std::string_view(file.lines[line])); !what.empty()) {
        findings.push_back(finding(file, line, what));
      }
    }
  }
  return findings;
}

}  // namespace

Findings backwardImports(const SourceTree& tree) {
  return eachLine(tree, isCpp, [](const SourceFile& file, std::string_view line) -> std::string {
    const std::string_view from = roomOf(file.path);
    const auto header = includedHeader(line, '"', '"');
    if (!file.path.starts_with("src/") || !header) return {};
    if (!roomTable().contains(from)) return "\"" + std::string(from) + "\" is no room of the table";
    const std::string_view to = header->substr(0, header->find('/'));
    if (to == *header || !roomTable().contains(to)) return "an include names the room it comes from";
    if (maySee(file, from, to)) return {};
    return std::string(from) + " must not include " + std::string(to);
  });
}

Findings foreignLibraries(const SourceTree& tree) {
  return eachLine(tree, isCpp, [](const SourceFile& file, std::string_view line) -> std::string {
    if (!file.path.starts_with("src/")) return {};
    for (const auto& header : {includedHeader(line, '<', '>'), includedHeader(line, '"', '"')}) {
      if (!header) continue;
      for (const Library& library : libraryTable()) {
        if (header->starts_with(library.header) && !isOneOf(roomOf(file.path), library.rooms)) {
          return std::string(*header) + " has no place in " + std::string(roomOf(file.path));
        }
      }
    }
    return {};
  });
}

Findings ambientReads(const SourceTree& tree) {
  return eachLine(tree, isCpp, [](const SourceFile& file, std::string_view line) -> std::string {
    if (!isOneOf(roomOf(file.path), kCore)) return {};
    const std::string_view code = line.substr(0, line.find("//"));
    for (std::string_view word : kAmbient) {
      if (containsWord(code, word)) return std::string(word) + " has no place below the programs";
    }
    return {};
  });
}

Findings missingLicences(const SourceTree& tree) {
  Findings findings;
  for (const SourceFile& file : tree.files()) {
    if (!isSource(file)) continue;
    const size_t line = !file.lines.empty() && file.lines.front().starts_with("#!") ? 1 : 0;
    const std::string_view wanted =
        isBuildFile(file) || isScript(file) ? "# SPDX-License-Identifier: MIT" : "// SPDX-License-Identifier: MIT";
    if (file.lines.size() <= line || file.lines[line] != wanted) findings.push_back(finding(file, line, "no licence"));
  }
  return findings;
}

Findings missingPragmas(const SourceTree& tree) {
  Findings findings;
  for (const SourceFile& file : tree.files()) {
    if (extensionOf(file.path) != "h") continue;
    if (std::ranges::find(file.lines, "#pragma once") == file.lines.end()) {
      findings.push_back(finding(file, 0, "no #pragma once"));
    }
  }
  return findings;
}

Findings unlistedSources(const SourceTree& tree) {
  std::set<std::string> listed;
  for (const SourceFile& file : tree.files()) {
    if (nameOf(file.path) == "CMakeLists.txt") addListedPaths(file, listed);
  }
  Findings findings;
  for (const SourceFile& file : tree.files()) {
    if (extensionOf(file.path) == "cpp" && !listed.contains(file.path)) {
      findings.push_back(finding(file, 0, "in no CMakeLists.txt"));
    }
  }
  return findings;
}

Findings globbing(const SourceTree& tree) {
  return eachLine(tree, isBuildFile, [](const SourceFile&, std::string_view line) -> std::string {
    for (std::string_view word : wordsOf(line.substr(0, line.find('#')), " \t()")) {
      if (word == "GLOB" || word == "GLOB_RECURSE" || word == "aux_source_directory")
        return "sources are listed by name";
    }
    return {};
  });
}

Findings longFiles(const SourceTree& tree) {
  constexpr size_t kMostLines = 400;
  Findings findings;
  for (const SourceFile& file : tree.files()) {
    if (isSource(file) && file.lines.size() > kMostLines) findings.push_back(finding(file, kMostLines, "too long"));
  }
  return findings;
}

Findings missingDocumentPaths(const SourceTree& tree) {
  Findings findings;
  for (const SourceFile& file : tree.files()) {
    if (extensionOf(file.path) != "md") continue;
    for (size_t line = 0; line < file.lines.size(); ++line) {
      for (const std::string& path : pathsNamedIn(file.lines[line], folderOf(file.path))) {
        if (!tree.contains(path)) findings.push_back(finding(file, line, "there is no " + path));
      }
    }
  }
  return findings;
}

Findings forbiddenWords(const SourceTree& tree) {
  const auto everyFile = [](const SourceFile&) { return true; };
  return eachLine(tree, everyFile, [](const SourceFile&, std::string_view line) -> std::string {
    for (const auto& [first, second] : kForbiddenPieces) {
      if (line.find(first + second) != std::string_view::npos) return first + second + " has no place here";
    }
    for (const auto& [first, second] : kForbiddenWords) {
      if (containsWord(line, first + second)) return first + second + " has no place here";
    }
    return {};
  });
}

}  // namespace pillora::house

// SPDX-License-Identifier: MIT
#include "house/SymbolRules.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>
#include <regex>
#include <set>
#include <string_view>

namespace pillora::house {
namespace {

using Findings = std::vector<std::string>;
using Names = std::set<std::string>;

const std::string kFolder = "assets/symbols";
const std::string kLicence = "<!-- SPDX-License-Identifier: MIT -->";
constexpr size_t kMostBytes = 1536;

/// What may stand in a symbol, and with which attributes besides those of its colour and stroke.
const std::map<std::string, Names>& elementTable() {
  static const std::map<std::string, Names> table = {
      {"svg", {"xmlns", "width", "height", "viewBox", "stroke-linecap", "stroke-linejoin"}},
      {"path", {"d"}},
      {"circle", {"cx", "cy", "r"}},
      {"rect", {"x", "y", "width", "height", "rx"}},
      {"line", {"x1", "y1", "x2", "y2"}},
      {"polyline", {"points"}},
  };
  return table;
}

const Names kPaint = {"fill", "stroke"};
const Names kPlainPaint = {"fill-rule", "stroke-width"};
const std::map<std::string, std::string> kGrid = {{"width", "24"}, {"height", "24"}, {"viewBox", "0 0 24 24"}};

std::string finding(const SourceFile& file, size_t line, const std::string& what) {
  return file.path + ":" + std::to_string(line + 1) + ": " + what;
}

std::vector<std::smatch> matches(const std::string& text, const std::regex& pattern) {
  return {std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()};
}

std::string symbolPath(const std::string& name) { return std::string(kFolder).append("/").append(name).append(".svg"); }

bool isSymbol(const SourceFile& file) { return folderOf(file.path) == kFolder && extensionOf(file.path) == "svg"; }

bool namesSymbols(const SourceFile& file) {
  const std::string_view extension = extensionOf(file.path);
  return std::ranges::any_of(std::initializer_list<std::string_view>{"src/screens/", "src/app/", "src/ui/"},
                             [&](std::string_view folder) { return file.path.starts_with(folder); }) &&
         (extension == "cpp" || extension == "h" || extension == "qml");
}

/// "clock.fill" is a symbol; "org.pillora.Pillora" and "backup.json" are not.
bool hasSymbolsDots(const std::string& text) {
  static const std::regex dotted("[a-z]+([.][a-z0-9]+)+");
  static const std::regex other("(org[.].*)|(.*[.](qml|json|svg|png|store))");
  return std::regex_match(text, dotted) && !std::regex_match(text, other);
}

bool endsTable(const std::string& line) { return line.find("};") != std::string::npos; }

/// The symbols that a line names; `isTable` where it is part of the table of medicine icons.
std::vector<std::string> symbolsNamedIn(const std::string& line, bool isTable) {
  static const std::regex literal("\"([^\"\\\\]*)\"");
  static const std::regex property("\\b(symbol|[a-z]+Symbol):(.*)");
  static const std::regex action("\"[A-Za-z]+\", [a-z_.]*text\\(\"[^\"]*\"\\), \"([a-z]+)\"(\\}|, true)");
  std::smatch given;
  const bool isProperty = std::regex_search(line, given, property);
  const auto valueAt = isProperty ? given.position(2) : 0;
  std::vector<std::string> names;
  for (const std::smatch& match : matches(line, literal)) {
    const bool isValue = isProperty && match.position() >= valueAt;
    if (!match.str(1).empty() && (isTable || isValue || hasSymbolsDots(match.str(1)))) names.push_back(match.str(1));
  }
  for (const std::smatch& match : matches(line, action)) names.push_back(match.str(1));
  return names;
}

std::optional<std::string> unfitAttribute(const std::string& element, const std::string& name,
                                          const std::string& value) {
  if (kPaint.contains(name)) {
    if (value == "none" || value == "#000") return std::nullopt;
    return name + " is none or #000";
  }
  if (!elementTable().at(element).contains(name) && !kPlainPaint.contains(name)) return "no " + name + " here";
  if (element == "svg" && kGrid.contains(name) && kGrid.at(name) != value) return name + " is " + kGrid.at(name);
  return std::nullopt;
}

/// What is wrong with a line below the licence: one element, and "</svg>" at the end.
std::optional<std::string> unfitLine(const std::string& line) {
  static const std::regex whole("(<svg( [^<>]*)>)|(  <([a-z]+)( [^<>]*)/>)|(</svg>)");
  static const std::regex attribute(" ([A-Za-z0-9:-]+)=\"([^\"]*)\"");
  std::smatch parts;
  if (!std::regex_match(line, parts, whole)) return "one element a line";
  if (parts[6].matched) return std::nullopt;
  const std::string element = parts[1].matched ? "svg" : parts.str(4);
  if (!elementTable().contains(element)) return "no " + element + " here";
  const std::string attributes = parts[1].matched ? parts.str(2) : parts.str(5);
  for (const std::smatch& match : matches(attributes, attribute)) {
    if (auto unfit = unfitAttribute(element, match.str(1), match.str(2))) return unfit;
  }
  return std::nullopt;
}

size_t bytesOf(const SourceFile& file) {
  return std::accumulate(file.lines.begin(), file.lines.end(), size_t{0},
                         [](size_t sum, const std::string& line) { return sum + line.size() + 1; });
}

}  // namespace

Findings missingSymbols(const SourceTree& tree) {
  Findings findings;
  for (const SourceFile& file : tree.files()) {
    if (!namesSymbols(file)) continue;
    bool isTable = false;
    for (size_t line = 0; line < file.lines.size(); ++line) {
      isTable = isTable || file.lines[line].find("kIconNames = {") != std::string::npos;
      for (const std::string& name : symbolsNamedIn(file.lines[line], isTable)) {
        if (!tree.contains(symbolPath(name))) findings.push_back(finding(file, line, "no symbol " + name));
      }
      isTable = isTable && !endsTable(file.lines[line]);
    }
  }
  return findings;
}

Findings unfitSymbols(const SourceTree& tree) {
  Findings findings;
  for (const SourceFile& file : tree.files()) {
    if (!isSymbol(file)) continue;
    if (bytesOf(file) > kMostBytes) findings.push_back(finding(file, 0, "too large"));
    if (file.lines.empty() || file.lines.front() != kLicence) findings.push_back(finding(file, 0, "no licence"));
    if (file.lines.size() < 4 || !file.lines[1].starts_with("<svg ") || file.lines.back() != "</svg>") {
      findings.push_back(finding(file, 0, "no drawing"));
    }
    for (size_t line = 1; line < file.lines.size(); ++line) {
      if (const auto unfit = unfitLine(file.lines[line])) findings.push_back(finding(file, line, *unfit));
    }
  }
  return findings;
}

}  // namespace pillora::house

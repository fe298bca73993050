// SPDX-License-Identifier: MIT
#include "house/Words.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace pillora::house {
namespace {

constexpr std::array<std::string_view, 12> kRootFolders = {"src/",   "tests/", "docs/",      "bench/",  "fuzz/", ".ci/",
                                                           "cmake/", "tools/", "packaging/", "assets/", "man/",  "./"};
constexpr std::string_view kBlanks = " \t";

bool isWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool hasPlaceholder(std::string_view path) { return path.find_first_of("<>*{}$") != std::string_view::npos; }

/// "docs/store.md" for "../docs/./store.md" in "src".
std::string normalPath(std::string_view folder, std::string_view path) {
  std::string normal = (std::filesystem::path(folder) / path).lexically_normal();
  while (normal.ends_with('/')) normal.pop_back();
  return normal;
}

}  // namespace

std::vector<std::string_view> wordsOf(std::string_view text, std::string_view separators) {
  std::vector<std::string_view> words;
  while (true) {
    const size_t begin = text.find_first_not_of(separators);
    if (begin == std::string_view::npos) return words;
    const size_t end = std::min(text.find_first_of(separators, begin), text.size());
    words.push_back(text.substr(begin, end - begin));
    text.remove_prefix(end);
  }
}

bool containsWord(std::string_view text, std::string_view word) {
  for (size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
    const size_t end = at + word.size();
    const bool opens = at == 0 || !isWordCharacter(word.front()) || !isWordCharacter(text[at - 1]);
    const bool closes = end == text.size() || !isWordCharacter(word.back()) || !isWordCharacter(text[end]);
    if (opens && closes) return true;
  }
  return false;
}

std::optional<std::string_view> includedHeader(std::string_view line, char open, char close) {
  const size_t hash = line.find_first_not_of(kBlanks);
  if (hash == std::string_view::npos || line[hash] != '#') return std::nullopt;
  const size_t word = line.find_first_not_of(kBlanks, hash + 1);
  if (word == std::string_view::npos || !line.substr(word).starts_with("include")) return std::nullopt;
  const size_t begin = line.find(open, word);
  const size_t end = line.find(close, begin + 1);
  if (begin == std::string_view::npos || end == std::string_view::npos) return std::nullopt;
  return line.substr(begin + 1, end - begin - 1);
}

std::vector<std::string> pathsNamedIn(std::string_view line, std::string_view folder) {
  std::vector<std::string> paths;
  const auto note = [&](std::string_view from, std::string_view path) {
    std::string normal = normalPath(from, path);
    if (!hasPlaceholder(path) && !normal.empty() && !normal.starts_with("build/")) paths.push_back(std::move(normal));
  };
  for (std::string_view word : wordsOf(line, " \t()[]`\"',;:|")) {
    while (word.ends_with('.')) word.remove_suffix(1);
    if (std::ranges::any_of(kRootFolders, [&](std::string_view root) { return word.starts_with(root); })) {
      note("", word);
    }
  }
  for (size_t at = line.find("]("); at != std::string_view::npos; at = line.find("](", at + 1)) {
    std::string_view target = line.substr(at + 2, line.find(')', at) - at - 2);
    target = target.substr(0, target.find('#'));
    if (target.find("://") == std::string_view::npos && !target.starts_with("mailto")) note(folder, target);
  }
  return paths;
}

}  // namespace pillora::house

// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pillora::house {

// What the house rules read in a line.

/// The parts of `text` between any of `separators`, without empty ones. They refer into `text`.
std::vector<std::string_view> wordsOf(std::string_view text, std::string_view separators);

/// Whether `word` stands in `text` by itself: "now" does in "now()", not in "known". An end of `word` that is no
/// letter, digit or underscore ("/etc/", "printf(") may touch anything.
bool containsWord(std::string_view text, std::string_view word);

/// What an #include names, in quotes or in angles as asked; none on any other line.
std::optional<std::string_view> includedHeader(std::string_view line, char open, char close);

/// The paths from the repository's root that a line of a document names: words that begin with one of the root's
/// folders or with "./", and the targets of links, which are read from the document's own `folder`. Left out are
/// addresses on the net, paths with a placeholder ("src/<room>", "*.h") and build folders.
std::vector<std::string> pathsNamedIn(std::string_view line, std::string_view folder);

}  // namespace pillora::house

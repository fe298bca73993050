// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pillora {

// Text as a terminal shows it. Texts are UTF-8; bytes that are not count as U+FFFD.

bool isUtf8(std::string_view text);

/// The text on one line and without any power over the terminal: line breaks and tabs become blanks; other control
/// characters, and those that turn the direction of what follows, become U+FFFD.
std::string harmless(std::string_view text);

/// Columns that a harmless text takes: wide characters two, combining marks none.
size_t displayWidth(std::string_view text);

/// The text if it fits into `columns`, else its beginning with "…" at the end.
std::string cutToWidth(std::string_view text, size_t columns);

/// The text broken at its blanks, and between the letters of scripts that have none, into lines of at most `columns`; a
/// longer word is cut.
std::vector<std::string> wrapped(std::string_view text, size_t columns);

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace pillora {

/// The one place for console lines, so that tests compare them. Programs send them to standard error.
class Console {
 public:
  virtual ~Console() = default;

  /// Writes one line. Line breaks inside `line` become blanks, so that a failure is always one line. Any thread.
  virtual void print(std::string_view line) = 0;
};

}  // namespace pillora

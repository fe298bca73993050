// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Console.h"

namespace pillora {

/// Console lines on standard error. Each line is handed to the system in one piece, so that those of several threads
/// and processes do not mix.
class StandardErrorConsole final : public Console {
 public:
  void print(std::string_view line) override;
};

}  // namespace pillora

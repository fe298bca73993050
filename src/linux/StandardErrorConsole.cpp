// SPDX-License-Identifier: MIT
#include "linux/StandardErrorConsole.h"

#include <cstdio>
#include <string>

namespace pillora {

void StandardErrorConsole::print(std::string_view line) {
  std::string text(line);
  for (char& c : text) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  text += '\n';
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace pillora {

/// Who the program is.
struct Bundle {
  std::string identifier = "org.pillora.Pillora";
  std::string shortVersion = "1.0.0";
};

}  // namespace pillora

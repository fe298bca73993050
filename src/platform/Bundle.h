// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace pillora {

/// Who the program is.
struct Bundle {
  std::string identifier = "org.pillora.Pillora";
  std::string shortVersion = "1.0.0";

  /// The version as it is shown and stored, also where it is absent.
  std::string versionOrDefault() const { return shortVersion.empty() ? "1.0" : shortVersion; }
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace pillora {

/// How the person's desktop asks programs to look. What a desktop does not say is as it stands here.
struct DesktopLook {
  bool isDark = false;
  bool isHighContrast = false;
  bool isMotionReduced = false;
  double textScale = 1;
  /// The typeface of the desktop's own texts, perhaps with words for its weight and slant after it: "Ubuntu Medium".
  std::string font = {};

  bool operator==(const DesktopLook&) const = default;
};

}  // namespace pillora

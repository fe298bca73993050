// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace pillora {

/// What the window asks of the desktop around it. Main thread only; nothing waits, and a desktop that has no such thing
/// does nothing.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// A short vibration, where the device can.
  virtual void vibrate() = 0;
  /// Opens one of the pages that are installed with the program: "privacyPolicy", "termsOfService".
  virtual void openPage(std::string_view page) = 0;
};

}  // namespace pillora

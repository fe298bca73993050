// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <ctime>
#include <string>

namespace pillora {

/// The C library's time zone while a test runs; the one before it comes back at the end.
class ScopedZone {
 public:
  explicit ScopedZone(const std::string& zone) {
    if (const char* before = std::getenv("TZ")) before_ = before;
    set(zone);
  }
  ~ScopedZone() {
    if (before_.empty()) {
      unsetenv("TZ");
      tzset();
    } else {
      set(before_);
    }
  }
  ScopedZone(const ScopedZone&) = delete;
  ScopedZone& operator=(const ScopedZone&) = delete;

  void set(const std::string& zone) {
    setenv("TZ", zone.c_str(), 1);
    tzset();
  }

 private:
  std::string before_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "linux/SystemClock.h"

#include <gtest/gtest.h>

#include <sys/time.h>

namespace pillora {
namespace {

Instant systemTime() {
  timeval now{};
  gettimeofday(&now, nullptr);
  return Instant(std::chrono::seconds(now.tv_sec) + std::chrono::microseconds(now.tv_usec));
}

TEST(SystemClock, nowIsTheSystemsTime) {
  const Instant before = systemTime();
  const Instant now = SystemClock().now();
  const Instant after = systemTime();
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);
}

}  // namespace
}  // namespace pillora

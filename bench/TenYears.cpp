// SPDX-License-Identifier: MIT
// Writes a store with ten years of history up to now into the file that is named.
#include <cstdio>

#include "Fixture.h"
#include "linux/SystemClock.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
    return 2;
  }
  pillora::bench::writeTenYears(argv[1], pillora::SystemClock().now());
}

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What libFuzzer and the corpus run call with every input. Ends the process when something does not hold.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

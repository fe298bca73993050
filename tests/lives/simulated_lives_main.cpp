// SPDX-License-Identifier: MIT
// Lets simulated people live with Pillora:
//
//     simulated-lives [SEED [LIVES [DAYS]]]        1 10 1826 by default
//
// Each life prints a line; one in which something went wrong ends the program with status 1 and tells how to see it
// again.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "lives/Life.h"

int main(int count, char** arguments) {
  const auto number = [&](int place, long otherwise) {
    return count > place ? std::strtol(arguments[place], nullptr, 10) : otherwise;
  };
  const long first = number(1, 1), lives = number(2, 10);
  const auto days = static_cast<int>(number(3, 1826));
  std::map<std::string, int64_t> done;
  for (long seed = first; seed < first + lives; ++seed) {
    const auto begin = std::chrono::steady_clock::now();
    pillora::Life life(static_cast<uint64_t>(seed), days);
    const std::string fault = life.run();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    std::printf("seed %ld, %s: %.1f s%s\n%s", seed, life.home().c_str(), took.count(), fault.empty() ? "" : " FAILED",
                fault.c_str());
    std::fflush(stdout);
    if (!fault.empty()) return 1;
    for (const auto& [what, times] : life.done()) done[what] += times;
  }
  for (const auto& [what, times] : done) std::printf("%8ld  %s\n", static_cast<long>(times), what.c_str());
  return 0;
}

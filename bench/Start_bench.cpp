// SPDX-License-Identifier: MIT
// The whole process: from exec to the first byte of Today's content.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Fixture.h"

namespace pillora::bench {

namespace {

/// Runs `pilloractl --store PATH … today` and waits for its end. Timing stops at the first byte.
void startToContent(benchmark::State& state, std::string path) {
  const std::string now = iso8601(kNow);
  const char* arguments[] = {PILLORACTL, "--store",  path.c_str(), "--now", now.c_str(), "--time-zone",
                             kZone,      "--locale", kLocale,      "today", nullptr};
  for (auto _ : state) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) std::abort();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    pid_t child = 0;
    if (posix_spawn(&child, PILLORACTL, &actions, nullptr, const_cast<char**>(arguments), environ) != 0) std::abort();
    close(ends[1]);
    char buffer[4096];
    if (read(ends[0], buffer, sizeof buffer) <= 0) std::abort();
    state.PauseTiming();
    while (read(ends[0], buffer, sizeof buffer) > 0) {
    }
    close(ends[0]);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) std::abort();
    state.ResumeTiming();
  }
}

void startWithTenYears(benchmark::State& state) { startToContent(state, tenYearStore()); }
BENCHMARK(startWithTenYears)->Name("startToTodayContent/tenYears")->Unit(benchmark::kMillisecond)->UseRealTime();

void startWithEmptyStore(benchmark::State& state) { startToContent(state, emptyStore()); }
BENCHMARK(startWithEmptyStore)->Name("startToTodayContent/empty")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

}  // namespace pillora::bench

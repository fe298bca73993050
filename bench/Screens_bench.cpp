// SPDX-License-Identifier: MIT
// Screens drawn from ten years of history, and a dose taken, saved and drawn again.
#include <benchmark/benchmark.h>
#include <cstdlib>

#include "Fixture.h"
#include "screens/TodayView.h"
#include "screens/UpcomingView.h"

namespace pillora::bench {

namespace {

template <typename View>
void redraw(benchmark::State& state) {
  OpenStore store(tenYearStore());
  const View view(store.environment());
  for (auto _ : state) benchmark::DoNotOptimize(view.content());
}
BENCHMARK_TEMPLATE(redraw, TodayView)->Name("redraw/Today")->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(redraw, UpcomingView)->Name("redraw/Upcoming")->Unit(benchmark::kMicrosecond);

/// The store is open and nothing has been read: queries, formatters and calendar tables start cold.
template <typename View>
void firstDraw(benchmark::State& state) {
  const std::string path = tenYearStore();
  for (auto _ : state) {
    OpenStore store(path);
    const View view(store.environment());
    benchmark::DoNotOptimize(view.content());
  }
}
BENCHMARK_TEMPLATE(firstDraw, TodayView)->Name("openAndDraw/Today")->Unit(benchmark::kMillisecond);

void takeAndRedraw(benchmark::State& state) {
  OpenStore store(tenYearStore());
  TodayView today(store.environment());
  const TodayContent before = today.content();
  if (before.doses.empty()) std::abort();
  const UpcomingReminderCard card = before.doses.front();
  for (auto _ : state) {
    const auto log = today.take(card.medicineId, card.time);
    store.endTurn();
    benchmark::DoNotOptimize(today.content());
    state.PauseTiming();
    if (!log || !*log || !today.undo(**log)) std::abort();
    store.endTurn();
    state.ResumeTiming();
  }
}
BENCHMARK(takeAndRedraw)->Name("takeSaveAndRedraw/Today")->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace pillora::bench

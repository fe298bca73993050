// SPDX-License-Identifier: MIT
// Screens drawn from ten years of history, and a dose taken, saved and drawn again.
#include <benchmark/benchmark.h>
#include <cstdlib>

#include "Fixture.h"
#include "screens/ReminderHistoryView.h"
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

ReminderHistoryView historyOf(OpenStore& store, TimeRange range, HistoryFilter filter = HistoryFilter::all) {
  ReminderHistoryView view(store.environment());
  view.selectedTimeRange = range;
  view.selectedFilter = filter;
  return view;
}

void redrawHistory(benchmark::State& state, TimeRange range, HistoryFilter filter) {
  OpenStore store(tenYearStore());
  const auto view = historyOf(store, range, filter);
  for (auto _ : state) benchmark::DoNotOptimize(view.content());
}
BENCHMARK_CAPTURE(redrawHistory, week, TimeRange::week, HistoryFilter::all)
    ->Name("redraw/History/week")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(redrawHistory, month, TimeRange::month, HistoryFilter::all)
    ->Name("redraw/History/month")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(redrawHistory, all, TimeRange::all, HistoryFilter::all)
    ->Name("redraw/History/all")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(redrawHistory, skipped, TimeRange::all, HistoryFilter::skipped)
    ->Name("redraw/History/all/skipped")
    ->Unit(benchmark::kMicrosecond);

/// The one match lies ten years back, behind all other logs.
void redrawHistoryOfOneRareDose(benchmark::State& state) {
  OpenStore store(tenYearStore());
  const auto skipped = store.context().fetch(
      FetchDescriptor<DoseLog>().where(&DoseLog::statusRaw, Comparison::equal, std::string("Skipped")));
  if (!skipped || skipped->empty()) std::abort();
  for (size_t i = 1; i < skipped->size(); ++i) (*skipped)[i]->statusRaw = "Missed";
  const auto view = historyOf(store, TimeRange::all, HistoryFilter::skipped);
  if (view.content().days.size() != 1) std::abort();
  for (auto _ : state) benchmark::DoNotOptimize(view.content());
  store.context().discardChanges();
}
BENCHMARK(redrawHistoryOfOneRareDose)->Name("redraw/History/all/oneSkipped")->Unit(benchmark::kMicrosecond);

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

void firstDrawOfAllHistory(benchmark::State& state) {
  const std::string path = tenYearStore();
  for (auto _ : state) {
    OpenStore store(path);
    benchmark::DoNotOptimize(historyOf(store, TimeRange::all).content());
  }
}
BENCHMARK(firstDrawOfAllHistory)->Name("openAndDraw/History/all")->Unit(benchmark::kMillisecond);

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

/// A missed dose of today marked as taken after all, over all ten years.
void changeStatusAndRedraw(benchmark::State& state) {
  OpenStore store(tenYearStore());
  auto history = historyOf(store, TimeRange::all, HistoryFilter::missed);
  const HistoryContent before = history.content();
  const UUID missed = before.days.front().logs.front().id;
  history.selectedFilter = HistoryFilter::all;
  const auto log = store.context().find<DoseLog>(missed);
  const auto actionTime = log->actionTime();
  for (auto _ : state) {
    const auto changed = history.onStatusChange(missed, DoseStatus::taken);
    store.endTurn();
    benchmark::DoNotOptimize(history.content());
    state.PauseTiming();
    if (!changed || !*changed) std::abort();
    log->statusRaw = std::string(rawValue(DoseStatus::missed));
    log->actionTime = actionTime;
    store.endTurn();
    state.ResumeTiming();
  }
}
BENCHMARK(changeStatusAndRedraw)->Name("changeSaveAndRedraw/History/all")->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace pillora::bench

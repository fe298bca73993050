// SPDX-License-Identifier: MIT
// The list of medicines and the details of one, drawn from ten years of history; and the form.
#include <benchmark/benchmark.h>
#include <cstdlib>

#include "Fixture.h"
#include "screens/AddMedicineView.h"
#include "screens/MedicineDetailView.h"
#include "screens/MedicineListView.h"

namespace pillora::bench {

namespace {

void redrawList(benchmark::State& state) {
  OpenStore store(tenYearStore());
  const MedicineListView view(store.environment());
  if (view.content().sections.empty()) std::abort();
  for (auto _ : state) benchmark::DoNotOptimize(view.content());
}
BENCHMARK(redrawList)->Name("redraw/Medicines")->Unit(benchmark::kMicrosecond);

/// The medicine with the most logs: one every 150 minutes.
UUID busiest(ModelContext& context) {
  const auto medicines = context.fetch<Medicine>();
  if (!medicines || medicines->empty()) std::abort();
  for (const auto& medicine : *medicines) {
    if (medicine->interval().type == ReminderIntervalType::custom) return medicine->id();
  }
  std::abort();
}

void redrawDetail(benchmark::State& state) {
  OpenStore store(tenYearStore());
  const MedicineDetailView view(store.environment(), busiest(store.context()));
  if (view.content().recentHistory.size() != 5) std::abort();
  for (auto _ : state) benchmark::DoNotOptimize(view.content());
}
BENCHMARK(redrawDetail)->Name("redraw/Detail")->Unit(benchmark::kMicrosecond);

/// A switch is thrown, and the latest doses are read again.
void changeAndRedrawDetail(benchmark::State& state) {
  OpenStore store(tenYearStore());
  MedicineDetailView view(store.environment(), busiest(store.context()));
  bool isOn = false;
  for (auto _ : state) {
    if (!view.setOn("isRepeating", isOn)) std::abort();
    isOn = !isOn;
    benchmark::DoNotOptimize(view.content());
  }
  store.context().discardChanges();
}
BENCHMARK(changeAndRedrawDetail)->Name("changeAndRedraw/Detail")->Unit(benchmark::kMicrosecond);

void openDetail(benchmark::State& state) {
  OpenStore store(tenYearStore());
  const UUID medicine = busiest(store.context());
  for (auto _ : state) benchmark::DoNotOptimize(MedicineDetailView(store.environment(), medicine).content());
}
BENCHMARK(openDetail)->Name("open/Detail")->Unit(benchmark::kMicrosecond);

void typeIntoForm(benchmark::State& state) {
  OpenStore store(emptyStore());
  AddMedicineView form(store.environment());
  std::string name;
  for (auto _ : state) {
    name = name.size() < 40 ? name + 'a' : "";
    if (!form.setText("name", name)) std::abort();
    benchmark::DoNotOptimize(form.content());
  }
}
BENCHMARK(typeIntoForm)->Name("typeAndRedraw/Form")->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace pillora::bench

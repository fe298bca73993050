// SPDX-License-Identifier: MIT
// The settings screen with ten years of history, and what the window waits for while 10,000 medicines are restored.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "Fixture.h"
#include "doubles/FakeBackgroundExecutor.h"
#include "doubles/InMemoryFileManager.h"
#include "screens/SettingsView.h"

namespace pillora::bench {

namespace {

constexpr int64_t kMedicines = 10'000;

/// The screen on an open store, with files in memory.
struct OpenSettings {
  explicit OpenSettings(const std::string& path) : store(path) {}

  OpenStore store;
  FixedClock clock;
  InMemoryFileManager files{clock};
  FakeBackgroundExecutor background;
  RecordingConsole console;
  BackupEnvironment environment{files, background, store.executor(), clock, store.environment().texts, {}};
  BackupService backups{environment};
  SettingsView view{store.environment(), environment, backups, console};
};

/// A copy of the empty store, made anew each time.
std::string freshStore() {
  const std::string path = emptyStore(), copy = path + ".copy";
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(copy + suffix);
  std::filesystem::copy_file(path, copy);
  return copy;
}

void redraw(benchmark::State& state) {
  OpenSettings settings(tenYearStore());
  for (auto _ : state) benchmark::DoNotOptimize(settings.view.content());
}
BENCHMARK(redraw)->Name("redraw/Settings")->Unit(benchmark::kMicrosecond);

void toggleSaveAndRedraw(benchmark::State& state) {
  OpenSettings settings(tenYearStore());
  bool isOn = false;
  for (auto _ : state) {
    isOn = !isOn;
    if (!settings.view.setToggle("enableHaptics", isOn)) std::abort();
    settings.store.endTurn();
    benchmark::DoNotOptimize(settings.view.content());
  }
}
BENCHMARK(toggleSaveAndRedraw)->Name("toggleSaveAndRedraw/Settings")->Unit(benchmark::kMicrosecond);

std::string backupOfMany() {
  BackupData backup;
  for (int64_t i = 0; i < kMedicines; ++i) {
    MedicineBackup medicine;
    medicine.id = UUID::random();
    medicine.name = "Medicine " + std::to_string(i);
    medicine.instructions = "with a glass of water";
    medicine.interval = fallbackInterval();
    backup.medicines.push_back(std::move(medicine));
  }
  return *encodeBackup(backup);
}

/// Reading and decoding have happened in the background: records are made, saved in one transaction, and drawn.
void applyRestore(benchmark::State& state) {
  const std::string text = backupOfMany();
  for (auto _ : state) {
    state.PauseTiming();
    std::optional<OpenSettings> settings(std::in_place, freshStore());
    if (!settings->files.write("/backup.json", text)) std::abort();
    settings->view.restoreBackup("/backup.json");
    settings->background.runAll();
    state.ResumeTiming();
    settings->store.endTurn();
    benchmark::DoNotOptimize(settings->view.content());
    state.PauseTiming();
    if (*settings->store.context().fetchCount<Medicine>() != kMedicines) std::abort();
    settings.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(applyRestore)->Name("backup/10000/apply, save and redraw")->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace pillora::bench

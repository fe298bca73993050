// SPDX-License-Identifier: MIT
// A backup of 10,000 medicines: what it costs the main thread, written, and read back.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>

#include "Fixture.h"
#include "backup/BackupData.h"
#include "backup/BackupService.h"
#include "doubles/FakeBackgroundExecutor.h"
#include "linux/PosixFileManager.h"

namespace pillora::bench {

namespace {

constexpr size_t kMedicines = 10'000;

ReminderInterval twiceADay() {
  ReminderInterval interval = fallbackInterval();
  interval.dailyTimes = {{8, 0}, {20, 0}};
  return interval;
}

BackupData largeBackup() {
  BackupData backup;
  backup.createdAt = kNow;
  backup.appVersion = "1.0.0";
  backup.settings.emplace();
  for (size_t i = 0; i < kMedicines; ++i) {
    MedicineBackup medicine;
    medicine.id = UUID::random();
    medicine.name = "Medicine " + std::to_string(i);
    medicine.dosage = "1";
    medicine.unit = "tablet";
    medicine.instructions = "with a glass of water";
    medicine.color = "blue";
    medicine.icon = "pills";
    medicine.interval = twiceADay();
    medicine.startDate = kNow;
    backup.medicines.push_back(medicine);
  }
  return backup;
}

/// In memory-backed storage where there is one, as all that is measured.
std::string filePath() { return std::filesystem::path(emptyStore()).replace_filename("backup.json"); }

PosixFileManager realFiles() {
  return {[] { return std::nullopt; }, [] { return std::nullopt; }};
}

void write(benchmark::State& state) {
  PosixFileManager files = realFiles();
  const BackupData backup = largeBackup();
  const std::string path = filePath();
  for (auto _ : state) {
    const auto text = encodeBackup(backup);
    if (!text || !files.write(path, *text)) std::abort();
  }
}
BENCHMARK(write)->Name("backup/10000/encode and write")->Unit(benchmark::kMillisecond);

void read(benchmark::State& state) {
  PosixFileManager files = realFiles();
  const std::string path = filePath();
  if (!files.write(path, *encodeBackup(largeBackup()))) std::abort();
  for (auto _ : state) {
    const auto text = files.contents(path);
    const auto backup = decodeBackup(*text);
    if (!backup || backup->medicines.size() != kMedicines) std::abort();
  }
}
BENCHMARK(read)->Name("backup/10000/read and decode")->Unit(benchmark::kMillisecond);

/// What the window waits for when a backup is asked for: the records' values are read, all else happens on the queue.
void ask(benchmark::State& state) {
  PosixFileManager files = realFiles();
  FakeBackgroundExecutor background;
  QueuedMainExecutor executor;
  const FixedClock clock;
  OpenStore store(emptyStore());
  BackupService service({files, background, executor, clock, store.environment().texts, {}});
  std::vector<std::shared_ptr<Medicine>> medicines;
  for (const MedicineBackup& each : largeBackup().medicines)
    medicines.push_back(Medicine::make(newMedicine(each), kNow));
  const AppSettings settings;
  for (auto _ : state) {
    service.createLocalBackup(medicines, &settings, [](const Result<std::string>&) {});
    state.PauseTiming();
    background.runAll();  // there is no documents folder: nothing is written
    executor.drain();
    state.ResumeTiming();
  }
}
BENCHMARK(ask)->Name("backup/10000/main thread")->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace pillora::bench

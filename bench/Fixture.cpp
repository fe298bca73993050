// SPDX-License-Identifier: MIT
#include "Fixture.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <unistd.h>

#include "icu/Calendars.h"
#include "icu/IcuTexts.h"
#include "schedule/Schedule.h"

namespace pillora::bench {

namespace {

constexpr unsigned kSeed = 20'250'110;
constexpr int kDays = 3650;

template <typename T>
T require(Result<T> result) {
  if (!result) {
    std::fprintf(stderr, "%s\n", result.error().description.c_str());
    std::exit(1);
  }
  return std::move(*result);
}

std::filesystem::path folder() {
  // Never destroyed: it is still needed when the program ends.
  static const auto* const made = [] {
    std::string name = std::filesystem::exists("/dev/shm") ? "/dev/shm/" : "/tmp/";
    name += "pillora-bench-XXXXXX";  // mkdtemp puts a random name in place of the X
    if (mkdtemp(name.data()) == nullptr) std::exit(1);
    std::atexit([] { std::filesystem::remove_all(folder()); });
    return new std::filesystem::path(name);
  }();
  return *made;
}

/// Four medicines of each kind; together about sixty doses a day.
ReminderInterval intervalOf(int index) {
  ReminderInterval interval = fallbackInterval();
  const int variant = index / 5;
  interval.type = kAllReminderIntervalTypes[static_cast<size_t>(index % 5)];
  interval.hourlyInterval = 4 + 2 * variant;
  interval.dailyTimes = {{8, 0}, {14, 30}, {20, 15 * variant}};
  interval.weeklyDays = {1 + variant, 3, 5, 7};
  interval.monthlyDays = {1, 10 + variant, 31};
  interval.customIntervalMinutes = 150 + 30 * variant;
  return interval;
}

void fill(ModelContext& context, const Calendar& calendar, QueuedMainExecutor& executor, Instant now) {
  std::mt19937 random(kSeed);
  const Instant start = *calendar.adding(CalendarUnit::day, -kDays, now);
  for (int index = 0; index < 20; ++index) {
    NewMedicine values;
    values.name = "Medicine " + std::to_string(index + 1);
    values.interval = intervalOf(index);
    values.startDate = start;
    const auto medicine = Medicine::make(values, start);
    context.insert(medicine);
    auto due = values.interval.nextOccurrence(start, calendar);
    for (int doses = 0; due && *due < now; ++doses) {
      const unsigned outcome = static_cast<unsigned>(random() % 10);
      const auto status = outcome < 7 ? DoseStatus::taken : outcome < 9 ? DoseStatus::missed : DoseStatus::skipped;
      const auto late = std::chrono::seconds(random() % 3600);
      context.insert(DoseLog::make(*due, *due + late, status, 0, "", medicine));
      due = values.interval.nextOccurrence(*due, calendar);
      if (doses % 5000 == 0) executor.drain();
    }
    executor.drain();
  }
}

}  // namespace

OpenStore::OpenStore(const std::string& path)
    : calendar_(require(makeCalendar(kLocale, kZone))), texts_(require(makeTexts(kLocale, kZone, "en"))) {
  ModelConfiguration configuration;
  configuration.path = path;
  container_ = require(ModelContainer::open(configuration, executor_));
}

void writeTenYears(const std::string& path, Instant now) {
  const auto calendar = require(makeCalendar(kLocale, kZone));
  QueuedMainExecutor executor;
  ModelConfiguration configuration;
  configuration.path = path;
  const auto container = require(ModelContainer::open(configuration, executor));
  container->mainContext().insert(AppSettings::make());
  fill(container->mainContext(), *calendar, executor, now);
  const auto logs = require(container->mainContext().fetchCount(FetchDescriptor<DoseLog>()));
  std::printf("Fixture: 20 medicines, %lld dose logs over ten years\n", static_cast<long long>(logs));
}

std::string tenYearStore() {
  const auto path = folder() / "ten-years.store";
  if (!std::filesystem::exists(path)) writeTenYears(path, kNow);
  return path;
}

std::string emptyStore() {
  const auto path = folder() / "empty.store";
  if (!std::filesystem::exists(path)) {
    QueuedMainExecutor executor;
    ModelConfiguration configuration;
    configuration.path = path;
    const auto container = require(ModelContainer::open(configuration, executor));
    container->mainContext().insert(AppSettings::make());
    executor.drain();
  }
  return path;
}

}  // namespace pillora::bench

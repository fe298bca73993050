// SPDX-License-Identifier: MIT
// A walk from due time to due time, once with Pillora's schedule and once with libical's recurrence iterator over the
// same rule in the same zone. Both sides yield instants; libical's iterator is made once per walk, not per step, which
// is the cheapest way to use it.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <libical/ical.h>

#include "Fixture.h"
#include "icu/Calendars.h"
#include "model/ReminderInterval.h"

namespace pillora::bench {

namespace {

constexpr int kSteps = 1000;

struct Rule {
  ReminderIntervalType type;
  const char* rrule;
};

constexpr Rule kRules[] = {
    {ReminderIntervalType::hourly, "FREQ=HOURLY;INTERVAL=4"},
    {ReminderIntervalType::daily, "FREQ=DAILY;BYHOUR=8,20;BYMINUTE=0;BYSECOND=0"},
    {ReminderIntervalType::weekly, "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR;BYHOUR=9;BYMINUTE=0;BYSECOND=0"},
    {ReminderIntervalType::monthly, "FREQ=MONTHLY;BYMONTHDAY=1,15;BYHOUR=9;BYMINUTE=0;BYSECOND=0"},
    {ReminderIntervalType::custom, "FREQ=MINUTELY;INTERVAL=90"},
};

ReminderInterval intervalOf(ReminderIntervalType type) {
  ReminderInterval interval = fallbackInterval();
  interval.type = type;
  interval.hourlyInterval = 4;
  interval.dailyTimes = {{8, 0}, {20, 0}};
  interval.weeklyDays = {2, 3, 4, 5, 6};
  interval.monthlyDays = {1, 15};
  interval.customIntervalMinutes = 90;
  return interval;
}

void pilloraWalk(benchmark::State& state, const Rule& rule) {
  const auto calendar = makeCalendar(kLocale, kZone);
  if (!calendar) std::abort();
  const ReminderInterval interval = intervalOf(rule.type);
  for (auto _ : state) {
    Instant cursor = kNow;
    for (int step = 0; step < kSteps; ++step) {
      const auto next = interval.nextOccurrence(cursor, **calendar);
      if (!next || *next <= cursor) std::abort();
      cursor = *next;
    }
    benchmark::DoNotOptimize(cursor);
  }
  state.SetItemsProcessed(state.iterations() * kSteps);
}

void libicalWalk(benchmark::State& state, const Rule& rule) {
  icaltimezone* const zone = icaltimezone_get_builtin_timezone(kZone);
  if (zone == nullptr) std::abort();
  const icaltimetype start = icaltime_from_timet_with_zone(kNow.microseconds() / 1'000'000, 0, zone);
  const icalrecurrencetype recurrence = icalrecurrencetype_from_string(rule.rrule);
  for (auto _ : state) {
    icalrecur_iterator* const iterator = icalrecur_iterator_new(recurrence, start);
    time_t cursor = 0;
    for (int step = 0; step < kSteps; ++step) {
      const icaltimetype next = icalrecur_iterator_next(iterator);
      if (icaltime_is_null_time(next)) std::abort();
      cursor = icaltime_as_timet_with_zone(next, zone);
      benchmark::DoNotOptimize(cursor);
    }
    icalrecur_iterator_free(iterator);
  }
  state.SetItemsProcessed(state.iterations() * kSteps);
}

const bool kRegistered = [] {
  for (const Rule& rule : kRules) {
    const std::string name = "nextOccurrence/" + std::string(rawValue(rule.type));
    benchmark::RegisterBenchmark((name + "/pillora").c_str(), pilloraWalk, rule)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark((name + "/libical").c_str(), libicalWalk, rule)->Unit(benchmark::kMicrosecond);
  }
  return true;
}();

}  // namespace

}  // namespace pillora::bench

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <rapidcheck/gtest.h>

#include "doubles/FailingVfs.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"
#include "doubles/TemporaryFolder.h"
#include "screens/ReminderHistoryView.h"

// History held against a plain one, which collects every log of every medicine and goes through them step by step, over
// random logs, places and changes.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// More cases than RapidCheck tries by itself, unless whoever runs the tests says how many.
[[maybe_unused]] const int kEnvironmentSet = setenv("RC_PARAMS", "max_success=250", 0);

/// What is compared: everything that depends on more than one log.
struct Shown {
  std::vector<int64_t> stats;
  std::optional<double> rate;
  int64_t percent = 0;
  std::string message, color;
  std::vector<std::string> days;  ///< title, count, then each row's id and place
  bool isEmpty = false, hasMore = false;

  bool operator==(const Shown&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Shown& shown) {
  for (const int64_t value : shown.stats) out << value << ' ';
  out << shown.percent << "% " << shown.message << ' ' << shown.color << (shown.isEmpty ? " empty" : "")
      << (shown.hasMore ? " more" : "");
  for (const std::string& line : shown.days) out << "\n  " << line;
  return out;
}

std::string rowLine(const UUID& id, bool isFirst, bool isLast, DoseStatus status) {
  return id.text() + (isFirst ? " first" : "") + (isLast ? " last " : " ") + std::string(rawValue(status));
}

Shown shownBy(const HistoryContent& content) {
  Shown shown;
  for (const StatItem& item : content.stats) shown.stats.push_back(item.value);
  shown.rate = content.adherence.rate;
  shown.percent = content.adherence.percent;
  shown.message = content.adherence.message;
  shown.color = content.adherence.color;
  for (const HistoryDay& day : content.days) {
    shown.days.push_back(day.title + ' ' + day.count);
    for (const auto& row : day.logs)
      shown.days.push_back(rowLine(row.id, row.isFirst, row.isLast, doseStatus(row.status)));
  }
  shown.isEmpty = content.empty.has_value();
  shown.hasMore = content.hasMore;
  return shown;
}

/// The logs of a history, collected and sorted the plain way.
DoseLogs plainLogs(ScreenFixture& fixture, TimeRange range, HistoryFilter filter) {
  const Instant now = fixture.clock.now();
  const Instant start = range == TimeRange::today  ? fixture.calendar->startOfDay(now)
                        : range == TimeRange::week ? fixture.calendar->adding(CalendarUnit::day, -7, now).value_or(now)
                        : range == TimeRange::month
                            ? fixture.calendar->adding(CalendarUnit::day, -30, now).value_or(now)
                            : Instant::distantPast();
  DoseLogs logs;
  const auto medicines = *fixture.context().fetch<Medicine>();
  const auto all = *fixture.context().fetch<DoseLog>();
  for (const auto& medicine : medicines) {
    for (const auto& log : all) {
      if (log->medicineId() != medicine->id() || log->scheduledTime() < start) continue;
      if (filter == HistoryFilter::all || rawValue(log->status()) == rawValue(filter)) logs.push_back(log);
    }
  }
  std::stable_sort(logs.begin(), logs.end(),
                   [](const auto& a, const auto& b) { return a->scheduledTime() > b->scheduledTime(); });
  return logs;
}

int64_t plainCount(const DoseLogs& logs, DoseStatus status) {
  return std::count_if(logs.begin(), logs.end(), [&](const auto& log) { return log->status() == status; });
}

/// Days with their rows, of which only the first `limit` logs of all are shown.
std::vector<std::string> plainDays(const ScreenFixture& fixture, const DoseLogs& logs, size_t limit) {
  const Calendar& calendar = *fixture.calendar;
  const Instant today = calendar.startOfDay(fixture.clock.now());
  std::map<Instant, DoseLogs, std::greater<>> days;
  for (const auto& log : logs) days[calendar.startOfDay(log->scheduledTime())].push_back(log);
  const DoseLogs shown(logs.begin(), logs.begin() + static_cast<std::ptrdiff_t>(std::min(limit, logs.size())));
  std::vector<std::string> lines;
  for (const auto& [day, ofDay] : days) {
    const bool isYesterday = day < today && calendar.startOfDay(today - 1s) == day;
    const std::string title = day == today  ? "Today"
                              : isYesterday ? "Yesterday"
                                            : fixture.texts->mediumDate(ofDay.back()->scheduledTime());
    std::vector<std::string> rows;
    for (const auto& log : ofDay) {
      if (std::find(shown.begin(), shown.end(), log) == shown.end()) continue;
      rows.push_back(rowLine(log->id(), log == ofDay.front(), log == ofDay.back(), log->status()));
    }
    if (rows.empty()) continue;
    const auto taken = plainCount(ofDay, DoseStatus::taken);
    lines.push_back(title + ' ' + std::to_string(taken) + '/' + std::to_string(ofDay.size()));
    lines.insert(lines.end(), rows.begin(), rows.end());
  }
  return lines;
}

Shown plainHistory(ScreenFixture& fixture, TimeRange range, HistoryFilter filter, size_t limit) {
  const DoseLogs logs = plainLogs(fixture, range, filter);
  Shown shown;
  const auto taken = plainCount(logs, DoseStatus::taken);
  shown.stats = {taken, plainCount(logs, DoseStatus::missed), plainCount(logs, DoseStatus::skipped)};
  if (!logs.empty()) shown.rate = static_cast<double>(taken) / static_cast<double>(logs.size());
  shown.percent = static_cast<int64_t>(shown.rate.value_or(0) * 100);
  if (!shown.rate || *shown.rate < 0.5) {
    shown.message = "Needs improvement";
    shown.color = "red";
  } else if (*shown.rate < 0.8) {
    shown.message = "Good progress";
    shown.color = "orange";
  } else {
    shown.message = *shown.rate < 1 ? "Great job!" : "Perfect!";
    shown.color = "green";
  }
  shown.days = plainDays(fixture, logs, limit);
  shown.isEmpty = logs.empty();
  shown.hasMore = logs.size() > limit;
  return shown;
}

struct Setting {
  const char* zone;
  const char* locale;
  const char* now;
};

/// Around clock changes: by day, across midnight, of a whole day, and where there is none.
constexpr Setting kSettings[] = {{"America/New_York", "en_US", "2025-03-10T02:30:00-04:00"},
                                 {"America/New_York", "en_US", "2025-11-02T10:00:00-05:00"},
                                 {"America/St_Johns", "en_US", "2006-10-29T00:20:00-03:30"},
                                 {"Pacific/Apia", "en_US", "2011-12-31T09:00:00+14:00"},
                                 {"America/Havana", "en_US", "2025-11-02T12:00:00-05:00"},
                                 {"America/Sao_Paulo", "en_US", "2018-11-04T08:00:00-02:00"},
                                 {"Asia/Tehran", "en_US@calendar=persian", "2022-03-22T08:00:00+04:30"},
                                 {"Asia/Bangkok", "th_TH@calendar=buddhist", "2025-01-10T00:00:00+07:00"}};

/// A time near now, so that days, spans and ties meet; sometimes far from it.
Instant anyTime(Instant now) {
  const Instant midnight(std::chrono::floor<std::chrono::hours>(now.sinceEpoch()));
  switch (*rc::gen::weightedElement<int>({{6, 0}, {6, 1}, {3, 2}, {3, 3}, {1, 4}})) {
    case 0:
      return midnight + *rc::gen::inRange(-30, 30) * 1h;
    case 1:
      return now + *rc::gen::inRange(-180, 180) * 10min;
    case 2:
      return now - *rc::gen::element(7, 30) * 24h + *rc::gen::inRange(-2, 3) * 30min;
    case 3:
      return now + *rc::gen::inRange(-100'000, 1'000) * 1h;
    default:
      return *rc::gen::element(Instant::distantPast(), Instant(), Instant(-1us), Instant::distantFuture(),
                               at("0001-01-01T00:00:00Z"), at("9999-12-31T23:59:59Z"));
  }
}

std::string anyStatus() {
  return *rc::gen::element<std::string>("Taken", "Taken", "Missed", "Missed", "Skipped", "Snoozed", "Pending",
                                        "Forgotten", "taken", "");
}

template <typename T>
std::shared_ptr<T> anyOf(ScreenFixture& fixture) {
  const auto all = *fixture.context().fetch<T>();
  return all.empty() ? nullptr : all[*rc::gen::inRange<size_t>(0, all.size())];
}

void addLogs(ScreenFixture& fixture, int count) {
  for (int i = 0; i < count; ++i) {
    const auto medicine = *rc::gen::inRange(0, 10) == 0 ? nullptr : anyOf<Medicine>(fixture);
    const auto log = DoseLog::make(anyTime(fixture.clock.now()), std::nullopt, DoseStatus::pending, 0, "", medicine);
    log->statusRaw = anyStatus();
    fixture.context().insert(log);
  }
}

void addMedicines(ScreenFixture& fixture, int count) {
  for (int i = 0; i < count; ++i) fixture.add(medicineNamed("Medicine", daily({{8, 0}})));
}

/// One thing that a person, a marking or another program may do.
void change(ScreenFixture& fixture, ReminderHistoryView& view) {
  const auto log = anyOf<DoseLog>(fixture);
  const auto medicine = anyOf<Medicine>(fixture);
  switch (*rc::gen::inRange(0, 9)) {
    case 0:
      return addLogs(fixture, 5);
    case 1:
      if (log) log->statusRaw = anyStatus();
      return;
    case 2:
      if (log) log->scheduledTime = anyTime(fixture.clock.now());
      return;
    case 3:
      if (log && log->medicine()) log->medicine()->removeDoseLog(log);
      return;
    case 4:
      if (log && medicine) medicine->appendDoseLog(log);
      return;
    case 5:
      if (log) fixture.context().delete_(log);
      return;
    case 6:
      if (medicine && *rc::gen::inRange(0, 3) == 0) fixture.context().delete_(medicine);
      return;
    case 7:
      return fixture.clock.advance(*rc::gen::inRange(1, 200) * 10min);
    default:
      if (log) RC_ASSERT(view.onStatusChange(log->id(), *rc::gen::element(DoseStatus::taken, DoseStatus::skipped)));
  }
}

void compare(ScreenFixture& fixture, ReminderHistoryView& view) {
  view.selectedTimeRange = *rc::gen::elementOf(kAllTimeRanges);
  view.selectedFilter = *rc::gen::elementOf(kAllHistoryFilters);
  view.rowLimit = *rc::gen::element<size_t>(1, 3, 10, 1000);
  RC_ASSERT(shownBy(view.content()) ==
            plainHistory(fixture, view.selectedTimeRange, view.selectedFilter, view.rowLimit));
  RC_ASSERT(!fixture.context().takeReadError());
}

RC_GTEST_PROP(ReminderHistory, isThatOfThePlainWayAfterEveryChange, ()) {
  const Setting setting = kSettings[*rc::gen::inRange<size_t>(0, std::size(kSettings))];
  ScreenFixture fixture(at(setting.now), {.zone = setting.zone, .locale = setting.locale});
  addMedicines(fixture, *rc::gen::inRange(0, 4));
  addLogs(fixture, *rc::gen::inRange(0, 60));
  ReminderHistoryView view(fixture.environment());
  for (int step = *rc::gen::inRange(1, 15); step > 0; --step) {
    compare(fixture, view);
    change(fixture, view);
    if (*rc::gen::arbitrary<bool>()) fixture.endTurn();
  }
  compare(fixture, view);
}

RC_GTEST_PROP(ReminderHistory, followsAnotherProgramOnTheSameStore, ()) {
  const Setting setting = kSettings[*rc::gen::inRange<size_t>(0, std::size(kSettings))];
  const TemporaryFolder folder;
  const ModelConfiguration configuration{.path = folder.file("Pillora.store"), .vfsName = failingVfs::name()};
  const Place place{.zone = setting.zone, .locale = setting.locale};
  ScreenFixture ours(at(setting.now), place, configuration);
  ScreenFixture theirs(at(setting.now), place, configuration);
  addMedicines(ours, 2);
  addLogs(ours, *rc::gen::inRange(0, 40));
  ours.endTurn();
  ReminderHistoryView ourView(ours.environment()), theirView(theirs.environment());
  for (int step = *rc::gen::inRange(1, 6); step > 0; --step) {
    const bool isOurs = *rc::gen::arbitrary<bool>();
    change(isOurs ? ours : theirs, isOurs ? ourView : theirView);
    ours.endTurn();
    theirs.endTurn();
    if (*rc::gen::arbitrary<bool>()) ours.context().refresh();
    compare(ours, ourView);
    compare(theirs, theirView);
  }
}

}  // namespace
}  // namespace pillora

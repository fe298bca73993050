// SPDX-License-Identifier: MIT
#include "lives/Inspection.h"

#include <algorithm>
#include <utility>

#include "support/Json.h"

namespace pillora {

namespace {

using Lines = Inspection::Lines;

std::string join(std::initializer_list<std::string_view> parts) {
  std::string line;
  for (const std::string_view part : parts) line.append(line.empty() ? "" : " ").append(part);
  return line;
}

std::string nameOf(const BookedLog* log) { return log->id ? log->id->text() : "unknown"; }

std::string figures(const DoseCounts& counts) {
  return join({std::to_string(counts.taken), std::to_string(counts.missed), std::to_string(counts.skipped)});
}

}  // namespace

void Inspection::expect(bool isTrue, std::string_view what) {
  if (!isTrue && fault_.empty()) fault_ = what;
}

void Inspection::expectEqual(std::string_view what, const Lines& expected, const Lines& actual) {
  if (expected == actual || !fault_.empty()) return;
  fault_ = std::string(what) + ":";
  const auto [e, a] = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
  const auto tell = [&](std::string_view whose, const Lines& lines, auto from) {
    fault_ += "\n  " + std::string(whose) + " (" + std::to_string(lines.size()) + ", from " +
              std::to_string(from - lines.begin()) + "):";
    for (int i = 0; i < 5 && from != lines.end(); ++i, ++from) fault_ += "\n    " + *from;
  };
  tell("must be", expected, e);
  tell("is", actual, a);
}

void Inspection::glance(TimeRange range, HistoryFilter filter) {
  today();
  history(range, filter, false);
  process_.center->getBadgeCount([&](int64_t badge) { expect(badge == ledger_.reminders.badge, "the badge"); });
  const auto next = ledger_.nextDeadline();
  expect(process_.center->nextDeadline() == next,
         "the next deadline; must be " + (next ? iso8601(*next) : std::string("absent")));
  expect(!process_.context().hasChanges(), "a turn ended without its changes being saved");
}

void Inspection::today() {
  const TodayContent shown = process_.today.content();
  if (ledger_.records.medicines.empty()) return expect(shown.empty.has_value(), "Today of an empty store");
  Lines expected, actual;
  for (const auto& [medicine, time] : ledger_.today(now())) {
    expected.push_back(join({medicine->id.text(), iso8601(time), medicine->values.name}));
  }
  for (const auto& card : shown.doses) actual.push_back(join({card.medicineId.text(), iso8601(card.time), card.name}));
  expectEqual("the cards of Today", expected, actual);

  const auto activity = ledger_.activity(now());
  DoseCounts counts;
  Lines logs, rows;
  for (const BookedLog* log : activity) {
    counts.add(log->status);
    logs.push_back(join({nameOf(log), rawValue(log->status), iso8601(log->scheduledTime)}));
  }
  for (const auto& row : shown.activity) rows.push_back(join({row.id.text(), row.status, iso8601(row.time)}));
  expectEqual("the activity of Today", logs, rows);

  expectEqual("the badges of Today",
              {std::to_string(counts.taken), std::to_string(expected.size()), std::to_string(counts.skipped)},
              {shown.badges.at(0).value, shown.badges.at(1).value, shown.badges.at(2).value});
  const int64_t due = ledger_.dueToday(now());
  const double progress = due == 0 ? 0 : static_cast<double>(counts.taken) / static_cast<double>(due);
  expect(shown.progress->value == progress, "the progress of Today");

  process_.history.selectedTimeRange = TimeRange::today;
  process_.history.selectedFilter = HistoryFilter::all;
  process_.history.rowLimit = 1;
  const HistoryContent history = process_.history.content();
  expectEqual("the figures of Today and of History",
              {shown.badges.at(0).value, shown.badges.at(2).value, std::to_string(shown.activity.size())},
              {std::to_string(history.stats.at(0).value), std::to_string(history.stats.at(2).value),
               std::to_string(counts.total)});
}

void Inspection::history(TimeRange range, HistoryFilter filter, bool withRows) {
  process_.history.selectedTimeRange = range;
  process_.history.selectedFilter = filter;
  process_.history.rowLimit = withRows ? 15 : 1;
  const HistoryContent shown = process_.history.content();
  const BookedHistory must = ledger_.history(range, filter, now());
  const std::string what = join({"of History,", rawValue(range), "of", rawValue(filter)});
  expectEqual("the figures " + what, {figures(must.counts)},
              {join({std::to_string(shown.stats.at(0).value), std::to_string(shown.stats.at(1).value),
                     std::to_string(shown.stats.at(2).value)})});
  const double rate =
      must.counts.total == 0 ? 0 : static_cast<double>(must.counts.taken) / static_cast<double>(must.counts.total);
  expect(shown.adherence.rate.value_or(0) == rate && shown.adherence.percent == static_cast<int64_t>(rate * 100),
         "the rate " + what);
  expect(shown.empty.has_value() == (must.counts.total == 0), "the empty state " + what);
  expect(shown.hasMore == (must.rows.size() > process_.history.rowLimit), "whether there is more " + what);
  if (!withRows) return;

  Lines rows, shownRows, days, shownDays;
  for (const BookedLog* log : must.rows) {
    if (rows.size() < process_.history.rowLimit) rows.push_back(join({nameOf(log), rawValue(log->status)}));
  }
  for (const auto& [day, counts] : must.days) {
    days.push_back(join({iso8601(day), std::to_string(counts.first) + "/" + std::to_string(counts.second)}));
  }
  for (const HistoryDay& day : shown.days) {
    shownDays.push_back(join({iso8601(day.day), day.count}));
    for (const HistoryLogRow& row : day.logs) shownRows.push_back(join({row.id.text(), row.status}));
  }
  if (shown.hasMore) days.resize(std::min(days.size(), shownDays.size()));
  expectEqual("the days " + what, days, shownDays);
  // Where clocks went back across midnight the logs of two days lie in turns, and are grouped all the same.
  std::sort(rows.begin(), rows.end());
  std::sort(shownRows.begin(), shownRows.end());
  expectEqual("the rows " + what, rows, shownRows);
}

void Inspection::upcoming() {
  Lines expected, actual;
  for (const auto& [medicine, time] : ledger_.upcoming(now())) {
    if (expected.size() < process_.upcoming.rowLimit) {
      expected.push_back(join({reminderName(medicine->id, time), iso8601(time), medicine->values.name}));
    }
  }
  for (const UpcomingDay& day : process_.upcoming.content().days) {
    for (const auto& card : day.doses) actual.push_back(join({card.id, iso8601(card.time), card.name}));
  }
  expectEqual("the doses of Upcoming", expected, actual);
}

void Inspection::medicines() {
  process_.list.searchText.clear();
  const MedicineListContent shown = process_.list.content();
  Lines expected, actual;
  std::vector<const BookedMedicine*> sorted;
  for (const BookedMedicine& each : ledger_.records.medicines) sorted.push_back(&each);
  std::stable_sort(sorted.begin(), sorted.end(), [&](const auto* a, const auto* b) {
    return world_.texts.compareNames(a->values.name, b->values.name) < 0;
  });
  for (const bool isActive : {true, false}) {
    for (const auto* each : sorted) {
      if (each->values.isActive == isActive)
        expected.push_back(join({isActive ? "active" : "inactive", each->id.text()}));
    }
  }
  for (const MedicineSection& section : shown.sections) {
    for (const MedicineRowView& row : section.rows) {
      actual.push_back(join({section.id, row.id.text()}));
      if (const auto* medicine = ledger_.medicine(row.id)) details(*medicine, row);
    }
  }
  expectEqual("the rows of Medicines", expected, actual);
}

void Inspection::details(const BookedMedicine& medicine, const MedicineRowView& row) {
  const auto next = ledger_.nextDose(medicine, now());
  const MedicineDetailContent shown = MedicineDetailView(process_.environment(), medicine.id).content();
  expect(row.name == medicine.values.name, "the name in Medicines of " + medicine.values.name);
  expect(row.nextDose == next && shown.nextDose == next, "the next dose of " + medicine.values.name);
  Lines expected, actual;
  auto logs = std::vector<const BookedLog*>();
  for (const BookedLog& log : medicine.logs) logs.push_back(&log);
  std::stable_sort(logs.begin(), logs.end(),
                   [](const auto* a, const auto* b) { return a->scheduledTime > b->scheduledTime; });
  for (const BookedLog* log : logs) {
    if (expected.size() < 5) expected.push_back(join({nameOf(log), rawValue(log->status)}));
  }
  for (const DoseRow& dose : shown.recentHistory) actual.push_back(join({dose.id, dose.status}));
  expectEqual("the recent history of " + medicine.values.name, expected, actual);
}

void Inspection::settings() {
  const SettingsContent shown = process_.settings.content();
  const auto* count = rowNamed<ValueRow>(shown.sections, "medicines");
  expect(count != nullptr && count->text == std::to_string(ledger_.records.medicines.size()),
         "the number of medicines in Settings");
  expect((rowNamed<ValueRow>(shown.sections, "lastBackup") != nullptr) == ledger_.records.lastBackupDate.has_value(),
         "the last backup in Settings");
  const auto* clock = rowNamed<ToggleRow>(shown.sections, "use24HourTime");
  expect(clock != nullptr && clock->isOn == ledger_.records.settings->use24HourTime, "the clock in Settings");
  expect(!shown.unsaved.has_value(), "Settings tells of unsaved changes");
}

void Inspection::screens() {
  today();
  upcoming();
  medicines();
  settings();
  for (const TimeRange range : kAllTimeRanges) history(range, HistoryFilter::all, true);
  for (const HistoryFilter filter : kAllHistoryFilters) history(TimeRange::month, filter, true);
}

std::map<std::string, std::string> screensOf(Process& process) {
  process.list.searchText.clear();
  process.history.selectedTimeRange = TimeRange::all;
  process.history.selectedFilter = HistoryFilter::all;
  process.history.rowLimit = 30;
  return {{"Today", toJson(process.today.content()).dump()},
          {"Upcoming", toJson(process.upcoming.content()).dump()},
          {"Medicines", toJson(process.list.content()).dump()},
          {"History", toJson(process.history.content()).dump()},
          {"Settings", toJson(process.settings.content()).dump()}};
}

}  // namespace pillora

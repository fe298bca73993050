// SPDX-License-Identifier: MIT
#include "lives/Ledger.h"

#include <algorithm>
#include <chrono>

namespace pillora {

namespace {

using namespace std::chrono_literals;

bool isActedOn(DoseStatus status) { return status == DoseStatus::taken || status == DoseStatus::skipped; }

auto firstLogFrom(const std::vector<BookedLog>& logs, Instant from) {
  return std::lower_bound(logs.begin(), logs.end(), from,
                          [](const BookedLog& log, Instant time) { return log.scheduledTime < time; });
}

bool passes(HistoryFilter filter, DoseStatus status) {
  switch (filter) {
    case HistoryFilter::all:
      return true;
    case HistoryFilter::taken:
      return status == DoseStatus::taken;
    case HistoryFilter::missed:
      return status == DoseStatus::missed;
    case HistoryFilter::skipped:
      return status == DoseStatus::skipped;
  }
  return false;
}

}  // namespace

BookedMedicine* Ledger::medicine(const UUID& id) {
  const auto found = std::find_if(records.medicines.begin(), records.medicines.end(),
                                  [&](const BookedMedicine& each) { return each.id == id; });
  return found == records.medicines.end() ? nullptr : &*found;
}

BookedLog* Ledger::log(const UUID& id) {
  for (BookedMedicine& medicine : records.medicines) {
    // The latest first, which is what people act on.
    const auto found = std::find_if(medicine.logs.rbegin(), medicine.logs.rend(),
                                    [&](const BookedLog& each) { return each.id == id; });
    if (found != medicine.logs.rend()) return &*found;
  }
  return nullptr;
}

std::optional<Instant> Ledger::nextDose(const BookedMedicine& medicine, Instant after) const {
  return medicine.values.isActive ? medicine.values.interval.nextOccurrence(after, *calendar_) : std::nullopt;
}

bool Ledger::hasLog(const BookedMedicine& medicine, Instant time, bool onlyActedOn) const {
  for (auto log = firstLogFrom(medicine.logs, time - 2min); log != medicine.logs.end(); ++log) {
    if (log->scheduledTime > time + 2min) return false;
    if (onlyActedOn && !isActedOn(log->status)) continue;
    if (calendar_->startOfMinute(log->scheduledTime) == calendar_->startOfMinute(time)) return true;
  }
  return false;
}

bool Ledger::isDone(const BookedMedicine& medicine, Instant time) const { return hasLog(medicine, time, true); }

std::optional<Instant> Ledger::firstToday(const BookedMedicine& medicine, Instant now) const {
  const Instant today = calendar_->startOfDay(now);
  const auto time = nextDose(medicine, calendar_->adding(CalendarUnit::minute, -1, today).value_or(today));
  return time && calendar_->startOfDay(*time) == today ? time : std::nullopt;
}

std::vector<std::pair<const BookedMedicine*, Instant>> Ledger::today(Instant now) const {
  std::vector<std::pair<const BookedMedicine*, Instant>> entries;
  for (const BookedMedicine& each : records.medicines) {
    const auto time = firstToday(each, now);
    if (time && !isDone(each, *time)) entries.emplace_back(&each, *time);
  }
  std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return entries;
}

int64_t Ledger::dueToday(Instant now) const {
  return std::count_if(records.medicines.begin(), records.medicines.end(),
                       [&](const BookedMedicine& each) { return firstToday(each, now).has_value(); });
}

std::vector<std::pair<const BookedMedicine*, Instant>> Ledger::upcoming(Instant now) const {
  const auto horizon = calendar_->adding(CalendarUnit::day, 7, now);
  std::vector<std::pair<const BookedMedicine*, Instant>> entries;
  for (const BookedMedicine& each : records.medicines) {
    Instant cursor = *calendar_->adding(CalendarUnit::minute, -1, now);
    for (auto time = nextDose(each, cursor); time && *time > cursor && *time <= *horizon;
         time = nextDose(each, cursor)) {
      if (!isDone(each, *time)) entries.emplace_back(&each, *time);
      cursor = *time;
    }
  }
  std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return entries;
}

std::vector<const BookedLog*> Ledger::activity(Instant now) const {
  std::vector<const BookedLog*> logs;
  for (const BookedMedicine& each : records.medicines) {
    for (auto log = firstLogFrom(each.logs, calendar_->startOfDay(now)); log != each.logs.end(); ++log) {
      logs.push_back(&*log);
    }
  }
  std::stable_sort(logs.begin(), logs.end(),
                   [](const auto* a, const auto* b) { return a->scheduledTime < b->scheduledTime; });
  return logs;
}

BookedHistory Ledger::history(TimeRange range, HistoryFilter filter, Instant now) const {
  Instant start = Instant::distantPast();
  if (range == TimeRange::today) start = calendar_->startOfDay(now);
  if (range == TimeRange::week) start = *calendar_->adding(CalendarUnit::day, -7, now);
  if (range == TimeRange::month) start = *calendar_->adding(CalendarUnit::day, -30, now);
  BookedHistory history;
  for (const BookedMedicine& each : records.medicines) {
    for (auto log = firstLogFrom(each.logs, start); log != each.logs.end(); ++log) {
      if (!passes(filter, log->status)) continue;
      history.counts.taken += log->status == DoseStatus::taken ? 1 : 0;
      history.counts.missed += log->status == DoseStatus::missed ? 1 : 0;
      history.counts.skipped += log->status == DoseStatus::skipped ? 1 : 0;
      ++history.counts.total;
      history.rows.push_back(&*log);
      auto& [taken, all] = history.days[calendar_->startOfDay(log->scheduledTime)];
      taken += log->status == DoseStatus::taken ? 1 : 0;
      ++all;
    }
  }
  std::stable_sort(history.rows.begin(), history.rows.end(),
                   [](const auto* a, const auto* b) { return a->scheduledTime > b->scheduledTime; });
  return history;
}

BookedMedicine& Ledger::add(const UUID& id, NewMedicine values, Instant now) {
  return records.medicines.emplace_back(BookedMedicine{id, std::move(values), now, now, {}});
}

void Ledger::remove(const UUID& medicine) {
  std::erase_if(records.medicines, [&](const BookedMedicine& each) { return each.id == medicine; });
}

void Ledger::book(BookedMedicine& medicine, std::optional<UUID> id, Instant scheduled, Instant action,
                  DoseStatus status) {
  const auto place = std::upper_bound(medicine.logs.begin(), medicine.logs.end(), scheduled,
                                      [](Instant time, const BookedLog& log) { return time < log.scheduledTime; });
  medicine.logs.insert(place, {id, scheduled, action, status, records.nextSerial++});
}

void Ledger::undo(const UUID& log) {
  for (BookedMedicine& medicine : records.medicines) {
    std::erase_if(medicine.logs, [&](const BookedLog& each) { return each.id == log; });
  }
}

void Ledger::mark(Instant now) {
  const Instant today = calendar_->startOfDay(now);
  for (BookedMedicine& each : records.medicines) {
    if (!each.values.isActive) continue;
    const Instant weekAgo = calendar_->adding(CalendarUnit::day, -7, today).value_or(today);
    Instant day = std::max(weekAgo, calendar_->startOfDay(each.values.startDate));
    while (day < today) {
      const Instant nextDay = calendar_->adding(CalendarUnit::day, 1, day).value_or(day);
      if (nextDay <= day) break;
      markDay(each, day, nextDay, today);
      day = nextDay;
    }
  }
}

void Ledger::markDay(BookedMedicine& medicine, Instant day, Instant nextDay, Instant today) {
  Instant after = day;
  for (auto time = nextDose(medicine, after); time && *time > after && *time < nextDay;
       time = nextDose(medicine, after)) {
    if (!hasLog(medicine, *time, false)) book(medicine, std::nullopt, *time, today, DoseStatus::missed);
    after = *time;
  }
}

}  // namespace pillora

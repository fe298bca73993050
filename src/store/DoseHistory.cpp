// SPDX-License-Identifier: MIT
#include "store/DoseHistory.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>

#include "store/ModelContext.h"
#include "store/Table.h"

namespace pillora {

namespace {

/// The instants that share a row of DoseCount agree but for these bits.
constexpr int64_t kWithinSpan = (int64_t{1} << 38) - 1;

/// Two days and the hour that clocks go back: where the date line moved, a day came twice.
constexpr std::chrono::hours kLongestDay(49);

/// In the order of a history, latest first. The plus keeps SQLite on its index of times, which ends at the limit.
std::string withinHistory(const std::string& select, const DoseHistoryQuery& query) {
  return select + " WHERE scheduledTime BETWEEN ? AND ? AND +medicine IS NOT NULL" +
         (query.status ? " AND statusRaw = '" + std::string(rawValue(*query.status)) + "'" : "") +
         " ORDER BY scheduledTime DESC, (SELECT Medicine.rowid FROM Medicine WHERE Medicine.id = DoseLog.medicine),"
         " rowid LIMIT ? OFFSET ?";
}

void bindWindow(SQLite::Statement& rows, Instant from, Instant to, int64_t limit, int64_t offset) {
  rows.bind(1, from.microseconds());
  rows.bind(2, to.microseconds());
  rows.bind(3, limit);
  rows.bind(4, offset);
}

std::string countedIf(DoseStatus status) {
  return "sum(doses) FILTER (WHERE statusRaw = '" + std::string(rawValue(status)) + "')";
}

}  // namespace

void DoseCounts::add(DoseStatus status) {
  ++total;
  if (status == DoseStatus::taken) ++taken;
  if (status == DoseStatus::missed) ++missed;
  if (status == DoseStatus::skipped) ++skipped;
}

/// Whole spans from their counts, and the logs of the span that the window begins in one by one.
DoseCounts ModelContext::doseCounts(const DoseHistoryQuery& query) {
  static const std::string kSql =
      "SELECT " + countedIf(DoseStatus::taken) + ", " + countedIf(DoseStatus::missed) + ", " +
      countedIf(DoseStatus::skipped) +
      ", sum(doses) FROM ("
      "SELECT statusRaw, doses FROM DoseCount WHERE span > (?1 >> 38)"
      " UNION ALL SELECT statusRaw, 1 FROM DoseLog WHERE scheduledTime BETWEEN ?1 AND ?2 AND +medicine IS NOT NULL)";
  const int64_t from = query.from.microseconds();
  const Prepared sums = prepared(kSql);
  sums->bind(1, from);
  sums->bind(2, from | kWithinSpan);
  sums->executeStep();
  const auto sum = [&](int column) { return sums->getColumn(column).getInt64(); };
  const DoseCounts all{sum(0), sum(1), sum(2), sum(3)};
  if (!query.status) return all;
  if (*query.status == DoseStatus::taken) return {all.taken, 0, 0, all.taken};
  if (*query.status == DoseStatus::missed) return {0, all.missed, 0, all.missed};
  return {0, 0, all.skipped, all.skipped};
}

/// The records of `history`, and whether there are more, which the one behind the limit tells. With the last of all
/// that match found, the search for more need not go back to the beginning.
void ModelContext::readLatestLogs(DoseHistory& history, const DoseHistoryQuery& query) {
  const Table& table = Table::of<DoseLog>();
  const auto count = static_cast<size_t>(history.counts.total);
  const size_t limit = std::min(query.limit, count);
  const Prepared rows = prepared(withinHistory(table.select(), query));
  bindWindow(*rows, query.from, query.until, static_cast<int64_t>(limit < count ? limit + 1 : limit), 0);
  while (rows->executeStep()) history.latest.push_back(std::static_pointer_cast<DoseLog>(recordOf(table, *rows)));
  history.hasMore = history.latest.size() > limit;
  if (history.hasMore) history.latest.pop_back();
}

/// Adds the doses of a time to the rest of the history.
void ModelContext::readRest(DoseHistory& history, const DoseHistoryQuery& query, Instant from, Instant to,
                            int64_t offset) {
  const Prepared rows = prepared(withinHistory("SELECT scheduledTime, statusRaw FROM DoseLog", query));
  bindWindow(*rows, from, to, -1, offset);
  while (rows->executeStep()) {
    history.rest.push_back(
        {Instant(Instant::Duration(rows->getColumn(0).getInt64())), doseStatus(rows->getColumn(1).getString())});
  }
}

/// Deliberate: looks at the day of each log in `latest`. Where clocks go back across midnight, the last of them need
/// not lie on the earliest day.
void ModelContext::readDosesBehind(DoseHistory& history, const DoseHistoryQuery& query) {
  if (history.latest.empty() || !history.hasMore) return;
  const Instant last = history.latest.back()->scheduledTime();
  Instant earliestDay = last;
  int64_t asLate = 0;
  for (const auto& log : history.latest) {
    earliestDay = std::min(earliestDay, query.startOfDay(log->scheduledTime()));
    if (log->scheduledTime() == last) ++asLate;
  }
  readRest(history, query, std::max(query.from, earliestDay), last, asLate);
}

void ModelContext::readDosesBefore(DoseHistory& history, const DoseHistoryQuery& query) {
  if (history.latest.empty() || query.until == Instant::distantFuture()) return;
  const Instant first = history.latest.front()->scheduledTime();
  const auto begin = checkedAdd(first, 1, Instant::Duration(1)), end = checkedAdd(first, 1, kLongestDay);
  if (begin && end) readRest(history, query, *begin, *end, 0);
}

}  // namespace pillora

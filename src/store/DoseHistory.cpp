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

/// `count` is how many match: with the last of them found, the search for more need not go back to the beginning.
std::vector<std::shared_ptr<DoseLog>> ModelContext::latestLogs(const DoseHistoryQuery& query, int64_t count) {
  const Table& table = Table::of<DoseLog>();
  const auto limit = static_cast<int64_t>(std::min(query.limit, static_cast<size_t>(count)));
  const Prepared rows = prepared(withinHistory(table.select(), query));
  bindWindow(*rows, query.from, Instant::distantFuture(), limit, 0);
  std::vector<std::shared_ptr<DoseLog>> logs;
  while (rows->executeStep()) logs.push_back(std::static_pointer_cast<DoseLog>(recordOf(table, *rows)));
  return logs;
}

/// Deliberate: looks at the day of each log in `latest`. Where clocks go back across midnight, the last of them need
/// not lie on the earliest day.
std::vector<DoseHistory::Dose> ModelContext::dosesBehind(const std::vector<std::shared_ptr<DoseLog>>& latest,
                                                         const DoseHistoryQuery& query) {
  std::vector<DoseHistory::Dose> doses;
  if (latest.empty() || latest.size() < query.limit) return doses;
  const Instant last = latest.back()->scheduledTime();
  Instant earliestDay = last;
  int64_t asLate = 0;
  for (const auto& log : latest) {
    earliestDay = std::min(earliestDay, query.startOfDay(log->scheduledTime()));
    if (log->scheduledTime() == last) ++asLate;
  }
  const Prepared rows = prepared(withinHistory("SELECT scheduledTime, statusRaw FROM DoseLog", query));
  bindWindow(*rows, std::max(query.from, earliestDay), last, -1, asLate);
  while (rows->executeStep()) {
    doses.push_back(
        {Instant(Instant::Duration(rows->getColumn(0).getInt64())), doseStatus(rows->getColumn(1).getString())});
  }
  return doses;
}

}  // namespace pillora

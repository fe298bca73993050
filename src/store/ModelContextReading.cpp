// SPDX-License-Identifier: MIT
#include <SQLiteCpp/SQLiteCpp.h>
#include <SQLiteCpp/Savepoint.h>

#include "store/ModelContext.h"
#include "store/Table.h"

// How records come out of the file. Every read first writes what is pending into the turn's transaction.

namespace pillora {

namespace {

std::string_view operatorOf(Comparison comparison) {
  switch (comparison) {
    case Comparison::equal:
      return " IS ?";  // two absent values are equal
    case Comparison::atLeast:
      return " >= ?";
    case Comparison::lessThan:
      return " < ?";
  }
  return {};
}

/// The descriptor's part of a statement, from WHERE on.
template <typename T>
std::string clausesOf(const FetchDescriptor<T>& descriptor) {
  std::string sql;
  for (const auto& condition : descriptor.conditions) {
    sql += sql.empty() ? " WHERE " : " AND ";
    sql.append(condition.column).append(operatorOf(condition.comparison));
  }
  sql += " ORDER BY ";
  if (descriptor.sort) {
    sql.append(descriptor.sort->column).append(descriptor.sort->order == SortOrder::descending ? " DESC, " : ", ");
  }
  // The plus keeps SQLite from walking the whole table in row order where an index finds the few rows wanted.
  sql += descriptor.conditions.empty() ? "rowid" : "+rowid";
  if (descriptor.limit) sql += " LIMIT ?";
  return sql;
}

template <typename T>
void bindAll(const FetchDescriptor<T>& descriptor, SQLite::Statement& statement) {
  int index = 1;
  for (const auto& condition : descriptor.conditions) bindValue(statement, index++, condition.value);
  if (descriptor.limit) statement.bind(index, *descriptor.limit);
}

}  // namespace

template <typename Work>
auto ModelContext::reading(Work work) -> Result<decltype(work())> {
  const auto fail = [&](Error error) {
    readError_ = error;
    return error;
  };
  if (auto written = writeChanges(); !written) return fail(written.error());
  try {
    return work();
  } catch (const SQLite::Exception& failure) {
    noteRollBack();
    return fail({failure.what()});
  }
}

template <typename T>
Result<std::vector<std::shared_ptr<T>>> ModelContext::fetch(const FetchDescriptor<T>& descriptor) {
  return reading([&] {
    const Table& table = Table::of<T>();
    const Prepared rows = prepared(table.select() + clausesOf(descriptor));
    bindAll(descriptor, *rows);
    std::vector<std::shared_ptr<T>> records;
    while (rows->executeStep()) records.push_back(std::static_pointer_cast<T>(recordOf(table, *rows)));
    return records;
  });
}

template <typename T>
Result<int64_t> ModelContext::fetchCount(const FetchDescriptor<T>& descriptor) {
  return reading([&] {
    const Table& table = Table::of<T>();
    const Prepared count =
        prepared("SELECT count(*) FROM (SELECT 1 FROM " + std::string(table.name()) + clausesOf(descriptor) + ")");
    bindAll(descriptor, *count);
    count->executeStep();
    return count->getColumn(0).getInt64();
  });
}

template <typename T>
std::shared_ptr<T> ModelContext::find(const UUID& id) {
  const Table& table = Table::of<T>();
  if (auto held = known(table, id)) return std::static_pointer_cast<T>(held);
  auto found = reading([&]() -> std::shared_ptr<T> {
    const Prepared row = prepared(table.selectById());
    bindValue(*row, 1, id);
    return row->executeStep() ? std::static_pointer_cast<T>(recordOf(table, *row)) : nullptr;
  });
  return found ? *std::move(found) : nullptr;
}

Result<DoseHistory> ModelContext::doseHistory(const DoseHistoryQuery& query) {
  return reading([&] {
    SQLite::Savepoint moment(*database_, "history");
    DoseHistory history;
    history.counts = doseCounts(query);
    readLatestLogs(history, query);
    readDosesBehind(history, query);
    readDosesBefore(history, query);
    moment.release();
    return history;
  });
}

template <typename T>
const std::vector<std::shared_ptr<T>>& LiveQuery<T>::records() const {
  if (asOf_ != context_->changeCount()) {
    if (auto found = context_->fetch(descriptor_)) {
      records_ = *std::move(found);
      asOf_ = context_->changeCount();
    }
  }
  return records_;
}

std::shared_ptr<Medicine> ModelContext::medicineWithId(const UUID& id) { return find<Medicine>(id); }

std::vector<std::shared_ptr<DoseLog>> ModelContext::doseLogs(const UUID& medicine, Instant from, Instant to) {
  static const std::string kSql =
      Table::of<DoseLog>().select() + " WHERE medicine = ? AND scheduledTime >= ? AND scheduledTime < ? ORDER BY rowid";
  auto logs = reading([&] {
    const Prepared rows = prepared(kSql);
    bindValue(*rows, 1, medicine);
    rows->bind(2, from.microseconds());
    rows->bind(3, to.microseconds());
    std::vector<std::shared_ptr<DoseLog>> found;
    const Table& table = Table::of<DoseLog>();
    while (rows->executeStep()) found.push_back(std::static_pointer_cast<DoseLog>(recordOf(table, *rows)));
    return found;
  });
  return logs ? *std::move(logs) : std::vector<std::shared_ptr<DoseLog>>();
}

std::vector<Instant> ModelContext::actedOnTimes(const UUID& medicine, Instant from, Instant to) {
  static const std::string kSql =
      "SELECT scheduledTime FROM DoseLog WHERE medicine = ? AND scheduledTime >= ? AND scheduledTime < ? AND " +
      isActedOn() + " ORDER BY scheduledTime";
  return times(kSql, medicine, from, to);
}

std::vector<Instant> ModelContext::loggedTimes(const UUID& medicine, Instant from, Instant to) {
  static const std::string kSql =
      "SELECT scheduledTime FROM DoseLog WHERE medicine = ? AND scheduledTime >= ? AND scheduledTime < ?"
      " ORDER BY scheduledTime";
  return times(kSql, medicine, from, to);
}

std::vector<Instant> ModelContext::times(const std::string& sql, const UUID& medicine, Instant from, Instant to) {
  auto times = reading([&] {
    const Prepared rows = prepared(sql);
    bindValue(*rows, 1, medicine);
    rows->bind(2, from.microseconds());
    rows->bind(3, to.microseconds());
    std::vector<Instant> found;
    while (rows->executeStep()) found.emplace_back(Instant::Duration(rows->getColumn(0).getInt64()));
    return found;
  });
  return times ? *std::move(times) : std::vector<Instant>();
}

ModelContext::Prepared ModelContext::prepared(const std::string& sql) {
  auto& statement = statements_[sql];
  if (!statement) statement = std::make_unique<SQLite::Statement>(*database_, sql);
  return {statement.get(), [](SQLite::Statement* used) { used->tryReset(); }};
}

std::shared_ptr<Record> ModelContext::recordOf(const Table& table, SQLite::Statement& row) {
  const UUID id = readId(row, 0);
  if (auto held = known(table, id)) {
    const Change* change = changeOf(*held);
    table.load(*held, row, change == nullptr ? 0 : change->columns);
    return held;
  }
  auto record = table.makeRecord();
  table.load(*record, row, 0);
  remember(table, id, record);
  return record;
}

template Result<std::vector<std::shared_ptr<Medicine>>> ModelContext::fetch(const FetchDescriptor<Medicine>&);
template Result<std::vector<std::shared_ptr<DoseLog>>> ModelContext::fetch(const FetchDescriptor<DoseLog>&);
template Result<std::vector<std::shared_ptr<AppSettings>>> ModelContext::fetch(const FetchDescriptor<AppSettings>&);
template Result<int64_t> ModelContext::fetchCount(const FetchDescriptor<Medicine>&);
template Result<int64_t> ModelContext::fetchCount(const FetchDescriptor<DoseLog>&);
template Result<int64_t> ModelContext::fetchCount(const FetchDescriptor<AppSettings>&);
template std::shared_ptr<Medicine> ModelContext::find(const UUID&);
template std::shared_ptr<DoseLog> ModelContext::find(const UUID&);
template std::shared_ptr<AppSettings> ModelContext::find(const UUID&);
template class LiveQuery<Medicine>;
template class LiveQuery<DoseLog>;
template class LiveQuery<AppSettings>;

}  // namespace pillora

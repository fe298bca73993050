// SPDX-License-Identifier: MIT
#include "store/ModelContext.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <cassert>

#include "store/Table.h"

namespace pillora {

ModelContext::ModelContext(std::unique_ptr<SQLite::Database> database, MainExecutor& executor, const Clock* clock)
    : database_(std::move(database)), executor_(&executor), clock_(clock), alive_(std::make_shared<int>()) {
  static_assert(std::tuple_size_v<decltype(known_)> == Table::kCount);
  dataVersion_ = dataVersion();
}

ModelContext::~ModelContext() {
  for (const Known& known : known_) {
    for (const auto& [id, held] : known.records) {
      if (const auto record = held.lock()) record->host_ = nullptr;
    }
  }
}

void ModelContext::insert(const std::shared_ptr<Medicine>& record) {
  if (!record || record->host_ != nullptr) return;
  const auto logs = record->doseLogs();
  insertRecord(record);
  for (const auto& log : logs) insertRecord(log);
  changed();
}

void ModelContext::insert(const std::shared_ptr<DoseLog>& record) {
  if (!record || record->host_ != nullptr) return;
  if (const auto medicine = record->medicine()) insert(medicine);
  insertRecord(record);
  changed();
}

void ModelContext::insert(const std::shared_ptr<AppSettings>& record) {
  if (!record || record->host_ != nullptr) return;
  insertRecord(record);
  changed();
}

void ModelContext::delete_(const std::shared_ptr<Medicine>& record) {
  if (!record || record->host_ != this) return;
  for (const auto& log : knownLogsOf(record->id())) {
    // The file deletes the logs that it knows to be this medicine's; one with a pending change may be another's there.
    if (changeOf(*log) != nullptr) {
      deleteRecord(log);
    } else {
      markDeleted(*log);
    }
  }
  deleteRecord(record);
  changed();
}

void ModelContext::delete_(const std::shared_ptr<DoseLog>& record) {
  if (!record || record->host_ != this) return;
  deleteRecord(record);
  changed();
}

void ModelContext::delete_(const std::shared_ptr<AppSettings>& record) {
  if (!record || record->host_ != this) return;
  deleteRecord(record);
  changed();
}

std::shared_ptr<void> ModelContext::observe(std::function<void()> observer) {
  auto handle = std::make_shared<std::function<void()>>(std::move(observer));
  observers_.push_back(handle);
  return handle;
}

std::optional<Error> ModelContext::takeReadError() { return std::exchange(readError_, std::nullopt); }

void ModelContext::fieldChanged(Record& record, const void* field) {
  const Table& table = Table::of(record);
  const Columns column = table.columnOf(record, field);
  assert(column != 1);  // the identity of a stored record is fixed
  const auto held = known(table, table.id(record));
  if (!held) return;
  addChange(held, Change::Kind::update, column);
  changed();
}

std::shared_ptr<Record> ModelContext::known(const Table& table, const UUID& id) const {
  const auto& records = known_[table.index()].records;
  const auto found = records.find(id);
  return found == records.end() ? nullptr : found->second.lock();
}

std::vector<std::shared_ptr<DoseLog>> ModelContext::knownLogsOf(const UUID& medicine) const {
  std::vector<std::shared_ptr<DoseLog>> logs;
  for (const auto& [id, held] : known_[Table::of<DoseLog>().index()].records) {
    auto log = std::static_pointer_cast<DoseLog>(held.lock());
    if (log && log->medicineId() == medicine) logs.push_back(std::move(log));
  }
  return logs;
}

void ModelContext::remember(const Table& table, const UUID& id, const std::shared_ptr<Record>& record) {
  Known& known = known_[table.index()];
  if (known.records.size() >= known.tidyAt) {
    std::erase_if(known.records, [](const auto& each) { return each.second.expired(); });
    known.tidyAt = std::max<size_t>(1024, 2 * known.records.size());
  }
  known.records[id] = record;
  record->host_ = this;
}

void ModelContext::insertRecord(const std::shared_ptr<Record>& record) {
  if (record->host_ != nullptr || record->isDeleted()) return;
  const Table& table = Table::of(*record);
  const UUID id = table.id(*record);
  if (known(table, id)) return;
  remember(table, id, record);
  addChange(record, Change::Kind::insert, kAllColumns);
}

void ModelContext::deleteRecord(const std::shared_ptr<Record>& record) {
  const Change* change = changeOf(*record);
  if (change != nullptr && change->kind == Change::Kind::insert && !change->wasWritten) {
    dropChange(*record);
  } else {
    addChange(record, Change::Kind::delete_, 0);
  }
  markDeleted(*record);
}

void ModelContext::markDeleted(Record& record) {
  const Table& table = Table::of(record);
  known_[table.index()].records.erase(table.id(record));
  record.host_ = nullptr;
  record.isDeleted_ = true;
}

}  // namespace pillora

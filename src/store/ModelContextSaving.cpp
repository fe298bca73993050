// SPDX-License-Identifier: MIT
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include "store/ModelContext.h"
#include "store/Table.h"

// How changes reach the file: collected, written into the turn's transaction, committed at its end.

namespace pillora {

namespace {

/// Changes are written in three passes: what logs refer to comes before them, and a medicine goes after the logs that
/// were moved out of it.
enum class Pass { medicines, others, goneMedicines };

}  // namespace

bool ModelContext::hasChanges() const { return !changes_.empty(); }

const ModelContext::Change* ModelContext::changeOf(const Record& record) const {
  const auto found = changeByRecord_.find(&record);
  return found == changeByRecord_.end() ? nullptr : &changes_.at(found->second);
}

void ModelContext::addChange(const std::shared_ptr<Record>& record, Change::Kind kind, uint32_t columns) {
  const auto [place, isNew] = changeByRecord_.try_emplace(record.get(), nextChange_);
  if (isNew) {
    changes_.emplace(nextChange_++, Change{record, kind, columns});
  } else {
    Change& change = changes_.at(place->second);
    if (kind == Change::Kind::delete_) change.kind = kind;
    change.columns |= columns;
  }
  unwritten_.insert(place->second);
}

void ModelContext::dropChange(const Record& record) {
  const auto found = changeByRecord_.find(&record);
  if (found == changeByRecord_.end()) return;
  unwritten_.erase(found->second);
  const auto change = changes_.find(found->second);
  changeByRecord_.erase(found);
  changes_.erase(change);
}

void ModelContext::changed() {
  ++changeCount_;
  endTurnLater();
  // A file that cannot be locked now is tried again by the next fetch and by the save.
  static_cast<void>(begin());
}

void ModelContext::endTurnLater() {
  if (isTurnEndPosted_) return;
  isTurnEndPosted_ = true;
  executor_->post([this, alive = std::weak_ptr<void>(alive_)] {
    if (!alive.expired()) endTurn();
  });
}

void ModelContext::endTurn() {
  // Deliberate: a failure says nothing here. What could not be saved stays pending, see hasChanges().
  static_cast<void>(save());
  isTurnEndPosted_ = false;
  if (observedCount_ == changeCount_) return;
  observedCount_ = changeCount_;
  std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
  for (const auto& observer : std::vector(observers_)) {
    if (const auto call = observer.lock()) (*call)();
  }
}

Result<void> ModelContext::beginWriting() {
  if (auto begun = begin(); !begun) return begun;
  return writeChanges();
}

Result<void> ModelContext::save() {
  const auto saved = commit();
  noteSave(saved);
  return saved;
}

void ModelContext::noteSave(const Result<void>& saved) {
  const bool hadFailed = saveFailure_.has_value();
  if (saved) {
    saveFailure_.reset();
  } else {
    const auto now = clock_ == nullptr ? std::nullopt : std::optional(clock_->now());
    saveFailure_ = SaveFailure{hadFailed ? saveFailure_->since : now, saved.error()};
  }
  if (hadFailed == saveFailure_.has_value()) return;
  ++changeCount_;
  endTurnLater();
}

Result<void> ModelContext::commit() {
  if (auto written = writeChanges(); !written) return written;
  if (!isInTransaction()) return {};
  try {
    database_->exec("COMMIT");
  } catch (const SQLite::Exception& failure) {
    rollBack();
    return Error{failure.what()};
  }
  changes_.clear();
  changeByRecord_.clear();
  return {};
}

void ModelContext::discardChanges() {
  rollBack();
  changes_.clear();
  changeByRecord_.clear();
  unwritten_.clear();
  saveFailure_.reset();
}

void ModelContext::refresh() {
  if (isInTransaction()) return;  // nobody else can have written since it began
  try {
    SQLite::Transaction view(*database_);  // all records as of one moment
    takeOverForeignChanges();
    view.commit();
  } catch (const SQLite::Exception& failure) {
    readError_ = Error{failure.what()};
  }
}

bool ModelContext::isInTransaction() const { return sqlite3_get_autocommit(database_->getHandle()) == 0; }

Result<void> ModelContext::begin() {
  if (isInTransaction()) return {};
  try {
    database_->exec("BEGIN IMMEDIATE");
    endTurnLater();
    takeOverForeignChanges();
    return {};
  } catch (const SQLite::Exception& failure) {
    rollBack();
    return Error{failure.what()};
  }
}

Result<void> ModelContext::writeChanges() {
  if (unwritten_.empty()) return {};
  if (auto begun = begin(); !begun) return begun;
  const auto passOf = [](const Change& change) {
    if (&Table::of(*change.record) != &Table::of<Medicine>()) return Pass::others;
    return change.kind == Change::Kind::delete_ ? Pass::goneMedicines : Pass::medicines;
  };
  try {
    for (const Pass pass : {Pass::medicines, Pass::others, Pass::goneMedicines}) {
      for (const uint64_t number : std::vector(unwritten_.begin(), unwritten_.end())) {
        const auto change = changes_.find(number);
        if (change == changes_.end() || passOf(change->second) != pass) continue;
        if (!write(change->second)) vanish(*std::shared_ptr(change->second.record));
      }
    }
    unwritten_.clear();
    return {};
  } catch (const SQLite::Exception& failure) {
    rollBack();
    return Error{failure.what()};
  }
}

/// Whether the record still has its place: an update needs its row, a log needs its medicine.
bool ModelContext::write(Change& change) {
  const Record& record = *change.record;
  const Table& table = Table::of(record);
  const UUID id = table.id(record);
  change.wasWritten = true;
  try {
    if (change.kind == Change::Kind::insert) {
      const Prepared upsert = prepared(table.upsert());
      table.bind(record, kAllColumns, *upsert, 1);
      return upsert->exec() > 0;
    }
    if (change.kind == Change::Kind::update) {
      const Prepared update = prepared(table.update(change.columns));
      bindValue(*update, table.bind(record, change.columns, *update, 1), id);
      return update->exec() > 0;
    }
  } catch (const SQLite::Exception& failure) {
    if (failure.getExtendedErrorCode() != SQLITE_CONSTRAINT_FOREIGNKEY) throw;
  }
  const Prepared erase = prepared(table.erase());
  bindValue(*erase, 1, id);
  erase->exec();
  if (&table == &Table::of<Medicine>()) {
    for (const auto& log : knownLogsOf(id)) vanish(*log);  // added after the medicine was deleted, gone with it
  }
  return change.kind == Change::Kind::delete_;
}

void ModelContext::vanish(Record& record) {
  markDeleted(record);
  dropChange(record);
  ++changeCount_;
  endTurnLater();
}

void ModelContext::rollBack() {
  if (isInTransaction()) database_->tryExec("ROLLBACK");
  noteRollBack();
}

/// A failure may have ended the transaction; then nothing of the turn is written any more.
void ModelContext::noteRollBack() {
  if (isInTransaction()) return;
  for (const auto& [number, change] : changes_) unwritten_.insert(unwritten_.end(), number);
}

int64_t ModelContext::dataVersion() {
  const Prepared version = prepared("PRAGMA data_version");
  version->executeStep();
  return version->getColumn(0).getInt64();
}

void ModelContext::takeOverForeignChanges() {
  const int64_t version = dataVersion();
  if (version == dataVersion_) return;
  for (const Table* table : Table::all()) readAgain(*table);
  giveWayToForeignDoses();
  dataVersion_ = version;
  ++changeCount_;
  endTurnLater();
}

/// A dose that was checked and recorded in a transaction that failed may have been recorded by another process before
/// ours is written again. It counts once.
void ModelContext::giveWayToForeignDoses() {
  static const std::string kSql = "SELECT 1 FROM DoseLog WHERE medicine = ? AND scheduledTime = ? AND " + isActedOn();
  std::vector<std::shared_ptr<Record>> doubled;
  for (const auto& [number, change] : changes_) {
    const auto* log = dynamic_cast<const DoseLog*>(change.record.get());
    if (log == nullptr || change.kind != Change::Kind::insert || !log->medicineId()) continue;
    if (log->status() != DoseStatus::taken && log->status() != DoseStatus::skipped) continue;
    const Prepared same = prepared(kSql);
    bindValue(*same, 1, *log->medicineId());
    same->bind(2, log->scheduledTime().microseconds());
    if (same->executeStep()) doubled.push_back(change.record);
  }
  for (const auto& log : doubled) vanish(*log);
}

void ModelContext::readAgain(const Table& table) {
  std::vector<std::shared_ptr<Record>> held;
  for (const auto& [id, record] : known_[table.index()].records) {
    if (auto alive = record.lock()) held.push_back(std::move(alive));
  }
  for (const auto& record : held) {
    const Change* change = changeOf(*record);
    const Prepared row = prepared(table.selectById());
    bindValue(*row, 1, table.id(*record));
    if (row->executeStep()) {
      table.load(*record, *row, change == nullptr ? 0 : change->columns);
    } else if (change == nullptr || change->kind != Change::Kind::insert) {
      vanish(*record);
    }
  }
}

}  // namespace pillora

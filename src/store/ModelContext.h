// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "model/AppSettings.h"
#include "model/DoseLog.h"
#include "model/Medicine.h"
#include "platform/Clock.h"
#include "platform/MainExecutor.h"
#include "store/DoseHistory.h"
#include "store/FetchDescriptor.h"
#include "support/Result.h"

namespace SQLite {
class Database;
class Statement;
}  // namespace SQLite

namespace pillora {

class Table;

/// That what is pending could not be written.
struct SaveFailure {
  std::optional<Instant> since;  ///< when the first save failed after the last that succeeded; absent without a clock
  Error error;                   ///< of the last save
};

/// The records of one store, as objects with identity: as long as somebody holds a record, every fetch that finds it
/// returns that same object. Every write to an inserted record is noticed.
///
/// Saving. The first change of an event-loop turn opens `BEGIN IMMEDIATE`; changes go into that transaction before the
/// next fetch, so that queries see them at once; at the end of the turn the context commits by itself. When a commit
/// fails the changes stay pending, stay visible to queries, and are written once by the next save that succeeds. A
/// process that is killed loses at most the turn under way.
///
/// Several processes may have the file open. A busy file is waited for. What another process committed is taken over
/// when a write transaction begins and by refresh().
///
/// Main thread only.
class ModelContext final : private RecordHost {
 public:
  ~ModelContext() override;
  ModelContext(const ModelContext&) = delete;
  ModelContext& operator=(const ModelContext&) = delete;

  /// The records that match, current as of this call and with all pending changes. An error leaves everything as it is.
  template <typename T>
  Result<std::vector<std::shared_ptr<T>>> fetch(const FetchDescriptor<T>& descriptor = {});
  /// How many match; reads no records.
  template <typename T>
  Result<int64_t> fetchCount(const FetchDescriptor<T>& descriptor = {});
  /// The record with this identifier, or null when the store does not hold it.
  template <typename T>
  std::shared_ptr<T> find(const UUID& id);
  /// The logs of all medicines, counted, and the latest of them. The cost hardly depends on how many there are: the
  /// store keeps counts beside the logs.
  Result<DoseHistory> doseHistory(const DoseHistoryQuery& query);

  /// Puts a new record into the store, together with the logs that a new medicine already has. A record that is in a
  /// store already stays as it is.
  void insert(const std::shared_ptr<Medicine>& record);
  void insert(const std::shared_ptr<DoseLog>& record);
  void insert(const std::shared_ptr<AppSettings>& record);
  /// Takes a record out of the store, a medicine together with its logs. A record that is gone already stays gone.
  void delete_(const std::shared_ptr<Medicine>& record);
  void delete_(const std::shared_ptr<DoseLog>& record);
  void delete_(const std::shared_ptr<AppSettings>& record);

  /// Begins the turn's write transaction now, so that what is read next and what is written after it cannot be
  /// separated by another process. Call it before a check that decides about a change. An error means that the file
  /// cannot be locked or written; changes made all the same stay pending.
  Result<void> beginWriting();

  /// Commits what is pending. On an error all of it stays pending.
  Result<void> save();
  bool hasChanges() const;
  /// Absent unless the last save failed. Observers hear when this comes and goes.
  const std::optional<SaveFailure>& saveFailure() const { return saveFailure_; }
  /// Gives up what is pending: none of it is ever written. The records keep their values and match the store no longer,
  /// so this is for a program that is about to close it.
  void discardChanges();

  /// Takes over what other processes have committed since; observers hear of it when there was anything.
  void refresh();

  /// Grows with every change seen, own or foreign: whoever keeps a result asks again when this has moved.
  uint64_t changeCount() const { return changeCount_; }

  /// Calls `observer` at the end of each turn in which something changed, after the automatic save. It is called until
  /// the returned handle is gone.
  [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> observer);

  /// The error of the last read that failed since this was last asked. Queries that keep their last good result
  /// report through this.
  std::optional<Error> takeReadError();

 private:
  friend class ModelContainer;

  /// A change that is not committed. All of them are kept, so that they can be written again after a failed commit.
  struct Change {
    enum class Kind { insert, update, delete_ };
    std::shared_ptr<Record> record;
    Kind kind;
    uint32_t columns;         ///< of an update: what changed
    bool wasWritten = false;  ///< it may have left a trace in the file, committed or not
  };
  using Changes = std::map<uint64_t, Change>;  ///< in the order in which they were made
  /// The records of one type that somebody holds, or held when this was last tidied up.
  struct Known {
    std::unordered_map<UUID, std::weak_ptr<Record>> records;
    size_t tidyAt = 1024;
  };

  /// A statement in use. It is kept and reset afterwards: one that is not would hold its view of the file.
  using Prepared = std::unique_ptr<SQLite::Statement, void (*)(SQLite::Statement*)>;

  /// `clock` may be null.
  ModelContext(std::unique_ptr<SQLite::Database> database, MainExecutor& executor, const Clock* clock);

  void fieldChanged(Record& record, const void* field) override;
  std::shared_ptr<Medicine> medicineWithId(const UUID& id) override;
  std::vector<std::shared_ptr<DoseLog>> doseLogs(const UUID& medicine, Instant from, Instant to) override;
  std::vector<Instant> actedOnTimes(const UUID& medicine, Instant from, Instant to) override;
  std::vector<Instant> loggedTimes(const UUID& medicine, Instant from, Instant to) override;

  // Identity (ModelContext.cpp).
  std::shared_ptr<Record> known(const Table& table, const UUID& id) const;
  std::vector<std::shared_ptr<DoseLog>> knownLogsOf(const UUID& medicine) const;
  void remember(const Table& table, const UUID& id, const std::shared_ptr<Record>& record);
  void insertRecord(const std::shared_ptr<Record>& record);
  void deleteRecord(const std::shared_ptr<Record>& record);
  void markDeleted(Record& record);

  // Changes and the turn (ModelContext.cpp, ModelContextSaving.cpp).
  const Change* changeOf(const Record& record) const;
  void addChange(const std::shared_ptr<Record>& record, Change::Kind kind, uint32_t columns);
  void dropChange(const Record& record);
  void changed();
  void endTurnLater();
  void endTurn();
  bool isInTransaction() const;
  Result<void> begin();
  Result<void> writeChanges();
  Result<void> commit();
  void noteSave(const Result<void>& saved);
  bool write(Change& change);
  void vanish(Record& record);
  void rollBack();
  void noteRollBack();
  int64_t dataVersion();
  void takeOverForeignChanges();
  void readAgain(const Table& table);
  void giveWayToForeignDoses();

  // Reading (ModelContextReading.cpp).
  Prepared prepared(const std::string& sql);
  template <typename Work>
  auto reading(Work work) -> Result<decltype(work())>;
  std::shared_ptr<Record> recordOf(const Table& table, SQLite::Statement& row);
  std::vector<Instant> times(const std::string& sql, const UUID& medicine, Instant from, Instant to);
  DoseCounts doseCounts(const DoseHistoryQuery& query);
  void readLatestLogs(DoseHistory& history, const DoseHistoryQuery& query);
  void readRest(DoseHistory& history, const DoseHistoryQuery& query, Instant from, Instant to, int64_t offset);
  void readDosesBehind(DoseHistory& history, const DoseHistoryQuery& query);
  void readDosesBefore(DoseHistory& history, const DoseHistoryQuery& query);

  std::unique_ptr<SQLite::Database> database_;
  std::unordered_map<std::string, std::unique_ptr<SQLite::Statement>> statements_;
  MainExecutor* executor_;
  const Clock* clock_;
  std::array<Known, 3> known_;  ///< by Table::index()

  Changes changes_;
  std::unordered_map<const Record*, uint64_t> changeByRecord_;
  std::set<uint64_t> unwritten_;  ///< the changes that the open transaction does not hold yet
  uint64_t nextChange_ = 0;

  std::shared_ptr<void> alive_;  ///< what is posted does nothing once this is gone
  bool isTurnEndPosted_ = false;
  int64_t dataVersion_ = 0;  ///< SQLite's counter of foreign commits, as of the last look
  uint64_t changeCount_ = 0;
  uint64_t observedCount_ = 0;
  std::vector<std::weak_ptr<std::function<void()>>> observers_;
  std::optional<Error> readError_;
  std::optional<SaveFailure> saveFailure_;
};

/// A fetch that stays current: asks the store again only after something changed, and keeps the last good result when
/// a read fails (see ModelContext::takeReadError).
template <typename T>
class LiveQuery {
 public:
  explicit LiveQuery(ModelContext& context, FetchDescriptor<T> descriptor = {})
      : context_(&context), descriptor_(std::move(descriptor)) {}

  const std::vector<std::shared_ptr<T>>& records() const;

 private:
  ModelContext* context_;
  FetchDescriptor<T> descriptor_;
  mutable std::optional<uint64_t> asOf_;
  mutable std::vector<std::shared_ptr<T>> records_;
};

}  // namespace pillora

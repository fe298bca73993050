// SPDX-License-Identifier: MIT
#include "store/SchemaSteps.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <SQLiteCpp/Savepoint.h>
#include <algorithm>
#include <optional>
#include <set>
#include <sqlite3.h>
#include <string>

#include "store/StoreCopy.h"
#include "store/Table.h"

namespace pillora {

namespace {

constexpr SchemaVersion kFirstVersion{1, 0, 0};

// Identifiers are 16 bytes, instants microseconds since 1970, booleans 0 or 1. Row numbers are never used again, so
// that they tell the order of insertion. What may be absent is NULL.
//
// DoseCount holds how many logs of medicines there are for each status and span of time: all instants whose
// microseconds agree but for the last 38 bits, some three days. Triggers keep it; a step that rebuilds DoseLog has to
// make them again.
constexpr const char* kFirstSchema = R"sql(
CREATE TABLE Medicine (
  rowid INTEGER PRIMARY KEY AUTOINCREMENT,
  id BLOB NOT NULL UNIQUE CHECK (length(id) = 16),
  name TEXT NOT NULL,
  dosage TEXT NOT NULL,
  unit TEXT NOT NULL,
  instructions TEXT NOT NULL,
  color TEXT NOT NULL,
  icon TEXT NOT NULL,
  intervalData TEXT NOT NULL,
  isActive INTEGER NOT NULL,
  allowSnooze INTEGER NOT NULL,
  snoozeDurationMinutes INTEGER NOT NULL,
  maxSnoozeCount INTEGER NOT NULL,
  isRepeating INTEGER NOT NULL,
  createdAt INTEGER NOT NULL,
  updatedAt INTEGER NOT NULL,
  startDate INTEGER NOT NULL,
  endDate INTEGER
) STRICT;

CREATE TABLE DoseLog (
  rowid INTEGER PRIMARY KEY AUTOINCREMENT,
  id BLOB NOT NULL UNIQUE CHECK (length(id) = 16),
  scheduledTime INTEGER NOT NULL,
  actionTime INTEGER,
  statusRaw TEXT NOT NULL,
  snoozeCount INTEGER NOT NULL,
  notes TEXT NOT NULL,
  medicine BLOB REFERENCES Medicine (id) ON DELETE CASCADE
) STRICT;

CREATE INDEX DoseLogByMedicine ON DoseLog (medicine, scheduledTime);
CREATE INDEX DoseLogByTime ON DoseLog (scheduledTime, statusRaw);

CREATE TABLE DoseCount (
  span INTEGER NOT NULL,
  statusRaw TEXT NOT NULL,
  doses INTEGER NOT NULL,
  PRIMARY KEY (span, statusRaw)
) STRICT, WITHOUT ROWID;

CREATE TRIGGER DoseLogged AFTER INSERT ON DoseLog WHEN NEW.medicine IS NOT NULL BEGIN
  INSERT INTO DoseCount VALUES (NEW.scheduledTime >> 38, NEW.statusRaw, 1)
    ON CONFLICT (span, statusRaw) DO UPDATE SET doses = doses + 1;
END;
CREATE TRIGGER DoseLogDeleted AFTER DELETE ON DoseLog WHEN OLD.medicine IS NOT NULL BEGIN
  UPDATE DoseCount SET doses = doses - 1 WHERE span = OLD.scheduledTime >> 38 AND statusRaw = OLD.statusRaw;
  DELETE FROM DoseCount WHERE span = OLD.scheduledTime >> 38 AND statusRaw = OLD.statusRaw AND doses = 0;
END;
CREATE TRIGGER DoseLogChanged AFTER UPDATE OF scheduledTime, statusRaw, medicine ON DoseLog BEGIN
  UPDATE DoseCount SET doses = doses - 1
    WHERE OLD.medicine IS NOT NULL AND span = OLD.scheduledTime >> 38 AND statusRaw = OLD.statusRaw;
  DELETE FROM DoseCount WHERE span = OLD.scheduledTime >> 38 AND statusRaw = OLD.statusRaw AND doses = 0;
  INSERT INTO DoseCount SELECT NEW.scheduledTime >> 38, NEW.statusRaw, 1 WHERE NEW.medicine IS NOT NULL
    ON CONFLICT (span, statusRaw) DO UPDATE SET doses = doses + 1;
END;

CREATE TABLE AppSettings (
  rowid INTEGER PRIMARY KEY AUTOINCREMENT,
  id BLOB NOT NULL UNIQUE CHECK (length(id) = 16),
  weekStartDayRaw INTEGER NOT NULL,
  notificationSoundRaw TEXT NOT NULL,
  enableCriticalAlerts INTEGER NOT NULL,
  reminderAdvanceMinutes INTEGER NOT NULL,
  autoMarkMissedAfterMinutes INTEGER NOT NULL,
  defaultSnoozeDurationMinutes INTEGER NOT NULL,
  defaultMaxSnoozeCount INTEGER NOT NULL,
  backupFrequencyRaw TEXT NOT NULL,
  lastBackupDate INTEGER,
  enableiCloudSync INTEGER NOT NULL,
  enableLocalBackup INTEGER NOT NULL,
  use24HourTime INTEGER NOT NULL,
  showMedicineIcons INTEGER NOT NULL,
  enableHaptics INTEGER NOT NULL,
  requireAuthentication INTEGER NOT NULL
) STRICT;
)sql";

int64_t toUserVersion(SchemaVersion version) {
  return int64_t{version.major} * 10'000 + version.minor * 100 + version.patch;
}

SchemaVersion fromUserVersion(int64_t number) {
  const auto n = static_cast<int>(std::max<int64_t>(number, 0));
  return {n / 10'000, n / 100 % 100, n % 100};
}

std::string text(SchemaVersion version) {
  return std::to_string(version.major) + "." + std::to_string(version.minor) + "." + std::to_string(version.patch);
}

int64_t number(SQLite::Database& database, const std::string& sql) { return database.execAndGet(sql).getInt64(); }

/// The migrations from a version to the schema's, in order; nothing when they do not reach it.
std::optional<std::vector<const Migration*>> stepsFrom(SchemaVersion version, const Schema& schema) {
  std::vector<const Migration*> steps;
  while (version < schema.version) {
    const auto next = std::find_if(schema.migrations.begin(), schema.migrations.end(), [&](const Migration& step) {
      return step.from == version && step.to > version && step.to <= schema.version;
    });
    if (next == schema.migrations.end()) return std::nullopt;
    steps.push_back(&*next);
    version = next->to;
  }
  return steps;
}

/// Columns over which there is an index.
constexpr const char* kIndexed[] = {"rowid FROM Medicine",    "id FROM Medicine",      "rowid FROM DoseLog",
                                    "id FROM DoseLog",        "medicine FROM DoseLog", "scheduledTime FROM DoseLog",
                                    "rowid FROM AppSettings", "id FROM AppSettings",   "seq FROM sqlite_sequence",
                                    "span FROM DoseCount"};

/// Whether every table is there with its columns, and it and its indexes can be read at both ends. The rest is not
/// read: that takes too long for a start.
Result<void> checkTables(SQLite::Database& database) {
  for (const Table* table : Table::all()) {
    std::set<std::string> found;
    SQLite::Statement columns(database, "SELECT name FROM pragma_table_info(?)");
    columns.bind(1, std::string(table->name()));
    while (columns.executeStep()) found.insert(columns.getColumn(0).getString());
    for (const std::string_view column : table->columns()) {
      if (found.contains(std::string(column))) continue;
      return Error{"its table " + std::string(table->name()) + " has no column " + std::string(column)};
    }
  }
  for (const std::string column : kIndexed) {
    for (const char* order : {" ORDER BY 1 LIMIT 1", " ORDER BY 1 DESC LIMIT 1"}) {
      SQLite::Statement(database, "SELECT " + column + order).executeStep();
    }
  }
  return {};
}

Result<StoreState> examineKnown(SQLite::Database& database, const Schema& schema) {
  const SchemaVersion found = fromUserVersion(number(database, "PRAGMA user_version"));
  if (found > schema.version) {
    return Error{"the store was written by a newer version of Pillora (schema " + text(found) +
                 ", this version reads up to " + text(schema.version) + "); install that version again"};
  }
  if (!stepsFrom(found, schema)) {
    return Error{"the store is too old (schema " + text(found) + "), this version cannot bring it to schema " +
                 text(schema.version)};
  }
  if (found < schema.version) return StoreState::older;
  if (const auto complete = checkTables(database); !complete) {
    return Error{"the store is damaged (" + complete.error().description + ")"};
  }
  return StoreState::current;
}

Result<StoreState> examineFound(SQLite::Database& database, const Schema& schema) {
  const int64_t application = number(database, "PRAGMA application_id");
  if (application == kApplicationId) return examineKnown(database, schema);
  const bool isEmpty = application == 0 && number(database, "PRAGMA user_version") == 0 &&
                       number(database, "SELECT count(*) FROM sqlite_master") == 0;
  if (isEmpty) return StoreState::empty;
  return Error{"the file is a database of another program"};
}

void takeSteps(SQLite::Database& database, const Schema& schema, StoreState state) {
  SchemaVersion version = kFirstVersion;
  if (state == StoreState::empty) {
    database.exec(kFirstSchema);
    database.exec("PRAGMA application_id = " + std::to_string(kApplicationId));
  } else {
    version = fromUserVersion(number(database, "PRAGMA user_version"));
  }
  const auto steps = stepsFrom(version, schema);
  if (!steps) throw SQLite::Exception("this version cannot make schema " + text(schema.version));
  for (const Migration* step : *steps) database.exec(step->sql);
  database.exec("PRAGMA user_version = " + std::to_string(toUserVersion(schema.version)));
}

/// Keeps the store of the older version beside it, under that version's number.
Result<void> keepOlder(SQLite::Database& database, const std::string& vfs) {
  const std::string& path = database.getFilename();
  return keepCopy(path, vfs, path + "." + text(fromUserVersion(number(database, "PRAGMA user_version"))));
}

}  // namespace

Schema currentSchema() { return {kFirstVersion, {}}; }

Result<StoreState> examine(SQLite::Database& database, const Schema& schema) {
  try {
    // One moment of the file: another process may be making the store right now.
    SQLite::Savepoint moment(database, "examine");
    auto state = examineFound(database, schema);
    moment.release();
    return state;
  } catch (const SQLite::Exception& failure) {
    if (failure.getErrorCode() == SQLITE_NOTADB) return Error{"the file is not a Pillora store"};
    if (failure.getErrorCode() == SQLITE_CORRUPT)
      return Error{std::string("the store is damaged (") + failure.what() + ")"};
    return Error{std::string("the store cannot be read (") + failure.what() + ")"};
  }
}

Result<void> bringUpToDate(SQLite::Database& database, const std::string& vfs, const Schema& schema) {
  std::string doing = "the store cannot be written (";
  try {
    // A step may rebuild a table; that must not delete what refers to it.
    database.exec("PRAGMA foreign_keys = OFF");
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    const auto state = examine(database, schema);
    if (!state) return state.error();
    if (*state == StoreState::current) return {};
    doing = *state == StoreState::empty ? "the store cannot be made (" : "the store cannot be migrated (";
    // While the transaction keeps others from writing: nothing is in the migrated store that the copy lacks.
    if (*state == StoreState::older) {
      if (const auto kept = keepOlder(database, vfs); !kept) return Error{doing + kept.error().description + ")"};
    }
    takeSteps(database, schema, *state);
    if (const auto complete = checkTables(database); !complete)
      return Error{doing + complete.error().description + ")"};
    SQLite::Statement dangling(database, "PRAGMA foreign_key_check");
    if (dangling.executeStep()) return Error{doing + "a record would refer to one that is not there)"};
    dangling.reset();
    transaction.commit();
    return {};
  } catch (const SQLite::Exception& failure) {
    return Error{doing + failure.what() + ")"};
  }
}

}  // namespace pillora

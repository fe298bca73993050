// SPDX-License-Identifier: MIT
#include "store/StoreFile.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "store/SchemaSteps.h"

namespace pillora {

namespace {

constexpr off_t kSmallestDatabase = 512;
constexpr auto kRetryPause = std::chrono::milliseconds(2);

Error systemError(const std::string& path, int number) { return {path + ": " + std::strerror(number)}; }

Result<void> makeFile(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0) return errno == EEXIST ? Result<void>() : systemError(path, errno);
  const bool isPrivate = ::fchmod(file, 0600) == 0;
  const int failure = errno;
  ::close(file);
  if (!isPrivate) return systemError(path, failure);
  return {};
}

/// Makes a missing file and refuses what is no file that can be read and written. Deliberate: an existing file is not
/// opened here. Closing it again would take away the locks that another connection of this process has on it.
Result<void> prepareFile(const std::string& path) {
  struct stat info {};
  if (::lstat(path.c_str(), &info) != 0) {
    if (errno != ENOENT) return systemError(path, errno);
    if (auto made = makeFile(path); !made) return made;
    if (::lstat(path.c_str(), &info) != 0) return systemError(path, errno);
  }
  if (S_ISDIR(info.st_mode)) return Error{path + " is a folder, not a store file"};
  if (S_ISLNK(info.st_mode)) return Error{path + " is a link, not a store file"};
  if (!S_ISREG(info.st_mode)) return Error{path + " is not a regular file"};
  // SQLite takes a file of one byte for an empty one and would overwrite it.
  if (info.st_size > 0 && info.st_size < kSmallestDatabase) return Error{"the file is not a Pillora store"};
  if (::faccessat(AT_FDCWD, path.c_str(), R_OK | W_OK, AT_EACCESS) != 0) return systemError(path, errno);
  return {};
}

bool exists(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0;
}

int64_t sizeOf(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0 ? info.st_size : 0;
}

/// The path as a URI for a file that nobody changes: SQLite then makes no side files, takes no locks, writes nothing.
std::string immutableUri(const std::string& path) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string uri = "file://";
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '%' || c == '?' || c == '#') {
      uri += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    } else {
      uri += c;
    }
  }
  return uri + "?immutable=1";
}

void setCheckpointOnClose(SQLite::Database& database, bool on) {
  sqlite3_db_config(database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, on ? 0 : 1, nullptr);
}

Result<StoreState> examineAtRest(const std::string& path, const std::string& vfs, const Schema& schema) {
  SQLite::Database database(immutableUri(path), SQLite::OPEN_READONLY | SQLite::OPEN_URI, 0, vfs);
  auto state = examine(database, schema);
  const auto number = [&](const char* sql) { return database.execAndGet(sql).getInt64(); };
  if (state && number("PRAGMA page_count") * number("PRAGMA page_size") > sizeOf(path)) {
    return Error{"the store is damaged (its end is missing)"};
  }
  return state;
}

/// For a file whose newest content still lies in its write-ahead log. When nobody has it open, which shows by the
/// missing index of the log, it is read without making that index.
Result<StoreState> examineThroughLog(const std::string& path, const std::string& vfs, const Schema& schema) {
  const bool isShared = exists(path + "-shm");
  SQLite::Database database(path, SQLite::OPEN_READWRITE, isShared ? kBusyTimeout : 0, vfs);
  setCheckpointOnClose(database, false);
  if (!isShared) database.execAndGet("PRAGMA locking_mode = EXCLUSIVE");
  return examine(database, schema);
}

/// Decides about a file before anything is written to it. Another process may be making or closing the store at this
/// moment, so a refusal counts only when it repeats.
Result<void> inspect(const std::string& path, const std::string& vfs, const Schema& schema) {
  constexpr int kAttempts = 5;
  for (int attempt = 1;; ++attempt) {
    const auto state = sizeOf(path + "-wal") > 0 ? examineThroughLog(path, vfs, schema)
                       : sizeOf(path) > 0        ? examineAtRest(path, vfs, schema)
                                                 : StoreState::empty;
    if (state) return {};
    if (attempt == kAttempts) return state.error();
    std::this_thread::sleep_for(kRetryPause * attempt);
  }
}

/// SQLite does not wait for others when it changes the kind of journal, so this does.
void useWriteAheadLog(SQLite::Database& database) {
  for (int waited = 0;; waited += static_cast<int>(kRetryPause.count())) {
    try {
      database.execAndGet("PRAGMA journal_mode = WAL");
      return;
    } catch (const SQLite::Exception& failure) {
      if (failure.getErrorCode() != SQLITE_BUSY || waited >= kBusyTimeout) throw;
    }
    std::this_thread::sleep_for(kRetryPause);
  }
}

Result<std::unique_ptr<SQLite::Database>> connect(const std::string& path, const std::string& vfs,
                                                  const Schema& schema) {
  auto database =
      std::make_unique<SQLite::Database>(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, kBusyTimeout, vfs);
  setCheckpointOnClose(*database, false);
  // A file may come from anywhere: what its own schema calls must not reach beyond it.
  database->exec("PRAGMA trusted_schema = OFF");
  database->exec("PRAGMA synchronous = FULL");
  const auto state = examine(*database, schema);
  if (!state) return state.error();
  useWriteAheadLog(*database);
  if (*state != StoreState::current) {
    if (const auto ready = bringUpToDate(*database, vfs, schema); !ready) return ready.error();
  }
  database->exec("PRAGMA foreign_keys = ON");
  setCheckpointOnClose(*database, true);
  return database;
}

}  // namespace

Result<std::unique_ptr<SQLite::Database>> openStoreFile(const ModelConfiguration& configuration, const Schema& schema) {
  try {
    if (configuration.isStoredInMemoryOnly) return connect(":memory:", configuration.vfsName, schema);
    std::error_code failure;
    const std::string path = std::filesystem::absolute(configuration.path, failure).lexically_normal().string();
    if (failure) return Error{configuration.path + ": " + failure.message()};
    if (const auto prepared = prepareFile(path); !prepared) return prepared.error();
    if (const auto accepted = inspect(path, configuration.vfsName, schema); !accepted) return accepted.error();
    return connect(path, configuration.vfsName, schema);
  } catch (const SQLite::Exception& failure) {
    return Error{std::string("the store cannot be opened (") + failure.what() + ")"};
  }
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "agent/ReminderFile.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace pillora {

namespace {

constexpr int kVersion = 1;

constexpr const char* kSchema = R"(
CREATE TABLE facts(name TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE requests(
  serial INTEGER PRIMARY KEY AUTOINCREMENT,
  identifier TEXT NOT NULL UNIQUE,
  state INTEGER NOT NULL,
  due INTEGER NOT NULL,
  wall INTEGER NOT NULL,
  content TEXT NOT NULL);
CREATE INDEX requestsByDue ON requests(state, due);
CREATE TABLE bubbles(
  dose TEXT PRIMARY KEY,
  number INTEGER NOT NULL UNIQUE,
  server TEXT NOT NULL,
  shown INTEGER NOT NULL,
  content TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE tasks(
  serial INTEGER PRIMARY KEY AUTOINCREMENT,
  identifier TEXT NOT NULL UNIQUE,
  earliest INTEGER,
  network INTEGER NOT NULL,
  power INTEGER NOT NULL);
)";

Error systemError(const std::string& path) { return Error{path + ": " + std::strerror(errno)}; }

/// Makes what is missing of the folders of `path`, readable by their owner alone.
Result<void> makeFolders(const std::filesystem::path& folder) {
  if (folder.empty() || std::filesystem::is_directory(folder)) return {};
  if (const auto made = makeFolders(folder.parent_path()); !made) return made;
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return systemError(folder);
  return {};
}

/// Opens for writing, never through a link.
Result<int> openOwn(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, 0600);
  if (descriptor < 0) return systemError(path);
  struct stat found {};
  if (fstat(descriptor, &found) != 0 || !S_ISREG(found.st_mode) || fchmod(descriptor, 0600) != 0) {
    close(descriptor);
    return Error{path + ": not a file of ours"};
  }
  return descriptor;
}

/// Deliberate: the version is read before anything else, since even switching to a write-ahead log would change a file
/// that a newer program wrote.
Result<void> prepare(SQLite::Database& database, const std::string& path) {
  database.exec("PRAGMA cache_size=-1024");
  const int version = database.execAndGet("PRAGMA user_version").getInt();
  if (version > kVersion) return Error{path + ": written by a newer version of Pillora"};
  database.exec("PRAGMA locking_mode=EXCLUSIVE");
  database.exec("PRAGMA journal_mode=WAL");
  database.exec("PRAGMA synchronous=FULL");
  if (version == kVersion) return {};
  SQLite::Transaction transaction(database);
  database.exec(kSchema);
  database.exec("PRAGMA user_version=" + std::to_string(kVersion));
  transaction.commit();
  return {};
}

}  // namespace

Result<std::unique_ptr<FileOwnership>> FileOwnership::take(const std::string& path,
                                                           std::chrono::milliseconds patience) {
  const auto descriptor = openOwn(path);
  if (!descriptor) return descriptor.error();
  auto ownership = std::make_unique<FileOwnership>(*descriptor);
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (flock(*descriptor, LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return systemError(path);
    if (std::chrono::steady_clock::now() > deadline) return Error{path + ": in use by another program"};
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return ownership;
}

FileOwnership::~FileOwnership() { close(descriptor_); }

Result<std::unique_ptr<ReminderFile>> ReminderFile::open(const std::string& path, std::chrono::milliseconds patience) {
  if (const auto made = makeFolders(std::filesystem::path(path).parent_path()); !made) return made.error();
  auto ownership = FileOwnership::take(path + ".lock", patience);
  if (!ownership) return ownership.error();
  // SQLite would create the file with the process's mask; a file made here has its mode from the first moment.
  const auto descriptor = openOwn(path);
  if (!descriptor) return descriptor.error();
  close(*descriptor);
  try {
    std::unique_ptr<ReminderFile> file(new ReminderFile(path, std::move(*ownership)));
    if (const auto ready = prepare(file->database_, path); !ready) return ready.error();
    return file;
  } catch (const SQLite::Exception& failure) {
    return Error{path + ": " + failure.what()};
  }
}

ReminderFile::ReminderFile(const std::string& path, std::unique_ptr<FileOwnership> ownership)
    : ownership_(std::move(ownership)), database_(path, SQLite::OPEN_READWRITE) {}

SQLite::Statement& ReminderFile::statement(const char* sql) {
  SQLite::Statement& found = statements_.try_emplace(sql, database_, sql).first->second;
  found.reset();
  found.clearBindings();
  return found;
}

std::optional<std::string> ReminderFile::value(const std::string& name) {
  SQLite::Statement query(database_, "SELECT value FROM facts WHERE name=?");
  query.bind(1, name);
  if (!query.executeStep()) return std::nullopt;
  return query.getColumn(0).getString();
}

std::optional<int64_t> ReminderFile::number(const std::string& name) {
  const auto text = value(name).value_or("");
  int64_t number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = failure == std::errc() && end == text.data() + text.size();
  return isWhole ? std::optional(number) : std::nullopt;
}

void ReminderFile::setValue(const std::string& name, const std::string& value) {
  SQLite::Statement change(database_, "INSERT OR REPLACE INTO facts VALUES(?,?)");
  change.bind(1, name);
  change.bind(2, value);
  change.exec();
}

}  // namespace pillora

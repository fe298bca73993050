// SPDX-License-Identifier: MIT
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "support/Result.h"

namespace pillora {

/// Holds the one right to use a reminder file: a lock on a file beside it that the kernel lets go when the process
/// ends, however it ends.
class FileOwnership {
 public:
  /// Waits for another owner as long as `patience` says.
  static Result<std::unique_ptr<FileOwnership>> take(const std::string& path, std::chrono::milliseconds patience);
  explicit FileOwnership(int descriptor) : descriptor_(descriptor) {}
  FileOwnership(const FileOwnership&) = delete;
  FileOwnership& operator=(const FileOwnership&) = delete;
  ~FileOwnership();

 private:
  int descriptor_;
};

/// The file that outlives kills, restarts and reboots: what is pending, what was shown, the registered categories, the
/// badge, the permission and the submitted tasks. A folder that is missing is made with mode 0700, the file has mode
/// 0600. One process uses it at a time. Every transaction is on the disk when it has been committed.
///
/// Used by the Engine only, which stops the SQLite::Exceptions of its statements.
class ReminderFile {
 public:
  /// Opens or makes the file. A file of a newer version, one that is in use and one that is no reminder file are
  /// refused and left as they are. One in use is waited for, since a command-line program may just be ending.
  static Result<std::unique_ptr<ReminderFile>> open(const std::string& path,
                                                    std::chrono::milliseconds patience = std::chrono::seconds(2));

  SQLite::Database& database() { return database_; }
  /// The statement of this text, compiled once, without values and ready to run. `sql` must be a literal. A statement
  /// that was stepped to a row is to be reset by its user, since it holds a place in the file.
  SQLite::Statement& statement(const char* sql);

  /// Single values that are kept by name.
  std::optional<std::string> value(const std::string& name);
  void setValue(const std::string& name, const std::string& value);
  /// A value that is a decimal number; nothing when it is absent or something else.
  std::optional<int64_t> number(const std::string& name);

 private:
  ReminderFile(const std::string& path, std::unique_ptr<FileOwnership> ownership);

  std::unique_ptr<FileOwnership> ownership_;  ///< let go after the database is closed
  SQLite::Database database_;
  std::unordered_map<const char*, SQLite::Statement> statements_;
};

}  // namespace pillora

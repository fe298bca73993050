// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/MainExecutor.h"
#include "store/ModelContext.h"
#include "support/Result.h"

namespace pillora {

/// Version of the store's schema, as three numbers.
struct SchemaVersion {
  int major = 1, minor = 0, patch = 0;

  auto operator<=>(const SchemaVersion&) const = default;
};

/// One step from an older schema to `to`: SQL that runs inside the transaction that opens the store.
struct Migration {
  SchemaVersion from, to;
  std::string sql;
};

/// The schema that a program reads and writes, and the way to it from older ones.
struct Schema {
  SchemaVersion version;
  std::vector<Migration> migrations;
};

/// Schema 1.0.0 over Medicine, DoseLog and AppSettings.
Schema currentSchema();

/// Where a store lies and how it is opened.
struct ModelConfiguration {
  std::string path = {};              ///< the store file; made, 0600, when missing. Its folder must exist.
  bool isStoredInMemoryOnly = false;  ///< no file at all: demo and tests
  bool usesCloudDatabase = true;      ///< carried; Linux has no private cloud database
  std::string vfsName = {};           ///< a SQLite VFS other than the system's, for tests of failing disks
  const Clock* clock = nullptr;       ///< tells since when nothing could be saved; outlives the store
};

/// An open store: the file, its schema and the main context. Ends when destroyed, saving what is pending.
class ModelContainer {
 public:
  /// Opens or creates the store. Refused with an error, the file left untouched to the byte: a file that is no store,
  /// is damaged, cannot be read or written, or was written by a newer version.
  static Result<std::unique_ptr<ModelContainer>> open(const ModelConfiguration& configuration, MainExecutor& executor,
                                                      const Schema& schema = currentSchema());
  ~ModelContainer();

  ModelContext& mainContext();

 private:
  explicit ModelContainer(std::unique_ptr<ModelContext> mainContext);

  std::unique_ptr<ModelContext> mainContext_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "store/ModelContainer.h"
#include "support/Result.h"

namespace SQLite {
class Database;
}

namespace pillora {

/// Marks a file as a Pillora store in SQLite's header: "Pill".
inline constexpr int64_t kApplicationId = 0x50696C6C;

/// What a database is to this program: one without anything in it becomes a store, an older store is migrated.
enum class StoreState { empty, older, current };

/// Looks at a database and writes nothing. An error for one that is damaged, belongs to another program, was written
/// by a newer version, or is too old for `schema`'s migrations.
Result<StoreState> examine(SQLite::Database& database, const Schema& schema);

/// Makes the tables or migrates them, all in one transaction together with the version's change. A store that is
/// migrated is first copied to a file beside it, named after its version (Pillora.store.1.0.0), through the same VFS.
/// On an error the database is as it was. Nothing happens to a current one, nor to one that another process has just
/// brought there.
Result<void> bringUpToDate(SQLite::Database& database, const std::string& vfs, const Schema& schema);

}  // namespace pillora

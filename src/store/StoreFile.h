// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "store/ModelContainer.h"
#include "support/Result.h"

namespace SQLite {
class Database;
}

namespace pillora {

/// How long a busy file is waited for, in milliseconds. Every write transaction of Pillora is over within one turn.
inline constexpr int kBusyTimeout = 30'000;

/// Opens the store file as a connection ready for use, after making or migrating it. A file that is refused stays as
/// it is, to the byte, and gets no side files; one that was missing may stay behind empty.
Result<std::unique_ptr<SQLite::Database>> openStoreFile(const ModelConfiguration& configuration, const Schema& schema);

}  // namespace pillora

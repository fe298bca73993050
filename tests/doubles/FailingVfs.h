// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace pillora {

/// A disk that fails: a SQLite VFS that hands everything to the system's own, except that a chosen operation that
/// changes a file (write, sync, truncate) is not carried out and answers with an error. A sync that succeeds does
/// nothing: what is tested is the end of a process, not of the power. One for the whole test program, registered when
/// first used; main thread only.
namespace failingVfs {

/// Registers the VFS and returns its name. It works until it is told to fail.
std::string name();

/// From now on the `n`-th such operation, counted from 1, fails with this SQLite result code (SQLITE_IOERR or
/// SQLITE_FULL); all that follow fail too when `goesOn`.
void failAt(int n, int code, bool goesOn);
/// From now on the lock for writing cannot be taken, so that no write transaction begins. Reading goes on.
void refuseWriteLock();
/// From now on nothing fails.
void heal();
/// Whether an operation has failed since failAt().
bool hasFailed();

}  // namespace failingVfs

}  // namespace pillora

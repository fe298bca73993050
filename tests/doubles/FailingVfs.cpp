// SPDX-License-Identifier: MIT
#include "doubles/FailingVfs.h"

#include <sqlite3.h>

namespace pillora::failingVfs {

namespace {

constexpr int kWriteLock = 0;  // WAL_WRITE_LOCK: the place of the writers' lock in SQLite's wal-index format

struct Plan {
  int operationsLeft = 0;  ///< before the one that fails; nothing is counted when zero
  int code = SQLITE_OK;
  bool goesOn = false;
  bool hasFailed = false;
  bool refusesWriteLock = false;
} plan;

/// SQLITE_OK, or the code with which the operation that is about to happen fails.
int nextResult() {
  if (plan.hasFailed) return plan.goesOn ? plan.code : SQLITE_OK;
  if (plan.operationsLeft == 0 || --plan.operationsLeft > 0) return SQLITE_OK;
  plan.hasFailed = true;
  return plan.code;
}

/// A file of ours; the system's lies directly behind it.
struct File {
  sqlite3_file base;
  sqlite3_file* real;
};

sqlite3_file* real(sqlite3_file* file) { return reinterpret_cast<File*>(file)->real; }

int write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
  const int result = nextResult();
  return result != SQLITE_OK ? result : real(file)->pMethods->xWrite(real(file), bytes, count, offset);
}
int truncate(sqlite3_file* file, sqlite3_int64 size) {
  const int result = nextResult();
  return result != SQLITE_OK ? result : real(file)->pMethods->xTruncate(real(file), size);
}
int sync(sqlite3_file*, int) { return nextResult(); }

const sqlite3_io_methods kMethods = {
    2,
    [](sqlite3_file* f) { return real(f)->pMethods->xClose(real(f)); },
    [](sqlite3_file* f, void* bytes, int count, sqlite3_int64 offset) {
      return real(f)->pMethods->xRead(real(f), bytes, count, offset);
    },
    write,
    truncate,
    sync,
    [](sqlite3_file* f, sqlite3_int64* size) { return real(f)->pMethods->xFileSize(real(f), size); },
    [](sqlite3_file* f, int level) { return real(f)->pMethods->xLock(real(f), level); },
    [](sqlite3_file* f, int level) { return real(f)->pMethods->xUnlock(real(f), level); },
    [](sqlite3_file* f, int* isHeld) { return real(f)->pMethods->xCheckReservedLock(real(f), isHeld); },
    [](sqlite3_file* f, int operation, void* argument) {
      return real(f)->pMethods->xFileControl(real(f), operation, argument);
    },
    [](sqlite3_file* f) { return real(f)->pMethods->xSectorSize(real(f)); },
    [](sqlite3_file* f) { return real(f)->pMethods->xDeviceCharacteristics(real(f)); },
    [](sqlite3_file* f, int page, int size, int extends, void volatile** memory) {
      return real(f)->pMethods->xShmMap(real(f), page, size, extends, memory);
    },
    [](sqlite3_file* f, int offset, int count, int flags) {
      if (plan.refusesWriteLock && offset == kWriteLock && (flags & SQLITE_SHM_LOCK) != 0) return SQLITE_IOERR_SHMLOCK;
      return real(f)->pMethods->xShmLock(real(f), offset, count, flags);
    },
    [](sqlite3_file* f) { real(f)->pMethods->xShmBarrier(real(f)); },
    [](sqlite3_file* f, int deletes) { return real(f)->pMethods->xShmUnmap(real(f), deletes); },
    nullptr,
    nullptr,
};

sqlite3_vfs* systemVfs() {
  static sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
  return vfs;
}

int open(sqlite3_vfs*, const char* path, sqlite3_file* file, int flags, int* outFlags) {
  auto* ours = reinterpret_cast<File*>(file);
  ours->real = reinterpret_cast<sqlite3_file*>(ours + 1);
  const int result = systemVfs()->xOpen(systemVfs(), path, ours->real, flags, outFlags);
  ours->base.pMethods = ours->real->pMethods == nullptr ? nullptr : &kMethods;
  return result;
}

}  // namespace

std::string name() {
  static sqlite3_vfs vfs = [] {
    sqlite3_vfs made = *systemVfs();
    made.pNext = nullptr;
    made.zName = "pillora-failing";
    made.szOsFile += static_cast<int>(sizeof(File));
    made.xOpen = open;
    return made;
  }();
  sqlite3_vfs_register(&vfs, 0);
  return vfs.zName;
}

void failAt(int n, int code, bool goesOn) { plan = {n, code, goesOn}; }
void refuseWriteLock() { plan = {.refusesWriteLock = true}; }
void heal() { plan = {}; }
bool hasFailed() { return plan.hasFailed; }

}  // namespace pillora::failingVfs

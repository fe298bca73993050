// SPDX-License-Identifier: MIT
#include "store/StoreCopy.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

#include "store/StoreFile.h"

namespace pillora {

namespace {

bool makeEmpty(const std::string& path) {
  ::unlink(path.c_str());
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  return file >= 0 && ::close(file) == 0;
}

bool sync(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool isOnDisk = ::fsync(file) == 0;
  const int failure = errno;
  ::close(file);
  errno = failure;
  return isOnDisk;
}

/// SQLite does not wait for the disk when it makes a file in this way.
void writeInto(const std::string& part, const std::string& path, const std::string& vfs) {
  SQLite::Database reader(path, SQLite::OPEN_READWRITE, kBusyTimeout, vfs);
  reader.exec("PRAGMA trusted_schema = OFF");
  SQLite::Statement vacuum(reader, "VACUUM INTO ?");
  vacuum.bind(1, part);
  vacuum.exec();
}

}  // namespace

Result<void> keepCopy(const std::string& path, const std::string& vfs, const std::string& copy) {
  const std::string part = copy + ".part";
  const auto refused = [&part](const std::string& reason) {
    ::unlink(part.c_str());
    return Error{"no copy of it can be kept: " + reason};
  };
  const auto systemRefused = [&refused] { return refused(std::generic_category().message(errno)); };
  try {
    if (!makeEmpty(part)) return systemRefused();
    writeInto(part, path, vfs);
  } catch (const SQLite::Exception& failure) {
    return refused(failure.what());
  }
  const std::string folder = std::filesystem::path(copy).parent_path().string();
  if (!sync(part) || std::rename(part.c_str(), copy.c_str()) != 0 || !sync(folder)) return systemRefused();
  return {};
}

}  // namespace pillora

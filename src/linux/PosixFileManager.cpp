// SPDX-License-Identifier: MIT
#include "linux/PosixFileManager.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "linux/Folders.h"

namespace pillora {

namespace {

namespace fs = std::filesystem;

constexpr mode_t kOwnersAlone = 0600;
constexpr size_t kPiece = size_t{64} * 1024;

Error failed(const std::string& path, const char* whatFailed, const std::string& why) {
  return {"The file " + path + " cannot be " + whatFailed + ": " + why};
}

std::string reason(int error) {
  // Only files that are written are opened without following links.
  return error == ELOOP ? "It is a link" : std::generic_category().message(error);
}

/// A file of the system while it is open.
class OpenFile {
 public:
  OpenFile(const std::string& path, int flags, mode_t mode = 0)
      // A pipe without a writer would keep the open waiting, a terminal become this process's own.
      : file_(open(path.c_str(), flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, mode)) {}
  ~OpenFile() {
    if (file_ >= 0) ::close(file_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  int number() const { return file_; }
  /// Some file systems report a failed write only now.
  bool close() { return ::close(std::exchange(file_, -1)) == 0; }

 private:
  int file_;
};

/// Why the open file is no regular one; empty when it is.
std::string whyNotRegular(const OpenFile& file) {
  struct stat status {};
  if (fstat(file.number(), &status) != 0) return reason(errno);
  if (S_ISDIR(status.st_mode)) return "It is a folder";
  return S_ISREG(status.st_mode) ? "" : "It is not a regular file";
}

bool writeAll(const OpenFile& file, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t written = write(file.number(), contents.data(), contents.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) contents.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

}  // namespace

Result<std::string> readRegularFile(const std::string& path) {
  const OpenFile file(path, O_RDONLY);
  if (file.number() < 0) return failed(path, "read", reason(errno));
  if (const std::string why = whyNotRegular(file); !why.empty()) return failed(path, "read", why);
  const Error tooLarge = failed(path, "read", "It is larger than 64 MiB");
  // A file that its folder says is too large is not even begun; one that grows meanwhile is given up.
  if (lseek(file.number(), 0, SEEK_END) > static_cast<off_t>(kLargestFile)) return tooLarge;
  lseek(file.number(), 0, SEEK_SET);

  std::string contents;
  for (;;) {
    const size_t before = contents.size();
    contents.resize(before + kPiece);
    const ssize_t got = ::read(file.number(), contents.data() + before, kPiece);
    if (got < 0 && errno != EINTR) return failed(path, "read", reason(errno));
    contents.resize(before + static_cast<size_t>(std::max<ssize_t>(got, 0)));
    if (contents.size() > kLargestFile) return tooLarge;
    if (got == 0) return contents;
  }
}

PosixFileManager::PosixFileManager(Place documents, Place cloud)
    : documents_(std::move(documents)), cloud_(std::move(cloud)) {}

Result<void> PosixFileManager::createDirectory(const std::string& path) { return makePrivateFolder(path); }

bool PosixFileManager::fileExists(const std::string& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

Result<std::vector<std::string>> PosixFileManager::contentsOfDirectory(const std::string& path) {
  std::error_code error;
  std::vector<std::string> paths;
  for (fs::directory_iterator at(path, error); !error && at != fs::directory_iterator(); at.increment(error)) {
    if (!at->path().filename().string().starts_with('.')) paths.push_back(at->path().string());
  }
  if (error) return Error{"The folder " + path + " cannot be read: " + error.message()};
  return paths;
}

Result<FileAttributes> PosixFileManager::attributesOfItem(const std::string& path) {
  struct statx status {};
  if (statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BTIME | STATX_SIZE, &status) != 0) {
    return failed(path, "examined", reason(errno));
  }
  FileAttributes attributes;
  if ((status.stx_mask & STATX_SIZE) != 0) attributes.size = static_cast<int64_t>(status.stx_size);
  if ((status.stx_mask & STATX_BTIME) != 0) {
    attributes.creationDate =
        Instant::fromSeconds(status.stx_btime.tv_sec) + std::chrono::microseconds(status.stx_btime.tv_nsec / 1000);
  }
  return attributes;
}

Result<void> PosixFileManager::write(const std::string& path, std::string_view contents) {
  OpenFile file(path, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW, kOwnersAlone);
  if (file.number() < 0) return failed(path, "written", reason(errno));
  if (const std::string why = whyNotRegular(file); !why.empty()) return failed(path, "written", why);
  const bool done = writeAll(file, contents) && fsync(file.number()) == 0 && file.close();
  return done ? Result<void>() : failed(path, "written", reason(errno));
}

Result<std::string> PosixFileManager::contents(const std::string& path) { return readRegularFile(path); }

Result<void> PosixFileManager::removeItem(const std::string& path) {
  // Deliberate: unlink alone. A folder that happens to be listed keeps all that it holds.
  if (unlink(path.c_str()) == 0) return {};
  return failed(path, "deleted", errno == EISDIR ? "It is a folder" : reason(errno));
}

}  // namespace pillora

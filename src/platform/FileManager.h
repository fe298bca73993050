// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/Instant.h"
#include "support/Result.h"

namespace pillora {

/// What the file system tells of a file or folder; what it does not know is absent.
struct FileAttributes {
  std::optional<Instant> creationDate;
  std::optional<int64_t> size;  ///< bytes
};

/// The largest file that is ever read. Nothing that Pillora writes comes near it.
inline constexpr size_t kLargestFile = size_t{64} * 1024 * 1024;

/// The user's files: where backups lie, and the few operations that they need. Paths are absolute. Errors say for a
/// person what could not be done, with which file, and why. Used from the background queue, from one thread at a time.
class FileManager {
 public:
  virtual ~FileManager() = default;

  /// The user's documents folder, which may not have been made yet. Nothing when this user has none.
  virtual std::optional<std::string> documentDirectory() = 0;
  /// The folder that a sync client keeps the same on the user's other devices. Nothing when there is no such client.
  virtual std::optional<std::string> ubiquityContainer() = 0;

  /// Makes the folder and those that lead to it. One that is there already is no error and stays as it is.
  virtual Result<void> createDirectory(const std::string& path) = 0;
  /// Whether a file or folder of any kind is there.
  virtual bool fileExists(const std::string& path) = 0;
  /// The paths of what lies in the folder, folders included, in the file system's order. Names that begin with "." are
  /// left out.
  virtual Result<std::vector<std::string>> contentsOfDirectory(const std::string& path) = 0;
  /// Of the file itself, also where it is a link.
  virtual Result<FileAttributes> attributesOfItem(const std::string& path) = 0;

  /// Writes a whole file straight to its name, in place of one that is there; never through a link. After a failure
  /// the file may be there in part.
  virtual Result<void> write(const std::string& path, std::string_view contents) = 0;
  /// Reads a whole regular file of at most kLargestFile bytes. Anything else (a folder, a pipe, a device, a larger
  /// file) is refused at once: nothing waits for a writer.
  virtual Result<std::string> contents(const std::string& path) = 0;
  /// Removes one file. A folder is refused.
  virtual Result<void> removeItem(const std::string& path) = 0;
};

}  // namespace pillora

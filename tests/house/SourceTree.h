// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace pillora::house {

/// A file of the repository: its path from the root, and its lines when it is text that people write here. Data,
/// pictures and the like have none.
struct SourceFile {
  std::string path;
  std::vector<std::string> lines;
};

/// The files that the house rules are held against: what stands in a checkout, or what a test makes up.
class SourceTree {
 public:
  SourceTree() = default;
  explicit SourceTree(std::vector<SourceFile> files) : files_(std::move(files)) {}

  /// Every file under `root` except build folders and what begins with a dot (`.ci` and dot files at the root are
  /// read). Throws std::filesystem::filesystem_error when a folder cannot be read.
  static SourceTree read(const std::filesystem::path& root);

  void add(std::string path, std::string_view text);

  const std::vector<SourceFile>& files() const { return files_; }
  /// Whether a file, or a folder with a file in it, stands at this path; a slash at its end is passed over.
  bool contains(std::string_view path) const;

 private:
  std::vector<SourceFile> files_;
};

/// "h" of "src/a/B.h"; empty without one.
std::string_view extensionOf(std::string_view path);
/// "B.h" of "src/a/B.h".
std::string_view nameOf(std::string_view path);
/// "src/a" of "src/a/B.h"; empty for a file at the root.
std::string_view folderOf(std::string_view path);

}  // namespace pillora::house

// SPDX-License-Identifier: MIT
#include "house/SourceTree.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>

namespace pillora::house {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 12> kTextExtensions = {"cpp", "h",    "qml", "cmake", "txt",  "md",
                                                              "sh",  "json", "yml", "in",    "toml", "svg"};

bool isText(std::string_view path) {
  const std::string_view extension = extensionOf(path);
  if (path.starts_with("tests/data/")) return false;
  if (extension.empty()) return !nameOf(path).starts_with("LICENSE") && !path.starts_with("fuzz/corpus/");
  return std::ranges::find(kTextExtensions, extension) != kTextExtensions.end() || nameOf(path).starts_with('.');
}

bool isForeignFolder(const fs::path& folder) {
  const std::string name = folder.filename();
  return (name.starts_with('.') && name != ".ci") || name == "build" || fs::exists(folder / "CMakeCache.txt");
}

}  // namespace

SourceTree SourceTree::read(const fs::path& root) {
  SourceTree tree;
  for (auto entry = fs::recursive_directory_iterator(root); entry != fs::recursive_directory_iterator(); ++entry) {
    if (entry->is_directory() && isForeignFolder(entry->path())) entry.disable_recursion_pending();
    // In a second worktree of a clone .git is a file.
    if (!entry->is_regular_file() || entry->path().filename() == ".git") continue;
    const std::string path = fs::relative(entry->path(), root);
    std::ostringstream text;
    if (isText(path)) text << std::ifstream(entry->path(), std::ios::binary).rdbuf();
    tree.add(path, text.str());
  }
  std::ranges::sort(tree.files_, {}, &SourceFile::path);
  return tree;
}

void SourceTree::add(std::string path, std::string_view text) {
  SourceFile file{std::move(path), {}};
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    file.lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  files_.push_back(std::move(file));
}

bool SourceTree::contains(std::string_view path) const {
  while (path.ends_with('/')) path.remove_suffix(1);
  return std::ranges::any_of(files_, [&](const SourceFile& file) {
    return file.path.starts_with(path) && (file.path.size() == path.size() || file.path[path.size()] == '/');
  });
}

std::string_view nameOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

std::string_view folderOf(std::string_view path) {
  const size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

std::string_view extensionOf(std::string_view path) {
  const std::string_view name = nameOf(path);
  const size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

}  // namespace pillora::house

// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/Clock.h"
#include "platform/FileManager.h"

namespace pillora {

/// Folders and files in memory that work like real ones. A file is born when it is first written, at the clock's now.
/// Whatever stands in `failures` for an operation's name is that operation's answer from then on; a failing write
/// leaves the first half of the file.
class InMemoryFileManager final : public FileManager {
 public:
  struct File {
    std::string contents;
    std::optional<Instant> creationDate;
    std::optional<int64_t> size;
  };

  explicit InMemoryFileManager(const Clock& clock) : clock_(clock) {}

  std::optional<std::string> documents = "/documents";
  std::optional<std::string> cloud = "/cloud";
  std::map<std::string, std::string> failures;
  std::map<std::string, File> files;
  std::set<std::string> folders;

  std::optional<std::string> documentDirectory() override { return documents; }
  std::optional<std::string> ubiquityContainer() override { return cloud; }

  Result<void> createDirectory(const std::string& path) override {
    if (auto failure = failureOf("createDirectory")) return *failure;
    for (std::filesystem::path folder = path; folder != folder.root_path(); folder = folder.parent_path()) {
      folders.insert(folder.string());
    }
    return {};
  }
  bool fileExists(const std::string& path) override { return folders.contains(path) || files.contains(path); }

  Result<std::vector<std::string>> contentsOfDirectory(const std::string& path) override {
    if (auto failure = failureOf("contentsOfDirectory")) return *failure;
    std::vector<std::string> paths;
    const auto add = [&](const std::filesystem::path& entry) {
      if (entry.parent_path() == path && entry.filename().string().front() != '.') paths.push_back(entry.string());
    };
    for (const auto& [name, file] : files) add(name);
    for (const auto& name : folders) add(name);
    return paths;
  }

  Result<FileAttributes> attributesOfItem(const std::string& path) override {
    if (auto failure = failureOf("attributesOfItem")) return *failure;
    const auto file = files.find(path);
    if (file != files.end()) return FileAttributes{file->second.creationDate, file->second.size};
    if (folders.contains(path)) return FileAttributes{};
    return Error{"no such file: " + path};
  }

  Result<void> write(const std::string& path, std::string_view contents) override {
    const auto failure = failureOf("write");
    if (failure) contents = contents.substr(0, contents.size() / 2);
    const auto [file, isNew] = files.try_emplace(path);
    if (isNew) file->second.creationDate = clock_.now();
    file->second.contents = contents;
    file->second.size = static_cast<int64_t>(contents.size());
    return failure ? Result<void>(*failure) : Result<void>();
  }

  Result<std::string> contents(const std::string& path) override {
    if (auto failure = failureOf("contents")) return *failure;
    const auto file = files.find(path);
    if (file == files.end()) return Error{"no such file: " + path};
    return file->second.contents;
  }

  Result<void> removeItem(const std::string& path) override {
    if (auto failure = failureOf("removeItem")) return *failure;
    return files.erase(path) == 1 ? Result<void>() : Error{"no such file: " + path};
  }

 private:
  std::optional<Error> failureOf(const std::string& operation) const {
    const auto failure = failures.find(operation);
    return failure == failures.end() ? std::nullopt : std::optional(Error{failure->second});
  }

  const Clock& clock_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "platform/FileManager.h"

namespace pillora {

/// The system's files. Folders are made and files written for their owner alone.
class PosixFileManager final : public FileManager {
 public:
  /// Says where a folder is, asked anew every time; nothing when there is none.
  using Place = std::function<std::optional<std::string>()>;

  /// For the user's own folders: documentsFolder() and cloudFolder().
  PosixFileManager(Place documents, Place cloud);

  std::optional<std::string> documentDirectory() override { return documents_(); }
  std::optional<std::string> ubiquityContainer() override { return cloud_(); }
  Result<void> createDirectory(const std::string& path) override;
  bool fileExists(const std::string& path) override;
  Result<std::vector<std::string>> contentsOfDirectory(const std::string& path) override;
  Result<FileAttributes> attributesOfItem(const std::string& path) override;
  /// What this has written survives a power cut: it is on the disk when it returns.
  Result<void> write(const std::string& path, std::string_view contents) override;
  Result<std::string> contents(const std::string& path) override;
  Result<void> removeItem(const std::string& path) override;

 private:
  Place documents_, cloud_;
};

/// What FileManager::contents() does, for files of the system's own.
Result<std::string> readRegularFile(const std::string& path);

}  // namespace pillora

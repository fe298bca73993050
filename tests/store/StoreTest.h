// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

#include "doubles/Instants.h"
#include "linux/QueuedMainExecutor.h"
#include "store/ModelContainer.h"

namespace pillora {

/// A folder of its own, gone with the object.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "pillora-store-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    path_ = name;
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string file(const std::string& name) const { return (path_ / name).string(); }
  const std::filesystem::path& path() const { return path_; }

  /// Every file with its bytes.
  std::map<std::string, std::string> contents() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      if (!entry.is_regular_file()) continue;
      std::ifstream in(entry.path(), std::ios::binary);
      files[entry.path().filename().string()] = {std::istreambuf_iterator<char>(in), {}};
    }
    return files;
  }

 private:
  std::filesystem::path path_;
};

inline const Instant kMorning = at("2025-01-10T08:00:00Z");

inline std::shared_ptr<Medicine> makeMedicine(const std::string& name) {
  NewMedicine values;
  values.name = name;
  values.interval = fallbackInterval();
  values.startDate = at("2025-01-01T00:00:00Z");
  return Medicine::make(std::move(values), at("2025-01-01T09:30:00Z"));
}

inline std::shared_ptr<DoseLog> makeTaken(const std::shared_ptr<Medicine>& medicine, Instant scheduled = kMorning) {
  return DoseLog::make(scheduled, scheduled, DoseStatus::taken, 0, {}, medicine);
}

/// Tests of a store in a file or in memory. drain() of the queue ends a turn.
class StoreTest : public ::testing::Test {
 protected:
  std::unique_ptr<ModelContainer> open(const std::string& path) {
    auto opened = ModelContainer::open({.path = path}, queue_);
    EXPECT_TRUE(opened) << (opened ? "" : opened.error().description);
    return opened ? *std::move(opened) : nullptr;
  }
  std::unique_ptr<ModelContainer> openInMemory() {
    auto opened = ModelContainer::open({.isStoredInMemoryOnly = true}, queue_);
    EXPECT_TRUE(opened) << (opened ? "" : opened.error().description);
    return opened ? *std::move(opened) : nullptr;
  }
  std::string store() const { return folder_.file("Pillora.store"); }

  template <typename T>
  static std::vector<std::shared_ptr<T>> all(ModelContext& context) {
    auto found = context.fetch<T>();
    EXPECT_TRUE(found) << (found ? "" : found.error().description);
    return found ? *std::move(found) : std::vector<std::shared_ptr<T>>();
  }
  static std::vector<std::string> namesOf(const std::vector<std::shared_ptr<Medicine>>& medicines) {
    std::vector<std::string> names;
    for (const auto& medicine : medicines) names.push_back(medicine->name());
    return names;
  }

  TemporaryFolder folder_;
  QueuedMainExecutor queue_;
};

using Names = std::vector<std::string>;

}  // namespace pillora

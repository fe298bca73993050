// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "doubles/Instants.h"
#include "doubles/TemporaryFolder.h"
#include "linux/QueuedMainExecutor.h"
#include "store/ModelContainer.h"

namespace pillora {

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

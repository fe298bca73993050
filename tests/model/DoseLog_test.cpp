// SPDX-License-Identifier: MIT
#include "model/DoseLog.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "model/Medicine.h"

namespace pillora {
namespace {

const Instant kEight = at("2025-01-10T08:00:00Z");

std::shared_ptr<Medicine> aspirin() {
  NewMedicine values;
  values.name = "Aspirin";
  return Medicine::make(values, at("2025-01-10T07:00:00Z"));
}

TEST(DoseStatus, hasFiveCasesInOrder) {
  std::vector<std::string_view> texts;
  for (const auto status : kAllDoseStatuses) {
    texts.push_back(rawValue(status));
    EXPECT_EQ(doseStatus(rawValue(status)), status);
  }
  EXPECT_EQ(texts, (std::vector<std::string_view>{"Taken", "Missed", "Skipped", "Snoozed", "Pending"}));
}

TEST(DoseStatus, aTextThatMatchesNothingIsPending) {
  for (const char* text : {"", "taken", "TAKEN", "Taken ", "Forgotten"}) {
    EXPECT_EQ(doseStatus(text), DoseStatus::pending) << text;
  }
}

TEST(DoseLog, aFreshOneIsPendingAndEmpty) {
  const auto log = DoseLog::make(kEight);
  EXPECT_NE(log->id(), UUID());
  EXPECT_EQ(log->scheduledTime(), kEight);
  EXPECT_FALSE(log->actionTime());
  EXPECT_EQ(log->statusRaw(), "Pending");
  EXPECT_EQ(log->status(), DoseStatus::pending);
  EXPECT_EQ(log->snoozeCount(), 0);
  EXPECT_EQ(log->notes(), "");
  EXPECT_FALSE(log->medicineId());
  EXPECT_EQ(log->medicine(), nullptr);
  EXPECT_FALSE(log->isDeleted());
  EXPECT_NE(DoseLog::make(kEight)->id(), log->id());
}

TEST(DoseLog, keepsWhatItIsGiven) {
  const auto log = DoseLog::make(kEight, at("2025-01-10T08:05:00Z"), DoseStatus::skipped, -3, "with water");
  EXPECT_EQ(log->actionTime(), at("2025-01-10T08:05:00Z"));
  EXPECT_EQ(log->statusRaw(), "Skipped");
  EXPECT_EQ(log->snoozeCount(), -3);
  EXPECT_EQ(log->notes(), "with water");
}

TEST(DoseLog, aStoredStatusTextIsNotRewrittenByReading) {
  const auto log = DoseLog::make(kEight);
  log->statusRaw = "Forgotten";
  EXPECT_EQ(log->status(), DoseStatus::pending);
  EXPECT_EQ(log->statusRaw(), "Forgotten");
}

TEST(DoseLog, belongsToItsMedicineFromBothSides) {
  const auto medicine = aspirin();
  const auto log = DoseLog::make(kEight, std::nullopt, DoseStatus::taken, 0, "", medicine);
  EXPECT_EQ(log->medicine(), medicine);
  EXPECT_EQ(log->medicineId(), medicine->id());
  EXPECT_EQ(medicine->doseLogs(), std::vector{log});
}

TEST(DoseLog, appendedTwiceIsListedOnceInItsPlace) {
  const auto medicine = aspirin();
  const auto first = DoseLog::make(kEight, std::nullopt, DoseStatus::taken, 0, "", medicine);
  const auto second = DoseLog::make(kEight, std::nullopt, DoseStatus::missed, 0, "", medicine);
  medicine->appendDoseLog(first);
  medicine->appendDoseLog(second);
  EXPECT_EQ(medicine->doseLogs(), (std::vector{first, second}));
}

TEST(DoseLog, removedBelongsToNone) {
  const auto medicine = aspirin();
  const auto log = DoseLog::make(kEight, std::nullopt, DoseStatus::taken, 0, "", medicine);
  medicine->removeDoseLog(log);
  EXPECT_TRUE(medicine->doseLogs().empty());
  EXPECT_FALSE(log->medicineId());
  EXPECT_EQ(log->medicine(), nullptr);
  medicine->removeDoseLog(log);
  EXPECT_TRUE(medicine->doseLogs().empty());
}

TEST(DoseLog, belongsToAtMostOneMedicine) {
  const auto former = aspirin();
  const auto latter = aspirin();
  const auto log = DoseLog::make(kEight, std::nullopt, DoseStatus::taken, 0, "", former);
  latter->appendDoseLog(log);
  EXPECT_EQ(log->medicine(), latter);
  EXPECT_TRUE(former->doseLogs().empty());
  EXPECT_EQ(latter->doseLogs(), std::vector{log});
  former->removeDoseLog(log);
  EXPECT_EQ(log->medicine(), latter);
}

TEST(DoseLog, outlivesItsMedicine) {
  auto medicine = aspirin();
  const auto log = DoseLog::make(kEight, std::nullopt, DoseStatus::taken, 0, "", medicine);
  medicine.reset();
  EXPECT_EQ(log->medicine(), nullptr);
}

TEST(DoseLog, listsItsFieldsInOrder) {
  std::vector<std::string_view> names;
  forEachField<DoseLog>([&](std::string_view name, auto) { names.push_back(name); });
  EXPECT_EQ(names, (std::vector<std::string_view>{"id", "scheduledTime", "actionTime", "statusRaw", "snoozeCount",
                                                  "notes", "medicine"}));
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "store/ModelContext.h"

#include <gtest/gtest.h>

#include "StoreTest.h"

namespace pillora {
namespace {

class ModelContextTest : public StoreTest {
 protected:
  std::unique_ptr<ModelContainer> container_ = openInMemory();
  ModelContext& context_ = container_->mainContext();
};

// Identity

TEST_F(ModelContextTest, everyFetchReturnsTheSameObjectWhileSomebodyHoldsIt) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  queue_.drain();
  EXPECT_EQ(all<Medicine>(context_).front(), medicine);
  EXPECT_EQ(context_.find<Medicine>(medicine->id()), medicine);
}

TEST_F(ModelContextTest, aRecordThatNobodyHoldsIsReadAgainWithAllItsFields) {
  auto medicine = makeMedicine("Aspirin");
  medicine->endDate = at("2025-02-01T00:00:00.25Z");
  medicine->isActive = false;
  medicine->instructions = "with\nwater; it's \"fine\" \xF0\x9F\x92\x8A";
  const UUID id = medicine->id();
  const std::string interval = medicine->intervalData();
  context_.insert(medicine);
  queue_.drain();
  medicine.reset();

  const auto read = context_.find<Medicine>(id);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->id(), id);
  EXPECT_EQ(read->name(), "Aspirin");
  EXPECT_EQ(read->instructions(), "with\nwater; it's \"fine\" \xF0\x9F\x92\x8A");
  EXPECT_EQ(read->intervalData(), interval);
  EXPECT_FALSE(read->isActive());
  EXPECT_TRUE(read->allowSnooze());
  EXPECT_EQ(read->snoozeDurationMinutes(), 10);
  EXPECT_EQ(read->createdAt(), at("2025-01-01T09:30:00Z"));
  EXPECT_EQ(read->endDate(), at("2025-02-01T00:00:00.25Z"));
}

TEST_F(ModelContextTest, absentValuesAndExtremeInstantsComeBackAsTheyWere) {
  auto log = DoseLog::make(Instant::distantPast(), std::nullopt, DoseStatus::pending, INT64_MAX);
  const UUID id = log->id();
  context_.insert(log);
  queue_.drain();
  log.reset();
  log = context_.find<DoseLog>(id);
  ASSERT_TRUE(log);
  EXPECT_EQ(log->scheduledTime(), Instant::distantPast());
  EXPECT_EQ(log->actionTime(), std::nullopt);
  EXPECT_EQ(log->snoozeCount(), INT64_MAX);
  EXPECT_EQ(log->medicineId(), std::nullopt);
  EXPECT_EQ(log->medicine(), nullptr);
}

TEST_F(ModelContextTest, findReturnsNullForAnUnknownIdentifier) {
  EXPECT_EQ(context_.find<Medicine>(UUID::random()), nullptr);
  EXPECT_EQ(context_.takeReadError(), std::nullopt);
}

TEST_F(ModelContextTest, aRecordInsertedTwiceIsThereOnce) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  context_.insert(medicine);
  queue_.drain();
  context_.insert(medicine);
  EXPECT_EQ(all<Medicine>(context_).size(), 1U);
}

TEST_F(ModelContextTest, aSecondObjectWithTheIdentityOfAHeldRecordIsNotInserted) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  const auto impostor = makeMedicine("Ibuprofen");
  impostor->id = medicine->id();
  context_.insert(impostor);
  queue_.drain();
  EXPECT_EQ(namesOf(all<Medicine>(context_)), Names{"Aspirin"});
}

TEST_F(ModelContextTest, recordsThatOutliveTheStoreKeepTheirValues) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  container_.reset();
  medicine->name = "Ibuprofen";
  EXPECT_EQ(medicine->name(), "Ibuprofen");
  queue_.drain();
}

TEST_F(ModelContextTest, manyDroppedRecordsAreForgottenAndReadAgain) {
  for (int i = 0; i < 5000; ++i) context_.insert(makeTaken(nullptr, kMorning + std::chrono::minutes(i)));
  queue_.drain();
  EXPECT_EQ(all<DoseLog>(context_).size(), 5000U);
  EXPECT_EQ(all<DoseLog>(context_).size(), 5000U);
}

// Change notification and the turn

TEST_F(ModelContextTest, observersAreCalledOnceAtTheEndOfATurnWithChanges) {
  int calls = 0;
  const auto handle = context_.observe([&] { ++calls; });
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  medicine->name = "Ibuprofen";
  medicine->dosage = "2";
  EXPECT_EQ(calls, 0);
  queue_.drain();
  EXPECT_EQ(calls, 1);
  queue_.drain();
  EXPECT_EQ(calls, 1);
  medicine->dosage = "3";
  queue_.drain();
  EXPECT_EQ(calls, 2);
}

TEST_F(ModelContextTest, aTurnWithoutChangesCallsNobody) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  queue_.drain();
  int calls = 0;
  const auto handle = context_.observe([&] { ++calls; });
  const uint64_t before = context_.changeCount();
  medicine->name = medicine->name();
  EXPECT_TRUE(context_.beginWriting());
  all<Medicine>(context_);
  queue_.drain();
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(context_.changeCount(), before);
}

TEST_F(ModelContextTest, anObserverIsCalledUntilItsHandleIsGone) {
  int calls = 0;
  auto handle = context_.observe([&] { ++calls; });
  handle.reset();
  context_.insert(makeMedicine("Aspirin"));
  queue_.drain();
  EXPECT_EQ(calls, 0);
}

TEST_F(ModelContextTest, anObserverMayDropAnotherOneAndChangeRecords) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  queue_.drain();
  int calls = 0;
  std::shared_ptr<void> second;
  const auto first = context_.observe([&] {
    second.reset();
    if (++calls == 1) medicine->unit = "drop";
  });
  second = context_.observe([&] { ADD_FAILURE() << "was dropped"; });
  medicine->name = "Ibuprofen";
  queue_.drain();
  EXPECT_EQ(calls, 2);
  EXPECT_FALSE(context_.hasChanges());
}

TEST_F(ModelContextTest, observersFindTheTurnSaved) {
  bool hadChanges = true;
  const auto handle = context_.observe([&] { hadChanges = context_.hasChanges(); });
  context_.insert(makeMedicine("Aspirin"));
  EXPECT_TRUE(context_.hasChanges());
  queue_.drain();
  EXPECT_FALSE(hadChanges);
}

TEST_F(ModelContextTest, aPostedTurnEndAfterTheStoreIsGoneDoesNothing) {
  context_.insert(makeMedicine("Aspirin"));
  container_.reset();
  queue_.drain();
}

TEST_F(ModelContextTest, explicitSaveWithoutChangesSucceeds) {
  EXPECT_TRUE(context_.save());
  EXPECT_FALSE(context_.hasChanges());
}

// Live queries

TEST_F(ModelContextTest, aLiveQuerySeesChangesOfTheTurnAtOnce) {
  const LiveQuery<Medicine> active(context_,
                                   FetchDescriptor<Medicine>().where(&Medicine::isActive, Comparison::equal, true));
  EXPECT_TRUE(active.records().empty());
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  EXPECT_EQ(active.records().size(), 1U);
  medicine->isActive = false;
  EXPECT_TRUE(active.records().empty());
  medicine->isActive = true;
  EXPECT_EQ(active.records().size(), 1U);
  context_.delete_(medicine);
  EXPECT_TRUE(active.records().empty());
}

// Deleting

TEST_F(ModelContextTest, deletingAMedicineDeletesItsLogsAndNoOthers) {
  const auto aspirin = makeMedicine("Aspirin");
  const auto ibuprofen = makeMedicine("Ibuprofen");
  context_.insert(aspirin);
  context_.insert(ibuprofen);
  const auto held = makeTaken(aspirin);
  const auto other = makeTaken(ibuprofen);
  context_.insert(held);
  context_.insert(other);
  context_.insert(makeTaken(aspirin, kMorning + std::chrono::hours(1)));
  queue_.drain();

  context_.delete_(aspirin);
  EXPECT_TRUE(aspirin->isDeleted());
  EXPECT_TRUE(held->isDeleted());
  EXPECT_FALSE(other->isDeleted());
  EXPECT_EQ(all<DoseLog>(context_), std::vector{other});
  queue_.drain();
  EXPECT_EQ(all<DoseLog>(context_), std::vector{other});
  EXPECT_EQ(context_.find<DoseLog>(held->id()), nullptr);
}

TEST_F(ModelContextTest, aPendingInsertThatIsDeletedAgainDisappears) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  context_.insert(makeTaken(medicine));
  context_.delete_(medicine);
  EXPECT_FALSE(context_.hasChanges());
  EXPECT_TRUE(all<Medicine>(context_).empty());
  EXPECT_TRUE(all<DoseLog>(context_).empty());
}

TEST_F(ModelContextTest, aWrittenInsertThatIsDeletedInTheSameTurnDisappears) {
  const auto log = makeTaken(nullptr);
  context_.insert(log);
  EXPECT_EQ(all<DoseLog>(context_).size(), 1U);
  log->notes = "by mistake";
  context_.delete_(log);
  EXPECT_TRUE(all<DoseLog>(context_).empty());
  queue_.drain();
  EXPECT_TRUE(all<DoseLog>(context_).empty());
}

TEST_F(ModelContextTest, aDeletedRecordStaysGoneWhateverIsDoneWithIt) {
  const auto log = makeTaken(nullptr);
  context_.insert(log);
  queue_.drain();
  context_.delete_(log);
  queue_.drain();
  const uint64_t before = context_.changeCount();
  context_.delete_(log);
  log->notes = "late";
  EXPECT_EQ(context_.changeCount(), before);
  context_.insert(log);
  queue_.drain();
  EXPECT_EQ(log->notes(), "late");
  EXPECT_TRUE(all<DoseLog>(context_).empty());
}

TEST_F(ModelContextTest, deletingARecordThatWasNeverInsertedDoesNothing) {
  const auto medicine = makeMedicine("Aspirin");
  context_.delete_(medicine);
  EXPECT_FALSE(medicine->isDeleted());
  EXPECT_FALSE(context_.hasChanges());
}

// The relationship

TEST_F(ModelContextTest, insertingAMedicineInsertsTheLogsItAlreadyHas) {
  const auto medicine = makeMedicine("Aspirin");
  const auto log = makeTaken(medicine);
  context_.insert(medicine);
  queue_.drain();
  EXPECT_EQ(all<DoseLog>(context_), std::vector{log});
  EXPECT_EQ(medicine->doseLogs(), std::vector{log});
  EXPECT_EQ(log->medicine(), medicine);
}

TEST_F(ModelContextTest, insertingALogInsertsTheMedicineItBelongsTo) {
  const auto medicine = makeMedicine("Aspirin");
  const auto log = makeTaken(medicine);
  context_.insert(log);
  queue_.drain();
  EXPECT_EQ(all<Medicine>(context_), std::vector{medicine});
  EXPECT_EQ(medicine->doseLogs(), std::vector{log});
}

TEST_F(ModelContextTest, aLogAppendedTwiceIsInItsMedicinesLogsOnce) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  const auto log = makeTaken(medicine);
  medicine->appendDoseLog(log);
  EXPECT_EQ(medicine->doseLogs(), std::vector{log});
  context_.insert(log);
  medicine->appendDoseLog(log);
  EXPECT_EQ(medicine->doseLogs(), std::vector{log});
  queue_.drain();
  medicine->appendDoseLog(log);
  EXPECT_EQ(medicine->doseLogs(), std::vector{log});
}

TEST_F(ModelContextTest, undoTakesALogOutOfItsMedicineAndDeletesIt) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  const auto log = makeTaken(medicine);
  context_.insert(log);
  queue_.drain();
  medicine->removeDoseLog(log);
  EXPECT_TRUE(medicine->doseLogs().empty());
  EXPECT_EQ(all<DoseLog>(context_), std::vector{log});
  context_.delete_(log);
  queue_.drain();
  EXPECT_TRUE(all<DoseLog>(context_).empty());
}

TEST_F(ModelContextTest, aLogMovedOutSurvivesTheDeletionOfItsFormerMedicine) {
  const auto aspirin = makeMedicine("Aspirin");
  const auto ibuprofen = makeMedicine("Ibuprofen");
  context_.insert(aspirin);
  const auto freed = makeTaken(aspirin);
  const auto moved = makeTaken(aspirin);
  context_.insert(freed);
  context_.insert(moved);
  queue_.drain();
  aspirin->removeDoseLog(freed);
  context_.insert(ibuprofen);
  ibuprofen->appendDoseLog(moved);
  context_.delete_(aspirin);
  queue_.drain();
  EXPECT_EQ(all<DoseLog>(context_), (std::vector{freed, moved}));
  EXPECT_EQ(freed->medicine(), nullptr);
  EXPECT_EQ(moved->medicine(), ibuprofen);
}

TEST_F(ModelContextTest, aLogMovedToAMedicineThatIsThenDeletedIsDeletedToo) {
  const auto aspirin = makeMedicine("Aspirin");
  const auto ibuprofen = makeMedicine("Ibuprofen");
  context_.insert(aspirin);
  context_.insert(ibuprofen);
  const auto log = makeTaken(aspirin);
  context_.insert(log);
  queue_.drain();
  ibuprofen->appendDoseLog(log);
  context_.delete_(ibuprofen);
  queue_.drain();
  EXPECT_TRUE(log->isDeleted());
  EXPECT_TRUE(all<DoseLog>(context_).empty());
}

TEST_F(ModelContextTest, aLogForADeletedMedicineIsDropped) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  queue_.drain();
  context_.delete_(medicine);
  const auto log = makeTaken(medicine);
  context_.insert(log);
  queue_.drain();
  EXPECT_TRUE(log->isDeleted());
  EXPECT_FALSE(context_.hasChanges());
  EXPECT_TRUE(all<DoseLog>(context_).empty());
}

TEST_F(ModelContextTest, logsAreReadByWindowInTheOrderOfTheirInsertion) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  const auto second = makeTaken(medicine, kMorning + std::chrono::hours(2));
  const auto first = makeTaken(medicine, kMorning + std::chrono::hours(1));
  const auto missed =
      DoseLog::make(kMorning + std::chrono::hours(3), std::nullopt, DoseStatus::missed, 0, {}, medicine);
  for (const auto& log : {second, first, missed}) context_.insert(log);

  EXPECT_EQ(medicine->doseLogs(), (std::vector{second, first, missed}));
  EXPECT_EQ(medicine->doseLogs(first->scheduledTime(), second->scheduledTime()), std::vector{first});
  EXPECT_EQ(medicine->loggedTimes(kMorning, kMorning + std::chrono::hours(24)),
            (std::vector{first->scheduledTime(), second->scheduledTime(), missed->scheduledTime()}));
  EXPECT_EQ(medicine->actedOnTimes(kMorning, kMorning + std::chrono::hours(24)),
            (std::vector{first->scheduledTime(), second->scheduledTime()}));
  EXPECT_TRUE(medicine->doseLogs(second->scheduledTime(), first->scheduledTime()).empty());
}

TEST_F(ModelContextTest, skippedCountsAsActedOnPendingSnoozedAndUnknownDoNot) {
  const auto medicine = makeMedicine("Aspirin");
  context_.insert(medicine);
  for (const DoseStatus status : kAllDoseStatuses) {
    context_.insert(DoseLog::make(kMorning, kMorning, status, 0, {}, medicine));
  }
  const auto odd = makeTaken(medicine);
  odd->statusRaw = "taken";
  context_.insert(odd);
  EXPECT_EQ(medicine->actedOnTimes(kMorning, kMorning + std::chrono::minutes(1)), (std::vector{kMorning, kMorning}));
  EXPECT_EQ(medicine->loggedTimes(kMorning, kMorning + std::chrono::minutes(1)).size(), 6U);
}

}  // namespace
}  // namespace pillora

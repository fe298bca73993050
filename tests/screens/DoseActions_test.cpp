// SPDX-License-Identifier: MIT
#include "screens/DoseActions.h"

#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include "doubles/FailingVfs.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kDue = at("2025-01-10T08:00:00-05:00");
const Instant kNow = at("2025-01-10T08:05:00-05:00");

class DoseActions : public testing::Test {
 protected:
  std::vector<std::shared_ptr<DoseLog>> logs() { return *fixture_.context().fetch<DoseLog>(); }

  ScreenFixture fixture_{kNow};
  std::shared_ptr<Medicine> medicine_ = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}, {20, 0}})));
};

TEST_F(DoseActions, takingLogsTheDoseAsTakenNow) {
  const auto id = takeDose(fixture_.environment(), medicine_->id(), kDue);
  ASSERT_TRUE(id && *id);
  ASSERT_EQ(logs().size(), 1U);
  const DoseLog& log = *logs().front();
  EXPECT_EQ(log.id(), **id);
  EXPECT_EQ(log.scheduledTime(), kDue);
  EXPECT_EQ(log.actionTime(), kNow);
  EXPECT_EQ(log.statusRaw(), "Taken");
  EXPECT_EQ(log.snoozeCount(), 0);
  EXPECT_EQ(log.notes(), "");
  EXPECT_EQ(log.medicine(), medicine_);
  EXPECT_EQ(medicine_->doseLogs().size(), 1U);
}

TEST_F(DoseActions, skippingLogsTheDoseAsSkippedNow) {
  const auto id = skipDose(fixture_.environment(), medicine_->id(), kDue);
  ASSERT_TRUE(id && *id);
  ASSERT_EQ(logs().size(), 1U);
  EXPECT_EQ(logs().front()->statusRaw(), "Skipped");
  EXPECT_EQ(logs().front()->actionTime(), kNow);
}

TEST_F(DoseActions, theLogIsSavedAtTheEndOfTheTurn) {
  ASSERT_TRUE(takeDose(fixture_.environment(), medicine_->id(), kDue));
  EXPECT_TRUE(fixture_.context().hasChanges());
  fixture_.endTurn();
  EXPECT_FALSE(fixture_.context().hasChanges());
  EXPECT_EQ(logs().size(), 1U);
}

TEST_F(DoseActions, takingTheSameDoseTwiceLogsItOnce) {
  ASSERT_TRUE(*takeDose(fixture_.environment(), medicine_->id(), kDue));
  const auto again = takeDose(fixture_.environment(), medicine_->id(), kDue);
  ASSERT_TRUE(again);
  EXPECT_FALSE(*again);
  fixture_.endTurn();
  EXPECT_FALSE(*takeDose(fixture_.environment(), medicine_->id(), kDue));
  EXPECT_FALSE(*skipDose(fixture_.environment(), medicine_->id(), kDue));
  EXPECT_EQ(logs().size(), 1U);
}

TEST_F(DoseActions, aDoseIsDoneForItsWholeMinute) {
  ASSERT_TRUE(*takeDose(fixture_.environment(), medicine_->id(), kDue + 40s));
  EXPECT_FALSE(*takeDose(fixture_.environment(), medicine_->id(), kDue));
  EXPECT_TRUE(*takeDose(fixture_.environment(), medicine_->id(), kDue + 60s));
  EXPECT_EQ(logs().size(), 2U);
}

TEST_F(DoseActions, aSkippedDoseCannotBeTakenToo) {
  ASSERT_TRUE(*skipDose(fixture_.environment(), medicine_->id(), kDue));
  EXPECT_FALSE(*takeDose(fixture_.environment(), medicine_->id(), kDue));
}

TEST_F(DoseActions, aMissedSnoozedOrPendingLogDoesNotStopTheTakeAndStaysAsItIs) {
  for (const DoseStatus status : {DoseStatus::missed, DoseStatus::snoozed, DoseStatus::pending}) {
    const auto medicine = fixture_.add(medicineNamed("Ibuprofen", daily({{8, 0}})));
    const auto former = fixture_.log(medicine, kDue, status);
    EXPECT_TRUE(*takeDose(fixture_.environment(), medicine->id(), kDue)) << rawValue(status);
    EXPECT_EQ(former->status(), status);
    EXPECT_EQ(medicine->doseLogs().size(), 2U);
  }
}

TEST_F(DoseActions, theDoseOfAnotherMedicineIsNotDone) {
  const auto other = fixture_.add(medicineNamed("Ibuprofen", daily({{8, 0}})));
  ASSERT_TRUE(*takeDose(fixture_.environment(), medicine_->id(), kDue));
  EXPECT_TRUE(*takeDose(fixture_.environment(), other->id(), kDue));
}

TEST_F(DoseActions, aMedicineThatIsGoneIsNeitherTakenNorSkipped) {
  fixture_.context().delete_(medicine_);
  fixture_.endTurn();
  for (const auto& result : {takeDose(fixture_.environment(), medicine_->id(), kDue),
                             skipDose(fixture_.environment(), medicine_->id(), kDue)}) {
    ASSERT_TRUE(result);
    EXPECT_FALSE(*result);
  }
  EXPECT_TRUE(logs().empty());
}

TEST_F(DoseActions, undoTakesTheLogBackAndTheDoseIsOpenAgain) {
  const auto id = **takeDose(fixture_.environment(), medicine_->id(), kDue);
  fixture_.endTurn();
  const auto log = logs().front();
  ASSERT_TRUE(undoLog(fixture_.environment(), id));
  EXPECT_TRUE(log->isDeleted());
  EXPECT_EQ(log->medicine(), nullptr);
  EXPECT_TRUE(logs().empty());
  EXPECT_TRUE(medicine_->doseLogs().empty());
  EXPECT_FALSE(isDoseDone(*medicine_, kDue, *fixture_.calendar));
  fixture_.endTurn();
  EXPECT_TRUE(logs().empty());
  EXPECT_TRUE(*takeDose(fixture_.environment(), medicine_->id(), kDue));
}

TEST_F(DoseActions, undoInTheTurnOfTheTakeLeavesNothing) {
  const auto id = **takeDose(fixture_.environment(), medicine_->id(), kDue);
  ASSERT_TRUE(undoLog(fixture_.environment(), id));
  fixture_.endTurn();
  EXPECT_TRUE(logs().empty());
}

TEST_F(DoseActions, undoOfALogWithoutAMedicineDeletesIt) {
  const auto log = fixture_.log(nullptr, kDue, DoseStatus::taken);
  ASSERT_TRUE(undoLog(fixture_.environment(), log->id()));
  EXPECT_TRUE(logs().empty());
}

TEST_F(DoseActions, undoOfALogThatIsGoneDoesNothing) {
  const auto kept = **takeDose(fixture_.environment(), medicine_->id(), kDue);
  EXPECT_TRUE(undoLog(fixture_.environment(), UUID::random()));
  ASSERT_EQ(logs().size(), 1U);
  EXPECT_EQ(logs().front()->id(), kept);
}

/// Two processes on one store file.
class DoseActionsOfTwoProcesses : public testing::Test {
 protected:
  TemporaryFolder folder_;
  ScreenFixture here_{kNow, {}, {.path = folder_.path() + "/Pillora.store"}};
  ScreenFixture there_{kNow, {}, {.path = folder_.path() + "/Pillora.store"}};
};

TEST_F(DoseActionsOfTwoProcesses, aDoseThatTheOtherTookIsNotTakenAgain) {
  const UUID medicine = here_.add(medicineNamed("Aspirin", daily({{8, 0}})))->id();
  here_.endTurn();
  ASSERT_TRUE(*takeDose(there_.environment(), medicine, kDue));
  there_.endTurn();
  EXPECT_FALSE(*takeDose(here_.environment(), medicine, kDue));
  here_.endTurn();
  EXPECT_EQ(*here_.context().fetchCount<DoseLog>(), 1);
}

TEST_F(DoseActionsOfTwoProcesses, aMedicineThatTheOtherDeletedIsNotTaken) {
  const auto medicine = here_.add(medicineNamed("Aspirin", daily({{8, 0}})));
  here_.endTurn();
  there_.context().delete_(there_.context().find<Medicine>(medicine->id()));
  there_.endTurn();
  EXPECT_FALSE(*takeDose(here_.environment(), medicine->id(), kDue));
  here_.endTurn();
  EXPECT_EQ(*there_.context().fetchCount<DoseLog>(), 0);
}

TEST_F(DoseActionsOfTwoProcesses, aLogThatTheOtherUndidIsUndoneOnce) {
  const UUID medicine = here_.add(medicineNamed("Aspirin", daily({{8, 0}})))->id();
  const UUID log = **takeDose(here_.environment(), medicine, kDue);
  here_.endTurn();
  ASSERT_TRUE(undoLog(there_.environment(), log));
  there_.endTurn();
  EXPECT_TRUE(undoLog(here_.environment(), log));
  here_.endTurn();
  EXPECT_EQ(*here_.context().fetchCount<DoseLog>(), 0);
}

/// A store on a disk that can be told to fail.
class DoseActionsOnAFailingDisk : public testing::Test {
 protected:
  void SetUp() override { fixture_.endTurn(); }
  void TearDown() override { failingVfs::heal(); }

  TemporaryFolder folder_;
  const std::string path_ = folder_.path() + "/Pillora.store";
  ScreenFixture fixture_{kNow, {}, {.path = path_, .vfsName = failingVfs::name()}};
  const UUID medicine_ = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}})))->id();
};

TEST_F(DoseActionsOnAFailingDisk, withoutTheLockNothingIsLoggedAndTheDoseStaysOpen) {
  failingVfs::refuseWriteLock();
  EXPECT_FALSE(takeDose(fixture_.environment(), medicine_, kDue));
  EXPECT_FALSE(skipDose(fixture_.environment(), medicine_, kDue));
  EXPECT_FALSE(fixture_.context().hasChanges());
  failingVfs::heal();
  EXPECT_TRUE(*takeDose(fixture_.environment(), medicine_, kDue));
  fixture_.endTurn();
  EXPECT_EQ(*fixture_.context().fetchCount<DoseLog>(), 1);
}

TEST_F(DoseActionsOnAFailingDisk, withoutTheLockNothingIsUndone) {
  const UUID log = **takeDose(fixture_.environment(), medicine_, kDue);
  fixture_.endTurn();
  failingVfs::refuseWriteLock();
  EXPECT_FALSE(undoLog(fixture_.environment(), log));
  failingVfs::heal();
  EXPECT_EQ(*fixture_.context().fetchCount<DoseLog>(), 1);
}

TEST_F(DoseActionsOnAFailingDisk, aTakeThatCouldNotBeSavedIsNeitherLostNorDoubled) {
  failingVfs::failAt(1, SQLITE_FULL, true);
  ASSERT_TRUE(*takeDose(fixture_.environment(), medicine_, kDue));
  fixture_.endTurn();
  EXPECT_TRUE(failingVfs::hasFailed());
  EXPECT_TRUE(fixture_.context().hasChanges());
  const auto again = takeDose(fixture_.environment(), medicine_, kDue);
  EXPECT_FALSE(again && *again);
  failingVfs::heal();
  ASSERT_TRUE(fixture_.context().save());
  EXPECT_EQ(*fixture_.context().fetchCount<DoseLog>(), 1);
}

TEST_F(DoseActionsOnAFailingDisk, logsThatCannotBeReadAreNotTakenForNone) {
  const UUID log = **takeDose(fixture_.environment(), medicine_, kDue);
  fixture_.endTurn();
  SQLite::Database(path_, SQLite::OPEN_READWRITE).exec("ALTER TABLE DoseLog RENAME TO Elsewhere");
  EXPECT_FALSE(takeDose(fixture_.environment(), medicine_, kDue));
  EXPECT_FALSE(undoLog(fixture_.environment(), log));
  fixture_.endTurn();
  SQLite::Database(path_, SQLite::OPEN_READWRITE).exec("ALTER TABLE Elsewhere RENAME TO DoseLog");
  EXPECT_FALSE(*takeDose(fixture_.environment(), medicine_, kDue));
  fixture_.endTurn();
  EXPECT_EQ(*fixture_.context().fetchCount<DoseLog>(), 1);
}

TEST_F(DoseActionsOnAFailingDisk, aReadThatFailedEarlierDoesNotStopATake) {
  fixture_.endTurn();
  SQLite::Database(path_, SQLite::OPEN_READWRITE).exec("ALTER TABLE DoseLog RENAME TO Elsewhere");
  EXPECT_FALSE(fixture_.context().fetch<DoseLog>());
  SQLite::Database(path_, SQLite::OPEN_READWRITE).exec("ALTER TABLE Elsewhere RENAME TO DoseLog");
  const auto taken = takeDose(fixture_.environment(), medicine_, kDue);
  EXPECT_TRUE(taken && *taken);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <future>
#include <thread>

#include "StoreTest.h"
#include "support/FolderWatch.h"

namespace pillora {
namespace {

/// Two connections to one file stand for two programs.
class SeveralProcesses : public StoreTest {
 protected:
  void SetUp() override {
    aspirin_ = makeMedicine("Aspirin");
    ours().insert(aspirin_);
    queue_.drain();
    theirAspirin_ = theirs().find<Medicine>(aspirin_->id());
    ASSERT_TRUE(theirAspirin_);
  }
  ModelContext& ours() { return one_->mainContext(); }
  ModelContext& theirs() { return other_->mainContext(); }

  std::unique_ptr<ModelContainer> one_ = open(store());
  std::unique_ptr<ModelContainer> other_ = open(store());
  std::shared_ptr<Medicine> aspirin_, theirAspirin_;
};

TEST_F(SeveralProcesses, refreshTakesOverWhatTheOtherCommittedAndTellsObservers) {
  const LiveQuery<Medicine> medicines(theirs());
  EXPECT_EQ(medicines.records().size(), 1U);
  int calls = 0;
  const auto handle = theirs().observe([&] { ++calls; });
  aspirin_->name = "Aspirin 500";
  ours().insert(makeMedicine("Ibuprofen"));
  queue_.drain();
  EXPECT_EQ(theirAspirin_->name(), "Aspirin");
  EXPECT_EQ(medicines.records().size(), 1U);

  theirs().refresh();
  EXPECT_EQ(theirAspirin_->name(), "Aspirin 500");
  EXPECT_EQ(medicines.records().size(), 2U);
  queue_.drain();
  EXPECT_EQ(calls, 1);
}

TEST_F(SeveralProcesses, theFoldersWatchTellsWhenThereIsSomethingToTakeOver) {
  const auto watch = *FolderWatch::open(folder_.path());
  const auto mayHaveChanged = [&] { return watch->takeChanges({"Pillora.store", "Pillora.store-wal"}); };
  EXPECT_FALSE(mayHaveChanged());
  aspirin_->name = "Aspirin 500";
  queue_.drain();
  EXPECT_TRUE(mayHaveChanged()) << "a commit shows on the write-ahead log";
  theirs().refresh();
  EXPECT_EQ(theirAspirin_->name(), "Aspirin 500");
  EXPECT_FALSE(mayHaveChanged()) << "taking over is no change";
}

TEST_F(SeveralProcesses, refreshWithoutForeignCommitsChangesNothing) {
  theirs().refresh();
  queue_.drain();
  const uint64_t before = theirs().changeCount();
  theirs().refresh();
  EXPECT_EQ(theirs().changeCount(), before);
  const uint64_t own = ours().changeCount();
  ours().refresh();
  EXPECT_EQ(ours().changeCount(), own) << "own commits are not foreign";
}

TEST_F(SeveralProcesses, beginningToWriteTakesOverWhatTheOtherCommitted) {
  ours().insert(makeTaken(aspirin_));
  queue_.drain();
  EXPECT_TRUE(theirs().beginWriting());
  EXPECT_EQ(theirAspirin_->actedOnTimes(kMorning, kMorning + std::chrono::minutes(1)), std::vector{kMorning});
  queue_.drain();
}

TEST_F(SeveralProcesses, changesOfDifferentFieldsAreMerged) {
  aspirin_->name = "Aspirin 500";
  queue_.drain();
  theirAspirin_->unit = "tablet";
  EXPECT_EQ(theirAspirin_->name(), "Aspirin 500");
  EXPECT_EQ(theirAspirin_->unit(), "tablet");
  queue_.drain();
  ours().refresh();
  EXPECT_EQ(aspirin_->name(), "Aspirin 500");
  EXPECT_EQ(aspirin_->unit(), "tablet");
}

TEST_F(SeveralProcesses, ofOneFieldTheLastChangeStays) {
  aspirin_->name = "first";
  queue_.drain();
  theirAspirin_->name = "second";
  EXPECT_EQ(theirAspirin_->name(), "second");
  queue_.drain();
  ours().refresh();
  EXPECT_EQ(aspirin_->name(), "second");
}

TEST_F(SeveralProcesses, aRecordThatTheOtherDeletedIsMarkedAndWritingItDoesNothing) {
  const auto theirLog = makeTaken(theirAspirin_);
  theirs().insert(theirLog);
  queue_.drain();
  ours().refresh();
  ours().delete_(aspirin_);
  queue_.drain();

  EXPECT_FALSE(theirAspirin_->isDeleted());
  theirAspirin_->name = "too late";
  EXPECT_TRUE(theirAspirin_->isDeleted());
  EXPECT_TRUE(theirLog->isDeleted());
  EXPECT_FALSE(theirs().hasChanges());
  queue_.drain();
  ours().refresh();
  EXPECT_TRUE(all<Medicine>(ours()).empty());
  EXPECT_TRUE(all<Medicine>(theirs()).empty());
}

TEST_F(SeveralProcesses, aLogForAMedicineThatTheOtherDeletedIsDropped) {
  ours().delete_(aspirin_);
  queue_.drain();
  const auto log = makeTaken(theirAspirin_);
  theirs().insert(log);
  queue_.drain();
  EXPECT_TRUE(log->isDeleted());
  EXPECT_FALSE(theirs().hasChanges());
  EXPECT_TRUE(all<DoseLog>(theirs()).empty());
}

TEST_F(SeveralProcesses, aLogMovedToAMedicineThatIsGoneGoesWithIt) {
  const auto log = makeTaken(aspirin_);
  ours().insert(log);
  queue_.drain();
  log->medicineId = UUID::random();
  queue_.drain();
  EXPECT_TRUE(log->isDeleted());
  EXPECT_FALSE(ours().hasChanges());
  EXPECT_TRUE(all<DoseLog>(theirs()).empty());
}

TEST_F(SeveralProcesses, aBusyFileIsWaitedFor) {
  std::promise<void> isLocked, mayGoOn;
  std::thread program([&, path = store()] {
    SQLite::Database raw(path, SQLite::OPEN_READWRITE);
    raw.exec("BEGIN IMMEDIATE");
    isLocked.set_value();
    mayGoOn.get_future().wait();
    raw.exec("UPDATE Medicine SET name = 'Aspirin 500'");
    raw.exec("COMMIT");
  });
  isLocked.get_future().wait();
  mayGoOn.set_value();
  EXPECT_TRUE(ours().beginWriting());
  EXPECT_EQ(aspirin_->name(), "Aspirin 500");
  queue_.drain();
  program.join();
}

TEST_F(SeveralProcesses, deletingWhatTheOtherDeletedIsNoError) {
  ours().delete_(aspirin_);
  queue_.drain();
  theirs().delete_(theirAspirin_);
  EXPECT_TRUE(theirs().save());
  queue_.drain();
  EXPECT_TRUE(theirAspirin_->isDeleted());
}

TEST_F(SeveralProcesses, findDoesNotReturnWhatAForeignDeletionTookAway) {
  ours().delete_(aspirin_);
  queue_.drain();
  EXPECT_TRUE(theirs().beginWriting());
  EXPECT_EQ(theirs().find<Medicine>(theirAspirin_->id()), nullptr);
  queue_.drain();
}

TEST_F(SeveralProcesses, onlyChangedColumnsAreWritten) {
  SQLite::Database raw(store(), SQLite::OPEN_READWRITE);
  raw.exec("CREATE TABLE Written (what TEXT)");
  raw.exec("CREATE TRIGGER nameWritten UPDATE OF name ON Medicine BEGIN INSERT INTO Written VALUES ('name'); END");
  raw.exec("CREATE TRIGGER unitWritten UPDATE OF unit ON Medicine BEGIN INSERT INTO Written VALUES ('unit'); END");
  aspirin_->unit = "drop";
  queue_.drain();
  EXPECT_EQ(raw.execAndGet("SELECT group_concat(what) FROM Written").getString(), "unit");
}

TEST_F(SeveralProcesses, aReaderIsNotBlockedByAnOpenTurn) {
  aspirin_->name = "being typed";
  EXPECT_EQ(namesOf(all<Medicine>(theirs())), Names{"Aspirin"});
  queue_.drain();
  EXPECT_EQ(namesOf(all<Medicine>(theirs())), Names{"being typed"});
}

TEST_F(SeveralProcesses, aReadThatFailsKeepsTheLastResultAndIsReported) {
  const LiveQuery<Medicine> medicines(theirs());
  EXPECT_EQ(medicines.records().size(), 1U);
  SQLite::Database raw(store(), SQLite::OPEN_READWRITE);
  raw.exec("ALTER TABLE Medicine RENAME TO Elsewhere");
  theirs().refresh();
  EXPECT_TRUE(theirs().takeReadError());
  EXPECT_FALSE(theirs().fetch<Medicine>());
  EXPECT_TRUE(theirs().takeReadError());
  EXPECT_EQ(theirs().takeReadError(), std::nullopt);
  EXPECT_EQ(medicines.records().size(), 1U);
  EXPECT_TRUE(theirAspirin_->doseLogs().empty());

  raw.exec("ALTER TABLE Elsewhere RENAME TO Medicine");
  theirs().refresh();
  EXPECT_EQ(theirs().takeReadError(), std::nullopt);
  EXPECT_EQ(medicines.records().size(), 1U);
}

}  // namespace
}  // namespace pillora

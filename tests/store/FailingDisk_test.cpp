// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <set>
#include <sqlite3.h>

#include "StoreTest.h"
#include "doubles/FailingVfs.h"
#include "doubles/FakeClock.h"

namespace pillora {
namespace {

using Ids = std::multiset<UUID>;

/// The identities of all logs in a store, and that the file is sound.
Ids logsIn(const std::string& path) {
  SQLite::Database database(path, SQLite::OPEN_READWRITE);
  database.exec("PRAGMA synchronous = OFF");
  EXPECT_EQ(database.execAndGet("PRAGMA integrity_check").getString(), "ok");
  Ids ids;
  SQLite::Statement rows(database, "SELECT id FROM DoseLog");
  while (rows.executeStep()) {
    UUID id;
    std::copy_n(static_cast<const uint8_t*>(rows.getColumn(0).getBlob()), id.bytes.size(), id.bytes.begin());
    ids.insert(id);
  }
  return ids;
}

bool holds(const Ids& ids, const Ids& wanted) {
  return std::includes(ids.begin(), ids.end(), wanted.begin(), wanted.end());
}

/// Takes some doses on a disk whose n-th operation fails.
class FailingDisk : public StoreTest {
 protected:
  struct Fault {
    int operation;
    int code;
    bool goesOn;
  };

  /// Everything that a process killed at this moment would leave.
  Ids leftBehind() {
    const TemporaryFolder copy;
    for (const char* suffix : {"", "-wal", "-journal"}) {
      if (std::filesystem::exists(store() + suffix)) {
        std::filesystem::copy_file(store() + suffix, copy.file("Pillora.store") + suffix);
      }
    }
    return logsIn(copy.file("Pillora.store"));
  }

  void take(ModelContext& context, const std::shared_ptr<Medicine>& medicine) {
    const auto log = makeTaken(medicine, kMorning + std::chrono::minutes(taken_.size()));
    log->notes = std::string(3000, 'n');  // several pages a commit
    context.insert(log);
    taken_.insert(log->id());
    if (context.save()) saved_ = taken_;
  }

  /// Whether the fault happened; when it lies beyond the whole run, every operation has had its turn.
  bool run(const Fault& fault) {
    taken_.clear();
    saved_.clear();
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(store() + suffix);
    const ModelConfiguration configuration{.path = store(), .vfsName = failingVfs::name()};

    failingVfs::failAt(fault.operation, fault.code, fault.goesOn);
    auto opened = ModelContainer::open(configuration, queue_);
    bool hasFailed = failingVfs::hasFailed();
    if (!opened) {
      EXPECT_TRUE(hasFailed) << opened.error().description;
      failingVfs::heal();
      opened = ModelContainer::open(configuration, queue_);
    }
    EXPECT_TRUE(opened);
    if (!opened) return true;
    ModelContext& context = (*opened)->mainContext();
    const auto medicine = makeMedicine("Aspirin");
    context.insert(medicine);
    for (int i = 0; i < 4; ++i) {
      take(context, medicine);
      EXPECT_EQ(medicine->doseLogs().size(), taken_.size()) << "a change that is not saved is still seen";
      EXPECT_EQ(context.hasChanges(), saved_ != taken_);
    }
    EXPECT_TRUE(holds(leftBehind(), saved_));

    hasFailed = hasFailed || failingVfs::hasFailed();
    failingVfs::heal();
    EXPECT_TRUE(context.save());
    EXPECT_FALSE(context.hasChanges());
    EXPECT_EQ(leftBehind(), taken_);
    opened->reset();
    EXPECT_EQ(logsIn(store()), taken_) << "every dose is there once";
    return hasFailed;
  }

  void runEveryFault(int code, bool goesOn) {
    int operation = 1;
    while (run({operation, code, goesOn})) {
      if (HasFailure()) FAIL() << "at operation " << operation;
      ++operation;
    }
    EXPECT_GT(operation, 20) << "so few operations write no four doses";
  }

  Ids taken_, saved_;
};

TEST_F(FailingDisk, oneWriteErrorAtAnyMomentLosesNothing) { runEveryFault(SQLITE_IOERR, false); }
TEST_F(FailingDisk, writeErrorsFromAnyMomentOnLoseNothing) { runEveryFault(SQLITE_IOERR, true); }
TEST_F(FailingDisk, oneFullDiskAtAnyMomentLosesNothing) { runEveryFault(SQLITE_FULL, false); }
TEST_F(FailingDisk, aDiskFullFromAnyMomentOnLosesNothing) { runEveryFault(SQLITE_FULL, true); }

TEST_F(FailingDisk, theAutomaticSaveKeepsWhatItCouldNotWriteAndTriesAgainNextTurn) {
  auto opened = ModelContainer::open({.path = store(), .vfsName = failingVfs::name()}, queue_);
  ASSERT_TRUE(opened);
  ModelContext& context = (*opened)->mainContext();
  const LiveQuery<DoseLog> logs(context);
  int calls = 0;
  const auto handle = context.observe([&] {
    ++calls;
    EXPECT_EQ(logs.records().size(), 1U);  // a screen that redraws on every turn
  });
  const auto log = makeTaken(nullptr);
  context.insert(log);
  failingVfs::failAt(1, SQLITE_FULL, true);
  queue_.drain();
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(context.hasChanges());
  EXPECT_FALSE(context.save());
  log->notes = "again";
  queue_.drain();
  EXPECT_EQ(calls, 2);
  failingVfs::heal();
  log->notes = "and again";
  queue_.drain();
  EXPECT_FALSE(context.hasChanges());
  EXPECT_EQ(logsIn(store()), Ids{log->id()});
}

TEST_F(FailingDisk, aDoseThatAnotherProcessRecordedMeanwhileIsNotRecordedAgain) {
  auto opened = ModelContainer::open({.path = store(), .vfsName = failingVfs::name()}, queue_);
  ASSERT_TRUE(opened);
  ModelContext& context = (*opened)->mainContext();
  const auto medicine = makeMedicine("Aspirin");
  context.insert(medicine);
  ASSERT_TRUE(context.save());

  failingVfs::failAt(1, SQLITE_FULL, true);
  const auto ours = makeTaken(medicine);
  context.insert(ours);
  const auto later = makeTaken(medicine, kMorning + std::chrono::hours(12));
  context.insert(later);
  EXPECT_FALSE(context.save());
  failingVfs::heal();

  const auto elsewhere = open(store());
  const auto theirs = makeTaken(all<Medicine>(elsewhere->mainContext()).front());
  elsewhere->mainContext().insert(theirs);
  ASSERT_TRUE(elsewhere->mainContext().save());

  EXPECT_TRUE(context.save());
  EXPECT_TRUE(ours->isDeleted());
  EXPECT_EQ(logsIn(store()), (Ids{theirs->id(), later->id()}));
}

TEST_F(FailingDisk, deletionsAndEditsSurviveAFailedSave) {
  auto opened = ModelContainer::open({.path = store(), .vfsName = failingVfs::name()}, queue_);
  ASSERT_TRUE(opened);
  ModelContext& context = (*opened)->mainContext();
  const auto aspirin = makeMedicine("Aspirin");
  const auto kept = makeMedicine("Ibuprofen");
  context.insert(aspirin);
  context.insert(kept);
  context.insert(makeTaken(aspirin));
  queue_.drain();

  context.delete_(aspirin);
  kept->name = "Ibuprofen 400";
  failingVfs::failAt(1, SQLITE_IOERR, true);
  EXPECT_FALSE(context.save());
  EXPECT_EQ(namesOf(all<Medicine>(context)), Names{"Ibuprofen 400"});
  failingVfs::heal();
  EXPECT_TRUE(context.save());
  opened->reset();
  const auto again = open(store());
  EXPECT_EQ(namesOf(all<Medicine>(again->mainContext())), Names{"Ibuprofen 400"});
  EXPECT_TRUE(all<DoseLog>(again->mainContext()).empty());
}

TEST_F(FailingDisk, aStoreThatCouldNotSaveWritesWhatIsPendingWhenItEnds) {
  auto opened = ModelContainer::open({.path = store(), .vfsName = failingVfs::name()}, queue_);
  ASSERT_TRUE(opened);
  const auto log = makeTaken(nullptr);
  (*opened)->mainContext().insert(log);
  failingVfs::failAt(1, SQLITE_IOERR, true);
  queue_.drain();
  failingVfs::heal();
  opened->reset();
  EXPECT_EQ(logsIn(store()), Ids{log->id()});
}

TEST_F(FailingDisk, theContextTellsSinceWhenNothingCouldBeSaved) {
  FakeClock clock(kMorning);
  auto opened = ModelContainer::open({.path = store(), .vfsName = failingVfs::name(), .clock = &clock}, queue_);
  ASSERT_TRUE(opened);
  ModelContext& context = (*opened)->mainContext();
  const auto log = makeTaken(nullptr);
  context.insert(log);
  queue_.drain();
  EXPECT_FALSE(context.saveFailure());

  failingVfs::failAt(1, SQLITE_FULL, true);
  log->notes = "first";
  queue_.drain();
  ASSERT_TRUE(context.saveFailure());
  EXPECT_EQ(context.saveFailure()->since, kMorning);
  EXPECT_FALSE(context.saveFailure()->error.description.empty());
  clock.advance(std::chrono::hours(1));
  log->notes = "second";
  queue_.drain();
  EXPECT_EQ(context.saveFailure()->since, kMorning) << "of the first save that failed";

  failingVfs::heal();
  EXPECT_TRUE(context.save());
  EXPECT_FALSE(context.saveFailure());
  failingVfs::failAt(1, SQLITE_FULL, true);
  log->notes = "third";
  EXPECT_FALSE(context.save());
  EXPECT_EQ(context.saveFailure()->since, kMorning + std::chrono::hours(1));
  failingVfs::heal();
}

TEST_F(FailingDisk, whoObservesHearsThatASaveBroughtTheFileUpToDate) {
  auto opened = ModelContainer::open({.path = store(), .vfsName = failingVfs::name()}, queue_);
  ASSERT_TRUE(opened);
  ModelContext& context = (*opened)->mainContext();
  std::vector<bool> failing;
  const auto handle = context.observe([&] { failing.push_back(context.saveFailure().has_value()); });
  failingVfs::failAt(1, SQLITE_FULL, true);
  context.insert(makeTaken(nullptr));
  queue_.drain();
  failingVfs::heal();
  EXPECT_TRUE(context.save());
  queue_.drain();
  EXPECT_EQ(failing, (std::vector<bool>{true, false}));
}

TEST_F(FailingDisk, whatIsGivenUpHasNotFailed) {
  auto opened = ModelContainer::open({.path = store(), .vfsName = failingVfs::name()}, queue_);
  ASSERT_TRUE(opened);
  ModelContext& context = (*opened)->mainContext();
  failingVfs::failAt(1, SQLITE_FULL, true);
  context.insert(makeTaken(nullptr));
  EXPECT_FALSE(context.save());
  EXPECT_FALSE(context.saveFailure()->since) << "no clock was given";
  context.discardChanges();
  EXPECT_FALSE(context.saveFailure());
  failingVfs::heal();
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include "StoreTest.h"

namespace pillora {

void PrintTo(const DoseCounts& counts, std::ostream* out) {
  *out << counts.taken << " taken, " << counts.missed << " missed, " << counts.skipped << " skipped of "
       << counts.total;
}

namespace {

using namespace std::chrono_literals;

constexpr auto kDay = std::chrono::hours(24);
/// The length of the spans that are counted together.
constexpr auto kSpan = Instant::Duration(int64_t{1} << 38);

Instant utcDay(Instant time) { return time - Instant::Duration(floorMod(time.microseconds(), (kDay / 1us))); }

DoseHistoryQuery query(Instant from, size_t limit, std::optional<DoseStatus> status = std::nullopt) {
  return {from, status, limit, utcDay};
}

class DoseHistoryTest : public StoreTest {
 protected:
  ModelContext& context() { return container_->mainContext(); }
  std::shared_ptr<DoseLog> add(Instant time, DoseStatus status, const std::shared_ptr<Medicine>& medicine) {
    const auto log = DoseLog::make(time, std::nullopt, status, 0, "", medicine);
    context().insert(log);
    return log;
  }
  DoseHistory history(const DoseHistoryQuery& wanted) {
    const auto found = context().doseHistory(wanted);
    EXPECT_TRUE(found) << (found ? "" : found.error().description);
    return found ? *found : DoseHistory();
  }
  DoseCounts counts(Instant from = Instant::distantPast()) { return history(query(from, 0)).counts; }

  std::unique_ptr<ModelContainer> container_ = open(store());
  std::shared_ptr<Medicine> aspirin_ = makeMedicine("Aspirin");
};

TEST_F(DoseHistoryTest, anEmptyStoreHasNoHistory) {
  EXPECT_EQ(counts(), DoseCounts());
  EXPECT_TRUE(history(query(Instant::distantPast(), 10)).latest.empty());
}

TEST_F(DoseHistoryTest, countsFollowEveryKindOfChange) {
  const auto log = add(kMorning, DoseStatus::missed, aspirin_);
  EXPECT_EQ(counts(), (DoseCounts{0, 1, 0, 1}));
  log->statusRaw = "Taken";
  EXPECT_EQ(counts(), (DoseCounts{1, 0, 0, 1}));
  log->statusRaw = "Forgotten";
  EXPECT_EQ(counts(), (DoseCounts{0, 0, 0, 1})) << "an unknown status is one of the others";
  log->scheduledTime = kMorning + 2 * kSpan;
  EXPECT_EQ(counts(kMorning + 2 * kSpan).total, 1);
  EXPECT_EQ(counts(kMorning + 2 * kSpan + 1us).total, 0);
  aspirin_->removeDoseLog(log);
  EXPECT_EQ(counts(), DoseCounts()) << "without a medicine";
  aspirin_->appendDoseLog(log);
  EXPECT_EQ(counts().total, 1);
  context().delete_(log);
  EXPECT_EQ(counts(), DoseCounts());
  add(kMorning, DoseStatus::skipped, aspirin_);
  EXPECT_EQ(counts(), (DoseCounts{0, 0, 1, 1}));
  context().delete_(aspirin_);
  EXPECT_EQ(counts(), DoseCounts()) << "gone with its medicine";
}

TEST_F(DoseHistoryTest, theTableOfCountsHoldsNothingThatIsNoLongerThere) {
  for (int day = 0; day < 40; ++day) add(kMorning + day * kDay, DoseStatus::taken, aspirin_);
  queue_.drain();
  context().delete_(aspirin_);
  queue_.drain();
  SQLite::Database raw(store());
  EXPECT_EQ(raw.execAndGet("SELECT count(*) FROM DoseCount").getInt(), 0);
}

TEST_F(DoseHistoryTest, theWindowBeginsAtItsInstantWhereverThatLiesInASpan) {
  const Instant span(Instant::Duration(kMorning.microseconds() >> 38 << 38));
  const std::vector<Instant> times = {
      Instant::distantPast(), Instant(-kSpan), Instant(-1us),           Instant(), span - 1us, span, span + 1us,
      span + kSpan - 1us,     span + kSpan,    Instant::distantFuture()};
  for (const Instant time : times) add(time, DoseStatus::taken, aspirin_);
  for (size_t i = 0; i < times.size(); ++i) {
    EXPECT_EQ(counts(times[i]).total, static_cast<int64_t>(times.size() - i)) << i;
    if (times[i] == Instant::distantFuture()) continue;
    EXPECT_EQ(counts(times[i] + 1us).total, static_cast<int64_t>(times.size() - i - 1)) << i;
  }
}

TEST_F(DoseHistoryTest, theLatestComeFirstAndTiesGoByMedicineThenByInsertion) {
  const auto zinc = makeMedicine("Zinc");
  context().insert(zinc);
  context().insert(aspirin_);
  const auto first = add(kMorning, DoseStatus::taken, aspirin_);
  const auto second = add(kMorning, DoseStatus::taken, aspirin_);
  const auto zincs = add(kMorning, DoseStatus::taken, zinc);
  const auto later = add(kMorning + 1us, DoseStatus::missed, aspirin_);
  add(kMorning + 1h, DoseStatus::missed, nullptr);
  EXPECT_EQ(history(query(kMorning, 9)).latest, (std::vector{later, zincs, first, second}));
  EXPECT_EQ(history(query(kMorning, 9, DoseStatus::taken)).latest, (std::vector{zincs, first, second}));
  EXPECT_EQ(history(query(kMorning, 9, DoseStatus::taken)).counts, (DoseCounts{3, 0, 0, 3}));
  EXPECT_EQ(history(query(kMorning, 2)).latest, (std::vector{later, zincs}));
  ASSERT_EQ(history(query(kMorning, 2)).rest.size(), 2U) << "both of the same time and day";
  EXPECT_EQ(history(query(kMorning, 9)).rest.size(), 0U);
}

TEST_F(DoseHistoryTest, theRestIsWhatLiesOnTheDaysOfTheLatest) {
  const auto times = {kMorning - kDay, kMorning, kMorning + 1h, kMorning + 2h, kMorning + kDay};
  for (const Instant time : times) add(time, DoseStatus::missed, aspirin_);
  const auto found = history(query(Instant::distantPast(), 2));
  ASSERT_EQ(found.rest.size(), 2U);
  EXPECT_EQ(found.rest[0].scheduledTime, kMorning + 1h);
  EXPECT_EQ(found.rest[1].scheduledTime, kMorning);
  EXPECT_EQ(found.rest[1].status, DoseStatus::missed);
  EXPECT_EQ(history(query(kMorning + 1us, 2)).rest.size(), 1U) << "within the window";
  EXPECT_TRUE(history(query(kMorning, 2, DoseStatus::taken)).rest.empty()) << "with the status";
}

TEST_F(DoseHistoryTest, whatAnotherProcessCommittedCountsAtOnce) {
  const auto log = add(kMorning, DoseStatus::missed, aspirin_);
  queue_.drain();
  const auto other = open(store());
  const auto theirs = other->mainContext().find<DoseLog>(log->id());
  theirs->statusRaw = "Taken";
  other->mainContext().insert(makeTaken(theirs->medicine(), kMorning + 1h));
  ASSERT_TRUE(other->mainContext().save());
  const auto found = history(query(Instant::distantPast(), 10));
  EXPECT_EQ(found.counts, (DoseCounts{2, 0, 0, 2}));
  ASSERT_EQ(found.latest.size(), 2U);
  EXPECT_EQ(found.latest[1], log);
  EXPECT_EQ(log->status(), DoseStatus::taken) << "the record that is held has followed";
}

TEST_F(DoseHistoryTest, whatIsGivenUpDoesNotCount) {
  add(kMorning, DoseStatus::taken, aspirin_);
  queue_.drain();
  add(kMorning, DoseStatus::taken, aspirin_);
  EXPECT_EQ(counts().total, 2);
  context().discardChanges();
  EXPECT_EQ(counts().total, 1);
}

TEST_F(DoseHistoryTest, aStoreThatCannotBeReadIsAnError) {
  add(kMorning, DoseStatus::taken, aspirin_);
  queue_.drain();
  SQLite::Database(store(), SQLite::OPEN_READWRITE).exec("DROP TABLE DoseCount");
  EXPECT_FALSE(context().doseHistory(query(kMorning, 1)));
  EXPECT_TRUE(context().takeReadError());
}

TEST_F(DoseHistoryTest, aStoreWithoutItsCountsIsDamaged) {
  container_.reset();
  SQLite::Database(store(), SQLite::OPEN_READWRITE).exec("DROP TABLE DoseCount");
  const auto refused = ModelContainer::open({.path = store()}, queue_);
  ASSERT_FALSE(refused);
  EXPECT_NE(refused.error().description.find("DoseCount"), std::string::npos) << refused.error().description;
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "app/MissedDoses.h"

#include <gtest/gtest.h>

#include <functional>
#include <sqlite3.h>
#include <thread>

#include "app/AppFixture.h"
#include "doubles/Intervals.h"
#include "doubles/RefusingCalendar.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

const Instant kNow = at("2025-01-10T09:00:00-05:00");
const Instant kLongAgo = at("2024-12-01T00:00:00-05:00");
const ReminderInterval kDailyAtEight = daily({{8, 0}});

/// A store in memory and New York's calendar.
struct Marking {
  ModelContext& context() { return container->mainContext(); }
  int64_t mark(Instant now = kNow) { return markWith(*calendar, now); }
  int64_t markWith(const Calendar& otherCalendar, Instant now = kNow) {
    const auto marked = markDosesMissed(context(), now, otherCalendar);
    EXPECT_TRUE(marked) << (marked ? "" : marked.error().description);
    return marked ? *marked : -1;
  }

  QueuedMainExecutor executor;
  std::unique_ptr<ModelContainer> container = openStore(executor);
  std::unique_ptr<Calendar> calendar = calendarOf("en_US", "America/New_York");
};

/// 08:00 in New York on the given day of January 2025.
Instant eight(int day) { return at("2025-01-01T08:00:00-05:00") + std::chrono::hours(24 * (day - 1)); }

TEST(MissedDoses, ofADailyMedicineAreSevenAndNoneOfToday) {
  Marking in;
  const auto medicine = addMedicine(in.context(), kDailyAtEight, kNow - std::chrono::hours(240));
  EXPECT_EQ(in.mark(), 7);
  EXPECT_EQ(scheduledTimes(in.context()),
            (std::vector{eight(3), eight(4), eight(5), eight(6), eight(7), eight(8), eight(9)}));
  for (const auto& log : allLogs(in.context())) {
    EXPECT_EQ(log->statusRaw(), "Missed");
    EXPECT_EQ(log->actionTime(), at("2025-01-10T00:00:00-05:00"));
    EXPECT_EQ(log->snoozeCount(), 0);
    EXPECT_EQ(log->notes(), "");
    EXPECT_EQ(log->medicine(), medicine);
  }
  EXPECT_EQ(medicine->doseLogs().size(), 7U);
  EXPECT_FALSE(in.context().hasChanges());
}

TEST(MissedDoses, areCountedByIntervalAndZone) {
  struct Case {
    const char *what, *zone, *now;
    ReminderInterval interval;
    int64_t count;
  };
  const char* friday = "2025-01-10T09:00:00-05:00";
  const Case cases[] = {
      {"twice a day", "America/New_York", friday, daily({{8, 0}, {20, 0}}), 14},
      {"one time twice", "America/New_York", friday, daily({{8, 0}, {8, 0}}), 7},
      {"at midnight", "America/New_York", friday, daily({{0, 0}}), 0},
      {"a minute after midnight", "America/New_York", friday, daily({{0, 1}}), 7},
      {"in the last minute", "America/New_York", friday, daily({{23, 59}}), 7},
      {"no times", "America/New_York", friday, daily({}), 0},
      {"every 6 hours", "America/New_York", friday, hourly(6), 21},
      {"every 23 hours", "America/New_York", friday, hourly(23), 7},
      {"every 24 hours", "America/New_York", friday, hourly(24), 0},
      {"every 25 hours", "America/New_York", friday, hourly(25), 0},
      {"every 0 hours", "America/New_York", friday, hourly(0), 0},
      {"every -4 hours", "America/New_York", friday, hourly(-4), 0},
      {"every 0 minutes", "America/New_York", friday, custom(0), 0},
      {"every -5 minutes", "America/New_York", friday, custom(-5), 0},
      {"every minute", "America/New_York", friday, custom(1), 7 * 1439},
      {"every 1439 minutes", "America/New_York", friday, custom(1439), 7},
      {"every 1440 minutes", "America/New_York", friday, custom(1440), 0},
      {"steps beyond all calendars", "America/New_York", friday, custom(INT64_MAX), 0},
      {"Mondays and Fridays", "America/New_York", friday, weekly({2, 6}, {8, 0}), 2},
      {"a weekday that is none", "America/New_York", friday, weekly({-20}, {8, 0}), 0},
      {"the 5th and 10th", "America/New_York", friday, monthly({5, 10}, {8, 0}), 1},
      // Hours are elapsed time: a day of 23 hours has one hourly dose less, one of 25 hours one more.
      {"hourly over the gap", "America/New_York", "2025-03-10T09:00:00-04:00", hourly(1), 6 * 23 + 22},
      {"hourly over the repeat", "America/New_York", "2025-11-03T09:00:00-05:00", hourly(1), 6 * 23 + 24},
      {"every 24 hours over the repeat", "America/New_York", "2025-11-03T09:00:00-05:00", hourly(24), 1},
      {"in the gap", "America/New_York", "2025-03-10T09:00:00-04:00", daily({{2, 30}}), 7},
      {"in the repeat", "America/New_York", "2025-11-03T09:00:00-05:00", daily({{1, 30}}), 7},
      {"half an hour less", "Australia/Lord_Howe", "2025-10-06T09:00:00+11:00", custom(30), 6 * 47 + 46},
      {"half an hour more", "Australia/Lord_Howe", "2025-04-07T09:00:00+10:30", custom(30), 6 * 47 + 48},
      {"Kolkata", "Asia/Kolkata", "2025-01-10T00:10:00+05:30", daily({{8, 0}}), 7},
  };
  for (const Case& each : cases) {
    Marking in;
    in.calendar = calendarOf("en_US", each.zone);
    addMedicine(in.context(), each.interval, kLongAgo);
    EXPECT_EQ(in.mark(at(each.now)), each.count) << each.what;
    EXPECT_EQ(in.mark(at(each.now)), 0) << each.what << ", again";
    EXPECT_EQ(allLogs(in.context()).size(), static_cast<size_t>(each.count)) << each.what;
  }
}

TEST(MissedDoses, ofTheStartDayAreAllMarkedAndOfTheDaysBeforeNone) {
  struct Case {
    const char* startDate;
    int64_t count;
  };
  for (const Case& each : {Case{"2025-01-08T23:59:00-05:00", 2}, Case{"2025-01-09T00:00:00-05:00", 1},
                           Case{"2025-01-08T23:59:59.999999-05:00", 2}, Case{"2025-01-03T00:00:00-05:00", 7},
                           Case{"2025-01-10T00:00:00-05:00", 0}, Case{"2025-01-10T09:00:00-05:00", 0},
                           Case{"2025-02-01T00:00:00-05:00", 0}}) {
    Marking in;
    addMedicine(in.context(), kDailyAtEight, at(each.startDate));
    EXPECT_EQ(in.mark(), each.count) << each.startDate;
  }
}

TEST(MissedDoses, ofAMedicineStartedLateInTheEveningIncludeThatMorningsAndNotTodays) {
  Marking in;
  addMedicine(in.context(), kDailyAtEight, at("2025-01-08T23:59:00-05:00"));
  EXPECT_EQ(in.mark(), 2);
  EXPECT_EQ(scheduledTimes(in.context()), (std::vector{eight(8), eight(9)}));
}

TEST(MissedDoses, ofAMedicineFromTheEndsOfTimeAreThoseOfAWeekOrNone) {
  for (const auto& [startDate, count] :
       {std::pair(Instant::distantPast(), 7), std::pair(Instant::distantFuture(), 0)}) {
    Marking in;
    addMedicine(in.context(), kDailyAtEight, startDate);
    EXPECT_EQ(in.mark(), count);
  }
}

TEST(MissedDoses, aLogOfAnyStatusInTheMinutePreventsOne) {
  for (const DoseStatus status : kAllDoseStatuses) {
    Marking in;
    const auto medicine = addMedicine(in.context(), kDailyAtEight, kLongAgo);
    in.context().insert(DoseLog::make(eight(9) + std::chrono::seconds(30), kNow, status, 0, "", medicine));
    EXPECT_EQ(in.mark(), 6) << rawValue(status);
  }
}

TEST(MissedDoses, aLogOfANeighbouringMinuteOrAnotherMedicinePreventsNone) {
  Marking in;
  const auto medicine = addMedicine(in.context(), kDailyAtEight, kLongAgo);
  const auto other = addMedicine(in.context(), daily({}), kLongAgo);
  for (const auto& [time, owner] : {std::pair(eight(9) + std::chrono::minutes(1), medicine),
                                    std::pair(eight(9) - std::chrono::microseconds(1), medicine),
                                    std::pair(eight(9), other), std::pair(eight(9), std::shared_ptr<Medicine>())}) {
    in.context().insert(DoseLog::make(time, kNow, DoseStatus::taken, 0, "", owner));
  }
  EXPECT_EQ(in.mark(), 7);
}

TEST(MissedDoses, theTwoPassesOfARepeatedMinuteAreTwoDoses) {
  Marking in;
  const auto medicine = addMedicine(in.context(), custom(30), at("2025-11-02T00:00:00-04:00"));
  const Instant first = at("2025-11-02T01:30:00-04:00"), second = at("2025-11-02T01:30:00-05:00");
  in.context().insert(DoseLog::make(first, kNow, DoseStatus::taken, 0, "", medicine));
  EXPECT_EQ(in.mark(at("2025-11-03T09:00:00-05:00")), 48);  // 49 half hours inside 25 hours, one of them taken
  const auto times = scheduledTimes(in.context());
  EXPECT_EQ(std::count(times.begin(), times.end(), first), 1);
  EXPECT_EQ(std::count(times.begin(), times.end(), second), 1);
}

TEST(MissedDoses, ofAnInactiveMedicineAreNone) {
  Marking in;
  addMedicine(in.context(), kDailyAtEight, kLongAgo)->isActive = false;
  EXPECT_EQ(in.mark(), 0);
}

TEST(MissedDoses, ofAMedicineThatHasEndedOrDoesNotRepeatAreMarked) {
  Marking in;
  const auto medicine = addMedicine(in.context(), kDailyAtEight, kLongAgo);
  medicine->isRepeating = false;
  medicine->endDate = kLongAgo;
  EXPECT_EQ(in.mark(), 7);
}

TEST(MissedDoses, theSettingsThresholdPlaysNoPart) {
  Marking in;
  const auto settings = AppSettings::make();
  settings->autoMarkMissedAfterMinutes = 100'000;
  in.context().insert(settings);
  addMedicine(in.context(), kDailyAtEight, kLongAgo);
  EXPECT_EQ(in.mark(), 7);
}

TEST(MissedDoses, ofAMedicineWhoseIntervalCannotBeReadAreThoseOfNineOClock) {
  Marking in;
  addMedicine(in.context(), kDailyAtEight, kLongAgo)->intervalData = "";
  EXPECT_EQ(in.mark(), 7);
  EXPECT_EQ(allLogs(in.context()).front()->scheduledTime(), at("2025-01-03T09:00:00-05:00"));
}

TEST(MissedDoses, ofTheNextDayJoinThoseOfTheDaysBefore) {
  Marking in;
  addMedicine(in.context(), kDailyAtEight, kLongAgo);
  EXPECT_EQ(in.mark(), 7);
  EXPECT_EQ(in.mark(kNow + std::chrono::hours(24)), 1);
  EXPECT_EQ(allLogs(in.context()).back()->scheduledTime(), eight(10));
}

TEST(MissedDoses, withoutDaysInTheCalendarAreNone) {
  Marking in;
  addMedicine(in.context(), kDailyAtEight, kLongAgo);
  EXPECT_EQ(in.markWith(RefusingCalendar(*in.calendar, {.addingDays = true})), 0);
}

TEST(MissedDoses, withoutHoursOrMinutesInTheCalendarAreThoseOfDailyMedicines) {
  Marking in;
  for (const auto& interval : {hourly(4), custom(30), kDailyAtEight}) addMedicine(in.context(), interval, kLongAgo);
  EXPECT_EQ(in.markWith(RefusingCalendar(*in.calendar, {.addingHours = true, .addingMinutes = true})), 7);
}

TEST(MissedDoses, withoutDatesInTheCalendarAreThoseOfRelativeIntervals) {
  Marking in;
  for (const auto& interval : {kDailyAtEight, hourly(12)}) addMedicine(in.context(), interval, kLongAgo);
  EXPECT_EQ(in.markWith(RefusingCalendar(*in.calendar, {.formingDates = true})), 7);
}

/// A calendar that calls a test before each step, which may forbid it.
class WatchedCalendar final : public RefusingCalendar {
 public:
  using Watcher = std::function<bool(CalendarUnit unit, int64_t amount)>;

  WatchedCalendar(const Calendar& wrapped, Watcher allows)
      : RefusingCalendar(wrapped, {}), allows_(std::move(allows)) {}

  std::optional<Instant> adding(CalendarUnit unit, int64_t amount, Instant instant) const override {
    return allows_(unit, amount) ? RefusingCalendar::adding(unit, amount, instant) : std::nullopt;
  }

 private:
  Watcher allows_;
};

TEST(MissedDoses, endWhereACalendarCannotGoForward) {
  Marking in;
  addMedicine(in.context(), kDailyAtEight, kLongAgo);
  EXPECT_EQ(in.markWith(WatchedCalendar(*in.calendar, [](CalendarUnit, int64_t amount) { return amount < 0; })), 0);
}

TEST(MissedDoses, ofDaysWhoseMidnightIsSkippedAreEachMarkedOnce) {
  Marking in;
  in.calendar = calendarOf("pt_BR", "America/Sao_Paulo");  // 2018-11-04 began at 01:00
  addMedicine(in.context(), custom(15), kLongAgo - std::chrono::hours(24 * 365 * 10));
  const int64_t marked = in.mark(at("2018-11-08T09:00:00-02:00"));
  auto times = scheduledTimes(in.context());
  EXPECT_EQ(times.size(), static_cast<size_t>(marked));
  EXPECT_EQ(std::unique(times.begin(), times.end()), times.end());
  EXPECT_EQ(in.mark(at("2018-11-08T09:00:00-02:00")), 0);
}

// Stores that fail or are shared.

/// A medicine with missed doses in a store file, and another program that has the file open.
struct SharedStore {
  SharedStore() {
    addMedicine(context, kDailyAtEight, kLongAgo);
    executor.drain();
  }
  Result<int64_t> mark() { return markDosesMissed(context, kNow, *calendar); }

  TemporaryFolder folder;
  std::string path = folder.path() + "/Pillora.store";
  QueuedMainExecutor executor;
  std::unique_ptr<ModelContainer> container = openStore(executor, path);
  ModelContext& context = container->mainContext();
  std::unique_ptr<Calendar> calendar = calendarOf("en_US", "America/New_York");
  ForeignConnection foreign{path};
};

TEST(MissedDoses, areLookedForAndWrittenInOneTransaction) {
  SharedStore in;
  ASSERT_EQ(in.foreign.run("BEGIN IMMEDIATE; ROLLBACK"), SQLITE_OK);
  int busy = 0, steps = 0;
  const WatchedCalendar watching(*in.calendar, [&](CalendarUnit, int64_t) {
    ++steps;
    if (in.foreign.run("BEGIN IMMEDIATE; ROLLBACK") == SQLITE_BUSY) ++busy;
    return true;
  });
  EXPECT_EQ(*markDosesMissed(in.context, kNow, watching), 7);
  EXPECT_GT(steps, 7);
  EXPECT_EQ(busy, steps);
  EXPECT_EQ(in.foreign.run("BEGIN IMMEDIATE; ROLLBACK"), SQLITE_OK);
}

TEST(MissedDoses, ofTwoProgramsThatMarkAtOnceAreEachWrittenOnce) {
  SharedStore in;
  for (int i = 0; i < 20; ++i) addMedicine(in.context, hourly(2), kLongAgo);
  in.executor.drain();
  int64_t marked[2] = {-1, -1};
  const auto program = [&](int64_t& count) {
    QueuedMainExecutor own;
    const auto store = openStore(own, in.path);
    if (const auto result = markDosesMissed(store->mainContext(), kNow, *in.calendar)) count = *result;
    own.drain();
  };
  std::thread window(program, std::ref(marked[0])), background(program, std::ref(marked[1]));
  window.join();
  background.join();
  constexpr int64_t kAll = 7 + 20 * 7 * 11;
  EXPECT_EQ(marked[0] + marked[1], kAll);
  EXPECT_TRUE(marked[0] == 0 || marked[1] == 0);
  EXPECT_EQ(allLogs(in.context).size(), static_cast<size_t>(kAll));
}

TEST(MissedDoses, thatCannotBeSavedStayPendingAndAreWrittenOnceLater) {
  SharedStore in;
  ASSERT_EQ(
      in.foreign.run("CREATE TRIGGER full BEFORE INSERT ON DoseLog BEGIN SELECT RAISE(ABORT, 'disk is full'); END"),
      SQLITE_OK);
  const auto failed = in.mark();
  ASSERT_FALSE(failed);
  EXPECT_EQ(failed.error().description, "disk is full");
  EXPECT_TRUE(in.context.hasChanges());
  in.executor.drain();
  EXPECT_TRUE(in.context.hasChanges());

  ASSERT_EQ(in.foreign.run("DROP TRIGGER full"), SQLITE_OK);
  const auto again = in.mark();
  ASSERT_TRUE(again);
  EXPECT_EQ(*again, 0);
  EXPECT_FALSE(in.context.hasChanges());
  EXPECT_EQ(scheduledTimes(in.context).size(), 7U);
}

TEST(MissedDoses, ofMedicinesThatCannotBeReadAreAnError) {
  SharedStore in;
  ASSERT_EQ(in.foreign.run("ALTER TABLE Medicine RENAME TO Elsewhere"), SQLITE_OK);
  EXPECT_FALSE(in.mark());
}

TEST(MissedDoses, ofLogsThatCannotBeReadAreAnErrorAndNotMarkedAnew) {
  SharedStore in;
  ASSERT_EQ(in.foreign.run("ALTER TABLE DoseLog RENAME COLUMN scheduledTime TO elsewhere"), SQLITE_OK);
  EXPECT_FALSE(in.mark());
  EXPECT_FALSE(in.context.hasChanges());
}

TEST(MissedDoses, anEarlierFailureOfAReadDoesNotKeepThemFromBeingMarked) {
  SharedStore in;
  ASSERT_EQ(in.foreign.run("ALTER TABLE AppSettings RENAME TO Elsewhere"), SQLITE_OK);
  ASSERT_FALSE(in.context.fetch<AppSettings>());
  const auto marked = in.mark();
  ASSERT_TRUE(marked) << marked.error().description;
  EXPECT_EQ(*marked, 7);
}

}  // namespace
}  // namespace pillora

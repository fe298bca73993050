// SPDX-License-Identifier: MIT
#include "screens/ReminderHistoryView.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/RefusingCalendar.h"
#include "doubles/ScreenFixture.h"

// What History counts, in which order, and under which heads. Its rows and their buttons: ReminderHistoryRow_test.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kMidnight = at("2025-01-10T00:00:00-05:00");
const Instant kNow = at("2025-01-10T10:30:00-05:00");

using Lines = std::vector<std::string>;

Lines titles(const HistoryContent& content) {
  Lines titles;
  for (const HistoryDay& day : content.days) titles.push_back(day.title);
  return titles;
}

Lines counts(const HistoryContent& content) {
  Lines counts;
  for (const HistoryDay& day : content.days) counts.push_back(day.count);
  return counts;
}

std::vector<HistoryLogRow> rows(const HistoryContent& content) {
  std::vector<HistoryLogRow> rows;
  for (const HistoryDay& day : content.days) rows.insert(rows.end(), day.logs.begin(), day.logs.end());
  return rows;
}

std::vector<UUID> ids(const HistoryContent& content) {
  std::vector<UUID> ids;
  for (const HistoryLogRow& row : rows(content)) ids.push_back(row.id);
  return ids;
}

std::vector<int64_t> values(const HistoryContent& content) {
  std::vector<int64_t> values;
  for (const StatItem& item : content.stats) values.push_back(item.value);
  return values;
}

class ReminderHistoryViewTest : public testing::Test {
 protected:
  std::shared_ptr<Medicine> addMedicine(const std::string& name) {
    return fixture_.add(medicineNamed(name, daily({{8, 0}})));
  }
  UUID add(Instant scheduled, DoseStatus status) { return fixture_.log(aspirin_, scheduled, status)->id(); }
  void add(DoseStatus status, int count) {
    for (int i = 0; i < count; ++i) add(kMidnight + i * 1s, status);
  }
  HistoryContent content() const { return view_.content(); }
  HistoryContent content(TimeRange range, HistoryFilter filter = HistoryFilter::all) {
    view_.selectedTimeRange = range;
    view_.selectedFilter = filter;
    return view_.content();
  }
  void expectFigures(const HistoryContent& content, int64_t percent, const std::string& message,
                     const std::string& color) {
    EXPECT_EQ(content.adherence.percent, percent);
    EXPECT_EQ(content.adherence.message, message);
    EXPECT_EQ(content.adherence.color, color);
  }

  ScreenFixture fixture_{kNow};
  std::shared_ptr<Medicine> aspirin_ = addMedicine("Aspirin");
  ReminderHistoryView view_{fixture_.environment()};
};

TEST_F(ReminderHistoryViewTest, withNoLogsAtAll) {
  for (const TimeRange range : kAllTimeRanges) {
    const auto shown = content(range);
    EXPECT_EQ(shown.title, "History");
    expectFigures(shown, 0, "Needs improvement", "red");
    EXPECT_EQ(shown.adherence.title, "Adherence Rate");
    EXPECT_FALSE(shown.adherence.rate);
    EXPECT_EQ(shown.adherence.ring, 0.0);
    EXPECT_EQ(shown.adherence.percentText + shown.adherence.percentSign, "0%");
    EXPECT_EQ(values(shown), (std::vector<int64_t>{0, 0, 0}));
    EXPECT_TRUE(shown.days.empty());
    EXPECT_FALSE(shown.hasMore);
    EXPECT_EQ(shown.empty, (Panel{"clock.arrow.circlepath", "No History Yet",
                                  "Your medication history will appear here once you start tracking doses."}));
  }
}

TEST_F(ReminderHistoryViewTest, theEmptyStateStandsWheneverNoLogIsShown) {
  add(kMidnight, DoseStatus::taken);
  EXPECT_FALSE(content().empty);
  EXPECT_TRUE(content(TimeRange::week, HistoryFilter::missed).empty);
}

TEST_F(ReminderHistoryViewTest, thePickerOffersFourRangesAndBeginsWithTheWeek) {
  const auto shown = content();
  EXPECT_EQ(shown.rangeTitle, "Time Range");
  EXPECT_EQ(shown.range, "Week");
  const Lines expected = {"Today", "Week", "Month", "All"};
  ASSERT_EQ(shown.ranges.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(shown.ranges[i].id, expected[i]);
    EXPECT_EQ(shown.ranges[i].title, expected[i]);
    EXPECT_EQ(shown.ranges[i].isSelected, i == 1);
    EXPECT_EQ(content(kAllTimeRanges[i]).range, expected[i]);
    EXPECT_TRUE(content(kAllTimeRanges[i]).ranges[i].isSelected);
  }
}

TEST_F(ReminderHistoryViewTest, fourChipsOfWhichTheSelectedOneIsHighlighted) {
  const std::vector<std::array<std::string, 3>> expected = {{"All", "list.bullet", "blue"},
                                                            {"Taken", "checkmark.circle.fill", "green"},
                                                            {"Missed", "xmark.circle.fill", "red"},
                                                            {"Skipped", "forward.circle.fill", "orange"}};
  EXPECT_EQ(content().filter, "All");
  for (size_t selected = 0; selected < expected.size(); ++selected) {
    const auto shown = content(TimeRange::week, kAllHistoryFilters[selected]);
    EXPECT_EQ(shown.filter, expected[selected][0]);
    ASSERT_EQ(shown.chips.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
      const FilterChip& chip = shown.chips[i];
      EXPECT_EQ((std::array{chip.title, chip.symbol, chip.color}), expected[i]);
      EXPECT_EQ(chip.id, expected[i][0]);
      EXPECT_EQ(chip.isSelected, i == selected);
    }
  }
}

TEST_F(ReminderHistoryViewTest, threeTilesCountTakenMissedAndSkipped) {
  add(DoseStatus::taken, 3);
  add(DoseStatus::missed, 2);
  add(DoseStatus::skipped, 1);
  add(DoseStatus::snoozed, 4);
  add(DoseStatus::pending, 5);
  const auto stats = content().stats;
  const std::vector<std::array<std::string, 4>> expected = {{"3", "Taken", "checkmark.circle.fill", "green"},
                                                            {"2", "Missed", "xmark.circle.fill", "red"},
                                                            {"1", "Skipped", "forward.circle.fill", "orange"}};
  ASSERT_EQ(stats.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ((std::array{std::to_string(stats[i].value), stats[i].label, stats[i].icon, stats[i].color}), expected[i]);
  }
  EXPECT_EQ(content().adherence.rate, 3.0 / 15.0) << "of all logs, whatever their status";
}

TEST_F(ReminderHistoryViewTest, messageAndColorGoByTheRate) {
  struct Case {
    int64_t taken, total, percent;
    std::string message, color;
  };
  const std::vector<Case> cases = {{0, 0, 0, "Needs improvement", "red"},  {0, 7, 0, "Needs improvement", "red"},
                                   {1, 3, 33, "Needs improvement", "red"}, {499, 1000, 49, "Needs improvement", "red"},
                                   {1, 2, 50, "Good progress", "orange"},  {29, 50, 57, "Good progress", "orange"},
                                   {2, 3, 66, "Good progress", "orange"},  {799, 1000, 79, "Good progress", "orange"},
                                   {4, 5, 80, "Great job!", "green"},      {999, 1000, 99, "Great job!", "green"},
                                   {1, 1, 100, "Perfect!", "green"},       {50, 50, 100, "Perfect!", "green"}};
  for (const Case& each : cases) {
    const auto shown = adherence({each.taken, 0, 0, each.total}, *fixture_.texts);
    EXPECT_EQ(shown.percent, each.percent) << each.taken << " of " << each.total;
    EXPECT_EQ(shown.percentText, std::to_string(each.percent));
    EXPECT_EQ(shown.message, each.message) << each.taken << " of " << each.total;
    EXPECT_EQ(shown.color, each.color) << each.taken << " of " << each.total;
    EXPECT_EQ(shown.rate.has_value(), each.total > 0);
    EXPECT_EQ(shown.ring, shown.rate.value_or(0));
  }
}

TEST_F(ReminderHistoryViewTest, twentyNineOfFiftyShowFiftySeven) {
  add(DoseStatus::taken, 29);
  add(DoseStatus::missed, 21);
  expectFigures(content(), 57, "Good progress", "orange");
}

TEST(HistoryRange, startsSoManyDaysBackAtTheSameTimeOfDay) {
  const auto calendar = calendarOf("en_US", "America/New_York");
  const auto start = [&](TimeRange range, const char* now) { return rangeStart(range, at(now), *calendar); };
  EXPECT_EQ(start(TimeRange::today, "2025-01-10T10:30:00-05:00"), kMidnight);
  EXPECT_EQ(start(TimeRange::week, "2025-01-10T10:30:00-05:00"), at("2025-01-03T10:30:00-05:00"));
  EXPECT_EQ(start(TimeRange::week, "2025-03-12T10:30:00-04:00"), at("2025-03-05T10:30:00-05:00"));
  EXPECT_EQ(start(TimeRange::week, "2025-03-16T02:30:00-04:00"), at("2025-03-09T03:30:00-04:00")) << "no 02:30 then";
  EXPECT_EQ(start(TimeRange::month, "2025-03-31T10:00:00-04:00"), at("2025-03-01T10:00:00-05:00"));
  EXPECT_EQ(start(TimeRange::month, "2024-03-31T10:00:00-04:00"), at("2024-03-01T10:00:00-05:00"));
  EXPECT_EQ(start(TimeRange::all, "2025-01-10T10:30:00-05:00"), Instant::distantPast());
}

TEST(HistoryRange, beginsNowWhereTheCalendarCannotCountBack) {
  const auto calendar = calendarOf("en_US", "America/New_York");
  const RefusingCalendar refusing(*calendar, {.addingDays = true});
  EXPECT_EQ(rangeStart(TimeRange::week, kNow, refusing), kNow);
  EXPECT_EQ(rangeStart(TimeRange::month, kNow, refusing), kNow);
  EXPECT_EQ(rangeStart(TimeRange::today, kNow, refusing), kMidnight);
}

TEST_F(ReminderHistoryViewTest, aRangeHoldsItsFirstInstantAndHasNoEnd) {
  const std::vector<std::pair<TimeRange, Instant>> starts = {{TimeRange::today, kMidnight},
                                                             {TimeRange::week, kNow - 7 * 24h},
                                                             {TimeRange::month, kNow - 30 * 24h},
                                                             {TimeRange::all, Instant::distantPast()}};
  for (const auto& [range, start] : starts) {
    add(start, DoseStatus::taken);
    if (start != Instant::distantPast()) add(start - 1us, DoseStatus::taken);
  }
  add(Instant::distantFuture(), DoseStatus::pending);
  EXPECT_EQ(rows(content(TimeRange::today)).size(), 2u);
  EXPECT_EQ(rows(content(TimeRange::week)).size(), 4u);
  EXPECT_EQ(rows(content(TimeRange::month)).size(), 6u);
  EXPECT_EQ(rows(content(TimeRange::all)).size(), 8u);
}

TEST_F(ReminderHistoryViewTest, aPendingLogDueLaterTodayCounts) {
  add(kMidnight + 8h, DoseStatus::taken);
  expectFigures(content(TimeRange::today), 100, "Perfect!", "green");
  const UUID pending = add(kMidnight + 20h, DoseStatus::pending);
  expectFigures(content(TimeRange::today), 50, "Good progress", "orange");
  EXPECT_EQ(ids(content()).front(), pending);
  EXPECT_EQ(counts(content()), (Lines{"1/2"}));
}

TEST_F(ReminderHistoryViewTest, figuresFollowTheFilter) {
  add(DoseStatus::taken, 3);
  add(DoseStatus::missed, 2);
  add(DoseStatus::skipped, 1);
  add(DoseStatus::pending, 1);
  expectFigures(content(), 42, "Needs improvement", "red");
  EXPECT_EQ(values(content(TimeRange::week, HistoryFilter::taken)), (std::vector<int64_t>{3, 0, 0}));
  expectFigures(content(), 100, "Perfect!", "green");
  EXPECT_EQ(values(content(TimeRange::week, HistoryFilter::missed)), (std::vector<int64_t>{0, 2, 0}));
  expectFigures(content(), 0, "Needs improvement", "red");
  EXPECT_EQ(counts(content()), (Lines{"0/2"}));
  EXPECT_EQ(values(content(TimeRange::week, HistoryFilter::skipped)), (std::vector<int64_t>{0, 0, 1}));
  expectFigures(content(), 0, "Needs improvement", "red");
  EXPECT_EQ(content().adherence.rate, 0.0);
  EXPECT_EQ(rows(content()).size(), 1u);
}

TEST_F(ReminderHistoryViewTest, everyFilterKeepsExactlyItsStatus) {
  for (const DoseStatus status : kAllDoseStatuses) add(kMidnight, status);
  fixture_.log(aspirin_, kMidnight, DoseStatus::taken)->statusRaw = "taken";
  EXPECT_EQ(rows(content()).size(), 6u) << "also pending, snoozed and unknown ones";
  for (const HistoryFilter filter : {HistoryFilter::taken, HistoryFilter::missed, HistoryFilter::skipped}) {
    const auto shown = rows(content(TimeRange::week, filter));
    ASSERT_EQ(shown.size(), 1u) << rawValue(filter);
    EXPECT_EQ(shown[0].status, rawValue(filter));
  }
}

TEST_F(ReminderHistoryViewTest, inactiveMedicinesCountAndLogsWithoutAMedicineDoNot) {
  const UUID log = add(kMidnight, DoseStatus::taken);
  aspirin_->isActive = false;
  addMedicine("Zinc");
  fixture_.context().insert(DoseLog::make(kMidnight, std::nullopt, DoseStatus::missed));
  EXPECT_EQ(ids(content()), (std::vector{log}));
  expectFigures(content(), 100, "Perfect!", "green");
}

TEST_F(ReminderHistoryViewTest, latestFirstAndTiesInTheOrderOfMedicinesAndLogs) {
  const auto zinc = addMedicine("Zinc");
  const UUID zincs = fixture_.log(zinc, kMidnight, DoseStatus::taken)->id();
  const UUID first = add(kMidnight, DoseStatus::missed);
  const UUID later = add(kMidnight + 1us, DoseStatus::taken);
  const UUID second = add(kMidnight, DoseStatus::taken);
  EXPECT_EQ(ids(content()), (std::vector{later, first, second, zincs}));
}

TEST_F(ReminderHistoryViewTest, logsAreHeadedByTheirDay) {
  add(kMidnight + 32h, DoseStatus::taken);
  add(kMidnight + 8h, DoseStatus::taken);
  add(kMidnight, DoseStatus::missed);
  add(kMidnight + 1h, DoseStatus::taken);
  add(kMidnight - 1us, DoseStatus::taken);
  add(kMidnight - 24h, DoseStatus::skipped);
  add(kMidnight - 24h - 1us, DoseStatus::missed);
  EXPECT_EQ(titles(content()), (Lines{"Jan 11, 2025", "Today", "Yesterday", "Jan 8, 2025"}));
  EXPECT_EQ(counts(content()), (Lines{"1/1", "2/3", "1/2", "0/1"}));
  const auto shown = content();
  EXPECT_EQ(shown.days[1].day, kMidnight);
  const std::vector<std::pair<bool, bool>> ends = {{true, true},  {true, false}, {false, false}, {false, true},
                                                   {true, false}, {false, true}, {true, true}};
  const auto all = rows(shown);
  ASSERT_EQ(all.size(), ends.size());
  for (size_t i = 0; i < ends.size(); ++i) EXPECT_EQ(std::pair(all[i].isFirst, all[i].isLast), ends[i]) << i;
}

TEST_F(ReminderHistoryViewTest, figuresAndDayCountsCoverWhatLiesBeyondTheRowLimit) {
  for (int i = 0; i < 250; ++i) add(kMidnight - i * 30min, i % 2 == 0 ? DoseStatus::taken : DoseStatus::missed);
  view_.rowLimit = 10;
  auto shown = content();
  EXPECT_EQ(rows(shown).size(), 10u);
  EXPECT_TRUE(shown.hasMore);
  EXPECT_EQ(values(shown), (std::vector<int64_t>{125, 125, 0}));
  expectFigures(shown, 50, "Good progress", "orange");
  EXPECT_EQ(titles(shown), (Lines{"Today", "Yesterday"}));
  EXPECT_EQ(counts(shown), (Lines{"1/1", "24/48"}));
  EXPECT_TRUE(shown.days[1].logs.front().isFirst);
  EXPECT_FALSE(shown.days[1].logs.back().isLast) << "its last row is not shown yet";
  view_.showMore();
  shown = content();
  EXPECT_EQ(rows(shown).size(), 110u);
  EXPECT_TRUE(shown.days[1].logs.back().isLast);
  view_.showMore();
  view_.showMore();
  EXPECT_EQ(rows(content()).size(), 250u);
  EXPECT_FALSE(content().hasMore);
}

TEST_F(ReminderHistoryViewTest, aRowLimitThatEndsBetweenLogsOfOneTimeHidesTheRest) {
  for (int i = 0; i < 5; ++i) add(kMidnight, DoseStatus::taken);
  view_.rowLimit = 2;
  EXPECT_EQ(rows(content()).size(), 2u);
  EXPECT_EQ(counts(content()), (Lines{"5/5"}));
  view_.rowLimit = 0;
  EXPECT_TRUE(content().days.empty());
  EXPECT_FALSE(content().empty) << "there are logs, only no rows";
  EXPECT_TRUE(content().hasMore);
}

TEST_F(ReminderHistoryViewTest, theDayMovesOnWithTheClock) {
  add(kMidnight, DoseStatus::taken);
  EXPECT_EQ(titles(content(TimeRange::today)), (Lines{"Today"}));
  fixture_.clock.set(kMidnight + 24h);
  EXPECT_TRUE(content(TimeRange::today).empty);
  EXPECT_EQ(titles(content(TimeRange::week)), (Lines{"Yesterday"}));
}

TEST(HistoryDays, areToldApartWhereClocksGoBackAcrossMidnight) {
  // At 00:01 on October 29 the clocks of Newfoundland went back to 23:01: that day's first minute came before the
  // last hour of the day before.
  ScreenFixture fixture(at("2006-10-29T12:00:00-03:30"), {.zone = "America/St_Johns"});
  const auto medicine = fixture.add(medicineNamed("Aspirin", daily({{8, 0}})));
  const auto firstMinute = at("2006-10-29T00:00:30-02:30");
  fixture.log(medicine, firstMinute, DoseStatus::taken);
  fixture.log(medicine, firstMinute - 10min, DoseStatus::missed);
  fixture.log(medicine, firstMinute + 30min, DoseStatus::missed);
  fixture.log(medicine, firstMinute + 3h, DoseStatus::missed);
  ReminderHistoryView view(fixture.environment());
  EXPECT_EQ(titles(view.content()), (Lines{"Today", "Yesterday"}));
  EXPECT_EQ(counts(view.content()), (Lines{"1/2", "0/2"}));
  for (const size_t limit : {2u, 3u}) {
    view.rowLimit = limit;
    EXPECT_EQ(counts(view.content()), (Lines{"1/2", "0/2"})) << "also of a day that ends beyond " << limit << " rows";
  }
}

TEST(HistoryDays, yesterdayIsTheDayThatWentBefore) {
  // Samoa went without December 30, 2011.
  ScreenFixture fixture(at("2011-12-31T12:00:00+14:00"), {.zone = "Pacific/Apia"});
  const auto medicine = fixture.add(medicineNamed("Aspirin", daily({{8, 0}})));
  fixture.log(medicine, at("2011-12-29T12:00:00-10:00"), DoseStatus::taken);
  fixture.log(medicine, at("2011-12-28T12:00:00-10:00"), DoseStatus::taken);
  EXPECT_EQ(titles(ReminderHistoryView(fixture.environment()).content()), (Lines{"Yesterday", "Dec 28, 2011"}));
}

TEST(HistoryDays, areThoseOfTheUsersCalendar) {
  ScreenFixture fixture(at("2025-01-10T12:00:00+07:00"), {.zone = "Asia/Bangkok", .locale = "en_US@calendar=buddhist"});
  fixture.log(fixture.add(medicineNamed("Aspirin", daily({{8, 0}}))), at("2025-01-07T12:00:00+07:00"),
              DoseStatus::taken);
  EXPECT_EQ(titles(ReminderHistoryView(fixture.environment()).content()),
            (Lines{fixture.texts->mediumDate(at("2025-01-07T00:00:00+07:00"))}));
}

}  // namespace
}  // namespace pillora

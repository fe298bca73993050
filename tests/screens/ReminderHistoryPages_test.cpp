// SPDX-License-Identifier: MIT
// History by the page: what is shown of a long one while a person looks back.
#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"
#include "screens/ReminderHistoryView.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kMidnight = at("2025-01-10T00:00:00-05:00");
const Instant kNow = at("2025-01-10T10:30:00-05:00");

class ReminderHistoryPages : public testing::Test {
 protected:
  ReminderHistoryPages() { view_.selectedTimeRange = TimeRange::all; }

  void add(Instant scheduled) { fixture_.log(aspirin_, scheduled, DoseStatus::taken); }
  std::vector<HistoryLogRow> rows() const {
    std::vector<HistoryLogRow> rows;
    for (const HistoryDay& day : view_.content().days) rows.insert(rows.end(), day.logs.begin(), day.logs.end());
    return rows;
  }
  /// As the window does it: what is shown is drawn each time.
  void showMore(int times) {
    for (int i = 0; i < times; ++i) {
      view_.showMore();
      static_cast<void>(view_.content());
    }
  }

  ScreenFixture fixture_{kNow};
  std::shared_ptr<Medicine> aspirin_ = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}})));
  ReminderHistoryView view_{fixture_.environment()};
};

TEST_F(ReminderHistoryPages, fromFourHundredRowsOnTheLatestGiveWay) {
  for (int i = 0; i < 1000; ++i) add(kMidnight - i * 30min);
  view_.rowLimit = 1000;
  const auto all = rows();
  ASSERT_EQ(all.size(), 1000U);
  view_.showLatest();
  EXPECT_EQ(rows().size(), 100U);
  showMore(3);
  EXPECT_EQ(rows().size(), 400U);
  EXPECT_FALSE(view_.content().hasPrevious);
  for (size_t first = 100; first <= 600; first += 100) {
    showMore(1);
    const auto shown = rows();
    ASSERT_EQ(shown.size(), 400U);
    for (size_t i = 0; i < shown.size(); ++i) ASSERT_EQ(shown[i].id, all[first + i].id) << first << ' ' << i;
    const auto content = view_.content();
    EXPECT_TRUE(content.hasPrevious);
    EXPECT_EQ(content.hasMore, first < 600);
    EXPECT_EQ(content.stats.front().value, 1000) << "figures are of all";
  }
  view_.showPrevious();
  EXPECT_EQ(rows().front().id, all[500].id);
  view_.showLatest();
  EXPECT_EQ(rows().front().id, all[0].id);
  EXPECT_FALSE(view_.content().hasPrevious);
}

TEST_F(ReminderHistoryPages, aDayOfWhichTheLatestLogsGaveWayKeepsItsCountAndShowsNoFirstRow) {
  for (int i = 0; i < 480; ++i) add(kMidnight - 1min - i * 3min);
  showMore(4);
  const auto content = view_.content();
  ASSERT_EQ(content.days.size(), 1U);
  EXPECT_EQ(content.days.front().count, "480/480");
  EXPECT_EQ(content.days.front().logs.size(), 380U);
  EXPECT_FALSE(content.days.front().logs.front().isFirst);
  EXPECT_TRUE(content.days.front().logs.back().isLast);
}

TEST_F(ReminderHistoryPages, logsOfOneTimeNeverGiveWayToEachOther) {
  for (int i = 0; i < 600; ++i) add(kMidnight);
  showMore(7);
  EXPECT_EQ(rows().size(), 600U);
  EXPECT_FALSE(view_.content().hasMore);
}

}  // namespace
}  // namespace pillora

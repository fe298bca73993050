// SPDX-License-Identifier: MIT
// History as a person uses it, and what comes of it in the store.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class HistoryScreen : public WindowTest {
 protected:
  void openHistory() {
    open();
    key(Qt::Key_4, Qt::ControlModifier);
  }
  void addWeeks() {
    const auto aspirin = add("Aspirin", {{8, 0}});
    addLog(aspirin, at("2025-01-10T08:00:00-05:00"), DoseStatus::taken);
    addLog(aspirin, at("2025-01-08T08:00:00-05:00"), DoseStatus::missed);
    addLog(aspirin, at("2024-12-20T08:00:00-05:00"), DoseStatus::skipped);
    addLog(aspirin, at("2024-10-01T08:00:00-04:00"), DoseStatus::taken);
  }
  /// The days on show, the latest first.
  std::string daysShown() {
    std::string shown;
    for (const char* day : {"Today", "Jan 8, 2025", "Dec 20, 2024", "Oct 1, 2024"}) {
      if (headings(day) > 0) shown += std::string(shown.empty() ? "" : "; ") + day;
    }
    return shown;
  }
};

TEST_F(HistoryScreen, theRangeIsChosenByPressAndByArrow) {
  addWeeks();
  openHistory();
  EXPECT_EQ(daysShown(), "Today; Jan 8, 2025");
  tap("Month");
  EXPECT_EQ(daysShown(), "Today; Jan 8, 2025; Dec 20, 2024");
  EXPECT_TRUE(shows("33"));
  key(Qt::Key_Right);
  EXPECT_TRUE(isOn("All"));
  EXPECT_EQ(daysShown(), "Today; Jan 8, 2025; Dec 20, 2024; Oct 1, 2024");
  touch("Today");
  EXPECT_EQ(daysShown(), "Today");
  EXPECT_TRUE(shows("Perfect!"));
}

TEST_F(HistoryScreen, aChipNarrowsTheList) {
  addWeeks();
  openHistory();
  tap("Missed");
  EXPECT_EQ(daysShown(), "Jan 8, 2025");
  tap("Skipped");
  EXPECT_EQ(daysShown(), "");
  EXPECT_TRUE(shows("No History Yet"));
  tap("Taken");
  EXPECT_EQ(daysShown(), "Today");
  EXPECT_TRUE(isOn("Taken"));
  tap("All", 1);
  EXPECT_EQ(daysShown(), "Today; Jan 8, 2025");
}

TEST_F(HistoryScreen, theArrowsWalkOverTheChipsAndSpacePicksOne) {
  addWeeks();
  openHistory();
  ASSERT_TRUE(tabTo("Taken"));
  key(Qt::Key_Right);
  EXPECT_FALSE(isOn("Missed"));
  key(Qt::Key_Space);
  EXPECT_TRUE(isOn("Missed"));
  EXPECT_EQ(daysShown(), "Jan 8, 2025");
}

TEST_F(HistoryScreen, aMissedDoseIsMarkedAsTakenAfterAll) {
  addWeeks();
  openHistory();
  tap("Mark as Taken, Aspirin");
  const auto changed = logs().at(2);
  EXPECT_EQ(changed->scheduledTime(), at("2025-01-08T08:00:00-05:00"));
  EXPECT_EQ(changed->status(), DoseStatus::taken);
  EXPECT_EQ(changed->actionTime(), clock.now());
  EXPECT_EQ(logs().size(), 4U);
  EXPECT_TRUE(shows("2d late") && shows("Perfect!"));
  EXPECT_FALSE(has("Mark as Taken, Aspirin") || has("Mark as Skipped, Aspirin"));
  EXPECT_TRUE(center.pending.empty());
}

TEST_F(HistoryScreen, aMissedDoseIsMarkedAsSkippedAndMayStillBeTaken) {
  addWeeks();
  openHistory();
  touch("Mark as Skipped, Aspirin");
  EXPECT_EQ(logs().at(2)->status(), DoseStatus::skipped);
  EXPECT_FALSE(has("Mark as Skipped, Aspirin"));
  ASSERT_TRUE(tabTo("Mark as Taken, Aspirin"));
  key(Qt::Key_Space);
  EXPECT_EQ(logs().at(2)->status(), DoseStatus::taken);
  EXPECT_EQ(desktop_.calls, (std::vector<std::string>{"vibrate", "vibrate"}));
}

TEST_F(HistoryScreen, moreIsShownWhenTheEndComesNear) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  for (int day = 1; day <= 250; ++day) {
    context().insert(
        DoseLog::make(clock.now() - std::chrono::hours(24 * day), clock.now(), DoseStatus::taken, 0, "", aspirin));
  }
  executor.drain();
  openHistory();
  tap("All");
  ASSERT_EQ(headings("May 5, 2024"), 0);
  for (int turn = 0; turn < 100 && headings("May 5, 2024") == 0; ++turn) scrollDown();
  EXPECT_EQ(headings("May 5, 2024"), 1);
  EXPECT_FALSE(app_->history()->content()->property("hasMore").toBool());
}

TEST_F(HistoryScreen, aFlickOfAFingerScrolls) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  for (int day = 1; day <= 6; ++day) {
    addLog(aspirin, clock.now() - std::chrono::hours(24 * day), DoseStatus::taken);
  }
  openHistory();
  ASSERT_TRUE(isInSight("History") && isInSight("Adherence Rate"));
  flick(-400);
  EXPECT_TRUE(QTest::qWaitFor([&] { return isInSight("Jan 4, 2025"); }));
  EXPECT_FALSE(isInSight("Adherence Rate"));
}

}  // namespace
}  // namespace pillora

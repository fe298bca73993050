// SPDX-License-Identifier: MIT
// Upcoming as a person uses it, and what comes of it in the store.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class UpcomingScreen : public WindowTest {
 protected:
  void openUpcoming() {
    open();
    key(Qt::Key_2, Qt::ControlModifier);
  }
};

TEST_F(UpcomingScreen, aDoseOfTomorrowIsTakenAndNothingPlanned) {
  add("Aspirin", {{8, 0}});
  openUpcoming();
  EXPECT_TRUE(shows("Tomorrow"));
  tap("Take, Aspirin");
  ASSERT_EQ(logs().size(), 1U);
  EXPECT_EQ(logs().front()->status(), DoseStatus::taken);
  EXPECT_EQ(logs().front()->scheduledTime(), at("2025-01-11T08:00:00-05:00"));
  EXPECT_FALSE(shows("Tomorrow"));
  EXPECT_TRUE(center.pending.empty());
  EXPECT_EQ(desktop_.calls, std::vector<std::string>{"vibrate"});
}

TEST_F(UpcomingScreen, theSecondDoseOfADayIsSkippedAndTheOthersStay) {
  add("Aspirin", {{10, 0}, {20, 0}});
  openUpcoming();
  EXPECT_TRUE(shows("Today"));
  touch("Skip, Aspirin");
  tap("Skip, Aspirin", 1);
  ASSERT_EQ(logs().size(), 2U);
  EXPECT_EQ(logs().front()->scheduledTime(), at("2025-01-10T10:00:00-05:00"));
  EXPECT_EQ(logs().back()->scheduledTime(), at("2025-01-11T10:00:00-05:00"));
  for (const auto& log : logs()) EXPECT_EQ(log->status(), DoseStatus::skipped);
}

TEST_F(UpcomingScreen, theEntryThatWasDrawnIsTheOneRecorded) {
  NewMedicine values;
  values.name = "Drops";
  values.interval = hourly(4);
  add(std::move(values));
  openUpcoming();
  clock.advance(std::chrono::minutes(1));  // a list computed now would name other times
  tap("Take, Drops");
  ASSERT_EQ(logs().size(), 1U);
  EXPECT_EQ(logs().front()->scheduledTime(), at("2025-01-10T12:59:00-05:00"));
}

TEST_F(UpcomingScreen, moreIsShownWhenTheEndComesNearAndHomeLeadsBackToTheFirst) {
  NewMedicine values;
  values.name = "Drops";
  values.interval = custom(15);
  add(std::move(values));
  openUpcoming();
  const auto lengthOf = [&] { return app_->upcoming()->content()->property("hasMore").toBool(); };
  ASSERT_TRUE(lengthOf());
  EXPECT_FALSE(shows("Friday, Jan 17"));
  for (int turn = 0; turn < 60 && !shows("Friday, Jan 17"); ++turn) scrollDown(3);
  EXPECT_TRUE(shows("Friday, Jan 17"));
  EXPECT_FALSE(lengthOf());
  EXPECT_EQ(headings("Today"), 0);
  key(Qt::Key_Home);
  EXPECT_EQ(headings("Today"), 1);
  EXPECT_TRUE(isInSight("9:14 AM"));
}

TEST_F(UpcomingScreen, anEmptyScreenSaysWhy) {
  openUpcoming();
  EXPECT_TRUE(shows("No Medicines"));
  NewMedicine values;
  values.name = "Nothing";
  values.interval = daily({});
  add(std::move(values));
  settleAll();
  EXPECT_TRUE(shows("All Caught Up"));
}

}  // namespace
}  // namespace pillora

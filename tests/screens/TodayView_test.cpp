// SPDX-License-Identifier: MIT
#include "screens/TodayView.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/RefusingCalendar.h"
#include "doubles/ScreenFixture.h"
#include "support/Json.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kMidnight = at("2025-01-10T00:00:00-05:00");
const Instant kNow = at("2025-01-10T10:30:00-05:00");

class TodayViewTest : public testing::Test {
 protected:
  std::shared_ptr<Medicine> addDaily(const std::string& name, int64_t hour, int64_t minute = 0) {
    return fixture_.add(medicineNamed(name, daily({{hour, minute}})));
  }
  TodayContent content() const { return view_.content(); }

  ScreenFixture fixture_{kNow};
  TodayView view_{fixture_.environment()};
};

TEST_F(TodayViewTest, withoutAnyMedicineOnlyTheEmptyStateTitleAndToolbarAreThere) {
  fixture_.log(nullptr, kNow, DoseStatus::taken);
  const TodayContent today = content();
  EXPECT_EQ(today.title, "Today");
  EXPECT_EQ(today.toolbar, (std::vector<ActionItem>{{"addMedicine", "Add Medicine", "plus.circle.fill"}}));
  EXPECT_EQ(today.empty,
            (Panel{"pills.circle", "No Medicines Added", "Add your first medicine to start tracking your reminders."}));
  EXPECT_EQ(today.emptyAction, (ActionItem{"addMedicine", "Add Medicine", "plus"}));
  EXPECT_FALSE(today.greeting || today.date || today.progress || today.message);
  EXPECT_FALSE(today.dosesTitle || today.activityTitle);
  EXPECT_TRUE(today.badges.empty() && today.doses.empty() && today.activity.empty());
}

TEST_F(TodayViewTest, titleAndToolbarStayWithMedicines) {
  addDaily("Aspirin", 12);
  const TodayContent today = content();
  EXPECT_EQ(today.title, "Today");
  EXPECT_EQ(today.toolbar, (std::vector<ActionItem>{{"addMedicine", "Add Medicine", "plus.circle.fill"}}));
  EXPECT_FALSE(today.empty || today.emptyAction);
}

TEST_F(TodayViewTest, greetingFollowsTheLocalHour) {
  addDaily("Aspirin", 12);
  const std::pair<const char*, const char*> cases[] = {
      {"2025-01-10T00:00:00-05:00", "Good Night"},     {"2025-01-10T04:59:59-05:00", "Good Night"},
      {"2025-01-10T05:00:00-05:00", "Good Morning"},   {"2025-01-10T11:59:59-05:00", "Good Morning"},
      {"2025-01-10T12:00:00-05:00", "Good Afternoon"}, {"2025-01-10T16:59:59-05:00", "Good Afternoon"},
      {"2025-01-10T17:00:00-05:00", "Good Evening"},   {"2025-01-10T20:59:59-05:00", "Good Evening"},
      {"2025-01-10T21:00:00-05:00", "Good Night"},     {"2025-01-10T23:59:59-05:00", "Good Night"},
  };
  for (const auto& [now, greeting] : cases) {
    fixture_.clock.set(at(now));
    EXPECT_EQ(content().greeting, greeting) << now;
  }
}

TEST_F(TodayViewTest, dateIsTheFullDateOfTheLocale) {
  addDaily("Aspirin", 12);
  EXPECT_EQ(content().date, "Friday, January 10, 2025");
}

TEST_F(TodayViewTest, progressIsTakenDosesByMedicinesDueToday) {
  struct Case {
    int due, taken;
    double value;
    std::string text, color;
  };
  const Case cases[] = {
      {0, 0, 0, "0%", "orange"},         {1, 0, 0, "0%", "orange"},        {3, 1, 1.0 / 3, "33%", "orange"},
      {2, 1, 0.5, "50%", "blue"},        {3, 2, 2.0 / 3, "66%", "blue"},   {50, 29, 0.58, "57%", "blue"},
      {100, 99, 0.99, "99%", "blue"},    {1, 1, 1, "100%", "green"},       {1, 3, 3, "300%", "green"},
      {200, 99, 0.495, "49%", "orange"}, {200, 199, 0.995, "99%", "blue"},
  };
  for (const Case& each : cases) {
    ScreenFixture fixture(kNow);
    const auto weeklyAway = fixture.add(medicineNamed("Not due", hourly(0)));
    for (int i = 0; i < each.due; ++i) fixture.add(medicineNamed("Due", daily({{8, 0}})));
    for (int i = 0; i < each.taken; ++i)
      fixture.log(weeklyAway, kMidnight + std::chrono::minutes(i), DoseStatus::taken);
    const auto progress = TodayView(fixture.environment()).content().progress;
    ASSERT_TRUE(progress);
    EXPECT_EQ(progress->value, each.value);
    EXPECT_EQ(progress->text, each.text);
    EXPECT_EQ(progress->color, each.color) << each.text;
  }
}

TEST_F(TodayViewTest, aTakeWithNoMedicineDueLeavesProgressAtZero) {
  const auto inactive = addDaily("Aspirin", 8);
  fixture_.log(inactive, kNow, DoseStatus::taken, kNow);
  inactive->isActive = false;
  EXPECT_EQ(content().progress->text, "0%");
  EXPECT_EQ(content().badges[0].value, "1");
}

TEST_F(TodayViewTest, badgesCountTakenRemainingAndSkipped) {
  const auto morning = addDaily("Aspirin", 8);
  addDaily("Ibuprofen", 12);
  addDaily("Zinc", 18);
  fixture_.log(morning, kMidnight + 8h, DoseStatus::taken, kNow);
  for (const DoseStatus status : {DoseStatus::skipped, DoseStatus::skipped, DoseStatus::missed, DoseStatus::snoozed}) {
    fixture_.log(morning, kMidnight + 9h, status);
  }
  const auto badges = content().badges;
  ASSERT_EQ(badges.size(), 3U);
  const StatBadge expected[] = {{"checkmark.circle.fill", "1", "Taken", "green"},
                                {"clock.fill", "2", "Remaining", "blue"},
                                {"forward.circle.fill", "2", "Skipped", "orange"}};
  for (size_t i = 0; i < badges.size(); ++i) EXPECT_EQ(toJson(badges[i]), toJson(expected[i]));
}

TEST_F(TodayViewTest, aCardShowsTheMedicineAndItsDueTime) {
  NewMedicine values = medicineNamed("Aspirin", daily({{12, 5}}));
  values.dosage = "2";
  values.color = "teal";
  values.icon = "cross.vial";
  const auto medicine = fixture_.add(values);
  const TodayContent today = content();
  EXPECT_EQ(today.dosesTitle, "Today's Medicines");
  ASSERT_EQ(today.doses.size(), 1U);
  const UpcomingReminderCard& card = today.doses.front();
  EXPECT_EQ(card.medicineId, medicine->id());
  EXPECT_EQ(card.name, "Aspirin");
  EXPECT_EQ(card.dosageText, "2 tablet");
  EXPECT_EQ(card.icon, "cross.vial");
  EXPECT_EQ(card.color, "teal");
  EXPECT_EQ(card.time, kMidnight + 12h + 5min);
  EXPECT_EQ(plainBlanks(card.timeText), "12:05 PM");
  EXPECT_EQ(card.countdown, "In 1h 35m");
  EXPECT_EQ(card.countdownColor, "green");
}

TEST_F(TodayViewTest, aCardOffersTakeSnoozeAndSkip) {
  addDaily("Aspirin", 12);
  const UpcomingReminderCard card = content().doses.front();
  EXPECT_TRUE(card.allowSnooze);
  EXPECT_EQ(card.actions, (std::vector<ActionItem>{{"take", "Take", "checkmark"},
                                                   {"snooze", "Snooze", "clock.arrow.circlepath"},
                                                   {"skip", "Skip", "forward.fill"}}));
}

TEST_F(TodayViewTest, aCardOffersNoSnoozeWhereItIsNotAllowed) {
  addDaily("Aspirin", 12)->allowSnooze = false;
  const UpcomingReminderCard card = content().doses.front();
  EXPECT_FALSE(card.allowSnooze);
  EXPECT_EQ(card.actions, (std::vector<ActionItem>{{"take", "Take", "checkmark"}, {"skip", "Skip", "forward.fill"}}));
}

TEST_F(TodayViewTest, countdownIsWordedByItsDistance) {
  struct Case {
    Instant::Duration ahead;
    std::string text, color;
  };
  const Case cases[] = {
      {-2h, "Overdue", "red"},
      {-1us, "Overdue", "red"},
      {0s, "Now", "green"},
      {59s, "Now", "green"},
      {60s - 1us, "Now", "green"},
      {60s, "In 1 min", "green"},
      {119s, "In 1 min", "green"},
      {3599s, "In 59 min", "green"},
      {3600s, "In 1h", "green"},
      {3659s, "In 1h", "green"},
      {3660s, "In 1h 1m", "green"},
      {7200s, "In 2h", "green"},
      {2h + 59min + 59s, "In 2h 59m", "green"},
  };
  addDaily("Aspirin", 12);
  for (const Case& each : cases) {
    fixture_.clock.set(kMidnight + 12h - each.ahead);
    const UpcomingReminderCard card = content().doses.front();
    EXPECT_EQ(card.countdown, each.text);
    EXPECT_EQ(card.countdownColor, each.color) << each.text;
  }
}

TEST_F(TodayViewTest, countdownHasNoDayUnit) {
  const auto medicine = addDaily("Aspirin", 12);
  EXPECT_EQ(upcomingReminderCard({medicine, kNow + 30h}, kNow, AppSettings(), *fixture_.texts).countdown, "In 30h");
  fixture_.clock.set(at("2025-11-02T00:00:00-04:00"));  // a day of 25 hours
  addDaily("Zinc", 23, 59);
  EXPECT_EQ(content().doses.back().countdown, "In 24h 59m");
}

TEST_F(TodayViewTest, dosesAreListedByTimeAndTiesByMedicine) {
  addDaily("Evening", 18);
  addDaily("Second at noon", 12);
  addDaily("Third at noon", 12);
  addDaily("Morning", 8);
  std::vector<std::string> names;
  for (const auto& card : content().doses) names.push_back(card.name);
  EXPECT_EQ(names, (std::vector<std::string>{"Morning", "Second at noon", "Third at noon", "Evening"}));
}

TEST_F(TodayViewTest, anHourlyMedicineIsCountedFromAMinuteBeforeMidnight) {
  fixture_.add(medicineNamed("Drops", hourly(4)));
  EXPECT_EQ(content().doses.front().time, kMidnight + 3h + 59min);
}

TEST_F(TodayViewTest, anHourlyMedicineIsCountedInElapsedHoursAcrossAClockChange) {
  fixture_.clock.set(at("2025-03-09T12:00:00-04:00"));
  fixture_.add(medicineNamed("Drops", hourly(4)));
  EXPECT_EQ(content().doses.front().time, at("2025-03-09T04:59:00-04:00"));
}

TEST_F(TodayViewTest, aDoseAtMidnightIsListedToday) {
  addDaily("Aspirin", 0);
  EXPECT_EQ(content().doses.front().time, kMidnight);
}

TEST_F(TodayViewTest, aDoseOfTomorrowIsNotListedAndNotDue) {
  fixture_.add(medicineNamed("Aspirin", weekly({7}, {9, 0})));
  EXPECT_TRUE(content().doses.empty());
  EXPECT_EQ(content().progress->value, 0);
}

TEST_F(TodayViewTest, onceTheFirstDoseIsDoneLaterDosesAreNotOffered) {
  const auto medicine = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}, {20, 0}})));
  ASSERT_TRUE(*view_.take(medicine->id(), content().doses.front().time));
  EXPECT_TRUE(content().doses.empty());
  EXPECT_EQ(content().progress->text, "100%");
}

TEST_F(TodayViewTest, withNoActiveMedicineThereIsNoMessage) {
  const auto medicine = addDaily("Aspirin", 8);
  medicine->isActive = false;
  fixture_.log(medicine, kMidnight + 8h, DoseStatus::taken, kNow);
  const TodayContent today = content();
  EXPECT_TRUE(today.doses.empty());
  EXPECT_FALSE(today.message || today.dosesTitle || today.empty);
  EXPECT_EQ(today.greeting, "Good Morning");
  EXPECT_EQ(today.activity.size(), 1U);
}

TEST_F(TodayViewTest, whenEverythingIsTakenOrSkippedTheDayIsDone) {
  for (const DoseStatus status : {DoseStatus::taken, DoseStatus::skipped}) {
    ScreenFixture fixture(kNow);
    fixture.log(fixture.add(medicineNamed("Aspirin", daily({{8, 0}}))), kMidnight + 8h, status, kNow);
    EXPECT_EQ(TodayView(fixture.environment()).content().message,
              (Panel{"checkmark.circle.fill", "All done for today!", "You've completed all your medicines."}));
  }
}

TEST_F(TodayViewTest, withNothingDueAndNothingDoneNoReminderIsScheduled) {
  const auto medicine = fixture_.add(medicineNamed("Drops", hourly(0)));
  fixture_.log(medicine, kMidnight, DoseStatus::missed);
  EXPECT_EQ(content().message, (Panel{"calendar.badge.clock", "No reminders scheduled for today", std::nullopt}));
}

TEST_F(TodayViewTest, thereIsNoMessageBesideOpenDoses) {
  fixture_.log(addDaily("Aspirin", 8), kMidnight + 8h, DoseStatus::taken, kNow);
  addDaily("Ibuprofen", 9);
  EXPECT_FALSE(content().message);
  EXPECT_EQ(content().doses.size(), 1U);
}

TEST_F(TodayViewTest, activityHoldsEveryLogScheduledFromTheStartOfTodayOn) {
  const auto medicine = addDaily("Aspirin", 8);
  fixture_.log(medicine, kMidnight - 1us, DoseStatus::taken, kNow);  // yesterday's, marked today
  fixture_.log(medicine, kMidnight + 32h, DoseStatus::taken, kNow);  // tomorrow's, taken early
  fixture_.log(medicine, kMidnight, DoseStatus::skipped, kNow);
  const TodayContent today = content();
  EXPECT_EQ(today.activityTitle, "Activity");
  ASSERT_EQ(today.activity.size(), 2U);
  EXPECT_EQ(today.activity[0].time, kMidnight);
  EXPECT_EQ(today.activity[1].time, kMidnight + 32h);
  EXPECT_EQ(today.badges[0].value, "1");
}

TEST_F(TodayViewTest, withoutLogsThereIsNoActivityHeading) {
  addDaily("Aspirin", 8);
  EXPECT_FALSE(content().activityTitle);
}

TEST_F(TodayViewTest, activityTiesAreInTheOrderOfMedicinesThenOfLogs) {
  const auto first = addDaily("First", 8);
  const auto second = addDaily("Second", 8);
  const auto fourth = fixture_.log(second, kMidnight + 8h, DoseStatus::skipped);
  const auto fifth = fixture_.log(second, kMidnight + 8h, DoseStatus::taken);
  const auto third = fixture_.log(first, kMidnight + 8h, DoseStatus::missed);
  const auto earliest = fixture_.log(second, kMidnight + 7h, DoseStatus::missed);
  std::vector<UUID> ids;
  for (const auto& row : content().activity) ids.push_back(row.id);
  EXPECT_EQ(ids, (std::vector<UUID>{earliest->id(), third->id(), fourth->id(), fifth->id()}));
}

TEST_F(TodayViewTest, aLogThatBelongsToNoMedicineIsNotListed) {
  addDaily("Aspirin", 8);
  fixture_.log(nullptr, kNow, DoseStatus::taken, kNow);
  EXPECT_TRUE(content().activity.empty());
  EXPECT_EQ(content().badges[0].value, "0");
}

TEST_F(TodayViewTest, aRowShowsStatusScheduledTimeAndTiming) {
  const auto log = fixture_.log(addDaily("Aspirin", 8), kMidnight + 8h, DoseStatus::taken, kMidnight + 10h + 15min);
  const DoseLogRow row = content().activity.front();
  EXPECT_EQ(row.id, log->id());
  EXPECT_EQ(row.name, "Aspirin");
  EXPECT_EQ(row.status, "Taken");
  EXPECT_EQ(row.statusText, "Taken");
  EXPECT_EQ(row.statusColor, "green");
  EXPECT_EQ(plainBlanks(row.timeText), "8:00 AM");
  EXPECT_EQ(row.timing, "2h 15m late");
  EXPECT_EQ(row.timingColor, "orange");
  EXPECT_EQ(row.undoSymbol, "arrow.uturn.backward");
  EXPECT_EQ(row.undoAlert, (ConfirmationAlert{"Undo Taken", "This will remove the \"taken\" record for this medicine.",
                                              "Cancel", "Undo"}));
}

TEST_F(TodayViewTest, aRowWithoutTimingHasNoTimingColour) {
  fixture_.log(addDaily("Aspirin", 8), kMidnight + 8h, DoseStatus::skipped, kNow);
  const DoseLogRow row = content().activity.front();
  EXPECT_FALSE(row.timing || row.timingColor);
  EXPECT_EQ(row.undoAlert.title, "Undo Skipped");
  EXPECT_EQ(row.undoAlert.message, "This will remove the \"skipped\" record for this medicine.");
}

TEST_F(TodayViewTest, anUnknownStatusTextIsShownAsPendingAndKept) {
  const auto log = fixture_.log(addDaily("Aspirin", 8), kMidnight + 8h, DoseStatus::taken, kNow);
  log->statusRaw = "taken";
  const TodayContent today = content();
  EXPECT_EQ(today.activity.front().status, "Pending");
  EXPECT_EQ(today.activity.front().statusText, "Pending");
  EXPECT_EQ(today.activity.front().statusColor, "grey");
  EXPECT_FALSE(today.activity.front().timing);
  EXPECT_EQ(today.badges[0].value, "0");
  EXPECT_EQ(today.doses.size(), 1U);
  EXPECT_EQ(log->statusRaw(), "taken");
}

TEST_F(TodayViewTest, aLogWhoseMedicineIsGoneIsNamedUnknown) {
  const auto log = DoseLog::make(kNow, kNow, DoseStatus::missed);
  EXPECT_EQ(doseLogRow(*log, *fixture_.texts, false).name, "Unknown");
}

TEST_F(TodayViewTest, undoOffersTheDoseAgain) {
  const auto medicine = addDaily("Aspirin", 8);
  const auto log = *view_.take(medicine->id(), content().doses.front().time);
  ASSERT_TRUE(log);
  EXPECT_TRUE(content().doses.empty());
  ASSERT_TRUE(view_.undo(*log));
  const TodayContent today = content();
  EXPECT_EQ(today.doses.size(), 1U);
  EXPECT_TRUE(today.activity.empty());
  EXPECT_EQ(today.progress->text, "0%");
}

TEST_F(TodayViewTest, theDayTurnsAtLocalMidnight) {
  const auto medicine = addDaily("Aspirin", 8);
  ASSERT_TRUE(*view_.take(medicine->id(), kMidnight + 8h));
  EXPECT_EQ(content().activity.size(), 1U);
  fixture_.clock.set(kMidnight + 24h - 1us);
  EXPECT_EQ(content().activity.size(), 1U);
  fixture_.clock.set(kMidnight + 24h);
  const TodayContent today = content();
  EXPECT_TRUE(today.activity.empty());
  EXPECT_EQ(today.doses.front().time, kMidnight + 32h);
  EXPECT_EQ(today.date, "Saturday, January 11, 2025");
}

TEST_F(TodayViewTest, anUnknownColourIsShownAsBlueAndKept) {
  const auto medicine = addDaily("Aspirin", 8);
  medicine->color = "Teal";
  EXPECT_EQ(content().doses.front().color, "blue");
  EXPECT_EQ(medicine->color(), "Teal");
}

TEST_F(TodayViewTest, aNameIsShownAsItIs) {
  addDaily("{minutes} <b>%s", 8);
  EXPECT_EQ(content().doses.front().name, "{minutes} <b>%s");
}

TEST_F(TodayViewTest, anIntervalThatCannotBeReadFallsDueAtNine) {
  addDaily("Aspirin", 8)->intervalData = "[]";
  EXPECT_EQ(content().doses.front().time, kMidnight + 9h);
}

TEST_F(TodayViewTest, aCalendarThatFormsNoDatesLeavesTheListEmpty) {
  addDaily("Aspirin", 8);
  const RefusingCalendar refusing(*fixture_.calendar, {.formingDates = true});
  const TodayView view({fixture_.context(), fixture_.clock, refusing, *fixture_.texts, fixture_.notifications});
  EXPECT_TRUE(view.content().doses.empty());
  EXPECT_EQ(view.content().message->title, "No reminders scheduled for today");
}

}  // namespace
}  // namespace pillora

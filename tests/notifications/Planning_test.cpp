// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <thread>

#include "doubles/Intervals.h"
#include "doubles/RefusingCalendar.h"
#include "notifications/NotificationFixture.h"
#include "schedule/Schedule.h"

namespace pillora {
namespace {

using Lines = std::vector<std::string>;

std::string doseText(const char* medicine, Instant due) { return doseIdentifier(*UUID::parse(medicine), due); }

/// The identifiers of the reminders handed over, follow-ups left out.
Lines remindersOf(const FakeNotificationCenter& center) {
  Lines reminders;
  for (const auto& request : center.added) {
    if (request.identifier.find("-followup-") == std::string::npos) reminders.push_back(request.identifier);
  }
  return reminders;
}

/// A manager on a Friday at 09:00 in New York.
struct Planning : NotificationFixture {
  Planning() { center.calls.clear(); }
  NotificationManager manager{environment()};
};

TEST(Planning, thirtyRemindersOfADailyMedicineAreThoseOfThirtyDays) {
  Planning in;
  in.manager.scheduleUpcomingNotifications(*aspirin(), 30);
  Lines expected;
  for (int day = 1; day <= 30; ++day) {
    expected.push_back(doseText(kAspirinId, at("2025-01-10T08:00:00-05:00") + day * std::chrono::hours(24)));
  }
  EXPECT_EQ(remindersOf(in.center), expected);
  EXPECT_EQ(in.center.pending.size(), 30U * 16);
}

TEST(Planning, handsEachReminderAndItsFollowUpsOverInTheOrderOfTime) {
  Planning in;
  const auto medicine = aspirin();
  medicine->intervalData = encodeInterval(daily({{22, 0}}));
  in.manager.scheduleUpcomingNotifications(*medicine, 2);
  const std::string first = doseText(kAspirinId, at("2025-01-10T22:00:00-05:00"));
  const std::string second = doseText(kAspirinId, at("2025-01-11T22:00:00-05:00"));
  EXPECT_EQ(in.center.calls,
            (Lines{"setNotificationCategories MEDICINE_REMINDER", "add " + first, "add " + first + "-followup-1",
                   "setNotificationCategories MEDICINE_REMINDER", "add " + second, "add " + second + "-followup-1"}));
}

TEST(Planning, aMedicineThatIsNotActiveOrNotRepeatingGetsNothing) {
  for (const auto& [isActive, isRepeating] :
       {std::pair(false, true), std::pair(true, false), std::pair(false, false)}) {
    Planning in;
    const auto medicine = aspirin();
    medicine->isActive = isActive;
    medicine->isRepeating = isRepeating;
    in.manager.scheduleUpcomingNotifications(*medicine, 30);
    EXPECT_TRUE(in.center.calls.empty());
  }
}

TEST(Planning, aCountOfZeroOrLessPlansNothing) {
  Planning in;
  in.manager.scheduleUpcomingNotifications(*aspirin(), 0);
  in.manager.scheduleUpcomingNotifications(*aspirin(), -1);
  EXPECT_TRUE(in.center.calls.empty());
}

TEST(Planning, aDoseAtTheEndDateItselfIsStillPlannedAndALaterOneIsNot) {
  const Instant third = at("2025-01-13T08:00:00-05:00");
  for (const auto& [endDate, count] : {std::pair(third, 3U), std::pair(third - std::chrono::microseconds(1), 2U),
                                       std::pair(at("2025-01-10T00:00:00-05:00"), 0U)}) {
    Planning in;
    const auto medicine = aspirin();
    medicine->endDate = endDate;
    in.manager.scheduleUpcomingNotifications(*medicine, 30);
    EXPECT_EQ(remindersOf(in.center).size(), count);
  }
}

TEST(Planning, aMedicineWithoutANextDoseEndsThePlanning) {
  Planning in;
  const auto medicine = aspirin();
  medicine->intervalData = encodeInterval(daily({}));
  in.manager.scheduleUpcomingNotifications(*medicine, 30);
  EXPECT_TRUE(in.center.calls.empty());
}

TEST(Planning, aMedicineWhoseIntervalCannotBeReadIsPlannedAtNine) {
  Planning in;
  const auto medicine = aspirin();
  medicine->intervalData = "{";
  in.manager.scheduleUpcomingNotifications(*medicine, 1);
  EXPECT_EQ(remindersOf(in.center), Lines{doseText(kAspirinId, at("2025-01-11T09:00:00-05:00"))});
}

TEST(Planning, startDateDoesNotHoldRemindersBack) {
  Planning in;
  const auto medicine = aspirin();
  medicine->startDate = at("2025-03-01T00:00:00-05:00");
  in.manager.scheduleUpcomingNotifications(*medicine, 1);
  EXPECT_EQ(remindersOf(in.center), Lines{doseText(kAspirinId, at("2025-01-11T08:00:00-05:00"))});
}

TEST(Planning, aRelativeIntervalCountsFromNowWithItsSeconds) {
  Planning in;
  in.clock.set(at("2025-01-10T20:10:30-05:00"));
  const auto medicine = aspirin();
  medicine->intervalData = encodeInterval(hourly(4));
  in.manager.scheduleUpcomingNotifications(*medicine, 2);
  EXPECT_EQ(remindersOf(in.center), (Lines{doseText(kAspirinId, at("2025-01-11T00:10:30-05:00")),
                                           doseText(kAspirinId, at("2025-01-11T04:10:30-05:00"))}));
}

TEST(Planning, anIntervalOfZeroHandsOneReminderOverCountTimes) {
  Planning in;
  const auto medicine = aspirin();
  medicine->intervalData = encodeInterval(custom(0));
  in.manager.scheduleUpcomingNotifications(*medicine, 30);
  EXPECT_EQ(remindersOf(in.center), Lines(30, doseText(kAspirinId, in.clock.now())));
  EXPECT_EQ(in.center.pending.size(), 15U);  // the reminder of 09:00 and its follow-ups to 23:00
}

TEST(Planning, anIntervalThatGoesBackIsBoundedByTheCountAlone) {
  Planning in;
  const auto medicine = aspirin();
  medicine->intervalData = encodeInterval(custom(-5));
  in.manager.scheduleUpcomingNotifications(*medicine, 3);
  const Instant now = in.clock.now();
  const std::chrono::minutes step(5);
  EXPECT_EQ(remindersOf(in.center), (Lines{doseText(kAspirinId, now - step), doseText(kAspirinId, now - 2 * step),
                                           doseText(kAspirinId, now - 3 * step)}));
}

TEST(Planning, aCalendarThatCannotAddHoursOrMinutesGivesNoRelativeReminders) {
  NotificationFixture in;
  const RefusingCalendar refusing(*in.calendar, {.addingHours = true, .addingMinutes = true});
  NotificationManager manager(in.environmentWith(refusing));
  const auto medicine = aspirin();
  for (const auto& interval : {hourly(4), custom(30)}) {
    medicine->intervalData = encodeInterval(interval);
    manager.scheduleUpcomingNotifications(*medicine, 30);
  }
  EXPECT_TRUE(in.center.added.empty());
}

TEST(Planning, aDailyDoseKeepsItsWallTimeAcrossAClockChange) {
  Planning in;
  in.clock.set(at("2025-03-08T09:00:00-05:00"));
  in.manager.scheduleUpcomingNotifications(*aspirin(), 2);
  EXPECT_EQ(remindersOf(in.center), (Lines{doseText(kAspirinId, at("2025-03-09T08:00:00-04:00")),
                                           doseText(kAspirinId, at("2025-03-10T08:00:00-04:00"))}));
}

TEST(Planning, planningTwiceReplacesAndCancelsNothing) {
  Planning in;
  in.manager.scheduleUpcomingNotifications(*aspirin(), 3);
  const auto once = in.center.pendingIdentifiers();
  in.manager.scheduleUpcomingNotifications(*aspirin(), 3);
  EXPECT_EQ(in.center.pendingIdentifiers(), once);
  for (const auto& call : in.center.calls) EXPECT_FALSE(call.starts_with("remove")) << call;
}

TEST(Cancelling, removesTheMedicinesRemindersAndFollowUpsInOneCall) {
  Planning in;
  in.manager.scheduleNotification(*aspirin(), at("2025-01-10T22:00:00-05:00"));
  in.manager.scheduleNotification(*ibuprofenWithoutSnooze(), at("2025-01-10T22:00:00-05:00"));
  const std::string dose = doseText(kAspirinId, at("2025-01-10T22:00:00-05:00"));
  const std::string other = doseText(kIbuprofenId, at("2025-01-10T22:00:00-05:00"));
  in.center.calls.clear();
  in.manager.cancelNotifications(*aspirin());
  EXPECT_EQ(in.center.pendingIdentifiers(), (Lines{other, other + "-followup-1"}));
  EXPECT_EQ(in.center.calls, (Lines{"getPendingNotificationRequests",
                                    "removePendingNotificationRequests " + dose + " " + dose + "-followup-1"}));
}

TEST(Cancelling, comparesThePrefixByteByByte) {
  Planning in;
  const std::string id = kAspirinId;
  std::string lowerCase = id;
  for (char& c : lowerCase) c = static_cast<char>(std::tolower(c));
  const Lines kept = {lowerCase + "-1.0", " " + id, "x" + id + "-1.0", id.substr(0, 35), "%", "*", ""};
  for (const auto& identifier : kept) {
    in.center.pending.push_back({identifier, {}, {}});
  }
  for (const auto& identifier : {id, id + "-1.0", id + "0"}) in.center.pending.push_back({identifier, {}, {}});
  in.manager.cancelNotifications(*aspirin());
  EXPECT_EQ(in.center.pendingIdentifiers(), kept);
}

TEST(Cancelling, nothingPendingIsNoFailure) {
  Planning in;
  in.manager.cancelNotifications(*aspirin());
  EXPECT_TRUE(in.center.pending.empty());
  EXPECT_TRUE(in.console.lines().empty());
}

TEST(Cancelling, thenPlanningAtOnceLeavesExactlyWhatWasPlanned) {
  Planning in;
  const auto medicine = aspirin();
  in.manager.scheduleUpcomingNotifications(*medicine, 30);
  in.clock.advance(std::chrono::hours(24));
  in.manager.cancelNotifications(*medicine);
  in.manager.scheduleUpcomingNotifications(*medicine, 2);
  EXPECT_EQ(in.center.pending.size(), 2U * 16);
  EXPECT_TRUE(in.center.pending.front().identifier.starts_with(doseText(kAspirinId, at("2025-01-12T08:00:00-05:00"))));
}

/// Cancels and plans again at once while the centre answers late: three reminders were pending, the last two of them
/// and a new one are planned.
struct LateCancel : Planning {
  LateCancel() {
    medicine->intervalData = encodeInterval(daily({{23, 30}}));
    manager.scheduleUpcomingNotifications(*medicine, 3);
    center.answersLate = true;
    clock.advance(std::chrono::hours(24));
    manager.cancelNotifications(*medicine);
    manager.scheduleUpcomingNotifications(*medicine, 3);
  }
  Lines planned() const {
    return {doseText(kAspirinId, at("2025-01-11T23:30:00-05:00")),
            doseText(kAspirinId, at("2025-01-12T23:30:00-05:00")),
            doseText(kAspirinId, at("2025-01-13T23:30:00-05:00"))};
  }
  std::shared_ptr<Medicine> medicine = aspirin();
};

TEST(Cancelling, thatIsAnsweredLateSparesWhatWasPlannedSince) {
  LateCancel in;
  in.center.release();
  EXPECT_EQ(in.center.pendingIdentifiers(), in.planned());
}

TEST(Cancelling, thatIsAnsweredOnAnotherThreadSparesWhatWasPlannedSince) {
  LateCancel in;
  std::thread([&] { in.center.release(); }).join();
  EXPECT_EQ(in.center.pending.size(), 4U);  // the old one of today is still there
  in.executor.drain();
  EXPECT_EQ(in.center.pendingIdentifiers(), in.planned());
}

TEST(Cancelling, twiceWithAPlanningInBetweenRemovesThatToo) {
  LateCancel in;
  in.manager.cancelNotifications(*in.medicine);
  in.center.release();
  EXPECT_TRUE(in.center.pending.empty());
}

TEST(Cancelling, thatIsDoneSparesNothingOfTheNext) {
  LateCancel in;
  in.center.release();
  in.manager.cancelNotifications(*in.medicine);
  in.center.release();
  EXPECT_TRUE(in.center.pending.empty());
}

TEST(Cancelling, ofOneMedicineSparesAnotherThatIsPlannedMeanwhile) {
  LateCancel in;
  in.manager.scheduleNotification(*ibuprofenWithoutSnooze(), at("2025-01-11T23:30:00-05:00"));
  in.center.release();
  EXPECT_EQ(in.center.pending.size(), 4U);
}

TEST(Cancelling, worksForAMedicineThatIsGoneByTheTimeOfTheAnswer) {
  LateCancel in;
  in.manager.cancelNotifications(*in.medicine);
  in.medicine.reset();
  in.center.release();
  EXPECT_TRUE(in.center.pending.empty());
}

}  // namespace
}  // namespace pillora

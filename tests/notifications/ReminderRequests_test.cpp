// SPDX-License-Identifier: MIT
#include "notifications/ReminderRequests.h"

#include <gtest/gtest.h>

#include "notifications/NotificationFixture.h"

namespace pillora {
namespace {

const Instant kDue = at("2025-01-10T08:00:00-05:00");  // 1736514000 seconds since 1970

DateComponents components(int64_t era, int64_t year, int64_t month, int64_t day, int64_t hour, int64_t minute) {
  return {era, year, month, false, day, hour, minute, 0};
}

WallTime wallTime(int64_t year, unsigned month, unsigned day, unsigned hour, unsigned minute) {
  return {year, month, day, hour, minute, {}};
}

UserInfo aspirinUserInfo() {
  return {{"medicineId", std::string(kAspirinId)},
          {"medicineName", std::string("Aspirin")},
          {"dosage", std::string("2")},
          {"unit", std::string("tablet")},
          {"allowSnooze", true},
          {"snoozeDuration", int64_t{10}}};
}

TEST(ReminderRequests, aReminderIsExactlyThis) {
  const NotificationFixture in;
  UNNotificationRequest expected;
  expected.identifier = std::string(kAspirinId) + "-1736514000.0";
  expected.content = {"Time for your medicine", "Aspirin - 2 tablet", "default", 1,
                      aspirinUserInfo(),        "MEDICINE_REMINDER"};
  expected.trigger = {components(1, 2025, 1, 10, 8, 0), "gregorian", wallTime(2025, 1, 10, 8, 0), false};
  EXPECT_EQ(reminderRequest(*aspirin(), kDue, *in.calendar, *in.texts), expected);
}

TEST(ReminderRequests, aFollowUpIsExactlyThis) {
  const NotificationFixture in;
  UNNotificationRequest expected;
  expected.identifier = std::string(kAspirinId) + "-1736514000.0-followup-12";
  expected.content = {"Reminder: Aspirin", "You haven't taken 2 tablet yet", "default", 1, aspirinUserInfo(),
                      "MEDICINE_REMINDER"};
  expected.content.userInfo.emplace_back("isFollowUp", true);
  expected.content.userInfo.emplace_back("originalTime", 1736514000.0);
  expected.trigger = {components(1, 2025, 1, 10, 20, 0), "gregorian", wallTime(2025, 1, 10, 20, 0), false};
  const Instant twelveHoursLater = at("2025-01-10T20:00:00-05:00");
  EXPECT_EQ(followUpRequest(*aspirin(), kDue, twelveHoursLater, 12, *in.calendar, *in.texts), expected);
}

TEST(ReminderRequests, withoutSnoozeTheCategoryAndUserInfoSaySoOnRemindersAndFollowUps) {
  const NotificationFixture in;
  const auto medicine = ibuprofenWithoutSnooze();
  for (const auto& request : {reminderRequest(*medicine, kDue, *in.calendar, *in.texts),
                              followUpRequest(*medicine, kDue, kDue, 1, *in.calendar, *in.texts)}) {
    EXPECT_EQ(request.content.categoryIdentifier, "MEDICINE_REMINDER_NO_SNOOZE");
    ASSERT_NE(entryOf<bool>(request.content.userInfo, "allowSnooze"), nullptr);
    EXPECT_FALSE(*entryOf<bool>(request.content.userInfo, "allowSnooze"));
  }
}

TEST(ReminderRequests, theCategoryWithSnoozeHasThreeActions) {
  const NotificationFixture in;
  const UNNotificationCategory expected = {"MEDICINE_REMINDER",
                                           {{"TAKEN_ACTION", "Mark as Taken", true, false},
                                            {"SNOOZE_ACTION", "Snooze 10 min", false, false},
                                            {"SKIP_ACTION", "Skip", false, true}}};
  EXPECT_EQ(reminderCategory(*aspirin(), *in.texts), expected);
}

TEST(ReminderRequests, theCategoryWithoutSnoozeHasTwoActions) {
  const NotificationFixture in;
  const UNNotificationCategory expected = {
      "MEDICINE_REMINDER_NO_SNOOZE",
      {{"TAKEN_ACTION", "Mark as Taken", true, false}, {"SKIP_ACTION", "Skip", false, true}}};
  EXPECT_EQ(reminderCategory(*ibuprofenWithoutSnooze(), *in.texts), expected);
}

TEST(ReminderRequests, theSnoozeActionNamesTheMedicinesMinutes) {
  const NotificationFixture in;
  const auto medicine = aspirin();
  for (const auto& [minutes, title] :
       {std::pair(15, "Snooze 15 min"), std::pair(1, "Snooze 1 min"), std::pair(-5, "Snooze -5 min")}) {
    medicine->snoozeDurationMinutes = minutes;
    EXPECT_EQ(reminderCategory(*medicine, *in.texts).actions.at(1).title, title);
  }
}

TEST(ReminderRequests, anIdentifierCarriesTheDueTimeToItsLastDigit) {
  const NotificationFixture in;
  const auto suffix = [&](Instant due) {
    return reminderRequest(*aspirin(), due, *in.calendar, *in.texts).identifier.substr(36);
  };
  EXPECT_EQ(suffix(kDue + std::chrono::milliseconds(250)), "-1736514000.25");
  EXPECT_EQ(suffix(Instant()), "-0.0");
  EXPECT_EQ(suffix(Instant::fromSeconds(-1)), "--1.0");
}

TEST(ReminderRequests, theTriggerDropsTheSeconds) {
  const NotificationFixture in;
  const auto trigger = minuteTrigger(at("2025-01-10T08:00:40.5-05:00"), *in.calendar);
  EXPECT_EQ(trigger, minuteTrigger(kDue, *in.calendar));
  EXPECT_EQ(trigger.dateComponents.second, 0);
  EXPECT_EQ(trigger.wallTime.second, Instant::Duration(0));
}

TEST(ReminderRequests, theTriggerIsTheLocalMinuteInTheUsersCalendarAndAsGregorianWallTime) {
  struct Case {
    const char *locale, *zone, *calendar;
    DateComponents components;
    WallTime wallTime;
  };
  const Instant time = at("2025-01-09T19:00:00Z");
  const Case cases[] = {
      {"en_US", "America/New_York", "gregorian", components(1, 2025, 1, 9, 14, 0), wallTime(2025, 1, 9, 14, 0)},
      {"en_IN", "Asia/Kolkata", "gregorian", components(1, 2025, 1, 10, 0, 30), wallTime(2025, 1, 10, 0, 30)},
      {"en_AU", "Australia/Lord_Howe", "gregorian", components(1, 2025, 1, 10, 6, 0), wallTime(2025, 1, 10, 6, 0)},
      {"th_TH", "Asia/Bangkok", "buddhist", components(0, 2568, 1, 10, 2, 0), wallTime(2025, 1, 10, 2, 0)},
      {"fa_IR", "Asia/Tehran", "persian", components(0, 1403, 10, 20, 22, 30), wallTime(2025, 1, 9, 22, 30)},
  };
  for (const Case& each : cases) {
    const auto trigger = minuteTrigger(time, *calendarOf(each.locale, each.zone));
    EXPECT_EQ(trigger, (UNCalendarNotificationTrigger{each.components, each.calendar, each.wallTime, false}))
        << each.locale;
  }
}

TEST(ReminderRequests, bothPassesOfARepeatedMinuteHaveTheSameTrigger) {
  const NotificationFixture in("America/New_York");
  const auto first = minuteTrigger(at("2025-11-02T01:30:00-04:00"), *in.calendar);
  EXPECT_EQ(first, minuteTrigger(at("2025-11-02T01:30:00-05:00"), *in.calendar));
  EXPECT_EQ(first.wallTime, wallTime(2025, 11, 2, 1, 30));
}

TEST(ReminderRequests, ownTextsFollowTheLanguageAndDataDoesNot) {
  const NotificationFixture english, other("America/New_York", "en_US", "en-XA");
  const auto medicine = aspirin();
  medicine->name = "{dosage} & <b>{unit}</b>";
  const auto inEnglish = reminderRequest(*medicine, kDue, *english.calendar, *english.texts);
  const auto inOther = reminderRequest(*medicine, kDue, *other.calendar, *other.texts);
  EXPECT_EQ(inEnglish.content.body, "{dosage} & <b>{unit}</b> - 2 tablet");
  EXPECT_NE(inOther.content.title, inEnglish.content.title);
  EXPECT_NE(inOther.content.body.find(medicine->name()), std::string::npos);
  EXPECT_EQ(inOther.identifier, inEnglish.identifier);
  EXPECT_EQ(inOther.content.userInfo, inEnglish.content.userInfo);
  const auto category = reminderCategory(*medicine, *other.texts);
  EXPECT_EQ(category.actions.at(0).identifier, "TAKEN_ACTION");
  EXPECT_NE(category.actions.at(0).title, "Mark as Taken");
}

TEST(ReminderRequests, theEndsOfTimeHaveTriggersToo) {
  const NotificationFixture in("Asia/Kolkata");
  for (const Instant time : {Instant::distantPast(), Instant::distantFuture()}) {
    const auto trigger = minuteTrigger(time, *in.calendar);
    EXPECT_EQ(trigger.wallTime.second, Instant::Duration(0));
  }
}

}  // namespace
}  // namespace pillora

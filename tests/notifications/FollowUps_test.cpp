// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "doubles/RefusingCalendar.h"
#include "notifications/NotificationFixture.h"

namespace pillora {
namespace {

std::string wallText(const UNNotificationRequest& request) {
  return iso8601(utcInstant(request.trigger.wallTime)).substr(0, 16);
}

TEST(FollowUps, comeEveryElapsedHourUntilMidnight) {
  struct Case {
    const char *zone, *due;
    size_t count;
    const char *first, *last;  ///< wall times
  };
  const Case cases[] = {
      {"America/New_York", "2025-01-10T08:00:00-05:00", 15, "2025-01-10T09:00", "2025-01-10T23:00"},
      {"America/New_York", "2025-01-10T00:00:00-05:00", 23, "2025-01-10T01:00", "2025-01-10T23:00"},
      {"America/New_York", "2025-01-10T00:30:00-05:00", 23, "2025-01-10T01:30", "2025-01-10T23:30"},
      {"America/New_York", "2025-01-10T22:59:00-05:00", 1, "2025-01-10T23:59", "2025-01-10T23:59"},
      {"America/New_York", "2025-01-10T22:59:59.999999-05:00", 1, "2025-01-10T23:59", "2025-01-10T23:59"},
      {"America/New_York", "2025-01-10T23:00:00-05:00", 0, "", ""},
      {"America/New_York", "2025-01-10T23:30:00-05:00", 0, "", ""},
      // A day of 23 hours: the hour from 02:00 to 03:00 is not there.
      {"America/New_York", "2025-03-09T00:30:00-05:00", 22, "2025-03-09T01:30", "2025-03-09T23:30"},
      // A day of 25 hours: the hour from 01:00 to 02:00 comes twice.
      {"America/New_York", "2025-11-02T00:30:00-04:00", 24, "2025-11-02T01:30", "2025-11-02T23:30"},
      {"Asia/Kolkata", "2025-03-09T00:30:00+05:30", 23, "2025-03-09T01:30", "2025-03-09T23:30"},
      // Half an hour is left out, or comes twice: the minute of the follow-ups changes with it.
      {"Australia/Lord_Howe", "2025-10-05T00:30:00+10:30", 22, "2025-10-05T01:30", "2025-10-05T23:00"},
      {"Australia/Lord_Howe", "2025-04-06T00:30:00+11:00", 23, "2025-04-06T01:30", "2025-04-06T23:00"},
  };
  for (const Case& each : cases) {
    NotificationFixture in(each.zone);
    NotificationManager manager(in.environment());
    manager.scheduleNotification(*aspirin(), at(each.due));
    ASSERT_EQ(in.center.added.size(), each.count + 1) << each.due;
    if (each.count == 0) continue;
    EXPECT_EQ(wallText(in.center.added.at(1)), each.first) << each.due;
    EXPECT_EQ(wallText(in.center.added.back()), each.last) << each.due;
  }
}

TEST(FollowUps, areNumberedFromOneAndAllNameTheDosesDueTime) {
  NotificationFixture in;
  NotificationManager manager(in.environment());
  manager.scheduleNotification(*aspirin(), at("2025-01-10T20:15:40-05:00"));
  const std::string dose = std::string(kAspirinId) + "-1736558140.0";
  EXPECT_EQ(in.center.pendingIdentifiers(),
            (std::vector<std::string>{dose, dose + "-followup-1", dose + "-followup-2", dose + "-followup-3"}));
  for (const auto& request : std::vector(in.center.added.begin() + 1, in.center.added.end())) {
    ASSERT_NE(entryOf<double>(request.content.userInfo, "originalTime"), nullptr);
    EXPECT_EQ(*entryOf<double>(request.content.userInfo, "originalTime"), 1736558140.0);
  }
}

TEST(FollowUps, ofTheRepeatedHourHaveTheSameComponentsUnderTwoOrdinals) {
  NotificationFixture in("America/New_York");
  NotificationManager manager(in.environment());
  manager.scheduleNotification(*aspirin(), at("2025-11-02T00:30:00-04:00"));
  EXPECT_EQ(wallText(in.center.added.at(1)), "2025-11-02T01:30");
  EXPECT_EQ(in.center.added.at(1).trigger, in.center.added.at(2).trigger);
  EXPECT_NE(in.center.added.at(1).identifier, in.center.added.at(2).identifier);
  EXPECT_EQ(wallText(in.center.added.at(3)), "2025-11-02T02:30");
}

TEST(FollowUps, ofADayWhoseMidnightIsSkippedEndWithTheDay) {
  NotificationFixture in("America/Sao_Paulo");
  NotificationManager manager(in.environment());
  // The day begins at 01:00, and a day later it is 01:00 again: the last follow-up is that of 00:30.
  manager.scheduleNotification(*aspirin(), at("2018-11-04T22:30:00-02:00"));
  ASSERT_EQ(in.center.added.size(), 3U);
  EXPECT_EQ(wallText(in.center.added.back()), "2018-11-05T00:30");
}

TEST(FollowUps, areNotPlannedWhenTheCalendarCannotFormTheEndOfTheDay) {
  NotificationFixture in;
  const RefusingCalendar refusing(*in.calendar, {.addingDays = true});
  NotificationManager manager(in.environmentWith(refusing));
  manager.scheduleNotification(*aspirin(), at("2025-01-10T08:00:00-05:00"));
  EXPECT_EQ(in.center.pendingIdentifiers(), std::vector<std::string>{std::string(kAspirinId) + "-1736514000.0"});
}

TEST(FollowUps, areElapsedTimeAndNeedNoHoursOfTheCalendar) {
  NotificationFixture in;
  const RefusingCalendar refusing(*in.calendar, {.addingHours = true, .addingMinutes = true});
  NotificationManager manager(in.environmentWith(refusing));
  manager.scheduleNotification(*aspirin(), at("2025-01-10T08:00:00-05:00"));
  EXPECT_EQ(in.center.added.size(), 16U);
}

TEST(FollowUps, atTheEndOfTimeAreNone) {
  NotificationFixture in("UTC");
  NotificationManager manager(in.environment());
  manager.scheduleNotification(*aspirin(), Instant::distantFuture());
  EXPECT_EQ(in.center.added.size(), 1U);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <rapidcheck/gtest.h>
#include <string>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/Places.h"
#include "doubles/RandomIntervals.h"
#include "schedule/Schedule.h"
#include "schedule/SlowSchedule.h"

namespace pillora {

void showValue(Instant instant, std::ostream& out) { out << iso8601(instant); }
void showValue(DoseStatus status, std::ostream& out) { out << rawValue(status); }

namespace {

using std::chrono::minutes;

// More cases than RapidCheck tries by itself, unless whoever runs the tests says how many.
[[maybe_unused]] const int kEnvironmentSet = setenv("RC_PARAMS", "max_success=500", 0);

/// One calendar for all cases that ask for it.
const Calendar& sharedCalendar(const std::string& locale, const std::string& zone) {
  static std::map<std::string, std::unique_ptr<Calendar>> calendars;
  auto& calendar = calendars[locale + ' ' + zone];
  if (!calendar) calendar = calendarOf(locale, zone);
  return *calendar;
}

const Calendar& anyCalendar(const std::vector<std::string>& locales) {
  const auto locale = *rc::gen::elementOf(locales);
  const auto zone = *rc::gen::element<std::string>(
      "UTC", "America/New_York", "Australia/Lord_Howe", "America/Havana", "America/Sao_Paulo", "Asia/Kolkata",
      "Europe/Dublin", "Africa/Casablanca", "Antarctica/Troll", "Asia/Tehran", "America/St_Johns");
  return sharedCalendar(locale, zone);
}

const std::vector<std::string> kGregorian = {"en_US"};
const std::vector<std::string> kOthers = {"th_TH@calendar=buddhist", "fa_IR@calendar=persian", "he_IL@calendar=hebrew"};

/// Half of them any instant from 1980 to 2090, half within two days of a clock change in one of the zones.
rc::Gen<Instant> anyInstant() {
  const auto any = rc::gen::inRange<int64_t>(315'532'800, 3'786'912'000);
  const auto change = rc::gen::apply(
      [](Instant transition, int64_t distance) { return transition.microseconds() / 1'000'000 + distance; },
      rc::gen::element(at("2025-03-09T07:00:00Z"), at("2025-11-02T06:00:00Z"), at("2025-10-04T15:30:00Z"),
                       at("2025-04-05T15:00:00Z"), at("2025-11-02T05:00:00Z"), at("2018-11-04T03:00:00Z"),
                       at("2018-02-18T02:00:00Z"), at("2025-03-30T01:00:00Z"), at("2025-10-26T01:00:00Z"),
                       at("2025-02-23T02:00:00Z"), at("2022-03-21T20:30:00Z"), at("2011-03-13T03:31:00Z")),
      rc::gen::inRange<int64_t>(-172'800, 172'800));
  return rc::gen::apply(
      [](int64_t seconds, int64_t micros) {
        return Instant::fromSeconds(seconds) + Instant::Duration(std::max<int64_t>(micros, 0));
      },
      rc::gen::oneOf(any, change), rc::gen::inRange<int64_t>(-1'000'000, 1'000'000));
}

RC_GTEST_PROP(NextOccurrenceProperty, isWhatTheSlowScheduleFinds, ()) {
  const Calendar& calendar = anyCalendar(kGregorian);
  const auto interval = *plainInterval();
  const auto after = *anyInstant();
  RC_ASSERT(interval.nextOccurrence(after, calendar) == SlowSchedule(calendar).nextOccurrence(interval, after));
}

RC_GTEST_PROP(NextOccurrenceProperty, isWhatTheSlowScheduleFindsInOtherCalendars, ()) {
  const Calendar& calendar = anyCalendar(kOthers);
  const auto interval = *plainInterval();
  const auto after = *anyInstant();
  RC_ASSERT(interval.nextOccurrence(after, calendar) == SlowSchedule(calendar).nextOccurrence(interval, after));
}

RC_GTEST_PROP(NextOccurrenceProperty, isStrictlyLaterForIntervalsAsPeopleSetThem, ()) {
  const Calendar& calendar = anyCalendar(kGregorian);
  const auto interval = *plainInterval();
  const auto after = *anyInstant();
  const auto time = interval.nextOccurrence(after, calendar);
  RC_ASSERT(!time || *time > after);
  const bool isEmpty = (interval.type == ReminderIntervalType::daily && interval.dailyTimes.empty()) ||
                       (interval.type == ReminderIntervalType::weekly && interval.weeklyDays.empty()) ||
                       (interval.type == ReminderIntervalType::monthly && interval.monthlyDays.empty());
  RC_ASSERT(time.has_value() != isEmpty);
}

RC_GTEST_PROP(NextOccurrenceProperty, isTheEarliestOfItsDaysAndTimesWhateverTheNumbers, ()) {
  const Calendar& calendar = anyCalendar(*rc::gen::element(kGregorian, kOthers));
  const auto interval = *rc::gen::oneOf(plainInterval(), anyInterval());
  const auto after = *anyInstant();
  std::optional<Instant> earliest;
  const auto consider = [&](const ReminderInterval& one) {
    const auto time = one.nextOccurrence(after, calendar);
    if (time && (!earliest || *time < *earliest)) earliest = time;
  };
  switch (interval.type) {
    case ReminderIntervalType::daily:
      for (const TimeOfDay& time : interval.dailyTimes) consider(daily({time}));
      break;
    case ReminderIntervalType::weekly:
      for (const int64_t day : interval.weeklyDays) consider(weekly({day}, interval.weeklyTime));
      break;
    case ReminderIntervalType::monthly:
      for (const int64_t day : interval.monthlyDays) consider(monthly({day}, interval.monthlyTime));
      break;
    default:
      consider(interval);
  }
  RC_ASSERT(interval.nextOccurrence(after, calendar) == earliest);
}

/// Whether a dose is due in the minute that the wall shows. Only where no clock ever changes and no day rolls over.
bool isDueAt(const ReminderInterval& interval, const DateComponents& wall, int weekday) {
  const TimeOfDay time = {wall.hour, wall.minute};
  switch (interval.type) {
    case ReminderIntervalType::daily:
      return std::count(interval.dailyTimes.begin(), interval.dailyTimes.end(), time) > 0;
    case ReminderIntervalType::weekly:
      return interval.weeklyTime == time && interval.weeklyDays.contains(weekday);
    default:
      return interval.monthlyTime == time && interval.monthlyDays.contains(wall.day);
  }
}

RC_GTEST_PROP(NextOccurrenceProperty, isTheNextMinuteInWhichTheWallShowsAScheduledTime, ()) {
  const auto zone = *rc::gen::element<std::string>("UTC", "Asia/Kolkata");
  const Calendar& calendar = sharedCalendar("en_US", zone);
  auto interval = *plainInterval();
  RC_PRE(interval.type != ReminderIntervalType::hourly && interval.type != ReminderIntervalType::custom);
  for (const int64_t day : {29, 30, 31}) interval.monthlyDays.erase(day);
  const auto after = *anyInstant();
  const auto found = interval.nextOccurrence(after, calendar);
  if (!found) RC_SUCCEED("nothing is scheduled");
  Instant t = calendar.startOfMinute(after) + minutes(1);
  while (t < *found && !isDueAt(interval, calendar.components(t), calendar.weekday(t))) t = t + minutes(1);
  RC_ASSERT(t == *found);
  RC_ASSERT(isDueAt(interval, calendar.components(t), calendar.weekday(t)));
}

/// A medicine with logs at some of the times at which it is due around `now`, in their minutes or the next.
std::shared_ptr<Medicine> medicineWithLogs(const Calendar& calendar, Instant now) {
  NewMedicine values;
  values.interval = *plainInterval();
  values.interval.customIntervalMinutes += 20;
  const auto medicine = Medicine::make(values, now);
  const Instant midnight = calendar.startOfDay(now);
  for (Instant cursor : {midnight - minutes(1), now - minutes(1)}) {
    for (int i = 0; i < 8; ++i) {
      const auto due = values.interval.nextOccurrence(cursor, calendar);
      if (!due) break;
      const auto offset = *rc::gen::inRange<int64_t>(-20, 80);
      const auto status = *rc::gen::elementOf(std::vector(kAllDoseStatuses.begin(), kAllDoseStatuses.end()));
      if (*rc::gen::inRange(0, 2) == 0) {
        DoseLog::make(*due + std::chrono::seconds(offset), std::nullopt, status, 0, "", medicine);
      }
      cursor = *due;
    }
  }
  return medicine;
}

std::vector<Instant> timesOf(const std::vector<UpcomingDose>& doses) {
  std::vector<Instant> times;
  for (const auto& dose : doses) times.push_back(dose.time);
  return times;
}

RC_GTEST_PROP(ScheduleProperty, upcomingDosesAreThoseOfTheSlowSchedule, ()) {
  const Calendar& calendar = anyCalendar(kGregorian);
  const auto now = *anyInstant();
  const auto medicine = medicineWithLogs(calendar, now);
  RC_ASSERT(timesOf(upcomingDoses({medicine}, now, calendar)) == SlowSchedule(calendar).upcoming(*medicine, now));
}

RC_GTEST_PROP(ScheduleProperty, todaysRemindersAreThoseOfTheSlowSchedule, ()) {
  const Calendar& calendar = anyCalendar(*rc::gen::element(kGregorian, kOthers));
  const auto now = *anyInstant();
  const auto medicine = medicineWithLogs(calendar, now);
  std::vector<Instant> times;
  for (const auto& [owner, time] : todaysPendingReminders({medicine}, now, calendar)) times.push_back(time);
  RC_ASSERT(times == SlowSchedule(calendar).today(*medicine, now));
}

RC_GTEST_PROP(ScheduleProperty, listsOfManyMedicinesAreTheSortedListsOfEach, ()) {
  const Calendar& calendar = anyCalendar(kGregorian);
  const auto now = *anyInstant();
  Medicines medicines;
  for (int i = 0; i < 4; ++i) medicines.push_back(medicineWithLogs(calendar, now));
  std::vector<std::pair<Instant, size_t>> expected;
  for (size_t i = 0; i < medicines.size(); ++i) {
    for (const Instant time : timesOf(upcomingDoses({medicines[i]}, now, calendar))) expected.emplace_back(time, i);
  }
  std::sort(expected.begin(), expected.end());
  const auto doses = upcomingDoses(medicines, now, calendar);
  RC_ASSERT(doses.size() == expected.size());
  for (size_t i = 0; i < doses.size(); ++i) {
    RC_ASSERT(doses[i].time == expected[i].first);
    RC_ASSERT(doses[i].medicine == medicines[expected[i].second]);
  }
}

RC_GTEST_PROP(ScheduleProperty, walksOfAnyIntervalEndAndOnlyGoForward, ()) {
  const Calendar& calendar = anyCalendar(kGregorian);
  const auto now = *anyInstant();
  NewMedicine values;
  values.interval = *anyInterval();
  const auto medicine = Medicine::make(values, now);
  const auto times = timesOf(upcomingDoses({medicine}, now, calendar));
  RC_ASSERT(times.size() <= 10'200U);
  for (size_t i = 0; i < times.size(); ++i) {
    RC_ASSERT(times[i] > (i == 0 ? now - minutes(1) : times[i - 1]));
    RC_ASSERT(times[i] <= *calendar.adding(CalendarUnit::day, 7, now));
  }
  RC_ASSERT(todaysPendingReminders({medicine}, now, calendar).size() <= 1U);
}

}  // namespace
}  // namespace pillora

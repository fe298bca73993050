// SPDX-License-Identifier: MIT
#include "schedule/Schedule.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <rapidcheck/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/Places.h"
#include "doubles/RefusingCalendar.h"

namespace pillora {
namespace {

const Instant kNow = at("2025-01-10T10:30:00Z");  // a Friday

std::shared_ptr<Medicine> medicineOf(const ReminderInterval& interval, std::string name = {}) {
  NewMedicine values;
  values.name = std::move(name);
  values.interval = interval;
  return Medicine::make(values, kNow);
}

void log(const std::shared_ptr<Medicine>& medicine, const char* time, DoseStatus status = DoseStatus::taken) {
  DoseLog::make(at(time), std::nullopt, status, 0, "", medicine);
}

std::vector<std::string> todayIn(const Calendar& calendar, const Medicines& medicines, Instant now = kNow) {
  std::vector<std::string> out;
  for (const auto& [medicine, time] : todaysPendingReminders(medicines, now, calendar)) {
    out.push_back(medicine->name() + iso8601(time));
  }
  return out;
}

std::vector<std::string> today(const Medicines& medicines, const char* now = "2025-01-10T10:30:00Z",
                               const std::string& zone = "UTC") {
  return todayIn(*calendarOf("en_US", zone), medicines, at(now));
}

std::vector<std::string> upcomingIn(const Calendar& calendar, const Medicines& medicines, Instant now = kNow) {
  std::vector<std::string> out;
  for (const auto& dose : upcomingDoses(medicines, now, calendar)) {
    out.push_back(dose.medicine->name() + iso8601(dose.time));
  }
  return out;
}

std::vector<std::string> upcoming(const Medicines& medicines, const char* now = "2025-01-10T10:30:00Z",
                                  const std::string& zone = "UTC") {
  return upcomingIn(*calendarOf("en_US", zone), medicines, at(now));
}

using List = std::vector<std::string>;

TEST(DoseIdentifier, isTheMedicineAndTheShortestDecimalOfTheSeconds) {
  const UUID id = *UUID::parse("6f9619ff-8b86-d011-b42d-00cf4fc964ff");
  const std::pair<Instant, const char*> kCases[] = {
      {at("2025-01-10T08:00:00Z"), "1736496000.0"},
      {at("2025-01-10T08:00:00.25Z"), "1736496000.25"},
      {at("2025-01-10T08:00:00.000001Z"), "1736496000.000001"},
      {at("2025-01-10T08:00:00.1Z"), "1736496000.1"},
      {Instant(), "0.0"},
      {at("1969-12-31T23:59:59.5Z"), "-0.5"},
      {at("1970-01-01T00:00:00.000001Z"), "0.000001"},
      {at("9999-12-31T23:59:59Z"), "253402300799.0"},
      {Instant::fromSeconds(9'000'000'000'000), "9000000000000.0"},
  };
  for (const auto& [time, text] : kCases) {
    EXPECT_EQ(doseIdentifier(id, time), std::string("6F9619FF-8B86-D011-B42D-00CF4FC964FF-") + text);
  }
}

RC_GTEST_PROP(DoseIdentifier, readsBackAsTheSameNumberWithoutAnExponent, (int64_t microseconds)) {
  const Instant time{Instant::Duration(microseconds)};
  const std::string number = doseIdentifier(UUID(), time).substr(37);
  RC_ASSERT(number.find_first_not_of("-.0123456789") == std::string::npos);
  RC_ASSERT(number.find('.') != std::string::npos);
  RC_ASSERT(number.back() != '.');
  RC_ASSERT(std::strtod(number.c_str(), nullptr) == time.secondsSince1970());
}

TEST(IsDoseDone, whenALogOfTheSameMinuteIsTakenOrSkipped) {
  const auto calendar = calendarOf("en_US", "UTC");
  const struct {
    const char* logged;
    DoseStatus status;
    bool isDone;
  } kCases[] = {
      {"2025-01-10T08:00:00Z", DoseStatus::taken, true},         {"2025-01-10T08:00:40Z", DoseStatus::taken, true},
      {"2025-01-10T08:00:59.999999Z", DoseStatus::taken, true},  {"2025-01-10T08:01:00Z", DoseStatus::taken, false},
      {"2025-01-10T07:59:59.999999Z", DoseStatus::taken, false}, {"2025-01-10T08:00:00Z", DoseStatus::skipped, true},
      {"2025-01-10T08:00:00Z", DoseStatus::missed, false},       {"2025-01-10T08:00:00Z", DoseStatus::snoozed, false},
      {"2025-01-10T08:00:00Z", DoseStatus::pending, false},      {"2025-01-09T08:00:00Z", DoseStatus::taken, false},
  };
  for (const auto& each : kCases) {
    const auto medicine = medicineOf(daily({{8, 0}}));
    log(medicine, each.logged, each.status);
    EXPECT_EQ(isDoseDone(*medicine, at("2025-01-10T08:00:00Z"), *calendar), each.isDone)
        << each.logged << ' ' << rawValue(each.status);
  }
}

TEST(IsDoseDone, twoSecondsOfOneMinuteAreTheSameDoseAndTwoMinutesAreNot) {
  const auto calendar = calendarOf("en_US", "UTC");
  const auto medicine = medicineOf(daily({{8, 0}}));
  log(medicine, "2025-01-10T08:00:50Z");
  EXPECT_TRUE(isDoseDone(*medicine, at("2025-01-10T08:00:10Z"), *calendar));
  EXPECT_FALSE(isDoseDone(*medicine, at("2025-01-10T08:01:10Z"), *calendar));
}

TEST(IsDoseDone, aMissedLogBesideATakenOneDoesNotMatter) {
  const auto calendar = calendarOf("en_US", "UTC");
  const auto medicine = medicineOf(daily({{8, 0}}));
  log(medicine, "2025-01-10T08:00:00Z", DoseStatus::missed);
  log(medicine, "2025-01-10T08:00:30Z", DoseStatus::taken);
  EXPECT_TRUE(isDoseDone(*medicine, at("2025-01-10T08:00:00Z"), *calendar));
}

TEST(IsDoseDone, aStatusTextThatMatchesNothingHidesNothing) {
  const auto calendar = calendarOf("en_US", "UTC");
  const auto medicine = medicineOf(daily({{8, 0}}));
  log(medicine, "2025-01-10T08:00:00Z");
  medicine->doseLogs().front()->statusRaw = "taken";
  EXPECT_FALSE(isDoseDone(*medicine, at("2025-01-10T08:00:00Z"), *calendar));
}

TEST(IsDoseDone, theTwoHalfPastOnesOfARepeatedHourAreTwoDoses) {
  const auto calendar = calendarOf("en_US", "America/New_York");
  const auto medicine = medicineOf(hourly(1));
  log(medicine, "2025-11-02T05:30:10Z");
  EXPECT_TRUE(isDoseDone(*medicine, at("2025-11-02T05:30:00Z"), *calendar));
  EXPECT_FALSE(isDoseDone(*medicine, at("2025-11-02T06:30:00Z"), *calendar));
}

TEST(IsDoseDone, minutesAreThoseOfTheZone) {
  // Liberia kept 44 minutes and 30 seconds behind UTC until 1972: 08:00 was 08:44:30 UTC.
  const auto calendar = calendarOf("en_US", "Africa/Monrovia");
  const auto medicine = medicineOf(daily({{8, 0}}));
  log(medicine, "1971-06-01T08:45:20Z");
  EXPECT_TRUE(isDoseDone(*medicine, at("1971-06-01T08:44:30Z"), *calendar));
  EXPECT_FALSE(isDoseDone(*medicine, at("1971-06-01T08:45:30Z"), *calendar));
}

TEST(IsDoseDone, atTheEndsOfTimeIsFalse) {
  const auto calendar = calendarOf("en_US", "UTC");
  const auto medicine = medicineOf(daily({{8, 0}}));
  log(medicine, "2025-01-10T08:00:00Z");
  EXPECT_FALSE(isDoseDone(*medicine, Instant::distantFuture(), *calendar));
  EXPECT_FALSE(isDoseDone(*medicine, Instant::distantPast(), *calendar));
}

TEST(TodaysPendingReminders, hourlyCountsFromAMinuteBeforeMidnight) {
  const auto medicine = medicineOf(hourly(4));
  for (const char* now : {"2025-01-10T00:00:00Z", "2025-01-10T10:30:00Z", "2025-01-10T23:59:59Z"}) {
    EXPECT_EQ(today({medicine}, now), List{"2025-01-10T03:59:00Z"}) << now;
  }
}

TEST(TodaysPendingReminders, hourlyOnADayWithAClockChangeIsElapsedTime) {
  EXPECT_EQ(today({medicineOf(hourly(4))}, "2025-03-09T16:00:00Z", "America/New_York"), List{"2025-03-09T08:59:00Z"});
  EXPECT_EQ(today({medicineOf(hourly(4))}, "2025-11-02T16:00:00Z", "America/New_York"), List{"2025-11-02T07:59:00Z"});
}

TEST(TodaysPendingReminders, dailyAtMidnightIsListedToday) {
  EXPECT_EQ(today({medicineOf(daily({{0, 0}}))}), List{"2025-01-10T00:00:00Z"});
  EXPECT_EQ(today({medicineOf(daily({{0, 0}}))}, "2025-01-10T00:00:00Z"), List{"2025-01-10T00:00:00Z"});
}

TEST(TodaysPendingReminders, dailyAtAMidnightThatDoesNotExistIsListedAtTheDaysFirstMoment) {
  EXPECT_EQ(today({medicineOf(daily({{0, 0}}))}, "2018-11-04T12:00:00Z", "America/Sao_Paulo"),
            List{"2018-11-04T03:00:00Z"});
}

TEST(TodaysPendingReminders, offersOnlyTheDaysFirstTime) {
  const auto medicine = medicineOf(daily({{20, 0}, {8, 0}}));
  EXPECT_EQ(today({medicine}), List{"2025-01-10T08:00:00Z"});
}

TEST(TodaysPendingReminders, offersNothingMoreOnceTheFirstTimeIsDone) {
  for (const auto status : {DoseStatus::taken, DoseStatus::skipped}) {
    const auto medicine = medicineOf(daily({{8, 0}, {20, 0}}));
    log(medicine, "2025-01-10T08:00:40Z", status);
    EXPECT_EQ(today({medicine}), List()) << rawValue(status);
    EXPECT_EQ(today({medicine}, "2025-01-11T10:30:00Z"), List{"2025-01-11T08:00:00Z"});
  }
}

TEST(TodaysPendingReminders, missedSnoozedPendingAndNextMinutesLogsHideNothing) {
  const auto medicine = medicineOf(daily({{8, 0}}));
  log(medicine, "2025-01-10T08:00:00Z", DoseStatus::missed);
  log(medicine, "2025-01-10T08:00:00Z", DoseStatus::snoozed);
  log(medicine, "2025-01-10T08:00:00Z", DoseStatus::pending);
  log(medicine, "2025-01-10T08:01:00Z", DoseStatus::taken);
  EXPECT_EQ(today({medicine}), List{"2025-01-10T08:00:00Z"});
}

TEST(TodaysPendingReminders, leavesOutWhatFallsOnAnotherDay) {
  EXPECT_EQ(today({medicineOf(weekly({7}, {9, 0})), medicineOf(monthly({11}, {9, 0})), medicineOf(custom(1441)),
                   medicineOf(hourly(25)), medicineOf(daily({}))}),
            List());
  EXPECT_EQ(today({medicineOf(weekly({6}, {9, 0})), medicineOf(monthly({10}, {23, 59}))}),
            (List{"2025-01-10T09:00:00Z", "2025-01-10T23:59:00Z"}));
}

TEST(TodaysPendingReminders, ascendsByTimeAndKeepsTheGivenOrderOfTies) {
  EXPECT_EQ(today({medicineOf(daily({{9, 0}}), "C"), medicineOf(daily({{8, 0}}), "B"), medicineOf(daily({{9, 0}}), "A"),
                   medicineOf(daily({{8, 0}}), "D")}),
            (List{"B2025-01-10T08:00:00Z", "D2025-01-10T08:00:00Z", "C2025-01-10T09:00:00Z", "A2025-01-10T09:00:00Z"}));
}

TEST(TodaysPendingReminders, beginsAtMidnightItselfWhenTheMinuteBeforeCannotBeFormed) {
  const auto calendar = calendarOf("en_US", "UTC");
  const RefusingCalendar noMinutes(*calendar, {.addingMinutes = true});
  EXPECT_EQ(todayIn(noMinutes, {medicineOf(daily({{0, 0}}))}), List());
  EXPECT_EQ(todayIn(noMinutes, {medicineOf(daily({{8, 0}}))}), List{"2025-01-10T08:00:00Z"});
  EXPECT_EQ(todayIn(noMinutes, {medicineOf(hourly(4))}), List{"2025-01-10T04:00:00Z"});
}

TEST(TodaysPendingReminders, showsTheFallbackOfAnUnreadableInterval) {
  const auto medicine = medicineOf(hourly(1));
  medicine->intervalData = "{";
  EXPECT_EQ(today({medicine}), List{"2025-01-10T09:00:00Z"});
}

TEST(TodaysPendingReminders, stepsThatDoNotAdvanceOrAreAbsurdListNothing) {
  for (const int64_t step : {int64_t{0}, int64_t{-1}, int64_t{-1440}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(today({medicineOf(custom(step)), medicineOf(hourly(step)), medicineOf(daily({{8, 0}}))}),
              List{"2025-01-10T08:00:00Z"})
        << step;
  }
}

TEST(TodaysPendingReminders, ofThePastWeekdayNumbersListsNothing) {
  EXPECT_EQ(today({medicineOf(weekly({-9}, {9, 0}))}), List());
}

TEST(UpcomingDoses, walksFromAMinuteAgoToSevenDaysAhead) {
  const auto doses = upcoming({medicineOf(hourly(6))});
  ASSERT_EQ(doses.size(), 28U);
  EXPECT_EQ(doses[0], "2025-01-10T16:29:00Z");
  EXPECT_EQ(doses[1], "2025-01-10T22:29:00Z");
  EXPECT_EQ(doses.back(), "2025-01-17T10:29:00Z");
}

TEST(UpcomingDoses, includesNowAndTheHorizonItselfAndNothingLater) {
  const auto medicine = medicineOf(daily({{10, 30}}));
  const auto doses = upcoming({medicine});
  ASSERT_EQ(doses.size(), 8U);
  EXPECT_EQ(doses.front(), "2025-01-10T10:30:00Z");
  EXPECT_EQ(doses.back(), "2025-01-17T10:30:00Z");
  EXPECT_EQ(upcoming({medicine}, "2025-01-10T10:29:59Z").back(), "2025-01-16T10:30:00Z");
  EXPECT_EQ(upcoming({medicineOf(custom(10'081))}), List{"2025-01-17T10:30:00Z"});
  EXPECT_EQ(upcoming({medicineOf(custom(10'082))}), List());
}

TEST(UpcomingDoses, includesADoseOfThePresentMinuteButNotOneOfAMinuteAgo) {
  const auto medicine = medicineOf(daily({{10, 30}}));
  EXPECT_EQ(upcoming({medicine}, "2025-01-10T10:30:59Z").front(), "2025-01-10T10:30:00Z");
  EXPECT_EQ(upcoming({medicine}, "2025-01-10T10:31:00Z").front(), "2025-01-11T10:30:00Z");
}

TEST(UpcomingDoses, endsAtTheSameWallTimeAcrossAClockChange) {
  const auto doses = upcoming({medicineOf(daily({{9, 0}}))}, "2025-03-06T14:00:00Z", "America/New_York");
  ASSERT_EQ(doses.size(), 8U);
  EXPECT_EQ(doses[2], "2025-03-08T14:00:00Z");
  EXPECT_EQ(doses[3], "2025-03-09T13:00:00Z");
  EXPECT_EQ(doses.back(), "2025-03-13T13:00:00Z");
}

TEST(UpcomingDoses, keepsATimeThatTheGapMovedOnTheDayAfter) {
  const auto doses = upcoming({medicineOf(daily({{2, 30}}))}, "2025-03-08T08:00:00Z", "America/New_York");
  ASSERT_GE(doses.size(), 3U);
  EXPECT_EQ(doses[0], "2025-03-09T07:30:00Z");
  EXPECT_EQ(doses[1], "2025-03-10T07:30:00Z");
  EXPECT_EQ(doses[2], "2025-03-11T06:30:00Z");
}

TEST(UpcomingDoses, leavesOutWhatIsDone) {
  const auto medicine = medicineOf(daily({{8, 0}, {20, 0}}));
  log(medicine, "2025-01-10T20:00:40Z");
  log(medicine, "2025-01-11T08:01:00Z");
  log(medicine, "2025-01-11T20:00:00Z", DoseStatus::snoozed);
  log(medicine, "2025-01-12T08:00:00Z", DoseStatus::skipped);
  log(medicine, "2025-01-12T20:00:00Z", DoseStatus::missed);
  const auto doses = upcoming({medicine});
  ASSERT_EQ(doses.size(), 12U);
  EXPECT_EQ(doses[0], "2025-01-11T08:00:00Z");
  EXPECT_EQ(doses[1], "2025-01-11T20:00:00Z");
  EXPECT_EQ(doses[2], "2025-01-12T20:00:00Z");
}

TEST(UpcomingDoses, leavesOutWhatIsDoneAtBothEndsOfTheWalk) {
  const auto medicine = medicineOf(daily({{10, 30}}));
  log(medicine, "2025-01-10T10:30:30Z");
  log(medicine, "2025-01-17T10:30:59Z");
  const auto doses = upcoming({medicine});
  ASSERT_EQ(doses.size(), 6U);
  EXPECT_EQ(doses.front(), "2025-01-11T10:30:00Z");
  EXPECT_EQ(doses.back(), "2025-01-16T10:30:00Z");
}

TEST(UpcomingDoses, bearTheirIdentifiers) {
  const auto medicine = medicineOf(daily({{10, 30}}));
  const auto calendar = calendarOf("en_US", "UTC");
  for (const auto& dose : upcomingDoses({medicine}, kNow, *calendar)) {
    EXPECT_EQ(dose.id, doseIdentifier(medicine->id(), dose.time));
    EXPECT_EQ(dose.medicine, medicine);
  }
}

TEST(UpcomingDoses, ascendByTimeAndKeepTheGivenOrderOfTies) {
  const auto doses = upcoming({medicineOf(daily({{9, 0}}), "B"), medicineOf(daily({{9, 0}, {8, 0}}), "A")});
  ASSERT_EQ(doses.size(), 21U);
  EXPECT_EQ(doses[0], "A2025-01-11T08:00:00Z");
  EXPECT_EQ(doses[1], "B2025-01-11T09:00:00Z");
  EXPECT_EQ(doses[2], "A2025-01-11T09:00:00Z");
}

TEST(UpcomingDoses, ofEveryMinuteAreTenThousandAndEightyOne) {
  const auto doses = upcoming({medicineOf(custom(1))});
  ASSERT_EQ(doses.size(), 10'081U);
  EXPECT_EQ(doses.front(), "2025-01-10T10:30:00Z");
  EXPECT_EQ(doses.back(), "2025-01-17T10:30:00Z");
}

TEST(UpcomingDoses, stepsThatDoNotAdvanceOrAreAbsurdEndAtOnceAndHarmNoOther) {
  for (const int64_t step : {int64_t{0}, int64_t{-1}, int64_t{-10'000'000}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(upcoming({medicineOf(custom(step)), medicineOf(hourly(step)), medicineOf(daily({{8, 0}}))}).size(), 7U)
        << step;
  }
}

TEST(UpcomingDoses, ofPastWeekdayNumbersEndAtOnce) {
  EXPECT_EQ(upcoming({medicineOf(weekly({-9}, {9, 0})), medicineOf(weekly({-9, 7}, {9, 0}))}), List());
}

TEST(UpcomingDoses, areNoneWhenTheHorizonCannotBeFormed) {
  const auto calendar = calendarOf("en_US", "UTC");
  const RefusingCalendar noDays(*calendar, {.addingDays = true});
  EXPECT_EQ(upcomingIn(noDays, {medicineOf(hourly(1))}), List());
}

TEST(UpcomingDoses, beginAtNowWhenTheMinuteBeforeCannotBeFormed) {
  const auto calendar = calendarOf("en_US", "UTC");
  const RefusingCalendar noMinutes(*calendar, {.addingMinutes = true});
  EXPECT_EQ(upcomingIn(noMinutes, {medicineOf(daily({{10, 30}}))}).front(), "2025-01-11T10:30:00Z");
}

}  // namespace
}  // namespace pillora

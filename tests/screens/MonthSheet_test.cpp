// SPDX-License-Identifier: MIT
#include "screens/MonthSheet.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/ScreenFixture.h"

namespace pillora {
namespace {

using Lines = std::vector<std::string>;

/// The weeks as lines: days before and after the month in brackets, today with a star, the selected day with a sign,
/// a gap as a dash.
Lines weeksOf(const MonthContent& content) {
  Lines lines;
  for (const auto& week : content.weeks) {
    std::string line;
    for (const DayCell& cell : week.cells) {
      std::string text = cell.text.empty() ? "-" : cell.text;
      if (!cell.isInMonth && !cell.text.empty()) text = '(' + text + ')';
      line += (line.empty() ? "" : " ") + text + (cell.isToday ? "*" : "") + (cell.isSelected ? "!" : "");
    }
    lines.push_back(line);
  }
  return lines;
}

/// The labels of the days within the month.
Lines daysIn(const MonthContent& content) {
  Lines days;
  for (const auto& week : content.weeks) {
    for (const DayCell& cell : week.cells) {
      if (cell.isInMonth) days.push_back(cell.label);
    }
  }
  return days;
}

/// A sheet with what it needs. Its fixture's clock stands at the instant that the sheet opens at.
struct Sheet {
  Sheet(Instant at, const Place& place)
      : fixture(at, place), value(at), sheet(fixture.environment(), "startDate", at) {}

  MonthContent content() const { return sheet.content(value); }
  /// The id of the cell with this text within the month.
  std::string cell(const std::string& text) const {
    const MonthContent shown = content();
    for (const auto& week : shown.weeks) {
      for (const DayCell& day : week.cells) {
        if (day.isInMonth && day.text == text) return day.id;
      }
    }
    return "none";
  }
  std::optional<Instant> pick(const std::string& text) const { return sheet.dateOn(cell(text), value); }

  ScreenFixture fixture;
  Instant value;
  MonthSheet sheet;
};

const Place kNewYork{"America/New_York", "en_US"};

TEST(MonthSheet, showsTheMonthOfTheValueInWeeksFromSundayToSaturday) {
  Sheet january(at("2025-01-10T10:30:00-05:00"), kNewYork);
  january.value = at("2025-01-25T08:00:00-05:00");
  const MonthContent content = january.content();
  EXPECT_EQ(content.row, "startDate");
  EXPECT_EQ(content.title, "January 2025");
  EXPECT_EQ(content.previous, (ActionItem{"previousMonth", "Previous Month", "chevron.left"}));
  EXPECT_EQ(content.next, (ActionItem{"nextMonth", "Next Month", "chevron.right"}));
  EXPECT_EQ(content.weekdays, (Lines{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}));
  EXPECT_EQ(weeksOf(content), (Lines{"(29) (30) (31) 1 2 3 4", "5 6 7 8 9 10* 11", "12 13 14 15 16 17 18",
                                     "19 20 21 22 23 24 25!", "26 27 28 29 30 31 (1)"}));
  EXPECT_EQ(content.weeks[0].cells[3].label, "Wednesday, January 1, 2025");
}

TEST(MonthSheet, weeksBeginOnSundayAlsoWhereTheLocalesBeginOnMonday) {
  const Sheet january(at("2025-01-10T10:30:00+01:00"), {"Europe/Berlin", "de_DE"});
  EXPECT_EQ(january.content().weekdays.front(), "So.");
  EXPECT_EQ(weeksOf(january.content()).front(), "(29) (30) (31) 1 2 3 4");
}

TEST(MonthSheet, aMonthOfFourWholeWeeksHasNoOtherDays) {
  const Sheet february(at("2015-02-28T23:30:00Z"), {"UTC", "en_US"});
  EXPECT_EQ(weeksOf(february.content()),
            (Lines{"1 2 3 4 5 6 7", "8 9 10 11 12 13 14", "15 16 17 18 19 20 21", "22 23 24 25 26 27 28*!"}));
}

TEST(MonthSheet, goesToTheMonthBeforeAndAfter) {
  Sheet sheet(at("2025-01-31T10:30:00-05:00"), kNewYork);
  sheet.sheet.showNextMonth();
  EXPECT_EQ(sheet.content().title, "February 2025") << "not March, although there is no 31 February";
  sheet.sheet.showPreviousMonth();
  sheet.sheet.showPreviousMonth();
  EXPECT_EQ(sheet.content().title, "December 2024");
  EXPECT_EQ(weeksOf(sheet.content()).back(), "29 30 31 (1) (2) (3) (4)");
}

TEST(MonthSheet, aPickedDayKeepsTheClockTimeToTheMicrosecond) {
  const Sheet sheet(at("2025-01-10T10:30:15.123456-05:00"), kNewYork);
  EXPECT_EQ(sheet.pick("25"), at("2025-01-25T10:30:15.123456-05:00"));
  EXPECT_EQ(sheet.pick("10"), sheet.value);
  EXPECT_EQ(sheet.sheet.dateOn(sheet.content().weeks.front().cells.front().id, sheet.value),
            at("2024-12-29T10:30:15.123456-05:00"))
      << "a day of the month before";
}

TEST(MonthSheet, aPickedDayKeepsTheWallClockAcrossAClockChange) {
  Sheet sheet(at("2025-03-01T02:30:00-05:00"), kNewYork);
  EXPECT_EQ(sheet.pick("10"), at("2025-03-10T02:30:00-04:00"));
  EXPECT_EQ(sheet.pick("9"), at("2025-03-09T03:30:00-04:00")) << "there is no 02:30 on that day";
}

TEST(MonthSheet, anotherIdPicksNothing) {
  const Sheet sheet(at("2025-01-10T10:30:00-05:00"), kNewYork);
  for (const char* id : {"", "gap-0", "2025-03-10T05:00:00Z", "2025-01-10T10:30:00Z", "startDate"}) {
    EXPECT_EQ(sheet.sheet.dateOn(id, sheet.value), std::nullopt) << id;
  }
}

TEST(MonthSheet, followsTheCalendarInUse) {
  struct Case {
    const char *locale, *title, *firstWeek, *lastWeek;
  };
  for (const auto& [locale, title, firstWeek, lastWeek] : {
           Case{"th_TH", "มกราคม 2568", "(29) (30) (31) 1 2 3 4", "26 27 28 29 30 31 (1)"},
           Case{"fa_IR", "۱۴۰۳ دی", "(۲۵) (۲۶) (۲۷) (۲۸) (۲۹) (۳۰) ۱", "۳۰ (۱) (۲) (۳) (۴) (۵) (۶)"},
           Case{"en_US@calendar=hebrew", "Tevet 5785", "(28) (29) (30) 1 2 3 4", "26 27 28 29 (1) (2) (3)"},
           Case{"en_US@calendar=islamic-civil", "Rajab 1446 AH", "(27) (28) (29) 1 2 3 4", "26 27 28 29 30 (1) (2)"},
           Case{"ja_JP@calendar=japanese", "令和7年1月", "(29) (30) (31) 1 2 3 4", "26 27 28 29 30 31 (1)"},
       }) {
    const Sheet sheet(at("2025-01-10T12:00:00Z"), {"UTC", locale});
    const Lines weeks = weeksOf(sheet.content());
    EXPECT_EQ(sheet.content().title, title) << locale;
    EXPECT_EQ(weeks.front(), firstWeek) << locale;
    EXPECT_EQ(weeks.back(), lastWeek) << locale;
  }
}

/// The titles of so many months from the one that the sheet opens at.
Lines titlesOf(Sheet& sheet, int months) {
  Lines titles;
  for (; months > 0; --months) {
    titles.push_back(sheet.content().title);
    sheet.sheet.showNextMonth();
  }
  return titles;
}

TEST(MonthSheet, aHebrewLeapYearHasThirteenMonths) {
  Sheet sheet(at("2024-01-20T12:00:00Z"), {"UTC", "en_US@calendar=hebrew"});
  EXPECT_EQ(titlesOf(sheet, 4), (Lines{"Shevat 5784", "Adar I 5784", "Adar II 5784", "Nisan 5784"}));
}

TEST(MonthSheet, theLastMonthOfAnEthiopicYearHasFiveDays) {
  Sheet sheet(at("2025-09-08T12:00:00Z"), {"UTC", "en_US@calendar=ethiopic"});
  EXPECT_EQ(sheet.content().title, "Pagumen 2017 ERA1");
  EXPECT_EQ(weeksOf(sheet.content()), (Lines{"(25) (26) (27) (28) (29) (30) 1", "2 3*! 4 5 (1) (2) (3)"}));
  sheet.sheet.showNextMonth();
  EXPECT_EQ(sheet.content().title, "Meskerem 2018 ERA1");
}

TEST(MonthSheet, aLeapMonthIsAMonthOfItsOwn) {
  Sheet sheet(at("2023-03-01T12:00:00Z"), {"UTC", "en_US@calendar=chinese"});
  EXPECT_EQ(daysIn(sheet.content()).size(), 30U);
  const std::string second = sheet.content().title;
  sheet.sheet.showNextMonth();
  EXPECT_EQ(daysIn(sheet.content()).size(), 29U);
  EXPECT_NE(sheet.content().title, second);
  EXPECT_EQ(sheet.pick("1"), at("2023-03-22T12:00:00Z"));
  sheet.sheet.showPreviousMonth();
  EXPECT_EQ(sheet.content().title, second);
}

TEST(MonthSheet, aMonthInWhichAnEraBeganIsOneMonth) {
  const Sheet sheet(at("1989-01-05T12:00:00Z"), {"UTC", "ja_JP@calendar=japanese"});
  EXPECT_EQ(daysIn(sheet.content()).size(), 31U);
  EXPECT_EQ(sheet.pick("9"), at("1989-01-09T12:00:00Z"));
}

TEST(MonthSheet, daysThatACalendarSkippedAreNotThere) {
  const Sheet sheet(at("1582-10-20T12:00:00Z"), {"UTC", "en_US"});
  EXPECT_EQ(weeksOf(sheet.content()).front(), "(30) 1 2 3 4 15 16");
  EXPECT_EQ(daysIn(sheet.content()).size(), 21U);
}

TEST(MonthSheet, aDayThatTheZoneLeftOutIsAGapThatCannotBePicked) {
  const Sheet sheet(at("2011-12-15T10:00:00Z"), {"Pacific/Apia", "en_US"});
  EXPECT_EQ(weeksOf(sheet.content()).back(), "25 26 27 28 29 - 31");
  const DayCell gap = sheet.content().weeks.back().cells[5];
  EXPECT_EQ(gap.label, "");
  EXPECT_FALSE(gap.isInMonth);
  EXPECT_EQ(sheet.sheet.dateOn(gap.id, sheet.value), std::nullopt);
}

TEST(MonthSheet, daysWithoutAMidnightAreThere) {
  const Sheet sheet(at("2018-11-15T12:00:00-02:00"), {"America/Sao_Paulo", "en_US"});
  EXPECT_EQ(weeksOf(sheet.content()).front(), "(28) (29) (30) (31) 1 2 3");
  EXPECT_EQ(weeksOf(sheet.content())[1], "4 5 6 7 8 9 10");
  EXPECT_EQ(sheet.pick("4"), at("2018-11-04T12:00:00-02:00"));
}

TEST(MonthSheet, inEveryCalendarTheMonthsFollowOneAnotherWithoutAGapOrARepeat) {
  for (const char* locale : {"en_US", "th_TH", "fa_IR", "en_US@calendar=hebrew", "en_US@calendar=ethiopic",
                             "en_US@calendar=coptic", "en_US@calendar=chinese", "en_US@calendar=indian",
                             "en_US@calendar=islamic-umalqura", "ja_JP@calendar=japanese", "zh_TW@calendar=roc"}) {
    Sheet sheet(at("2023-01-20T12:00:00Z"), {"America/Sao_Paulo", locale});
    const Calendar& calendar = *sheet.fixture.calendar;
    std::optional<Instant> last;
    for (int month = 0; month < 15; ++month, sheet.sheet.showNextMonth()) {
      const MonthContent shown = sheet.content();
      for (const auto& week : shown.weeks) {
        ASSERT_EQ(week.cells.size(), 7U);
        for (size_t column = 0; column < 7; ++column) {
          const DayCell& cell = week.cells[column];
          const Instant day = at(cell.id);
          ASSERT_EQ(calendar.weekday(day), static_cast<int>(column) + 1) << locale << ' ' << cell.label;
          if (!cell.isInMonth) continue;
          const Instant expected = last ? calendar.startOfDay(*last + std::chrono::hours(36)) : day;
          ASSERT_EQ(day, expected) << locale << ' ' << cell.label;
          last = day;
        }
      }
    }
    for (int month = 0; month < 15; ++month) sheet.sheet.showPreviousMonth();
    EXPECT_EQ(daysIn(sheet.content()), daysIn(Sheet(sheet.value, {"America/Sao_Paulo", locale}).content())) << locale;
  }
}

TEST(MonthSheet, theEndsOfTimeAreShownAndNotPassed) {
  for (const Instant end : {Instant::distantPast(), Instant::distantFuture()}) {
    Sheet sheet(end, {"UTC", "en_US"});
    for (int month = 0; month < 3; ++month) sheet.sheet.showPreviousMonth();
    for (int month = 0; month < 6; ++month) sheet.sheet.showNextMonth();
    EXPECT_FALSE(sheet.content().weeks.empty());
  }
}

TEST(TimeContent, namesHoursAndMinutesInTheFormInUse) {
  ScreenFixture fixture(at("2025-01-10T10:30:00-05:00"), kNewYork);
  const TimeRow row{"weeklyTime", "Time", 21, 5, "9:05 PM"};
  const TimeContent twelve = timeContent(fixture.environment(), row, false);
  EXPECT_EQ(twelve.row, "weeklyTime");
  EXPECT_EQ(twelve.title, "Time");
  ASSERT_EQ(twelve.hours.size(), 24U);
  ASSERT_EQ(twelve.minutes.size(), 60U);
  EXPECT_EQ(plainBlanks(twelve.hours[0].text), "12 AM");
  EXPECT_EQ(plainBlanks(twelve.hours[21].text), "9 PM");
  EXPECT_EQ(twelve.minutes[5].text, "05");
  for (const TimeCell& hour : twelve.hours) EXPECT_EQ(hour.isSelected, hour.value == 21);
  for (const TimeCell& minute : twelve.minutes) EXPECT_EQ(minute.isSelected, minute.value == 5);
  EXPECT_EQ(timeContent(fixture.environment(), row, true).hours[21].text, "21");
  EXPECT_EQ(twelve.hoursName + " " + twelve.minutesName + " " + twelve.done, "Hour Minute Done");
}

}  // namespace
}  // namespace pillora

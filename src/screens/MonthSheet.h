// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "screens/FormContent.h"
#include "screens/Screen.h"
#include "support/Fields.h"
#include "support/Instant.h"

namespace pillora {

// What the pickers of a date and of a time of day show when they are open, in the user's calendar and words.

/// One day of a month's sheet. A day that the zone left out has neither text nor label and cannot be picked.
struct DayCell {
  std::string id;
  std::string text;   ///< "9"
  std::string label;  ///< "Friday, January 9, 2026": for screen readers
  bool isToday = false, isSelected = false;
  bool isInMonth = false;  ///< false for the days of the months before and after that fill up the weeks

  static constexpr auto fields() {
    using Day = DayCell;
    return std::tuple(field("id", &Day::id), field("text", &Day::text), field("label", &Day::label),
                      field("isToday", &Day::isToday), field("isSelected", &Day::isSelected),
                      field("isInMonth", &Day::isInMonth));
  }
};

struct MonthWeek {
  std::vector<DayCell> cells;  ///< seven

  static constexpr auto fields() { return std::tuple(field("cells", &MonthWeek::cells)); }
};

struct MonthContent {
  std::string row;  ///< id of the row whose date is picked
  std::string title;
  ActionItem previous, next;
  std::vector<std::string> weekdays;  ///< Sunday first, whatever the settings and the locale say
  std::vector<MonthWeek> weeks;

  static constexpr auto fields() {
    using Month = MonthContent;
    return std::tuple(field("row", &Month::row), field("title", &Month::title), field("previous", &Month::previous),
                      field("next", &Month::next), field("weekdays", &Month::weekdays), field("weeks", &Month::weeks));
  }
};

/// The open sheet of a date picker: which month it shows. The date itself stays with the screen that opened it.
class MonthSheet {
 public:
  /// Opens at the month of `value`.
  MonthSheet(ScreenEnvironment environment, std::string row, Instant value);

  const std::string& row() const { return row_; }
  MonthContent content(Instant value) const;
  void showPreviousMonth();
  void showNextMonth();
  /// `value` moved to the day of a cell on show. It keeps its clock time; a time that the day does not have moves
  /// forward. Nothing for any other id.
  std::optional<Instant> dateOn(std::string_view cellId, Instant value) const;

 private:
  using Days = std::vector<Instant>;  ///< the starts of days that follow one another

  Days daysOfMonth() const;
  /// The month's days and those before and after that fill up its weeks.
  Days daysShown(const Days& month) const;
  std::optional<Instant> dayBefore(Instant day) const;
  std::optional<Instant> dayAfter(Instant day) const;
  bool areInOneMonth(Instant day, Instant nextDay) const;

  ScreenEnvironment environment_;
  std::string row_;
  Instant shown_;  ///< some time in the month on show
};

/// One hour or minute to pick.
struct TimeCell {
  int64_t value = 0;
  std::string text;  ///< "2 PM", "14", "05"
  bool isSelected = false;

  static constexpr auto fields() {
    return std::tuple(field("value", &TimeCell::value), field("text", &TimeCell::text),
                      field("isSelected", &TimeCell::isSelected));
  }
};

/// The open sheet of a time picker.
struct TimeContent {
  std::string row;  ///< id of the row whose time is picked
  std::string title;
  std::vector<TimeCell> hours, minutes;  ///< 0 to 23 and 0 to 59
  std::string hoursName, minutesName;    ///< for who does not see them
  std::string done;                      ///< closes the sheet; what was picked has been taken over before

  static constexpr auto fields() {
    using Time = TimeContent;
    return std::tuple(field("row", &Time::row), field("title", &Time::title), field("hours", &Time::hours),
                      field("minutes", &Time::minutes), field("hoursName", &Time::hoursName),
                      field("minutesName", &Time::minutesName), field("done", &Time::done));
  }
};

TimeContent timeContent(const ScreenEnvironment& environment, const TimeRow& row, bool use24HourTime);

}  // namespace pillora

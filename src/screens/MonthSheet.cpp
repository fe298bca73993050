// SPDX-License-Identifier: MIT
#include "screens/MonthSheet.h"

#include <algorithm>
#include <utility>

namespace pillora {

namespace {

constexpr size_t kDaysOfWeek = 7;
constexpr Instant::Duration kSecond = std::chrono::seconds(1);

}  // namespace

MonthSheet::MonthSheet(ScreenEnvironment environment, std::string row, Instant value)
    : environment_(environment), row_(std::move(row)), shown_(value) {}

std::optional<Instant> MonthSheet::dayBefore(Instant day) const {
  const auto moment = checkedAdd(day, -1, Instant::Duration(1));
  if (!moment) return std::nullopt;
  const Instant before = environment_.calendar.startOfDay(*moment);
  return before < day ? std::optional(before) : std::nullopt;
}

std::optional<Instant> MonthSheet::dayAfter(Instant day) const {
  const auto moment = environment_.calendar.adding(CalendarUnit::day, 1, day);
  if (!moment) return std::nullopt;
  const Instant after = environment_.calendar.startOfDay(*moment);
  return after > day ? std::optional(after) : std::nullopt;
}

/// Deliberate: the era and the year are not asked. A new emperor's era begins within a month, and two days that follow
/// one another are never in the same month of different years.
bool MonthSheet::areInOneMonth(Instant day, Instant nextDay) const {
  const auto a = environment_.calendar.components(day), b = environment_.calendar.components(nextDay);
  return a.month == b.month && a.isLeapMonth == b.isLeapMonth;
}

/// Day by day from the middle to both ends: no calendar's lengths of months need be known, nor whether its days are
/// numbered without a gap.
MonthSheet::Days MonthSheet::daysOfMonth() const {
  const Instant middle = environment_.calendar.startOfDay(shown_);
  Days days = {middle};
  for (auto day = dayBefore(middle); day && areInOneMonth(*day, days.back()); day = dayBefore(*day)) {
    days.push_back(*day);
  }
  std::reverse(days.begin(), days.end());
  for (auto day = dayAfter(middle); day && areInOneMonth(days.back(), *day); day = dayAfter(*day)) {
    days.push_back(*day);
  }
  return days;
}

MonthSheet::Days MonthSheet::daysShown(const Days& month) const {
  const Calendar& calendar = environment_.calendar;
  Days before, days;
  for (auto day = dayBefore(month.front()); day && calendar.weekday(*day) < calendar.weekday(month.front());
       day = dayBefore(*day)) {
    before.push_back(*day);
  }
  days.assign(before.rbegin(), before.rend());
  days.insert(days.end(), month.begin(), month.end());
  for (auto day = dayAfter(month.back()); day && calendar.weekday(*day) > calendar.weekday(month.back());
       day = dayAfter(*day)) {
    days.push_back(*day);
  }
  return days;
}

MonthContent MonthSheet::content(Instant value) const {
  const auto& [context, clock, calendar, texts, notifications] = environment_;
  const Instant today = calendar.startOfDay(clock.now()), selected = calendar.startOfDay(value);
  const Days month = daysOfMonth();
  MonthContent content;
  content.row = row_;
  content.title = texts.monthAndYear(month.front());
  content.previous = {"previousMonth", texts.text("Previous Month"), "chevron.left"};
  content.next = {"nextMonth", texts.text("Next Month"), "chevron.right"};
  for (int weekday = 1; weekday <= static_cast<int>(kDaysOfWeek); ++weekday) {
    content.weekdays.push_back(texts.shortWeekdaySymbol(weekday));
  }
  std::vector<DayCell> cells;
  const auto addGap = [&] { cells.push_back({"gap-" + std::to_string(cells.size()), "", ""}); };
  for (const Instant day : daysShown(month)) {
    while (cells.size() % kDaysOfWeek + 1 != static_cast<size_t>(calendar.weekday(day))) addGap();
    cells.push_back({iso8601(day), texts.dayOfMonth(day), texts.fullDate(day), day == today, day == selected,
                     day >= month.front() && day <= month.back()});
  }
  while (cells.size() % kDaysOfWeek != 0) addGap();
  for (auto week = cells.begin(); week != cells.end(); week += kDaysOfWeek) {
    content.weeks.push_back({{week, week + kDaysOfWeek}});
  }
  return content;
}

void MonthSheet::showPreviousMonth() {
  if (const auto day = dayBefore(daysOfMonth().front())) shown_ = *day;
}

void MonthSheet::showNextMonth() {
  if (const auto day = dayAfter(daysOfMonth().back())) shown_ = *day;
}

std::optional<Instant> MonthSheet::dateOn(std::string_view cellId, Instant value) const {
  const Calendar& calendar = environment_.calendar;
  const Days days = daysShown(daysOfMonth());
  const auto day = std::find_if(days.begin(), days.end(), [&](Instant each) { return iso8601(each) == cellId; });
  if (day == days.end()) return std::nullopt;
  const DateComponents time = calendar.components(value);
  DateComponents moved = calendar.components(*day);
  moved.hour = time.hour;
  moved.minute = time.minute;
  moved.second = time.second;
  const auto date = calendar.date(moved);
  return date ? checkedAdd(*date, floorMod(value.microseconds(), kSecond.count()), Instant::Duration(1)) : std::nullopt;
}

TimeContent timeContent(const ScreenEnvironment& environment, const TimeRow& row, bool use24HourTime) {
  const auto& [context, clock, calendar, texts, notifications] = environment;
  TimeContent content{row.id, row.label, {}, {}, texts.text("Hour"), texts.text("Minute"), texts.text("Done")};
  for (int64_t hour = 0; hour < 24; ++hour) {
    const auto time = calendar.dateOfTime(hour, 0);
    if (time) content.hours.push_back({hour, texts.hour(*time, use24HourTime), hour == row.hour});
  }
  for (int64_t minute = 0; minute < 60; ++minute) {
    const auto time = calendar.dateOfTime(0, minute);
    if (time) content.minutes.push_back({minute, texts.minute(*time), minute == row.minute});
  }
  return content;
}

}  // namespace pillora

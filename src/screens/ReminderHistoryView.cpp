// SPDX-License-Identifier: MIT
#include "screens/ReminderHistoryView.h"

#include <functional>
#include <map>

#include "screens/DoseActions.h"
#include "screens/DoseTexts.h"

namespace pillora {

namespace {

constexpr int64_t kDaysInWeek = 7;
constexpr int64_t kDaysInMonth = 30;

std::optional<DoseStatus> statusOf(HistoryFilter filter) {
  switch (filter) {
    case HistoryFilter::taken:
      return DoseStatus::taken;
    case HistoryFilter::missed:
      return DoseStatus::missed;
    case HistoryFilter::skipped:
      return DoseStatus::skipped;
    case HistoryFilter::all:
      break;
  }
  return std::nullopt;
}

std::vector<RangeSegment> segments(TimeRange selected, const Texts& texts) {
  std::vector<RangeSegment> segments;
  for (const TimeRange range : kAllTimeRanges) {
    segments.push_back({std::string(rawValue(range)), texts.textIn("time range", rawValue(range)), range == selected});
  }
  return segments;
}

std::string filterText(HistoryFilter filter, const Texts& texts) {
  switch (filter) {
    case HistoryFilter::taken:
      return texts.textIn("doses", "Taken");
    case HistoryFilter::missed:
      return texts.textIn("doses", "Missed");
    case HistoryFilter::skipped:
      return texts.textIn("doses", "Skipped");
    case HistoryFilter::all:
      break;
  }
  return texts.textIn("doses", "All");
}

std::vector<FilterChip> chips(HistoryFilter selected, const Texts& texts) {
  std::vector<FilterChip> chips;
  for (const HistoryFilter filter : kAllHistoryFilters) {
    const auto status = statusOf(filter);
    chips.push_back({std::string(rawValue(filter)), filterText(filter, texts),
                     status ? statusSymbol(*status) : "list.bullet", status ? statusColor(*status) : "blue",
                     filter == selected});
  }
  return chips;
}

StatItem statItem(int64_t value, DoseStatus status, const Texts& texts) {
  return {value, dosesText(value, status, texts), statusSymbol(status), statusColor(status)};
}

/// Headings of days as seen from one instant.
class DayTitles {
 public:
  DayTitles(Instant now, const Calendar& calendar, const Texts& texts)
      : texts_(texts), today_(calendar.startOfDay(now)) {
    // The day of the moment before today: a day counted back may not exist where a zone left one out.
    const auto before = checkedAdd(today_, -1, Instant::Duration(1));
    if (before) yesterday_ = calendar.startOfDay(*before);
  }

  std::string title(Instant day) const {
    if (day == today_) return texts_.text("Today");
    if (day == yesterday_) return texts_.text("Yesterday");
    return texts_.mediumDate(day);
  }

 private:
  const Texts& texts_;
  Instant today_;
  std::optional<Instant> yesterday_;
};

/// The logs of one day, and how many there are with those that are not shown.
struct LogsOfDay {
  DoseLogs shown;
  DoseCounts counts;
  int64_t before = 0;  ///< of those not shown, how many are later
};
using LogsByDay = std::map<Instant, LogsOfDay, std::greater<>>;

/// Deliberate: finds each log's day by itself. Where clocks go back across midnight, the logs of two days lie in turns.
LogsByDay groupedByDay(const DoseHistory& history, const Calendar& calendar) {
  LogsByDay days;
  for (const auto& log : history.latest) {
    LogsOfDay& day = days[calendar.startOfDay(log->scheduledTime())];
    day.shown.push_back(log);
    day.counts.add(log->status());
  }
  for (const auto& dose : history.rest) {
    const auto day = days.find(calendar.startOfDay(dose.scheduledTime));
    if (day == days.end()) continue;
    day->second.counts.add(dose.status);
    if (dose.scheduledTime > history.latest.front()->scheduledTime()) ++day->second.before;
  }
  return days;
}

}  // namespace

std::string_view rawValue(TimeRange range) {
  constexpr std::array<std::string_view, kAllTimeRanges.size()> kTexts = {
      ownTextIn("time range", "Today"), ownTextIn("time range", "Week"), ownTextIn("time range", "Month"),
      ownTextIn("time range", "All")};
  return kTexts[static_cast<size_t>(range)];
}

std::string_view rawValue(HistoryFilter filter) {
  const auto status = statusOf(filter);
  return status ? rawValue(*status) : "All";
}

Instant rangeStart(TimeRange range, Instant now, const Calendar& calendar) {
  switch (range) {
    case TimeRange::today:
      return calendar.startOfDay(now);
    case TimeRange::week:
      return calendar.adding(CalendarUnit::day, -kDaysInWeek, now).value_or(now);
    case TimeRange::month:
      return calendar.adding(CalendarUnit::day, -kDaysInMonth, now).value_or(now);
    case TimeRange::all:
      break;
  }
  return Instant::distantPast();
}

Adherence adherence(const DoseCounts& counts, const Texts& texts) {
  Adherence adherence;
  if (counts.total > 0) adherence.rate = static_cast<double>(counts.taken) / static_cast<double>(counts.total);
  const double rate = adherence.rate.value_or(0);
  adherence.ring = rate;
  // Truncated in double arithmetic, as everywhere where Pillora shows a percentage: 29 of 50 are 57%.
  adherence.percent = static_cast<int64_t>(rate * 100);
  adherence.percentText = std::to_string(adherence.percent);
  adherence.percentSign = texts.text("%");
  adherence.title = texts.text("Adherence Rate");
  adherence.message = rate < 0.5   ? texts.text("Needs improvement")
                      : rate < 0.8 ? texts.text("Good progress")
                      : rate < 1.0 ? texts.text("Great job!")
                                   : texts.text("Perfect!");
  adherence.color = rate < 0.5 ? "red" : rate < 0.8 ? "orange" : "green";
  return adherence;
}

HistoryLogRow historyLogRow(const DoseLog& log, const Texts& texts, bool use24HourTime) {
  const DoseStatus status = log.status();
  HistoryLogRow row;
  row.id = log.id();
  row.name = medicineName(log, texts);
  row.status = rawValue(status);
  row.statusText = statusText(status, texts);
  row.symbol = statusSymbol(status);
  row.color = statusColor(status);
  row.time = log.actionTime().value_or(log.scheduledTime());
  row.timeText = texts.shortTime(row.time, use24HourTime);
  if (const auto timing = doseTiming(log, texts)) {
    row.timing = timing->text;
    row.timingColor = timing->color;
  }
  row.canTake = canChangeStatus(status, DoseStatus::taken);
  row.canSkip = canChangeStatus(status, DoseStatus::skipped);
  if (row.canTake) row.actions.push_back({"take", texts.text("Mark as Taken"), "checkmark"});
  if (row.canSkip) row.actions.push_back({"skip", texts.text("Mark as Skipped"), "forward.fill"});
  return row;
}

ReminderHistoryView::ReminderHistoryView(ScreenEnvironment environment)
    : environment_(environment), medicines_(environment.context), settings_(environment.context) {}

HistoryContent ReminderHistoryView::content() const {
  const Texts& texts = environment_.texts;
  const Instant now = environment_.clock.now();
  const DoseHistory& found = history(now);
  HistoryContent content;
  content.title = texts.text("History");
  content.rangeTitle = texts.text("Time Range");
  content.range = rawValue(selectedTimeRange);
  content.ranges = segments(selectedTimeRange, texts);
  content.adherence = adherence(found.counts, texts);
  content.stats = {statItem(found.counts.taken, DoseStatus::taken, texts),
                   statItem(found.counts.missed, DoseStatus::missed, texts),
                   statItem(found.counts.skipped, DoseStatus::skipped, texts)};
  content.filter = rawValue(selectedFilter);
  content.chips = chips(selectedFilter, texts);
  content.days = daysOf(found, now);
  content.hasMore = found.hasMore;
  content.hasPrevious = !begins_.empty();
  if (found.counts.total == 0) {
    content.empty = Panel{"clock.arrow.circlepath", texts.text("No History Yet"),
                          texts.text("Your medication history will appear here once you start tracking doses.")};
  }
  return content;
}

void ReminderHistoryView::showMore() {
  const auto& logs = history_.latest;
  // More logs than give way may share one time: then all of them stay.
  const bool givesWay = rowLimit + kRowsAtOnce > kMostRows && logs.size() > kRowsAtOnce &&
                        logs[kRowsAtOnce]->scheduledTime() < logs.front()->scheduledTime();
  if (givesWay) {
    begins_.push_back(logs[kRowsAtOnce]->scheduledTime());
  } else {
    rowLimit += kRowsAtOnce;
  }
}

void ReminderHistoryView::showPrevious() {
  if (!begins_.empty()) begins_.pop_back();
}

void ReminderHistoryView::showLatest() {
  begins_.clear();
  rowLimit = kRowsAtOnce;
}

const DoseHistory& ReminderHistoryView::history(Instant now) const {
  const std::pair selection(selectedTimeRange, selectedFilter);
  const Calendar& calendar = environment_.calendar;
  auto found = environment_.context.doseHistory({rangeStart(selectedTimeRange, now, calendar), statusOf(selectedFilter),
                                                 rowLimit, [&](Instant time) { return calendar.startOfDay(time); },
                                                 begins_.empty() ? Instant::distantFuture() : begins_.back()});
  if (found) {
    history_ = *std::move(found);
  } else if (historyOf_ != selection) {
    history_ = {};
  }
  historyOf_ = selection;
  return history_;
}

std::vector<HistoryDay> ReminderHistoryView::daysOf(const DoseHistory& history, Instant now) const {
  const auto& [context, clock, calendar, texts, notifications] = environment_;
  const DayTitles titles(now, calendar, texts);
  const bool in24Hours = settingsShown(settings_).use24HourTime();
  static_cast<void>(medicines_.records());  // held, so that the rows find their names without asking the store
  std::vector<HistoryDay> days;
  for (const auto& [start, logs] : groupedByDay(history, calendar)) {
    HistoryDay day{
        start, titles.title(start), std::to_string(logs.counts.taken) + '/' + std::to_string(logs.counts.total), {}};
    for (const auto& log : logs.shown) day.logs.push_back(historyLogRow(*log, texts, in24Hours));
    day.logs.front().isFirst = logs.before == 0;
    day.logs.back().isLast = static_cast<int64_t>(day.logs.size()) + logs.before == logs.counts.total;
    days.push_back(std::move(day));
  }
  return days;
}

Result<bool> ReminderHistoryView::onStatusChange(const UUID& log, DoseStatus status) {
  const auto changed = changeStatus(environment_, log, status);
  if (changed && *changed) static_cast<void>(environment_.context.save());
  return changed;
}

}  // namespace pillora

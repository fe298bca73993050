// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "screens/ReminderHistoryContent.h"
#include "screens/Screen.h"
#include "support/Result.h"

namespace pillora {

enum class TimeRange { today, week, month, all };
enum class HistoryFilter { all, taken, missed, skipped };

inline constexpr std::array kAllTimeRanges = {TimeRange::today, TimeRange::week, TimeRange::month, TimeRange::all};
inline constexpr std::array kAllHistoryFilters = {HistoryFilter::all, HistoryFilter::taken, HistoryFilter::missed,
                                                  HistoryFilter::skipped};

/// "Today", "Week", "Month", "All"
std::string_view rawValue(TimeRange range);
/// "All", "Taken", "Missed", "Skipped"
std::string_view rawValue(HistoryFilter filter);

/// From when on a range's logs count, as seen at `now`; there is no end, doses taken ahead of their time belong to it.
/// A month is thirty days. Where the calendar cannot count the days back, the range begins now.
Instant rangeStart(TimeRange range, Instant now, const Calendar& calendar);

/// Figures over all logs shown: their message and colour go by the rate.
Adherence adherence(const DoseCounts& counts, const Texts& texts);

/// The row of a log, also of one whose medicine is gone. Its place among the day's rows is the caller's to fill in.
HistoryLogRow historyLogRow(const DoseLog& log, const Texts& texts, bool use24HourTime);

/// The tab that tells what became of every dose: a range of time and a filter of statuses, the adherence of what is
/// shown, and its logs by day, latest first.
class ReminderHistoryView {
 public:
  explicit ReminderHistoryView(ScreenEnvironment environment);

  /// Everything shown, as of the clock's now. When the store cannot be read it keeps what it last held of the same
  /// range and filter.
  HistoryContent content() const;

  /// What a row's buttons do: the log gets the status, acted on now, and is saved at once. Nothing is planned and
  /// nothing cancelled. Answers whether the log was changed: not when it is gone, nor when its row does not offer this.
  /// On an error nothing was changed. A save that fails is no error: the change stays pending like any other.
  Result<bool> onStatusChange(const UUID& log, DoseStatus status);

  TimeRange selectedTimeRange = TimeRange::week;
  HistoryFilter selectedFilter = HistoryFilter::all;

  /// content() holds the latest `rowLimit` logs; figures and counts are of all.
  size_t rowLimit = kRowsAtOnce;
  /// A hundred logs more. From four hundred on the latest ones give way to them, so that content() costs the same
  /// however far back a person looks.
  void showMore();
  /// Brings back what gave way last.
  void showPrevious();
  /// Begins with the latest log again.
  void showLatest();

 private:
  static constexpr size_t kRowsAtOnce = 100, kMostRows = 400;

  const DoseHistory& history(Instant now) const;
  std::vector<HistoryDay> daysOf(const DoseHistory& history, Instant now) const;

  ScreenEnvironment environment_;
  std::vector<Instant> begins_;  ///< times of the first log shown, as it moved back; none while that is the latest
  LiveQuery<Medicine> medicines_;
  LiveQuery<AppSettings> settings_;
  mutable DoseHistory history_;  ///< as last read, with the selection that it was read for
  mutable std::optional<std::pair<TimeRange, HistoryFilter>> historyOf_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "screens/Content.h"
#include "support/Fields.h"
#include "support/Instant.h"
#include "support/UUID.h"

namespace pillora {

// What History shows, see ReminderHistoryView. Ids are raw values, the same in every language.

/// One part of the picker of time ranges.
struct RangeSegment {
  std::string id, title;
  bool isSelected = false;

  static constexpr auto fields() {
    return std::tuple(field("id", &RangeSegment::id), field("title", &RangeSegment::title),
                      field("isSelected", &RangeSegment::isSelected));
  }
};

/// How reliably doses were taken, of all logs shown.
struct Adherence {
  std::optional<double> rate;  ///< taken by all, 0 to 1; absent when there are none
  double ring = 0;             ///< how much of the circle is filled
  int64_t percent = 0;
  std::string percentText;  ///< "57"
  std::string percentSign;  ///< smaller, behind the text
  std::string title;
  std::string message;
  std::string color;  ///< of the ring

  static constexpr auto fields() {
    return std::tuple(field("rate", &Adherence::rate), field("ring", &Adherence::ring),
                      field("percent", &Adherence::percent), field("percentText", &Adherence::percentText),
                      field("percentSign", &Adherence::percentSign), field("title", &Adherence::title),
                      field("message", &Adherence::message), field("color", &Adherence::color));
  }
};

struct StatItem {
  int64_t value = 0;
  std::string label, icon, color;

  static constexpr auto fields() {
    return std::tuple(field("value", &StatItem::value), field("label", &StatItem::label),
                      field("icon", &StatItem::icon), field("color", &StatItem::color));
  }
};

/// Tapping it selects the filter that `id` names.
struct FilterChip {
  std::string id, title, symbol, color;
  bool isSelected = false;

  static constexpr auto fields() {
    return std::tuple(field("id", &FilterChip::id), field("title", &FilterChip::title),
                      field("symbol", &FilterChip::symbol), field("color", &FilterChip::color),
                      field("isSelected", &FilterChip::isSelected));
  }
};

struct HistoryLogRow {
  UUID id;
  std::string name;
  std::string status;      ///< raw value
  std::string statusText;  ///< as shown
  std::string symbol, color;
  Instant time;  ///< when it was acted on, or else when it was due
  std::string timeText;
  std::optional<std::string> timing;  ///< "5m late"; absent unless taken a minute or more off
  std::optional<std::string> timingColor;
  bool canTake = false, canSkip = false;  ///< the status may be changed to taken, to skipped
  std::vector<ActionItem> actions;        ///< the same as buttons: "take", "skip"
  bool isFirst = false, isLast = false;   ///< among all rows of its day, also those beyond the row limit

  static constexpr auto fields() {
    using Row = HistoryLogRow;
    return std::tuple(field("id", &Row::id), field("name", &Row::name), field("status", &Row::status),
                      field("statusText", &Row::statusText), field("symbol", &Row::symbol), field("color", &Row::color),
                      field("time", &Row::time), field("timeText", &Row::timeText), field("timing", &Row::timing),
                      field("timingColor", &Row::timingColor), field("canTake", &Row::canTake),
                      field("canSkip", &Row::canSkip), field("actions", &Row::actions), field("isFirst", &Row::isFirst),
                      field("isLast", &Row::isLast));
  }
};

struct HistoryDay {
  Instant day;        ///< its first moment, by which days are told apart
  std::string title;  ///< "Today", "Yesterday", "Jan 10, 2025"
  std::string count;  ///< taken of all, "2/3"
  std::vector<HistoryLogRow> logs;

  static constexpr auto fields() {
    return std::tuple(field("day", &HistoryDay::day), field("title", &HistoryDay::title),
                      field("count", &HistoryDay::count), field("logs", &HistoryDay::logs));
  }
};

struct HistoryContent {
  std::string title;
  std::string rangeTitle;  ///< label of the picker
  std::string range;       ///< raw value of the selected one
  std::vector<RangeSegment> ranges;
  Adherence adherence;
  std::vector<StatItem> stats;
  std::string filter;  ///< raw value of the selected one
  std::vector<FilterChip> chips;
  std::vector<HistoryDay> days;
  std::optional<Panel> empty;
  bool hasMore = false;      ///< logs beyond the row limit: showMore() brings them
  bool hasPrevious = false;  ///< later logs that gave way: showPrevious() brings them back

  static constexpr auto fields() {
    using History = HistoryContent;
    return std::tuple(field("title", &History::title), field("rangeTitle", &History::rangeTitle),
                      field("range", &History::range), field("ranges", &History::ranges),
                      field("adherence", &History::adherence), field("stats", &History::stats),
                      field("filter", &History::filter), field("chips", &History::chips), field("days", &History::days),
                      field("empty", &History::empty), field("hasMore", &History::hasMore),
                      field("hasPrevious", &History::hasPrevious));
  }
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "cli/Rendering.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "cli/Page.h"

namespace pillora {

namespace {

using Align = Column::Align;
using Weight = Cell::Weight;

/// A letter that every terminal has, for the symbols that a terminal needs.
std::string glyph(std::string_view symbol) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kGlyphs = {
      {{"checkmark.circle.fill", "✓"},
       {"checkmark.circle", "✓"},
       {"xmark.circle.fill", "✗"},
       {"clock.fill", "○"},
       {"list.bullet", "≡"},
       {"forward.circle.fill", "»"},
       {"clock.arrow.circlepath", "~"}}};
  const auto here = std::find_if(kGlyphs.begin(), kGlyphs.end(), [&](const auto& one) { return one.first == symbol; });
  return std::string(here == kGlyphs.end() ? "○" : here->second);
}

/// The word for the symbol of an interval's type.
std::string frequency(std::string_view symbol, const Texts& texts) {
  if (symbol == "clock") return texts.text("Hourly");
  if (symbol == "sun.max") return texts.text("Daily");
  if (symbol == "calendar.badge.clock") return texts.text("Weekly");
  return symbol == "calendar" ? texts.text("Monthly") : texts.text("Custom");
}

constexpr Column kWhole{Align::left, true};

Cell bullet(const std::string& color) { return {"●", color}; }

void addPanel(Page& page, const Panel& panel) {
  page.paragraph({glyph(panel.symbol) + ' ' + panel.title, {}, Weight::bold}, 2);
  if (panel.text) page.paragraph({*panel.text}, 4);
}

/// What somebody without any medicine can do about it.
void addFirstSteps(Page& page, const Texts& texts) {
  page.blank();
  page.line({texts.text("Add one with:"), "secondary"}, 2);
  page.line({"pilloractl add Aspirin --dosage 1 --unit tablet --daily 08:00,20:00"}, 4);
  page.line({"pilloractl add --help", "secondary"}, 4);
}

/// A ring as a bar.
std::string bar(double value) {
  constexpr size_t kCells = 20;
  const auto filled = static_cast<size_t>(std::clamp(value, 0.0, 1.0) * kCells);
  std::string bar;
  for (size_t i = 0; i < kCells; ++i) bar += i < filled ? "█" : "░";
  return bar;
}

void addProgress(Page& page, const DayProgress& progress, const std::vector<StatBadge>& badges) {
  std::vector<Cell> cells = {{bar(progress.value) + ' ' + progress.text, progress.color}};
  for (const StatBadge& badge : badges) {
    cells.push_back({glyph(badge.icon) + ' ' + badge.value + ' ' + badge.label, badge.color});
  }
  page.flow(cells);
}

void addCards(Page& page, const std::vector<UpcomingReminderCard>& cards) {
  std::vector<TableRow> rows;
  for (const auto& card : cards) {
    rows.push_back({{bullet(card.color),
                     {card.name, {}, Weight::bold},
                     {card.dosageText, "secondary"},
                     {card.timeText},
                     {card.countdown, card.countdownColor}}});
  }
  page.table({kWhole, {}, {}, {Align::right}, {}}, std::move(rows));
}

/// Below each log stands its identifier, which undo is called with.
void addActivity(Page& page, const std::vector<DoseLogRow>& logs, const Texts& texts) {
  std::vector<TableRow> rows;
  for (const auto& log : logs) {
    rows.push_back({{{log.timeText},
                     {log.name, {}, Weight::bold},
                     {log.statusText, log.statusColor},
                     {log.timing.value_or(""), log.timingColor ? std::string_view(*log.timingColor) : ""}},
                    texts.text("undo with  {command}", {{"command", "pilloractl undo " + log.id.text()}})});
  }
  page.table({{Align::right}, {}, {}, {}}, std::move(rows));
}

/// A choice among several; brackets tell the selected one where there are no colours.
Cell choice(const std::string& text, bool isSelected, std::string_view color) {
  if (isSelected) return {'[' + text + ']', color, Weight::bold};
  return {text, color};
}

void addAdherence(Page& page, const HistoryContent& content) {
  const Adherence& adherence = content.adherence;
  page.flow({{bar(adherence.ring) + ' ' + adherence.percentText + adherence.percentSign, adherence.color},
             {adherence.title, "secondary"},
             {adherence.message, {}, Weight::bold}});
  std::vector<Cell> stats;
  for (const StatItem& item : content.stats) {
    stats.push_back({glyph(item.icon) + ' ' + std::to_string(item.value) + ' ' + item.label, item.color});
  }
  page.flow(stats);
}

/// Below each log that can still be changed stands the command for it, ready to be copied.
void addHistoryRows(Page& page, const std::vector<HistoryLogRow>& logs) {
  std::vector<TableRow> rows;
  for (const auto& log : logs) {
    std::string note;
    if (log.canTake) note = "pilloractl mark " + log.id.text() + " taken";
    rows.push_back({{{glyph(log.symbol), log.color},
                     {log.timeText},
                     {log.name, {}, Weight::bold},
                     {log.statusText, log.color},
                     {log.timing.value_or(""), log.timingColor ? std::string_view(*log.timingColor) : ""}},
                    std::move(note)});
  }
  page.table({kWhole, {Align::right}, {}, {}, {}}, std::move(rows));
}

void addRows(Page& page, const std::vector<MedicineRowView>& medicines, const Texts& texts) {
  std::vector<TableRow> rows;
  for (const auto& medicine : medicines) {
    rows.push_back({{bullet(medicine.color),
                     {medicine.name, {}, Weight::bold},
                     {medicine.dosageText, "secondary"},
                     {frequency(medicine.intervalSymbol, texts), "secondary"},
                     {medicine.nextDoseText.value_or("")}}});
  }
  page.table({kWhole, {}, {}, {}, {}}, std::move(rows));
}

}  // namespace

std::string rendered(const TodayContent& content, const Terminal& terminal, const Texts& texts) {
  Page page(terminal);
  page.heading(content.greeting.value_or(content.title));
  if (content.date) page.line({*content.date, "secondary"});
  page.blank();
  if (content.progress) addProgress(page, *content.progress, content.badges);
  if (content.empty) {
    addPanel(page, *content.empty);
    addFirstSteps(page, texts);
  }
  if (!content.doses.empty()) {
    page.section(content.dosesTitle.value_or(""));
    addCards(page, content.doses);
  }
  if (content.message) {
    page.blank();
    addPanel(page, *content.message);
  }
  if (!content.activity.empty()) {
    page.section(content.activityTitle.value_or(""));
    addActivity(page, content.activity, texts);
  }
  return page.text();
}

std::string rendered(const UpcomingContent& content, const Terminal& terminal, const Texts& texts) {
  Page page(terminal);
  page.heading(content.title);
  if (content.empty) {
    page.blank();
    addPanel(page, *content.empty);
  }
  for (const UpcomingDay& day : content.days) {
    page.section(day.title);
    std::vector<TableRow> rows;
    for (const auto& dose : day.doses) {
      rows.push_back({{bullet(dose.color),
                       {dose.name, {}, Weight::bold},
                       {dose.dosageText, "secondary"},
                       {dose.timeText},
                       {dose.relative, dose.relativeColor}}});
    }
    page.table({kWhole, {}, {}, {Align::right}, {}}, std::move(rows));
  }
  if (content.hasMore) page.paragraph({texts.text("There are more."), "secondary"});
  return page.text();
}

std::string rendered(const MedicineListContent& content, const Terminal& terminal, const Texts& texts) {
  Page page(terminal);
  page.heading(content.title);
  if (content.empty) {
    page.blank();
    addPanel(page, *content.empty);
    addFirstSteps(page, texts);
  }
  for (const MedicineSection& section : content.sections) {
    page.section(section.title);
    addRows(page, section.rows, texts);
  }
  return page.text();
}

std::string rendered(const HistoryContent& content, const Terminal& terminal, const Texts& texts) {
  Page page(terminal);
  page.heading(content.title);
  std::vector<Cell> ranges = {{texts.text("{label}:", {{"label", content.rangeTitle}}), "secondary"}};
  for (const RangeSegment& range : content.ranges) ranges.push_back(choice(range.title, range.isSelected, {}));
  page.flow(ranges);
  page.blank();
  addAdherence(page, content);
  page.blank();
  std::vector<Cell> chips;
  for (const FilterChip& chip : content.chips) {
    chips.push_back(choice(glyph(chip.symbol) + ' ' + chip.title, chip.isSelected, chip.color));
  }
  page.flow(chips);
  if (content.empty) {
    page.blank();
    addPanel(page, *content.empty);
  }
  bool canSkipAny = false;
  for (const HistoryDay& day : content.days) {
    page.section(day.title + "  " + day.count);
    addHistoryRows(page, day.logs);
    canSkipAny =
        canSkipAny || std::any_of(day.logs.begin(), day.logs.end(), [](const auto& log) { return log.canSkip; });
  }
  if (canSkipAny) {
    page.blank();
    page.paragraph(
        {texts.text("A missed dose that was skipped:  {command}", {{"command", "pilloractl mark LOG-ID skipped"}}),
         "secondary"});
  }
  if (content.hasMore) page.paragraph({texts.text("There are more."), "secondary"});
  return page.text();
}

std::string rendered(const std::vector<LogDay>& days, const Terminal& terminal) {
  Page page(terminal);
  for (const LogDay& day : days) {
    if (&day != days.data()) page.blank();
    page.heading(day.title);
    std::vector<TableRow> rows;
    for (const auto& log : day.logs) {
      rows.push_back({{{log.timeText},
                       {log.name, {}, Weight::bold},
                       {log.statusText, log.statusColor},
                       {log.id.text(), "secondary"}}});
    }
    page.table({{Align::right}, {}, {}, kWhole}, std::move(rows));
  }
  return page.text();
}

std::string rendered(const std::vector<ReminderDay>& days, const Terminal& terminal) {
  Page page(terminal);
  for (const ReminderDay& day : days) {
    if (&day != days.data()) page.blank();
    page.heading(day.title);
    std::vector<TableRow> rows;
    for (const auto& row : day.rows) {
      rows.push_back({{{row.timeText}, {row.title, {}, Weight::bold}, {row.body, "secondary"}}});
    }
    page.table({{Align::right, true}, {}, {}}, std::move(rows));
  }
  return page.text();
}

}  // namespace pillora

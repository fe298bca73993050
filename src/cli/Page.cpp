// SPDX-License-Identifier: MIT
#include "cli/Page.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "cli/DisplayText.h"

namespace pillora {

namespace {

constexpr size_t kIndent = 2;
constexpr size_t kGap = 2;
constexpr size_t kNarrowestColumn = 4;

/// "Select Graphic Rendition" parameters; the names that eight colours lack come from the 256-colour cube.
std::string_view sgrColor(std::string_view name) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 12> kColors = {{{"blue", "34"},
                                                                                             {"green", "32"},
                                                                                             {"red", "31"},
                                                                                             {"orange", "38;5;208"},
                                                                                             {"purple", "35"},
                                                                                             {"pink", "38;5;205"},
                                                                                             {"yellow", "33"},
                                                                                             {"teal", "36"},
                                                                                             {"indigo", "38;5;62"},
                                                                                             {"mint", "38;5;121"},
                                                                                             {"grey", "90"},
                                                                                             {"secondary", "2"}}};
  const auto here =
      std::find_if(kColors.begin(), kColors.end(), [&](const auto& entry) { return entry.first == name; });
  return here == kColors.end() ? std::string_view() : here->second;
}

std::vector<size_t> columnWidths(const std::vector<Column>& columns, const std::vector<TableRow>& rows,
                                 size_t available) {
  std::vector<size_t> widths(columns.size(), 0);
  for (const auto& row : rows) {
    for (size_t i = 0; i < columns.size(); ++i) widths[i] = std::max(widths[i], displayWidth(row.cells[i].text));
  }
  size_t total = std::accumulate(widths.begin(), widths.end(), size_t{0});
  while (total > available) {
    size_t widest = columns.size();
    for (size_t i = 0; i < columns.size(); ++i) {
      if (!columns[i].whole && widths[i] > kNarrowestColumn && (widest == columns.size() || widths[i] > widths[widest]))
        widest = i;
    }
    if (widest == columns.size()) break;
    --widths[widest];
    --total;
  }
  return widths;
}

}  // namespace

std::string Page::styled(const Cell& cell) const {
  if (!terminal_.hasColor || cell.text.empty()) return cell.text;
  std::string parameters;
  if (cell.weight == Cell::Weight::bold) parameters = "1";
  if (cell.weight == Cell::Weight::dim) parameters = "2";
  if (const auto color = sgrColor(cell.color); !color.empty()) {
    if (!parameters.empty()) parameters += ';';
    parameters += color;
  }
  return parameters.empty() ? cell.text : "\x1b[" + parameters + 'm' + cell.text + "\x1b[0m";
}

void Page::heading(std::string_view text) { line({std::string(text), {}, Cell::Weight::bold}); }

void Page::section(std::string_view text) {
  blank();
  heading(text);
}

void Page::line(const Cell& cell, size_t indent) {
  Cell fitting = cell;
  fitting.text = cutToWidth(harmless(cell.text), terminal_.columns - indent);
  text_ += std::string(indent, ' ') + styled(fitting) + '\n';
}

void Page::paragraph(const Cell& cell, size_t indent) {
  for (std::string& text : wrapped(harmless(cell.text), terminal_.columns - indent)) {
    line({std::move(text), cell.color, cell.weight}, indent);
  }
}

void Page::item(const Cell& cell, size_t indent) {
  constexpr std::string_view kDash = "- ";
  std::string_view before = kDash;
  for (const std::string& text : wrapped(harmless(cell.text), terminal_.columns - indent - kDash.size())) {
    line({std::string(before) + text, cell.color, cell.weight}, indent);
    before = "  ";
  }
}

void Page::flow(const std::vector<Cell>& cells) {
  size_t used = 0;
  for (Cell cell : cells) {
    cell.text = cutToWidth(harmless(cell.text), terminal_.columns);
    const size_t width = displayWidth(cell.text);
    if (used > 0) {
      const bool fits = used + kGap + width <= terminal_.columns;
      text_ += fits ? std::string(kGap, ' ') : "\n";
      used = fits ? used + kGap : 0;
    }
    text_ += styled(cell);
    used += width;
  }
  text_ += '\n';
}

void Page::table(const std::vector<Column>& columns, std::vector<TableRow> rows) {
  for (TableRow& row : rows) {
    for (Cell& cell : row.cells) cell.text = cutToWidth(harmless(cell.text), terminal_.columns);
  }
  const size_t gaps = kIndent + kGap * (columns.size() - 1);
  const auto widths = columnWidths(columns, rows, terminal_.columns - std::min(gaps, terminal_.columns));
  for (TableRow& row : rows) {
    const std::string note = std::move(row.note);
    text_ += std::string(kIndent, ' ') + laidOut(columns, widths, std::move(row)) + '\n';
    if (!note.empty()) line({note, {}, Cell::Weight::dim}, 2 * kIndent);
  }
}

std::string Page::laidOut(const std::vector<Column>& columns, const std::vector<size_t>& widths, TableRow row) const {
  std::string printed;
  size_t pending = 0;  // blanks that are written only when something follows them
  for (size_t i = 0; i < columns.size(); ++i) {
    Cell& cell = row.cells[i];
    if (!columns[i].whole) cell.text = cutToWidth(cell.text, widths[i]);
    const size_t padding = widths[i] - std::min(displayWidth(cell.text), widths[i]);
    const bool right = columns[i].align == Column::Align::right;
    if (right) pending += padding;
    if (!cell.text.empty()) {
      printed += std::string(pending, ' ') + styled(cell);
      pending = 0;
    }
    pending += kGap + (right ? 0 : padding);
  }
  return printed;
}

}  // namespace pillora

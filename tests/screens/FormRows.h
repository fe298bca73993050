// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "doubles/Places.h"
#include "screens/FormContent.h"

namespace pillora {

// Rows as lines to compare: kind, id, label and what is shown.

namespace formrows {

inline std::string shown(const TextFieldRow& row) { return row.text; }
inline std::string shown(const ToggleRow& row) { return row.isOn ? "on" : "off"; }
inline std::string shown(const StepperRow& row) {
  return std::string(row.canDecrement ? "-" : "") + (row.canIncrement ? "+" : "");
}
inline std::string shown(const PickerRow& row) { return row.valueText; }
inline std::string shown(const GridRow& row) {
  std::string selected;
  for (const GridCell& cell : row.cells) selected += cell.isSelected ? (selected.empty() ? "" : ",") + cell.id : "";
  return selected;
}
inline std::string shown(const DateRow& row) { return row.valueText; }
inline std::string shown(const TimeRow& row) { return row.valueText + (row.remove ? " removable" : ""); }
inline std::string shown(const ValueRow& row) { return row.text + (row.detail ? " | " + *row.detail : ""); }
inline std::string shown(const ButtonRow& row) { return row.isDestructive ? "destructive" : ""; }
inline std::string shown(const LinkRow& row) { return row.symbol; }
inline std::string shown(const HeaderRow& row) { return row.icon + ' ' + row.color + ' ' + row.dosageText; }
inline std::string shown(const DoseRow& row) {
  return row.symbol + ' ' + row.color + ' ' + row.dateText + ' ' + row.timeText + ' ' + row.statusText;
}

template <typename Row>
std::string label(const Row& row) {
  if constexpr (std::is_same_v<Row, ButtonRow> || std::is_same_v<Row, LinkRow>) return row.title;
  if constexpr (std::is_same_v<Row, ValueRow>) return row.label.value_or("-");
  if constexpr (std::is_same_v<Row, HeaderRow>) return row.name.value_or("-");
  if constexpr (requires { row.label; } && !std::is_same_v<Row, ValueRow>) return row.label;
  return "-";
}

}  // namespace formrows

/// "toggle isActive 'Active': on"
inline std::string lineOf(const FormRow& row) {
  return plainBlanks(std::visit(
      [](const auto& one) {
        using Row = std::decay_t<decltype(one)>;
        return std::string(Row::kKind) + ' ' + one.id + " '" + formrows::label(one) + "': " + formrows::shown(one);
      },
      row));
}

using Lines = std::vector<std::string>;

/// "# title" and the lines of the rows; "# -" where there is no title.
inline Lines linesOf(const FormSection& section) {
  Lines lines = {"# " + section.title.value_or("-")};
  for (const FormRow& row : section.rows) lines.push_back(lineOf(row));
  if (section.footer) lines.push_back("footer: " + *section.footer);
  return lines;
}

/// The section with this id; one without rows when there is none.
inline FormSection sectionNamed(const std::vector<FormSection>& sections, std::string_view id) {
  for (const FormSection& section : sections) {
    if (section.id == id) return section;
  }
  return {};
}

inline Lines titlesOf(const std::vector<FormSection>& sections) {
  Lines titles;
  for (const FormSection& section : sections) titles.push_back(section.title.value_or("-"));
  return titles;
}

}  // namespace pillora

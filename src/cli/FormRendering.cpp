// SPDX-License-Identifier: MIT
#include "cli/FormRendering.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "cli/DisplayText.h"

namespace pillora {

namespace {

using Weight = Cell::Weight;

constexpr size_t kIndent = 2, kGap = 2;

/// A row as a line.
struct Line {
  Cell label, value;
  std::string command = {};
};

Line lineOf(const TextFieldRow& row, const Texts&) { return {{row.label}, {row.text}}; }
Line lineOf(const ToggleRow& row, const Texts& texts) {
  return {{row.label}, {row.isOn ? texts.text("Yes") : texts.text("No"), row.isOn ? "green" : "secondary"}};
}
Line lineOf(const StepperRow& row, const Texts&) { return {{row.label}, {}}; }
Line lineOf(const PickerRow& row, const Texts&) { return {{row.label}, {row.valueText}}; }
Line lineOf(const DateRow& row, const Texts&) { return {{row.label}, {row.valueText}}; }
Line lineOf(const TimeRow& row, const Texts&) { return {{row.label}, {row.valueText}}; }
std::string detailed(const std::string& text, const std::string& detail, const Texts& texts) {
  return texts.text("{text}, {detail}", {{"text", text}, {"detail", detail}});
}

Line lineOf(const ValueRow& row, const Texts& texts) {
  const std::string text = row.detail ? detailed(row.text, *row.detail, texts) : row.text;
  return {{row.label.value_or("")}, {text, row.color ? std::string_view(*row.color) : ""}};
}
Line lineOf(const ButtonRow& row, const Texts&) {
  return {{row.title, row.isDestructive ? std::string_view("red") : ""}, {}};
}
Line lineOf(const HeaderRow& row, const Texts& texts) {
  return {{}, {"● " + detailed(row.name.value_or(""), row.dosageText, texts), row.color, Weight::bold}};
}
Line lineOf(const DoseRow& row, const Texts& texts) {
  return {{texts.text("{date}, {time}", {{"date", row.dateText}, {"time", row.timeText}})},
          {row.statusText, row.color}};
}

size_t widthOf(const Cell& cell) { return displayWidth(harmless(cell.text)); }

void pad(Cell& cell, size_t width) {
  const size_t used = widthOf(cell);
  cell.text.append(used < width ? width - used : 0, ' ');
}

std::vector<Line> linesOf(const FormSection& section, const CommandOf& commandOf, const Texts& texts) {
  std::vector<Line> lines;
  for (const FormRow& row : section.rows) {
    std::visit(
        [&](const auto& one) {
          if constexpr (requires { lineOf(one, texts); }) {
            lines.push_back(lineOf(one, texts));
            lines.back().command = commandOf(one.id);
          }
        },
        row);
  }
  return lines;
}

}  // namespace

void addForm(Page& page, const std::vector<FormSection>& sections, const CommandOf& commandOf, const Terminal& terminal,
             const Texts& texts) {
  size_t labels = 0, values = 0;
  for (const FormSection& section : sections) {
    for (const Line& line : linesOf(section, commandOf, texts)) labels = std::max(labels, widthOf(line.label));
  }
  labels = std::min(labels, terminal.columns / 2);
  const size_t used = labels + kIndent + kGap, available = terminal.columns - std::min(terminal.columns, used);
  const auto isLong = [&](const Line& line) { return widthOf(line.value) > available; };
  for (const FormSection& section : sections) {
    for (const Line& line : linesOf(section, commandOf, texts)) {
      if (!line.command.empty() && !isLong(line)) values = std::max(values, widthOf(line.value));
    }
  }
  for (const FormSection& section : sections) {
    if (section.title) {
      page.section(*section.title);
    } else {
      page.blank();
    }
    for (Line& line : linesOf(section, commandOf, texts)) {
      if (line.label.text.empty()) {
        page.paragraph(line.value, kIndent);
        continue;
      }
      const std::optional<Cell> below = isLong(line) ? std::optional(std::exchange(line.value, {})) : std::nullopt;
      pad(line.label, labels);
      if (!line.command.empty()) pad(line.value, values);
      page.table({{}, {}, {}}, {{{line.label, line.value, {line.command, "secondary"}}}});
      if (below) page.paragraph(*below, 2 * kIndent);
    }
  }
}

}  // namespace pillora

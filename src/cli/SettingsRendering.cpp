// SPDX-License-Identifier: MIT
#include <algorithm>
#include <filesystem>
#include <optional>
#include <type_traits>
#include <vector>

#include "cli/DisplayText.h"
#include "cli/Page.h"
#include "cli/Rendering.h"

// The settings and their sheets as text to read.

namespace pillora {

namespace {

using Weight = Cell::Weight;

/// A row as a line: what it is called, its value, and the word with which a command changes it.
struct Line {
  Cell label, value;
  std::string command;
};

Line lineOf(const ToggleRow& row, const Texts& texts) {
  return {{row.label}, {row.isOn ? texts.text("Yes") : texts.text("No"), row.isOn ? "green" : "secondary"}, row.id};
}
Line lineOf(const StepperRow& row, const Texts&) { return {{row.label}, {}, row.id}; }
Line lineOf(const PickerRow& row, const Texts&) { return {{row.label}, {row.valueText}, row.id}; }
Line lineOf(const ValueRow& row, const Texts& texts) {
  if (row.action) return {{row.label.value_or("")}, {texts.text("Not enabled"), "orange"}, "pilloractl launch"};
  return {{row.label.value_or("")}, {row.text, row.color ? std::string_view(*row.color) : ""}, {}};
}
Line lineOf(const ButtonRow& row, const Texts&) {
  return {{row.title}, {}, row.id == "createBackup" ? "pilloractl backup create" : "pilloractl backup restore FILE"};
}

/// The lines of a section; rows of other kinds, such as links, have no meaning on a terminal.
std::vector<Line> linesOf(const FormSection& section, const Texts& texts) {
  std::vector<Line> lines;
  for (const FormRow& row : section.rows) {
    std::visit(
        [&](const auto& one) {
          if constexpr (requires { lineOf(one, texts); }) lines.push_back(lineOf(one, texts));
        },
        row);
  }
  return lines;
}

/// The text and blanks up to `width` columns.
std::string padded(std::string text, size_t width) {
  const size_t used = displayWidth(harmless(text));
  return text.append(used < width ? width - used : 0, ' ');
}

}  // namespace

std::string rendered(const SettingsContent& content, const Terminal& terminal, const Texts& texts) {
  Page page(terminal);
  page.heading(content.title);
  size_t labels = 0, values = 0;  // as wide in every section
  for (const FormSection& section : content.sections) {
    for (const Line& line : linesOf(section, texts)) {
      labels = std::max(labels, displayWidth(harmless(line.label.text)));
      values = std::max(values, displayWidth(harmless(line.value.text)));
    }
  }
  for (const FormSection& section : content.sections) {
    page.section(section.title.value_or(""));
    std::vector<TableRow> rows;
    for (Line& line : linesOf(section, texts)) {
      line.label.text = padded(std::move(line.label.text), labels);
      if (!line.command.empty()) line.value.text = padded(std::move(line.value.text), values);
      rows.push_back({{line.label, line.value, {line.command, "secondary"}}});
    }
    page.table({{}, {}, {}}, std::move(rows));
  }
  page.section(content.notes.title.value_or(""));
  for (const FormRow& note : content.notes.rows) {
    if (const auto* row = std::get_if<ValueRow>(&note)) page.item({row->text, "secondary"}, 2);
  }
  page.blank();
  page.paragraph({texts.text("To change one:  {command}", {{"command", "pilloractl settings set use24HourTime yes"}}),
                  "secondary"});
  return page.text();
}

std::string rendered(const RestoreSheet& sheet, const Terminal& terminal, const Texts&) {
  Page page(terminal);
  if (sheet.empty) {
    page.line({sheet.empty->title, {}, Weight::bold});
    if (sheet.empty->text) page.paragraph({*sheet.empty->text});
  }
  for (const BackupSection& section : sheet.sections) {
    if (&section != sheet.sections.data()) page.blank();
    page.heading(section.title);
    std::vector<TableRow> rows;
    for (const BackupRow& row : section.rows) {
      rows.push_back({{{row.title},
                       {row.detail, "secondary"},
                       {std::filesystem::path(row.backup.url).filename().string(), {}, Weight::bold}}});
    }
    page.table({{}, {Column::Align::right}, {Column::Align::left, true}}, std::move(rows));
  }
  return page.text();
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/CliEnvironment.h"

namespace pillora {

/// A piece of text and how it looks. Colours go by the names that content uses; no name is the terminal's own.
struct Cell {
  std::string text;
  std::string_view color = {};
  enum class Weight { normal, bold, dim } weight = Weight::normal;
};

/// How a table's column is laid out. Where a row would be wider than the terminal, the widest columns give way, but
/// never those that are `whole`.
struct Column {
  enum class Align { left, right } align = Align::left;
  bool whole = false;
};

/// One row of a table: as many cells as there are columns, and perhaps a line of its own below them.
struct TableRow {
  std::vector<Cell> cells;
  std::string note = {};
};

/// A printed page: lines no wider than the terminal, whatever the texts in them hold.
class Page {
 public:
  explicit Page(const Terminal& terminal) : terminal_(terminal) {}

  void blank() { text_ += '\n'; }
  void heading(std::string_view text);
  /// A heading with a blank line above it.
  void section(std::string_view text);
  void line(const Cell& cell, size_t indent = 0);
  /// The text over as many lines as it needs.
  void paragraph(const Cell& cell, size_t indent = 0);
  /// A paragraph of a list, behind a dash.
  void item(const Cell& cell, size_t indent = 0);
  /// The cells side by side, beginning a new line where the next one would not fit.
  void flow(const std::vector<Cell>& cells);
  /// Rows indented by two, their columns two blanks apart.
  void table(const std::vector<Column>& columns, std::vector<TableRow> rows);

  const std::string& text() const { return text_; }

 private:
  std::string styled(const Cell& cell) const;
  std::string laidOut(const std::vector<Column>& columns, const std::vector<size_t>& widths, TableRow row) const;

  const Terminal& terminal_;
  std::string text_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <variant>
#include <vector>

#include "screens/Content.h"
#include "support/Fields.h"
#include "support/Instant.h"
#include "support/JsonForward.h"

namespace pillora {

// What the screens with controls are made of: sections of rows, each row one control or one value with a finished
// text. A row's `id` names what the control edits, the same in every language and for as long as the control is there.
// Drawing never writes: a value that no control could have produced is shown as it is until the person changes it.

/// The values that a stepper can give: from `least` to `most`, `step` apart.
struct Stepper {
  int64_t least, most, step;

  constexpr bool reaches(int64_t value) const { return value >= least && value <= most && (value - least) % step == 0; }
  /// The value after one press of plus or minus; nothing where that would leave the range. A value that lies outside
  /// already (in a restored record, say) goes back to the end that it lies beyond, and never farther away.
  constexpr std::optional<int64_t> above(int64_t value) const {
    if (value < least) return least;
    return value > most || value > most - step ? std::nullopt : std::optional(value + step);
  }
  constexpr std::optional<int64_t> below(int64_t value) const {
    if (value > most) return most - (most - least) % step;
    return value < least || value < least + step ? std::nullopt : std::optional(value - step);
  }
};

struct TextFieldRow {
  static constexpr std::string_view kKind = "textField";
  std::string id, label;  ///< the label is also the prompt of an empty field
  std::string text;
  std::string keypad = "text";  ///< or "decimal"
  std::string style = "body";   ///< or "title": large and bold

  static constexpr auto fields() {
    using Row = TextFieldRow;
    return std::tuple(field("id", &Row::id), field("label", &Row::label), field("text", &Row::text),
                      field("keypad", &Row::keypad), field("style", &Row::style));
  }
};

struct ToggleRow {
  static constexpr std::string_view kKind = "toggle";
  std::string id, label;
  bool isOn = false;
  bool isLabelHidden = false;  ///< the label is there for screen readers alone

  static constexpr auto fields() {
    using Row = ToggleRow;
    return std::tuple(field("id", &Row::id), field("label", &Row::label), field("isOn", &Row::isOn),
                      field("isLabelHidden", &Row::isLabelHidden));
  }
};

struct StepperRow {
  static constexpr std::string_view kKind = "stepper";
  std::string id, label;  ///< the label holds the value: "Duration: 10 min"
  int64_t value = 0;
  int64_t least = 0, most = 0, step = 1;
  bool canDecrement = false, canIncrement = false;

  static constexpr auto fields() {
    using Row = StepperRow;
    return std::tuple(field("id", &Row::id), field("label", &Row::label), field("value", &Row::value),
                      field("least", &Row::least), field("most", &Row::most), field("step", &Row::step),
                      field("canDecrement", &Row::canDecrement), field("canIncrement", &Row::canIncrement));
  }
};

StepperRow stepperRow(std::string id, std::string label, int64_t value, const Stepper& stepper);

struct PickerOption {
  std::string id;  ///< the stored value
  std::string title;
  std::optional<std::string> symbol = std::nullopt;

  bool operator==(const PickerOption&) const = default;
  static constexpr auto fields() {
    using Option = PickerOption;
    return std::tuple(field("id", &Option::id), field("title", &Option::title), field("symbol", &Option::symbol));
  }
};

struct PickerRow {
  static constexpr std::string_view kKind = "picker";
  std::string id, label;
  std::string selected;   ///< the id of an option, or a stored value that is none of them
  std::string valueText;  ///< the selected option's title, or that stored value as it is
  std::vector<PickerOption> options;

  static constexpr auto fields() {
    using Row = PickerRow;
    return std::tuple(field("id", &Row::id), field("label", &Row::label), field("selected", &Row::selected),
                      field("valueText", &Row::valueText), field("options", &Row::options));
  }
};

/// A picker whose `valueText` is found among the options.
PickerRow pickerRow(std::string id, std::string label, std::string selected, std::vector<PickerOption> options);

/// One cell of a grid: a swatch (colour alone), an icon (symbol in a colour) or a day (title alone).
struct GridCell {
  std::string id;
  std::string title;  ///< what a day shows; of a swatch or an icon what it is called
  std::optional<std::string> symbol = std::nullopt;
  std::optional<std::string> color = std::nullopt;
  bool isSelected = false;

  static constexpr auto fields() {
    return std::tuple(field("id", &GridCell::id), field("title", &GridCell::title), field("symbol", &GridCell::symbol),
                      field("color", &GridCell::color), field("isSelected", &GridCell::isSelected));
  }
};

/// A grid of buttons. Distances and sizes are points.
struct GridRow {
  static constexpr std::string_view kKind = "grid";
  std::string id, label;
  std::string style;  ///< "swatches", "icons", "days"
  int64_t columns = 1, spacing = 0, cellSize = 0;
  std::vector<GridCell> cells = {};

  static constexpr auto fields() {
    using Row = GridRow;
    return std::tuple(field("id", &Row::id), field("label", &Row::label), field("style", &Row::style),
                      field("columns", &Row::columns), field("spacing", &Row::spacing),
                      field("cellSize", &Row::cellSize), field("cells", &Row::cells));
  }
};

/// A date without a time of day; its sheet is a MonthSheet.
struct DateRow {
  static constexpr std::string_view kKind = "date";
  std::string id, label;
  Instant value;
  std::string valueText;

  static constexpr auto fields() {
    using Row = DateRow;
    return std::tuple(field("id", &Row::id), field("label", &Row::label), field("value", &Row::value),
                      field("valueText", &Row::valueText));
  }
};

/// A time of day.
struct TimeRow {
  static constexpr std::string_view kKind = "time";
  std::string id, label;
  int64_t hour = 0, minute = 0;
  std::string valueText;
  std::optional<ActionItem> remove = std::nullopt;  ///< where the row can be taken away

  static constexpr auto fields() {
    using Row = TimeRow;
    return std::tuple(field("id", &Row::id), field("label", &Row::label), field("hour", &Row::hour),
                      field("minute", &Row::minute), field("valueText", &Row::valueText),
                      field("remove", &Row::remove));
  }
};

/// A value that is only shown.
struct ValueRow {
  static constexpr std::string_view kKind = "value";
  std::string id;
  std::optional<std::string> label;  ///< absent: the text takes the whole row
  std::string text;
  std::optional<std::string> detail = std::nullopt;  ///< below the text, smaller
  std::optional<std::string> symbol = std::nullopt;
  std::optional<std::string> color = std::nullopt;
  std::optional<ActionItem> action = std::nullopt;  ///< a button in the place of the text

  static constexpr auto fields() {
    using Row = ValueRow;
    return std::tuple(field("id", &Row::id), field("label", &Row::label), field("text", &Row::text),
                      field("detail", &Row::detail), field("symbol", &Row::symbol), field("color", &Row::color),
                      field("action", &Row::action));
  }
};

/// What a screen is about: a medicine's icon, name and dosage.
struct HeaderRow {
  static constexpr std::string_view kKind = "header";
  std::string id;
  std::string icon, color;
  std::optional<std::string> name;  ///< large and bold; absent while a text field above stands in for it
  std::string dosageText;

  static constexpr auto fields() {
    using Row = HeaderRow;
    return std::tuple(field("id", &Row::id), field("icon", &Row::icon), field("color", &Row::color),
                      field("name", &Row::name), field("dosageText", &Row::dosageText));
  }
};

/// One dose that was recorded.
struct DoseRow {
  static constexpr std::string_view kKind = "dose";
  std::string id;  ///< the log's
  std::string symbol, color;
  std::string dateText, timeText;
  std::string status;      ///< raw value, the same in every language
  std::string statusText;  ///< as shown

  static constexpr auto fields() {
    using Row = DoseRow;
    return std::tuple(field("id", &Row::id), field("symbol", &Row::symbol), field("color", &Row::color),
                      field("dateText", &Row::dateText), field("timeText", &Row::timeText),
                      field("status", &Row::status), field("statusText", &Row::statusText));
  }
};

struct ButtonRow {
  static constexpr std::string_view kKind = "button";
  std::string id, title;
  std::optional<std::string> symbol = std::nullopt;
  bool isDestructive = false;
  bool isEnabled = true;

  static constexpr auto fields() {
    using Row = ButtonRow;
    return std::tuple(field("id", &Row::id), field("title", &Row::title), field("symbol", &Row::symbol),
                      field("isDestructive", &Row::isDestructive), field("isEnabled", &Row::isEnabled));
  }
};

/// Opens a page outside the window; the id names the page.
struct LinkRow {
  static constexpr std::string_view kKind = "link";
  std::string id, title, symbol;

  static constexpr auto fields() {
    using Row = LinkRow;
    return std::tuple(field("id", &Row::id), field("title", &Row::title), field("symbol", &Row::symbol));
  }
};

using FormRow = std::variant<TextFieldRow, ToggleRow, StepperRow, PickerRow, GridRow, DateRow, TimeRow, ValueRow,
                             ButtonRow, LinkRow, HeaderRow, DoseRow>;

/// The row's members after its "kind".
Json toJson(const FormRow& row);

struct FormSection {
  std::string id;
  std::optional<std::string> title = std::nullopt, footer = std::nullopt;
  std::vector<FormRow> rows = {};

  static constexpr auto fields() {
    using Section = FormSection;
    return std::tuple(field("id", &Section::id), field("title", &Section::title), field("rows", &Section::rows),
                      field("footer", &Section::footer));
  }
};

/// The row of this kind and id, or null when the sections hold none. It lies within the sections.
template <typename Row>
const Row* rowNamed(const std::vector<FormSection>& sections, std::string_view id) {
  for (const FormSection& section : sections) {
    for (const FormRow& each : section.rows) {
      if (const auto* row = std::get_if<Row>(&each); row != nullptr && row->id == id) return row;
    }
  }
  return nullptr;
}

/// The value that a stepper on show has after plus (`&Stepper::above`) or minus (`&Stepper::below`); nothing where the
/// step is not taken or there is no such row.
std::optional<int64_t> stepped(const std::vector<FormSection>& sections, std::string_view row,
                               std::optional<int64_t> (Stepper::*next)(int64_t) const);
/// Whether a picker or a grid on show has this option.
bool hasOption(const std::vector<FormSection>& sections, std::string_view row, std::string_view option);

/// The described member of type V with this name, or null: where a row named after it writes.
template <typename V, Described T>
V* fieldNamed(T& object, std::string_view name) {
  V* found = nullptr;
  forEachField<T>([&](std::string_view each, auto member) {
    if constexpr (std::is_same_v<decltype(member), V T::*>) {
      if (each == name) found = &(object.*member);
    }
  });
  return found;
}

/// An entry of a toolbar button's menu.
struct MenuItem {
  std::string id, title, symbol;
  bool isDestructive = false;

  static constexpr auto fields() {
    return std::tuple(field("id", &MenuItem::id), field("title", &MenuItem::title), field("symbol", &MenuItem::symbol),
                      field("isDestructive", &MenuItem::isDestructive));
  }
};

/// A button of a screen's or a sheet's toolbar.
struct ToolbarButton {
  std::string id;
  std::string slot;   ///< "cancellation", "primary", "confirmation"
  std::string title;  ///< of a button that shows its symbol alone what it is called
  bool isEnabled = true;
  bool isSemibold = false;
  std::optional<std::string> symbol = std::nullopt;
  std::vector<MenuItem> menu = {};  ///< the button opens this, if there is anything in it

  static constexpr auto fields() {
    using Button = ToolbarButton;
    return std::tuple(field("id", &Button::id), field("slot", &Button::slot), field("title", &Button::title),
                      field("isEnabled", &Button::isEnabled), field("isSemibold", &Button::isSemibold),
                      field("symbol", &Button::symbol), field("menu", &Button::menu));
  }
};

}  // namespace pillora

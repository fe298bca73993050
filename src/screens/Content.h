// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "support/Fields.h"
#include "support/UUID.h"

namespace pillora {

// Pieces that the contents of several screens are made of. Content is finished: texts as shown, symbol names, colour
// names, ids. Whoever renders it decides nothing.

/// What a screen or a section shows in place of rows.
struct Panel {
  std::string symbol, title;
  std::optional<std::string> text;  ///< absent when the title says it all

  bool operator==(const Panel&) const = default;
  static constexpr auto fields() {
    return std::tuple(field("symbol", &Panel::symbol), field("title", &Panel::title), field("text", &Panel::text));
  }
};

/// A button: `id` names the action in every language.
struct ActionItem {
  std::string id, title, symbol;

  bool operator==(const ActionItem&) const = default;
  static constexpr auto fields() {
    return std::tuple(field("id", &ActionItem::id), field("title", &ActionItem::title),
                      field("symbol", &ActionItem::symbol));
  }
};

/// A question before something is lost: a cancelling and a destructive button.
struct ConfirmationAlert {
  std::string title, message, cancel, confirm;

  bool operator==(const ConfirmationAlert&) const = default;
  static constexpr auto fields() {
    return std::tuple(field("title", &ConfirmationAlert::title), field("message", &ConfirmationAlert::message),
                      field("cancel", &ConfirmationAlert::cancel), field("confirm", &ConfirmationAlert::confirm));
  }
};

}  // namespace pillora

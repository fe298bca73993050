// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <utility>

#include "cli/FormRendering.h"
#include "cli/Rendering.h"

namespace pillora {

namespace {

/// The option of `edit` that writes what a row shows, and the command of the button.
std::string commandOf(std::string_view row) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kCommands = {
      {{"isActive", "--active"},
       {"allowSnooze", "--allow-snooze"},
       {"snoozeDurationMinutes", "--snooze-minutes"},
       {"maxSnoozeCount", "--max-snooze"},
       {"startDate", "--start"},
       {"isRepeating", "--repeating"},
       {"delete", "pilloractl delete"}}};
  const auto here = std::find_if(kCommands.begin(), kCommands.end(), [&](const auto& one) { return one.first == row; });
  return std::string(here == kCommands.end() ? "" : here->second);
}

}  // namespace

std::string rendered(const MedicineDetailContent& content, const Terminal& terminal, const Texts& texts) {
  Page page(terminal);
  page.heading(content.title);
  addForm(page, content.sections, commandOf, terminal, texts);
  page.blank();
  page.paragraph({texts.text("To change it:  {command}", {{"command", "pilloractl edit --help"}}), "secondary"});
  return page.text();
}

}  // namespace pillora

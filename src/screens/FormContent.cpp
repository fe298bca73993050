// SPDX-License-Identifier: MIT
#include "screens/FormContent.h"

#include <algorithm>
#include <utility>

#include "support/Json.h"

namespace pillora {

StepperRow stepperRow(std::string id, std::string label, int64_t value, const Stepper& stepper) {
  return {std::move(id),
          std::move(label),
          value,
          stepper.least,
          stepper.most,
          stepper.step,
          stepper.below(value).has_value(),
          stepper.above(value).has_value()};
}

PickerRow pickerRow(std::string id, std::string label, std::string selected, std::vector<PickerOption> options) {
  const auto shown =
      std::find_if(options.begin(), options.end(), [&](const PickerOption& option) { return option.id == selected; });
  std::string text = shown == options.end() ? selected : shown->title;
  return {std::move(id), std::move(label), std::move(selected), std::move(text), std::move(options)};
}

std::optional<int64_t> stepped(const std::vector<FormSection>& sections, std::string_view row,
                               std::optional<int64_t> (Stepper::*next)(int64_t) const) {
  const auto* shown = rowNamed<StepperRow>(sections, row);
  return shown == nullptr ? std::nullopt : (Stepper{shown->least, shown->most, shown->step}.*next)(shown->value);
}

bool hasOption(const std::vector<FormSection>& sections, std::string_view row, std::string_view option) {
  const auto isMeant = [&](const auto& each) { return each.id == option; };
  if (const auto* picker = rowNamed<PickerRow>(sections, row)) {
    return std::any_of(picker->options.begin(), picker->options.end(), isMeant);
  }
  const auto* grid = rowNamed<GridRow>(sections, row);
  return grid != nullptr && std::any_of(grid->cells.begin(), grid->cells.end(), isMeant);
}

Json toJson(const FormRow& row) {
  return std::visit(
      [](const auto& one) {
        Json object = Json::object({{"kind", std::decay_t<decltype(one)>::kKind}});
        const Json members = toJson(one);
        for (const auto& [name, value] : members.items()) object[name] = value;
        return object;
      },
      row);
}

}  // namespace pillora

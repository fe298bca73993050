// SPDX-License-Identifier: MIT
#include "screens/MedicineListView.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "screens/DoseTexts.h"
#include "screens/MedicineEditing.h"
#include "screens/MedicineForm.h"

namespace pillora {

namespace {

constexpr std::string_view kActive = "active", kInactive = "inactive";

}  // namespace

MedicineListView::MedicineListView(ScreenEnvironment environment)
    : environment_(environment), medicines_(environment.context), settings_(environment.context) {}

MedicineListContent MedicineListView::content() const {
  const Texts& texts = environment_.texts;
  MedicineListContent content;
  content.title = texts.text("Medicines");
  content.toolbar = {{"addMedicine", texts.text("Add Medicine"), "plus.circle.fill"}};
  content.searchPrompt = texts.text("Search medicines");
  content.searchText = searchText;
  content.clearSearch = texts.text("Clear Search");
  if (medicines_.records().empty()) {
    content.empty = Panel{"pills", texts.text("No Medicines Added"),
                          texts.text("Add medicines to track your reminders and never miss a dose.")};
    content.emptyAction = ActionItem{"addMedicine", texts.text("Add Medicine"), "plus"};
    return content;
  }
  const Instant now = environment_.clock.now();
  const Medicines found = shown();
  for (const auto& [id, title] : {std::pair(kActive, ownTextIn("medicines", "Active")),
                                  std::pair(kInactive, ownTextIn("medicines", "Inactive"))}) {
    MedicineSection section{std::string(id), texts.textIn("medicines", title), {}};
    for (const auto& medicine : inSection(id, found)) section.rows.push_back(row(*medicine, now));
    if (!section.rows.empty()) content.sections.push_back(std::move(section));
  }
  return content;
}

Medicines MedicineListView::inSection(std::string_view section, const Medicines& medicines) {
  Medicines listed;
  std::copy_if(medicines.begin(), medicines.end(), std::back_inserter(listed),
               [&](const auto& medicine) { return section == (medicine->isActive() ? kActive : kInactive); });
  return listed;
}

void MedicineListView::deleteRows(std::string_view section, const std::vector<UUID>& rows) {
  const Medicines listed = inSection(section, shown());
  for (const UUID& id : rows) {
    const auto medicine =
        std::find_if(listed.begin(), listed.end(), [&](const auto& each) { return each->id() == id; });
    if (medicine != listed.end() && !(*medicine)->isDeleted()) deleteMedicine(environment_, *medicine);
  }
}

Medicines MedicineListView::shown() const {
  const Texts& texts = environment_.texts;
  Medicines found;
  std::copy_if(medicines_.records().begin(), medicines_.records().end(), std::back_inserter(found),
               [&](const auto& medicine) { return texts.containsIgnoringCase(medicine->name(), searchText); });
  std::stable_sort(found.begin(), found.end(),
                   [&](const auto& a, const auto& b) { return texts.compareNames(a->name(), b->name()) < 0; });
  return found;
}

MedicineRowView MedicineListView::row(const Medicine& medicine, Instant now) const {
  const auto& [context, clock, calendar, texts, notifications] = environment_;
  MedicineRowView row;
  row.id = medicine.id();
  row.name = medicine.name();
  row.dosageText = dosageText(medicine, texts);
  row.icon = medicineIcon(medicine, settingsShown(settings_));
  row.color = medicineColor(medicine.color());
  row.isActive = medicine.isActive();
  if (!row.isActive) row.inactiveBadge = texts.text("Inactive");
  row.intervalSymbol = intervalSymbol(medicine.interval().type);
  row.nextDose = medicine.nextDoseTime(now, calendar);
  if (row.nextDose) row.nextDoseText = texts.relative(*row.nextDose, now);
  row.chevron = "chevron.right";
  row.remove = {"delete", environment_.texts.text("Delete"), "trash"};
  return row;
}

}  // namespace pillora

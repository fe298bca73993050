// SPDX-License-Identifier: MIT
#include "screens/MedicineListView.h"

#include <algorithm>
#include <iterator>

#include "screens/DoseTexts.h"

namespace pillora {

namespace {

std::string intervalSymbol(ReminderIntervalType type) {
  switch (type) {
    case ReminderIntervalType::hourly:
      return "clock";
    case ReminderIntervalType::daily:
      return "sun.max";
    case ReminderIntervalType::weekly:
      return "calendar.badge.clock";
    case ReminderIntervalType::monthly:
      return "calendar";
    case ReminderIntervalType::custom:
      return "slider.horizontal.3";
  }
  return {};
}

}  // namespace

MedicineListView::MedicineListView(ScreenEnvironment environment)
    : environment_(environment), medicines_(environment.context), settings_(environment.context) {}

MedicineListContent MedicineListView::content() const {
  const Texts& texts = environment_.texts;
  MedicineListContent content;
  content.title = texts.text("Medicines");
  content.toolbar = {{"addMedicine", texts.text("Add Medicine"), "plus.circle.fill"}};
  content.searchPrompt = texts.text("Search medicines");
  if (medicines_.records().empty()) {
    content.empty = Panel{"pills", texts.text("No Medicines Added"),
                          texts.text("Add medicines to track your reminders and never miss a dose.")};
    content.emptyAction = ActionItem{"addMedicine", texts.text("Add Medicine"), "plus"};
    return content;
  }
  const Instant now = environment_.clock.now();
  MedicineSection active{texts.text("Active"), {}}, inactive{texts.text("Inactive"), {}};
  for (const auto& medicine : shown()) {
    (medicine->isActive() ? active : inactive).rows.push_back(row(*medicine, now));
  }
  for (MedicineSection* section : {&active, &inactive}) {
    if (!section->rows.empty()) content.sections.push_back(std::move(*section));
  }
  return content;
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
  row.dosageText = dosageText(medicine);
  row.icon = medicineIcon(medicine, settingsShown(settings_));
  row.color = medicineColor(medicine.color());
  row.isActive = medicine.isActive();
  if (!row.isActive) row.inactiveBadge = texts.text("Inactive");
  row.intervalSymbol = intervalSymbol(medicine.interval().type);
  row.nextDose = medicine.nextDoseTime(now, calendar);
  if (row.nextDose) row.nextDoseText = texts.relative(*row.nextDose, now);
  return row;
}

}  // namespace pillora

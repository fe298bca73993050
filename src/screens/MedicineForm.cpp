// SPDX-License-Identifier: MIT
#include "screens/MedicineForm.h"

#include <cstdlib>
#include <utility>

#include "screens/DoseTexts.h"

namespace pillora {

namespace {

/// The tab and Unicode's space separators (general category Zs), as UTF-8.
constexpr std::array<std::string_view, 18> kBlanks = {"\t",     " ",      "\u00A0", "\u1680", "\u2000", "\u2001",
                                                      "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007",
                                                      "\u2008", "\u2009", "\u200A", "\u202F", "\u205F", "\u3000"};

/// What the colours and icons are called, for people who cannot see them.
constexpr std::array<std::string_view, kColorNames.size()> kColorTitles = {
    ownText("Blue"), ownText("Green"),  ownText("Red"),  ownText("Orange"), ownText("Purple"),
    ownText("Pink"), ownText("Yellow"), ownText("Teal"), ownText("Indigo"), ownText("Mint")};
constexpr std::array<std::string_view, kIconNames.size()> kIconTitles = {ownText("Pills"),
                                                                         ownText("Pill in a Circle"),
                                                                         ownText("First Aid Kit"),
                                                                         ownText("Heart"),
                                                                         ownText("Drop"),
                                                                         ownText("Leaf"),
                                                                         ownText("Lightning Bolt"),
                                                                         ownText("Moon"),
                                                                         ownText("Sun"),
                                                                         ownText("Sparkles"),
                                                                         ownText("Syringe"),
                                                                         ownText("Filled Syringe"),
                                                                         ownText("Bandage"),
                                                                         ownText("Medicine Vial"),
                                                                         ownText("Infusion Bag"),
                                                                         ownText("Stethoscope"),
                                                                         ownText("Thermometer"),
                                                                         ownText("Heartbeat"),
                                                                         ownText("Head"),
                                                                         ownText("Lungs"),
                                                                         ownText("Allergens"),
                                                                         ownText("Eye"),
                                                                         ownText("Ear"),
                                                                         ownText("Nose"),
                                                                         ownText("Face Mask")};

// Grids of the form, in points.
constexpr int64_t kGridColumns = 5, kGridSpacing = 12, kGridCellSize = 44;

}  // namespace

std::string trimmedName(std::string_view name) {
  const auto atStart = [&](std::string_view blank) { return name.starts_with(blank); };
  const auto atEnd = [&](std::string_view blank) { return name.ends_with(blank); };
  for (const auto* at = kBlanks.end(); (at = std::find_if(kBlanks.begin(), kBlanks.end(), atStart)) != kBlanks.end();) {
    name.remove_prefix(at->size());
  }
  for (const auto* at = kBlanks.end(); (at = std::find_if(kBlanks.begin(), kBlanks.end(), atEnd)) != kBlanks.end();) {
    name.remove_suffix(at->size());
  }
  return std::string(name);
}

Instant initialTime(Instant now, const Calendar& calendar) { return calendar.dateOfTime(9, 0).value_or(now); }

ReminderInterval initialInterval(Instant now, const Calendar& calendar) {
  const auto nine = calendar.components(initialTime(now, calendar));
  const TimeOfDay time{nine.hour, nine.minute};
  ReminderInterval interval = fallbackInterval();
  interval.dailyTimes = {time};
  interval.weeklyTime = time;
  interval.monthlyTime = time;
  return interval;
}

int64_t customIntervalMinutes(int64_t hours, int64_t minutes) {
  int64_t total = 0;
  if (__builtin_mul_overflow(hours, 60, &total) || __builtin_add_overflow(total, minutes, &total)) std::abort();
  return total;
}

std::string intervalSymbol(ReminderIntervalType type) {
  constexpr std::array<std::string_view, kAllReminderIntervalTypes.size()> kSymbols = {
      "clock", "sun.max", "calendar.badge.clock", "calendar", "slider.horizontal.3"};
  return std::string(kSymbols[static_cast<size_t>(type)]);
}

std::string intervalTypeText(ReminderIntervalType type, const Texts& texts) { return texts.text(rawValue(type)); }

PickerRow unitPicker(std::string id, std::string unit, const Texts& texts) {
  std::vector<PickerOption> options;
  for (const std::string_view word : kUnitWords) {
    options.push_back({std::string(word), unitText(std::string(word), texts)});
  }
  return pickerRow(std::move(id), texts.text("Unit"), std::move(unit), std::move(options));
}

GridRow colorGrid(std::string id, std::string_view color, const Texts& texts) {
  GridRow grid{std::move(id), texts.text("Color"), "swatches", kGridColumns, kGridSpacing, kGridCellSize};
  for (size_t i = 0; i < kColorNames.size(); ++i) {
    const std::string name(kColorNames[i]);
    grid.cells.push_back({name, texts.text(kColorTitles[i]), std::nullopt, name, name == color});
  }
  return grid;
}

GridRow iconGrid(std::string id, std::string_view icon, std::string_view color, const Texts& texts) {
  GridRow grid{std::move(id), texts.text("Icon"), "icons", kGridColumns, kGridSpacing, kGridCellSize};
  for (size_t i = 0; i < kIconNames.size(); ++i) {
    const std::string name(kIconNames[i]);
    const bool isSelected = name == icon;
    grid.cells.push_back(
        {name, texts.text(kIconTitles[i]), name, isSelected ? medicineColor(color) : "grey", isSelected});
  }
  return grid;
}

}  // namespace pillora

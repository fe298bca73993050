// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <chrono>

#include "lives/Life.h"
#include "screens/MedicineForm.h"

namespace pillora {

// What the simulated person does with medicines.

namespace {

using namespace std::chrono_literals;

constexpr std::array kNames = {
    "Aspirin", "Vitamin D", "  Ibuprofen 400 ", "aspirin",      "Ärztemix „A“", "β-Blocker",   "Ωmega 3",    "Zink",
    "قرص",     "💊",         "Zéthrol",          "Baby aspirin", "Vitamin C",    "%s {name} 1", "Line\nbreak"};
constexpr std::array kDosages = {"1", "2.5", "", "100", "½"};
constexpr std::array kSearches = {"asp", "VIT", "in", "zé", "ω", "x", " ", "{name}"};

std::string text(std::string_view view) { return std::string(view); }

}  // namespace

void Life::addMedicine() {
  AddMedicineView form(process_->environment());
  NewMedicine values;
  values.startDate = now();
  const std::string name = oneOf(kNames);
  expect(!form.save(), "a form without a name was saved");
  form.setText("name", name);
  values.name = trimmedName(name);
  form.setText("dosage", values.dosage = oneOf(kDosages));
  form.choose("selectedUnit", values.unit = text(oneOf(kUnitWords)));
  form.choose("selectedColor", values.color = text(oneOf(kColorNames)));
  form.choose("selectedIcon", values.icon = text(oneOf(kIconNames)));
  if (oneIn(2)) form.setText("instructions", values.instructions = "after meals");
  values.interval = {ReminderIntervalType::daily, 4, {{9, 0}}, {2, 3, 4, 5, 6}, {9, 0}, {1}, {9, 0}, 480};
  setSchedule(form, values.interval);
  if (oneIn(4)) form.setDate("startDate", values.startDate = now() - 24h * static_cast<int64_t>(below(20)));
  if (oneIn(4)) {
    form.setOn("hasEndDate", true);
    values.endDate = form.state().endDate;
    if (oneIn(2)) form.setDate("endDate", *(values.endDate = now() + 24h * static_cast<int64_t>(below(40))));
  }
  if (oneIn(5)) form.setOn("isRepeating", values.isRepeating = false);
  if (oneIn(10)) form.setOn("isActive", values.isActive = false);
  if (oneIn(2) && form.decrement("snoozeDuration")) --values.snoozeDurationMinutes;
  if (oneIn(2) && form.increment("maxSnoozeCount")) ++values.maxSnoozeCount;
  if (oneIn(3)) form.setOn("allowSnooze", values.allowSnooze = false);
  static_cast<void>(form.content());
  const auto id = form.save();
  expect(id.has_value() && !form.save(), "a form was not saved, or twice");
  note("adds " + values.name + ", " + encodeInterval(values.interval));
  if (id) ledger_.plan(ledger_.add(*id, std::move(values), now()), 30, now());
}

void Life::setTime(AddMedicineView& form, std::string_view row, TimeOfDay& time) {
  // As often as not in the hours in which clocks change, and never at the same minute for all.
  time = {static_cast<int64_t>(oneIn(4) ? below(4) : below(24)), static_cast<int64_t>(oneIn(2) ? 0 : below(60))};
  expect(form.setTime(row, *time.hour, *time.minute), "a time cannot be set");
}

void Life::setDays(AddMedicineView& form, std::string_view row, int64_t most, std::set<int64_t>& days) {
  for (uint64_t taps = 1 + below(6); taps > 0; --taps) {
    const int64_t day = 1 + static_cast<int64_t>(below(static_cast<uint64_t>(most)));
    expect(form.choose(row, std::to_string(day)), "a day cannot be tapped");
    if (days.erase(day) == 0) days.insert(day);
  }
}

void Life::setSchedule(AddMedicineView& form, ReminderInterval& interval) {
  interval.type = oneIn(2) ? ReminderIntervalType::daily : oneOf(kAllReminderIntervalTypes);
  form.choose("intervalType", rawValue(interval.type));
  switch (interval.type) {
    case ReminderIntervalType::hourly:
      for (uint64_t presses = below(21); presses > 0 && form.increment("hourlyInterval"); --presses) {
        ++interval.hourlyInterval;
      }
      break;
    case ReminderIntervalType::daily: {
      const uint64_t times = oneIn(2) ? 1 : 2 + below(2);
      for (uint64_t i = 0; i < times; ++i) {
        if (i > 0) form.addTime();
        if (i > 0) interval.dailyTimes.emplace_back();
        setTime(form, "dailyTimes-" + std::to_string(i), interval.dailyTimes.back());
      }
      break;
    }
    case ReminderIntervalType::weekly:
      setDays(form, "weeklyDays", 7, interval.weeklyDays);
      setTime(form, "weeklyTime", interval.weeklyTime);
      break;
    case ReminderIntervalType::monthly:
      setDays(form, "monthlyDays", 31, interval.monthlyDays);
      setTime(form, "monthlyTime", interval.monthlyTime);
      break;
    case ReminderIntervalType::custom:
      // Down to nothing at all, which the form accepts, but seldom so often that the logs pile up.
      for (uint64_t presses = oneIn(8) ? 8 : below(5); presses > 0 && form.decrement("customIntervalHours");
           --presses) {
        interval.customIntervalMinutes -= 60;
      }
      for (uint64_t presses = interval.customIntervalMinutes > 0 ? below(12) : 11 * below(2);
           presses > 0 && form.increment("customIntervalMinutes"); --presses) {
        interval.customIntervalMinutes += 5;
      }
      break;
  }
}

void Life::editMedicine() {
  BookedMedicine& medicine = oneOf(ledger_.records.medicines);
  MedicineDetailView details(process_->environment(), medicine.id);
  std::string what = "opens " + medicine.values.name;
  if (oneIn(2)) flip(details, medicine);
  if (oneIn(2)) {
    details.edit();
    for (uint64_t edits = below(4); edits > 0; --edits) editField(details, medicine);
    if (oneIn(2)) {
      what += ", saves";
      details.save();
      medicine.updatedAt = now();
      ledger_.replan(medicine, now());
    } else {
      what += ", cancels";
      details.cancel();
    }
  }
  if (oneIn(2)) {
    what += ", is done";
    details.done();
    ledger_.replan(medicine, now());
  } else {
    what += ", goes back";
    details.goBack();
  }
  expect(details.content().isDismissed, "the details do not close");
  note(what);
}

void Life::flip(MedicineDetailView& details, BookedMedicine& medicine) {
  NewMedicine& values = medicine.values;
  switch (below(5)) {
    case 0:
      // Rather on than off, since little happens to a medicine that is off.
      values.isActive = !values.isActive || !oneIn(2);
      return expect(details.setOn("isActive", values.isActive), "the switch of being active");
    case 1:
      values.isRepeating = !values.isRepeating || !oneIn(2);
      return expect(details.setOn("isRepeating", values.isRepeating), "the switch of repeating");
    case 2:
      values.allowSnooze = !values.allowSnooze;
      return expect(details.setOn("allowSnooze", values.allowSnooze), "the switch of snoozing");
    case 3:
      if (details.increment("snoozeDurationMinutes")) ++values.snoozeDurationMinutes;
      return;
    default:
      if (details.decrement("maxSnoozeCount")) --values.maxSnoozeCount;
  }
}

void Life::editField(MedicineDetailView& details, BookedMedicine& medicine) {
  NewMedicine& values = medicine.values;
  switch (below(6)) {
    case 0:
      return expect(details.setText("name", values.name = oneOf(kNames)), "the name cannot be edited");
    case 1:
      return expect(details.setText("dosage", values.dosage = oneOf(kDosages)), "the dosage cannot be edited");
    case 2:
      return expect(details.choose("unit", values.unit = text(oneOf(kUnitWords))), "the unit cannot be chosen");
    case 3:
      return expect(details.choose("color", values.color = text(oneOf(kColorNames))), "the color cannot be chosen");
    case 4:
      return expect(details.setText("instructions", values.instructions = "with water"), "the instructions");
    default:
      values.startDate = now() - 24h * static_cast<int64_t>(below(10));
      return expect(details.setDate("startDate", values.startDate), "the start date cannot be set");
  }
}

void Life::deleteBySwipe() {
  const auto sections = process_->list.content().sections;
  if (sections.empty()) return;
  const MedicineSection& section = oneOf(sections);
  std::vector<UUID> rows = {oneOf(section.rows).id};
  // Not in a turn that is cut short: the cancel of the second row carries out that of the first.
  if (!isDying_ && oneIn(3)) rows.push_back(oneOf(section.rows).id);
  note("swipes away " + std::to_string(rows.size()) + " of " + section.title + " with “" + process_->list.searchText +
       "” searched");
  process_->list.deleteRows(section.id, rows);
  for (const UUID& id : rows) {
    ledger_.cancel(id);
    ledger_.remove(id);
  }
}

void Life::deleteInDetails() {
  if (ledger_.records.medicines.empty()) return;
  const BookedMedicine& medicine = oneOf(ledger_.records.medicines);
  note("deletes " + medicine.values.name);
  MedicineDetailView details(process_->environment(), medicine.id);
  details.delete_();
  expect(!details.isDismissed(), "a medicine was deleted without a question");
  details.askToDelete();
  expect(details.content().deleteAlert.has_value(), "there is no question before deleting");
  details.delete_();
  ledger_.cancel(medicine.id);
  ledger_.remove(medicine.id);
}

void Life::search() {
  const std::string part = oneOf(kSearches);
  note("searches for “" + part + "”");
  process_->list.searchText = part;
  Inspection::Lines expected, actual;
  for (const BookedMedicine& each : ledger_.records.medicines) {
    if (world_.texts.containsIgnoringCase(each.values.name, part)) expected.push_back(each.id.text());
  }
  const auto shown = process_->list.content();
  for (const auto& section : shown.sections) {
    for (const auto& row : section.rows) actual.push_back(row.id.text());
  }
  std::sort(expected.begin(), expected.end());
  std::sort(actual.begin(), actual.end());
  inspect([&](Inspection& look) { look.expectEqual("what a search finds", expected, actual); });
}

}  // namespace pillora

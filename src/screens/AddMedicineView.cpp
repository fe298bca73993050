// SPDX-License-Identifier: MIT
#include "screens/AddMedicineView.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "screens/MedicineEditing.h"
#include "screens/MedicineForm.h"

namespace pillora {

namespace {

constexpr int64_t kDaysToEndDate = 30;
constexpr std::string_view kDailyTimeRow = "dailyTimes-";

AddMedicineState initialState(Instant now, const Calendar& calendar) {
  AddMedicineState state;
  const Instant nine = initialTime(now, calendar);
  state.dailyTimes = {{0, nine}};
  state.weeklyTime = nine;
  state.monthlyTime = nine;
  state.startDate = now;
  state.endDate = calendar.adding(CalendarUnit::day, kDaysToEndDate, now).value_or(now);
  return state;
}

void addOrTakeAway(std::set<int64_t>& days, std::string_view cell) {
  int64_t day = 0;
  std::from_chars(cell.data(), cell.data() + cell.size(), day);
  if (days.erase(day) == 0) days.insert(day);
}

}  // namespace

AddMedicineView::AddMedicineView(ScreenEnvironment environment)
    : environment_(environment),
      settings_(environment.context),
      state_(initialState(environment.clock.now(), environment.calendar)) {}

std::vector<FormSection> AddMedicineView::sections() const {
  return addMedicineSections(state_, environment_.calendar, environment_.texts,
                             settingsShown(settings_).use24HourTime());
}

AddMedicineContent AddMedicineView::content() const {
  const Texts& texts = environment_.texts;
  AddMedicineContent content;
  content.title = texts.text("Add Medicine");
  content.toolbar = {{"cancel", "cancellation", texts.text("Cancel")},
                     {"save", "confirmation", texts.text("Save"), isValid()}};
  content.sections = sections();
  if (monthSheet_) {
    const auto* row = rowNamed<DateRow>(content.sections, monthSheet_->row());
    if (row != nullptr) content.monthSheet = monthSheet_->content(row->value);
  }
  if (timeSheetRow_) {
    const auto* row = rowNamed<TimeRow>(content.sections, *timeSheetRow_);
    if (row != nullptr) {
      content.timeSheet = timeContent(environment_, *row, settingsShown(settings_).use24HourTime());
    }
  }
  content.isDismissed = isDismissed_;
  return content;
}

bool AddMedicineView::setText(std::string_view row, std::string text) {
  if (rowNamed<TextFieldRow>(sections(), row) == nullptr) return false;
  *fieldNamed<std::string>(state_, row) = std::move(text);
  return true;
}

bool AddMedicineView::setOn(std::string_view row, bool isOn) {
  if (rowNamed<ToggleRow>(sections(), row) == nullptr) return false;
  *fieldNamed<bool>(state_, row) = isOn;
  return true;
}

bool AddMedicineView::increment(std::string_view row) { return step(row, &Stepper::above); }

bool AddMedicineView::decrement(std::string_view row) { return step(row, &Stepper::below); }

bool AddMedicineView::step(std::string_view row, std::optional<int64_t> (Stepper::*next)(int64_t) const) {
  const auto value = stepped(sections(), row, next);
  if (!value) return false;
  *fieldNamed<int64_t>(state_, row) = *value;
  return true;
}

bool AddMedicineView::choose(std::string_view row, std::string_view option) {
  if (!hasOption(sections(), row, option)) return false;
  if (auto* days = fieldNamed<std::set<int64_t>>(state_, row)) {
    addOrTakeAway(*days, option);
  } else if (auto* type = fieldNamed<ReminderIntervalType>(state_, row)) {
    *type = *reminderIntervalType(option);
  } else {
    *fieldNamed<std::string>(state_, row) = option;
  }
  return true;
}

bool AddMedicineView::setDate(std::string_view row, Instant date) {
  if (rowNamed<DateRow>(sections(), row) == nullptr) return false;
  *fieldNamed<Instant>(state_, row) = date;
  return true;
}

bool AddMedicineView::setTime(std::string_view row, int64_t hour, int64_t minute) {
  if (rowNamed<TimeRow>(sections(), row) == nullptr) return false;
  // Deliberate: on a day without a clock change. On the day on which the row's time was picked 02:30 may not exist, and
  // the dose would then be due at 03:30 for good.
  const auto time = environment_.calendar.dateOfTime(hour, minute);
  if (time) *timeOf(row) = *time;
  return time.has_value();
}

Instant* AddMedicineView::timeOf(std::string_view row) {
  for (DailyTime& each : state_.dailyTimes) {
    if (row == std::string(kDailyTimeRow) + std::to_string(each.id)) return &each.time;
  }
  return fieldNamed<Instant>(state_, row);
}

bool AddMedicineView::addTime() {
  if (rowNamed<ButtonRow>(sections(), "addTime") == nullptr) return false;
  state_.dailyTimes.push_back({nextTimeId_++, environment_.clock.now()});
  return true;
}

bool AddMedicineView::removeTime(std::string_view row) {
  const std::vector<FormSection> shown = sections();
  const auto* time = rowNamed<TimeRow>(shown, row);
  if (time == nullptr || !time->remove) return false;
  std::erase_if(state_.dailyTimes, [&, removed = timeOf(row)](const DailyTime& each) { return &each.time == removed; });
  return true;
}

bool AddMedicineView::openSheet(std::string_view row) {
  const std::vector<FormSection> shown = sections();
  const auto* date = rowNamed<DateRow>(shown, row);
  if (date == nullptr && rowNamed<TimeRow>(shown, row) == nullptr) return false;
  closeSheet();
  if (date != nullptr) {
    monthSheet_.emplace(environment_, date->id, date->value);
  } else {
    timeSheetRow_ = row;
  }
  return true;
}

void AddMedicineView::closeSheet() {
  monthSheet_.reset();
  timeSheetRow_.reset();
}

void AddMedicineView::showPreviousMonth() {
  if (monthSheet_) monthSheet_->showPreviousMonth();
}

void AddMedicineView::showNextMonth() {
  if (monthSheet_) monthSheet_->showNextMonth();
}

bool AddMedicineView::pickDay(std::string_view cell) {
  if (!monthSheet_) return false;
  const std::string row = monthSheet_->row();
  const auto date = monthSheet_->dateOn(cell, *fieldNamed<Instant>(state_, row));
  return date && setDate(row, *date);
}

bool AddMedicineView::isValid() const { return !trimmedName(state_.name).empty(); }

std::optional<UUID> AddMedicineView::save() {
  if (isDismissed_ || !isValid()) return std::nullopt;
  const auto medicine = addMedicine(environment_, newMedicine());
  isDismissed_ = true;
  return medicine->id();
}

NewMedicine AddMedicineView::newMedicine() const {
  NewMedicine values;
  values.name = trimmedName(state_.name);
  values.dosage = state_.dosage;
  values.unit = state_.selectedUnit;
  values.instructions = state_.instructions;
  values.color = state_.selectedColor;
  values.icon = state_.selectedIcon;
  values.interval = interval();
  values.isActive = state_.isActive;
  values.allowSnooze = state_.allowSnooze;
  values.snoozeDurationMinutes = state_.snoozeDuration;
  values.maxSnoozeCount = state_.maxSnoozeCount;
  values.isRepeating = state_.isRepeating;
  values.startDate = state_.startDate;
  if (state_.hasEndDate) values.endDate = state_.endDate;
  return values;
}

ReminderInterval AddMedicineView::interval() const {
  const auto timeOfDay = [&](Instant time) {
    const DateComponents components = environment_.calendar.components(time);
    return TimeOfDay{components.hour, components.minute};
  };
  ReminderInterval interval;
  interval.type = state_.intervalType;
  interval.hourlyInterval = state_.hourlyInterval;
  for (const DailyTime& each : state_.dailyTimes) interval.dailyTimes.push_back(timeOfDay(each.time));
  interval.weeklyDays = state_.weeklyDays;
  interval.weeklyTime = timeOfDay(state_.weeklyTime);
  interval.monthlyDays = state_.monthlyDays;
  interval.monthlyTime = timeOfDay(state_.monthlyTime);
  interval.customIntervalMinutes = customIntervalMinutes(state_.customIntervalHours, state_.customIntervalMinutes);
  return interval;
}

}  // namespace pillora

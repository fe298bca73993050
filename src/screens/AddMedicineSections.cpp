// SPDX-License-Identifier: MIT
#include <utility>

#include "screens/AddMedicineView.h"
#include "screens/MedicineForm.h"

namespace pillora {

namespace {

constexpr int64_t kDayColumns = 7, kDaySpacing = 8;  ///< of both grids of days, in points
constexpr int64_t kWeekdaySize = 36, kDayOfMonthSize = 32;

/// Builds the form's rows from what it has been set to.
class SectionBuilder {
 public:
  SectionBuilder(const AddMedicineState& state, const Calendar& calendar, const Texts& texts, bool use24HourTime)
      : state_(state), calendar_(calendar), texts_(texts), use24HourTime_(use24HourTime) {}

  FormSection basicInformation() const {
    return {"basicInformation",
            texts_.text("Basic Information"),
            std::nullopt,
            {TextFieldRow{"name", texts_.text("Medicine Name"), state_.name},
             TextFieldRow{"dosage", texts_.text("Dosage Amount"), state_.dosage},
             unitPicker("selectedUnit", state_.selectedUnit, texts_),
             TextFieldRow{"instructions", texts_.text("Instructions (optional)"), state_.instructions}}};
  }

  FormSection appearance() const {
    return {"appearance",
            texts_.text("Appearance"),
            std::nullopt,
            {colorGrid("selectedColor", state_.selectedColor, texts_),
             iconGrid("selectedIcon", state_.selectedIcon, state_.selectedColor, texts_)}};
  }

  FormSection schedule() const {
    FormSection section{"schedule", texts_.text("Schedule"), std::nullopt, {frequencyPicker()}};
    std::vector<FormRow>& rows = section.rows;
    switch (state_.intervalType) {
      case ReminderIntervalType::hourly:
        rows.emplace_back(stepperRow("hourlyInterval",
                                     texts_.counted(state_.hourlyInterval, "Every {n} hour", "Every {n} hours"),
                                     state_.hourlyInterval, kHourlyInterval));
        break;
      case ReminderIntervalType::daily:
        addDailyTimes(rows);
        break;
      case ReminderIntervalType::weekly:
        rows.emplace_back(weekdayGrid());
        rows.emplace_back(timeRow("weeklyTime", texts_.text("Time"), state_.weeklyTime));
        break;
      case ReminderIntervalType::monthly:
        rows.emplace_back(dayOfMonthGrid());
        rows.emplace_back(timeRow("monthlyTime", texts_.text("Time"), state_.monthlyTime));
        break;
      case ReminderIntervalType::custom:
        rows.emplace_back(
            numberStepper("customIntervalHours", ownText("Hours: {n}"), state_.customIntervalHours, kCustomHours));
        rows.emplace_back(numberStepper("customIntervalMinutes", ownText("Minutes: {n}"), state_.customIntervalMinutes,
                                        kCustomMinutes));
        break;
    }
    return section;
  }

  FormSection duration() const {
    FormSection section{"duration",
                        texts_.text("Duration"),
                        std::nullopt,
                        {dateRow("startDate", texts_.text("Start Date"), state_.startDate),
                         ToggleRow{"hasEndDate", texts_.text("Set End Date"), state_.hasEndDate}}};
    if (state_.hasEndDate) section.rows.emplace_back(dateRow("endDate", texts_.text("End Date"), state_.endDate));
    section.rows.emplace_back(ToggleRow{"isRepeating", texts_.text("Repeating"), state_.isRepeating});
    return section;
  }

  FormSection snoozeOptions() const {
    FormSection section{"snoozeOptions",
                        texts_.text("Snooze Options"),
                        std::nullopt,
                        {ToggleRow{"allowSnooze", texts_.text("Allow Snooze"), state_.allowSnooze}}};
    if (!state_.allowSnooze) return section;
    section.rows.emplace_back(
        numberStepper("snoozeDuration", ownText("Snooze Duration: {n} min"), state_.snoozeDuration, kSnoozeMinutes));
    section.rows.emplace_back(
        numberStepper("maxSnoozeCount", ownText("Max Snooze Count: {n}"), state_.maxSnoozeCount, kMaxSnoozeCount));
    return section;
  }

  FormSection activity() const {
    return {"activity",
            std::nullopt,
            texts_.text("Inactive medicines won't trigger reminders."),
            {ToggleRow{"isActive", texts_.text("Active"), state_.isActive}}};
  }

 private:
  PickerRow frequencyPicker() const {
    std::vector<PickerOption> options;
    for (const ReminderIntervalType type : kAllReminderIntervalTypes) {
      options.push_back({std::string(rawValue(type)), intervalTypeText(type, texts_), intervalSymbol(type)});
    }
    return pickerRow("intervalType", texts_.text("Frequency"), std::string(rawValue(state_.intervalType)),
                     std::move(options));
  }

  StepperRow numberStepper(std::string id, std::string_view label, int64_t value, const Stepper& stepper) const {
    return stepperRow(std::move(id), texts_.text(label, {{"n", std::to_string(value)}}), value, stepper);
  }

  void addDailyTimes(std::vector<FormRow>& rows) const {
    const std::vector<DailyTime>& times = state_.dailyTimes;
    for (size_t i = 0; i < times.size(); ++i) {
      TimeRow row = timeRow("dailyTimes-" + std::to_string(times[i].id),
                            texts_.text("Time {n}", {{"n", std::to_string(i + 1)}}), times[i].time);
      if (times.size() > 1) row.remove = ActionItem{"removeTime", texts_.text("Remove Time"), "minus.circle.fill"};
      rows.emplace_back(std::move(row));
    }
    rows.emplace_back(ButtonRow{"addTime", texts_.text("Add Time"), "plus.circle.fill"});
  }

  GridRow weekdayGrid() const {
    GridRow grid{"weeklyDays", texts_.text("Days"), "days", kDayColumns, kDaySpacing, kWeekdaySize};
    for (int64_t day = kWeekdays.least; day <= kWeekdays.most; ++day) {
      grid.cells.push_back(dayCell(day, texts_.shortWeekdaySymbol(static_cast<int>(day)), state_.weeklyDays));
    }
    return grid;
  }

  GridRow dayOfMonthGrid() const {
    GridRow grid{"monthlyDays", texts_.text("Days of Month"), "days", kDayColumns, kDaySpacing, kDayOfMonthSize};
    for (int64_t day = kDaysOfMonth.least; day <= kDaysOfMonth.most; ++day) {
      grid.cells.push_back(dayCell(day, std::to_string(day), state_.monthlyDays));
    }
    return grid;
  }

  static GridCell dayCell(int64_t day, std::string title, const std::set<int64_t>& selected) {
    return {std::to_string(day), std::move(title), std::nullopt, std::nullopt, selected.contains(day)};
  }

  TimeRow timeRow(std::string id, std::string label, Instant time) const {
    const DateComponents components = calendar_.components(time);
    return {std::move(id), std::move(label), components.hour, components.minute,
            texts_.shortTime(time, use24HourTime_)};
  }

  DateRow dateRow(std::string id, std::string label, Instant date) const {
    return {std::move(id), std::move(label), date, texts_.mediumDate(date)};
  }

  const AddMedicineState& state_;
  const Calendar& calendar_;
  const Texts& texts_;
  bool use24HourTime_;
};

}  // namespace

std::vector<FormSection> addMedicineSections(const AddMedicineState& state, const Calendar& calendar,
                                             const Texts& texts, bool use24HourTime) {
  const SectionBuilder builder(state, calendar, texts, use24HourTime);
  return {builder.basicInformation(), builder.appearance(),    builder.schedule(),
          builder.duration(),         builder.snoozeOptions(), builder.activity()};
}

}  // namespace pillora

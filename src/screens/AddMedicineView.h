// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "screens/FormContent.h"
#include "screens/MonthSheet.h"
#include "screens/Screen.h"
#include "support/Fields.h"
#include "support/Instant.h"

namespace pillora {

struct AddMedicineContent {
  std::string title;
  std::vector<ToolbarButton> toolbar;  ///< "cancel", "save"
  std::vector<FormSection> sections;
  std::optional<MonthContent> monthSheet;
  std::optional<TimeContent> timeSheet;
  bool isDismissed = false;  ///< the form has closed itself

  static constexpr auto fields() {
    using Form = AddMedicineContent;
    return std::tuple(field("title", &Form::title), field("toolbar", &Form::toolbar),
                      field("sections", &Form::sections), field("monthSheet", &Form::monthSheet),
                      field("timeSheet", &Form::timeSheet), field("isDismissed", &Form::isDismissed));
  }
};

/// A time of day as it was picked; the day of `time` means nothing. `id` tells equal times apart.
struct DailyTime {
  int64_t id;
  Instant time;
};

/// What the controls of the form have been set to; the rows that edit these are named after them. Fields of the kinds
/// of schedule that are not chosen keep their values.
struct AddMedicineState {
  std::string name;
  std::string dosage = "1";
  std::string selectedUnit = "pill";
  std::string instructions;
  std::string selectedColor = "blue";
  std::string selectedIcon = "pills";
  ReminderIntervalType intervalType = ReminderIntervalType::daily;
  int64_t hourlyInterval = 4;
  std::vector<DailyTime> dailyTimes;  ///< never empty
  std::set<int64_t> weeklyDays = {2, 3, 4, 5, 6};
  Instant weeklyTime;
  std::set<int64_t> monthlyDays = {1};
  Instant monthlyTime;
  int64_t customIntervalHours = 8;
  int64_t customIntervalMinutes = 0;
  bool isActive = true;
  bool allowSnooze = true;
  int64_t snoozeDuration = 10;  ///< minutes; the form's own, not that of the settings
  int64_t maxSnoozeCount = 3;   ///< likewise
  bool isRepeating = true;
  Instant startDate;
  bool hasEndDate = false;
  Instant endDate;

  static constexpr auto fields() {
    using State = AddMedicineState;
    return std::tuple(field("name", &State::name), field("dosage", &State::dosage),
                      field("selectedUnit", &State::selectedUnit), field("instructions", &State::instructions),
                      field("selectedColor", &State::selectedColor), field("selectedIcon", &State::selectedIcon),
                      field("intervalType", &State::intervalType), field("hourlyInterval", &State::hourlyInterval),
                      field("dailyTimes", &State::dailyTimes), field("weeklyDays", &State::weeklyDays),
                      field("weeklyTime", &State::weeklyTime), field("monthlyDays", &State::monthlyDays),
                      field("monthlyTime", &State::monthlyTime),
                      field("customIntervalHours", &State::customIntervalHours),
                      field("customIntervalMinutes", &State::customIntervalMinutes),
                      field("isActive", &State::isActive), field("allowSnooze", &State::allowSnooze),
                      field("snoozeDuration", &State::snoozeDuration), field("maxSnoozeCount", &State::maxSnoozeCount),
                      field("isRepeating", &State::isRepeating), field("startDate", &State::startDate),
                      field("hasEndDate", &State::hasEndDate), field("endDate", &State::endDate));
  }
};

/// The form's six sections.
std::vector<FormSection> addMedicineSections(const AddMedicineState& state, const Calendar& calendar,
                                             const Texts& texts, bool use24HourTime);

/// The form that makes a new medicine. What it begins with is taken when it opens, which is when this is made.
class AddMedicineView {
 public:
  explicit AddMedicineView(ScreenEnvironment environment);

  AddMedicineContent content() const;
  const AddMedicineState& state() const { return state_; }

  // What a person does with the controls. Each takes the id of a row and answers whether that row is on show and offers
  // this: otherwise nothing changes.

  bool setText(std::string_view row, std::string text);
  bool setOn(std::string_view row, bool isOn);
  bool increment(std::string_view row);
  bool decrement(std::string_view row);
  /// Selects an option of a picker, a swatch or an icon; adds a day of a grid of days or takes it away.
  bool choose(std::string_view row, std::string_view option);
  bool setDate(std::string_view row, Instant date);
  bool setTime(std::string_view row, int64_t hour, int64_t minute);
  bool addTime();
  bool removeTime(std::string_view row);

  // The sheets of the date and time rows, at most one at a time.

  bool openSheet(std::string_view row);
  void closeSheet();
  void showPreviousMonth();
  void showNextMonth();
  bool pickDay(std::string_view cell);

  /// The name is more than blanks and tabs.
  bool isValid() const;
  /// Makes the medicine, plans its reminders if it is active, and closes. Answers its identity; nothing, and nothing
  /// happens, while the form is not valid or when it is closed already. Saving the record is left to the context.
  std::optional<UUID> save();
  void cancel() { isDismissed_ = true; }
  bool isDismissed() const { return isDismissed_; }

 private:
  std::vector<FormSection> sections() const;
  bool step(std::string_view row, std::optional<int64_t> (Stepper::*next)(int64_t) const);
  /// The time that a time row shows.
  Instant* timeOf(std::string_view row);
  ReminderInterval interval() const;
  NewMedicine newMedicine() const;

  ScreenEnvironment environment_;
  LiveQuery<AppSettings> settings_;
  AddMedicineState state_;
  int64_t nextTimeId_ = 1;
  std::optional<MonthSheet> monthSheet_;
  std::optional<std::string> timeSheetRow_;
  bool isDismissed_ = false;
};

}  // namespace pillora

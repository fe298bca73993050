// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/ReminderInterval.h"
#include "platform/Texts.h"
#include "screens/FormContent.h"

namespace pillora {

// What the form of a medicine offers and accepts, in the order in which it is offered.

inline constexpr std::array<std::string_view, 10> kColorNames = {"blue", "green",  "red",  "orange", "purple",
                                                                 "pink", "yellow", "teal", "indigo", "mint"};

inline constexpr std::array<std::string_view, 25> kIconNames = {"pills",
                                                                "pill.circle",
                                                                "cross.case",
                                                                "heart",
                                                                "drop",
                                                                "leaf",
                                                                "bolt",
                                                                "moon",
                                                                "sun.max",
                                                                "sparkles",
                                                                "syringe",
                                                                "syringe.fill",
                                                                "bandage",
                                                                "cross.vial",
                                                                "ivfluid.bag",
                                                                "stethoscope",
                                                                "medical.thermometer",
                                                                "waveform.path.ecg",
                                                                "brain.head.profile",
                                                                "lungs",
                                                                "allergens",
                                                                "eye",
                                                                "ear",
                                                                "nose",
                                                                "facemask"};

inline constexpr Stepper kHourlyInterval{1, 24, 1};
inline constexpr Stepper kCustomHours{0, 168, 1};
inline constexpr Stepper kCustomMinutes{0, 59, 5};  ///< a step that would pass 59 is not taken: 55 is the last
inline constexpr Stepper kSnoozeMinutes{1, 60, 1};
inline constexpr Stepper kMaxSnoozeCount{1, 10, 1};
inline constexpr Stepper kWeekdays{1, 7, 1};
inline constexpr Stepper kDaysOfMonth{1, 31, 1};

template <size_t N>
constexpr bool isOffered(const std::array<std::string_view, N>& choices, std::string_view choice) {
  return std::find(choices.begin(), choices.end(), choice) != choices.end();
}

/// The name without blanks and tabs at its ends, of whichever width; line breaks stay. A medicine needs a name that is
/// not empty then.
std::string trimmedName(std::string_view name);

/// The 09:00 that the form opens with, as an instant; `now` should the calendar know no 09:00.
Instant initialTime(Instant now, const Calendar& calendar);

/// The schedule that the form opens with: daily at the initial time, and what the other kinds begin with.
ReminderInterval initialInterval(Instant now, const Calendar& calendar);

/// The minutes of a custom interval. A sum beyond 64 bits ends the program: no control and no option gives such parts.
int64_t customIntervalMinutes(int64_t hours, int64_t minutes);

// The controls that the form and the details share. `id` is the field that the control edits.

/// "clock" for hourly and so on.
std::string intervalSymbol(ReminderIntervalType type);
/// "Hourly"
std::string intervalTypeText(ReminderIntervalType type, const Texts& texts);
PickerRow unitPicker(std::string id, std::string unit, const Texts& texts);
/// The ten colours; none is selected when `color` is not among them.
GridRow colorGrid(std::string id, std::string_view color, const Texts& texts);
/// The icons; the selected one in `color`, the others grey.
GridRow iconGrid(std::string id, std::string_view icon, std::string_view color, const Texts& texts);

}  // namespace pillora

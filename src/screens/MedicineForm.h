// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/ReminderInterval.h"
#include "screens/FormContent.h"

namespace pillora {

// What the form of a medicine offers and accepts, in the order in which it is offered.

inline constexpr std::array<std::string_view, 17> kUnitWords = {
    "pill", "pills", "tablet", "tablets", "capsule", "capsules",  "ml",   "mg",  "g",
    "oz",   "drops", "spray",  "puff",    "patch",   "injection", "unit", "dose"};

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

/// The schedule that the form opens with: daily at 09:00, and what the other kinds begin with. Should the calendar
/// know no 09:00, the times are that of `now`.
ReminderInterval initialInterval(Instant now, const Calendar& calendar);

}  // namespace pillora

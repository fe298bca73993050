// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/ReminderInterval.h"
#include "platform/Texts.h"
#include "screens/FormContent.h"
#include "support/Result.h"

namespace pillora {

// Reading of typed words by their shape alone: "nothing" is a word of another shape. Whether a value is allowed is the
// caller's question.

/// Decimal digits, perhaps after a minus. A number beyond 64 bits reads as the largest or smallest one.
std::optional<int64_t> wholeNumber(std::string_view word);
std::optional<bool> yesOrNo(std::string_view word);
/// "8:30", "08:30", "25:61"
std::optional<TimeOfDay> timeOfDay(std::string_view word);
/// "08:00,20:00"
std::optional<std::vector<TimeOfDay>> timesOfDay(std::string_view words);

/// "2,4,6@09:00"; with no days "@09:00"
struct DaysAndTime {
  std::set<int64_t> days;
  TimeOfDay time;
};
std::optional<DaysAndTime> daysAndTime(std::string_view words);

// Why a word was refused, in the words of the call's language. `what` is the option or the setting that it was for.

std::string notOffered(const std::string& what, const std::string& word, const std::string& offered,
                       const Texts& texts);
std::string notYesOrNo(const std::string& what, const std::string& word, const Texts& texts);
std::string notWhole(const std::string& what, const std::string& word, const Texts& texts);
std::string outOfRange(const std::string& what, const std::string& word, const Stepper& range, const Texts& texts);

/// An interval as stored. The error tells what is wrong with the JSON.
Result<ReminderInterval> readInterval(std::string_view json);

}  // namespace pillora

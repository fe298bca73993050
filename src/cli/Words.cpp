// SPDX-License-Identifier: MIT
#include "cli/Words.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace pillora {

namespace {

bool isDigits(std::string_view word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// The parts between the separators; one empty part for an empty text.
std::vector<std::string_view> parts(std::string_view text, char separator) {
  std::vector<std::string_view> found;
  for (size_t at = 0; at <= text.size();) {
    const size_t end = std::min(text.find(separator, at), text.size());
    found.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return found;
}

/// The value of each word in `words`, or nothing when one of them has none.
template <typename Read>
auto all(const std::vector<std::string_view>& words, Read read) {
  std::optional<std::vector<typename decltype(read(words[0]))::value_type>> values(std::in_place);
  for (const std::string_view word : words) {
    const auto value = read(word);
    if (!value) return decltype(values)();
    values->push_back(*value);
  }
  return values;
}

}  // namespace

std::optional<int64_t> wholeNumber(std::string_view word) {
  const bool isNegative = word.starts_with('-');
  if (!isDigits(word.substr(isNegative ? 1 : 0))) return std::nullopt;
  int64_t number = 0;
  if (std::from_chars(word.data(), word.data() + word.size(), number).ec == std::errc()) return number;
  return isNegative ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
}

std::optional<bool> yesOrNo(std::string_view word) {
  if (word == "yes") return true;
  if (word == "no") return false;
  return std::nullopt;
}

std::optional<TimeOfDay> timeOfDay(std::string_view word) {
  const auto fields = parts(word, ':');
  if (fields.size() != 2 || fields[0].size() > 2 || fields[1].size() != 2) return std::nullopt;
  if (!isDigits(fields[0]) || !isDigits(fields[1])) return std::nullopt;
  return TimeOfDay{wholeNumber(fields[0]), wholeNumber(fields[1])};
}

std::optional<std::vector<TimeOfDay>> timesOfDay(std::string_view words) { return all(parts(words, ','), timeOfDay); }

std::optional<DaysAndTime> daysAndTime(std::string_view words) {
  const auto halves = parts(words, '@');
  if (halves.size() != 2) return std::nullopt;
  const auto time = timeOfDay(halves[1]);
  const auto days =
      halves[0].empty() ? std::optional<std::vector<int64_t>>(std::in_place) : all(parts(halves[0], ','), wholeNumber);
  if (!time || !days) return std::nullopt;
  return DaysAndTime{{days->begin(), days->end()}, *time};
}

std::string notOffered(const std::string& what, const std::string& word, const std::string& offered,
                       const Texts& texts) {
  return texts.text("{what} does not offer '{word}', only {offered}",
                    {{"what", what}, {"word", word}, {"offered", offered}});
}

std::string notYesOrNo(const std::string& what, const std::string& word, const Texts& texts) {
  return texts.text("{what} takes yes or no, not '{word}'", {{"what", what}, {"word", word}});
}

std::string notWhole(const std::string& what, const std::string& word, const Texts& texts) {
  return texts.text("{what} takes a whole number, not '{word}'", {{"what", what}, {"word", word}});
}

std::string outOfRange(const std::string& what, const std::string& word, const Stepper& range, const Texts& texts) {
  const std::string least = std::to_string(range.least), most = std::to_string(range.most);
  if (range.step == 1) {
    return texts.text("{what} goes from {least} to {most}, '{word}' is not among them",
                      {{"what", what}, {"least", least}, {"most", most}, {"word", word}});
  }
  return texts.text(
      "{what} goes from {least} to {most} in steps of {step}, '{word}' is not among them",
      {{"what", what}, {"least", least}, {"most", most}, {"step", std::to_string(range.step)}, {"word", word}});
}

Result<ReminderInterval> readInterval(std::string_view json) {
  auto interval = decodeInterval(json);
  if (!interval) return Error{"--interval: " + interval.error().description};
  return interval;
}

}  // namespace pillora

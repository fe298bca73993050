// SPDX-License-Identifier: MIT
#include "cli/MedicineFields.h"

#include <string>

#include "cli/Words.h"
#include "screens/MedicineForm.h"

namespace pillora {

namespace {

using Word = CommandLine::Word;

/// Reads option after option and keeps the first word of a wrong shape and the first value that is refused.
class FieldReader {
 public:
  FieldReader(const CommandLine& line, const Session& session)
      : line_(line), session_(session), texts_(session.texts()) {}

  Result<MedicineFields> readAdd() {
    fields_.values.interval = initialInterval(session_.now(), session_.calendar());
    fields_.values.startDate = session_.now();
    fields_.values.name = trimmedName(*line_.name);
    if (fields_.values.name.empty()) refuse(texts_.text("a medicine needs a name"));
    readCommon();
    readInstant("--end", line_.end, [&](Instant end) { fields_.values.endDate = end; });
    readSchedule();
    return answer();
  }

  /// Deliberate: the details take every name as it is typed, also an empty one.
  Result<MedicineFields> readEdit() {
    fields_.values.name = line_.name.value_or("");
    readCommon();
    return answer();
  }

 private:
  void malform(const std::string& why) {
    if (!malformed_) malformed_ = Error{why};
  }
  void refuse(const std::string& why) {
    if (!fields_.refused) fields_.refused = Error{why};
  }

  Result<MedicineFields> answer() {
    if (malformed_) return *malformed_;
    return std::move(fields_);
  }

  void readCommon() {
    NewMedicine& values = fields_.values;
    values.dosage = line_.dosage.value_or(values.dosage);
    values.instructions = line_.instructions.value_or("");
    readChoice("--unit", line_.unit, kUnitWords, values.unit);
    readChoice("--color", line_.color, kColorNames, values.color);
    readChoice("--icon", line_.icon, kIconNames, values.icon);
    readFlag("--active", line_.active, values.isActive);
    readFlag("--allow-snooze", line_.allowSnooze, values.allowSnooze);
    readFlag("--repeating", line_.repeating, values.isRepeating);
    readNumber("--snooze-minutes", line_.snoozeMinutes, kSnoozeMinutes, values.snoozeDurationMinutes);
    readNumber("--max-snooze", line_.maxSnooze, kMaxSnoozeCount, values.maxSnoozeCount);
    readInstant("--start", line_.start, [&](Instant start) { values.startDate = start; });
  }

  template <size_t N>
  void readChoice(const std::string& option, const Word& word, const std::array<std::string_view, N>& choices,
                  std::string& into) {
    if (!word) return;
    if (!isOffered(choices, *word)) refuse(notOffered(option, *word, listed(choices), texts_));
    into = *word;
  }

  template <size_t N>
  static std::string listed(const std::array<std::string_view, N>& choices) {
    std::string list;
    for (const std::string_view choice : choices) list.append(list.empty() ? "" : ", ").append(choice);
    return list;
  }

  void readFlag(const std::string& option, const Word& word, bool& into) {
    if (!word) return;
    const auto flag = yesOrNo(*word);
    if (!flag) return malform(notYesOrNo(option, *word, texts_));
    into = *flag;
  }

  void readNumber(const std::string& option, const Word& word, const Stepper& stepper, int64_t& into) {
    if (!word) return;
    const auto number = wholeNumber(*word);
    if (!number) return malform(notWhole(option, *word, texts_));
    check(option, *number, stepper);
    into = *number;
  }

  void check(const std::string& what, int64_t number, const Stepper& stepper) {
    if (!stepper.reaches(number)) refuse(outOfRange(what, std::to_string(number), stepper, texts_));
  }

  template <typename Take>
  void readInstant(const std::string& option, const Word& word, Take take) {
    if (!word) return;
    const auto instant = session_.instant(*word);
    if (!instant) return malform(option + ": " + instant.error().description);
    take(*instant);
  }

  /// The command line holds at most one of these.
  void readSchedule() {
    ReminderInterval& interval = fields_.values.interval;
    if (line_.everyHours) {
      interval.type = ReminderIntervalType::hourly;
      readNumber("--every-hours", line_.everyHours, kHourlyInterval, interval.hourlyInterval);
    }
    if (line_.daily) readDaily(interval);
    if (line_.weekly) {
      interval.type = ReminderIntervalType::weekly;
      readDays("--weekly", *line_.weekly, kWeekdays, interval.weeklyDays, interval.weeklyTime);
    }
    if (line_.monthly) {
      interval.type = ReminderIntervalType::monthly;
      readDays("--monthly", *line_.monthly, kDaysOfMonth, interval.monthlyDays, interval.monthlyTime);
    }
    if (line_.custom) readCustom(interval);
    if (line_.interval) {
      const auto stored = readInterval(*line_.interval);
      if (!stored) return malform(stored.error().description);
      interval = *stored;
    }
  }

  void readDaily(ReminderInterval& interval) {
    const auto times = timesOfDay(*line_.daily);
    if (!times) {
      return malform(texts_.text("--daily takes times such as 08:00,20:00, not '{word}'", {{"word", *line_.daily}}));
    }
    for (const TimeOfDay& time : *times) checkTime("--daily", time);
    interval.type = ReminderIntervalType::daily;
    interval.dailyTimes = *times;
  }

  void readDays(const std::string& option, const std::string& word, const Stepper& range, std::set<int64_t>& days,
                TimeOfDay& time) {
    const auto read = daysAndTime(word);
    if (!read) {
      return malform(texts_.text("{option} takes days and a time such as 1,5@09:00, not '{word}'",
                                 {{"option", option}, {"word", word}}));
    }
    for (const int64_t day : read->days) check(texts_.text("a day of {option}", {{"option", option}}), day, range);
    checkTime(option, read->time);
    days = read->days;
    time = read->time;
  }

  void readCustom(ReminderInterval& interval) {
    const size_t colon = line_.custom->find(':');
    const auto hours = wholeNumber(line_.custom->substr(0, colon));
    const auto minutes = colon == std::string::npos ? std::nullopt : wholeNumber(line_.custom->substr(colon + 1));
    if (!hours || !minutes) {
      return malform(
          texts_.text("--custom takes hours and minutes such as 8:30, not '{word}'", {{"word", *line_.custom}}));
    }
    check(hourOf("--custom"), *hours, kCustomHours);
    check(minuteOf("--custom"), *minutes, kCustomMinutes);
    if (fields_.refused) return;  // only what the form offers is small enough to be multiplied
    interval.type = ReminderIntervalType::custom;
    interval.customIntervalMinutes = customIntervalMinutes(*hours, *minutes);
  }

  void checkTime(const std::string& option, const TimeOfDay& time) {
    check(hourOf(option), *time.hour, {0, 23, 1});
    check(minuteOf(option), *time.minute, {0, 59, 1});
  }

  std::string hourOf(const std::string& option) const {
    return texts_.text("the hour of {option}", {{"option", option}});
  }
  std::string minuteOf(const std::string& option) const {
    return texts_.text("the minute of {option}", {{"option", option}});
  }

  const CommandLine& line_;
  const Session& session_;
  const Texts& texts_;
  MedicineFields fields_;
  std::optional<Error> malformed_;
};

}  // namespace

Result<MedicineFields> readAddFields(const CommandLine& line, const Session& session) {
  return FieldReader(line, session).readAdd();
}

Result<MedicineFields> readEditFields(const CommandLine& line, const Session& session) {
  return FieldReader(line, session).readEdit();
}

void writeFields(const MedicineFields& fields, const CommandLine& line, Medicine& medicine) {
  const NewMedicine& values = fields.values;
  if (line.name) medicine.name = values.name;
  if (line.dosage) medicine.dosage = values.dosage;
  if (line.unit) medicine.unit = values.unit;
  if (line.instructions) medicine.instructions = values.instructions;
  if (line.color) medicine.color = values.color;
  if (line.icon) medicine.icon = values.icon;
  if (line.active) medicine.isActive = values.isActive;
  if (line.allowSnooze) medicine.allowSnooze = values.allowSnooze;
  if (line.snoozeMinutes) medicine.snoozeDurationMinutes = values.snoozeDurationMinutes;
  if (line.maxSnooze) medicine.maxSnoozeCount = values.maxSnoozeCount;
  if (line.repeating) medicine.isRepeating = values.isRepeating;
  if (line.start) medicine.startDate = values.startDate;
}

}  // namespace pillora

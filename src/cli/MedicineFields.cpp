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
  FieldReader(const CommandLine& line, const Session& session) : line_(line), session_(session) {}

  Result<MedicineFields> readAdd() {
    fields_.values.interval = initialInterval(session_.now(), session_.calendar());
    fields_.values.startDate = session_.now();
    fields_.values.name = trimmedName(*line_.name);
    if (fields_.values.name.empty()) refuse("a medicine needs a name");
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
    if (!isOffered(choices, *word)) refuse(option + " does not offer '" + *word + "', only " + listed(choices));
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
    if (!flag) return malform(option + " takes yes or no, not '" + *word + "'");
    into = *flag;
  }

  void readNumber(const std::string& option, const Word& word, const Stepper& stepper, int64_t& into) {
    if (!word) return;
    const auto number = wholeNumber(*word);
    if (!number) return malform(option + " takes a whole number, not '" + *word + "'");
    check(option, *number, stepper);
    into = *number;
  }

  void check(const std::string& what, int64_t number, const Stepper& stepper) {
    if (stepper.reaches(number)) return;
    refuse(what + " goes from " + std::to_string(stepper.least) + " to " + std::to_string(stepper.most) +
           (stepper.step == 1 ? "" : " in steps of " + std::to_string(stepper.step)) + ", " + std::to_string(number) +
           " is not among them");
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
    if (!times) return malform("--daily takes times such as 08:00,20:00, not '" + *line_.daily + "'");
    for (const TimeOfDay& time : *times) checkTime("--daily", time);
    interval.type = ReminderIntervalType::daily;
    interval.dailyTimes = *times;
  }

  void readDays(const std::string& option, const std::string& word, const Stepper& range, std::set<int64_t>& days,
                TimeOfDay& time) {
    const auto read = daysAndTime(word);
    if (!read) return malform(option + " takes days and a time such as 1,5@09:00, not '" + word + "'");
    for (const int64_t day : read->days) check(option + ": a day", day, range);
    checkTime(option, read->time);
    days = read->days;
    time = read->time;
  }

  void readCustom(ReminderInterval& interval) {
    const size_t colon = line_.custom->find(':');
    const auto hours = wholeNumber(line_.custom->substr(0, colon));
    const auto minutes = colon == std::string::npos ? std::nullopt : wholeNumber(line_.custom->substr(colon + 1));
    if (!hours || !minutes)
      return malform("--custom takes hours and minutes such as 8:30, not '" + *line_.custom + "'");
    check("--custom: the hour", *hours, kCustomHours);
    check("--custom: the minute", *minutes, kCustomMinutes);
    if (fields_.refused) return;  // only what the form offers is small enough to be multiplied
    interval.type = ReminderIntervalType::custom;
    interval.customIntervalMinutes = customIntervalMinutes(*hours, *minutes);
  }

  void checkTime(const std::string& option, const TimeOfDay& time) {
    check(option + ": the hour", *time.hour, {0, 23, 1});
    check(option + ": the minute", *time.minute, {0, 59, 1});
  }

  const CommandLine& line_;
  const Session& session_;
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

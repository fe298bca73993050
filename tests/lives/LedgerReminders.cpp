// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <set>
#include <utility>

#include "lives/Ledger.h"

namespace pillora {

namespace {

using namespace std::chrono_literals;

auto orderOf(const BookedRequest& request) { return std::tuple(request.due, utcInstant(request.wall), request.serial); }

}  // namespace

std::string minuteText(const WallTime& wall) { return iso8601(utcInstant(wall)).substr(0, 16); }

std::string reminderName(const UUID& medicine, Instant due) {
  std::array<char, 64> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                 static_cast<double>(due.microseconds()) / 1e6, std::chars_format::fixed);
  std::string seconds(digits.data(), end.ptr);
  if (seconds.find('.') == std::string::npos) seconds += ".0";
  return medicine.text() + "-" + seconds;
}

Instant Ledger::instantOf(const WallTime& wall) const {
  DateComponents components;
  components.year = wall.year;
  components.month = wall.month;
  components.day = wall.day;
  components.hour = wall.hour;
  components.minute = wall.minute;
  return *gregorian_->date(components);
}

void Ledger::put(const BookedMedicine& medicine, std::string identifier, Instant time, Instant now, std::string title,
                 std::string body) {
  const DateComponents local = gregorian_->components(time);
  const WallTime wall{local.year,
                      static_cast<unsigned>(local.month),
                      static_cast<unsigned>(local.day),
                      static_cast<unsigned>(local.hour),
                      static_cast<unsigned>(local.minute),
                      {}};
  const Instant due = instantOf(wall);
  reminders.pending.insert_or_assign(std::move(identifier),
                                     BookedRequest{medicine.id.text(), wall, due, due > now, reminders.nextSerial++,
                                                   reminders.category, std::move(title), std::move(body)});
}

void Ledger::planOne(const BookedMedicine& medicine, Instant due, Instant now) {
  const NewMedicine& values = medicine.values;
  reminders.category = values.allowSnooze ? "MEDICINE_REMINDER" : "MEDICINE_REMINDER_NO_SNOOZE";
  reminders.snoozeTitle =
      values.allowSnooze ? "Snooze " + std::to_string(values.snoozeDurationMinutes) + " min" : std::string();
  const std::string dose = values.dosage + " " + values.unit;
  const std::string name = reminderName(medicine.id, due);
  put(medicine, name, due, now, "Time for your medicine", values.name + " - " + dose);
  const auto endOfDay = calendar_->adding(CalendarUnit::day, 1, calendar_->startOfDay(due));
  if (!endOfDay) return;
  int ordinal = 1;
  for (Instant time = due + 1h; time < *endOfDay; time = time + 1h) {
    put(medicine, name + "-followup-" + std::to_string(ordinal++), time, now, "Reminder: " + values.name,
        "You haven't taken " + dose + " yet");
  }
}

void Ledger::plan(const BookedMedicine& medicine, int64_t count, Instant now) {
  const NewMedicine& values = medicine.values;
  if (!values.isActive || !values.isRepeating) return;
  Instant after = now;
  for (int64_t i = 0; i < count; ++i) {
    const auto due = nextDose(medicine, after);
    if (!due || (values.endDate && *due > *values.endDate)) return;
    planOne(medicine, *due, now);
    after = *due;
  }
}

void Ledger::cancel(const UUID& medicine) {
  std::erase_if(reminders.pending,
                [prefix = medicine.text()](const auto& each) { return each.first.starts_with(prefix); });
}

void Ledger::replan(const BookedMedicine& medicine, Instant now) {
  cancel(medicine.id);
  plan(medicine, 30, now);
}

void Ledger::submitCheck(Instant now) {
  reminders.nextCheck = calendar_->adding(CalendarUnit::day, 1, calendar_->startOfDay(now)).value_or(now + 6h);
}

void Ledger::travel() {
  for (auto& [identifier, request] : reminders.pending) {
    if (request.isArmed) request.due = instantOf(request.wall);
  }
}

std::vector<std::string> Ledger::plannedInOrder() const {
  std::map<int64_t, std::string> bySerial;
  for (const auto& [identifier, request] : reminders.pending) bySerial.emplace(request.serial, identifier);
  std::vector<std::string> names;
  for (const auto& [serial, identifier] : bySerial) names.push_back(identifier);
  return names;
}

std::optional<Instant> Ledger::nextDeadline() const {
  std::optional<Instant> next = reminders.nextCheck;
  for (const auto& [identifier, request] : reminders.pending) {
    if (request.isArmed && (!next || request.due < *next)) next = request.due;
  }
  return next;
}

std::vector<std::string> Ledger::advance(Instant now) {
  std::vector<std::pair<std::string, BookedRequest>> due;
  for (const auto& each : reminders.pending) {
    if (each.second.isArmed && each.second.due <= now) due.push_back(each);
  }
  std::sort(due.begin(), due.end(), [](const auto& a, const auto& b) { return orderOf(a.second) < orderOf(b.second); });
  std::vector<std::string> shown;
  std::set<std::string> medicinesShown;
  for (auto each = due.rbegin(); each != due.rend(); ++each) {
    const auto& [identifier, request] = *each;
    // In its minute everything is shown; of what is overdue only the newest of each medicine.
    if (now < request.due + 1min || !medicinesShown.contains(request.medicine)) {
      shown.push_back(identifier);
      medicinesShown.insert(request.medicine);
    }
    reminders.pending.erase(identifier);
  }
  std::reverse(shown.begin(), shown.end());
  if (!shown.empty()) reminders.badge = 1;
  if (reminders.nextCheck && *reminders.nextCheck <= now) {
    submitCheck(now);
    mark(now);
  }
  return shown;
}

}  // namespace pillora

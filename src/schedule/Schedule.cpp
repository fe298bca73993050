// SPDX-License-Identifier: MIT
#include "schedule/Schedule.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace pillora {

namespace {

constexpr int64_t kDaysAhead = 7;

std::string identifier(std::string_view medicine, Instant time) {
  std::array<char, 64> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), time.secondsSince1970(), std::chars_format::fixed)
          .ptr;
  std::string out;
  out.reserve(medicine.size() + 20);
  out.append(medicine).append("-").append(digits.data(), end);
  if (std::find(digits.data(), end, '.') == end) out += ".0";
  return out;
}

/// An instant no later than which the minute that begins at `start` is over.
Instant minuteEnd(Instant start) {
  return checkedAdd(start, 1, std::chrono::minutes(1)).value_or(Instant::distantFuture());
}

/// The starts of the local minutes in which a dose of the medicine due from `first` to `last` was taken or skipped.
class DoneMinutes {
 public:
  DoneMinutes(const Medicine& medicine, Instant first, Instant last, const Calendar& calendar)
      : calendar_(calendar),
        starts_(medicine.actedOnTimes(calendar.startOfMinute(first), minuteEnd(calendar.startOfMinute(last)))) {
    for (Instant& start : starts_) start = calendar.startOfMinute(start);
    std::sort(starts_.begin(), starts_.end());
  }

  bool contains(Instant time) const {
    return !starts_.empty() && std::binary_search(starts_.begin(), starts_.end(), calendar_.startOfMinute(time));
  }

 private:
  const Calendar& calendar_;
  std::vector<Instant> starts_;
};

void appendUpcoming(std::vector<UpcomingDose>& doses, const std::shared_ptr<Medicine>& medicine, Instant cursor,
                    Instant horizon, const Calendar& calendar) {
  const ReminderInterval& interval = medicine->interval();
  const DoneMinutes done(*medicine, cursor, horizon, calendar);
  const std::string medicineText = medicine->id().text();
  while (const auto time = interval.nextOccurrence(cursor, calendar)) {
    if (*time <= cursor || *time > horizon) break;
    if (!done.contains(*time)) doses.push_back({identifier(medicineText, *time), medicine, *time});
    cursor = *time;
  }
}

}  // namespace

std::string doseIdentifier(const UUID& medicine, Instant time) { return identifier(medicine.text(), time); }

bool isDoseDone(const Medicine& medicine, Instant time, const Calendar& calendar) {
  return DoneMinutes(medicine, time, time, calendar).contains(time);
}

std::vector<TodayEntry> dosesDueToday(const Medicines& activeMedicines, Instant now, const Calendar& calendar) {
  const Instant today = calendar.startOfDay(now);
  // A minute early, so that the strictly later search finds a dose at the day's first moment.
  const Instant start = calendar.adding(CalendarUnit::minute, -1, today).value_or(today);
  std::vector<TodayEntry> entries;
  for (const auto& medicine : activeMedicines) {
    const auto time = medicine->interval().nextOccurrence(start, calendar);
    if (time && calendar.startOfDay(*time) == today) entries.emplace_back(medicine, *time);
  }
  return entries;
}

std::vector<TodayEntry> todaysPendingReminders(const Medicines& activeMedicines, Instant now,
                                               const Calendar& calendar) {
  auto entries = dosesDueToday(activeMedicines, now, calendar);
  std::erase_if(entries, [&](const auto& entry) { return isDoseDone(*entry.first, entry.second, calendar); });
  std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return entries;
}

std::vector<UpcomingDose> upcomingDoses(const Medicines& activeMedicines, Instant now, const Calendar& calendar) {
  std::vector<UpcomingDose> doses;
  const auto horizon = calendar.adding(CalendarUnit::day, kDaysAhead, now);
  if (!horizon) return doses;
  // A minute early, so that the strictly later search finds a dose due at this very moment.
  const Instant start = calendar.adding(CalendarUnit::minute, -1, now).value_or(now);
  for (const auto& medicine : activeMedicines) appendUpcoming(doses, medicine, start, *horizon, calendar);
  std::stable_sort(doses.begin(), doses.end(), [](const auto& a, const auto& b) { return a.time < b.time; });
  return doses;
}

}  // namespace pillora

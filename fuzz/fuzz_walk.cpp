// SPDX-License-Identifier: MIT
// Walks of any interval from any instant in many calendars and zones: they end, they only go forward, and the lists
// built on them are sorted and within their bounds.
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "Target.h"
#include "icu/Calendars.h"
#include "icu/IcuTexts.h"
#include "schedule/Schedule.h"

namespace {

using namespace pillora;
using std::chrono::minutes;

constexpr size_t kMostUpcoming = 10'500;  // one a minute for seven days, on days that a clock change makes longer

struct Place {
  std::unique_ptr<Calendar> calendar;
  std::unique_ptr<Texts> texts;
};

std::vector<Place> makePlaces() {
  constexpr std::array<std::array<const char*, 2>, 16> kNames = {{{"en_US", "UTC"},
                                                                  {"en_US", "America/New_York"},
                                                                  {"en_US", "Australia/Lord_Howe"},
                                                                  {"de_DE", "America/Havana"},
                                                                  {"pt_BR", "America/Sao_Paulo"},
                                                                  {"en_IN", "Asia/Kolkata"},
                                                                  {"en_US", "Pacific/Apia"},
                                                                  {"en_US", "Africa/Monrovia"},
                                                                  {"en_US", "America/Scoresbysund"},
                                                                  {"th_TH@calendar=buddhist", "Asia/Bangkok"},
                                                                  {"fa_IR@calendar=persian", "Asia/Tehran"},
                                                                  {"he_IL@calendar=hebrew", "Asia/Jerusalem"},
                                                                  {"zh_CN@calendar=chinese", "Asia/Shanghai"},
                                                                  {"ja_JP@calendar=japanese", "Asia/Tokyo"},
                                                                  {"am_ET@calendar=ethiopic", "Africa/Addis_Ababa"},
                                                                  {"ar_SA@calendar=islamic", "Asia/Riyadh"}}};
  std::vector<Place> places;
  for (const auto& [locale, zone] : kNames) {
    auto calendar = makeCalendar(locale, zone);
    auto texts = makeTexts(locale, zone, "en");
    require(calendar && texts, "the place is known");
    places.push_back({*std::move(calendar), *std::move(texts)});
  }
  return places;
}

/// Takes values off the front of the input; zeros once it is used up.
class Input {
 public:
  Input(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  uint8_t byte() { return at_ < size_ ? data_[at_++] : 0; }

  int64_t raw(int bytes) {
    uint64_t value = 0;
    for (int i = 0; i < bytes; ++i) value |= uint64_t{byte()} << (8 * i);
    const int unused = 64 - 8 * bytes;
    return static_cast<int64_t>(value << unused) >> unused;
  }

  /// Most often one byte for -60 to 139, the numbers that people and broken files hold.
  int64_t number() {
    const uint8_t kind = byte();
    if (kind < 200) return int64_t{kind} - 60;
    if (kind < 228) return raw(2);
    if (kind < 250) return raw(4);
    return raw(8);
  }

  TimeOfDay time() {
    const uint8_t absent = byte();
    TimeOfDay time;
    if (absent % 16 != 1) time.hour = number();
    if (absent % 16 != 2) time.minute = number();
    return time;
  }

  ReminderInterval interval() {
    ReminderInterval interval;
    interval.type = kAllReminderIntervalTypes[byte() % kAllReminderIntervalTypes.size()];
    interval.hourlyInterval = number();
    interval.customIntervalMinutes = number();
    for (int i = byte() % 8; i > 0; --i) interval.dailyTimes.push_back(time());
    for (int i = byte() % 8; i > 0; --i) interval.weeklyDays.insert(number());
    interval.weeklyTime = time();
    for (int i = byte() % 8; i > 0; --i) interval.monthlyDays.insert(number());
    interval.monthlyTime = time();
    return interval;
  }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t at_ = 0;
};

void checkUpcoming(const std::shared_ptr<Medicine>& medicine, Instant now, const Calendar& calendar) {
  const auto doses = upcomingDoses({medicine}, now, calendar);
  require(doses.size() <= kMostUpcoming, "a walk of seven days is bounded");
  const auto horizon = calendar.adding(CalendarUnit::day, 7, now);
  const auto start = checkedAdd(now, -1, minutes(1)).value_or(now);
  for (size_t i = 0; i < doses.size(); ++i) {
    require(doses[i].time > (i == 0 ? start : doses[i - 1].time), "a walk only goes forward");
    require(doses[i].time <= *horizon, "a walk ends at its horizon");
  }
  for (size_t i = 0; i < doses.size() && i < 10; ++i) {
    require(!isDoseDone(*medicine, doses[i].time, calendar), "what is listed is not done");
    require(doses[i].id == doseIdentifier(medicine->id(), doses[i].time), "a dose bears its identifier");
  }
}

void checkToday(const std::shared_ptr<Medicine>& medicine, Instant now, const Calendar& calendar) {
  const auto entries = todaysPendingReminders({medicine}, now, calendar);
  require(entries.size() <= 1, "a medicine is listed once a day");
  if (!entries.empty())
    require(calendar.startOfDay(entries[0].second) == calendar.startOfDay(now), "what is listed today is of today");
}

void checkSteps(const ReminderInterval& interval, Instant after, const Calendar& calendar) {
  for (int step = 0; step < 20; ++step) {
    const auto next = interval.nextOccurrence(after, calendar);
    require(next == interval.nextOccurrence(after, calendar), "the same question has the same answer");
    if (!next || *next <= after) return;
    after = *next;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::vector<Place> places = makePlaces();
  Input input(data, size);
  const Place& place = places[input.byte() % places.size()];
  const Instant now{Instant::Duration(input.raw(8))};
  NewMedicine values;
  values.interval = input.interval();
  const auto medicine = Medicine::make(values, now);
  for (int i = input.byte() % 8; i > 0; --i) {
    const DoseStatus status = kAllDoseStatuses[input.byte() % kAllDoseStatuses.size()];
    const auto time = checkedAdd(now, input.number(), minutes(1));
    if (time) DoseLog::make(*time, std::nullopt, status, 0, "", medicine);
  }
  require(medicine->interval() == values.interval, "an interval is stored as it is");
  checkSteps(values.interval, now, *place.calendar);
  checkToday(medicine, now, *place.calendar);
  checkUpcoming(medicine, now, *place.calendar);
  values.interval.displayText(*place.calendar, *place.texts);
  return 0;
}

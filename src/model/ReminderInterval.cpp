// SPDX-License-Identifier: MIT
#include "model/ReminderInterval.h"

#include <algorithm>

#include "support/Json.h"

namespace pillora {

namespace {

constexpr int64_t kMinutesPerHour = 60;

/// "Mon, Wed, Fri", in the manner of the language.
std::string joined(const std::vector<std::string>& parts, const Texts& texts) {
  std::string list;
  for (const std::string& part : parts) {
    list = &part == &parts.front() ? part : texts.text("{list}, {item}", {{"list", list}, {"item", part}});
  }
  return list;
}

std::string dailyText(const std::vector<TimeOfDay>& times, const Calendar& calendar, const Texts& texts) {
  std::vector<std::string> shown;
  for (const TimeOfDay& time : times) {
    if (!time.hour || !time.minute) continue;
    // Deliberate: the locale's own form whatever the 24-hour setting says, which belongs to the screens.
    if (const auto instant = calendar.dateOfTime(*time.hour, *time.minute)) {
      shown.push_back(texts.shortTime(*instant, false));
    }
  }
  return texts.text("Daily at {times}", {{"times", joined(shown, texts)}});
}

/// Deliberate: weekdays alone, with no prefix and no time; numbers that are no weekday are left out.
std::string weeklyText(const std::set<int64_t>& days, const Texts& texts) {
  std::vector<std::string> shown;
  for (const int64_t day : days) {
    if (day >= 1 && day <= 7) shown.push_back(texts.shortWeekdaySymbol(static_cast<int>(day)));
  }
  return joined(shown, texts);
}

/// Deliberate: unlike weekdays, every number of the set is shown.
std::string monthlyText(const std::set<int64_t>& days, const Texts& texts) {
  std::vector<std::string> shown;
  for (const int64_t day : days) shown.push_back(std::to_string(day));
  return texts.counted(static_cast<int64_t>(days.size()), "Monthly on day {days}", "Monthly on days {days}",
                       {{"days", joined(shown, texts)}});
}

std::string hoursText(int64_t hours, const Texts& texts) {
  return texts.counted(hours, "Every {n} hour", "Every {n} hours");
}

std::string customText(int64_t total, const Texts& texts) {
  const int64_t hours = total / kMinutesPerHour;
  const int64_t minutes = total % kMinutesPerHour;
  // Deliberate: below an hour the remainder alone counts, so -61 shows as -1.
  if (total < kMinutesPerHour) return texts.counted(minutes, "Every {n} minute", "Every {n} minutes");
  if (minutes == 0) return hoursText(hours, texts);
  return texts.text("Every {hours}h {minutes}m",
                    {{"hours", std::to_string(hours)}, {"minutes", std::to_string(minutes)}});
}

Json timeToJson(const TimeOfDay& time) {
  Json object = Json::object();
  if (time.hour) object["hour"] = *time.hour;
  if (time.minute) object["minute"] = *time.minute;
  return object;
}

/// Reads one member after the other and keeps the first error.
class MemberReader {
 public:
  explicit MemberReader(const JsonPlace& object) : object_(object) {}

  void integer(std::string_view key, int64_t& value) {
    with(object_.member(key), [&](const JsonPlace& place) { take(place.integer(), value); });
  }

  void type(std::string_view key, ReminderIntervalType& value) {
    with(object_.member(key), [&](const JsonPlace& place) {
      const auto text = place.text();
      const auto type = text ? reminderIntervalType(*text) : std::nullopt;
      if (!text) return fail(text.error());
      if (!type) return fail(place.error(quotedExcerpt(*text) + " is no kind of schedule"));
      value = *type;
    });
  }

  void time(std::string_view key, TimeOfDay& value) {
    with(object_.member(key), [&](const JsonPlace& place) { value = timeAt(place); });
  }

  void times(std::string_view key, std::vector<TimeOfDay>& values) {
    eachElement(key, [&](const JsonPlace& place) { values.push_back(timeAt(place)); });
  }

  void days(std::string_view key, std::set<int64_t>& values) {
    eachElement(key, [&](const JsonPlace& place) {
      int64_t day = 0;
      take(place.integer(), day);
      values.insert(day);
    });
  }

  const std::optional<Error>& error() const { return error_; }

 private:
  void fail(const Error& error) {
    if (!error_) error_ = error;
  }

  template <typename T, typename Use>
  void with(const Result<T>& result, Use use) {
    if (!result) return fail(result.error());
    use(*result);
  }

  void take(const Result<int64_t>& result, int64_t& value) {
    with(result, [&](int64_t read) { value = read; });
  }

  template <typename Use>
  void eachElement(std::string_view key, Use use) {
    with(object_.member(key), [&](const JsonPlace& list) {
      with(list.elements(), [&](const std::vector<JsonPlace>& places) {
        for (const JsonPlace& place : places) use(place);
      });
    });
  }

  TimeOfDay timeAt(const JsonPlace& place) { return {part(place, "hour"), part(place, "minute")}; }

  std::optional<int64_t> part(const JsonPlace& time, std::string_view key) {
    std::optional<int64_t> value;
    with(time.optionalMember(key), [&](const std::optional<JsonPlace>& place) {
      if (place) take(place->integer(), value.emplace());
    });
    return value;
  }

  const JsonPlace& object_;
  std::optional<Error> error_;
};

}  // namespace

std::string_view rawValue(ReminderIntervalType type) {
  constexpr std::array<std::string_view, kAllReminderIntervalTypes.size()> kTexts = {
      ownText("Hourly"), ownText("Daily"), ownText("Weekly"), ownText("Monthly"), ownText("Custom")};
  return kTexts[static_cast<size_t>(type)];
}

std::optional<ReminderIntervalType> reminderIntervalType(std::string_view raw) {
  const auto found = std::find_if(kAllReminderIntervalTypes.begin(), kAllReminderIntervalTypes.end(),
                                  [&](ReminderIntervalType each) { return rawValue(each) == raw; });
  if (found == kAllReminderIntervalTypes.end()) return std::nullopt;
  return *found;
}

std::string ReminderInterval::displayText(const Calendar& calendar, const Texts& texts) const {
  switch (type) {
    case ReminderIntervalType::hourly:
      return hoursText(hourlyInterval, texts);
    case ReminderIntervalType::daily:
      return dailyText(dailyTimes, calendar, texts);
    case ReminderIntervalType::weekly:
      return weeklyText(weeklyDays, texts);
    case ReminderIntervalType::monthly:
      return monthlyText(monthlyDays, texts);
    case ReminderIntervalType::custom:
      return customText(customIntervalMinutes, texts);
  }
  return {};
}

const ReminderInterval& fallbackInterval() {
  static const ReminderInterval interval = {
      ReminderIntervalType::daily, 4, {{9, 0}}, {2, 3, 4, 5, 6}, {9, 0}, {1}, {9, 0}, 480};
  return interval;
}

Json intervalToJson(const ReminderInterval& interval) {
  Json times = Json::array();
  for (const TimeOfDay& time : interval.dailyTimes) times.push_back(timeToJson(time));
  Json object = Json::object();
  object["type"] = rawValue(interval.type);
  object["hourlyInterval"] = interval.hourlyInterval;
  object["dailyTimes"] = std::move(times);
  object["weeklyDays"] = interval.weeklyDays;
  object["weeklyTime"] = timeToJson(interval.weeklyTime);
  object["monthlyDays"] = interval.monthlyDays;
  object["monthlyTime"] = timeToJson(interval.monthlyTime);
  object["customIntervalMinutes"] = interval.customIntervalMinutes;
  return object;
}

Result<ReminderInterval> intervalFromJson(const JsonPlace& place) {
  ReminderInterval interval;
  MemberReader reader(place);
  reader.type("type", interval.type);
  reader.integer("hourlyInterval", interval.hourlyInterval);
  reader.times("dailyTimes", interval.dailyTimes);
  reader.days("weeklyDays", interval.weeklyDays);
  reader.time("weeklyTime", interval.weeklyTime);
  reader.days("monthlyDays", interval.monthlyDays);
  reader.time("monthlyTime", interval.monthlyTime);
  reader.integer("customIntervalMinutes", interval.customIntervalMinutes);
  if (reader.error()) return *reader.error();
  return interval;
}

std::string encodeInterval(const ReminderInterval& interval) { return jsonText(intervalToJson(interval)); }

Result<ReminderInterval> decodeInterval(std::string_view data) {
  const auto document = parseJson(data);
  if (!document) return document.error();
  return intervalFromJson(JsonPlace(*document));
}

}  // namespace pillora

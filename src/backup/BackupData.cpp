// SPDX-License-Identifier: MIT
#include "backup/BackupData.h"

#include <utility>

#include "platform/FileManager.h"
#include "support/Json.h"

namespace pillora {

namespace {

constexpr int kIndent = 2;
constexpr size_t kDateLength = 20;  // "2025-01-10T10:30:00Z"

// Writing. The members come from fields(), in their order.

/// NULs, which no reader accepts, count as what is no character at all.
std::string writableText(std::string text) {
  for (size_t at = text.find('\0'); at != std::string::npos; at = text.find('\0', at)) text.replace(at, 1, "\uFFFD");
  return text;
}

template <Described T>
Json jsonOf(const T& value);

Json jsonOf(bool value) { return value; }
Json jsonOf(int64_t value) { return value; }
Json jsonOf(const std::string& value) { return writableText(value); }
Json jsonOf(const UUID& value) { return value.text(); }
/// Without its fraction the text names the second that had begun, before 1970 as well.
Json jsonOf(Instant value) {
  std::string text = iso8601(value);
  if (const size_t point = text.find('.'); point != std::string::npos) text.replace(point, std::string::npos, "Z");
  return text;
}
Json jsonOf(const ReminderInterval& value) { return intervalToJson(value); }
Json jsonOf(WeekStartDay value) { return rawValue(value); }
Json jsonOf(NotificationSound value) { return rawValue(value); }
Json jsonOf(BackupFrequency value) { return rawValue(value); }

template <typename T>
Json jsonOf(const std::vector<T>& values) {
  Json array = Json::array();
  for (const T& value : values) array.push_back(jsonOf(value));
  return array;
}

template <typename T>
void addMember(Json& object, std::string_view name, const T& value) {
  object[std::string(name)] = jsonOf(value);
}

template <typename T>
void addMember(Json& object, std::string_view name, const std::optional<T>& value) {
  if (value) addMember(object, name, *value);
}

template <Described T>
Json jsonOf(const T& value) {
  Json object = Json::object();
  forEachField<T>([&](std::string_view name, auto member) { addMember(object, name, value.*member); });
  return object;
}

// Reading. Each `read` answers the value at a place; members are read in the order of fields().

template <typename T>
struct As {};  ///< names the type that is wanted

Result<bool> read(const JsonPlace& place, As<bool>) { return place.boolean(); }
Result<int64_t> read(const JsonPlace& place, As<int64_t>) { return place.integer(); }
Result<std::string> read(const JsonPlace& place, As<std::string>) { return place.text(); }
Result<ReminderInterval> read(const JsonPlace& place, As<ReminderInterval>) { return intervalFromJson(place); }

/// What `find` makes of the text at `place`, an error ending in `what` when that is nothing.
template <typename Find>
auto readText(const JsonPlace& place, Find find, std::string_view what)
    -> Result<typename decltype(find(std::string()))::value_type> {
  const auto text = place.text();
  if (!text) return text.error();
  const auto value = find(*text);
  if (!value) return place.error(quotedExcerpt(*text) + " is " + std::string(what));
  return *value;
}

Result<UUID> read(const JsonPlace& place, As<UUID>) {
  return readText(
      place, [](const std::string& text) { return UUID::parse(text); },
      "no identifier of the form 00000000-0000-0000-0000-000000000000");
}

Result<Instant> read(const JsonPlace& place, As<Instant>) {
  const auto parse = [](const std::string& text) -> std::optional<Instant> {
    // Of this length and with this end, only whole seconds in UTC are left of what parseTime() knows.
    const auto time = text.size() == kDateLength && text.back() == 'Z' ? parseTime(text) : std::nullopt;
    return time ? std::optional(utcInstant(time->wall)) : std::nullopt;
  };
  return readText(place, parse, "no date and time of the form 2025-01-31T08:00:00Z");
}

Result<NotificationSound> read(const JsonPlace& place, As<NotificationSound>) {
  return readText(
      place, [](const std::string& text) { return notificationSound(text); }, "no notification sound");
}

Result<BackupFrequency> read(const JsonPlace& place, As<BackupFrequency>) {
  return readText(
      place, [](const std::string& text) { return backupFrequency(text); }, "no backup frequency");
}

Result<WeekStartDay> read(const JsonPlace& place, As<WeekStartDay>) {
  // The number may also stand as a text: files of other makers have it so.
  if (const auto text = place.text()) {
    for (const WeekStartDay day : kAllWeekStartDays) {
      if (*text == std::to_string(rawValue(day))) return day;
    }
  } else if (const auto number = place.integer()) {
    if (const auto day = weekStartDay(*number)) return *day;
  }
  return place.error("expected 1 (Sunday), 2 (Monday) or 7 (Saturday)");
}

template <typename T>
Result<std::vector<T>> read(const JsonPlace& place, As<std::vector<T>>);

template <typename T>
std::optional<Error> readMember(const JsonPlace& object, std::string_view name, T& value) {
  const auto place = object.member(name);
  if (!place) return place.error();
  auto result = read(*place, As<T>());
  if (!result) return result.error();
  value = *std::move(result);
  return std::nullopt;
}

template <typename T>
std::optional<Error> readMember(const JsonPlace& object, std::string_view name, std::optional<T>& value) {
  const auto place = object.optionalMember(name);
  if (!place) return place.error();
  return *place ? readMember(object, name, value.emplace()) : std::nullopt;
}

template <Described T>
Result<T> read(const JsonPlace& place, As<T>) {
  T value;
  std::optional<Error> error;
  forEachField<T>([&](std::string_view name, auto member) {
    if (!error) error = readMember(place, name, value.*member);
  });
  if (error) return *std::move(error);
  return value;
}

template <typename T>
Result<std::vector<T>> read(const JsonPlace& place, As<std::vector<T>>) {
  const auto elements = place.elements();
  if (!elements) return elements.error();
  std::vector<T> values;
  values.reserve(elements->size());
  for (const JsonPlace& element : *elements) {
    auto value = read(element, As<T>());
    if (!value) return value.error();
    values.push_back(*std::move(value));
  }
  return values;
}

Result<BackupData> decode(std::string_view text) {
  if (text.empty()) return Error{"the file is empty"};
  const auto document = parseJson(text);
  if (!document) return document.error();
  return read(JsonPlace(*document), As<BackupData>());
}

}  // namespace

Result<std::string> encodeBackup(const BackupData& backup) {
  std::string text = jsonText(jsonOf(backup), kIndent) + '\n';
  if (text.size() > kLargestFile) return Error{"This backup would be too large to be read back."};
  if (const auto readBack = decode(text); !readBack) {
    return Error{"This backup could not be read back: " + readBack.error().description};
  }
  return text;
}

Result<BackupData> decodeBackup(std::string_view text) {
  auto backup = decode(text);
  if (!backup) return Error{"This backup cannot be read: " + backup.error().description};
  return backup;
}

NewMedicine newMedicine(const MedicineBackup& backup) {
  return {
      backup.name,           backup.dosage,      backup.unit,      backup.instructions, backup.color,
      backup.icon,           backup.interval,    backup.isActive,  backup.allowSnooze,  backup.snoozeDurationMinutes,
      backup.maxSnoozeCount, backup.isRepeating, backup.startDate, backup.endDate};
}

void restoreSettings(const SettingsBackup& backup, AppSettings& settings) {
  settings.setWeekStartDay(backup.weekStartDay);
  settings.setNotificationSound(backup.notificationSound);
  settings.enableCriticalAlerts = backup.enableCriticalAlerts;
  settings.reminderAdvanceMinutes = backup.reminderAdvanceMinutes;
  settings.autoMarkMissedAfterMinutes = backup.autoMarkMissedAfterMinutes;
  settings.defaultSnoozeDurationMinutes = backup.defaultSnoozeDurationMinutes;
  settings.defaultMaxSnoozeCount = backup.defaultMaxSnoozeCount;
  settings.setBackupFrequency(backup.backupFrequency);
  settings.enableiCloudSync = backup.enableiCloudSync;
  settings.enableLocalBackup = backup.enableLocalBackup;
  settings.use24HourTime = backup.use24HourTime;
  settings.showMedicineIcons = backup.showMedicineIcons;
  settings.enableHaptics = backup.enableHaptics;
  settings.requireAuthentication = backup.requireAuthentication;
}

}  // namespace pillora

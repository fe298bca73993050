// SPDX-License-Identifier: MIT
#include <algorithm>
#include <set>
#include <utility>

#include "lives/Inspection.h"

namespace pillora {

namespace {

using Lines = Inspection::Lines;

template <typename... Values>
std::string lineOf(const Values&... values) {
  std::string line;
  const auto append = [&](const auto& value) {
    using Value = std::decay_t<decltype(value)>;
    if constexpr (std::is_same_v<Value, std::string> || std::is_same_v<Value, std::string_view>) {
      line += value;
    } else if constexpr (std::is_same_v<Value, Instant>) {
      line += iso8601(value);
    } else if constexpr (std::is_same_v<Value, std::optional<Instant>>) {
      line += value ? iso8601(*value) : "-";
    } else {
      line += std::to_string(value);
    }
    line += " | ";
  };
  (append(values), ...);
  return line;
}

Lines linesOf(const NewMedicine& values, const UUID& id, Instant createdAt, Instant updatedAt) {
  return {lineOf(id.text(), values.name, values.dosage, values.unit, values.instructions, values.color, values.icon),
          "  " + lineOf(encodeInterval(values.interval), values.isActive, values.allowSnooze,
                        values.snoozeDurationMinutes, values.maxSnoozeCount, values.isRepeating),
          "  " + lineOf(values.startDate, values.endDate, createdAt, updatedAt)};
}

NewMedicine valuesOf(const Medicine& medicine) {
  return {medicine.name(),           medicine.dosage(),
          medicine.unit(),           medicine.instructions(),
          medicine.color(),          medicine.icon(),
          medicine.interval(),       medicine.isActive(),
          medicine.allowSnooze(),    medicine.snoozeDurationMinutes(),
          medicine.maxSnoozeCount(), medicine.isRepeating(),
          medicine.startDate(),      medicine.endDate()};
}

std::string logLine(const UUID& id, Instant scheduled, std::optional<Instant> action, std::string_view status) {
  return "  log " + lineOf(id.text(), scheduled, action, status);
}

/// In the order of scheduled times, equal ones in the order of their insertion.
std::vector<std::shared_ptr<DoseLog>> sortedLogs(const Medicine& medicine) {
  auto logs = medicine.doseLogs();
  std::stable_sort(logs.begin(), logs.end(),
                   [](const auto& a, const auto& b) { return a->scheduledTime() < b->scheduledTime(); });
  return logs;
}

std::string settingsLine(const SettingsBackup& values, std::optional<Instant> lastBackupDate) {
  return lineOf(rawValue(values.weekStartDay), rawValue(values.notificationSound), values.enableCriticalAlerts,
                values.reminderAdvanceMinutes, values.autoMarkMissedAfterMinutes, values.defaultSnoozeDurationMinutes,
                values.defaultMaxSnoozeCount, rawValue(values.backupFrequency), values.enableiCloudSync,
                values.enableLocalBackup, values.use24HourTime, values.showMedicineIcons, values.enableHaptics,
                values.requireAuthentication, lastBackupDate);
}

std::string settingsLine(const AppSettings& settings) {
  return lineOf(settings.weekStartDayRaw(), settings.notificationSoundRaw(), settings.enableCriticalAlerts(),
                settings.reminderAdvanceMinutes(), settings.autoMarkMissedAfterMinutes(),
                settings.defaultSnoozeDurationMinutes(), settings.defaultMaxSnoozeCount(),
                settings.backupFrequencyRaw(), settings.enableiCloudSync(), settings.enableLocalBackup(),
                settings.use24HourTime(), settings.showMedicineIcons(), settings.enableHaptics(),
                settings.requireAuthentication(), settings.lastBackupDate());
}

}  // namespace

void Inspection::adoptMarked() {
  for (BookedMedicine& each : ledger_.records.medicines) {
    const auto isNew = [](const BookedLog& log) { return !log.id; };
    const auto first = std::find_if(each.logs.begin(), each.logs.end(), isNew);
    if (first == each.logs.end()) continue;
    const auto medicine = process_.context().find<Medicine>(each.id);
    if (!medicine) return expect(false, "a marked medicine is gone");
    std::set<UUID> known;
    for (auto log = first; log != each.logs.end(); ++log) {
      if (log->id) known.insert(*log->id);
    }
    std::multimap<Instant, std::shared_ptr<DoseLog>> found;
    const auto inStore = medicine->doseLogs(first->scheduledTime);
    for (const auto& log : inStore) {
      if (!known.contains(log->id())) found.emplace(log->scheduledTime(), log);
    }
    for (auto log = first; log != each.logs.end(); ++log) {
      if (log->id) continue;
      const auto match = found.find(log->scheduledTime);
      if (match == found.end()) {
        return expect(false, each.values.name + " was not marked missed at " + iso8601(log->scheduledTime));
      }
      log->id = match->second->id();
      found.erase(match);
    }
    expect(found.empty(), each.values.name + " has logs that nobody made, the first at " +
                              (found.empty() ? std::string() : iso8601(found.begin()->first)));
  }
}

void Inspection::records() {
  const auto medicines = process_.context().fetch<Medicine>();
  const auto settings = process_.context().fetch<AppSettings>();
  const auto logs = process_.context().fetchCount<DoseLog>();
  if (!medicines || !settings || !logs) return expect(false, "the store cannot be read");
  Lines expected, actual;
  size_t logCount = 0;
  for (const BookedMedicine& each : ledger_.records.medicines) {
    for (auto& line : linesOf(each.values, each.id, each.createdAt, each.updatedAt)) expected.push_back(line);
    for (const BookedLog& log : each.logs) {
      expected.push_back(logLine(log.id.value_or(UUID()), log.scheduledTime, log.actionTime, rawValue(log.status)));
    }
    logCount += each.logs.size();
  }
  for (const auto& each : *medicines) {
    for (auto& line : linesOf(valuesOf(*each), each->id(), each->createdAt(), each->updatedAt()))
      actual.push_back(line);
    std::set<Instant> missed;
    const auto inStore = sortedLogs(*each);
    for (const auto& log : inStore) {
      actual.push_back(logLine(log->id(), log->scheduledTime(), log->actionTime(), log->statusRaw()));
      expect(log->snoozeCount() == 0 && log->notes().empty(), "a log with a count or notes");
      // Without regard to the ledger: the marking writes no dose twice.
      expect(log->status() != DoseStatus::missed ||
                 missed.insert(world_.calendar.startOfMinute(log->scheduledTime())).second,
             "a dose was marked missed twice");
    }
  }
  expectEqual("the medicines and their logs", expected, actual);
  expect(*logs == static_cast<int64_t>(logCount), "there are logs of no medicine");
  expect(settings->size() == (ledger_.records.settings ? 1U : 0U), "the number of settings records");
  if (settings->size() == 1 && ledger_.records.settings) {
    expectEqual("the settings", {settingsLine(*ledger_.records.settings, ledger_.records.lastBackupDate)},
                {settingsLine(*settings->front())});
  }
}

void Inspection::reminders() {
  Lines expected, actual;
  for (const auto& [identifier, request] : ledger_.reminders.pending) {
    expected.push_back(lineOf(identifier, minuteText(request.wall), request.category, request.title, request.body));
  }
  process_.center->getPendingNotificationRequests([&](const std::vector<UNNotificationRequest>& pending) {
    for (const auto& request : pending) {
      const UNNotificationContent& content = request.content;
      actual.push_back(lineOf(request.identifier, minuteText(request.trigger.wallTime), content.categoryIdentifier,
                              content.title, content.body));
    }
  });
  std::sort(expected.begin(), expected.end());
  std::sort(actual.begin(), actual.end());
  expectEqual("the pending reminders", expected, actual);
  // Without regard to the ledger: none of a medicine that is gone.
  std::set<std::string> medicines = ledger_.orphans;
  for (const BookedMedicine& each : ledger_.records.medicines) medicines.insert(each.id.text());
  for (const std::string& line : actual) {
    expect(medicines.contains(line.substr(0, 36)), "a reminder of a medicine that is gone: " + line);
  }
  reminderNames();
}

void Inspection::reminderNames() {
  Lines expected;
  for (const auto& [identifier, request] : ledger_.reminders.pending) expected.push_back(identifier);
  process_.center->getPendingNotificationRequestIdentifiers(
      [&](const Lines& actual) { expectEqual("the names of the pending reminders", expected, actual); });
  process_.center->getNotificationCategories([&](const std::vector<UNNotificationCategory>& categories) {
    Lines found, wanted;
    for (const auto& category : categories) found.push_back(category.identifier);
    if (!ledger_.reminders.category.empty()) wanted.push_back(ledger_.reminders.category);
    expectEqual("the registered categories", wanted, found);
    const bool hasSnooze = !ledger_.reminders.snoozeTitle.empty();
    if (!categories.empty() && hasSnooze) {
      expectEqual("the snooze button", {ledger_.reminders.snoozeTitle}, {categories.front().actions.at(1).title});
    }
  });
  const auto tasks = process_.center->tasks();
  expect(tasks.size() == (ledger_.reminders.nextCheck ? 1U : 0U), "the number of background checks");
  if (tasks.size() == 1)
    expect(tasks[0].earliestBeginDate == ledger_.reminders.nextCheck, "the background check's time");
}

}  // namespace pillora

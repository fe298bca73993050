// SPDX-License-Identifier: MIT
#include <algorithm>

#include "cli/Commands.h"
#include "cli/Rendering.h"
#include "schedule/Schedule.h"
#include "screens/DoseTexts.h"
#include "screens/ReminderHistoryView.h"
#include "screens/TodayView.h"
#include "support/Json.h"

namespace pillora {

namespace {

using Logs = std::vector<std::shared_ptr<DoseLog>>;
using Record = Result<std::optional<UUID>> (TodayView::*)(const UUID& medicine, Instant time);

/// The time of today's open dose of this medicine.
Result<Instant> openDoseOfToday(const std::shared_ptr<Medicine>& medicine, const Session& session) {
  const auto entries = todaysPendingReminders(activeMedicines({medicine}), session.now(), session.calendar());
  if (entries.empty()) {
    return Error{session.texts().text("{name} has no open dose today", {{"name", medicine->name()}})};
  }
  return entries.front().second;
}

bool use24HourTime(const ScreenEnvironment& screens) {
  return settingsShown(LiveQuery<AppSettings>(screens.context)).use24HourTime();
}

/// "Taken: Aspirin, Jan 10, 2025, 8:00 AM"
std::string recordedText(std::string_view what, const Medicine& medicine, Instant time,
                         const ScreenEnvironment& screens) {
  const Texts& texts = screens.texts;
  return texts.text(what, {{"name", medicine.name()},
                           {"date", texts.mediumDate(time)},
                           {"time", texts.shortTime(time, use24HourTime(screens))}});
}

Result<Action> recordCommand(const CommandLine& line, Session& session, Record record, std::string_view done) {
  std::optional<Instant> time;
  if (line.instant) {
    const auto instant = session.instant(*line.instant);
    if (!instant) return instant.error();
    time = *instant;
  }
  return Action([=, &session, ref = *line.ref]() -> Result<std::string> {
    const auto medicine = session.medicine(ref);
    if (!medicine) return medicine.error();
    const auto due = time ? Result<Instant>(*time) : openDoseOfToday(*medicine, session);
    if (!due) return due.error();
    const auto screens = *session.open();
    TodayView today(screens);
    const auto log = (today.*record)((*medicine)->id(), *due);
    if (!log) return log.error();
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"log", toJson(*log)}}));
    const auto what = log->has_value() ? done : ownText("Done already: {name}, {date}, {time}");
    return messageLine(recordedText(what, **medicine, *due, screens), session);
  });
}

FetchDescriptor<DoseLog> earliestFirst(const std::optional<UUID>& ofMedicine) {
  FetchDescriptor<DoseLog> all;
  if (!ofMedicine) return std::move(all).sortedBy(&DoseLog::scheduledTime);
  return std::move(all).where(&DoseLog::medicineId, Comparison::equal, ofMedicine).sortedBy(&DoseLog::scheduledTime);
}

Json logJson(const DoseLog& log) {
  return Json::object({{"id", toJson(log.id())},
                       {"medicineId", toJson(log.medicineId())},
                       {"scheduledTime", toJson(log.scheduledTime())},
                       {"actionTime", toJson(log.actionTime())},
                       {"statusRaw", log.statusRaw()},
                       {"snoozeCount", log.snoozeCount()},
                       {"notes", log.notes()}});
}

std::string logsJson(const Logs& logs) {
  Json array = Json::array();
  for (const auto& log : logs) array.push_back(logJson(*log));
  return jsonLine(Json::object({{"logs", std::move(array)}}));
}

std::string logsText(const Logs& logs, const ScreenEnvironment& screens, const Session& session) {
  const bool in24Hours = use24HourTime(screens);
  std::vector<LogDay> days;
  std::optional<Instant> lastDay;
  for (const auto& log : logs) {
    const Instant day = screens.calendar.startOfDay(log->scheduledTime());
    if (day != lastDay) days.push_back({screens.texts.mediumDate(log->scheduledTime()), {}});
    lastDay = day;
    days.back().logs.push_back(doseLogRow(*log, screens.texts, in24Hours));
  }
  if (days.empty()) return messageLine(screens.texts.text("No doses have been recorded."), session);
  return rendered(days, session.terminal());
}

/// The record that a command is about, with nothing slipping in between finding and changing it.
Result<std::shared_ptr<DoseLog>> logForChange(const UUID& id, const ScreenEnvironment& screens) {
  ModelContext& context = screens.context;
  if (const auto begun = context.beginWriting(); !begun) return begun.error();
  if (const auto log = context.find<DoseLog>(id)) return log;
  if (auto error = context.takeReadError()) return *std::move(error);
  return Error{screens.texts.text("no dose is recorded as {id}", {{"id", id.text()}})};
}

Result<UUID> logId(const CommandLine& line, const Session& session) {
  if (const auto id = UUID::parse(*line.logId)) return *id;
  return Error{session.texts().text("'{word}' is no identifier", {{"word", *line.logId}})};
}

constexpr std::string_view kTaken = ownText("Taken: {name}, {date}, {time}");
constexpr std::string_view kSkipped = ownText("Skipped: {name}, {date}, {time}");

}  // namespace

Result<Action> takeCommand(const CommandLine& line, Session& session) {
  return recordCommand(line, session, &TodayView::take, kTaken);
}

Result<Action> skipCommand(const CommandLine& line, Session& session) {
  return recordCommand(line, session, &TodayView::skip, kSkipped);
}

Result<Action> undoCommand(const CommandLine& line, Session& session) {
  const auto id = logId(line, session);
  if (!id) return id.error();
  return Action([&session, id = *id]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    const auto log = logForChange(id, *screens);
    if (!log) return log.error();
    const std::string name = medicineName(**log, screens->texts);
    if (const auto undone = TodayView(*screens).undo(id); !undone) return undone.error();
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"id", toJson(id)}}));
    return messageLine(screens->texts.text("Taken back: {name}", {{"name", name}}), session);
  });
}

Result<Action> markCommand(const CommandLine& line, Session& session) {
  const auto id = logId(line, session);
  if (!id) return id.error();
  const bool isTaken = *line.status == "taken";
  if (!isTaken && *line.status != "skipped") {
    return Error{session.texts().text("the status is 'taken' or 'skipped', not '{word}'", {{"word", *line.status}})};
  }
  return Action([&session, id = *id, isTaken, word = *line.status]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    const auto log = logForChange(id, *screens);
    if (!log) return log.error();
    const std::string recorded = statusTextInSentence((*log)->status(), screens->texts);
    const auto marked =
        ReminderHistoryView(*screens).onStatusChange(id, isTaken ? DoseStatus::taken : DoseStatus::skipped);
    if (!marked) return marked.error();
    if (!*marked) {
      return Error{screens->texts.text("the dose is recorded as '{status}' and cannot be marked '{word}'",
                                       {{"status", recorded}, {"word", word}})};
    }
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"id", toJson(id)}}));
    const auto text = recordedText(isTaken ? kTaken : kSkipped, *(*log)->medicine(), (*log)->scheduledTime(), *screens);
    return messageLine(text, session);
  });
}

Result<Action> logsCommand(const CommandLine& line, Session& session) {
  return Action([&session, ref = line.ref]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    std::optional<UUID> ofMedicine;
    if (ref) {
      const auto medicine = session.medicine(*ref);
      if (!medicine) return medicine.error();
      ofMedicine = (*medicine)->id();
    }
    const auto logs = screens->context.fetch(earliestFirst(ofMedicine));
    if (!logs) return logs.error();
    return session.json() ? logsJson(*logs) : logsText(*logs, *screens, session);
  });
}

}  // namespace pillora

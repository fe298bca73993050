// SPDX-License-Identifier: MIT
#include "screens/TodayView.h"

#include <algorithm>
#include <unordered_map>

#include "notifications/ReminderRequests.h"
#include "screens/DoseActions.h"
#include "screens/DoseTexts.h"

namespace pillora {

namespace {

using namespace std::chrono_literals;

/// Sorted, so that the store goes along its index of times; unsorted it would go through all logs in their order.
FetchDescriptor<DoseLog> logsScheduledFrom(Instant from) {
  return FetchDescriptor<DoseLog>()
      .where(&DoseLog::scheduledTime, Comparison::atLeast, from)
      .sortedBy(&DoseLog::scheduledTime);
}

int64_t countOf(const DoseLogs& logs, DoseStatus status) {
  return std::count_if(logs.begin(), logs.end(), [&](const auto& log) { return log->status() == status; });
}

std::string greeting(int64_t hour, const Texts& texts) {
  if (hour >= 5 && hour < 12) return texts.text("Good Morning");
  if (hour >= 12 && hour < 17) return texts.text("Good Afternoon");
  if (hour >= 17 && hour < 21) return texts.text("Good Evening");
  return texts.text("Good Night");
}

DayProgress dayProgress(int64_t taken, size_t due, const Texts& texts) {
  const double progress = due == 0 ? 0 : static_cast<double>(taken) / static_cast<double>(due);
  // Truncated in double arithmetic, as everywhere where Pillora shows a percentage: 29 of 50 are 57%.
  return {progress, texts.text("{percent}%", {{"percent", std::to_string(static_cast<int64_t>(progress * 100))}}),
          progress < 0.5   ? "orange"
          : progress < 1.0 ? "blue"
                           : "green"};
}

std::vector<StatBadge> statBadges(int64_t taken, size_t remaining, int64_t skipped, const Texts& texts) {
  return {{"checkmark.circle.fill", std::to_string(taken), dosesText(taken, DoseStatus::taken, texts), "green"},
          {"clock.fill", std::to_string(remaining),
           texts.counted(static_cast<int64_t>(remaining), "Remaining", "Remaining"), "blue"},
          {"forward.circle.fill", std::to_string(skipped), dosesText(skipped, DoseStatus::skipped, texts), "orange"}};
}

std::string countdownText(Instant::Duration ahead, const Texts& texts) {
  if (ahead < 0s) return texts.text("Overdue");
  if (ahead < 1min) return texts.text("Now");
  const WholeUnits units(ahead);
  if (ahead < 1h) return texts.text("In {minutes} min", {{"minutes", units.minutes}});
  if (!units.hasMinutesOfHour) return texts.text("In {hours}h", {{"hours", units.hours}});
  return texts.text("In {hours}h {minutes}m", {{"hours", units.hours}, {"minutes", units.minutesOfHour}});
}

ConfirmationAlert undoAlert(DoseStatus status, const Texts& texts) {
  return {texts.text("Undo {status}", {{"status", statusText(status, texts)}}),
          texts.text("This will remove the \"{status}\" record for this medicine.",
                     {{"status", statusTextInSentence(status, texts)}}),
          texts.text("Cancel"), texts.text("Undo")};
}

Panel nothingOpenMessage(bool actedToday, const Texts& texts) {
  if (actedToday) {
    return {"checkmark.circle.fill", texts.text("All done for today!"),
            texts.text("You've completed all your medicines.")};
  }
  return {"calendar.badge.clock", texts.text("No reminders scheduled for today"), std::nullopt};
}

}  // namespace

UpcomingReminderCard upcomingReminderCard(const TodayEntry& entry, Instant now, const AppSettings& settings,
                                          const Texts& texts) {
  const auto& [medicine, time] = entry;
  UpcomingReminderCard card;
  card.medicineId = medicine->id();
  card.name = medicine->name();
  card.dosageText = dosageText(*medicine, texts);
  card.icon = medicineIcon(*medicine, settings);
  card.color = medicineColor(medicine->color());
  card.time = time;
  card.timeText = texts.shortTime(time, settings.use24HourTime());
  card.countdown = countdownText(distance(now, time), texts);
  card.countdownColor = time < now ? "red" : "green";
  card.allowSnooze = medicine->allowSnooze();
  card.actions.push_back(takeAction(texts));
  if (card.allowSnooze) card.actions.push_back(snoozeAction(texts));
  card.actions.push_back(skipAction(texts));
  return card;
}

DoseLogRow doseLogRow(const DoseLog& log, const Texts& texts, bool use24HourTime) {
  const DoseStatus status = log.status();
  DoseLogRow row;
  row.id = log.id();
  row.name = medicineName(log, texts);
  row.status = rawValue(status);
  row.statusText = statusText(status, texts);
  row.statusColor = statusColor(status);
  row.time = log.scheduledTime();
  row.timeText = texts.shortTime(row.time, use24HourTime);
  if (const auto timing = doseTiming(log, texts)) {
    row.timing = timing->text;
    row.timingColor = timing->color;
  }
  row.undoSymbol = "arrow.uturn.backward";
  row.undoAlert = undoAlert(status, texts);
  return row;
}

TodayView::TodayView(ScreenEnvironment environment)
    : environment_(environment),
      medicines_(environment.context),
      settings_(environment.context),
      logs_(environment.context, logsScheduledFrom(Instant::distantFuture())),
      logsFrom_(Instant::distantFuture()) {}

TodayContent TodayView::content() const {
  const Texts& texts = environment_.texts;
  TodayContent content;
  content.title = texts.text("Today");
  content.toolbar = {{"addMedicine", texts.text("Add Medicine"), "plus.circle.fill"}};
  if (medicines_.records().empty()) {
    content.empty = Panel{"pills.circle", texts.text("No Medicines Added"),
                          texts.text("Add your first medicine to start tracking your reminders.")};
    content.emptyAction = ActionItem{"addMedicine", texts.text("Add Medicine"), "plus"};
    return content;
  }
  const Instant now = environment_.clock.now();
  const DoseLogs logs = todaysLogs(environment_.calendar.startOfDay(now));
  addDay(content, now, logs);
  if (!logs.empty()) content.activityTitle = texts.text("Activity");
  for (const auto& log : logs) {
    content.activity.push_back(doseLogRow(*log, texts, settingsShown(settings_).use24HourTime()));
  }
  return content;
}

void TodayView::addDay(TodayContent& content, Instant now, const DoseLogs& logs) const {
  const auto& [context, clock, calendar, texts, notifications] = environment_;
  const Medicines active = activeMedicines(medicines_.records());
  const auto pending = todaysPendingReminders(active, now, calendar);
  const int64_t taken = countOf(logs, DoseStatus::taken);
  const int64_t skipped = countOf(logs, DoseStatus::skipped);

  content.greeting = greeting(calendar.components(now).hour, texts);
  content.date = texts.fullDate(now);
  content.progress = dayProgress(taken, dosesDueToday(active, now, calendar).size(), texts);
  content.badges = statBadges(taken, pending.size(), skipped, texts);
  if (!pending.empty()) content.dosesTitle = texts.text("Today's Medicines");
  for (const TodayEntry& entry : pending) {
    content.doses.push_back(upcomingReminderCard(entry, now, settingsShown(settings_), texts));
  }
  if (pending.empty() && !active.empty()) content.message = nothingOpenMessage(taken + skipped > 0, texts);
}

DoseLogs TodayView::todaysLogs(Instant startOfToday) const {
  if (logsFrom_ != startOfToday) {
    logs_ = LiveQuery<DoseLog>(environment_.context, logsScheduledFrom(startOfToday));
    logsFrom_ = startOfToday;
  }
  std::unordered_map<UUID, size_t> rankOfMedicine;
  for (const auto& medicine : medicines_.records()) rankOfMedicine.emplace(medicine->id(), rankOfMedicine.size());

  DoseLogs logs;
  for (const auto& log : logs_.records()) {
    if (log->medicineId() && rankOfMedicine.contains(*log->medicineId())) logs.push_back(log);
  }
  std::stable_sort(logs.begin(), logs.end(), [&](const auto& a, const auto& b) {
    return std::pair(a->scheduledTime(), rankOfMedicine.at(*a->medicineId())) <
           std::pair(b->scheduledTime(), rankOfMedicine.at(*b->medicineId()));
  });
  return logs;
}

Result<std::optional<UUID>> TodayView::take(const UUID& medicine, Instant time) {
  auto log = takeDose(environment_, medicine, time);
  if (!log || !*log) return log;
  const auto taken = environment_.context.find<Medicine>(medicine);
  if (taken && taken->isRepeating()) environment_.notifications.scheduleUpcomingNotifications(*taken, 1);
  return log;
}

Result<std::optional<std::string>> TodayView::snooze(const UUID& medicineId) {
  const auto& [context, clock, calendar, texts, notifications] = environment_;
  static_cast<void>(context.takeReadError());  // of an earlier read, which says nothing about this one
  const auto medicine = context.find<Medicine>(medicineId);
  if (auto failure = context.takeReadError()) return *std::move(failure);
  if (!medicine || !medicine->allowSnooze()) return std::optional<std::string>();
  const auto time = calendar.adding(CalendarUnit::minute, medicine->snoozeDurationMinutes(), clock.now());
  if (!time) return std::optional<std::string>();
  notifications.scheduleNotification(*medicine, *time);
  return std::optional(reminderRequest(*medicine, *time, calendar, texts).identifier);
}

Result<std::optional<UUID>> TodayView::skip(const UUID& medicine, Instant time) {
  return skipDose(environment_, medicine, time);
}

Result<void> TodayView::undo(const UUID& log) { return undoLog(environment_, log); }

}  // namespace pillora

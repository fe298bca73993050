// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "backup/BackupData.h"
#include "model/DoseLog.h"
#include "model/Medicine.h"
#include "platform/Calendar.h"
#include "screens/ReminderHistoryView.h"
#include "support/UUID.h"

namespace pillora {

// What must be true in a simulated life: plain lists, and the rules stated once more, slowly and without a store, an
// index or a cache. Nothing here asks Pillora for anything but the next due time, the calendar and the wording.

struct BookedLog {
  std::optional<UUID> id;  ///< absent until the store's own is known, which the marking chooses
  Instant scheduledTime;
  std::optional<Instant> actionTime;
  DoseStatus status;
  int64_t serial;  ///< order of insertion
};

struct BookedMedicine {
  UUID id;
  NewMedicine values;
  Instant createdAt, updatedAt;
  std::vector<BookedLog> logs;  ///< by scheduled time, equal ones in the order of their insertion
};

struct Records {
  std::vector<BookedMedicine> medicines;  ///< in the order of their insertion
  std::optional<SettingsBackup> settings;
  std::optional<Instant> lastBackupDate;
  int64_t nextSerial = 0;
};

struct BookedRequest {
  std::string medicine;
  WallTime wall;
  Instant due;
  bool isArmed;  ///< its minute lay ahead when it was planned; others never fire
  int64_t serial;
  std::string category, title, body;
};

struct Reminders {
  std::map<std::string, BookedRequest> pending;
  std::string category, snoozeTitle;  ///< registered last
  int64_t badge = 0;
  std::optional<Instant> nextCheck;  ///< of the background check for missed doses
  int64_t nextSerial = 0;
};

/// What History must show.
struct BookedHistory {
  DoseCounts counts;
  std::vector<const BookedLog*> rows;                                   ///< latest first
  std::map<Instant, std::pair<int64_t, int64_t>, std::greater<>> days;  ///< taken and all, by the start of the day
};

class Ledger {
 public:
  /// The calendars are those of the place where the person is; `gregorian` is what the notification centre goes by.
  Ledger(const Calendar& calendar, const Calendar& gregorian) : calendar_(&calendar), gregorian_(&gregorian) {}

  Records records;
  Reminders reminders;
  /// Medicines that are gone and whose reminders are not: a kill fell between the two files.
  std::set<std::string> orphans;

  BookedMedicine* medicine(const UUID& id);
  BookedLog* log(const UUID& id);
  std::optional<Instant> nextDose(const BookedMedicine& medicine, Instant after) const;

  // What screens must show.

  bool isDone(const BookedMedicine& medicine, Instant time) const;
  /// Medicine and time of each card of Today.
  std::vector<std::pair<const BookedMedicine*, Instant>> today(Instant now) const;
  std::vector<std::pair<const BookedMedicine*, Instant>> upcoming(Instant now) const;
  int64_t dueToday(Instant now) const;
  /// Today's activity.
  std::vector<const BookedLog*> activity(Instant now) const;
  BookedHistory history(TimeRange range, HistoryFilter filter, Instant now) const;

  // What happens.

  BookedMedicine& add(const UUID& id, NewMedicine values, Instant now);
  void remove(const UUID& medicine);
  void book(BookedMedicine& medicine, std::optional<UUID> id, Instant scheduled, Instant action, DoseStatus status);
  void undo(const UUID& log);
  void mark(Instant now);

  void plan(const BookedMedicine& medicine, int64_t count, Instant now);
  void planOne(const BookedMedicine& medicine, Instant due, Instant now);
  void cancel(const UUID& medicine);
  void replan(const BookedMedicine& medicine, Instant now);
  void submitCheck(Instant now);
  /// The zone has changed.
  void travel();
  /// The names of what is pending in the order in which it was planned.
  std::vector<std::string> plannedInOrder() const;
  std::optional<Instant> nextDeadline() const;
  /// Lets pass what is due; answers the identifiers that must be shown, and runs the background check if it is due.
  std::vector<std::string> advance(Instant now);

 private:
  std::optional<Instant> firstToday(const BookedMedicine& medicine, Instant now) const;
  bool hasLog(const BookedMedicine& medicine, Instant time, bool onlyActedOn) const;
  void markDay(BookedMedicine& medicine, Instant day, Instant nextDay, Instant today);
  void put(const BookedMedicine& medicine, std::string identifier, Instant time, Instant now, std::string title,
           std::string body);
  Instant instantOf(const WallTime& wall) const;

  const Calendar* calendar_;
  const Calendar* gregorian_;
};

/// "2025-01-10 08:00"-like text of a wall time's minute, and the name of a dose's reminder.
std::string minuteText(const WallTime& wall);
std::string reminderName(const UUID& medicine, Instant due);

}  // namespace pillora

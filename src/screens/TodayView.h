// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "screens/Content.h"
#include "screens/Screen.h"
#include "support/Fields.h"
#include "support/Instant.h"
#include "support/Result.h"

namespace pillora {

/// How far the day's doses have come. The ring's arc ends at a full circle; `text` shows the true number.
struct DayProgress {
  double value = 0;  ///< taken doses by medicines due today; beyond 1 when more was taken
  std::string text;  ///< "66%"
  std::string color;

  static constexpr auto fields() {
    return std::tuple(field("value", &DayProgress::value), field("text", &DayProgress::text),
                      field("color", &DayProgress::color));
  }
};

struct StatBadge {
  std::string icon, value, label, color;

  static constexpr auto fields() {
    return std::tuple(field("icon", &StatBadge::icon), field("value", &StatBadge::value),
                      field("label", &StatBadge::label), field("color", &StatBadge::color));
  }
};

/// The card of one dose that is still open today; its id in the list is the medicine's.
struct UpcomingReminderCard {
  UUID medicineId;
  std::string name;
  std::string dosageText;
  std::optional<std::string> icon;  ///< absent when icons are switched off in the settings
  std::string color;
  Instant time;
  std::string timeText;
  std::string countdown;
  std::string countdownColor;
  bool allowSnooze = true;
  std::vector<ActionItem> actions;  ///< of the expanded card: "take", "snooze" where allowed, "skip"

  static constexpr auto fields() {
    using Card = UpcomingReminderCard;
    return std::tuple(field("medicineId", &Card::medicineId), field("name", &Card::name),
                      field("dosageText", &Card::dosageText), field("icon", &Card::icon), field("color", &Card::color),
                      field("time", &Card::time), field("timeText", &Card::timeText),
                      field("countdown", &Card::countdown), field("countdownColor", &Card::countdownColor),
                      field("allowSnooze", &Card::allowSnooze), field("actions", &Card::actions));
  }
};

/// One log of today.
struct DoseLogRow {
  UUID id;
  std::string name;
  std::string status;      ///< raw value, the same in every language
  std::string statusText;  ///< as shown
  std::string statusColor;
  Instant time;
  std::string timeText;
  std::optional<std::string> timing;  ///< "5m late"; absent unless taken a minute or more off
  std::optional<std::string> timingColor;
  std::string undoSymbol;
  ConfirmationAlert undoAlert;

  static constexpr auto fields() {
    using Row = DoseLogRow;
    return std::tuple(field("id", &Row::id), field("name", &Row::name), field("status", &Row::status),
                      field("statusText", &Row::statusText), field("statusColor", &Row::statusColor),
                      field("time", &Row::time), field("timeText", &Row::timeText), field("timing", &Row::timing),
                      field("timingColor", &Row::timingColor), field("undoSymbol", &Row::undoSymbol),
                      field("undoAlert", &Row::undoAlert));
  }
};

/// Without any medicine only `title`, `toolbar` and `empty` (with its action) are there.
struct TodayContent {
  std::string title;
  std::vector<ActionItem> toolbar;  ///< "addMedicine"
  std::optional<std::string> greeting;
  std::optional<std::string> date;
  std::optional<DayProgress> progress;
  std::vector<StatBadge> badges;
  std::optional<std::string> dosesTitle;
  std::vector<UpcomingReminderCard> doses;
  std::optional<Panel> message;  ///< in place of doses
  std::optional<std::string> activityTitle;
  std::vector<DoseLogRow> activity;
  std::optional<Panel> empty;
  std::optional<ActionItem> emptyAction;

  static constexpr auto fields() {
    using Today = TodayContent;
    return std::tuple(
        field("title", &Today::title), field("toolbar", &Today::toolbar), field("greeting", &Today::greeting),
        field("date", &Today::date), field("progress", &Today::progress), field("badges", &Today::badges),
        field("dosesTitle", &Today::dosesTitle), field("doses", &Today::doses), field("message", &Today::message),
        field("activityTitle", &Today::activityTitle), field("activity", &Today::activity),
        field("empty", &Today::empty), field("emptyAction", &Today::emptyAction));
  }
};

/// The card of an entry, as seen at `now`.
UpcomingReminderCard upcomingReminderCard(const TodayEntry& entry, Instant now, const AppSettings& settings,
                                          const Texts& texts);
/// The row of a log, also of one whose medicine is gone.
DoseLogRow doseLogRow(const DoseLog& log, const Texts& texts, bool use24HourTime);

/// The tab that greets the user, shows how far the day has come, and offers each medicine's open dose of today.
class TodayView {
 public:
  explicit TodayView(ScreenEnvironment environment);

  /// Everything shown, as of the clock's now.
  TodayContent content() const;

  // The actions of a card and of a row. Each does nothing when its record is gone; on an error nothing was changed.

  /// Logs the dose as taken unless it is done already, and plans the next reminder of a repeating medicine. What is
  /// planned stays: the dose's own follow-ups come all the same. Answers the new log's identity.
  Result<std::optional<UUID>> take(const UUID& medicine, Instant time);
  /// Plans one reminder, with its follow-ups, the medicine's own snooze minutes from now. The dose stays open and no
  /// snooze is counted. Answers the reminder's identifier; nothing when the medicine allows no snooze, when it is gone,
  /// or when no such time can be formed.
  Result<std::optional<std::string>> snooze(const UUID& medicine);
  Result<std::optional<UUID>> skip(const UUID& medicine, Instant time);
  /// Takes the log back; the dose is open again.
  Result<void> undo(const UUID& log);

  bool showingAddMedicine = false;  ///< the add-medicine form is up

 private:
  /// The logs scheduled today or later, earliest first, ties in the order of their medicines.
  DoseLogs todaysLogs(Instant startOfToday) const;
  /// Fills in what stands above the activity.
  void addDay(TodayContent& content, Instant now, const DoseLogs& logs) const;

  ScreenEnvironment environment_;
  LiveQuery<Medicine> medicines_;
  LiveQuery<AppSettings> settings_;
  mutable LiveQuery<DoseLog> logs_;  ///< from logsFrom_ on; replaced when the day changes
  mutable Instant logsFrom_;
};

}  // namespace pillora

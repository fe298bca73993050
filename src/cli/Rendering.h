// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "cli/CliEnvironment.h"
#include "screens/MedicineDetailView.h"
#include "screens/MedicineListView.h"
#include "screens/ReminderHistoryContent.h"
#include "screens/SettingsContent.h"
#include "screens/TodayView.h"
#include "screens/UpcomingView.h"

namespace pillora {

// What the screens hold, as text to read. Nothing is decided here: texts and colours are the content's. `texts` is for
// the few words that only a terminal needs.

std::string rendered(const TodayContent& content, const Terminal& terminal, const Texts& texts);
std::string rendered(const UpcomingContent& content, const Terminal& terminal, const Texts& texts);
std::string rendered(const MedicineListContent& content, const Terminal& terminal, const Texts& texts);
std::string rendered(const MedicineDetailContent& content, const Terminal& terminal, const Texts& texts);
std::string rendered(const HistoryContent& content, const Terminal& terminal, const Texts& texts);

std::string rendered(const SettingsContent& content, const Terminal& terminal, const Texts& texts);
std::string rendered(const RestoreSheet& sheet, const Terminal& terminal, const Texts& texts);

/// Logs under the date of their day.
struct LogDay {
  std::string title;
  std::vector<DoseLogRow> logs;
};
std::string rendered(const std::vector<LogDay>& days, const Terminal& terminal);

/// Pending reminders under the date of their day.
struct ReminderDay {
  struct Row {
    std::string timeText, title, body;
  };
  std::string title;
  std::vector<Row> rows;
};
std::string rendered(const std::vector<ReminderDay>& days, const Terminal& terminal);

}  // namespace pillora

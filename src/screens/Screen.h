// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "notifications/NotificationManager.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Texts.h"
#include "schedule/Schedule.h"
#include "store/ModelContext.h"

namespace pillora {

/// What every screen is made from. The referenced objects outlive the screen; calendar and texts follow the user's
/// zone and locale as they change.
struct ScreenEnvironment {
  ModelContext& context;
  const Clock& clock;
  const Calendar& calendar;
  const Texts& texts;
  NotificationManager& notifications;
};

using DoseLogs = std::vector<std::shared_ptr<DoseLog>>;

/// The preferences to draw with: the first record, or the defaults while the store holds none. Drawing never makes a
/// record. The reference holds until the query is asked again.
const AppSettings& settingsShown(const LiveQuery<AppSettings>& settings);

/// Those of `medicines` that are active, in the same order.
Medicines activeMedicines(const Medicines& medicines);

}  // namespace pillora

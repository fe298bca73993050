// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/BGTaskScheduler.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/MainExecutor.h"
#include "platform/UNUserNotificationCenter.h"
#include "support/Result.h"

namespace pillora {

/// An open notification centre with its task scheduler; both last as long as `owner` does.
struct Reminders {
  UNUserNotificationCenter& notificationCenter;
  BGTaskScheduler& taskScheduler;
  std::shared_ptr<void> owner;
  /// Waits until all that was issued is kept, and its completions have come. The error is the first since the last call
  /// that no completion told. Absent where everything takes effect at once.
  std::function<Result<void>()> finish = {};
};

/// Which centre is to be opened and what it is to go by; what is referred to outlives it.
struct RemindersPlace {
  std::optional<std::string> file;  ///< absent: the session's own
  const Clock& clock;
  const Calendar& gregorian;  ///< in the zone in use
  MainExecutor& executor;
};

/// A centre that is gone with the call: whatever is planned there never fires, and no task is ever launched.
/// Permission is granted when it is asked for.
Reminders inMemoryReminders();

}  // namespace pillora

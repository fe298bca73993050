// SPDX-License-Identifier: MIT
#pragma once

#include "platform/BGTaskScheduler.h"
#include "platform/Bundle.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "platform/LAContext.h"
#include "platform/MainExecutor.h"
#include "platform/Texts.h"
#include "platform/UNUserNotificationCenter.h"

namespace pillora {

/// Everything that the app needs of the system it runs on. Each main() fills it with the real adapters, tests with
/// doubles. What is referred to outlives the app; calendar and texts follow the user's zone and locale as they change.
struct Platform {
  const Clock& clock;
  const Calendar& calendar;
  const Texts& texts;
  UNUserNotificationCenter& notificationCenter;
  BGTaskScheduler& taskScheduler;
  MainExecutor& executor;
  Console& console;
  LAContextFactory makeLAContext;
  Bundle bundle;
};

}  // namespace pillora

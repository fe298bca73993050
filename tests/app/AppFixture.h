// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

#include "app/Platform.h"
#include "doubles/FakeClock.h"
#include "doubles/FakeNotificationCenter.h"
#include "doubles/FakeTaskScheduler.h"
#include "doubles/Instants.h"
#include "doubles/Places.h"
#include "doubles/RecordingConsole.h"
#include "doubles/ScriptedAuthenticator.h"
#include "linux/QueuedMainExecutor.h"
#include "store/ModelContainer.h"

struct sqlite3;

namespace pillora {

/// Another program's connection to a store file, for what no Pillora would do to it.
class ForeignConnection {
 public:
  explicit ForeignConnection(const std::string& path);
  ~ForeignConnection();
  ForeignConnection(const ForeignConnection&) = delete;
  ForeignConnection& operator=(const ForeignConnection&) = delete;

  /// Runs SQL and does not wait for anyone. Answers SQLite's code.
  int run(const std::string& sql);

 private:
  sqlite3* database_ = nullptr;
};

/// Opens a store, in memory where the path is empty. A failure ends the test program.
std::unique_ptr<ModelContainer> openStore(MainExecutor& executor, const std::string& path = {});

std::shared_ptr<Medicine> addMedicine(ModelContext& context, const ReminderInterval& interval, Instant startDate);

/// All logs in the order of their scheduled times.
std::vector<std::shared_ptr<DoseLog>> allLogs(ModelContext& context);
std::vector<Instant> scheduledTimes(ModelContext& context);

/// The doubles that an app is started on, in New York on 10 January 2025 at 09:00.
struct AppFixture {
  Platform platform() { return platformWith(*calendar); }
  Platform platformWith(const Calendar& otherCalendar) {
    return {clock, otherCalendar, *texts, center, scheduler, executor, console, device.factory(), {}};
  }

  QueuedMainExecutor executor;
  FakeClock clock{at("2025-01-10T09:00:00-05:00")};
  std::unique_ptr<Calendar> calendar = calendarOf("en_US", "America/New_York");
  std::unique_ptr<Texts> texts = textsOf("en_US", "America/New_York");
  FakeNotificationCenter center;
  FakeTaskScheduler scheduler;
  ScriptedAuthenticator device;
  RecordingConsole console;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "doubles/FakeNotificationCenter.h"
#include "doubles/RecordingConsole.h"
#include "linux/QueuedMainExecutor.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Texts.h"
#include "screens/Screen.h"
#include "store/ModelContainer.h"

namespace pillora::bench {

/// The zone, locale and instant of every measurement: a zone with daylight saving, the middle of a working day.
inline constexpr const char* kZone = "America/New_York";
inline constexpr const char* kLocale = "en_US";
inline constexpr Instant kNow = Instant::fromSeconds(1'736'521'200);  // 2025-01-10T15:00:00Z

struct FixedClock final : Clock {
  Instant now() const override { return kNow; }
};

/// Writes a store with ten years of history up to `now`: 20 medicines, four of each kind of schedule, and about 220,000
/// dose logs, generated with a fixed seed.
void writeTenYears(const std::string& path, Instant now);

/// Path of a store with ten years of history up to kNow. Made once per folder; kept in memory-backed /dev/shm when
/// there is one, so that what is measured is Pillora and not the disk's sync.
std::string tenYearStore();
/// Path of a store with the settings record and nothing else.
std::string emptyStore();

/// An open store with everything that a screen needs.
class OpenStore {
 public:
  explicit OpenStore(const std::string& path);

  ScreenEnvironment environment() { return {container_->mainContext(), clock_, *calendar_, *texts_, notifications_}; }
  ModelContext& context() { return container_->mainContext(); }
  MainExecutor& executor() { return executor_; }
  /// Ends the event-loop turn: the automatic save runs.
  void endTurn() { executor_.drain(); }

 private:
  FixedClock clock_;
  QueuedMainExecutor executor_;
  std::unique_ptr<Calendar> calendar_;
  std::unique_ptr<Texts> texts_;
  std::unique_ptr<ModelContainer> container_;
  FakeNotificationCenter center_;
  RecordingConsole console_;
  BroadcastCentre broadcasts_;
  NotificationManager notifications_{{center_, clock_, *calendar_, *texts_, executor_, console_, broadcasts_}};
};

}  // namespace pillora::bench

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "doubles/FakeClock.h"
#include "doubles/FakeNotificationCenter.h"
#include "doubles/Places.h"
#include "doubles/RecordingConsole.h"
#include "linux/QueuedMainExecutor.h"
#include "screens/Screen.h"
#include "store/ModelContainer.h"

namespace pillora {

/// Where a test's user lives and what they read.
struct Place {
  std::string zone = "America/New_York", locale = "en_US", language = "en", catalogues = {};
};

/// What a screen is made from: a store, a clock that stands still, and the real calendar and texts of a place.
struct ScreenFixture {
  explicit ScreenFixture(Instant now, const Place& place = {},
                         const ModelConfiguration& configuration = {.isStoredInMemoryOnly = true})
      : clock(now),
        calendar(calendarOf(place.locale, place.zone)),
        texts(textsOf(place.locale, place.zone, place.language, place.catalogues)),
        container(valueOrAbort(ModelContainer::open(configuration, executor))) {}

  ModelContext& context() { return container->mainContext(); }
  ScreenEnvironment environment() { return {context(), clock, *calendar, *texts, notifications}; }
  /// Ends the event-loop turn: what is pending is saved.
  void endTurn() { executor.drain(); }

  std::shared_ptr<Medicine> add(NewMedicine values) {
    const auto medicine = Medicine::make(std::move(values), clock.now());
    context().insert(medicine);
    return medicine;
  }
  std::shared_ptr<DoseLog> log(const std::shared_ptr<Medicine>& medicine, Instant scheduled, DoseStatus status,
                               std::optional<Instant> action = std::nullopt) {
    const auto log = DoseLog::make(scheduled, action, status, 0, "", medicine);
    context().insert(log);
    return log;
  }

  QueuedMainExecutor executor;
  FakeClock clock;
  std::unique_ptr<Calendar> calendar;
  std::unique_ptr<Texts> texts;
  std::unique_ptr<ModelContainer> container;
  FakeNotificationCenter center;
  RecordingConsole console;
  BroadcastCentre broadcasts;
  NotificationManager notifications{{center, clock, *calendar, *texts, executor, console, broadcasts}};
};

/// A medicine as most tests need it.
inline NewMedicine medicineNamed(std::string name, ReminderInterval interval) {
  NewMedicine values;
  values.name = std::move(name);
  values.unit = "tablet";
  values.interval = std::move(interval);
  return values;
}

}  // namespace pillora

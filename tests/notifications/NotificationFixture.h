// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "doubles/FakeClock.h"
#include "doubles/FakeNotificationCenter.h"
#include "doubles/Instants.h"
#include "doubles/Places.h"
#include "doubles/RecordingConsole.h"
#include "linux/QueuedMainExecutor.h"
#include "model/Medicine.h"
#include "notifications/NotificationManager.h"
#include "support/BroadcastCentre.h"

namespace pillora {

inline constexpr const char* kAspirinId = "6F9619FF-8B86-D011-B42D-00CF4FC964FF";
inline constexpr const char* kIbuprofenId = "0E984725-C51C-4BF4-9960-E1C80E27ABA0";

inline std::shared_ptr<Medicine> medicineWith(const char* id, NewMedicine values) {
  auto medicine = Medicine::make(std::move(values), at("2025-01-01T00:00:00Z"));
  medicine->id = *UUID::parse(id);
  return medicine;
}

/// Two tablets of Aspirin daily at 08:00, snoozed for ten minutes.
inline NewMedicine aspirinValues() {
  NewMedicine values;
  values.name = "Aspirin";
  values.dosage = "2";
  values.unit = "tablet";
  values.interval = fallbackInterval();
  values.interval.dailyTimes = {{8, 0}};
  return values;
}

inline std::shared_ptr<Medicine> aspirin() { return medicineWith(kAspirinId, aspirinValues()); }

inline std::shared_ptr<Medicine> ibuprofenWithoutSnooze() {
  NewMedicine values = aspirinValues();
  values.name = "Ibuprofen";
  values.allowSnooze = false;
  return medicineWith(kIbuprofenId, std::move(values));
}

/// What a manager is made from: a centre in memory and a standing clock, the real calendar and texts.
struct NotificationFixture {
  explicit NotificationFixture(const std::string& zone = "America/New_York", const std::string& locale = "en_US",
                               const std::string& language = "en")
      : calendar(calendarOf(locale, zone)), texts(textsOf(locale, zone, language)) {}

  NotificationEnvironment environment() { return environmentWith(*calendar); }
  NotificationEnvironment environmentWith(const Calendar& otherCalendar) {
    return {center, clock, otherCalendar, *texts, executor, console, broadcasts};
  }

  QueuedMainExecutor executor;
  FakeClock clock{at("2025-01-10T09:00:00-05:00")};
  std::unique_ptr<Calendar> calendar;
  std::unique_ptr<Texts> texts;
  RecordingConsole console;
  BroadcastCentre broadcasts;
  FakeNotificationCenter center;
};

}  // namespace pillora

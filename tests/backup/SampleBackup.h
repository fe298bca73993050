// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>
#include <string>
#include <utility>

#include "backup/BackupData.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "support/Json.h"

namespace pillora {

/// Two medicines, the first without an end date, and settings none of which is at its default.
inline BackupData sampleBackup() {
  MedicineBackup aspirin;
  aspirin.id = *UUID::parse("6F9619FF-8B86-D011-B42D-00CF4FC964FF");
  aspirin.name = "Aspirin";
  aspirin.dosage = "1";
  aspirin.unit = "tablet";
  aspirin.color = "blue";
  aspirin.icon = "pills";
  aspirin.interval = daily({{8, 0}, {20, 30}});
  aspirin.startDate = at("2025-01-10T08:00:00Z");
  MedicineBackup drops;
  drops.id = *UUID::parse("00000000-0000-4000-8000-00000000000A");
  drops.name = "Tropfen \"Ä💊\"";
  drops.dosage = "0.5";
  drops.unit = "ml";
  drops.instructions = "after\nmeals";
  drops.color = "mint";
  drops.icon = "drop";
  drops.interval = weekly({7, 1}, {21, 15});
  drops.isActive = drops.allowSnooze = drops.isRepeating = false;
  drops.snoozeDurationMinutes = 5;
  drops.maxSnoozeCount = 7;
  drops.startDate = at("1969-12-31T23:59:58Z");
  drops.endDate = at("2026-02-28T22:00:00Z");
  SettingsBackup settings = {WeekStartDay::saturday,
                             NotificationSound::urgent,
                             true,
                             15,
                             90,
                             20,
                             4,
                             BackupFrequency::monthly,
                             false,
                             false,
                             true,
                             false,
                             false,
                             true};
  return {{aspirin, drops}, settings, at("2025-03-01T12:34:56Z"), "1.0.0"};
}

inline std::string sampleText() { return *encodeBackup(sampleBackup()); }

/// `text` with `from`, which it holds, replaced by `to` where it first stands.
inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const size_t at = text.find(from);
  if (at == std::string::npos) std::abort();
  return text.replace(at, from.size(), to);
}

inline std::string decodingError(std::string_view text) {
  const auto decoded = decodeBackup(text);
  return decoded ? "no error" : decoded.error().description;
}

inline void PrintTo(const BackupData& backup, std::ostream* out) {
  const auto text = encodeBackup(backup);
  *out << (text ? *text : text.error().description);
}

}  // namespace pillora

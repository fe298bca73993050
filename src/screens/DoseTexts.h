// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/AppSettings.h"
#include "model/DoseLog.h"
#include "model/Medicine.h"
#include "platform/Texts.h"
#include "screens/Content.h"

namespace pillora {

// How medicines and doses look and read, the same on every screen.

/// The colour that a medicine's stored colour name stands for: one of the ten names, spelled exactly, or "blue".
std::string medicineColor(std::string_view name);
/// The symbol to show beside a medicine: nothing when icons are switched off.
std::optional<std::string> medicineIcon(const Medicine& medicine, const AppSettings& settings);
/// "1 tablet"
std::string dosageText(const Medicine& medicine, const Texts& texts);
/// The name to show for a log's medicine: "Unknown" when there is none.
std::string medicineName(const DoseLog& log, const Texts& texts);

std::string statusSymbol(DoseStatus status);
std::string statusColor(DoseStatus status);
/// "Taken"
std::string statusText(DoseStatus status, const Texts& texts);
/// "Taken", as it stands beside a number of taken doses; only for those that are counted, taken, missed and skipped
std::string dosesText(int64_t count, DoseStatus status, const Texts& texts);
/// "taken", as it stands inside a sentence
std::string statusTextInSentence(DoseStatus status, const Texts& texts);

/// How long before or after its due time a dose was taken.
struct DoseTiming {
  std::string text;   ///< "5m late", "2h 15m early"
  std::string color;  ///< orange when late, blue when early
};
/// Nothing unless the log is of a taken dose, a minute or more off its due time.
std::optional<DoseTiming> doseTiming(const DoseLog& log, const Texts& texts);

/// How far `to` lies after `from`, negative when before; cut where it leaves 64 bits.
Instant::Duration distance(Instant from, Instant to);

/// A distance that is not negative, in whole minutes, hours and days truncated.
struct WholeUnits {
  explicit WholeUnits(Instant::Duration distance);

  std::string minutes, hours;
  int64_t days;
  std::string minutesOfHour;  ///< minutes beyond the whole hours
  bool hasMinutesOfHour;
};

// The buttons of a dose.
ActionItem takeAction(const Texts& texts);
ActionItem snoozeAction(const Texts& texts);
ActionItem skipAction(const Texts& texts);

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "model/Record.h"
#include "support/Fields.h"

namespace pillora {

class Medicine;

enum class DoseStatus { taken, missed, skipped, snoozed, pending };

inline constexpr std::array kAllDoseStatuses = {DoseStatus::taken, DoseStatus::missed, DoseStatus::skipped,
                                                DoseStatus::snoozed, DoseStatus::pending};

/// "Taken", "Missed", "Skipped", "Snoozed", "Pending": what `statusRaw` stores and what is shown.
std::string_view rawValue(DoseStatus status);
/// The status of a stored text; a text that is no raw value counts as pending.
DoseStatus doseStatus(std::string_view rawValue);

/// What became of one scheduled dose of one medicine. A dose without a log has not been acted on.
class DoseLog final : public Record {
 public:
  /// A pending log of now that belongs to nothing: the values that the schema declares. The store makes these before
  /// it fills in what it has read.
  DoseLog();

  /// A new log with a new identity. It is not yet in any store: inserting it is the caller's business. With a
  /// `medicine` it is at once one of that medicine's `doseLogs`.
  static std::shared_ptr<DoseLog> make(Instant scheduledTime, std::optional<Instant> actionTime = std::nullopt,
                                       DoseStatus status = DoseStatus::pending, int64_t snoozeCount = 0,
                                       std::string notes = {}, const std::shared_ptr<Medicine>& medicine = nullptr);

  Stored<UUID> id;
  Stored<Instant> scheduledTime;              ///< when the dose was due
  Stored<std::optional<Instant>> actionTime;  ///< when it was acted on; of a missed dose the day it was found missed
  Stored<std::string> statusRaw;              ///< a DoseStatus raw value
  Stored<int64_t> snoozeCount;
  Stored<std::string> notes;
  Stored<std::optional<UUID>> medicineId;  ///< identity of the medicine, absent when the log belongs to none

  DoseStatus status() const { return doseStatus(statusRaw()); }
  /// The medicine, or null when the log belongs to none or the medicine is gone.
  std::shared_ptr<Medicine> medicine() const;

  static constexpr std::string_view kEntityName = "DoseLog";
  static constexpr auto fields() {
    return std::tuple(field("id", &DoseLog::id), field("scheduledTime", &DoseLog::scheduledTime),
                      field("actionTime", &DoseLog::actionTime), field("statusRaw", &DoseLog::statusRaw),
                      field("snoozeCount", &DoseLog::snoozeCount), field("notes", &DoseLog::notes),
                      field("medicine", &DoseLog::medicineId));
  }

 private:
  friend class Medicine;
  std::weak_ptr<Medicine> medicine_;  ///< of a log that is in no store
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "model/DoseLog.h"

#include <algorithm>
#include <utility>

#include "model/Medicine.h"
#include "platform/Texts.h"

namespace pillora {

std::string_view rawValue(DoseStatus status) {
  // The first three are own texts where they count doses as well, in screens.
  constexpr std::array<std::string_view, kAllDoseStatuses.size()> kTexts = {"Taken", "Missed", "Skipped",
                                                                            ownText("Snoozed"), ownText("Pending")};
  return kTexts[static_cast<size_t>(status)];
}

DoseStatus doseStatus(std::string_view raw) {
  const auto found = std::find_if(kAllDoseStatuses.begin(), kAllDoseStatuses.end(),
                                  [&](DoseStatus each) { return rawValue(each) == raw; });
  return found == kAllDoseStatuses.end() ? DoseStatus::pending : *found;
}

DoseLog::DoseLog()
    : id(this, UUID::random()),
      scheduledTime(this, Instant()),
      actionTime(this, std::nullopt),
      statusRaw(this, std::string(rawValue(DoseStatus::pending))),
      snoozeCount(this, 0),
      notes(this, {}),
      medicineId(this, std::nullopt) {}

std::shared_ptr<DoseLog> DoseLog::make(Instant scheduledTime, std::optional<Instant> actionTime, DoseStatus status,
                                       int64_t snoozeCount, std::string notes,
                                       const std::shared_ptr<Medicine>& medicine) {
  auto log = std::make_shared<DoseLog>();
  log->scheduledTime = scheduledTime;
  log->actionTime = actionTime;
  log->statusRaw = std::string(rawValue(status));
  log->snoozeCount = snoozeCount;
  log->notes = std::move(notes);
  if (medicine) medicine->appendDoseLog(log);
  return log;
}

std::shared_ptr<Medicine> DoseLog::medicine() const {
  if (!medicineId()) return nullptr;
  auto known = medicine_.lock();
  if (known && known->id() == *medicineId() && !known->isDeleted()) return known;
  return host() != nullptr ? host()->medicineWithId(*medicineId()) : nullptr;
}

}  // namespace pillora

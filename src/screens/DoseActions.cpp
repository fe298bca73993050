// SPDX-License-Identifier: MIT
#include "screens/DoseActions.h"

namespace pillora {

namespace {

/// Begins the write transaction of an action. A look that fails reads like a record that is gone or a dose that nobody
/// took; read errors from here on are the action's own, and it must ask for them before it believes what it saw.
Result<void> beginAction(ModelContext& context) {
  static_cast<void>(context.takeReadError());
  return context.beginWriting();
}

Result<std::optional<UUID>> logDose(const ScreenEnvironment& environment, const UUID& medicineId, Instant time,
                                    DoseStatus status) {
  ModelContext& context = environment.context;
  if (const auto begun = beginAction(context); !begun) return begun.error();
  const auto medicine = context.find<Medicine>(medicineId);
  const bool isOpen = medicine && !isDoseDone(*medicine, time, environment.calendar);
  if (auto failure = context.takeReadError()) return *std::move(failure);
  if (!isOpen) return std::optional<UUID>();
  const auto log = DoseLog::make(time, environment.clock.now(), status, 0, "", medicine);
  context.insert(log);
  return std::optional(log->id());
}

}  // namespace

Result<std::optional<UUID>> takeDose(const ScreenEnvironment& environment, const UUID& medicine, Instant time) {
  return logDose(environment, medicine, time, DoseStatus::taken);
}

Result<std::optional<UUID>> skipDose(const ScreenEnvironment& environment, const UUID& medicine, Instant time) {
  return logDose(environment, medicine, time, DoseStatus::skipped);
}

Result<void> undoLog(const ScreenEnvironment& environment, const UUID& log) {
  ModelContext& context = environment.context;
  if (const auto begun = beginAction(context); !begun) return begun.error();
  const auto record = context.find<DoseLog>(log);
  if (auto failure = context.takeReadError()) return *std::move(failure);
  if (!record) return {};
  if (const auto medicine = record->medicine()) medicine->removeDoseLog(record);
  context.delete_(record);
  return {};
}

bool canChangeStatus(DoseStatus recorded, DoseStatus wanted) {
  if (recorded != DoseStatus::missed && recorded != DoseStatus::skipped) return false;
  return wanted == DoseStatus::taken || (wanted == DoseStatus::skipped && recorded != DoseStatus::skipped);
}

Result<bool> changeStatus(const ScreenEnvironment& environment, const UUID& log, DoseStatus wanted) {
  ModelContext& context = environment.context;
  if (const auto begun = beginAction(context); !begun) return begun.error();
  const auto record = context.find<DoseLog>(log);
  const bool isOffered = record && record->medicine() && canChangeStatus(record->status(), wanted);
  if (auto failure = context.takeReadError()) return *std::move(failure);
  if (!isOffered) return false;
  record->statusRaw = std::string(rawValue(wanted));
  record->actionTime = environment.clock.now();
  return true;
}

}  // namespace pillora

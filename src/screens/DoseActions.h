// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "screens/Screen.h"
#include "support/Instant.h"
#include "support/Result.h"
#include "support/UUID.h"

namespace pillora {

// What a person can do with a dose, the same on every screen that offers it. Each action begins the write transaction
// before it looks, so that another process cannot slip the same dose in between look and log; saving is left to the
// context. Without that transaction (the file stays locked, the disk cannot be written) an action changes nothing and
// answers the error: the dose stays open and can be acted on again, and is never counted twice.

/// Logs the dose that is due at `time` as taken now. Answers the new log's identity; nothing when the dose is done
/// already or the medicine is gone.
Result<std::optional<UUID>> takeDose(const ScreenEnvironment& environment, const UUID& medicine, Instant time);
/// The same with status skipped.
Result<std::optional<UUID>> skipDose(const ScreenEnvironment& environment, const UUID& medicine, Instant time);

/// Takes the log back, so that its dose is open again. A log that is gone stays gone.
Result<void> undoLog(const ScreenEnvironment& environment, const UUID& log);

/// Whether a recorded status may still be changed to `wanted`: a missed dose was taken or skipped after all, a skipped
/// one was taken after all.
bool canChangeStatus(DoseStatus recorded, DoseStatus wanted);
/// Changes the log's status, as of now. Answers whether it did: not when the log is gone, belongs to no medicine, or
/// may not be changed so.
Result<bool> changeStatus(const ScreenEnvironment& environment, const UUID& log, DoseStatus wanted);

}  // namespace pillora

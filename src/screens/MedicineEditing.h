// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "screens/Screen.h"

namespace pillora {

// What the buttons of the form and of the details do with a medicine and its reminders. Saving the records is left to
// the context; whoever saves must do so in the same turn.

/// How many of a medicine's next doses are planned at a time.
inline constexpr int64_t kPlannedReminders = 30;

/// The form's Save: makes the medicine, created now, and plans its reminders if it is active.
std::shared_ptr<Medicine> addMedicine(const ScreenEnvironment& environment, NewMedicine values);

/// The details' Save: marks the medicine as updated now and plans its reminders anew.
void saveMedicine(const ScreenEnvironment& environment, Medicine& medicine);

/// Cancels what is pending for the medicine and plans again if it is active.
void planRemindersAnew(const ScreenEnvironment& environment, const Medicine& medicine);

/// Cancels what is pending for the medicine, then deletes it together with its logs.
void deleteMedicine(const ScreenEnvironment& environment, const std::shared_ptr<Medicine>& medicine);

}  // namespace pillora

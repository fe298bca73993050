// SPDX-License-Identifier: MIT
#pragma once

#include "linux/SystemBus.h"

namespace pillora {

// The device's owner by whatever the system knows them by, a password as a rule: polkit's action
// org.pillora.Pillora.unlock, which asks the user for their own authentication each time. Its prompt, with the words
// of packaging/org.pillora.Pillora.policy, is shown by the session's authentication agent.

/// Whether the user can be asked, or need not be.
Result<void> canAuthorizeUnlock(SystemBus& bus, Deadline deadline);

/// Asks the user. Errors: refused, dismissed, nobody there to show a prompt, time over, cancelled. The prompt is taken
/// down in every case.
Result<void> authorizeUnlock(SystemBus& bus, Deadline deadline);

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include "linux/SystemBus.h"

namespace pillora {

// The fingerprint reader, through fprintd (net.reactivated.Fprint).

/// Whether there is a reader that knows a finger of this user.
Result<void> canVerifyFingerprint(SystemBus& bus, Deadline deadline);

/// Waits for a finger of this user. A scan that failed is repeated by itself; a finger that is not theirs may be
/// followed by another, three in all. Nothing on the screen tells that the reader waits. Errors: no reader or finger,
/// a reader that another program has claimed, the wrong fingers, a service that vanished, time over, cancelled.
/// The reader is let go in every case.
Result<void> verifyFingerprint(SystemBus& bus, Deadline deadline);

}  // namespace pillora

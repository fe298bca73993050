// SPDX-License-Identifier: MIT
#pragma once

namespace pillora {

/// A short vibration through feedbackd, the service by which a Linux phone makes itself felt (org.sigxcpu.Feedback on
/// the session bus). Does not wait for it; where there is no such service nothing happens.
void vibrate();

}  // namespace pillora

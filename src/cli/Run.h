// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "cli/CliEnvironment.h"

namespace pillora {

/// How a call of pilloractl ends.
enum ExitStatus : int { kDone = 0, kRefused = 1, kWrongUsage = 2, kLocked = 3 };

/// Carries out one call: results go to `out` in one piece, a failure to the environment's console as the one line
/// "pilloractl: …". After a failure nothing was written to `out` and nothing was changed. Answers the exit status.
int run(const std::vector<std::string>& arguments, const CliEnvironment& environment, std::ostream& out);

}  // namespace pillora

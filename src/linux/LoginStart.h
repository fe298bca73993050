// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace pillora {

/// Whether the system is set up to start the agent at each login of this user: systemd wants its user unit, which
/// nobody has masked, or the desktop's autostart has its entry, which nobody has hidden. `root` stands before the paths
/// that are the system's.
bool agentStartsAtLogin(const std::string& root = "");

}  // namespace pillora

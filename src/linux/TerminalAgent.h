// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

namespace pillora {

/// Shows polkit's prompts for this process in the terminal that it runs in, unless an agent of the session does: the
/// program pkttyagent, which comes with polkit, registered for this process alone for as long as this lives. Without a
/// terminal or that program nothing is shown there.
class TerminalAgent {
 public:
  /// Returns once it is registered, or has ended, or after two seconds.
  explicit TerminalAgent(const std::string& program);
  ~TerminalAgent();
  TerminalAgent(const TerminalAgent&) = delete;
  TerminalAgent& operator=(const TerminalAgent&) = delete;

 private:
  pid_t agent_ = -1;
};

/// When this process began, in the kernel's ticks since boot; with its number it names this process and no later one.
/// Zero when it cannot be read.
uint64_t ownStartTime();

}  // namespace pillora

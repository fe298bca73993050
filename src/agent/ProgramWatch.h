// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "agent/Bus.h"
#include "support/FolderWatch.h"

namespace pillora {

/// Ends the event loop when the program's own file was replaced or removed, so that an update reaches people who stay
/// logged in and nothing of a removed program stays. No installer has to know who is logged in.
///
/// The loop ends with `kReplaced` once another file stands there that can run: it is asked for its version first, for
/// an installer may not have put in place yet what it needs. The caller then puts it in its own place. When no file is
/// there any more the loop ends with 0.
class ProgramWatch {
 public:
  static constexpr int kReplaced = 100;  ///< EXIT_FAILURE is sd-bus's for a bus that is gone

  struct Pauses {
    /// Installers take several steps.
    std::chrono::milliseconds untilSettled = std::chrono::seconds(2);
    std::chrono::milliseconds untilTriedAgain = std::chrono::minutes(1);
  };

  /// Nothing ends while `isBusy`. A program whose folder cannot be watched is not. SIGCHLD must be blocked.
  ProgramWatch(sd_event* loop, std::string program, std::function<bool()> isBusy, Pauses pauses);
  ProgramWatch(sd_event* loop, std::string program, std::function<bool()> isBusy)
      : ProgramWatch(loop, std::move(program), std::move(isBusy), Pauses()) {}
  ProgramWatch(const ProgramWatch&) = delete;
  ProgramWatch& operator=(const ProgramWatch&) = delete;

 private:
  void lookIn(std::chrono::milliseconds pause);
  void look();
  void askForItsVersion();
  void answered(bool canRun);

  sd_event* loop_;
  std::string program_, name_;
  std::function<bool()> isBusy_;
  Pauses pauses_;
  std::unique_ptr<FolderWatch> folder_;
  SourceHandle changes_, timer_;
  SourceHandle asked_;  ///< while a program is asked for its version
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <list>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "agent/Bus.h"
#include "agent/TaskLauncher.h"

namespace pillora {

/// Starts a program that goes its own way: a session of its own, nothing on standard input, no other descriptors of
/// ours, signals as at a login. It speaks to our standard output and error, or both go to `speech`. Answers its
/// process id, which the caller reaps.
Result<pid_t> spawn(const std::vector<std::string>& command, int speech = -1);

/// Runs `PROGRAM run-task --scheduled IDENTIFIER` and sees to its end: when the time granted is over it is told to
/// expire by SIGTERM, and when it has not ended a while later it is killed. Nothing wakes for that while nothing runs.
class ProcessLauncher final : public TaskLauncher {
 public:
  struct Limits {
    /// Background work of this kind is granted minutes, not hours. A marking of 50,000 doses, five medicines a minute
    /// for a week, takes four seconds on a busy computer; a phone is slower, and a store that is busy is waited for.
    std::chrono::milliseconds granted = std::chrono::minutes(3);
    /// What systemd, too, leaves between SIGTERM and SIGKILL unless told otherwise.
    std::chrono::milliseconds untilKilled = std::chrono::seconds(90);
  };

  /// `program` is a path, or a name to be looked up in PATH. The loop must outlive the launcher; SIGCHLD must be
  /// blocked in every thread.
  ProcessLauncher(sd_event* loop, std::string program, Limits limits)
      : loop_(loop), program_(std::move(program)), limits_(limits) {}
  ProcessLauncher(sd_event* loop, std::string program) : ProcessLauncher(loop, std::move(program), Limits()) {}

  Result<void> launch(const std::string& identifier) override;
  /// How many runs have not ended.
  size_t running() const { return runs_.size(); }

 private:
  struct Run {
    ProcessLauncher& launcher;
    std::string identifier;
    SourceHandle process, timer;
    bool isExpired = false;
  };

  static int ended(sd_event_source*, const siginfo_t* how, void* run);
  static int timeIsOver(sd_event_source* timer, uint64_t, void* run);
  Result<void> watch(Run& run, pid_t process);

  sd_event* loop_;
  std::string program_;
  Limits limits_;
  std::list<Run> runs_;
};

/// The file that runs; empty when the system does not tell.
std::string ownProgram();

/// The program of ours called `name` that belongs to the one that is running, or `name` itself to be looked up in PATH.
std::string siblingProgram(const std::string& name);

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "agent/ProcessLauncher.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace pillora {

Result<pid_t> spawn(const std::vector<std::string>& command, int speech) {
  std::vector<char*> arguments;
  for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);

  sigset_t none, all;
  sigemptyset(&none);
  sigfillset(&all);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
    if (speech >= 0) posix_spawn_file_actions_adddup2(&actions, speech, stream);
  }
  // A pipe or a lock of whoever called us must not live on in a program that stays.
  posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);

  pid_t process = 0;
  const int failure = posix_spawnp(&process, arguments[0], &actions, &attributes, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (failure != 0) return Error{command.front() + ": " + std::strerror(failure)};
  return process;
}

Result<void> ProcessLauncher::launch(const std::string& identifier) {
  const auto process = spawn({program_, "run-task", "--scheduled", identifier});
  if (!process) return process.error();
  runs_.push_back({*this, identifier, {}, {}});
  if (const auto watched = watch(runs_.back(), *process); !watched) {
    std::fprintf(stderr, "pillora-agent: %s goes on unwatched: %s\n", identifier.c_str(),
                 watched.error().description.c_str());
    runs_.pop_back();
  }
  return {};
}

Result<void> ProcessLauncher::watch(Run& run, pid_t process) {
  sd_event_source* source = nullptr;
  if (const int added = sd_event_add_child(loop_, &source, process, WEXITED, &ProcessLauncher::ended, &run);
      added < 0) {
    return busError("process", added);
  }
  run.process.reset(source);
  const auto granted = std::chrono::microseconds(limits_.granted).count();
  const int added = sd_event_add_time_relative(loop_, &source, CLOCK_MONOTONIC, static_cast<uint64_t>(granted), 0,
                                               &ProcessLauncher::timeIsOver, &run);
  if (added < 0) return busError("timer", added);
  run.timer.reset(source);
  return {};
}

int ProcessLauncher::timeIsOver(sd_event_source* timer, uint64_t, void* run) {
  auto& self = *static_cast<Run*>(run);
  const bool wasTold = std::exchange(self.isExpired, true);
  // Through the source, which knows the process and not only a number that another may bear by now.
  sd_event_source_send_child_signal(self.process.get(), wasTold ? SIGKILL : SIGTERM, nullptr, 0);
  if (wasTold) return 0;
  const auto more = std::chrono::microseconds(self.launcher.limits_.untilKilled).count();
  sd_event_source_set_time_relative(timer, static_cast<uint64_t>(more));
  return sd_event_source_set_enabled(timer, SD_EVENT_ONESHOT);
}

int ProcessLauncher::ended(sd_event_source*, const siginfo_t* how, void* run) {
  auto& self = *static_cast<Run*>(run);
  const bool bySignal = how->si_code != CLD_EXITED;
  if (bySignal || how->si_status != 0) {
    std::fprintf(stderr, "pillora-agent: %s %s by %s %d\n", self.identifier.c_str(),
                 self.isExpired ? "took too long and was ended" : "ended", bySignal ? "signal" : "status",
                 how->si_status);
  }
  self.launcher.runs_.remove_if([&self](const Run& each) { return &each == &self; });
  return 0;
}

std::string ownProgram() {
  std::error_code failure;
  return std::filesystem::read_symlink("/proc/self/exe", failure).string();
}

std::string siblingProgram(const std::string& name) {
  const std::filesystem::path self(ownProgram());
  if (self.empty()) return name;
  // Installed, or in a build tree.
  for (const char* folder : {".", "../libexec", "../bin", "../agent", "../cli"}) {
    const auto sibling = (self.parent_path() / folder / name).lexically_normal();
    if (access(sibling.c_str(), X_OK) == 0) return sibling.string();
  }
  return name;
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "linux/TerminalAgent.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <systemd/sd-login.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace pillora {

namespace {

constexpr int kPatienceMilliseconds = 2000;
constexpr int kNotified = 3;  ///< the agent's descriptor that it closes once it is registered

bool hasTerminal() {
  const int terminal = open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY);
  if (terminal >= 0) close(terminal);
  return terminal >= 0;
}

}  // namespace

TerminalAgent::TerminalAgent(const std::string& program) {
  std::array<int, 2> ends{};
  if (!hasTerminal() || pipe2(ends.data(), O_CLOEXEC) != 0) return;
  std::vector<std::string> words = {program, "--notify-fd", std::to_string(kNotified), "--process",
                                    std::to_string(getpid()) + ',' + std::to_string(ownStartTime())};
  // Behind the session's agent. polkit looks for one to stand behind in sessions only.
  if (sd_pid_get_session(0, nullptr) >= 0) words.emplace_back("--fallback");
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], kNotified);
  if (posix_spawnp(&agent_, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) agent_ = -1;
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  pollfd registered = {ends[0], 0, 0};  // only the closing of its other end
  poll(&registered, 1, kPatienceMilliseconds);
  close(ends[0]);
}

TerminalAgent::~TerminalAgent() {
  if (agent_ <= 0) return;
  kill(agent_, SIGTERM);
  kill(agent_, SIGCONT);  // in case that it was stopped
  waitpid(agent_, nullptr, 0);
}

/// The 22nd field of the process's stat file (proc(5)). The second may hold blanks and brackets.
uint64_t ownStartTime() {
  std::ifstream file("/proc/self/stat");
  std::string line;
  std::getline(file, line);
  std::istringstream fields(line.substr(std::min(line.size(), line.rfind(')') + 1)));
  std::string skipped;
  for (int field = 3; field < 22; ++field) fields >> skipped;
  uint64_t time = 0;
  fields >> time;
  return time;
}

}  // namespace pillora

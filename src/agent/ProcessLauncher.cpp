// SPDX-License-Identifier: MIT
#include "agent/ProcessLauncher.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <unistd.h>

extern char** environ;

namespace pillora {

Result<void> spawn(const std::vector<std::string>& command) {
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

  pid_t process = 0;
  const int failure = posix_spawnp(&process, arguments[0], &actions, &attributes, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (failure != 0) return Error{command.front() + ": " + std::strerror(failure)};
  return {};
}

std::string siblingProgram(const std::string& name) {
  std::error_code failure;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", failure);
  if (failure) return name;
  // Installed, or in a build tree.
  for (const char* folder : {".", "../libexec", "../bin", "../agent", "../cli"}) {
    const auto sibling = (self.parent_path() / folder / name).lexically_normal();
    if (access(sibling.c_str(), X_OK) == 0) return sibling.string();
  }
  return name;
}

}  // namespace pillora

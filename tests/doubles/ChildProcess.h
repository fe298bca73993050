// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace pillora {

/// A program run as a child of the test, with an environment of its own and nothing on standard input.
class ChildProcess {
 public:
  struct Result {
    int status = -1;  ///< the exit status; -1 when a signal ended the child
    std::string out, err;
  };

  /// Starts `words[0]`; `environment` holds "NAME=value" entries and is the whole environment.
  ChildProcess(std::vector<std::string> words, std::vector<std::string> environment) {
    std::array<int, 2> out{}, err{};
    if (pipe2(out.data(), O_CLOEXEC) != 0 || pipe2(err.data(), O_CLOEXEC) != 0) std::abort();
    const auto argv = pointers(words);
    const auto envp = pointers(environment);
    child_ = fork();
    if (child_ == 0) {
      dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
      dup2(out[1], STDOUT_FILENO);
      dup2(err[1], STDERR_FILENO);
      execve(argv[0], argv.data(), envp.data());
      _exit(127);
    }
    close(out[1]);
    close(err[1]);
    out_ = out[0];
    err_ = err[0];
  }
  ChildProcess(ChildProcess&& other) noexcept
      : child_(std::exchange(other.child_, -1)), out_(other.out_), err_(other.err_) {}
  ~ChildProcess() {
    if (child_ != -1) finish();
  }

  /// Reads what the child prints until it ends.
  Result finish() {
    Result result;
    std::array<pollfd, 2> open = {{{out_, POLLIN, 0}, {err_, POLLIN, 0}}};
    while (open[0].fd >= 0 || open[1].fd >= 0) {
      poll(open.data(), open.size(), -1);
      drain(open[0], result.out);
      drain(open[1], result.err);
    }
    int status = 0;
    waitpid(std::exchange(child_, -1), &status, 0);
    if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
    return result;
  }

 private:
  static std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
  }

  static void drain(pollfd& from, std::string& into) {
    if (from.fd < 0 || from.revents == 0) return;
    std::array<char, 65536> buffer{};
    const ssize_t got = read(from.fd, buffer.data(), buffer.size());
    if (got > 0) {
      into.append(buffer.data(), static_cast<size_t>(got));
    } else {
      close(from.fd);
      from.fd = -1;
    }
  }

  pid_t child_;
  int out_ = -1, err_ = -1;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "linux/TerminationWatch.h"

#include <array>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>
#include <utility>

namespace pillora {

namespace {

/// Reads a signal if one is waiting.
bool takeSignal(int signals) {
  signalfd_siginfo signal{};
  return read(signals, &signal, sizeof signal) == sizeof signal;
}

void watch(int signals, int stop, const std::function<void()>& ended) {
  std::array<pollfd, 2> awaited = {{{signals, POLLIN, 0}, {stop, POLLIN, 0}}};
  while (awaited[1].revents == 0) {
    poll(awaited.data(), awaited.size(), -1);
    if (takeSignal(signals)) ended();
  }
}

}  // namespace

TerminationWatch::TerminationWatch(std::function<void()> ended) {
  sigset_t terminating;
  sigemptyset(&terminating);
  sigaddset(&terminating, SIGTERM);
  signals_ = signalfd(-1, &terminating, SFD_NONBLOCK | SFD_CLOEXEC);
  stop_ = eventfd(0, EFD_CLOEXEC);
  if (signals_ < 0 || stop_ < 0) return;  // no descriptors left: the signal ends the process as ever
  pthread_sigmask(SIG_BLOCK, &terminating, &maskBefore_);
  thread_ = std::thread([signals = signals_, stop = stop_, told = std::move(ended)] { watch(signals, stop, told); });
}

TerminationWatch::~TerminationWatch() {
  if (thread_.joinable()) {
    const uint64_t one = 1;
    static_cast<void>(!write(stop_, &one, sizeof one));
    thread_.join();
    pthread_sigmask(SIG_SETMASK, &maskBefore_, nullptr);
  }
  if (signals_ >= 0) close(signals_);
  if (stop_ >= 0) close(stop_);
}

}  // namespace pillora

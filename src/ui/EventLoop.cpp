// SPDX-License-Identifier: MIT
#include "ui/EventLoop.h"

#include <QAbstractEventDispatcher>
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace pillora {

namespace {

constexpr std::array kTerminating = {SIGTERM, SIGINT};

/// What the handler of signals writes to, which is told nothing.
int signalled = -1;

void wakeUp(int) {
  const int failure = errno;
  const uint64_t one = 1;
  static_cast<void>(!write(signalled, &one, sizeof one));
  errno = failure;
}

}  // namespace

PolledConnection::PolledConnection(int descriptor, std::function<void()> process, std::function<bool()> wantsToWrite)
    : readable_(descriptor, QSocketNotifier::Read), writable_(descriptor, QSocketNotifier::Write) {
  writable_.setEnabled(false);
  connect(&readable_, &QSocketNotifier::activated, this, process);
  connect(&writable_, &QSocketNotifier::activated, this, process);
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
          [this, process, wantsToWrite = std::move(wantsToWrite)] {
            process();
            writable_.setEnabled(wantsToWrite());
          });
}

FolderNotifier::FolderNotifier(const std::string& folder, const Names& names, const std::function<void()>& changed) {
  auto opened = FolderWatch::open(folder);
  if (!opened) return;
  watch_ = *std::move(opened);
  readable_.emplace(watch_->descriptor(), QSocketNotifier::Read);
  connect(&*readable_, &QSocketNotifier::activated, this, [this, names, changed] {
    if (watch_->takeChanges(names)) changed();
  });
}

TerminationNotifier::TerminationNotifier(const std::function<void()>& told) {
  signalled = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (signalled < 0) return;  // no descriptors left: a signal ends the process as ever
  signalled_.emplace(signalled, QSocketNotifier::Read);
  connect(&*signalled_, &QSocketNotifier::activated, this, [told] {
    uint64_t count = 0;
    if (read(signalled, &count, sizeof count) == sizeof count) told();
  });
  for (const int signal : kTerminating) std::signal(signal, &wakeUp);
}

TerminationNotifier::~TerminationNotifier() {
  if (!signalled_) return;
  for (const int signal : kTerminating) std::signal(signal, SIG_DFL);
  signalled_.reset();
  close(std::exchange(signalled, -1));
}

DeadlineTimer::DeadlineTimer(const Clock& clock, std::function<std::optional<Instant>()> next,
                             std::function<void()> reached)
    : clock_(clock), next_(std::move(next)), reached_(std::move(reached)) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, [this] {
    const auto deadline = next_();
    if (deadline && *deadline <= clock_.now()) reached_();
  });
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &DeadlineTimer::await);
}

void DeadlineTimer::await() {
  using namespace std::chrono;
  const auto deadline = next_();
  if (!deadline) return timer_.stop();
  const auto wait = std::clamp<milliseconds>(ceil<milliseconds>(*deadline - clock_.now()), milliseconds(1), minutes(1));
  if (!timer_.isActive() || timer_.remainingTimeAsDuration() > wait) timer_.start(wait);
}

}  // namespace pillora

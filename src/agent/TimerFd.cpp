// SPDX-License-Identifier: MIT
#include "agent/TimerFd.h"

#include <algorithm>
#include <cerrno>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace pillora {

namespace {

constexpr int64_t kSecond = 1'000'000;
/// A thousand years from 1970. What lies beyond is looked at again then.
constexpr int64_t kFarthest = 31'556'952'000 * kSecond;

}  // namespace

Result<std::unique_ptr<TimerFd>> TimerFd::open(sd_event* event) {
  int descriptor = timerfd_create(CLOCK_REALTIME_ALARM, TFD_NONBLOCK | TFD_CLOEXEC);
  const bool wakesTheDevice = descriptor >= 0;
  if (!wakesTheDevice) descriptor = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
  if (descriptor < 0) return busError("timer", errno);
  std::unique_ptr<TimerFd> timer(new TimerFd(descriptor, wakesTheDevice));
  sd_event_source* source = nullptr;
  const int added = sd_event_add_io(event, &source, descriptor, EPOLLIN, &TimerFd::expired, timer.get());
  if (added < 0) return busError("timer", added);
  timer->source_.reset(source);
  return timer;
}

TimerFd::~TimerFd() {
  source_.reset();
  close(descriptor_);
}

void TimerFd::arm(std::optional<Instant> instant) {
  itimerspec time{};
  if (instant) {
    // Zero would stop the timer.
    const int64_t when = std::clamp<int64_t>(instant->microseconds(), 1, kFarthest);
    time.it_value.tv_sec = static_cast<time_t>(when / kSecond);
    time.it_value.tv_nsec = static_cast<long>(when % kSecond * 1000);
  }
  timerfd_settime(descriptor_, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &time, nullptr);
}

int TimerFd::expired(sd_event_source*, int descriptor, uint32_t, void* self) {
  uint64_t expirations = 0;
  // ECANCELED means that the clock was set.
  const ssize_t got = read(descriptor, &expirations, sizeof expirations);
  const bool woke = got == sizeof expirations || (got < 0 && errno == ECANCELED);
  const auto& wake = static_cast<TimerFd*>(self)->wake_;
  if (woke && wake) wake();
  return 0;
}

}  // namespace pillora

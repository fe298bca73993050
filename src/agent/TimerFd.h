// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "agent/Bus.h"
#include "agent/WakeTimer.h"

namespace pillora {

/// A kernel timer on the real-time clock. Where the kernel and the process's capabilities allow it
/// (CLOCK_REALTIME_ALARM, CAP_WAKE_ALARM) it wakes a sleeping device; otherwise it goes off on resume.
class TimerFd final : public WakeTimer {
 public:
  static Result<std::unique_ptr<TimerFd>> open(sd_event* event);
  ~TimerFd() override;

  void onWake(std::function<void()> wake) override { wake_ = std::move(wake); }
  void arm(std::optional<Instant> instant) override;
  bool wakesTheDevice() const { return wakesTheDevice_; }

 private:
  TimerFd(int descriptor, bool wakesTheDevice) : descriptor_(descriptor), wakesTheDevice_(wakesTheDevice) {}
  static int expired(sd_event_source*, int descriptor, uint32_t, void* self);

  int descriptor_;
  bool wakesTheDevice_;
  std::function<void()> wake_;
  SourceHandle source_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include "agent/ProcessLauncher.h"
#include "agent/TimerFd.h"
#include "agent/ZoneWatch.h"
#include "doubles/TemporaryFolder.h"
#include "linux/SystemClock.h"

namespace pillora {
namespace {

class SystemEvents : public ::testing::Test {
 protected:
  void SetUp() override {
    sd_event* loop = nullptr;
    ASSERT_GE(sd_event_new(&loop), 0);
    event.reset(loop);
  }
  /// Runs the loop until `happened`, for at most ten seconds.
  bool runUntil(const std::function<bool()>& happened) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!happened() && std::chrono::steady_clock::now() < deadline) sd_event_run(event.get(), 100'000);
    return happened();
  }
  /// Handles what is ready already.
  void runWhatIsReady() {
    while (sd_event_run(event.get(), 0) > 0) {
    }
  }

  TemporaryFolder folder;
  EventHandle event;
  SystemClock clock;
  int calls = 0;
};

TEST_F(SystemEvents, theTimerGoesOffAtItsTimeAndOnce) {
  const auto timer = TimerFd::open(event.get());
  ASSERT_TRUE(timer) << timer.error().description;
  std::optional<Instant> woke;
  (*timer)->onWake([&] {
    ++calls;
    woke = clock.now();
  });
  const Instant due = clock.now() + std::chrono::milliseconds(50);
  (*timer)->arm(due);
  ASSERT_TRUE(runUntil([&] { return calls > 0; }));
  EXPECT_GE(*woke, due);
  runWhatIsReady();
  EXPECT_EQ(calls, 1);
}

TEST_F(SystemEvents, theTimerGoesOffAtOnceForThePast) {
  const auto timer = TimerFd::open(event.get());
  ASSERT_TRUE(timer);
  (*timer)->onWake([&] { ++calls; });
  for (const Instant past : {clock.now() - std::chrono::hours(1), Instant(), Instant::distantPast()}) {
    calls = 0;
    (*timer)->arm(past);
    EXPECT_TRUE(runUntil([&] { return calls == 1; })) << iso8601(past);
  }
}

TEST_F(SystemEvents, theTimerKeepsTheLastTimeItWasArmedFor) {
  const auto timer = TimerFd::open(event.get());
  ASSERT_TRUE(timer);
  (*timer)->onWake([&] { ++calls; });
  (*timer)->arm(clock.now() - std::chrono::hours(1));
  (*timer)->arm(Instant::distantFuture());
  runWhatIsReady();
  EXPECT_EQ(calls, 0);
  (*timer)->arm(clock.now() - std::chrono::hours(1));
  (*timer)->arm(std::nullopt);
  runWhatIsReady();
  EXPECT_EQ(calls, 0);
}

/// Takes the right to wake the device from this thread while it lives.
class WithoutAlarms {
 public:
  WithoutAlarms() {
    syscall(SYS_capget, &header_, before_.data());
    auto without = before_;
    without[CAP_TO_INDEX(CAP_WAKE_ALARM)].effective &= ~CAP_TO_MASK(CAP_WAKE_ALARM);
    EXPECT_EQ(syscall(SYS_capset, &header_, without.data()), 0);
  }
  ~WithoutAlarms() { syscall(SYS_capset, &header_, before_.data()); }

 private:
  __user_cap_header_struct header_{_LINUX_CAPABILITY_VERSION_3, 0};
  std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> before_{};
};

TEST_F(SystemEvents, whoMayNotWakeTheDeviceHasATimerThatGoesOffAllTheSame) {
  const WithoutAlarms without;
  const auto timer = TimerFd::open(event.get());
  ASSERT_TRUE(timer) << timer.error().description;
  EXPECT_FALSE((*timer)->wakesTheDevice());
  (*timer)->onWake([&] { ++calls; });
  const Instant due = clock.now() + std::chrono::milliseconds(20);
  (*timer)->arm(due);
  ASSERT_TRUE(runUntil([&] { return calls == 1; }));
  EXPECT_GE(clock.now(), due);
}

TEST_F(SystemEvents, whoMayWakeTheDeviceHasATimerThatDoes) {
  const int alarm = timerfd_create(CLOCK_REALTIME_ALARM, TFD_CLOEXEC);
  const bool may = alarm >= 0;
  if (may) close(alarm);
  const auto timer = TimerFd::open(event.get());
  ASSERT_TRUE(timer);
  EXPECT_EQ((*timer)->wakesTheDevice(), may);
}

TEST_F(SystemEvents, theZoneWatchSeesALinkThatIsReplacedAndNothingElse) {
  std::filesystem::create_symlink("/usr/share/zoneinfo/UTC", folder.path() + "/localtime");
  const ZoneWatch watch(event.get(), folder.path(), [&] { ++calls; });
  std::ofstream(folder.path() + "/resolv.conf") << "nameserver ::1\n";
  std::filesystem::create_symlink("elsewhere", folder.path() + "/localtime2");
  runWhatIsReady();
  EXPECT_EQ(calls, 0);
  std::filesystem::create_symlink("/usr/share/zoneinfo/Asia/Kolkata", folder.path() + "/new");
  std::filesystem::rename(folder.path() + "/new", folder.path() + "/localtime");
  EXPECT_TRUE(runUntil([&] { return calls == 1; }));
  std::filesystem::remove(folder.path() + "/localtime");
  std::filesystem::create_symlink("/usr/share/zoneinfo/UTC", folder.path() + "/localtime");
  EXPECT_TRUE(runUntil([&] { return calls == 2; }));
}

TEST_F(SystemEvents, aFolderThatIsMissingIsNoReasonToFail) {
  const ZoneWatch watch(event.get(), folder.path() + "/missing", [&] { ++calls; });
  runWhatIsReady();
  EXPECT_EQ(calls, 0);
}

TEST_F(SystemEvents, aProgramThatIsMissingIsAnError) {
  const auto started = ProcessLauncher(event.get(), "/nonexistent/pilloractl").launch("check");
  ASSERT_FALSE(started);
  EXPECT_NE(started.error().description.find("/nonexistent/pilloractl"), std::string::npos);
}

TEST_F(SystemEvents, aProgramOfOursIsFoundBesideTheOneThatRunsOrByItsNameAlone) {
  EXPECT_EQ(siblingProgram("no-such-program"), "no-such-program");
  const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
  EXPECT_EQ(siblingProgram(std::filesystem::path(self).filename().string()), self);
}

}  // namespace
}  // namespace pillora

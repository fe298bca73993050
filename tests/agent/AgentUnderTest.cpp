// SPDX-License-Identifier: MIT
// The agent with a clock, a timer and a zone that a test moves over the bus: everything but these is what people run.
//
//     pillora-agent-under-test FILE MICROSECONDS PROGRAM FOLDER GRANTED UNTIL_KILLED
//
// PROGRAM runs background tasks, which are granted so many milliseconds. FOLDER stands for /etc.
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>

#include "agent/Agent.h"
#include "agent/ProcessLauncher.h"
#include "agent/ProgramWatch.h"
#include "agent/ZoneWatch.h"

namespace pillora {
namespace {

class MovableTime final : public Clock, public WakeTimer {
 public:
  explicit MovableTime(Instant now) : now_(now) {}

  Instant now() const override { return now_; }
  void onWake(std::function<void()> wake) override { wake_ = std::move(wake); }
  void arm(std::optional<Instant> instant) override { armed_ = instant; }

  /// Time passes; the timer goes off when it was armed for then.
  void passUntil(Instant now) {
    now_ = now;
    if (armed_ && *armed_ <= now_) wake_();
  }
  /// The clock is set; an armed timer goes off.
  void stepTo(Instant now) {
    now_ = now;
    if (armed_) wake_();
  }
  int64_t armed() const { return armed_ ? armed_->microseconds() : -1; }

 private:
  Instant now_;
  std::optional<Instant> armed_;
  std::function<void()> wake_;
};

/// The zone that `localtime` in a folder links to; TZ where there is no such link. The C library looks into /etc only,
/// so it is told the file.
class LinkedZone final : public ZoneRules {
 public:
  explicit LinkedZone(std::string folder) : link_(std::move(folder) + "/localtime") {}

  std::optional<Instant> instantOf(const WallTime& wall) const override { return library_.instantOf(wall); }
  void refresh() override {
    std::array<char, 4096> target{};
    if (readlink(link_.c_str(), target.data(), target.size() - 1) > 0) {
      setenv("TZ", (":" + std::string(target.data())).c_str(), 1);
    }
    library_.refresh();
  }

 private:
  std::string link_;
  LibraryZone library_;
};

struct Controls {
  MovableTime& time;
  Agent& agent;
  ProcessLauncher& launcher;

  static Controls& of(void* self) { return *static_cast<Controls*>(self); }
  static Instant instantIn(sd_bus_message* call) {
    int64_t microseconds = 0;
    sd_bus_message_read(call, "x", &microseconds);
    return Instant(Instant::Duration(microseconds));
  }
  static int pass(sd_bus_message* call, void* self, sd_bus_error*) {
    of(self).time.passUntil(instantIn(call));
    return sd_bus_reply_method_return(call, "x", of(self).time.armed());
  }
  static int step(sd_bus_message* call, void* self, sd_bus_error*) {
    of(self).time.stepTo(instantIn(call));
    return sd_bus_reply_method_return(call, "x", of(self).time.armed());
  }
  static int setZone(sd_bus_message* call, void* self, sd_bus_error*) {
    const char* zone = nullptr;
    sd_bus_message_read(call, "s", &zone);
    setenv("TZ", zone, 1);
    of(self).agent.zoneChanged();
    return sd_bus_reply_method_return(call, "x", of(self).time.armed());
  }
  static int running(sd_bus_message* call, void* self, sd_bus_error*) {
    return sd_bus_reply_method_return(call, "x", static_cast<int64_t>(of(self).launcher.running()));
  }
};

const sd_bus_vtable kControls[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Pass", "x", "x", Controls::pass, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Step", "x", "x", Controls::step, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("SetZone", "s", "x", Controls::setZone, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Running", "", "x", Controls::running, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

constexpr std::chrono::milliseconds kMoment{20};

Result<int> run(char** arguments, const std::string& program) {
  const Instant now{Instant::Duration(std::atoll(arguments[2]))};
  sd_event* loop = nullptr;
  sd_bus* session = nullptr;
  if (const int made = sd_event_default(&loop); made < 0) return busError("event loop", made);
  const EventHandle event(loop);
  if (const int opened = sd_bus_open_user(&session); opened < 0) return busError("no session bus", opened);
  const BusHandle bus(session);
  sd_bus_attach_event(session, loop, SD_EVENT_PRIORITY_NORMAL);
  sd_event_add_signal(loop, nullptr, SIGTERM, nullptr, nullptr);
  sd_bus_set_exit_on_disconnect(session, 1);
  sd_bus_set_close_on_exit(session, 0);  // what lies in its queue is still handled
  MovableTime time(now);
  LinkedZone zone(arguments[4]);
  ProcessLauncher launcher(
      loop, arguments[3],
      {std::chrono::milliseconds(std::atoll(arguments[5])), std::chrono::milliseconds(std::atoll(arguments[6]))});
  const auto agent = Agent::start({session, time, time, zone, launcher}, arguments[1]);
  if (!agent) return agent.error();
  if (*agent == nullptr) return 0;
  const ZoneWatch zoneWatch(loop, arguments[4], [&agent = **agent] { agent.zoneChanged(); });
  const ProgramWatch programWatch(loop, program, [&launcher] { return launcher.running() > 0; }, {kMoment, kMoment});
  Controls controls{time, **agent, launcher};
  sd_bus_add_object_vtable(session, nullptr, "/org/pillora/Pillora/AgentUnderTest",
                           "org.pillora.Pillora.AgentUnderTest1", kControls, &controls);
  sd_bus_request_name(session, "org.pillora.Pillora.AgentUnderTest", 0);
  const int ended = sd_event_loop(loop);
  (*agent)->retire();
  return ended;
}

}  // namespace
}  // namespace pillora

int main(int count, char** arguments) {
  if (count == 2) return std::string_view(arguments[1]) == "--version" ? 0 : 2;
  if (count != 7) return 2;
  sigset_t awaited;
  sigemptyset(&awaited);
  for (const int signal : {SIGTERM, SIGCHLD}) sigaddset(&awaited, signal);
  sigprocmask(SIG_BLOCK, &awaited, nullptr);
  const std::string program = pillora::ownProgram();
  const auto ended = pillora::run(arguments, program);
  if (ended && *ended == pillora::ProgramWatch::kReplaced) execv(program.c_str(), arguments);
  if (ended) return *ended == 0 ? 0 : 1;
  std::fprintf(stderr, "%s\n", ended.error().description.c_str());
  return 1;
}

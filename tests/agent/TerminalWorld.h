// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

#include "agent/AgentFixture.h"
#include "doubles/ChildProcess.h"
#include "linux/SystemClock.h"
#include "support/Json.h"

namespace pillora {

/// A zone in which it is noon now, so that no test that goes by the real clock meets a midnight.
inline std::string noonZone() {
  const int64_t hour = floorDiv(SystemClock().now().microseconds(), 3'600'000'000) % 24;
  return "Etc/GMT" + std::string(hour < 12 ? "-" : "+") + std::to_string(hour < 12 ? 12 - hour : hour - 12);
}

/// Terminals with the real pilloractl on a private bus, in folders of their own.
class TerminalWorld : public ::testing::Test {
 protected:
  TerminalWorld() {
    world.now = SystemClock().now();
    world.taskProgram = PILLORACTL;
    world.extraEnvironment = folders();
  }

  std::vector<std::string> folders() const {
    const std::string path = world.folder.path();
    return {"HOME=" + path, "XDG_DATA_HOME=" + path + "/data", "XDG_STATE_HOME=" + path + "/state"};
  }
  std::string reminderFile() const { return world.folder.path() + "/state/pillora/reminders.db"; }

  ChildProcess::Result call(const std::vector<std::string>& words, bool withBus = true) {
    std::vector<std::string> command = {PILLORACTL};
    command.insert(command.end(), words.begin(), words.end());
    auto environment = folders();
    environment.insert(environment.end(), {"TZ=" + world.zoneName, "LC_ALL=C.UTF-8"});
    if (withBus) environment.push_back("DBUS_SESSION_BUS_ADDRESS=" + world.bus.address());
    // Read by a thread, since the test's own notification server has to answer meanwhile.
    auto ended = std::async(std::launch::async,
                            [child = ChildProcess(command, environment)]() mutable { return child.finish(); });
    EXPECT_TRUE(world.waitFor([&] { return ended.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    return ended.get();
  }
  /// What a command printed as JSON; it must succeed.
  Json json(std::vector<std::string> words, bool withBus = true) {
    words.insert(words.begin(), "--json");
    const auto called = call(words, withBus);
    EXPECT_EQ(called.status, 0) << words[1] << ": " << called.err;
    const auto parsed = parseJson(called.out);
    return parsed ? *parsed : Json();
  }
  size_t planned(bool withBus = true) { return json({"reminders"}, withBus).at("requests").size(); }
  pid_t agentProcess() const {
    sd_bus_message* message = nullptr;
    const int asked =
        sd_bus_call_method(world.own.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "GetConnectionUnixProcessID", nullptr, &message, "s", kAgentName);
    const MessageHandle reply(message);
    uint32_t process = 0;
    EXPECT_TRUE(asked >= 0 && sd_bus_message_read(message, "u", &process) > 0);
    return static_cast<pid_t>(process);
  }

  AgentWorld world{noonZone()};
};

}  // namespace pillora

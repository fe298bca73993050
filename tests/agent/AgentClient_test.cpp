// SPDX-License-Identifier: MIT
#include "agent/AgentClient.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "agent/AgentTest.h"

namespace pillora {
namespace {

using Names = std::vector<std::string>;

class AgentClientTest : public AgentTest {};

TEST_F(AgentClientTest, aRequestThatTheBusCannotCarryIsRefusedAlone) {
  std::vector<std::string> failures;
  UNNotificationRequest broken = request("broken", "2025-01-10T13:00");
  broken.content.body = "\xFF";
  UNNotificationRequest noDate = request("no date", "2025-01-10T13:00");
  noDate.trigger.wallTime.day = 300;
  for (const auto& each : {request("A", "2025-01-10T13:00"), broken, noDate, request("B", "2025-01-10T13:00")}) {
    world.client->add(each, [&, name = each.identifier](const std::optional<Error>& error) {
      if (error) failures.push_back(name);
    });
  }
  world.settle();
  EXPECT_EQ(failures, (Names{"broken", "no date"}));
  EXPECT_EQ(world.pending(), (Names{"A", "B"}));
}

TEST(AgentClientAlone, withoutABusThereIsNoAgent) {
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
  QueuedMainExecutor executor;
  EXPECT_FALSE(AgentClient::connect(executor, {}));
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

TEST(AgentClientAlone, withoutAnAgentItSaysSo) {
  AgentWorld world;
  EXPECT_FALSE(AgentClient::connect(world.executor, {}));
  EXPECT_FALSE(AgentClient::connect(world.executor, {"/nonexistent/pillora-agent", std::chrono::milliseconds(100)}));
}

TEST(AgentClientAlone, theBusStartsTheAgent) {
  AgentWorld world;
  const std::string script = world.folder.path() + "/start";
  std::ofstream(script) << "#!/bin/sh\nexec " << PILLORA_AGENT_UNDER_TEST << " " << world.folder.path()
                        << "/reminders.db 0 true\n";
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  std::ofstream(world.bus.services() + "/org.pillora.Pillora.Agent.service")
      << "[D-BUS Service]\nName=org.pillora.Pillora.Agent\nExec=" << script << "\n";
  ASSERT_GE(sd_bus_call_method(world.own.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                               "ReloadConfig", nullptr, nullptr, nullptr),
            0);
  world.connectClient();
  world.add("A", "2025-01-10T13:00");
  EXPECT_EQ(world.pending(), Names{"A"});
}

TEST(AgentClientAlone, anAgentThatDiesFailsWhatItOwes) {
  AgentWorld world;
  world.startServer();
  world.startAgent();
  world.connectClient();
  world.agent.kill();
  std::vector<std::string> failures;
  world.client->add(request("A", "2025-01-10T13:00"),
                    [&](const std::optional<Error>& error) { failures.push_back(error ? error->description : ""); });
  world.settle();
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_NE(failures.front(), "");
  EXPECT_FALSE(world.client->submit({"check", std::nullopt, false, false}));
}

}  // namespace
}  // namespace pillora

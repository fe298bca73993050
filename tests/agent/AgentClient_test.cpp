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
  const auto connected = AgentClient::connect(executor, {});
  ASSERT_TRUE(connected) << connected.error().description;
  EXPECT_EQ(*connected, nullptr);
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
  std::ofstream start(script);
  start << "#!/bin/sh\nexec";
  for (const auto& word : world.agentCommand(world.folder.path() + "/reminders.db")) start << " '" << word << "'";
  start << "\n";
  start.close();
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
  EXPECT_TRUE(world.client->finish()) << "the completion has told it";
  EXPECT_FALSE(world.client->submit({"check", std::nullopt, false, false}));
}

TEST(AgentClientAlone, whatNoCompletionTellsFinishTells) {
  AgentWorld world;
  world.startServer();
  world.startAgent();
  world.connectClient();
  world.client->setBadgeCount(-1);
  const auto refused = world.client->finish();
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().description, "the badge count is negative");
  EXPECT_TRUE(world.client->finish());
  world.agent.kill();
  world.client->removePendingNotificationRequests({"A"});
  EXPECT_FALSE(world.client->finish());
  EXPECT_TRUE(world.pending().empty());
  EXPECT_FALSE(world.client->finish()) << "a listing that is empty because nobody answered";
}

TEST(AgentClientAlone, anAgentThatEndsAtItsStartSaysWhy) {
  AgentWorld world;
  const std::string script = world.folder.path() + "/start";
  std::ofstream(script) << "#!/bin/sh\necho 'pillora-agent: the file is damaged' >&2\necho more >&2\nexit 1\n";
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  const auto connected = AgentClient::connect(world.executor, {script});
  ASSERT_FALSE(connected);
  EXPECT_EQ(connected.error().description, "pillora-agent: the file is damaged");
}

}  // namespace
}  // namespace pillora

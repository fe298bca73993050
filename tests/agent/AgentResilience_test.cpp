// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "agent/AgentTest.h"

namespace pillora {
namespace {

using Names = std::vector<std::string>;

class AgentResilience : public AgentTest {};

TEST_F(AgentResilience, survivesARestartOfTheServer) {
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  world.stopServer();
  ASSERT_TRUE(world.waitFor([&] { return !PrivateBus::isOwned(world.own.get(), "org.freedesktop.Notifications"); }));
  world.startServer();
  world.add("B", "2025-01-10T14:00");
  world.pass("2025-01-10T14:00:00Z");
  EXPECT_TRUE(world.waitForNotified(1));
}

TEST_F(AgentResilience, whatAServerTookToItsGraveIsShownByTheNext) {
  world.add("A", "2025-01-10T13:00");
  world.server->beforeAnswer = [] { return false; };
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  world.stopServer();
  world.startServer();
  ASSERT_TRUE(world.waitForNotified(1));
  EXPECT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
}

TEST_F(AgentResilience, whatAServerRefusesStaysAndIsTriedAgain) {
  world.server->refuses = true;
  world.add("A", "2025-01-10T13:00");
  world.add("B", "2025-01-10T14:00");
  world.pass("2025-01-10T13:00:00Z");
  world.server->refuses = false;
  world.pass("2025-01-10T14:00:00Z");
  ASSERT_TRUE(world.waitForNotified(2));
  EXPECT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
}

TEST_F(AgentResilience, whatFellDueWithoutAServerIsShownWhenOneAppears) {
  world.stopServer();
  world.add(kAspirin + "-1.0", "2025-01-10T13:00");
  world.add(kAspirin + "-2.0", "2025-01-10T14:00");
  world.pass("2025-01-10T13:00:00Z");
  world.pass("2025-01-10T14:00:00Z");
  world.pass("2025-01-10T16:00:00Z");
  EXPECT_FALSE(world.pending().empty());
  world.startServer();
  ASSERT_TRUE(world.waitForNotified(1));
  ASSERT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
  EXPECT_EQ(world.server->notified.size(), 1u);
}

TEST_F(AgentResilience, withoutAServerPermissionIsRefusedAndSaysWhy) {
  const auto ask = [this] {
    std::optional<std::pair<bool, std::string>> answer;
    world.client->requestAuthorization(7, [&](bool granted, const std::optional<Error>& error) {
      answer = {granted, error ? error->description : ""};
    });
    world.settle();
    return answer.value_or(std::pair(false, std::string("no answer")));
  };
  const auto status = [this] {
    UNNotificationSettings settings;
    world.client->getNotificationSettings([&](UNNotificationSettings found) { settings = found; });
    world.settle();
    return settings.authorizationStatus;
  };
  world.stopServer();
  ASSERT_TRUE(world.waitFor([&] { return !PrivateBus::isOwned(world.own.get(), "org.freedesktop.Notifications"); }));
  const auto refused = ask();
  EXPECT_FALSE(refused.first);
  EXPECT_EQ(refused.second.rfind("no notification server", 0), 0u) << refused.second;
  EXPECT_EQ(status(), UNAuthorizationStatus::denied);
  world.startServer();
  EXPECT_EQ(ask(), std::pair(true, std::string()));
  EXPECT_EQ(status(), UNAuthorizationStatus::authorized);
}

TEST_F(AgentResilience, everythingSurvivesAKill) {
  world.add("A", "2025-01-10T13:00");
  world.client->setBadgeCount(3);
  world.settle();
  world.killAgent();
  world.startAgent();
  EXPECT_EQ(world.pending(), Names{"A"});
  int64_t badge = 0;
  world.client->getBadgeCount([&](int64_t count) { badge = count; });
  EXPECT_EQ(badge, 3);
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  EXPECT_EQ(lastNotified().actions.size(), 8u);
}

TEST_F(AgentResilience, killedWhileShowingItReplacesTheBubbleAfterTheRestart) {
  world.add("A", "2025-01-10T13:00");
  world.server->beforeAnswer = [this] {
    world.agent.kill();
    world.server->beforeAnswer = nullptr;
    return false;
  };
  sd_bus_call_method_async(world.own.get(), nullptr, "org.pillora.Pillora.AgentUnderTest",
                           "/org/pillora/Pillora/AgentUnderTest", "org.pillora.Pillora.AgentUnderTest1", "Pass",
                           nullptr, nullptr, "x", at("2025-01-10T13:00:00Z").microseconds());
  ASSERT_TRUE(world.waitForNotified(1));
  ASSERT_TRUE(world.waitFor([&] { return !PrivateBus::isOwned(world.own.get(), kAgentName); }));
  world.now = at("2025-01-10T13:00:05Z");
  world.startAgent();
  ASSERT_TRUE(world.waitForNotified(2));
  EXPECT_EQ(world.server->onScreen.size(), 1u);
  ASSERT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
}

TEST_F(AgentResilience, aSleepShowsTheNewestOverdueAlone) {
  world.add(kAspirin + "-1.0", "2025-01-10T13:00");
  world.add(kAspirin + "-2.0", "2025-01-10T14:00");
  world.add(kAspirin + "-3.0", "2025-01-11T13:00");
  world.pass("2025-01-10T20:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  ASSERT_TRUE(world.waitFor([&] { return world.pending() == Names{kAspirin + "-3.0"}; }));
  EXPECT_EQ(world.server->notified.size(), 1u);
}

TEST_F(AgentResilience, followsTheZoneAndTheClock) {
  world.add("A", "2025-01-10T13:00");
  world.setZone("America/New_York");
  world.pass("2025-01-10T13:00:00Z");
  EXPECT_EQ(world.pending(), Names{"A"});
  world.step("2025-01-10T11:00:00Z");
  EXPECT_EQ(world.pending(), Names{"A"});
  world.step("2025-01-10T19:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  world.step("2025-01-10T17:00:00Z");
  world.pass("2025-01-10T18:00:00Z");
  ASSERT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
  EXPECT_EQ(world.server->notified.size(), 1u);
}

TEST_F(AgentResilience, tellsLaunchersTheBadge) {
  int64_t count = -1;
  sd_bus_match_signal(
      world.own.get(), nullptr, nullptr, nullptr, "com.canonical.Unity.LauncherEntry", "Update",
      [](sd_bus_message* signal, void* told, sd_bus_error*) {
        const char* uri = nullptr;
        const char* key = nullptr;
        sd_bus_message_read(signal, "s", &uri);
        EXPECT_STREQ(uri, "application://org.pillora.Pillora.desktop");
        sd_bus_message_enter_container(signal, 'a', "{sv}");
        sd_bus_message_enter_container(signal, 'e', "sv");
        sd_bus_message_read(signal, "sv", &key, "x", told);
        EXPECT_STREQ(key, "count");
        return 0;
      },
      &count);
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  EXPECT_TRUE(world.waitFor([&] { return count == 1; }));
  world.client->setBadgeCount(0);
  world.settle();
  EXPECT_TRUE(world.waitFor([&] { return count == 0; }));
}

TEST_F(AgentResilience, aSecondAgentLeavesTheFirstAlone) {
  auto environment = world.bus.environment();
  StartedProgram second(world.agentCommand(world.folder.path() + "/other.db"), environment);
  EXPECT_EQ(second.wait(), 0);
  EXPECT_FALSE(std::filesystem::exists(world.folder.path() + "/other.db"));
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "agent/AgentTest.h"
#include "agent/AsyncCall.h"
#include "agent/Wire.h"
#include "contract/NotificationCenterContract.h"

namespace pillora {
namespace {

using Names = std::vector<std::string>;

class AgentUnderContract final : public CenterUnderTest {
 public:
  AgentUnderContract() {
    world.startServer();
    world.startAgent();
    world.connectClient();
  }
  UNUserNotificationCenter& center() override { return *world.client; }
  void settle() override { world.settle(); }

 private:
  AgentWorld world;
};

std::unique_ptr<CenterUnderTest> makeAgent() { return std::make_unique<AgentUnderContract>(); }

INSTANTIATE_TEST_SUITE_P(Agent, NotificationCenterContract, ::testing::Values(&makeAgent));

TEST_F(AgentTest, showsARequestInItsMinuteWithItsTextsAndButtons) {
  world.add(kAspirin + "-1736514000.0", "2025-01-10T13:00");
  world.pass("2025-01-10T12:59:59Z");
  EXPECT_TRUE(world.server->notified.empty());
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  const Notified& shown = lastNotified();
  EXPECT_EQ(shown.app, "Pillora");
  EXPECT_EQ(shown.icon, "org.pillora.Pillora");
  EXPECT_EQ(shown.summary, "Time for your medicine");
  EXPECT_EQ(shown.body, "Aspirin - 1 tablet");
  EXPECT_EQ(shown.actions, (Names{"default", "Open", "TAKEN_ACTION", "Mark as Taken", "SNOOZE_ACTION", "Snooze 10 min",
                                  "SKIP_ACTION", "Skip"}));
  EXPECT_EQ(shown.hints.at("desktop-entry"), "org.pillora.Pillora");
  EXPECT_EQ(shown.hints.at("urgency"), "1");
  EXPECT_EQ(shown.hints.at("category"), "x-pillora.reminder");
  EXPECT_EQ(shown.hints.at("sound-name"), "message-new-instant");
  EXPECT_EQ(shown.timeout, 0);
  EXPECT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
}

TEST_F(AgentTest, escapesTheBodyWhereTheServerReadsMarkup) {
  UNNotificationRequest odd = request("A", "2025-01-10T13:00");
  odd.content.title = "<b> & %s";
  odd.content.body = "A & B <i>\"x\"";
  world.client->add(odd, [](const std::optional<Error>&) {});
  world.settle();
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  EXPECT_EQ(lastNotified().summary, "<b> & %s");
  EXPECT_EQ(lastNotified().body, "A &amp; B &lt;i&gt;\"x\"");
}

TEST_F(AgentTest, aServerThatCanLessGetsLess) {
  world.server->disappear();
  world.server = std::make_unique<NotificationServer>(world.bus.connect());
  world.server->capabilities = {};
  world.server->appear();
  UNNotificationRequest odd = request("A", "2025-01-10T13:00");
  odd.content.body = "A & B";
  world.client->add(odd, [](const std::optional<Error>&) {});
  world.settle();
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  EXPECT_EQ(lastNotified().summary, "Time for your medicine: A & B");
  EXPECT_EQ(lastNotified().body, "A & B");
  EXPECT_TRUE(lastNotified().actions.empty());
}

TEST_F(AgentTest, aFollowUpReplacesTheBubbleOfItsOwnDose) {
  world.add("A-1.0", "2025-01-10T13:00");
  world.add("B-1.0", "2025-01-10T13:30");
  world.add("A-1.0-followup-1", "2025-01-10T14:00");
  for (const char* time : {"2025-01-10T13:00:00Z", "2025-01-10T13:30:00Z", "2025-01-10T14:00:00Z"}) {
    const size_t before = world.server->notified.size();
    world.pass(time);
    ASSERT_TRUE(world.waitForNotified(before + 1));
    ASSERT_TRUE(world.waitFor([&, count = 2 - before] { return world.pending().size() == count; }));
  }
  EXPECT_EQ(world.server->notified[2].number, world.server->notified[0].number);
  EXPECT_EQ(world.server->onScreen.size(), 2u);
}

TEST_F(AgentTest, anAnswerThatOpensTheAppReachesItAsActivationAndAnswer) {
  StandIn app(world.bus.connect());
  for (const char* name : {"A", "B", "C"}) world.add(name, "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(waitWith(app, [&] { return world.server->notified.size() == 3 && world.pending().empty(); }));
  world.server->invoke(world.server->notified[0].number, "TAKEN_ACTION", "token-1");
  ASSERT_TRUE(waitWith(app, [&] { return app.answers.size() == 1; }));
  EXPECT_EQ(app.answers.back(), "A TAKEN_ACTION");
  EXPECT_EQ(app.activations, Names{"token-1"});
  world.server->invoke(world.server->notified[1].number, "SKIP_ACTION");
  ASSERT_TRUE(waitWith(app, [&] { return app.answers.size() == 2; }));
  EXPECT_EQ(app.answers.back(), "B SKIP_ACTION");
  EXPECT_EQ(app.activations.size(), 1u);
  world.server->invoke(world.server->notified[2].number, "default");
  ASSERT_TRUE(waitWith(app, [&] { return app.answers.size() == 3; }));
  EXPECT_EQ(app.answers.back(), "C default");
  EXPECT_EQ(app.activations.size(), 2u);
}

TEST_F(AgentTest, anAnsweredBubbleLeavesTheScreen) {
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  ASSERT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
  world.server->invoke(lastNotified().number, "SKIP_ACTION");
  EXPECT_TRUE(world.waitFor([&] { return world.server->onScreen.empty(); }));
}

TEST_F(AgentTest, anAnswerWithoutOpeningDoesNotStartTheApp) {
  const std::string started = world.folder.path() + "/started";
  const std::string script = world.folder.path() + "/app";
  std::ofstream(script) << "#!/bin/sh\ntouch " << started << "\n";
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  std::ofstream(world.bus.services() + "/org.pillora.Pillora.service")
      << "[D-BUS Service]\nName=org.pillora.Pillora\nExec=" << script << "\n";
  ASSERT_GE(sd_bus_call_method(world.own.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                               "ReloadConfig", nullptr, nullptr, nullptr),
            0);
  world.add("A", "2025-01-10T13:00");
  world.add("B", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitFor([&] { return world.server->notified.size() == 2 && world.pending().empty(); }));
  EXPECT_FALSE(std::filesystem::exists(started));  // nor did asking how to present
  world.server->invoke(world.server->notified[0].number, "SKIP_ACTION");
  ASSERT_TRUE(world.waitFor([&] { return world.server->onScreen.size() == 1; }));
  EXPECT_FALSE(std::filesystem::exists(started));
  world.server->invoke(world.server->notified[1].number, "TAKEN_ACTION");
  EXPECT_TRUE(world.waitFor([&] { return std::filesystem::exists(started); }));
}

TEST_F(AgentTest, onlyTheServersOwnAnswersToOurBubblesAreBelieved) {
  StandIn app(world.bus.connect());
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(waitWith(app, [&] { return !world.server->notified.empty() && world.pending().empty(); }));
  const uint32_t bubble = lastNotified().number;
  // Somebody else says so, to everybody and to the agent alone.
  NotificationServer impostor(world.bus.connect());
  impostor.invoke(bubble, "TAKEN_ACTION");
  sd_bus_message* message = nullptr;
  sd_bus_message_new_signal(impostor.bus(), &message, "/org/freedesktop/Notifications", "org.freedesktop.Notifications",
                            "ActionInvoked");
  const MessageHandle direct(message);
  sd_bus_message_append(message, "us", bubble, "TAKEN_ACTION");
  sd_bus_message_set_destination(message, kAgentName);
  sd_bus_send(impostor.bus(), message, nullptr);
  sd_bus_flush(impostor.bus());
  // The server speaks of a bubble that is not ours, then of ours: messages keep their order.
  world.server->invoke(bubble + 1, "TAKEN_ACTION");
  world.server->invoke(bubble, "SNOOZE_ACTION");
  ASSERT_TRUE(waitWith(app, [&] { return !app.answers.empty(); }));
  EXPECT_EQ(app.answers, Names{"A SNOOZE_ACTION"});
  EXPECT_TRUE(app.activations.empty());
}

TEST_F(AgentTest, aClosedBubbleTakesNoAnswers) {
  StandIn app(world.bus.connect());
  world.add("A", "2025-01-10T13:00");
  world.add("B", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(waitWith(app, [&] { return world.server->notified.size() == 2 && world.pending().empty(); }));
  const uint32_t closed = world.server->notified[0].number;
  world.server->close(closed);
  world.server->invoke(closed, "SKIP_ACTION");
  world.server->invoke(world.server->notified[1].number, "SKIP_ACTION");
  ASSERT_TRUE(waitWith(app, [&] { return !app.answers.empty(); }));
  EXPECT_EQ(app.answers, Names{"B SKIP_ACTION"});
}

TEST_F(AgentTest, anActiveAppIsAskedHowToPresent) {
  StandIn app(world.bus.connect());
  world.add("A", "2025-01-10T13:00");
  world.add("B", "2025-01-10T14:00");
  world.add("C", "2025-01-10T15:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(waitWith(app, [&] { return world.server->notified.size() == 1; }));
  app.options = un_options::kBanner;  // no sound
  world.pass("2025-01-10T14:00:00Z");
  ASSERT_TRUE(waitWith(app, [&] { return world.server->notified.size() == 2; }));
  EXPECT_EQ(lastNotified().hints.at("suppress-sound"), "true");
  app.options = un_options::kBadge;
  world.pass("2025-01-10T15:00:00Z");
  ASSERT_TRUE(waitWith(app, [&] { return app.asked.size() == 3 && world.pending().empty(); }));
  EXPECT_EQ(world.server->notified.size(), 2u);
}

TEST_F(AgentTest, anAppInTheBackgroundIsNotAsked) {
  StandIn app(world.bus.connect());
  app.isActive = false;
  app.options = 0;
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(waitWith(app, [&] { return world.server->notified.size() == 1; }));
  EXPECT_TRUE(app.asked.empty());
}

TEST_F(AgentTest, anAppThatDoesNotAnswerDoesNotHoldUpAReminder) {
  const BusHandle silent = world.bus.connect();
  ASSERT_GE(sd_bus_request_name(silent.get(), kAppName, 0), 0);
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  EXPECT_TRUE(world.waitForNotified(1));
}

TEST_F(AgentTest, theAppBelievesAnswersOfTheAgentAlone) {
  StandIn app(world.bus.connect());
  sd_bus_message* message = nullptr;
  sd_bus_message_new_method_call(world.own.get(), &message, kAppName, kAppPath, kDelegateInterface, "DidReceive");
  const MessageHandle call(message);
  WireWriter writer(message);
  writer.request(request("A", "2025-01-10T13:00"));
  writer.text("TAKEN_ACTION");
  std::string refusal;
  callAsync(world.own.get(), message, std::chrono::seconds(5), [&](sd_bus_message* reply) {
    refusal = sd_bus_message_get_error(reply) != nullptr ? sd_bus_message_get_error(reply)->name : "none";
  });
  ASSERT_TRUE(waitWith(app, [&] { return !refusal.empty(); }));
  EXPECT_EQ(refusal, SD_BUS_ERROR_ACCESS_DENIED);
  EXPECT_TRUE(app.answers.empty());
}

}  // namespace
}  // namespace pillora

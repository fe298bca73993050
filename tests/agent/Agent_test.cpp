// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "agent/AgentFixture.h"
#include "agent/AsyncCall.h"
#include "agent/StandIn.h"
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

class AgentTest : public ::testing::Test {
 protected:
  void SetUp() override {
    world.startServer();
    world.startAgent();
    world.connectClient();
    world.client->setNotificationCategories({reminderCategory()});
    world.settle();
  }

  /// Waits with the stand-in taking part.
  bool waitWith(StandIn& app, const std::function<bool()>& happened) {
    return PrivateBus::pumpUntil({world.own.get(), world.server->bus(), app.bus()}, happened);
  }
  const Notified& lastNotified() { return world.server->notified.back(); }

  AgentWorld world;
};

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

TEST_F(AgentTest, survivesARestartOfTheServer) {
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

TEST_F(AgentTest, whatAServerTookToItsGraveIsShownByTheNext) {
  world.add("A", "2025-01-10T13:00");
  world.server->beforeAnswer = [] { return false; };
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  world.stopServer();
  world.startServer();
  ASSERT_TRUE(world.waitForNotified(1));
  EXPECT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
}

TEST_F(AgentTest, whatAServerRefusesStaysAndIsTriedAgain) {
  world.server->refuses = true;
  world.add("A", "2025-01-10T13:00");
  world.add("B", "2025-01-10T14:00");
  world.pass("2025-01-10T13:00:00Z");
  world.server->refuses = false;
  world.pass("2025-01-10T14:00:00Z");
  ASSERT_TRUE(world.waitForNotified(2));
  EXPECT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
}

TEST_F(AgentTest, whatFellDueWithoutAServerIsShownWhenOneAppears) {
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

TEST_F(AgentTest, withoutAServerPermissionIsRefusedAndSaysWhy) {
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

TEST_F(AgentTest, everythingSurvivesAKill) {
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

TEST_F(AgentTest, killedWhileShowingItReplacesTheBubbleAfterTheRestart) {
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

TEST_F(AgentTest, aSleepShowsTheNewestOverdueAlone) {
  world.add(kAspirin + "-1.0", "2025-01-10T13:00");
  world.add(kAspirin + "-2.0", "2025-01-10T14:00");
  world.add(kAspirin + "-3.0", "2025-01-11T13:00");
  world.pass("2025-01-10T20:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  ASSERT_TRUE(world.waitFor([&] { return world.pending() == Names{kAspirin + "-3.0"}; }));
  EXPECT_EQ(world.server->notified.size(), 1u);
}

TEST_F(AgentTest, followsTheZoneAndTheClock) {
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

TEST_F(AgentTest, tellsLaunchersTheBadge) {
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

TEST_F(AgentTest, runsADueTaskWithItsIdentifier) {
  world.killAgent();
  const std::string script = world.folder.path() + "/run";
  const std::string result = world.folder.path() + "/result";
  std::ofstream(script) << "#!/bin/sh\necho \"$1 $2\" > " << result << ".new && mv " << result << ".new " << result
                        << "\n"
                        << "exec busctl --user call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus "
                           "RequestName su org.pillora.Ran 0 >/dev/null\n";
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  world.taskProgram = script;
  world.startAgent();
  bool ran = false;
  sd_bus_match_signal(
      world.own.get(), nullptr, "org.freedesktop.DBus", nullptr, "org.freedesktop.DBus", "NameOwnerChanged",
      [](sd_bus_message* signal, void* seen, sd_bus_error*) {
        const char* name = nullptr;
        sd_bus_message_read(signal, "s", &name);
        if (std::string_view(name) == "org.pillora.Ran") *static_cast<bool*>(seen) = true;
        return 0;
      },
      &ran);
  ASSERT_TRUE(world.client->submit({"org.pillora.Pillora.missedDoseCheck", at("2025-01-11T00:00:00Z"), false, false}));
  world.pass("2025-01-10T23:59:59Z");
  EXPECT_FALSE(std::filesystem::exists(result));
  world.pass("2025-01-11T00:00:00Z");
  ASSERT_TRUE(world.waitFor([&] { return ran; }));
  std::string line;
  std::getline(std::ifstream(result) >> std::ws, line);
  EXPECT_EQ(line, "run-task org.pillora.Pillora.missedDoseCheck");
}

TEST_F(AgentTest, aSecondAgentLeavesTheFirstAlone) {
  auto environment = world.bus.environment();
  ChildProcess second({PILLORA_AGENT_UNDER_TEST, world.folder.path() + "/other.db", "0", "true"}, environment);
  EXPECT_EQ(second.wait(), 0);
  EXPECT_FALSE(std::filesystem::exists(world.folder.path() + "/other.db"));
}

TEST_F(AgentTest, aRequestThatTheBusCannotCarryIsRefusedAlone) {
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

TEST(AgentClientTest, withoutABusThereIsNoAgent) {
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
  QueuedMainExecutor executor;
  EXPECT_FALSE(AgentClient::connect(executor, {}));
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

TEST(AgentClientTest, withoutAnAgentItSaysSo) {
  AgentWorld world;
  EXPECT_FALSE(AgentClient::connect(world.executor, {}));
  EXPECT_FALSE(AgentClient::connect(world.executor, {"/nonexistent/pillora-agent", std::chrono::milliseconds(100)}));
}

TEST(AgentClientTest, theBusStartsTheAgent) {
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

TEST(AgentClientTest, anAgentThatDiesFailsWhatItOwes) {
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

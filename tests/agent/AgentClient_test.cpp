// SPDX-License-Identifier: MIT
#include "agent/AgentClient.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>

#include "agent/AgentTest.h"
#include "agent/AsyncCall.h"

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

TEST_F(AgentClientTest, whoHasResignedIsAskedNothingAnyMore) {
  std::vector<std::string> actions;
  const auto ask = [this] {
    std::optional<std::string> error;
    const auto call = activationCall(world.own.get(), {.action = "today"});
    sd_bus_message_set_auto_start(call.get(), 0);
    callAsync(world.own.get(), call.get(), std::chrono::seconds(5), [&](sd_bus_message* reply) {
      const auto failure = reply == nullptr ? Error{"not sent"} : errorOf(reply);
      error = failure ? failure->description : "";
    });
    EXPECT_TRUE(world.waitFor([&] { return error.has_value(); }));
    return *error;
  };
  const AppHooks hooks{[] { return true; }, [&](const Activation& asked) { actions.push_back(asked.action); }};
  ASSERT_TRUE(world.client->becomeApp(hooks));
  EXPECT_EQ(ask(), "");
  EXPECT_EQ(actions, Names{"today"});
  // This one lies in the client's socket when it resigns.
  sd_bus_send(world.own.get(), activationCall(world.own.get(), {.action = "history"}).get(), nullptr);
  ASSERT_TRUE(PrivateBus::isOwned(world.own.get(), kAppName));
  world.client->resignApp();
  EXPECT_FALSE(PrivateBus::isOwned(world.own.get(), kAppName));
  EXPECT_NE(ask(), "");
  EXPECT_EQ(actions, Names{"today"});
  EXPECT_TRUE(world.client->becomeApp(hooks)) << "it may become it again";
  EXPECT_EQ(ask(), "");
}

TEST_F(AgentClientTest, whoGoesWaitsForWhatIsToBeKept) {
  world.client->add(request("A", "2025-01-10T13:00"), {});
  ASSERT_EQ(kill(world.agent.id(), SIGSTOP), 0);
  auto gone = std::async(std::launch::async, [&] { world.client.reset(); });
  EXPECT_EQ(gone.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout) << "a reminder is owed";
  ASSERT_EQ(kill(world.agent.id(), SIGCONT), 0);
  gone.get();
  world.connectClient();
  EXPECT_EQ(world.pending(), Names{"A"});
}

/// A bus name that the app is found under, and what becomes of a call there.
class Unresponsive {
 public:
  explicit Unresponsive(const PrivateBus& bus, bool leaves) : bus_(bus.connect()), leaves_(leaves) {
    EXPECT_GE(sd_bus_request_name(bus_.get(), kAppName, 0), 0);
    sd_bus_add_filter(bus_.get(), nullptr, &called, this);
    thread_ = std::jthread([this](const std::stop_token& stop) {
      while (!stop.stop_requested() && sd_bus_process(bus_.get(), nullptr) >= 0) sd_bus_wait(bus_.get(), 10'000);
    });
  }

 private:
  static int called(sd_bus_message* call, void* self, sd_bus_error*) {
    auto& app = *static_cast<Unresponsive*>(self);
    if (sd_bus_message_is_method_call(call, nullptr, "Activate") <= 0) return 0;
    if (app.leaves_) sd_bus_close(app.bus_.get());
    return 1;
  }

  BusHandle bus_;
  bool leaves_;
  std::jthread thread_;
};

TEST(AgentClientAlone, anAppThatDoesNotAnswerIsToldFromOneThatIsGone) {
  AgentWorld world;
  const auto client = AgentClient::open(world.executor, {"", std::chrono::milliseconds(300)});
  ASSERT_NE(client, nullptr);
  EXPECT_FALSE(*client->activateApp({})) << "none runs";
  {
    const Unresponsive leaving(world.bus, true);
    const auto handedOver = client->activateApp({});
    ASSERT_TRUE(handedOver) << handedOver.error().description;
    EXPECT_FALSE(*handedOver) << "it went away before it answered";
  }
  const Unresponsive busy(world.bus, false);
  const auto handedOver = client->activateApp({});
  ASSERT_FALSE(handedOver);
  EXPECT_EQ(handedOver.error().description, "Pillora runs already but does not answer");
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

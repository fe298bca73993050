// SPDX-License-Identifier: MIT
// From a command in a terminal to the bubble on the screen: the real pilloractl and the real agent, which meet on a
// private bus.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "agent/ReminderFile.h"
#include "agent/TerminalWorld.h"
#include "agent/Wire.h"

namespace pillora {
namespace {

using Names = std::vector<std::string>;

constexpr const char* kTask = "org.pillora.Pillora.missedDoseCheck";

class EndToEnd : public TerminalWorld {
 protected:
  void startAll() {
    world.startServer();
    world.startAgent();
    world.connectClient();
  }
  std::vector<BGProcessingTaskRequest> tasks() const {
    sd_bus_message* message = nullptr;
    EXPECT_GE(sd_bus_call_method(world.own.get(), kAgentName, kAgentPath, kAgentInterface, "GetTasks", nullptr,
                                 &message, nullptr),
              0);
    const MessageHandle reply(message);
    WireReader reader(message);
    std::vector<BGProcessingTaskRequest> found;
    reader.enter('a', kTaskType);
    while (reader.more()) found.push_back(reader.task());
    return found;
  }
  /// The start of the next day in the test's zone, where it is noon.
  Instant nextMidnight() const {
    const auto noonIsh = SystemClock().now();
    return Instant::fromSeconds((floorDiv(noonIsh.microseconds(), 3'600'000'000) + 12) * 3600);
  }
  bool waitForRunsToEnd() {
    return world.waitFor([&] { return world.running() == 0; });
  }
};

TEST_F(EndToEnd, whatWasAddedInATerminalIsShownInItsMinuteAndFollowed) {
  startAll();
  json({"add", "Aspirin", "--dosage", "100", "--unit", "mg", "--custom", "0:5"});
  const auto requests = json({"reminders"}).at("requests");
  EXPECT_EQ(requests.size(), world.pending().size());
  EXPECT_GT(requests.size(), 30u);
  world.move("Pass", world.now);
  ASSERT_TRUE(world.armed);
  const Instant minute = *world.armed;
  world.move("Pass", minute - std::chrono::seconds(1));
  EXPECT_TRUE(world.server->notified.empty());
  world.move("Pass", minute);
  ASSERT_TRUE(world.waitForNotified(1));
  const Notified shown = world.server->notified.back();
  EXPECT_EQ(shown.summary, "Time for your medicine");
  EXPECT_EQ(shown.body, "Aspirin - 100 mg");
  EXPECT_EQ(shown.actions, (Names{"default", "Open", "TAKEN_ACTION", "Mark as Taken", "SNOOZE_ACTION", "Snooze 10 min",
                                  "SKIP_ACTION", "Skip"}));
  world.move("Pass", minute + std::chrono::hours(1) + std::chrono::minutes(30));
  ASSERT_TRUE(world.waitFor([&] { return world.server->notified.back().summary == "Reminder: Aspirin"; }));
  EXPECT_EQ(world.server->notified.back().body, "You haven't taken 100 mg yet");
}

TEST_F(EndToEnd, everyCommandPlansAndCancelsWithTheRunningAgent) {
  startAll();
  const std::string id = json({"add", "Aspirin", "--daily", "23:30"}).at("id");
  EXPECT_EQ(world.pending().size(), 30u);
  json({"edit", "Aspirin", "--dosage", "2"});
  EXPECT_EQ(world.pending().size(), 30u);
  EXPECT_EQ(json({"reminders", "aspirin"}).at("requests").at(0).at("body"), "Aspirin - 2 pill");
  const std::string snoozed = json({"snooze", "Aspirin"}).at("reminder");
  EXPECT_EQ(json({"reminders"}).at("requests").at(0).at("identifier"), snoozed);
  const size_t before = world.pending().size();
  EXPECT_GT(before, 30u);
  json({"take", "Aspirin"});
  EXPECT_EQ(world.pending().size(), before) << "the next reminder is planned already";
  json({"edit", "Aspirin", "--active", "no"});
  EXPECT_TRUE(world.pending().empty());
  json({"edit", "Aspirin", "--active", "yes"});
  EXPECT_EQ(world.pending().size(), 30u);
  EXPECT_EQ(json({"delete", id}).at("id"), id);
  EXPECT_TRUE(world.pending().empty());
}

TEST_F(EndToEnd, launchAsksForPermissionSubmitsTheCheckAndResetsTheBadge) {
  startAll();
  world.client->setBadgeCount(3);
  world.settle();
  const Json launched = json({"launch"});
  EXPECT_EQ(launched.at("console"), Json::array({"Background task scheduled for missed dose check"}));
  EXPECT_EQ(json({"reminders"}).at("badge"), 0);
  EXPECT_EQ(tasks(), (std::vector{BGProcessingTaskRequest{kTask, nextMidnight(), false, false}}));
  world.stopServer();
  ASSERT_TRUE(world.waitFor([&] { return !PrivateBus::isOwned(world.own.get(), "org.freedesktop.Notifications"); }));
  const std::string refused = json({"launch"}).at("console").dump();
  EXPECT_NE(refused.find("Notification authorization error: no notification server"), std::string::npos) << refused;
}

TEST_F(EndToEnd, theAgentRunsADueCheckWhichMarksAndSubmitsItsSuccessor) {
  startAll();
  const std::string start = iso8601(SystemClock().now() - std::chrono::hours(10 * 24));
  json({"add", "Aspirin", "--daily", "08:00", "--start", start});
  ASSERT_TRUE(world.client->submit({kTask, std::nullopt, false, false}));
  ASSERT_TRUE(waitForRunsToEnd());
  const Json logs = json({"logs"}).at("logs");
  ASSERT_EQ(logs.size(), 7u);
  for (const Json& log : logs) EXPECT_EQ(log.at("statusRaw"), "Missed");
  EXPECT_EQ(tasks(), (std::vector{BGProcessingTaskRequest{kTask, nextMidnight(), false, false}}));
}

TEST_F(EndToEnd, withoutABusTheAgentsFileServesAndTheAgentTakesItOver) {
  json({"add", "Aspirin", "--daily", "23:30"}, false);
  EXPECT_EQ(planned(false), 30u);
  world.reminderFile = reminderFile();
  startAll();
  EXPECT_EQ(world.pending().size(), 30u);
  EXPECT_EQ(planned(), 30u);
  const auto refused = call({"add", "Ibuprofen"}, false);
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.err,
            "pilloractl: the reminders cannot be opened: " + reminderFile() + ".lock: in use by another program\n");
  EXPECT_EQ(json({"logs"}).at("logs").size(), 0u);
  EXPECT_EQ(call({"take", "Ibuprofen"}).status, 1) << "nothing was stored";
}

TEST_F(EndToEnd, fromABuildTreeTheAgentIsStartedAndSurvivesAKill) {
  json({"add", "Aspirin", "--daily", "23:30"});  // it would not come back if the agent held its output
  ASSERT_TRUE(PrivateBus::isOwned(world.own.get(), kAgentName));
  EXPECT_EQ(planned(), 30u);
  const pid_t first = agentProcess();
  EXPECT_EQ(std::filesystem::read_symlink("/proc/" + std::to_string(first) + "/exe").filename(), "pillora-agent");
  ASSERT_EQ(kill(first, SIGKILL), 0);
  ASSERT_TRUE(world.waitFor([&] { return !PrivateBus::isOwned(world.own.get(), kAgentName); }));
  EXPECT_EQ(planned(), 30u);
  const pid_t second = agentProcess();
  EXPECT_NE(first, second);
  EXPECT_EQ(kill(second, SIGTERM), 0);
  EXPECT_TRUE(world.waitFor([&] { return !PrivateBus::isOwned(world.own.get(), kAgentName); }));
}

TEST_F(EndToEnd, anAgentThatCannotStartIsOneLineAndNothingIsStored) {
  std::filesystem::create_directories(world.folder.path() + "/state/pillora");
  const auto owned = FileOwnership::take(reminderFile() + ".lock", std::chrono::seconds(0));
  ASSERT_TRUE(owned);
  const auto refused = call({"add", "Aspirin"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.err, "pilloractl: the reminders cannot be opened: pillora-agent: " + reminderFile() +
                             ".lock: in use by another program\n");
  EXPECT_TRUE(json({"medicines"}).at("sections").empty());
}

}  // namespace
}  // namespace pillora

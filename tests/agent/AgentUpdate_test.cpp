// SPDX-License-Identifier: MIT
// What becomes of a running agent when its program is updated or removed: a real process, and a real file replaced as
// installers replace it.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "agent/AgentTest.h"

namespace pillora {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class AgentUpdate : public AgentTest {
 protected:
  void SetUp() override {
    fs::create_directory(file("installed"));
    world.agentProgram = installed();
    fs::copy_file(PILLORA_AGENT_UNDER_TEST, installed());
    AgentTest::SetUp();
    process = world.agent.id();
    first = world.agentConnection();
  }

  std::string file(const std::string& name) const { return world.folder.path() + '/' + name; }
  std::string installed() const { return file("installed/pillora-agent"); }
  /// The program is replaced by rename, as package managers do it.
  void update() {
    const std::string next = installed() + ".new";
    fs::copy_file(PILLORA_AGENT_UNDER_TEST, next);
    fs::rename(next, installed());
  }
  void updateTo(const std::string& script) {
    writeScript(installed() + ".new", script);
    fs::rename(installed() + ".new", installed());
  }
  static void writeScript(const std::string& path, const std::string& script) {
    std::ofstream(path) << "#!/bin/sh\n" << script;
    fs::permissions(path, fs::perms::owner_all);
  }
  bool waitForRestart() {
    return world.waitFor([&] {
      const std::string now = world.agentConnection();
      return !now.empty() && now != first;
    });
  }
  bool runsWhatIsInstalled() const { return fs::equivalent("/proc/" + std::to_string(process) + "/exe", installed()); }

  /// A hundred turns, which lie in its socket: more than it keeps before it notices anything else. What fails of them
  /// comes into `failures`.
  Names askWhileItIsStopped() {
    kill(process, SIGSTOP);
    Names asked;
    for (int number = 1000; number < 2000; ++number) {
      asked.push_back(std::to_string(number));
      world.client->add(request(asked.back(), "2025-01-10T13:00"), [this](const std::optional<Error>& error) {
        if (error) failures.push_back(error->description);
      });
      if (number % 10 == 9) world.executor.drain();
    }
    EXPECT_TRUE(PrivateBus::isOwned(world.client->connection(), kAgentName)) << "the bus has had them all";
    return asked;
  }
  /// The agent's children that have ended and were not waited for.
  size_t zombies() const {
    size_t count = 0;
    std::ifstream children("/proc/" + std::to_string(process) + "/task/" + std::to_string(process) + "/children");
    for (std::string child, id, name, state; children >> child;) {
      std::ifstream("/proc/" + child + "/stat") >> id >> name >> state;
      if (state == "Z") ++count;
    }
    return count;
  }

  Names failures;
  pid_t process = -1;
  std::string first;  ///< the connection before the update
};

TEST_F(AgentUpdate, aPendingRequestSurvivesAndFires) {
  world.add("A", "2025-01-10T13:00");
  world.client->setBadgeCount(3);
  world.settle();
  update();
  EXPECT_FALSE(runsWhatIsInstalled());
  ASSERT_TRUE(waitForRestart());
  EXPECT_TRUE(runsWhatIsInstalled()) << "it is the same process";
  EXPECT_EQ(world.pending(), Names{"A"});
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  EXPECT_EQ(lastNotified().actions.size(), 8u);
  EXPECT_TRUE(world.waitFor([&] { return world.pending().empty(); }));
}

TEST_F(AgentUpdate, whatIsPlannedRightAfterTheUpdateIsKept) {
  update();
  world.add("A", "2025-01-10T13:00");
  ASSERT_TRUE(waitForRestart());
  EXPECT_EQ(world.pending(), Names{"A"});
}

TEST_F(AgentUpdate, whatWasAskedBeforeItChangesPlacesIsKept) {
  const Names asked = askWhileItIsStopped();
  update();
  kill(process, SIGCONT);
  ASSERT_TRUE(waitForRestart());
  world.settle();
  EXPECT_EQ(failures, Names());
  EXPECT_EQ(world.pending(), asked);
}

TEST_F(AgentUpdate, whatWasAskedBeforeItIsToldToEndIsKept) {
  const Names asked = askWhileItIsStopped();
  kill(process, SIGTERM);
  kill(process, SIGCONT);
  EXPECT_EQ(world.agent.wait(), 0);
  world.settle();
  EXPECT_EQ(failures, Names());
  world.startAgent();
  EXPECT_EQ(world.pending(), asked);
}

TEST_F(AgentUpdate, nothingFallsDueInAnAgentThatEnds) {
  world.add("A", "2025-01-10T13:00");
  kill(process, SIGSTOP);
  world.beginMove("Pass", at("2025-01-10T13:00:00Z"));
  world.client->add(request("B", "2025-01-10T14:00"), {});
  world.executor.drain();
  ASSERT_TRUE(PrivateBus::isOwned(world.client->connection(), kAgentName));
  kill(process, SIGTERM);
  kill(process, SIGCONT);
  EXPECT_EQ(world.agent.wait(), 0);
  world.startAgent();
  ASSERT_TRUE(world.waitForNotified(1));
  EXPECT_TRUE(world.waitFor([&] { return world.pending() == Names{"B"}; }));
  EXPECT_EQ(world.server->notified.size(), 1u);
}

TEST_F(AgentUpdate, aBusThatIsGoneIsNoUpdate) {
  const std::string asked = file("asked"), run = file("run");
  updateTo("if [ \"$1\" = --version ]; then : > " + asked + "; exit 1; fi\n: > " + run + "\n");
  ASSERT_TRUE(world.waitFor([&] { return fs::exists(asked); }));
  world.bus.stop();
  EXPECT_EQ(world.agent.wait(), 1);
  EXPECT_FALSE(fs::exists(run));
}

TEST_F(AgentUpdate, aBubbleOfBeforeIsAnsweredAfterwards) {
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  update();
  ASSERT_TRUE(waitForRestart());
  world.server->invoke(lastNotified().number, "SKIP_ACTION");
  EXPECT_TRUE(world.waitFor([&] { return world.server->onScreen.empty(); })) << "it takes the bubble away";
}

TEST_F(AgentUpdate, aProgramThatCannotRunYetIsTriedAgain) {
  world.add("A", "2025-01-10T13:00");
  const std::string asked = file("asked");
  updateTo("echo >> " + asked + "\nexit 127\n");
  ASSERT_TRUE(world.waitFor([&] { return fs::exists(asked) && fs::file_size(asked) >= 2; }));
  EXPECT_EQ(world.agentConnection(), first);
  EXPECT_EQ(world.pending(), Names{"A"});
  update();
  ASSERT_TRUE(waitForRestart());
  EXPECT_EQ(world.pending(), Names{"A"});
}

TEST_F(AgentUpdate, oneThatIsReplacedWhileItIsAskedIsSeenToItsEnd) {
  const std::string begun = file("first"), second = file("second"), go = file("go");
  updateTo(": > " + begun + "\nwhile [ ! -e " + go + " ]; do sleep 0.01; done\nexit 1\n");
  ASSERT_TRUE(world.waitFor([&] { return fs::exists(begun); }));
  updateTo(": > " + second + "\nexit 1\n");
  std::ofstream{go};
  ASSERT_TRUE(world.waitFor([&] { return fs::exists(second); }));
  EXPECT_TRUE(world.waitFor([&] { return zombies() == 0; }));
}

TEST_F(AgentUpdate, aBackgroundRunIsSeenToItsEndFirst) {
  const std::string begun = file("begun"), ended = file("ended"), early = file("early"), late = file("late");
  world.taskProgram = file("run");
  writeScript(world.taskProgram, ": > " + begun + "\nsleep 0.3\n: > " + ended + "\n");
  world.killAgent();
  world.startAgent();
  ASSERT_TRUE(world.client->submit({"org.pillora.Pillora.missedDoseCheck", std::nullopt, false, false}));
  ASSERT_TRUE(world.waitFor([&] { return fs::exists(begun); }));
  updateTo("if [ -e " + ended + " ]; then : > " + late + "; else : > " + early + "; fi\nexit 1\n");
  ASSERT_TRUE(world.waitFor([&] { return fs::exists(early) || fs::exists(late); }));
  EXPECT_FALSE(fs::exists(early)) << "the new program was asked while the run went on";
}

TEST_F(AgentUpdate, anAgentWhoseProgramIsRemovedEnds) {
  world.add("A", "2025-01-10T13:00");
  fs::remove(installed());
  EXPECT_EQ(world.agent.wait(), 0);
  update();
  world.startAgent();
  EXPECT_EQ(world.pending(), Names{"A"}) << "what was planned stays";
}

TEST_F(AgentUpdate, anAgentWhoseProgramIsMovedAwayEnds) {
  fs::rename(installed(), file("elsewhere"));
  EXPECT_EQ(world.agent.wait(), 0);
}

TEST_F(AgentUpdate, otherFilesInItsFolderAreNoneOfItsBusiness) {
  std::ofstream(file("installed/other")) << "program";
  fs::create_hard_link(installed(), file("installed/pillora-agent.old"));
  fs::rename(file("installed/other"), file("installed/another"));
  world.add("A", "2025-01-10T13:00");
  EXPECT_EQ(world.agentConnection(), first);
  update();
  EXPECT_TRUE(waitForRestart());
}

}  // namespace
}  // namespace pillora

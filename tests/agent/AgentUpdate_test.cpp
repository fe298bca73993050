// SPDX-License-Identifier: MIT
// What becomes of a running agent when its program is updated or removed: a real process, and a real file replaced as
// installers replace it.
#include <gtest/gtest.h>

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

// SPDX-License-Identifier: MIT
// Background runs that the agent starts: with which words, and what becomes of one that does not end by itself.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "agent/AgentTest.h"

namespace pillora {
namespace {

constexpr const char* kTask = "org.pillora.Pillora.missedDoseCheck";

class AgentTasks : public AgentTest {
 protected:
  /// A restarted agent runs this shell script for a due task; what it notes can be read.
  void runTasksWith(const std::string& script) {
    const std::string program = world.folder.path() + "/run";
    std::ofstream(program) << "#!/bin/sh\nnote() { echo \"$*\" >> " << notes << ".new; mv " << notes << ".new " << notes
                           << "; }\n"
                           << script;
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    world.taskProgram = program;
    restart();
  }
  void restart() {
    world.killAgent();
    world.startAgent();
  }
  std::string noted() const {
    std::ifstream file(notes);
    std::string line;
    std::getline(file, line);
    return line;
  }
  bool waitForNote(const std::string& line) {
    return world.waitFor([&] { return noted() == line; });
  }
  void submitDueTask() { ASSERT_TRUE(world.client->submit({kTask, std::nullopt, false, false})); }
  /// Runs that are granted a moment, until one noted something: a shell may be told to end before it can listen.
  void expireUntilNoted() {
    for (int i = 0; i < 20 && noted().empty(); ++i) {
      submitDueTask();
      ASSERT_TRUE(waitForItsEnd());
    }
  }
  bool waitForItsEnd() {
    return world.waitFor([&] { return world.running() == 0; });
  }

  std::string notes = world.folder.path() + "/notes";
};

TEST_F(AgentTasks, aDueTaskIsRunWithItsIdentifier) {
  runTasksWith("note \"$*\"\n");
  ASSERT_TRUE(world.client->submit({kTask, at("2025-01-11T00:00:00Z"), false, false}));
  world.pass("2025-01-10T23:59:59Z");
  EXPECT_EQ(world.running(), 0);
  EXPECT_FALSE(std::filesystem::exists(notes));
  world.pass("2025-01-11T00:00:00Z");
  ASSERT_TRUE(waitForItsEnd());
  EXPECT_EQ(noted(), std::string("run-task --scheduled ") + kTask);
}

TEST_F(AgentTasks, aRunThatTakesTooLongIsToldToExpire) {
  world.taskLimits = {std::chrono::milliseconds(100), std::chrono::hours(1)};
  runTasksWith("trap 'note expired; exit 1' TERM\nwhile :; do sleep 0.01; done\n");
  expireUntilNoted();
  EXPECT_EQ(noted(), "expired");
}

TEST_F(AgentTasks, aRunThatGoesOnAfterItExpiredIsKilled) {
  world.taskLimits = {std::chrono::milliseconds(100), std::chrono::milliseconds(1)};
  runTasksWith("trap '' TERM\nnote deaf\nwhile :; do sleep 0.01; done\n");
  expireUntilNoted();
  EXPECT_EQ(noted(), "deaf");
}

TEST_F(AgentTasks, aRunThatEndsInItsTimeIsLeftAlone) {
  runTasksWith("trap 'note expired; exit 1' TERM\nnote done\n");
  submitDueTask();
  ASSERT_TRUE(waitForItsEnd());
  EXPECT_EQ(noted(), "done");
}

TEST_F(AgentTasks, remindersComeWhileARunGoesOn) {
  runTasksWith("note begun\nwhile ! test -e " + world.folder.path() + "/enough; do sleep 0.01; done\n");
  submitDueTask();
  ASSERT_TRUE(waitForNote("begun"));
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  EXPECT_EQ(world.running(), 1);
  std::ofstream(world.folder.path() + "/enough") << "\n";
  EXPECT_TRUE(waitForItsEnd());
}

TEST_F(AgentTasks, aProgramThatIsMissingIsTriedAgainAtTheNextStart) {
  world.taskProgram = "/nonexistent/pilloractl";
  restart();
  ASSERT_TRUE(world.client->submit({kTask, std::nullopt, false, false}));
  EXPECT_EQ(world.running(), 0);
  runTasksWith("note done\n");
  EXPECT_TRUE(waitForNote("done"));
}

}  // namespace
}  // namespace pillora

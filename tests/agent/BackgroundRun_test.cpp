// SPDX-License-Identifier: MIT
// The process of a background run that the agent tells to expire.
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <csignal>
#include <fstream>
#include <sstream>

#include "agent/TerminalWorld.h"

namespace pillora {
namespace {

class BackgroundRun : public TerminalWorld {
 protected:
  std::string store = world.folder.path() + "/S";
  std::string lines = world.folder.path() + "/lines";

  /// Starts the check, its lines going to a file.
  StartedProgram startRun() {
    return StartedProgram({"sh", "-c", "exec \"$@\" 2>" + lines, "sh", PILLORACTL, "--store", store, "run-task",
                           "org.pillora.Pillora.missedDoseCheck"},
                          {"TZ=" + world.zoneName, "LC_ALL=C.UTF-8"});
  }
  std::string said() const {
    std::stringstream text;
    text << std::ifstream(lines).rdbuf();
    return text.str();
  }
  bool waitForLine(const std::string& line) {
    return world.waitFor([&] { return said().find(line) != std::string::npos; });
  }
  /// Whether a signal was sent to the process that it has not taken yet.
  static bool hasPendingSignal(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
      if (line.starts_with("ShdPnd:")) return line.find_first_not_of("0 \t", 7) != std::string::npos;
    }
    return false;
  }
};

TEST_F(BackgroundRun, oneThatExpiresHasFailedAndStillSavesWhatItMarks) {
  const std::string start = iso8601(SystemClock().now() - std::chrono::hours(10 * 24));
  json({"--store", store, "add", "Aspirin", "--daily", "08:00", "--start", start});
  SQLite::Database busy(store, SQLite::OPEN_READWRITE);
  busy.exec("BEGIN IMMEDIATE");
  StartedProgram run = startRun();
  ASSERT_TRUE(waitForLine("Background task scheduled for missed dose check")) << said();
  ASSERT_EQ(kill(run.id(), SIGTERM), 0);
  ASSERT_TRUE(world.waitFor([&] { return !hasPendingSignal(run.id()); }));
  busy.exec("COMMIT");
  EXPECT_EQ(run.wait(), 1);
  EXPECT_NE(said().find("did not succeed"), std::string::npos) << said();
  EXPECT_EQ(json({"--store", store, "logs"}).at("logs").size(), 7u);
}

TEST_F(BackgroundRun, oneThatIsKilledLeavesNothingHalfMarked) {
  const std::string start = iso8601(SystemClock().now() - std::chrono::hours(10 * 24));
  json({"--store", store, "add", "Aspirin", "--daily", "08:00", "--start", start});
  SQLite::Database busy(store, SQLite::OPEN_READWRITE);
  busy.exec("BEGIN IMMEDIATE");
  StartedProgram run = startRun();
  ASSERT_TRUE(waitForLine("Background task scheduled for missed dose check")) << said();
  run.kill();
  busy.exec("COMMIT");
  EXPECT_TRUE(json({"--store", store, "logs"}).at("logs").empty());
  EXPECT_EQ(json({"--store", store, "mark-missed"}).at("missed"), 7);
}

}  // namespace
}  // namespace pillora

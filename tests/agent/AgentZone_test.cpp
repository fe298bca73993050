// SPDX-License-Identifier: MIT
// The time zone of a running agent, changed as systems change it.
#include <gtest/gtest.h>

#include <filesystem>

#include "agent/AgentTest.h"

namespace pillora {
namespace {

class AgentZone : public AgentTest {
 protected:
  /// Puts another link in the place of the one before, as timedatectl and installers do.
  void linkTo(const std::string& zone) {
    std::filesystem::create_symlink("/usr/share/zoneinfo/" + zone, world.etc() + "/new");
    std::filesystem::rename(world.etc() + "/new", world.etc() + "/localtime");
  }
  /// Whether the timer comes to be armed for then.
  bool waitForArmed(std::string_view instant) {
    return world.waitFor([&] {
      world.move("Pass", world.now);
      return world.armed == at(instant);
    });
  }
};

TEST_F(AgentZone, aLinkThatIsReplacedMovesWhatIsPending) {
  linkTo("UTC");
  world.add("A", "2025-01-10T18:00");
  ASSERT_TRUE(waitForArmed("2025-01-10T18:00:00Z"));
  linkTo("America/New_York");
  ASSERT_TRUE(waitForArmed("2025-01-10T23:00:00Z"));
  linkTo("Asia/Kolkata");
  ASSERT_TRUE(waitForArmed("2025-01-10T12:30:00Z"));
  world.pass("2025-01-10T12:30:00Z");
  ASSERT_TRUE(world.waitForNotified(1));
  linkTo("America/New_York");
  world.pass("2025-01-10T23:00:00Z");
  EXPECT_TRUE(world.pending().empty());
  EXPECT_EQ(world.server->notified.size(), 1u);
}

TEST_F(AgentZone, aMinuteThatTheNewZoneHasBehindItIsShownAtOnce) {
  linkTo("UTC");
  world.add("A", "2025-01-10T13:00");
  linkTo("Europe/Berlin");
  EXPECT_TRUE(world.waitForNotified(1));
}

TEST_F(AgentZone, theTimeServiceIsHeard) {
  const BusHandle service = world.bus.connect();
  ASSERT_GE(sd_bus_request_name(service.get(), "org.freedesktop.timedate1", 0), 0);
  world.systemBus = world.bus.address();
  world.killAgent();
  world.startAgent();
  world.add("A", "2025-01-10T18:00");
  ASSERT_TRUE(waitForArmed("2025-01-10T18:00:00Z"));
  // A system whose zone file lies elsewhere: nothing stirs in the folder that is watched.
  std::filesystem::rename(world.etc(), world.folder.path() + "/moved");
  std::filesystem::create_directory(world.etc());
  linkTo("America/New_York");
  world.move("Pass", world.now);
  EXPECT_EQ(world.armed, at("2025-01-10T18:00:00Z"));
  ASSERT_GE(sd_bus_emit_signal(service.get(), "/org/freedesktop/timedate1", "org.freedesktop.DBus.Properties",
                               "PropertiesChanged", "sa{sv}as", "org.freedesktop.timedate1", 1, "Timezone", "s",
                               "America/New_York", 0),
            0);
  EXPECT_TRUE(waitForArmed("2025-01-10T23:00:00Z"));
}

TEST_F(AgentZone, somebodyElsesWordAboutTheZoneDoesNoHarm) {
  world.systemBus = world.bus.address();
  world.killAgent();
  world.startAgent();
  const BusHandle stranger = world.bus.connect();
  ASSERT_GE(sd_bus_emit_signal(stranger.get(), "/org/freedesktop/timedate1", "org.freedesktop.DBus.Properties",
                               "PropertiesChanged", "u", 7),
            0);
  world.add("A", "2025-01-10T18:00");
  EXPECT_TRUE(waitForArmed("2025-01-10T18:00:00Z"));
}

}  // namespace
}  // namespace pillora

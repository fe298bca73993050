// SPDX-License-Identifier: MIT
// A reminder's way to a real notification server and back: dunst under a virtual X server, both on the test's own bus.
// Its named actions are chosen as a person without a mouse chooses them, in its context menu.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "agent/AgentFixture.h"
#include "agent/StandIn.h"

namespace pillora {
namespace {

/// A virtual X server with a display number that it found free.
class VirtualDisplay {
 public:
  VirtualDisplay() {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) ADD_FAILURE() << "no pipe";
    server_ = StartedProgram(
        {"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen", "0", "360x720x24", "-nolisten", "tcp"}, {}, ends[1]);
    close(ends[1]);
    char letter = 0;
    while (read(ends[0], &letter, 1) == 1 && letter != '\n') number_ += letter;
    close(ends[0]);
    EXPECT_FALSE(number_.empty()) << "the X server did not start";
  }
  std::string name() const { return ":" + number_; }

 private:
  StartedProgram server_;
  std::string number_;
};

class RealServerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    write("dunstrc", "[global]\n  monitor = 0\n  dmenu = " + file("dmenu") + "\n  mouse_left_click = do_action\n");
    // Keeps what it is offered, and chooses the line that holds the wanted word.
    write("dmenu", "#!/bin/sh\ntee " + file("menu") + " | grep -F \"$(cat " + file("wanted") + ")\"\n");
    std::filesystem::permissions(file("dmenu"), std::filesystem::perms::owner_all);
    environment = world.bus.environment();
    environment.push_back("DISPLAY=" + display.name());
    environment.push_back("XDG_CONFIG_HOME=" + folder.path());
    environment.push_back("XDG_DATA_HOME=" + folder.path());
    dunst = StartedProgram({"dunst", "-conf", file("dunstrc")}, environment);
    ASSERT_TRUE(waitFor([&] { return PrivateBus::isOwned(world.own.get(), "org.freedesktop.Notifications"); }));
    world.startAgent();
    world.connectClient();
    world.client->setNotificationCategories({reminderCategory()});
    world.add("A", "2025-01-10T13:00");
  }

  std::string file(const std::string& name) const { return folder.path() + "/" + name; }
  void write(const std::string& name, const std::string& text) const { std::ofstream(file(name)) << text; }
  std::string read(const std::string& name) const {
    std::stringstream text;
    text << std::ifstream(file(name)).rdbuf();
    return text.str();
  }
  bool waitFor(const std::function<bool()>& happened) {
    return PrivateBus::pumpUntil({world.own.get(), app.bus()}, happened);
  }
  std::string dunstctl(const std::string& arguments) {
    StartedProgram control({"sh", "-c", "dunstctl " + arguments + " > " + file("said")}, environment);
    EXPECT_EQ(control.wait(), 0) << "dunstctl " << arguments;
    return read("said");
  }
  /// Chooses the action whose line in the menu holds `word`.
  void choose(const std::string& word) {
    write("wanted", word);
    dunstctl("context");
  }
  /// The reminder comes due and dunst has it on the screen.
  void showIt() {
    world.pass("2025-01-10T13:00:00Z");
    ASSERT_TRUE(waitFor([&] { return world.pending().empty(); }));
    ASSERT_EQ(dunstctl("count displayed"), "1\n");
  }

  AgentWorld world;
  TemporaryFolder folder;
  VirtualDisplay display;
  StandIn app{world.bus.connect()};
  std::vector<std::string> environment;
  StartedProgram dunst;
};

TEST_F(RealServerTest, markAsTakenReachesTheAppAsActivationAndAnswer) {
  showIt();
  choose("Mark as Taken");
  ASSERT_TRUE(waitFor([&] { return !app.answers.empty() && !app.activations.empty(); }));
  EXPECT_EQ(app.answers, std::vector<std::string>{"A TAKEN_ACTION"});
  EXPECT_EQ(app.activations.size(), 1u);
  const std::string menu = read("menu");
  for (const char* title : {"Mark as Taken", "Snooze 10 min", "Skip"}) {
    EXPECT_NE(menu.find(title), std::string::npos) << menu;
  }
  dunstctl("close");  // what is closed is told in full
  const std::string history = dunstctl("history");
  EXPECT_NE(history.find("Time for your medicine"), std::string::npos) << history;
  EXPECT_NE(history.find("Aspirin - 1 tablet"), std::string::npos) << history;
}

TEST_F(RealServerTest, skipReachesTheAppWithoutOpeningIt) {
  showIt();
  choose("Skip");
  ASSERT_TRUE(waitFor([&] { return !app.answers.empty(); }));
  EXPECT_EQ(app.answers, std::vector<std::string>{"A SKIP_ACTION"});
  EXPECT_TRUE(app.activations.empty());
}

TEST_F(RealServerTest, aRestartedServerShowsTheNextReminder) {
  dunst.kill();
  ASSERT_TRUE(waitFor([&] { return !PrivateBus::isOwned(world.own.get(), "org.freedesktop.Notifications"); }));
  dunst = StartedProgram({"dunst", "-conf", file("dunstrc")}, environment);
  ASSERT_TRUE(waitFor([&] { return PrivateBus::isOwned(world.own.get(), "org.freedesktop.Notifications"); }));
  showIt();
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "linux/LoginStart.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "doubles/ScopedVariable.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

namespace fs = std::filesystem;

/// A system in a folder.
class LoginStart : public testing::Test {
 protected:
  void write(const std::string& path, const std::string& text) {
    fs::create_directories(fs::path(root_.path() + path).parent_path());
    std::ofstream(root_.path() + path) << text;
  }
  void link(const std::string& path, const std::string& target) {
    fs::create_directories(fs::path(root_.path() + path).parent_path());
    fs::create_symlink(target, root_.path() + path);
  }
  void installUnit(const std::string& folder) {
    write(folder + "/pillora-agent.service", "[Unit]\n");
    link(folder + "/graphical-session.target.wants/pillora-agent.service", "../pillora-agent.service");
  }
  bool starts() { return agentStartsAtLogin(root_.path()); }

  TemporaryFolder root_;
  ScopedVariable home_{"HOME", root_.path() + "/me"};
  ScopedVariable configuration_{"XDG_CONFIG_HOME", root_.path() + "/me/.config"};
};

TEST_F(LoginStart, notWhereNothingIsInstalled) { EXPECT_FALSE(starts()); }

TEST_F(LoginStart, whereSystemdWantsTheUnit) {
  installUnit("/usr/lib/systemd/user");
  EXPECT_TRUE(starts());
}

TEST_F(LoginStart, alsoInUsrLocal) {
  installUnit("/usr/local/lib/systemd/user");
  EXPECT_TRUE(starts());
}

TEST_F(LoginStart, notWhereTheUnitIsThereAndNobodyWantsIt) {
  write("/usr/lib/systemd/user/pillora-agent.service", "[Unit]\n");
  EXPECT_FALSE(starts());
}

TEST_F(LoginStart, notWhereThePersonMaskedTheUnit) {
  installUnit("/usr/lib/systemd/user");
  link("/me/.config/systemd/user/pillora-agent.service", "/dev/null");
  EXPECT_FALSE(starts());
  write("/etc/xdg/autostart/org.pillora.Pillora.Agent.desktop", "[Desktop Entry]\n");
  EXPECT_FALSE(starts()) << "the entry is for systems without systemd";
}

TEST_F(LoginStart, whereTheAutostartHasItsEntry) {
  write("/etc/xdg/autostart/org.pillora.Pillora.Agent.desktop", "[Desktop Entry]\nNoDisplay=true\n");
  EXPECT_TRUE(starts());
}

TEST_F(LoginStart, notWhereThePersonHidTheEntry) {
  write("/etc/xdg/autostart/org.pillora.Pillora.Agent.desktop", "[Desktop Entry]\n");
  write("/me/.config/autostart/org.pillora.Pillora.Agent.desktop", "[Desktop Entry]\nHidden=true\n");
  EXPECT_FALSE(starts());
}

}  // namespace
}  // namespace pillora

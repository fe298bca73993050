// SPDX-License-Identifier: MIT
// What `cmake --install` puts where, into a folder that stands for the root of a system.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "doubles/ChildProcess.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

namespace fs = std::filesystem;

class Installation : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    root_ = std::make_unique<TemporaryFolder>();
    const auto result =
        ChildProcess({PILLORA_CMAKE, "--install", PILLORA_BUILD}, {"DESTDIR=" + root_->path()}).finish();
    ASSERT_EQ(result.status, 0) << result.err;
  }
  static void TearDownTestSuite() { root_.reset(); }

  static std::string at(const std::string& path) { return root_->path() + path; }
  static std::string inPrefix(const std::string& path) { return at(PILLORA_PREFIX "/" + path); }
  static std::string textOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  static std::vector<std::string> filesBelow(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (!entry.is_directory()) files.push_back(fs::relative(entry.path(), folder));
    }
    std::ranges::sort(files);
    return files;
  }

  static std::unique_ptr<TemporaryFolder> root_;
};

std::unique_ptr<TemporaryFolder> Installation::root_;

TEST_F(Installation, everythingIsWhereSystemsLookForIt) {
  for (const char* path : {"bin/pilloractl",
                           "libexec/pillora-agent",
                           "lib/systemd/user/pillora-agent.service",
                           "share/dbus-1/services/org.pillora.Pillora.Agent.service",
                           "share/polkit-1/actions/org.pillora.Pillora.policy",
                           "share/applications/org.pillora.Pillora.desktop",
                           "share/metainfo/org.pillora.Pillora.metainfo.xml",
                           "share/icons/hicolor/scalable/apps/org.pillora.Pillora.svg",
                           "share/icons/hicolor/symbolic/apps/org.pillora.Pillora-symbolic.svg",
                           "share/man/man1/pilloractl.1.gz",
                           "share/man/man1/pillora-agent.1.gz",
                           "share/bash-completion/completions/pilloractl",
                           "share/zsh/site-functions/_pilloractl",
                           "share/fish/vendor_completions.d/pilloractl.fish",
                           "share/doc/pillora/README.md",
#ifdef PILLORA
                           "bin/pillora",
                           "share/dbus-1/services/org.pillora.Pillora.service",
                           "share/man/man1/pillora.1.gz",
                           "share/pillora/pages/privacyPolicy.html",
                           "share/pillora/pages/termsOfService.html"
#endif
       }) {
    EXPECT_TRUE(fs::is_regular_file(inPrefix(path))) << path;
  }
  EXPECT_TRUE(fs::is_regular_file(at("/etc/xdg/autostart/org.pillora.Pillora.Agent.desktop")));
}

TEST_F(Installation, theAgentIsEnabledForEveryNewLogin) {
  const std::string wanted = inPrefix("lib/systemd/user/graphical-session.target.wants/pillora-agent.service");
  ASSERT_TRUE(fs::is_symlink(wanted));
  EXPECT_TRUE(fs::equivalent(wanted, inPrefix("lib/systemd/user/pillora-agent.service")));
}

TEST_F(Installation, everyProgramThatAServiceStartsIsInstalled) {
  int found = 0;
  for (const std::string& file : filesBelow(root_->path())) {
    if (!file.ends_with(".service") && !file.ends_with("Agent.desktop")) continue;
    const std::string text = textOf(at("/" + file));
    std::smatch command;
    ASSERT_TRUE(std::regex_search(text, command, std::regex("(?:Exec|ExecStart)=(/[^ \n]+)"))) << file;
    EXPECT_TRUE(fs::is_regular_file(at(command[1]))) << file << ": " << command[1];
    ++found;
  }
  EXPECT_GE(found, 3);
}

TEST_F(Installation, noFileNamesWhereItWasBuilt) {
  for (const std::string& file : filesBelow(root_->path())) {
    if (file.find("/bin/") != std::string::npos || file.find("/libexec/") != std::string::npos) continue;
    EXPECT_EQ(textOf(at("/" + file)).find(PILLORA_BUILD), std::string::npos) << file;
  }
}

TEST_F(Installation, pagesReachForNothingOutsideOfThemselves) {
  for (const char* page : {"privacyPolicy", "termsOfService"}) {
    const std::string text = textOf(PILLORA_ASSETS "/pages/" + std::string(page) + ".html");
    EXPECT_FALSE(text.empty());
    EXPECT_FALSE(std::regex_search(text, std::regex("<script|<img|<link|src=|@import|url\\(|https?://"))) << page;
    EXPECT_NE(text.find("prefers-color-scheme: dark"), std::string::npos) << page;
  }
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
// What Settings says of a device that cannot ask for its owner, where the lock is switched on.
#include <gtest/gtest.h>

#include "SettingsFixture.h"
#include "doubles/Instants.h"
#include "doubles/ScriptedAuthenticator.h"

namespace pillora {
namespace {

constexpr const char* kCannotAsk =
    "This device cannot ask for a fingerprint or a password. With this switched on, Pillora stays locked.";

class SettingsViewPrivacy : public testing::Test {
 protected:
  std::string footer() {
    for (const FormSection& section : view_.content().sections) {
      if (section.id == "privacy") return section.footer.value_or("");
    }
    return "no section";
  }
  void appear() {
    view_.appeared();
    fixture_.settle();
  }

  SettingsFixture fixture_{at("2025-01-10T10:30:00-05:00")};
  ScriptedAuthenticator device_;
  SettingsView view_ = fixture_.makeView(device_.factory());
};

TEST_F(SettingsViewPrivacy, aDeviceThatCanAskForItsOwnerNeedsNoWord) {
  appear();
  EXPECT_EQ(footer(), "");
  EXPECT_TRUE(device_.prompts.empty()) << "nobody is asked";
}

TEST_F(SettingsViewPrivacy, aDeviceThatCannotSaysSoAndTheSwitchSwitches) {
  device_.hasBiometrics = device_.hasPasscode = false;
  int draws = 0;
  const auto observer = view_.observe([&] { ++draws; });
  appear();
  EXPECT_EQ(footer(), kCannotAsk);
  EXPECT_EQ(draws, 1);
  EXPECT_TRUE(view_.setToggle("requireAuthentication", true));
  EXPECT_TRUE(fixture_.record().requireAuthentication());
}

TEST_F(SettingsViewPrivacy, itIsFoundOutAnewEachTimeAndOffTheMainThread) {
  device_.hasPasscode = false;
  view_.appeared();
  EXPECT_EQ(footer(), "") << "it is not known yet";
  fixture_.settle();
  EXPECT_EQ(footer(), kCannotAsk);
  device_.hasPasscode = true;
  appear();
  EXPECT_EQ(footer(), "");
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "app/AuthenticationManager.h"

#include <gtest/gtest.h>

#include <thread>

#include "app/AppFixture.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

/// A manager on a device without a prompt open yet, and a store that holds no settings record.
struct AuthenticationManagerTest : ::testing::Test, AppFixture {
  void require(bool isRequired) {
    auto settings = AppSettings::make();
    settings->requireAuthentication = isRequired;
    store->mainContext().insert(settings);
    executor.drain();
  }
  void check() { manager.checkAuthenticationRequirement(*store); }
  void answer(bool success) {
    device.last().answer(success);
    executor.drain();
  }
  /// isUnlocked, isAuthenticating, requiresAuth, each a letter or a dash.
  std::string state() const {
    return std::string(manager.isUnlocked() ? "u" : "-") + (manager.isAuthenticating() ? "a" : "-") +
           (manager.requiresAuth() ? "r" : "-");
  }

  std::unique_ptr<ModelContainer> store = openStore(executor);
  AuthenticationManager manager{{device.factory(), *texts, executor, console}};
};

TEST_F(AuthenticationManagerTest, beginsWithNothingRequiredAndNothingDone) {
  EXPECT_EQ(state(), "---");
  EXPECT_EQ(device.contexts, 0);
}

TEST_F(AuthenticationManagerTest, withoutASettingsRecordNothingChangesAndNobodyIsAsked) {
  check();
  EXPECT_EQ(state(), "---");
  EXPECT_EQ(device.contexts, 0);
  EXPECT_TRUE(console.lines().empty());
}

TEST_F(AuthenticationManagerTest, withoutTheRequirementNobodyIsAsked) {
  require(false);
  check();
  EXPECT_EQ(state(), "---");
  EXPECT_EQ(device.contexts, 0);
}

TEST_F(AuthenticationManagerTest, theFirstSettingsRecordDecides) {
  require(false);
  require(true);
  check();
  EXPECT_FALSE(manager.requiresAuth());
}

TEST_F(AuthenticationManagerTest, aRequirementAsksForBiometricsAtOnce) {
  require(true);
  check();
  EXPECT_EQ(state(), "-ar");
  EXPECT_EQ(device.asked(), "b");
  EXPECT_EQ(device.last().reason, "Unlock Pillora to view your medications");
  answer(true);
  EXPECT_EQ(state(), "u-r");
  EXPECT_EQ(device.contexts, 1) << "the context that told whether it can is the one that asks";
}

TEST_F(AuthenticationManagerTest, whoIsUnlockedIsNotAskedAgain) {
  require(true);
  check();
  answer(true);
  check();
  EXPECT_EQ(device.asked(), "b");
}

TEST_F(AuthenticationManagerTest, aRequirementThatIsGoneIsTakenOverWithoutAPrompt) {
  require(true);
  check();
  answer(true);
  (*store->mainContext().fetch<AppSettings>()).front()->requireAuthentication = false;
  check();
  EXPECT_EQ(state(), "u--");
}

TEST_F(AuthenticationManagerTest, withoutBiometricsThePasscodeIsAskedForAtOnce) {
  device.hasBiometrics = false;
  manager.authenticate();
  EXPECT_EQ(device.asked(), "o");
  EXPECT_EQ(device.last().reason, "Unlock Pillora to view your medications");
  EXPECT_EQ(state(), "---") << "only biometrics count as authenticating";
  EXPECT_EQ(device.contexts, 2) << "a context of its own";
  answer(true);
  EXPECT_EQ(state(), "u--");
}

TEST_F(AuthenticationManagerTest, cancelledBiometricsOpenThePasscodeAndThatCancelledStaysLocked) {
  manager.authenticate();
  answer(false);
  EXPECT_EQ(device.asked(), "bo");
  EXPECT_EQ(state(), "---");
  EXPECT_TRUE(device.prompts[0]->isTakenDown);
  answer(false);
  EXPECT_EQ(state(), "---");
  EXPECT_EQ(device.asked(), "bo") << "once";
  EXPECT_TRUE(console.lines().empty());
  manager.authenticate();
  EXPECT_EQ(device.asked(), "bob") << "the owner may try again";
}

TEST_F(AuthenticationManagerTest, thePasscodeAfterCancelledBiometricsUnlocks) {
  manager.authenticate();
  answer(false);
  answer(true);
  EXPECT_EQ(state(), "u--");
}

TEST_F(AuthenticationManagerTest, theOwnerMayTurnFromBiometricsToThePasscode) {
  manager.authenticate();
  manager.cancelBiometrics();
  executor.drain();
  EXPECT_EQ(device.asked(), "bo");
  manager.cancelBiometrics();
  executor.drain();
  EXPECT_EQ(device.asked(), "bo") << "the passcode's prompt stays";
  EXPECT_TRUE(manager.isAwaitingReply());
}

TEST_F(AuthenticationManagerTest, repliesCountOnTheMainThreadOnly) {
  manager.authenticate();
  std::thread([&] { device.last().answer(true); }).join();
  EXPECT_EQ(state(), "-a-") << "nothing changes before the main thread's turn";
  EXPECT_TRUE(manager.isAwaitingReply());
  executor.drain();
  EXPECT_EQ(state(), "u--");
  EXPECT_FALSE(manager.isAwaitingReply());
}

TEST_F(AuthenticationManagerTest, askingTwiceIsHarmless) {
  manager.authenticate();
  manager.authenticate();
  EXPECT_EQ(device.asked(), "bb");
  for (const auto& prompt : std::vector(device.prompts)) prompt->answer(true);
  executor.drain();
  EXPECT_EQ(state(), "u--");
  EXPECT_FALSE(manager.isAwaitingReply());
}

TEST_F(AuthenticationManagerTest, relockingLocksOnlyWhatIsRequired) {
  manager.authenticate();
  answer(true);
  manager.relock();
  EXPECT_EQ(state(), "u--");
  require(true);
  check();
  manager.relock();
  EXPECT_EQ(state(), "--r");
  check();
  EXPECT_EQ(state(), "-ar");
}

TEST_F(AuthenticationManagerTest, aReplyFromBeforeTheLastRelockDoesNotUnlock) {
  require(true);
  check();
  manager.relock();
  EXPECT_EQ(state(), "--r");
  EXPECT_TRUE(device.last().isTakenDown) << "its prompt is gone";
  answer(true);
  EXPECT_EQ(state(), "--r");
}

TEST_F(AuthenticationManagerTest, aReplyThatWasOnItsWayWhenRelockedDoesNotUnlock) {
  require(true);
  check();
  device.last().answer(true);
  manager.relock();
  executor.drain();
  EXPECT_EQ(state(), "--r");
}

TEST_F(AuthenticationManagerTest, aFailureFromBeforeTheLastRelockOpensNothingAndLocksNothing) {
  require(true);
  check();
  const auto former = device.prompts.back();
  manager.relock();
  check();
  former->answer(false);
  executor.drain();
  EXPECT_EQ(device.asked(), "bb") << "no passcode's prompt";
  EXPECT_EQ(state(), "-ar") << "the new evaluation is still under way";
  answer(true);
  EXPECT_EQ(state(), "u-r");
  former->answer(false);
  executor.drain();
  EXPECT_EQ(state(), "u-r");
}

TEST_F(AuthenticationManagerTest, aPasscodePromptIsTakenDownByRelockingToo) {
  require(true);
  device.hasBiometrics = false;
  check();
  manager.relock();
  EXPECT_TRUE(device.last().isTakenDown);
  answer(true);
  EXPECT_EQ(state(), "--r");
}

TEST_F(AuthenticationManagerTest, aReplyAfterTheManagersEndIsNotHeard) {
  std::optional<AuthenticationManager> shortLived(
      std::in_place, AuthenticationEnvironment{device.factory(), *texts, executor, console});
  shortLived->authenticate();
  shortLived.reset();
  EXPECT_TRUE(device.last().isTakenDown);
  answer(true);
  EXPECT_EQ(device.asked(), "b");
}

TEST_F(AuthenticationManagerTest, observersHearOfWhatIsShown) {
  std::vector<std::string> seen;
  auto observing = manager.observe([&] { seen.push_back(state()); });
  manager.authenticate();
  answer(true);
  manager.authenticate();
  observing.reset();
  answer(false);
  EXPECT_EQ(seen, (std::vector<std::string>{"-a-", "---", "u--", "ua-"}));
}

TEST_F(AuthenticationManagerTest, aFetchThatFailsIsPrintedAndChangesNothing) {
  const TemporaryFolder folder;
  const std::string path = folder.path() + "/Pillora.store";
  store = openStore(executor, path);
  require(true);
  check();
  answer(true);
  (*store->mainContext().fetch<AppSettings>()).front()->requireAuthentication = false;
  executor.drain();
  store = openStore(executor, path);
  ForeignConnection(path).run("ALTER TABLE AppSettings RENAME TO Elsewhere");
  check();
  ASSERT_EQ(console.lines().size(), 1U);
  EXPECT_TRUE(console.lines()[0].starts_with("Error checking auth settings: ")) << console.lines()[0];
  EXPECT_GT(console.lines()[0].size(), std::string("Error checking auth settings: ").size());
  EXPECT_EQ(state(), "u-r");
}

}  // namespace
}  // namespace pillora

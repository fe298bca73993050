// SPDX-License-Identifier: MIT
#include "app/ContentView.h"

#include <gtest/gtest.h>

#include "app/AppFixture.h"
#include "app/PilloraApp.h"

namespace pillora {
namespace {

/// A whole app whose settings ask for authentication or do not, with its root view.
struct ContentViewTest : ::testing::Test, AppFixture {
  ContentViewTest() {
    ModelConfiguration configuration;
    configuration.isStoredInMemoryOnly = true;
    app = valueOrAbort(PilloraApp::start(platform(), configuration));
    view.emplace(
        ScreenEnvironment{app->container().mainContext(), clock, *calendar, *texts, app->notificationManager()},
        app->authenticationManager());
  }
  void require(bool isRequired) {
    app->setupInitialSettings();
    (*app->container().mainContext().fetch<AppSettings>()).front()->requireAuthentication = isRequired;
    executor.drain();
  }
  void answer(bool success) {
    device.last().answer(success);
    executor.drain();
  }
  void appear() {
    EXPECT_TRUE(app->rootViewAppeared());
    app->scenePhaseChanged(ScenePhase::active);
  }

  std::unique_ptr<PilloraApp> app;
  std::optional<ContentView> view;
};

TEST_F(ContentViewTest, fiveTabsInTheirOrderTheFirstInFront) {
  const RootContent content = view->content();
  EXPECT_EQ(content.tabs, (std::vector<TabItem>{{0, "today", "Today", "sun.max"},
                                                {1, "upcoming", "Upcoming", "calendar.badge.clock"},
                                                {2, "medicines", "Medicines", "pills"},
                                                {3, "history", "History", "clock.arrow.circlepath"},
                                                {4, "settings", "Settings", "gear"}}));
  EXPECT_EQ(content.selectedTab, 0);
  EXPECT_EQ(content.tint, "blue");
  EXPECT_EQ(content.lockScreen, std::nullopt);
}

TEST_F(ContentViewTest, theSelectedTabStaysWhileLocked) {
  view->selectedTab = 3;
  require(true);
  EXPECT_EQ(view->content().selectedTab, 3);
  EXPECT_TRUE(view->content().lockScreen);
}

TEST_F(ContentViewTest, withoutASettingsRecordThereIsNoLockAndNobodyIsAsked) {
  app->scenePhaseChanged(ScenePhase::active);
  app->authenticationManager().checkAuthenticationRequirement(app->container());
  EXPECT_FALSE(view->isLocked());
  EXPECT_EQ(device.contexts, 0);
}

TEST_F(ContentViewTest, theLockScreensWords) {
  require(true);
  const RootContent content = view->content();
  ASSERT_TRUE(content.lockScreen);
  EXPECT_EQ(content.lockScreen->symbol, "lock.fill");
  EXPECT_EQ(content.lockScreen->title, "Pillora is Locked");
  EXPECT_EQ(content.lockScreen->text, "Authenticate to view your medications");
  EXPECT_EQ(content.lockScreen->unlock, (ActionItem{"unlock", "Unlock", "faceid"}));
  EXPECT_EQ(content.lockScreen->unlockTextColor, "white");
  EXPECT_EQ(content.lockScreen->unlockColor, "blue");
  EXPECT_EQ(content.lockScreen->hint, std::nullopt);
  EXPECT_EQ(content.lockScreen->usePasscode, std::nullopt);
}

TEST_F(ContentViewTest, switchingTheSettingOnLocksAtOnceAndAsksAtTheNextActivation) {
  appear();
  require(true);
  EXPECT_TRUE(view->isLocked());
  EXPECT_FALSE(app->authenticationManager().requiresAuth());
  EXPECT_EQ(device.asked(), "");
  app->scenePhaseChanged(ScenePhase::active);
  EXPECT_TRUE(app->authenticationManager().requiresAuth());
  EXPECT_EQ(device.asked(), "b");
}

TEST_F(ContentViewTest, switchingTheSettingOffUnlocksAtOnce) {
  require(true);
  require(false);
  EXPECT_FALSE(view->isLocked());
}

TEST_F(ContentViewTest, theButtonAsksTheOwner) {
  require(true);
  view->unlock();
  EXPECT_EQ(device.asked(), "b");
  answer(true);
  EXPECT_FALSE(view->isLocked());
}

TEST_F(ContentViewTest, whileAFingerprintIsWaitedForThePersonIsToldAndMayUseThePassword) {
  require(true);
  view->unlock();
  const auto lock = view->content().lockScreen;
  ASSERT_TRUE(lock);
  EXPECT_EQ(lock->hint, "Touch the fingerprint reader");
  EXPECT_EQ(lock->usePasscode, (ActionItem{"usePasscode", "Use Password Instead", "key"}));
  view->usePasscode();
  executor.drain();
  EXPECT_EQ(device.asked(), "bo");
  EXPECT_EQ(view->content().lockScreen->hint, std::nullopt) << "the passcode's prompt speaks for itself";
}

TEST_F(ContentViewTest, theBackgroundAndBackLocksAndAsksByItself) {
  require(true);
  appear();
  EXPECT_EQ(device.asked(), "b");
  answer(true);
  EXPECT_FALSE(view->isLocked());
  app->scenePhaseChanged(ScenePhase::background);
  EXPECT_TRUE(view->isLocked());
  EXPECT_EQ(device.asked(), "b") << "nobody is asked while the app is hidden";
  app->scenePhaseChanged(ScenePhase::active);
  EXPECT_TRUE(view->isLocked());
  EXPECT_EQ(device.asked(), "bb");
}

TEST_F(ContentViewTest, becomingInactiveLocksNothing) {
  require(true);
  appear();
  answer(true);
  app->scenePhaseChanged(ScenePhase::inactive);
  app->scenePhaseChanged(ScenePhase::active);
  EXPECT_FALSE(view->isLocked());
  EXPECT_EQ(device.asked(), "b");
}

TEST_F(ContentViewTest, cancellingBothPromptsLeavesTheLockScreenUp) {
  require(true);
  appear();
  answer(false);
  answer(false);
  EXPECT_EQ(device.asked(), "bo");
  EXPECT_TRUE(view->isLocked());
}

TEST_F(ContentViewTest, aReplyFromBeforeTheBackgroundDoesNotUnlock) {
  require(true);
  appear();
  const auto former = device.prompts.back();
  app->scenePhaseChanged(ScenePhase::background);
  former->answer(true);
  executor.drain();
  EXPECT_TRUE(view->isLocked());
}

TEST_F(ContentViewTest, anActivationBeforeTheFirstAppearanceAsksAfterIt) {
  require(true);
  app->scenePhaseChanged(ScenePhase::active);
  EXPECT_EQ(device.asked(), "");
  EXPECT_TRUE(app->rootViewAppeared());
  EXPECT_EQ(device.asked(), "b");
}

TEST_F(ContentViewTest, theSubmitComesBeforeTheRelockAndTheBadgeBeforeTheCheck) {
  require(true);
  appear();
  answer(true);
  size_t submitted = 0;
  const size_t before = scheduler.submissions.size();
  const auto observing =
      app->authenticationManager().observe([&] { submitted = scheduler.submissions.size() - before; });
  app->scenePhaseChanged(ScenePhase::background);
  EXPECT_EQ(submitted, 1U);
  std::optional<int64_t> badge;
  const auto watching = app->authenticationManager().observe([&] { badge = center.badge; });
  center.badge = 1;
  app->scenePhaseChanged(ScenePhase::active);
  EXPECT_EQ(badge, 0);
}

}  // namespace
}  // namespace pillora

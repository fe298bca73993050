// SPDX-License-Identifier: MIT
// The lock as a person meets it: it lies over everything, and only the owner takes it away.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class Lock : public WindowTest {
 protected:
  /// Opened and unlocked, with the lock required.
  void openUnlocked() {
    aspirin_ = add("Aspirin", {{8, 0}});
    settings()->requireAuthentication = true;
    executor.drain();
    open();
    answer(true);
    ASSERT_FALSE(isLocked());
  }
  void answer(bool success) {
    device.last().answer(success);
    settleAll();
  }
  /// Away for a moment; whoever comes back has been asked for a fingerprint.
  void leaveAndComeBack() {
    leave();
    comeBack(clock.now() + std::chrono::minutes(5));
  }
  bool isLocked() { return shows("Pillora is Locked"); }

  std::shared_ptr<Medicine> aspirin_;
};

const std::string kLockControls = "Unlock; Use Password Instead";

TEST_F(Lock, aStartShowsNothingElseUntilTheFingerprintIsKnown) {
  add("Aspirin", {{8, 0}});
  settings()->requireAuthentication = true;
  executor.drain();
  open();
  EXPECT_TRUE(isLocked() && shows("Touch the fingerprint reader"));
  EXPECT_FALSE(shows("Aspirin"));
  EXPECT_EQ(allControls(), kLockControls);
  answer(true);
  EXPECT_FALSE(isLocked());
  EXPECT_TRUE(has("Aspirin"));
  EXPECT_EQ(device.asked(), "b");
}

TEST_F(Lock, switchingItOnLocksAtOnceAndThePersonUnlocks) {
  open();
  key(Qt::Key_5, Qt::ControlModifier);
  tap("Require Authentication");
  EXPECT_TRUE(settings()->requireAuthentication());
  ASSERT_TRUE(isLocked());
  EXPECT_EQ(device.asked(), "");
  tap("Unlock");
  EXPECT_EQ(device.asked(), "b");
  answer(true);
  EXPECT_FALSE(isLocked());
  EXPECT_TRUE(isOn("Require Authentication"));
}

TEST_F(Lock, neitherKeysNorAScreenReaderReachTheTabs) {
  openUnlocked();
  leaveAndComeBack();
  ASSERT_TRUE(isLocked());
  EXPECT_EQ(allControls(), kLockControls);
  key(Qt::Key_3, Qt::ControlModifier);
  key(Qt::Key_N, Qt::ControlModifier);
  key(Qt::Key_F, Qt::ControlModifier);
  for (int i = 0; i < 8; ++i) {
    key(Qt::Key_Tab);
    key(Qt::Key_Delete);
    ASSERT_NE(window_->activeFocusItem(), nullptr);
  }
  EXPECT_TRUE(isLocked());
  EXPECT_EQ(app_->root()->selectedTab(), 0);
  EXPECT_FALSE(app_->addMedicine()->isOpen());
  EXPECT_EQ(medicines().size(), 1U);
}

TEST_F(Lock, itLiesOverASheetWhichIsThereAgainAsItWas) {
  openUnlocked();
  key(Qt::Key_N, Qt::ControlModifier);
  fill("Medicine Name", "Zinc");
  leaveAndComeBack();
  EXPECT_TRUE(isLocked());
  EXPECT_EQ(allControls(), kLockControls);
  EXPECT_FALSE(shows("Zinc"));
  answer(true);
  EXPECT_EQ(textIn("Medicine Name"), "Zinc");
  tap("Save");
  EXPECT_EQ(medicines().size(), 2U);
}

TEST_F(Lock, whatIsSearchedForStandsInItsFieldAfterwards) {
  openUnlocked();
  add("Zinc", {{8, 0}});
  key(Qt::Key_3, Qt::ControlModifier);
  tap("Search medicines");
  type("zi");
  leaveAndComeBack();
  answer(true);
  EXPECT_EQ(textIn("Search medicines"), "zi");
  EXPECT_TRUE(has("Zinc") && !has("Aspirin"));
  tap("Clear Search");
  EXPECT_TRUE(has("Aspirin"));
}

TEST_F(Lock, itLiesOverTheMonthOfASheet) {
  openUnlocked();
  key(Qt::Key_N, Qt::ControlModifier);
  tap("Start Date");
  ASSERT_TRUE(has("Next Month"));
  leaveAndComeBack();
  EXPECT_EQ(allControls(), kLockControls);
  answer(true);
  EXPECT_TRUE(has("Next Month"));
  key(Qt::Key_Escape);
  EXPECT_TRUE(has("Medicine Name") && !has("Next Month"));
}

TEST_F(Lock, itLiesOverAlertsAndNothingBehindItIsAnswered) {
  openUnlocked();
  key(Qt::Key_3, Qt::ControlModifier);
  tap("Aspirin");
  tap("Delete Medicine");
  ASSERT_TRUE(shows("Delete Medicine?"));
  leaveAndComeBack();
  EXPECT_EQ(allControls(), kLockControls);
  EXPECT_FALSE(shows("Delete Medicine?"));
  for (const Qt::Key each : {Qt::Key_Tab, Qt::Key_Escape, Qt::Key_Delete}) key(each);
  EXPECT_EQ(medicines().size(), 1U);
  answer(true);
  EXPECT_TRUE(shows("Delete Medicine?"));
  tap("Delete");
  EXPECT_TRUE(medicines().empty());
}

TEST_F(Lock, itLiesOverAMenuWhichIsGoneThen) {
  openUnlocked();
  key(Qt::Key_5, Qt::ControlModifier);
  tap("Sound");
  leaveAndComeBack();
  EXPECT_EQ(allControls(), kLockControls);
  answer(true);
  EXPECT_TRUE(has("Sound") && !has("Chime"));
}

TEST_F(Lock, aMessageThatComesMeanwhileWaitsBehindIt) {
  openUnlocked();
  key(Qt::Key_5, Qt::ControlModifier);
  tap("Create Backup");
  tap("Create Local Backup");
  leaveAndComeBack();
  finishBackground();
  EXPECT_TRUE(isLocked() && !shows("Backup Created"));
  EXPECT_EQ(allControls(), kLockControls);
  answer(true);
  EXPECT_TRUE(shows("Backup Created"));
  tap("OK");
  EXPECT_FALSE(shows("Backup Created"));
}

TEST_F(Lock, thePasswordIsAskedForInstead) {
  openUnlocked();
  leaveAndComeBack();
  tap("Use Password Instead");
  EXPECT_EQ(device.asked(), "bbo");
  EXPECT_FALSE(has("Use Password Instead"));
  answer(true);
  EXPECT_FALSE(isLocked());
}

TEST_F(Lock, whoIsRefusedStaysOutsideAndMayTryAgain) {
  openUnlocked();
  leaveAndComeBack();
  answer(false);
  EXPECT_EQ(device.asked(), "bbo");
  answer(false);
  EXPECT_TRUE(isLocked());
  ASSERT_TRUE(tabTo("Unlock"));
  key(Qt::Key_Space);
  EXPECT_EQ(device.asked(), "bbob");
  answer(true);
  EXPECT_FALSE(isLocked());
}

TEST_F(Lock, withoutAFingerprintReaderThePasswordIsAskedForAtOnce) {
  device.hasBiometrics = false;
  openUnlocked();
  EXPECT_EQ(device.asked(), "o");
  leaveAndComeBack();
  EXPECT_EQ(allControls(), "Unlock");
  answer(true);
  EXPECT_FALSE(isLocked());
}

TEST_F(Lock, anAnswerFromBeforeTheLastLockingUnlocksNothing) {
  openUnlocked();
  leaveAndComeBack();
  const auto old = device.prompts.back();
  leaveAndComeBack();
  old->answer(true);
  settleAll();
  EXPECT_TRUE(isLocked());
}

TEST_F(Lock, aSessionThatIsLockedLocksThisToo) {
  openUnlocked();
  scene_->setSessionLocked(true);
  settleAll();
  EXPECT_TRUE(isLocked());
  scene_->setSessionLocked(false);
  settleAll();
  answer(true);
  EXPECT_FALSE(isLocked());
}

}  // namespace
}  // namespace pillora

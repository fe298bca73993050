// SPDX-License-Identifier: MIT
// What the desktop and the session do to the window.
#include "ui/SceneWatch.h"
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class Activation : public WindowTest {
 protected:
  QQuickItem* lock() { return seek("text", QStringLiteral("Pillora is Locked")); }
};

TEST_F(Activation, theLauncherOpensTheFormAndShowsTabs) {
  open();
  app_->perform("history");
  EXPECT_EQ(app_->root()->selectedTab(), 3);
  app_->perform("today");
  EXPECT_EQ(app_->root()->selectedTab(), 0);
  app_->perform("add-medicine");
  settleAll();
  EXPECT_NE(seek("name", QStringLiteral("Medicine Name"), "TextField"), nullptr);
  app_->perform("");
  app_->perform("nothing that there is");
  EXPECT_EQ(app_->root()->selectedTab(), 0);
  EXPECT_TRUE(app_->addMedicine()->isOpen());
}

TEST_F(Activation, aFormIsNotShownBeforeTheLockIsOpen) {
  settings()->requireAuthentication = true;
  executor.drain();
  open();
  app_->perform("add-medicine");
  settleAll();
  EXPECT_NE(lock(), nullptr);
  EXPECT_EQ(seek("name", QStringLiteral("Medicine Name"), "TextField"), nullptr);
  device.last().answer(true);
  settleAll();
  EXPECT_EQ(lock(), nullptr);
  EXPECT_NE(seek("name", QStringLiteral("Medicine Name"), "TextField"), nullptr);
}

TEST_F(Activation, theSessionsLockLocksTheWindow) {
  settings()->requireAuthentication = true;
  executor.drain();
  open();
  device.last().answer(true);
  settleAll();
  ASSERT_EQ(lock(), nullptr);
  SceneWatch scene(*app_, *window_);
  scene.setSessionLocked(true);
  settleAll();
  EXPECT_NE(lock(), nullptr);
  EXPECT_FALSE(scene.isActive());
  const size_t prompts = device.prompts.size();
  scene.setSessionLocked(false);
  settleAll();
  EXPECT_TRUE(scene.isActive());
  EXPECT_GT(device.prompts.size(), prompts) << "it asks again by itself";
}

}  // namespace
}  // namespace pillora

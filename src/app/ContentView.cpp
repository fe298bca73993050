// SPDX-License-Identifier: MIT
#include "app/ContentView.h"

namespace pillora {

ContentView::ContentView(ScreenEnvironment environment, AuthenticationManager& authentication)
    : environment_(environment), authentication_(authentication), settings_(environment.context) {}

bool ContentView::isLocked() const {
  const auto& settings = settings_.records();
  return !settings.empty() && settings.front()->requireAuthentication() && !authentication_.isUnlocked();
}

RootContent ContentView::content() const {
  const Texts& texts = environment_.texts;
  RootContent content;
  content.tabs = {{0, "today", texts.text("Today"), "sun.max"},
                  {1, "upcoming", texts.text("Upcoming"), "calendar.badge.clock"},
                  {2, "medicines", texts.text("Medicines"), "pills"},
                  {3, "history", texts.text("History"), "clock.arrow.circlepath"},
                  {4, "settings", texts.text("Settings"), "gear"}};
  content.selectedTab = selectedTab;
  content.tint = "blue";
  if (isLocked()) content.lockScreen = lockScreen();
  return content;
}

LockScreenView ContentView::lockScreen() const {
  const Texts& texts = environment_.texts;
  LockScreenView lock;
  lock.symbol = "lock.fill";
  lock.title = texts.text("Pillora is Locked");
  lock.text = texts.text("Authenticate to view your medications");
  lock.unlock = {"unlock", texts.text("Unlock"), "faceid"};
  lock.unlockTextColor = "white";
  lock.unlockColor = "blue";
  if (authentication_.isAuthenticating()) {
    lock.hint = texts.text("Touch the fingerprint reader");
    lock.usePasscode = {"usePasscode", texts.text("Use Password Instead"), "key"};
  }
  return lock;
}

}  // namespace pillora

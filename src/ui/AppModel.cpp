// SPDX-License-Identifier: MIT
#include "ui/AppModel.h"

#include <chrono>

namespace pillora {

void RootModel::select(int tag) {
  const auto tabs = view_.content().tabs;
  for (const TabItem& tab : tabs) {
    if (tab.tag == tag) view_.selectedTab = tag;
  }
  emit acted();
}

void RootModel::show(std::string_view id) {
  for (const TabItem& tab : view_.content().tabs) {
    if (tab.id == id) select(tab.tag);
  }
}

AppModel::AppModel(const WindowEnvironment& environment)
    : environment_(environment),
      backups_(environment.backups),
      root_(environment.screens, environment.app.authenticationManager()),
      today_(environment.screens, environment.desktop),
      upcoming_(environment.screens, environment.desktop),
      medicines_(environment.screens),
      history_(environment.screens, environment.desktop),
      settings_(environment.screens, environment.backups, backups_, environment.console, environment.desktop,
                environment.makeLAContext),
      detail_(environment.screens),
      addMedicine_(environment.screens) {
  soon_.setSingleShot(true);
  soon_.setInterval(0);
  connect(&soon_, &QTimer::timeout, this, &AppModel::redraw);
  minute_.setSingleShot(true);
  minute_.setTimerType(Qt::PreciseTimer);
  connect(&minute_, &QTimer::timeout, this, &AppModel::redraw);

  const auto drawAgain = [this] { redrawSoon(); };
  // A tab that comes to the front, and the lock, show at once.
  connect(&root_, &ScreenModel::acted, this, &AppModel::redraw);
  for (ScreenModel* model : {static_cast<ScreenModel*>(&today_), static_cast<ScreenModel*>(&upcoming_),
                             static_cast<ScreenModel*>(&medicines_), static_cast<ScreenModel*>(&history_),
                             static_cast<ScreenModel*>(&settings_), static_cast<ScreenModel*>(&detail_),
                             static_cast<ScreenModel*>(&addMedicine_)}) {
    connect(model, &ScreenModel::acted, this, drawAgain);
  }
  observers_ = {environment.screens.context.observe(drawAgain),
                environment.app.authenticationManager().observe([this] { redraw(); }),
                environment.screens.notifications.observe(drawAgain)};
  redraw();
}

void AppModel::setScenePhase(ScenePhase phase) {
  if (phase == ScenePhase::background) detail_.flush();
  phase_ = phase;
  environment_.app.scenePhaseChanged(phase);
  // Who comes back may have been to the desktop's settings, or have installed a notification server.
  if (phase == ScenePhase::active) environment_.screens.notifications.checkAuthorizationStatus();
  redraw();
}

void AppModel::perform(std::string_view action) {
  if (action == "add-medicine") addMedicine_.open();
  root_.show(action);
}

ScreenModel& AppModel::front() {
  ScreenModel* const tabs[] = {&today_, &upcoming_, &medicines_, &history_, &settings_};
  return *tabs[root_.selectedTab()];
}

void AppModel::redraw() {
  soon_.stop();
  root_.redraw();
  awaitNextMinute();
  if (root_.isLocked()) return;
  const bool hasAppeared = std::exchange(tabDrawn_, root_.selectedTab()) != root_.selectedTab();
  if (hasAppeared && &front() == &settings_) settings_.appeared();
  front().redraw();
  detail_.refresh();
  if (addMedicine_.isOpen()) addMedicine_.redraw();
}

void AppModel::redrawSoon() {
  if (!soon_.isActive()) soon_.start();
}

void AppModel::awaitNextMinute() {
  using namespace std::chrono;
  minute_.stop();
  if (phase_ == ScenePhase::background) return;
  const auto now = environment_.screens.clock.now();
  const auto next = environment_.screens.calendar.startOfMinute(now) + minutes(1);
  minute_.start(std::max(ceil<milliseconds>(next - now), milliseconds(1)));
}

}  // namespace pillora

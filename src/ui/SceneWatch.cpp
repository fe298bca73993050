// SPDX-License-Identifier: MIT
#include "ui/SceneWatch.h"

namespace pillora {

SceneWatch::SceneWatch(AppModel& app, QWindow& window) : app_(app), window_(window) {
  connect(&window, &QWindow::visibilityChanged, this, &SceneWatch::look);
  connect(&window, &QWindow::activeChanged, this, &SceneWatch::look);
}

void SceneWatch::setSessionLocked(bool isLocked) {
  isSessionLocked_ = isLocked;
  look();
}

void SceneWatch::look() {
  const ScenePhase phase = phaseNow();
  if (phase == phase_) return;
  phase_ = phase;
  app_.setScenePhase(phase);
}

ScenePhase SceneWatch::phaseNow() const {
  const bool isAway = !window_.isVisible() || window_.visibility() == QWindow::Minimized || isSessionLocked_;
  if (isAway) return ScenePhase::background;
  return window_.isActive() ? ScenePhase::active : ScenePhase::inactive;
}

}  // namespace pillora

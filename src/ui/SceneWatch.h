// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QWindow>

#include "ui/AppModel.h"

namespace pillora {

/// Tells the app how far its window is from the person: in the background while it is hidden, minimised or closing or
/// while the session is locked, inactive without focus, active with it. App and window outlive it.
class SceneWatch final : public QObject {
  Q_OBJECT

 public:
  SceneWatch(AppModel& app, QWindow& window);

  void setSessionLocked(bool isLocked);
  bool isActive() const { return phase_ == ScenePhase::active; }

 private:
  void look();
  ScenePhase phaseNow() const;

  AppModel& app_;
  QWindow& window_;
  bool isSessionLocked_ = false;
  ScenePhase phase_ = ScenePhase::inactive;
};

}  // namespace pillora

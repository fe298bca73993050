// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickWindow>
#include <QString>
#include <functional>
#include <vector>

#include "support/Result.h"
#include "ui/AppModel.h"
#include "ui/Appearance.h"

namespace pillora {

/// One screen, or a sheet over it: how to come there, and how to leave it.
struct Scene {
  const char* name;
  std::function<void(AppModel&)> enter;
  std::function<void(AppModel&)> leave = [](AppModel&) {};
  bool isLong = false;  ///< goes on below the foot of a phone
};

/// Every screen of the app, with its sheets. The list of medicines is not empty.
std::vector<Scene> allScenes();

/// Draws every screen as the window shows it into PNG files in the folder, and prints their names: light and dark, on a
/// phone and on a desktop; on a phone also from right to left and with letters half as large again; and what goes on
/// below a phone's foot in one long picture. Ends at the first that cannot be written; the error names it, or the
/// folder that cannot be made. The app is left in some state.
Result<void> drawScreens(AppModel& app, QQuickWindow& window, Appearance& appearance, const QString& folder);

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickWindow>
#include <QString>

#include "ui/AppModel.h"
#include "ui/Appearance.h"

namespace pillora {

/// Draws every screen as the window shows it, in light and dark, on a phone and on a desktop, into PNG files in the
/// folder, and prints their names. Answers false when one could not be written. The app is left in some state.
bool drawScreens(AppModel& app, QQuickWindow& window, Appearance& appearance, const QString& folder);

}  // namespace pillora

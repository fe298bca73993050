// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include "platform/Texts.h"
#include "support/Result.h"

namespace pillora {

/// Makes the window that tells why Pillora did not start, in an engine that holds nothing else and finds the module. It
/// belongs to the engine. Null when it cannot be made.
QQuickWindow* startFailureWindow(QQmlApplicationEngine& engine, const Error& failure, const Texts& texts);

}  // namespace pillora

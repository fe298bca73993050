// SPDX-License-Identifier: MIT
#include "ui/Appearance.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <algorithm>

namespace pillora {

Appearance::Appearance(QObject* parent) : QObject(parent) {
  const QString preferred = QStringLiteral("Inter");
  fontFamily_ = QFontDatabase::hasFamily(preferred) ? preferred : QGuiApplication::font().family();
}

Appearance& Appearance::of(QQmlEngine& engine) {
  return *engine.singletonInstance<Appearance*>(qmlTypeId("Pillora", 1, 0, "Appearance"));
}

void Appearance::setFontScale(double scale) {
  if (!(scale > 0)) return;
  fontScale_ = std::clamp(scale, 0.5, 3.0);
  emit changed();
}

}  // namespace pillora

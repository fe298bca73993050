// SPDX-License-Identifier: MIT
#include "ui/Appearance.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <algorithm>

namespace pillora {

namespace {
const QString kDrawnFor = QStringLiteral("Inter");
}

Appearance::Appearance(QObject* parent) : QObject(parent), fontFamily_(typeface(kDrawnFor, {})) {}

QString Appearance::typeface(const QString& first, const QString& desktops) {
  if (QFontDatabase::hasFamily(first)) return first;
  // Words for weight and slant may follow the name.
  for (qsizetype length = desktops.size(); length > 0;
       length = desktops.lastIndexOf(u' ', length - desktops.size() - 1)) {
    if (QFontDatabase::hasFamily(desktops.left(length))) return desktops.left(length);
  }
  return QGuiApplication::font().family();
}

Appearance& Appearance::of(QQmlEngine& engine) {
  return *engine.singletonInstance<Appearance*>(qmlTypeId("Pillora", 1, 0, "Appearance"));
}

void Appearance::follow(const DesktopLook& look) {
  dark_ = look.isDark;
  highContrast_ = look.isHighContrast;
  reducedMotion_ = look.isMotionReduced;
  fontFamily_ = typeface(kDrawnFor, QString::fromStdString(look.font));
  setFontScale(look.textScale);
}

void Appearance::setFontScale(double scale) {
  if (scale > 0) fontScale_ = std::clamp(scale, 0.5, 3.0);
  emit changed();
}

}  // namespace pillora

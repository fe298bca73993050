// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

#include "platform/DesktopLook.h"

namespace pillora {

/// What the person's system asks of everything that is drawn. The values start as the defaults here and are set by
/// whoever knows better: the desktop (follow), the language in use, a test.
class Appearance : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(bool dark MEMBER dark_ NOTIFY changed)
  Q_PROPERTY(bool highContrast MEMBER highContrast_ NOTIFY changed)
  Q_PROPERTY(double fontScale READ fontScale WRITE setFontScale NOTIFY changed)
  Q_PROPERTY(bool reducedMotion MEMBER reducedMotion_ NOTIFY changed)
  Q_PROPERTY(bool mirrored MEMBER mirrored_ NOTIFY changed)
  Q_PROPERTY(QString fontFamily MEMBER fontFamily_ NOTIFY changed)

 public:
  /// Begins with the typeface that Pillora is drawn for where it is installed, else with the system's.
  explicit Appearance(QObject* parent = nullptr);

  /// The one that the QML of this engine sees. Needs the module to be registered; lives as long as the engine.
  static Appearance& of(QQmlEngine& engine);

  /// Takes over all that the desktop asks.
  void follow(const DesktopLook& look);
  /// `first` where it is installed, else the desktop's, which may have words for its weight and slant after its name,
  /// else the toolkit's own.
  static QString typeface(const QString& first, const QString& desktops);

  double fontScale() const { return fontScale_; }
  /// 1 is a body text of 17 pixels. Kept within 0.5 and 3, beyond which no layout holds; what is no scale changes
  /// nothing.
  void setFontScale(double scale);

 signals:
  void changed();

 private:
  bool dark_ = false;
  bool highContrast_ = false;
  double fontScale_ = 1;
  bool reducedMotion_ = false;
  bool mirrored_ = false;  ///< reads from right to left
  QString fontFamily_;
};

}  // namespace pillora

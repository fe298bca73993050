// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <memory>
#include <string>

#include "ui/Appearance.h"
#include "ui/Sample.h"

namespace pillora {

/// A window without a display, for QML that uses the module Pillora. Every warning that Qt prints meanwhile fails the
/// test, unless the test takes it.
class QmlTest : public testing::Test {
 protected:
  QmlTest();
  ~QmlTest() override;

  /// Loads a file of the sheet ("TodayPage") and shows it; null after a failure.
  QQuickItem* showPage(const QString& name, QSize size = {360, 720});
  /// Shows this QML, whose imports are QtQuick, Pillora and Pillora.Samples.
  QQuickItem* show(const QString& qml, QSize size = {360, 400});
  /// Everything that is waiting has happened and is drawn.
  void settle();
  /// What a loop that runs deletes by itself: items that have left, which may warn on their way out.
  static void deleteWhatIsGone();

  /// The item in there whose objectName this is.
  QQuickItem* find(const QString& name);
  void click(QQuickItem* item) { QTest::mouseClick(&view_, Qt::LeftButton, {}, middle(item)); }
  QPoint middle(QQuickItem* item) { return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint(); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&view_, key, modifiers);
    settle();
  }
  void focus(QQuickItem* item) {
    item->forceActiveFocus(Qt::TabFocusReason);
    settle();
  }
  /// What Qt has warned of since the last call, a line each.
  std::string takeWarnings();

  Sample sample_;
  QQuickView view_;
  Appearance& appearance_;

 private:
  std::unique_ptr<QQuickItem> made_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "ui/StartFailure.h"

#include "icu/IcuTexts.h"
#include "ui/QmlTest.h"

namespace pillora {
namespace {

/// The window of a start that failed, shown.
class StartFailure : public QmlTest {
 protected:
  StartFailure() {
    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    const Error failure{"Could not create ModelContainer: the store was written by a newer version of Pillora"};
    window_ = startFailureWindow(engine_, failure, **makeTexts("en_US", "UTC", "en"));
    if (window_ == nullptr) return;
    window_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window_));
  }

  /// The innermost item in sight with this text.
  QQuickItem* itemWith(const QString& part, QQuickItem* within = nullptr) {
    QQuickItem* const outer = within == nullptr ? window_->contentItem() : within;
    for (QQuickItem* child : outer->childItems()) {
      if (!child->isVisible()) continue;
      if (QQuickItem* const found = itemWith(part, child)) return found;
    }
    return outer->property("text").toString().contains(part) ? outer : nullptr;
  }
  bool isWithin(QQuickItem* item) {
    const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    return QRectF(0, 0, window_->width(), window_->height()).contains(place);
  }

  QQmlApplicationEngine engine_;
  QQuickWindow* window_ = nullptr;
};

TEST_F(StartFailure, theReasonIsThereToReadAndThatNothingWasChanged) {
  ASSERT_TRUE(window_);
  QQuickItem* const heading = itemWith(QStringLiteral("Pillora Cannot Start"));
  QQuickItem* const reason = itemWith(QStringLiteral("The reason: the store was written by"));
  ASSERT_TRUE(heading && reason);
  EXPECT_TRUE(reason->property("text").toString().contains(QStringLiteral("Your records were left as they are.")));
  EXPECT_TRUE(isWithin(heading));
  EXPECT_TRUE(isWithin(reason));
}

TEST_F(StartFailure, itsButtonClosesIt) {
  ASSERT_TRUE(window_);
  QQuickItem* const button = itemWith(QStringLiteral("Close"));
  ASSERT_TRUE(button);
  EXPECT_TRUE(isWithin(button));
  const QPointF middle = button->mapToScene({button->width() / 2, button->height() / 2});
  QTest::mouseClick(window_, Qt::LeftButton, {}, middle.toPoint());
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }));
}

TEST_F(StartFailure, soDoesTheEscapeKey) {
  ASSERT_TRUE(window_);
  QTest::keyClick(window_, Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }));
}

TEST_F(StartFailure, itsButtonComesIntoSightWhereTheReasonFillsTheWindow) {
  ASSERT_TRUE(window_);
  Appearance::of(engine_).setFontScale(2.5);
  window_->resize(300, 400);
  QQuickItem* const button = itemWith(QStringLiteral("Close"));
  ASSERT_TRUE(button);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !isWithin(button); }));
  QTest::keyClick(window_, Qt::Key_Tab);
  EXPECT_TRUE(QTest::qWaitFor([&] { return isWithin(button); }));
}

}  // namespace
}  // namespace pillora

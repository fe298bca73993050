// SPDX-License-Identifier: MIT
// Fingers: a tap presses, a finger that moves scrolls or swipes and presses nothing, one that rests opens the menu.
#include "ui/Demo.h"
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class Touch : public WindowTest {
 protected:
  void openDemo(int tab) {
    fillWithDemo(context(), *calendar, clock.now());
    executor.drain();
    open();
    app_->root()->select(tab);
    settleAll();
  }

  void press(QPoint at) {
    QTest::touchEvent(window_.get(), finger_).press(0, at, window_.get());
    QCoreApplication::processEvents();
  }
  void release(QPoint at) {
    QTest::touchEvent(window_.get(), finger_).release(0, at, window_.get());
    settleAll();
  }
  void tap(QPoint at) {
    press(at);
    release(at);
  }
  /// Moves from there until this holds, then lets go. Moves are told with a later frame.
  void drag(QPoint from, QPoint by, const std::function<bool()>& isDone) {
    press(from);
    QPoint at = from;
    EXPECT_TRUE(QTest::qWaitFor([&] {
      if (at != from + by) at += by / 10;
      QTest::touchEvent(window_.get(), finger_).move(0, at, window_.get());
      return isDone();
    }));
    release(at);
  }

  /// The middle of the control whose text begins so.
  QPoint place(const QString& text) {
    QQuickItem* const item = seek([&](QQuickItem* found) {
      return found->inherits("pillora::FocusItem") && found->property("text").toString().startsWith(text);
    });
    EXPECT_NE(item, nullptr) << text.toStdString();
    return item ? middle(item) : QPoint();
  }
  QQuickItem* list() {
    return seek([](QQuickItem* item) { return item->inherits("QQuickFlickable") && item->height() > 300; });
  }

 private:
  QPointingDevice* const finger_ = QTest::createTouchDevice();
};

TEST_F(Touch, aTapPresses) {
  openDemo(0);
  tap(place("Add Medicine"));
  EXPECT_TRUE(app_->addMedicine()->isOpen());
}

TEST_F(Touch, aFingerThatMovesUpScrollsAndPressesNothing) {
  openDemo(4);
  const QPoint toggle = place("Use 24-Hour Time");
  const auto isScrolled = [&] { return list()->property("contentY").toDouble() > 20; };
  drag(toggle, {0, -160}, isScrolled);
  EXPECT_FALSE(settings()->use24HourTime());
}

TEST_F(Touch, aFingerThatSlipsOffAButtonPressesNothing) {
  openDemo(4);
  const QPoint button = place("History");
  press(button);
  release(button - QPoint(0, 200));
  EXPECT_EQ(app_->root()->selectedTab(), 4);
}

TEST_F(Touch, aRowSwipedAsideIsNotOpenedAndItsButtonDeletes) {
  openDemo(2);
  const size_t before = context().fetch<Medicine>()->size();
  const QPoint row = place("Metformin");
  const auto remover = [&] {
    return seek([](QQuickItem* item) { return item->property("text") == "Delete, Metformin" && item->width() > 80; });
  };
  drag(row, {-120, 0}, [&] { return remover() != nullptr; });
  EXPECT_FALSE(app_->detail()->isOpen());
  ASSERT_TRUE(QTest::qWaitFor([&] { return remover() != nullptr; }));
  tap(middle(remover()));
  EXPECT_EQ(context().fetch<Medicine>()->size(), before - 1);
}

TEST_F(Touch, aFingerThatRestsOpensTheMenuAndNotTheMedicine) {
  openDemo(2);
  const QPoint row = place("Metformin");
  const auto menuItem = [&] {
    return seek([](QQuickItem* item) {
      return item->property("text") == QStringLiteral("Delete") && item->property("isSelected").isValid();
    });
  };
  press(row);
  EXPECT_TRUE(QTest::qWaitFor([&] { return menuItem() != nullptr; }));
  release(row);
  EXPECT_NE(menuItem(), nullptr);
  EXPECT_FALSE(app_->detail()->isOpen());
}

}  // namespace
}  // namespace pillora

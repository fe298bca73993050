// SPDX-License-Identifier: MIT
// A drum under a hand: however short the pull and whatever tells of it, the next choice is told once and stays.
#include <QWheelEvent>

#include "ui/QmlTest.h"

namespace pillora {
namespace {

class Drum : public QmlTest {
 protected:
  void SetUp() override {
    ASSERT_NE(show("Item { id: page; objectName: 'page'; width: 360; height: 400; property string told\n"
                   " property int selected: 5\n"
                   " Wheel { objectName: 'w'; x: 100; y: 50; name: 'Hour'\n"
                   "  onPicked: value => page.told += value + ' '\n"
                   "  cells: Sample.rows([0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11].map(hour => ({ value: hour,\n"
                   "   text: String(hour), isSelected: hour === 5 }))) } }"),
              nullptr);
    middle_ = middle(find("w"));
    pitch_ = find("w")->property("pitch").toDouble();
  }

  std::string told() {
    const QString told = find("page")->property("told").toString();
    find("page")->setProperty("told", QString());
    return told.toStdString();
  }
  /// The choice in the middle once the drum has come to rest.
  int atRest() {
    QQuickItem* const list = findList(find("w"));
    const auto rests = [&] {
      settle();
      QQuickItem* const current = list->property("currentItem").value<QQuickItem*>();
      return !list->property("moving").toBool() && current && middle(current) == middle_;
    };
    EXPECT_TRUE(QTest::qWaitFor(rests));
    return find("w")->property("value").toInt();
  }
  /// The hand stays where it is until nothing would be flung any more.
  void rest() {
    EXPECT_TRUE(QTest::qWaitFor([&] { return find("w")->property("speed").toDouble() == 0; }));
  }
  QPoint down(double rows) const { return {0, static_cast<int>(rows * pitch_)}; }

  static QQuickItem* findList(QQuickItem* wheel) {
    for (QQuickItem* child : wheel->childItems()) {
      if (child->inherits("QQuickListView")) return child;
    }
    return nullptr;
  }

  void pullByMouse(double rows, int steps) {
    QTest::mousePress(&view_, Qt::LeftButton, {}, middle_);
    for (int step = 1; step <= steps; ++step) QTest::mouseMove(&view_, middle_ + down(rows * step / steps), 16);
    rest();
    QTest::mouseRelease(&view_, Qt::LeftButton, {}, middle_ + down(rows));
  }
  void pullByFinger(double rows, int steps) {
    const auto stands = [&] { return findList(find("w"))->property("contentY").toDouble(); };
    const double start = stands();
    QTest::touchEvent(&view_, finger()).press(0, middle_, &view_);
    for (int step = 1; step <= steps; ++step) {
      QTest::touchEvent(&view_, finger()).move(0, middle_ + down(rows * step / steps), &view_);
      settle();
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return stands() != start; }));
    rest();
    QTest::touchEvent(&view_, finger()).release(0, middle_ + down(rows), &view_);
  }

  QPoint middle_;
  double pitch_ = 0;

 private:
  static QPointingDevice* finger() {
    static QPointingDevice* const device = QTest::createTouchDevice();
    return device;
  }
};

TEST_F(Drum, aShortPullTurnsItByOneChoice) {
  for (const int steps : {1, 8}) {
    for (const double rows : {0.4, -0.4, 0.6, -0.6, 1.0, -1.0}) {
      for (const bool isFinger : {false, true}) {
        const int before = atRest();
        isFinger ? pullByFinger(rows, steps) : pullByMouse(rows, steps);
        const int expected = before + (rows > 0 ? -1 : 1);
        EXPECT_EQ(atRest(), expected) << rows << " in " << steps << (isFinger ? " by finger" : " by mouse");
        EXPECT_EQ(told(), std::to_string(expected) + " ") << rows << " in " << steps << (isFinger ? " finger" : "");
      }
    }
  }
}

TEST_F(Drum, aHandThatDoesNotRestFlingsIt) {
  const QPoint end = middle_ - down(1);
  QTest::mousePress(&view_, Qt::LeftButton, {}, middle_);
  for (int step = 1; step <= 4; ++step) QTest::mouseMove(&view_, middle_ - down(step / 4.0), 10);
  QTest::mouseRelease(&view_, Qt::LeftButton, {}, end);
  const int flung = atRest();
  EXPECT_GT(flung, 7);
  EXPECT_EQ(told(), std::to_string(flung) + " ");
}

TEST_F(Drum, atItsEndItStays) {
  pullByMouse(5, 10);
  EXPECT_EQ(atRest(), 0);
  told();
  pullByMouse(0.6, 4);
  EXPECT_EQ(atRest(), 0);
  EXPECT_EQ(told(), "");
}

TEST_F(Drum, aTremblingHandTurnsNothing) {
  pullByMouse(0.1, 4);
  EXPECT_EQ(atRest(), 5);
  EXPECT_EQ(told(), "");
}

TEST_F(Drum, aNotchOfAMouseWheelTurnsItByOneChoice) {
  for (const int notch : {-120, 120}) {
    const int before = atRest();
    QWheelEvent event(middle_, view_.mapToGlobal(middle_), {}, {0, notch}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view_, &event);
    const int expected = before - notch / 120;
    EXPECT_EQ(atRest(), expected);
    EXPECT_EQ(told(), std::to_string(expected) + " ");
  }
}

TEST_F(Drum, aChoiceThatIsPressedIsToldAndKeysGoOnFromThere) {
  QTest::mouseClick(&view_, Qt::LeftButton, {}, middle_ + down(1));
  EXPECT_EQ(told(), "6 ");
  press(Qt::Key_Tab);
  press(Qt::Key_Down);
  EXPECT_EQ(told(), "7 ");
}

TEST_F(Drum, itsRingIsShownForKeysAlone) {
  find("w")->forceActiveFocus(Qt::MouseFocusReason);
  EXPECT_EQ(find("w")->property("visualFocus"), false);
  focus(find("page"));
  focus(find("w"));
  EXPECT_EQ(find("w")->property("visualFocus"), true);
}

}  // namespace
}  // namespace pillora

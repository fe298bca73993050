// SPDX-License-Identifier: MIT
// The whole window without a pointer: Tab and arrows reach everything, what has the focus shows it and is in sight, and
// what opens takes the focus and gives it back.
#include <set>

#include "ui/Demo.h"
#include "ui/ScreenPictures.h"
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class Keyboard : public WindowTest {
 protected:
  void openDemo() {
    fillWithDemo(context(), *calendar, clock.now());
    executor.drain();
    open();
  }

  QQuickItem* focused() { return window_->activeFocusItem(); }
  std::string focusedText() { return focused() ? focused()->property("text").toString().toStdString() : ""; }
  bool isShown() { return focused() && focused()->property("visualFocus").toBool(); }

  /// Presses Tab until the control with this text has the focus.
  void tabTo(const std::string& text) {
    for (int i = 0; i < 80 && focusedText() != text; ++i) key(Qt::Key_Tab);
    ASSERT_EQ(focusedText(), text);
  }
  /// The same by the beginning of the text.
  void tabToOneThatBegins(const std::string& text) {
    for (int i = 0; i < 80 && !focusedText().starts_with(text); ++i) key(Qt::Key_Tab);
    ASSERT_TRUE(focusedText().starts_with(text)) << focusedText();
  }

  /// What Tab is to reach: in the sheet or alert that is on top, else on the page.
  std::vector<QQuickItem*> reachable() {
    const auto isIn = [](const QQuickItem* item, const char* type) {
      while (item && !item->inherits(type)) item = item->parentItem();
      return item != nullptr;
    };
    const auto all = seekAll([](QQuickItem* item) { return item->activeFocusOnTab(); });
    std::vector<QQuickItem*> over;
    for (QQuickItem* item : all) {
      if (isIn(item, "QQuickOverlay")) over.push_back(item);
    }
    return over.empty() ? all : over;
  }
};

TEST_F(Keyboard, tabReachesEveryControlOfEveryScreenInSight) {
  openDemo();
  for (const Scene& scene : allScenes()) {
    const std::string name = scene.name;
    if (name.ends_with("-sheet")) continue;  // stands on a sheet that Tab does not reach meanwhile
    scene.enter(*app_);
    settleAll();
    const auto wanted = reachable();
    std::set<QQuickItem*> missing(wanted.begin(), wanted.end());
    for (int i = 0; i < 300 && !missing.empty(); ++i) {  // a list brings more while Tab walks over it
      key(Qt::Key_Tab);
      QQuickItem* const item = focused();
      ASSERT_NE(item, nullptr) << name;
      missing.erase(item);
      const QRectF area = item->mapRectToScene({0, 0, item->width(), item->height()});
      EXPECT_TRUE(area.bottom() > 0 && area.top() < window_->height())
          << name << ": " << item->metaObject()->className() << " " << focusedText() << " at " << area.top();
      EXPECT_TRUE(isShown() || !item->inherits("pillora::FocusItem")) << name << ": " << focusedText();
    }
    for (const QQuickItem* item : missing) ADD_FAILURE() << name << ": " << item->metaObject()->className();
    scene.leave(*app_);
    settleAll();
  }
}

TEST_F(Keyboard, shiftAndTabGoBack) {
  openDemo();
  key(Qt::Key_Tab);
  QQuickItem* const first = focused();
  key(Qt::Key_Tab);
  EXPECT_NE(focused(), first);
  key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(focused(), first);
}

TEST_F(Keyboard, arrowsWalkOverAGridAndSpacePicks) {
  open();
  app_->addMedicine()->open();
  settleAll();
  tabTo("Blue");
  key(Qt::Key_Right);
  EXPECT_EQ(focusedText(), "Green");
  key(Qt::Key_Down);
  EXPECT_EQ(focusedText(), "Yellow");
  EXPECT_TRUE(isShown());
  key(Qt::Key_Space);
  EXPECT_TRUE(focused()->property("isSelected").toBool());
  key(Qt::Key_Up);
  key(Qt::Key_Left);
  EXPECT_EQ(focusedText(), "Blue");
}

TEST_F(Keyboard, returnOpensAMedicineAndEscapeGoesBackToItsRow) {
  openDemo();
  key(Qt::Key_3, Qt::ControlModifier);
  tabToOneThatBegins("Metformin");
  QQuickItem* const row = focused();
  key(Qt::Key_Return);
  EXPECT_TRUE(app_->detail()->isOpen());
  EXPECT_NE(focused(), row);
  key(Qt::Key_Escape);
  EXPECT_FALSE(app_->detail()->isOpen());
  EXPECT_TRUE(QTest::qWaitFor([&] { return focused() == row && isShown(); }));
}

TEST_F(Keyboard, aSheetTakesTheFocusAndGivesItBack) {
  openDemo();
  tabTo("Add Medicine");
  QQuickItem* const button = focused();
  key(Qt::Key_Return);
  EXPECT_EQ(focused(), control("Medicine Name"));
  type("Zinc");
  EXPECT_EQ(textIn("Medicine Name"), "Zinc");
  key(Qt::Key_Escape);
  EXPECT_FALSE(app_->addMedicine()->isOpen());
  EXPECT_TRUE(QTest::qWaitFor([&] { return focused() == button && isShown(); }));
}

TEST_F(Keyboard, theMonthOpensAtItsDayAndEscapeClosesItAlone) {
  open();
  app_->addMedicine()->open();
  settleAll();
  tabTo("Start Date");
  key(Qt::Key_Space);
  EXPECT_EQ(focusedText(), "10");
  EXPECT_TRUE(isShown());
  key(Qt::Key_Down);
  EXPECT_EQ(focusedText(), "17");
  key(Qt::Key_PageDown);
  EXPECT_NE(seek("text", "February 2025"), nullptr);
  EXPECT_EQ(focusedText(), "14");
  EXPECT_TRUE(isShown());
  key(Qt::Key_Escape);
  EXPECT_TRUE(app_->addMedicine()->isOpen());
  EXPECT_TRUE(QTest::qWaitFor([&] { return focusedText() == "Start Date"; }));
}

TEST_F(Keyboard, deleteTakesAwayTheMedicineInFocus) {
  openDemo();
  key(Qt::Key_3, Qt::ControlModifier);
  tabToOneThatBegins("Metformin");
  const size_t before = context().fetch<Medicine>()->size();
  key(Qt::Key_Delete);
  EXPECT_EQ(context().fetch<Medicine>()->size(), before - 1);
  EXPECT_EQ(seek([](QQuickItem* item) { return item->property("text").toString().startsWith("Metformin"); }), nullptr);
}

TEST_F(Keyboard, pagesScrollByKeyWhereNothingHasTheFocus) {
  openDemo();
  key(Qt::Key_4, Qt::ControlModifier);
  QQuickItem* const list =
      seek([](QQuickItem* item) { return QByteArray(item->metaObject()->className()).startsWith("LongList"); });
  ASSERT_NE(list, nullptr);
  const double beginning = list->property("contentY").toDouble();
  key(Qt::Key_PageDown);
  EXPECT_GT(list->property("contentY").toDouble(), beginning + 300);
  key(Qt::Key_Home);
  EXPECT_EQ(list->property("contentY").toDouble(), beginning);
  EXPECT_EQ(list->property("originY").toDouble(), beginning);
}

}  // namespace
}  // namespace pillora

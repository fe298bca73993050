// SPDX-License-Identifier: MIT
// Whatever the keyboard reaches is large enough to touch, and a screen reader knows what it is called.
#include <QAccessible>

#include "ui/QmlTest.h"

namespace pillora {
namespace {

class Accessibility : public QmlTest {
 protected:
  /// Every item in there that is shown and can have the focus.
  std::vector<QQuickItem*> reachable(QQuickItem* item) {
    std::vector<QQuickItem*> found;
    if (!item->isVisible() || !item->isEnabled()) return found;
    if (item->activeFocusOnTab()) found.push_back(item);
    for (QQuickItem* child : item->childItems()) {
      for (QQuickItem* inside : reachable(child)) found.push_back(inside);
    }
    return found;
  }
};

const char* const kPages[] = {"TodayPage", "FormPage", "ListPage", "PartsPage", "LockPage", "SheetPage", "AlertPage"};

TEST_F(Accessibility, everyControlHasAName) {
  for (const char* page : kPages) {
    ASSERT_NE(showPage(page), nullptr);
    const auto items = reachable(view_.contentItem());
    EXPECT_FALSE(items.empty()) << page;
    for (QQuickItem* item : items) {
      QAccessibleInterface* const voice = QAccessible::queryAccessibleInterface(item);
      ASSERT_NE(voice, nullptr) << page << item->metaObject()->className();
      EXPECT_NE(voice->text(QAccessible::Name), "") << page << ": " << item->metaObject()->className();
    }
  }
}

TEST_F(Accessibility, everyControlIsLargeEnoughToTouch) {
  for (const char* page : kPages) {
    ASSERT_NE(showPage(page), nullptr);
    for (QQuickItem* item : reachable(view_.contentItem())) {
      EXPECT_GE(item->height(), 40) << page << ": " << item->metaObject()->className();
      EXPECT_GE(item->width(), 40) << page << ": " << item->metaObject()->className();
    }
  }
}

TEST_F(Accessibility, aScreenReaderCanPressAButton) {
  QQuickItem* const button = show("PButton { property int presses: 0; text: 'Take'; onClicked: ++presses }");
  ASSERT_NE(button, nullptr);
  QAccessibleInterface* const voice = QAccessible::queryAccessibleInterface(button);
  ASSERT_NE(voice->actionInterface(), nullptr);
  voice->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(button->property("presses"), 1);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
// Alerts and sheets: shown as the content says, answered by key and mouse, and nothing behind them is reached.
#include "ui/QmlTest.h"

namespace pillora {
namespace {

class Popups : public QmlTest {
 protected:
  std::string told() {
    const QString told = find("page")->property("told").toString();
    find("page")->setProperty("told", QString());
    return told.toStdString();
  }

  /// A page with a button behind, and over it whatever is given.
  void showOver(const QString& popup) {
    ASSERT_NE(show("Item { id: page; objectName: 'page'; width: 360; height: 640; property string told; property bool "
                   "up: true\n"
                   " PButton { objectName: 'behind'; text: 'Behind'; onClicked: page.told += 'behind' }\n" +
                       popup + " }",
                   {360, 640}),
              nullptr);
    settle();
  }
};

const char* const kAlert =
    "AlertDialog { shown: page.up; title: 'Undo Taken'; message: 'Really?'; cancel: 'Cancel'; confirm: 'Undo'; "
    "isDestructive: true\n"
    " onCancelled: page.told += 'cancelled'; onConfirmed: page.told += 'confirmed' }";

TEST_F(Popups, returnAnswersAnAlertWithTheHarmlessButton) {
  showOver(kAlert);
  press(Qt::Key_Return);
  EXPECT_EQ(told(), "cancelled");
}

TEST_F(Popups, escapeCancelsAnAlert) {
  showOver(kAlert);
  press(Qt::Key_Tab);
  press(Qt::Key_Escape);
  EXPECT_EQ(told(), "cancelled");
}

TEST_F(Popups, tabAndReturnConfirmAnAlert) {
  showOver(kAlert);
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  EXPECT_EQ(told(), "confirmed");
}

TEST_F(Popups, anAlertStaysUntilItsContentTakesItAway) {
  showOver(kAlert);
  press(Qt::Key_Return);
  press(Qt::Key_Return);
  EXPECT_EQ(told(), "cancelledcancelled");
  find("page")->setProperty("up", false);
  settle();
  press(Qt::Key_Return);
  EXPECT_EQ(told(), "");
}

TEST_F(Popups, aMessageIsDismissedByReturnAndByEscape) {
  showOver("AlertDialog { shown: page.up; title: 'Backup Created'; confirm: 'OK'; onConfirmed: page.told += 'ok' }");
  press(Qt::Key_Return);
  EXPECT_EQ(told(), "ok");
  press(Qt::Key_Escape);
  EXPECT_EQ(told(), "ok");
}

TEST_F(Popups, whatLiesBehindAnAlertIsNotReached) {
  showOver(kAlert);
  click(find("behind"));
  EXPECT_EQ(told(), "");
  for (int i = 0; i < 6; ++i) {
    press(Qt::Key_Tab);
    EXPECT_FALSE(find("behind")->hasActiveFocus());
  }
}

const char* const kSheet =
    "Sheet { shown: page.up; title: 'Restore'; toolbar: Sample.rows([{ id: 'cancel', slot: 'cancellation', title: "
    "'Cancel',"
    " symbol: null, isEnabled: true, isSemibold: false, menu: [] }])\n"
    " onDismissed: page.told += 'dismissed'; onTriggered: id => page.told += id\n"
    " PButton { x: 40; y: 40; text: 'Inside'; onClicked: page.told += 'inside' } }";

TEST_F(Popups, escapeAsksToDismissASheet) {
  showOver(kSheet);
  press(Qt::Key_Escape);
  EXPECT_EQ(told(), "dismissed");
  press(Qt::Key_Escape);
  EXPECT_EQ(told(), "dismissed");
}

TEST_F(Popups, theFocusStaysInASheet) {
  showOver(kSheet);
  std::string reached;
  for (int i = 0; i < 5; ++i) {
    press(Qt::Key_Tab);
    EXPECT_FALSE(find("behind")->hasActiveFocus());
    press(Qt::Key_Space);
    reached += told();
  }
  EXPECT_TRUE(reached.find("cancel") != std::string::npos && reached.find("inside") != std::string::npos) << reached;
  EXPECT_EQ(reached.find("behind"), std::string::npos);
}

TEST_F(Popups, aSheetGivesTheFocusBack) {
  showOver(kSheet);
  find("page")->setProperty("up", false);
  settle();
  focus(find("behind"));
  find("page")->setProperty("up", true);
  settle();
  EXPECT_FALSE(find("behind")->hasActiveFocus());
  find("page")->setProperty("up", false);
  settle();
  EXPECT_TRUE(QTest::qWaitFor([&] { return find("behind")->hasActiveFocus(); }));
}

TEST_F(Popups, whatOpensAgainStandsWhereItStoodFirst) {
  for (const bool moves : {false, true}) {
    appearance_.setProperty("reducedMotion", !moves);
    showOver("Sheet { id: over; shown: page.up; title: 'Restore'; Text { objectName: 'inside'; text: 'Inside' } }");
    const QQuickItem* const inside = find("inside");
    const auto rests = [&](bool isUp) {
      return QTest::qWaitFor([&] { return inside->isVisible() == isUp; }) &&
             QTest::qWaitFor([&] { return !isUp || inside->mapToScene({}).y() < 200; });
    };
    for (const bool isUp : {true, false, true, false, true}) {
      find("page")->setProperty("up", isUp);
      EXPECT_TRUE(rests(isUp)) << (isUp ? "opening" : "closing") << (moves ? " with motion" : "");
    }
  }
}

// The words of an alert come with the same change that opens it, in no certain order.
TEST_F(Popups, anAlertBegunByItsContentHasTheHarmlessButtonInFocus) {
  ASSERT_NE(show("Item { id: page; objectName: 'page'; property string told; property var asked: null\n"
                 " AlertDialog { shown: page.asked !== null; title: page.asked?.title ?? ''; "
                 "cancel: page.asked?.cancel ?? ''; confirm: page.asked?.confirm ?? ''\n"
                 " onCancelled: page.told += 'cancelled'; onConfirmed: page.told += 'confirmed' }\n"
                 " function ask() { asked = { title: 'Delete Medicine?', cancel: 'Cancel', confirm: 'Delete' } } }"),
            nullptr);
  for (int time = 0; time < 2; ++time) {
    QMetaObject::invokeMethod(find("page"), "ask");
    settle();
    press(Qt::Key_Return);
    EXPECT_EQ(told(), "cancelled");
    find("page")->setProperty("asked", QVariant::fromValue(nullptr));
    settle();
  }
}

TEST_F(Popups, aCardIsAsHighAsWhatItHolds) {
  showOver(
      "ModalCard { shown: page.up; width: 200; padding: 10; Item { objectName: 'inside'; width: 20; height: 300 } }");
  const QQuickItem* const inside = find("inside");
  const QQuickItem* card = inside;
  while (card->parentItem() != nullptr && card->width() != 200) card = card->parentItem();
  EXPECT_EQ(card->height(), 320);
  EXPECT_EQ(inside->mapToScene({}).y(), (640 - 320) / 2 + 10);
}

}  // namespace
}  // namespace pillora

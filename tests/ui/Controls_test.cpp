// SPDX-License-Identifier: MIT
// Every control does what it is asked by touch and by key, and writes nothing when it is merely shown.
#include <QJSValue>
#include <QQmlContext>

#include "ui/QmlTest.h"
#include "ui/RowsModel.h"

namespace pillora {
namespace {

class Controls : public QmlTest {
 protected:
  /// What the controls have told, in order, joined by blanks; empties it.
  std::string told() {
    const QString told = find("log")->property("told").toString();
    find("log")->setProperty("told", QString());
    return told.toStdString();
  }

  /// A page with `controls` in a column and a `log` that they write to with log.add(text).
  void showControls(const QString& controls) {
    ASSERT_NE(show("Item { width: 360; height: 400\n"
                   " Item { id: log; objectName: 'log'; property string told\n"
                   "   function add(text) { told += (told === '' ? '' : ' ') + text } }\n"
                   " Column { width: 328; " +
                   controls + " } }"),
              nullptr);
  }
};

TEST_F(Controls, aButtonIsPressedByMouseSpaceReturnAndEnter) {
  showControls("PButton { objectName: 'b'; text: 'Take'; onClicked: log.add('click') }");
  click(find("b"));
  EXPECT_EQ(told(), "click");
  focus(find("b"));
  for (Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    press(key);
    EXPECT_EQ(told(), "click") << key;
  }
}

TEST_F(Controls, aDisabledButtonDoesNothing) {
  showControls("PButton { objectName: 'b'; text: 'Save'; enabled: false; onClicked: log.add('click') }");
  click(find("b"));
  EXPECT_EQ(told(), "");
}

TEST_F(Controls, theFocusIsShownForKeysAndNotForTheMouse) {
  showControls("PButton { objectName: 'b'; text: 'Take' }");
  click(find("b"));
  EXPECT_TRUE(find("b")->hasActiveFocus());
  EXPECT_EQ(find("b")->property("focusReason").toInt(), int{Qt::MouseFocusReason});
  EXPECT_FALSE(find("b")->property("visualFocus").toBool());
  find("log")->forceActiveFocus();
  focus(find("b"));
  EXPECT_TRUE(find("b")->property("visualFocus").toBool());
}

TEST_F(Controls, aToggleAsksAndDoesNotChangeByItself) {
  showControls("Toggle { objectName: 't'; text: 'Active'; isOn: false; onToggled: isOn => log.add(isOn) }");
  click(find("t"));
  EXPECT_EQ(told(), "true");
  EXPECT_EQ(find("t")->property("isOn"), false);
  find("t")->setProperty("isOn", true);
  settle();
  EXPECT_EQ(told(), "");
  focus(find("t"));
  press(Qt::Key_Space);
  EXPECT_EQ(told(), "false");
}

TEST_F(Controls, aWholeToggleRowIsPressed) {
  showControls(
      "ToggleRow { objectName: 'r'; row: Sample.object({ label: 'Repeating', isLabelHidden: false, isOn: true });"
      " onEdited: isOn => log.add(isOn) }");
  QTest::mouseClick(&view_, Qt::LeftButton, {}, {30, 26});
  EXPECT_EQ(told(), "false");
  QTest::mouseClick(&view_, Qt::LeftButton, {}, {290, 26});
  EXPECT_EQ(told(), "false");
}

TEST_F(Controls, aStepperTellsStepsAndStopsAtItsEnds) {
  showControls(
      "Stepper { objectName: 's'; name: 'Duration'; value: 1000; canDecrement: true; canIncrement: false\n"
      " onIncremented: log.add('up'); onDecremented: log.add('down') }");
  EXPECT_EQ(told(), "");
  const QPoint corner = find("s")->mapToScene({0, 0}).toPoint();
  QTest::mouseClick(&view_, Qt::LeftButton, {}, corner + QPoint(20, 22));
  EXPECT_EQ(told(), "down");
  QTest::mouseClick(&view_, Qt::LeftButton, {}, corner + QPoint(70, 22));
  EXPECT_EQ(told(), "");
  focus(find("s"));
  for (Qt::Key key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Minus}) {
    press(key);
    EXPECT_EQ(told(), "down") << key;
  }
  for (Qt::Key key : {Qt::Key_Up, Qt::Key_Right, Qt::Key_Plus}) {
    press(key);
    EXPECT_EQ(told(), "") << key;
  }
  EXPECT_EQ(find("s")->property("value"), 1000);
}

TEST_F(Controls, aStepperThatIsHeldRepeatsAndLettingGoStepsNoMore) {
  showControls(
      "Stepper { objectName: 's'; name: 'Duration'; canDecrement: true; canIncrement: true\n"
      " onIncremented: log.add('up') }");
  const QPoint plus = find("s")->mapToScene({70, 22}).toPoint();
  const auto steps = [&] { return find("log")->property("told").toString().count(QStringLiteral("up")); };
  QTest::mousePress(&view_, Qt::LeftButton, {}, plus);
  EXPECT_EQ(steps(), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return steps() >= 3; }));
  const auto before = steps();
  QTest::mouseRelease(&view_, Qt::LeftButton, {}, plus);
  settle();
  EXPECT_EQ(steps(), before);
}

TEST_F(Controls, arrowsGoTheOtherWayInAMirroredStepper) {
  appearance_.setProperty("mirrored", true);
  showControls(
      "Stepper { objectName: 's'; name: 'Duration'; canDecrement: true; canIncrement: true\n"
      " onIncremented: log.add('up'); onDecremented: log.add('down') }");
  focus(find("s"));
  press(Qt::Key_Left);
  EXPECT_EQ(told(), "up");
}

const char* const kSegments =
    "SegmentedPicker { objectName: 'p'; width: 328; name: 'Range'; onPicked: option => log.add(option)\n"
    " options: Sample.rows([{ id: 'day', title: 'Today', isSelected: false },"
    " { id: 'week', title: 'Week', isSelected: true }]) }";

TEST_F(Controls, aSegmentIsPickedByMouseAndArrow) {
  showControls(kSegments);
  EXPECT_EQ(told(), "");
  QTest::mouseClick(&view_, Qt::LeftButton, {}, {60, 22});
  EXPECT_EQ(told(), "day");
  press(Qt::Key_Right);
  EXPECT_EQ(told(), "week");
  press(Qt::Key_Right);
  EXPECT_EQ(told(), "");
}

TEST_F(Controls, aFieldTellsWhatIsTypedAndFollowsItsContent) {
  showControls(
      "TextFieldRow { objectName: 'f'; row: Sample.object({ label: 'Name', text: 'Asp', keypad: 'text',"
      " style: 'body' }); onEdited: text => log.add(text) }");
  EXPECT_EQ(told(), "");
  click(find("f"));
  press(Qt::Key_End);
  press(Qt::Key_I);
  EXPECT_EQ(told(), "Aspi");
}

TEST_F(Controls, whatIsTypedStaysUntilTheContentIsAnother) {
  showControls("TextField { objectName: 'f'; name: 'Name'; shown: 'Asp' }");
  click(find("f"));
  press(Qt::Key_End);
  press(Qt::Key_I);
  EXPECT_EQ(find("f")->property("text"), "Aspi");
  for (const char* shown : {"Aspi", "Zinc", "Asp"}) {
    find("f")->setProperty("shown", shown);
    settle();
    EXPECT_EQ(find("f")->property("text"), shown);
  }
}

TEST_F(Controls, aFieldShowsMarkupAsItStands) {
  showControls("TextField { objectName: 'f'; name: '<b>Name</b>'; shown: '<i>x</i>' }");
  EXPECT_EQ(find("f")->property("text"), "<i>x</i>");
  find("f")->setProperty("shown", "y");
  settle();
  EXPECT_EQ(find("f")->property("text"), "y");
}

TEST_F(Controls, escapeAndTheCrossEmptyASearch) {
  showControls(
      "SearchField { objectName: 'f'; width: 328; name: 'Search'; shown: 'asp'; onEdited: text => log.add('[' + text + "
      "']') }");
  focus(find("f"));
  press(Qt::Key_Escape);
  EXPECT_EQ(told(), "[]");
  find("f")->setProperty("text", "x");
  settle();
  QTest::mouseClick(&view_, Qt::LeftButton, {}, {306, 22});
  EXPECT_EQ(told(), "[]");
}

const char* const kPicker =
    "PickerRow { objectName: 'p'; onEdited: option => log.add(option)\n"
    " row: Sample.object({ label: 'Sound', selected: 'bell', valueText: 'Bell', options: ["
    "{ id: 'chime', title: 'Chime' }, { id: 'bell', title: 'Bell' }, { id: 'gentle', title: 'Gentle' }] }) }";

TEST_F(Controls, aTitleIsNeverMuchSmallerThanItShouldBeAndOnNoButton) {
  const auto itemSaying = [](const auto& self, QQuickItem* within, const QString& text) -> QQuickItem* {
    if (within->property("text").toString() == text) return within;
    for (QQuickItem* child : within->childItems()) {
      if (QQuickItem* const found = self(self, child, text)) return found;
    }
    return nullptr;
  };
  showControls(
      "NavigationBar { objectName: 'bar'; width: 328; toolbar: Sample.rows([\n"
      "  { id: 'cancel', slot: 'cancellation', title: 'Abbrechen', isEnabled: true },\n"
      "  { id: 'save', slot: 'confirmation', title: 'Speichern', isEnabled: true }]) }");
  QQuickItem* const bar = find("bar");
  const auto place = [](QQuickItem* item) { return item->mapRectToScene({0, 0, item->width(), item->height()}); };
  for (const double scale : {1.0, 1.5, 2.0}) {
    appearance_.setFontScale(scale);
    for (const char* title : {"Neu", "Backup", "Wiederherstellen", "Neues Medikament bearbeiten und sichern"}) {
      bar->setProperty("title", QString::fromUtf8(title));
      settle();
      QQuickItem* const heading = itemSaying(itemSaying, bar, QString::fromUtf8(title));
      ASSERT_TRUE(heading);
      EXPECT_GE(heading->property("fontInfo").value<QJSValue>().property(QStringLiteral("pixelSize")).toNumber(),
                14 * scale)
          << title;
      EXPECT_TRUE(place(bar).contains(place(heading))) << title;
      for (const char* button : {"Abbrechen", "Speichern"}) {
        QQuickItem* const item = itemSaying(itemSaying, bar, QString::fromUtf8(button));
        ASSERT_TRUE(item);
        EXPECT_FALSE(place(item).intersects(place(heading))) << title << " on " << button << " at " << scale;
      }
    }
  }
}

TEST_F(Controls, aMenuOpensAtItsSelectionAndPicksByKey) {
  showControls(kPicker);
  focus(find("p"));
  press(Qt::Key_Space);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_EQ(told(), "gentle");
}

TEST_F(Controls, escapeClosesAMenuAndPicksNothing) {
  showControls(kPicker);
  focus(find("p"));
  press(Qt::Key_Return);
  press(Qt::Key_Down);
  press(Qt::Key_Escape);
  EXPECT_EQ(told(), "");
  EXPECT_TRUE(QTest::qWaitFor([&] { return find("p")->hasActiveFocus(); }));
}

TEST_F(Controls, aMenuIsPickedByMouse) {
  showControls(kPicker);
  click(find("p"));
  settle();
  QTest::mouseClick(&view_, Qt::LeftButton, {}, {240, 60 + 20});
  EXPECT_EQ(told(), "chime");
}

TEST_F(Controls, aCellIsTouchedUpToHalfTheGapAroundIt) {
  showControls(
      "GridRow { objectName: 'g'; onPicked: cell => log.add(cell); row: Sample.object({ label: 'Days', style: 'days',"
      " columns: 7, spacing: 8, cellSize: 36, cells: ['1','2','3','4','5','6','7'].map(day => ("
      " { id: day, title: 'Mon', symbol: null, color: null, isSelected: false })) }) }");
  const int left = (328 - 7 * 44) / 2;
  for (int day = 0; day < 7; ++day) {
    for (const int x : {1, 22, 43}) {
      QTest::mouseClick(&view_, Qt::LeftButton, {}, {left + day * 44 + x, 12 + 21 + 8 + 22});
      EXPECT_EQ(told(), std::to_string(day + 1)) << x;
    }
  }
}

const char* const kSwipe =
    "SwipeRow { objectName: 's'; width: 328; subject: 'Aspirin'; removeTitle: 'Delete'; onRemoved: log.add('gone')\n"
    " LinkRow { text: 'Aspirin'; mark: 'chevron.right'; onClicked: log.add('opened') } }";

void drag(QQuickView& view, QPoint from, int by) {
  QTest::mousePress(&view, Qt::LeftButton, {}, from);
  for (int step = 1; step <= 8; ++step) QTest::mouseMove(&view, from + QPoint(by * step / 8, 0));
  QTest::mouseRelease(&view, Qt::LeftButton, {}, from + QPoint(by, 0));
}

TEST_F(Controls, aRowSwipedAsideUncoversItsButton) {
  showControls(kSwipe);
  drag(view_, {200, 26}, -120);
  settle();
  EXPECT_EQ(find("s")->property("open"), true);
  EXPECT_EQ(told(), "");
  QTest::mouseClick(&view_, Qt::LeftButton, {}, {290, 26});
  EXPECT_EQ(told(), "gone");
}

TEST_F(Controls, aShortSwipeLetsGoAndAPressOpens) {
  showControls(kSwipe);
  drag(view_, {200, 26}, -30);
  settle();
  EXPECT_EQ(find("s")->property("open"), false);
  EXPECT_EQ(told(), "");
  QTest::mouseClick(&view_, Qt::LeftButton, {}, {100, 26});
  EXPECT_EQ(told(), "opened");
}

TEST_F(Controls, aRowIsRemovedByKeyAndByMenu) {
  showControls(kSwipe);
  press(Qt::Key_Tab);
  press(Qt::Key_Delete);
  EXPECT_EQ(told(), "gone");
  press(Qt::Key_Menu);
  press(Qt::Key_Return);
  EXPECT_EQ(told(), "gone");
}

TEST_F(Controls, aDrumTellsWhatIsPickedAndNothingWhenShown) {
  showControls(
      "Wheel { objectName: 'w'; name: 'Hour'; onPicked: value => log.add(value)\n"
      " cells: Sample.rows([0, 1, 2, 3].map(hour => ({ value: hour * 5, text: String(hour), isSelected: hour === 3 "
      "}))) }");
  EXPECT_EQ(told(), "");
  focus(find("w"));
  press(Qt::Key_Up);
  EXPECT_EQ(told(), "10");
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_EQ(told(), "15 0");
}

TEST_F(Controls, daysAreWalkedAndPickedByKey) {
  showControls(
      "MonthView { objectName: 'm'; width: 328; onPicked: day => log.add(day); month: Sample.object({ title: 'May',"
      " previous: { id: 'p', title: 'Previous' }, next: { id: 'n', title: 'Next' }, weekdays: ['S'],"
      " weeks: [0, 1].map(week => ({ cells: [0, 1, 2, 3, 4, 5, 6].map(day => ({ id: 'd' + (week * 7 + day),"
      " text: String(week * 7 + day + 1), label: 'day', isToday: false, isSelected: false, isInMonth: true })) })) }) "
      "}");
  press(Qt::Key_Tab);
  press(Qt::Key_Tab);
  press(Qt::Key_Tab);
  press(Qt::Key_Right);
  press(Qt::Key_Down);
  press(Qt::Key_Space);
  EXPECT_EQ(told(), "d8");
}

TEST_F(Controls, aNameIsNotBrokenForTheTimeBesideIt) {
  showControls(
      "DoseCard { objectName: 'c'; width: 328; name: 'Aspirin'; dosage: '3 mg'; icon: 'moon'; tone: 'blue';"
      " time: '10:30 PM'; badge: 'In 12h 18m'; badgeTone: 'green'; actions: null }");
  QQuickItem* const card = find("c");
  const double height = card->height();
  EXPECT_FALSE(card->property("stacked").toBool());
  card->setProperty("name", QStringLiteral("Hydrochlorothiazide"));
  settle();
  EXPECT_TRUE(card->property("stacked").toBool());
  EXPECT_GT(card->height(), height);
  card->setProperty("name", QStringLiteral("Metformin"));
  settle();
  EXPECT_FALSE(card->property("stacked").toBool());
  EXPECT_EQ(card->height(), height);
}

TEST_F(Controls, aListWhoseHeadChangesStaysAtItsBeginning) {
  show(
      "LongList { objectName: 'l'; width: 300; height: 200; model: 30; header: Item { height: head; width: 1 }\n"
      " property real head: 100; delegate: Item { width: 10; height: 40 } }");
  QQuickItem* const list = find("l");
  for (const double height : {160.0, 90.0, 300.0, 20.0}) {
    list->setProperty("head", height);
    settle();
    EXPECT_EQ(list->property("originY").toDouble(), -height);
    EXPECT_EQ(list->property("contentY").toDouble(), -height);
  }
}

TEST_F(Controls, aCardStaysOpenWhileTheListAroundItChanges) {
  RowsModel rows;
  struct Card {
    std::string id;
    static constexpr auto fields() { return std::tuple(field("id", &Card::id)); }
  };
  rows.setRows(std::vector<Card>{{"a"}, {"b"}, {"c"}});
  view_.engine()->rootContext()->setContextProperty("cards", &rows);
  showControls(
      "Repeater { objectName: 'r'; model: cards; Item { required property var row; objectName: row.id;"
      " property bool isOpen: false; width: 10; height: 10 } }");
  QQuickItem* const card = find("b");
  card->setProperty("isOpen", true);
  rows.setRows(std::vector<Card>{{"x"}, {"c"}, {"b"}});
  settle();
  EXPECT_EQ(find("b"), card);
  EXPECT_EQ(card->property("isOpen"), true);
}

}  // namespace
}  // namespace pillora

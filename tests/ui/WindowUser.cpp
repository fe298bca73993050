// SPDX-License-Identifier: MIT
#include "ui/WindowUser.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QTest>
#include <QWheelEvent>
#include <cmath>
#include <functional>

#include "doubles/Places.h"

namespace pillora {
namespace {

constexpr double kPartOfRow = 0.1;     ///< that a drum is turned too far, and comes to rest at the nearest row
constexpr int kSteps = 10;             ///< of a movement
constexpr int kStepTime = 16;          ///< milliseconds
constexpr double kStartOfDrag = 14;    ///< is taken for the wish to drag and moves nothing yet
constexpr int kRest = 300;             ///< milliseconds after which nothing is flung any more
constexpr double kEdge = 30;           ///< what is nearer to the edge of a list than this is scrolled further in
constexpr double kStartOfScroll = 20;  ///< comes twice and tells which way; nothing moves yet
constexpr int kLongestScroll = 30;     ///< turns

using Visitor = std::function<bool(QQuickItem*)>;

/// The first item in sight, from here on downwards, that the visitor accepts.
QQuickItem* visit(QQuickItem* item, const Visitor& accepts) {
  if (!item->isVisible()) return nullptr;
  if (accepts(item)) return item;
  for (QQuickItem* child : item->childItems()) {
    if (QQuickItem* found = visit(child, accepts)) return found;
  }
  return nullptr;
}

/// What lies on top and keeps the rest from being reached, or everything.
QQuickItem* topOf(QQuickWindow& window) {
  QQuickItem* top = window.contentItem();
  visit(window.contentItem(), [&](QQuickItem* item) {
    if (item->inherits("QQuickPopupItem")) top = item;
    return false;
  });
  return top;
}

/// With plain blanks in place of the narrow ones that stand in times.
QString plain(const QString& text) { return QString::fromStdString(plainBlanks(text.toStdString())); }

QString textOf(const QQuickItem* item) { return plain(item->property("text").toString()); }

QString nameOf(QQuickItem* item) {
  const QAccessibleInterface* voice = QAccessible::queryAccessibleInterface(item);
  return voice ? plain(voice->text(QAccessible::Name)) : QString();
}

bool isCalled(QQuickItem* item, const QString& name) {
  const QString called = nameOf(item);
  return called == name || called.startsWith(name + QStringLiteral(", ")) ||
         called.startsWith(name + QStringLiteral(": "));
}

/// Whether it can be pressed, stepped or typed into.
bool isControl(QQuickItem* item) {
  QAccessibleInterface* voice = QAccessible::queryAccessibleInterface(item);
  const bool isHeard = voice && voice->parent() && voice->parent()->indexOfChild(voice) >= 0;
  if (!isHeard || !voice->actionInterface()) return false;
  QStringList actions = voice->actionInterface()->actionNames();
  actions.removeAll(QAccessibleActionInterface::setFocusAction());
  return voice->role() == QAccessible::EditableText || !actions.isEmpty();
}

bool isClipped(QQuickItem* item) {
  for (QQuickItem* around = item->parentItem(); around; around = around->parentItem()) {
    const QPointF place = item->mapToItem(around, {item->width() / 2, item->height() / 2});
    if ((around->clip() || !around->parentItem()) && !around->contains(place)) return true;
  }
  return false;
}

QPointF middleOf(QQuickItem* item) { return item->mapToScene({item->width() / 2, item->height() / 2}); }

/// How far a place must be scrolled to be well within 0 and `length`.
double past(double place, double length) { return place < kEdge || place > length - kEdge ? place - length / 2 : 0; }

}  // namespace

std::vector<QQuickItem*> WindowUser::controls(const QString& name) {
  std::vector<QQuickItem*> found;
  visit(topOf(window()), [&](QQuickItem* item) {
    if (isCalled(item, name) && isControl(item)) found.push_back(item);
    return false;
  });
  return found;
}

QQuickItem* WindowUser::control(const QString& name, int skipped) {
  const auto found = controls(name);
  return found.size() > static_cast<size_t>(skipped) ? found.at(static_cast<size_t>(skipped)) : nullptr;
}

QQuickItem* WindowUser::await(const QString& name, int skipped) {
  QQuickItem* found = nullptr;
  const bool isThere = QTest::qWaitFor([&] {
    if (!found) settleAll();
    found = control(name, skipped);
    return found != nullptr;
  });
  EXPECT_TRUE(isThere) << "there is no " << name.toStdString();
  if (found) scrollTo(found);
  return found;
}

std::string WindowUser::allControls() {
  QStringList names;
  visit(window().contentItem(), [&](QQuickItem* item) {
    if (isControl(item)) names.append(nameOf(item));
    return false;
  });
  return names.join(QStringLiteral("; ")).toStdString();
}

bool WindowUser::isEnabled(const QString& name) {
  QQuickItem* const item = control(name);
  return item && item->isEnabled();
}

bool WindowUser::isOn(const QString& name, int skipped) {
  QQuickItem* const item = control(name, skipped);
  if (!item) return false;
  const QAccessible::State state = QAccessible::queryAccessibleInterface(item)->state();
  return state.checked || state.selected;
}

bool WindowUser::shows(const QString& text) {
  return visit(window().contentItem(), [&](QQuickItem* item) { return textOf(item) == text; }) != nullptr;
}

bool WindowUser::isInSight(const QString& text) {
  return visit(window().contentItem(), [&](QQuickItem* item) { return textOf(item) == text && !isClipped(item); }) !=
         nullptr;
}

int WindowUser::headings(const QString& text) {
  int found = 0;
  visit(window().contentItem(), [&](QQuickItem* item) {
    const QAccessibleInterface* voice = QAccessible::queryAccessibleInterface(item);
    if (voice && voice->role() == QAccessible::Heading && nameOf(item) == text) ++found;
    return false;
  });
  return found;
}

QString WindowUser::textIn(const QString& name) {
  QQuickItem* const item = control(name);
  return item ? textOf(item) : QString();
}

void WindowUser::tap(const QString& name, int skipped) { click(await(name, skipped), Qt::LeftButton, 0.5); }

void WindowUser::rightClick(const QString& name) { click(await(name), Qt::RightButton, 0.5); }

void WindowUser::pressAt(const QString& name, double across) { click(await(name), Qt::LeftButton, across); }

void WindowUser::click(QQuickItem* item, Qt::MouseButton button, double across) {
  if (!item) return;
  const QPointF place = item->mapToScene({item->width() * across, item->height() / 2});
  QTest::mouseClick(&window(), button, {}, place.toPoint());
  settleAll();
}

namespace {

QPointingDevice& finger() {
  static QPointingDevice* const device = QTest::createTouchDevice();
  return *device;
}

}  // namespace

void WindowUser::touch(const QString& name) {
  QQuickItem* const item = await(name);
  if (!item) return;
  QTest::touchEvent(&window(), &finger()).press(0, middleOf(item).toPoint());
  QTest::touchEvent(&window(), &finger()).release(0, middleOf(item).toPoint());
  settleAll();
}

void WindowUser::touchLong(const QString& name) {
  QQuickItem* const item = await(name);
  if (!item) return;
  QQuickItem* const before = topOf(window());
  const QPoint place = middleOf(item).toPoint();
  QTest::touchEvent(&window(), &finger()).press(0, place);
  EXPECT_TRUE(QTest::qWaitFor([&] { return topOf(window()) != before; })) << "nothing came of a long touch";
  QTest::touchEvent(&window(), &finger()).release(0, place);
  settleAll();
}

void WindowUser::swipe(const QString& name, QPointF by) {
  QQuickItem* const item = await(name);
  if (item) drag(middleOf(item), by);
}

void WindowUser::drag(QPointF from, QPointF by) {
  const QPointF start = from + by / std::hypot(by.x(), by.y()) * kStartOfDrag;
  QTest::mousePress(&window(), Qt::LeftButton, {}, from.toPoint());
  for (int step = 0; step <= kSteps; ++step) {
    QTest::mouseMove(&window(), (start + by * step / kSteps).toPoint(), kStepTime);
  }
  const auto isFlung = [](QQuickItem* item) { return item->property("speed").toDouble() != 0; };
  EXPECT_TRUE(QTest::qWaitFor([&] { return visit(window().contentItem(), isFlung) == nullptr; }))
      << "a drum is about to be flung all the time";
  QTest::mouseRelease(&window(), Qt::LeftButton, {}, (start + by).toPoint(), kRest);
  settleAll();
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return visit(window().contentItem(), [](QQuickItem* item) { return item->property("moving").toBool(); }) == nullptr;
  })) << "it does not come to rest";
  settleAll();
}

void WindowUser::flick(int by) {
  const QPointF middle(window().width() / 2.0, window().height() / 2.0 - by / 2.0);
  QTest::touchEvent(&window(), &finger()).press(0, middle.toPoint());
  for (int step = 1; step <= kSteps; ++step) {
    QTest::touchEvent(&window(), &finger()).move(0, (middle + QPointF(0, by) * step / kSteps).toPoint());
    QCoreApplication::processEvents();
  }
  QTest::touchEvent(&window(), &finger()).release(0, (middle + QPointF(0, by)).toPoint());
  settleAll();
}

QQuickItem* WindowUser::bearerOf(const QString& text) {
  QQuickItem* const item = visit(topOf(window()), [&](QQuickItem* each) { return textOf(each) == text; });
  EXPECT_NE(item, nullptr) << text.toStdString();
  return item;
}

void WindowUser::tapText(const QString& text) { click(bearerOf(text), Qt::LeftButton, 0.5); }

void WindowUser::swipeText(const QString& text, QPointF by) {
  if (QQuickItem* const item = bearerOf(text)) drag(middleOf(item), by);
}

void WindowUser::turnDrum(const QString& text, int rows) {
  if (QQuickItem* const choice = bearerOf(text))
    drag(middleOf(choice), {0, (rows + (rows > 0 ? kPartOfRow : -kPartOfRow)) * choice->height()});
}

void WindowUser::fill(const QString& name, const QString& text) {
  tap(name);
  key(Qt::Key_A, Qt::ControlModifier);
  if (text.isEmpty()) key(Qt::Key_Backspace);
  type(text);
}

void WindowUser::type(const QString& text) {
  for (const QChar letter : text) QTest::keyClick(&window(), letter.toLatin1());
  settleAll();
}

void WindowUser::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&window(), key, modifiers);
  settleAll();
}

bool WindowUser::tabTo(const QString& name) {
  constexpr int kFarthest = 60;
  for (int presses = 0; presses < kFarthest; ++presses) {
    QQuickItem* const wanted = control(name);
    if (wanted && wanted->hasActiveFocus()) return true;
    key(Qt::Key_Tab);
  }
  return false;
}

void WindowUser::scrollDown(int screens) {
  scrollBy({window().width() / 2.0, window().height() / 2.0}, {0, -0.6 * window().height() * screens});
}

void WindowUser::tapBeside() {
  QTest::mouseClick(&window(), Qt::LeftButton, {}, {5, 5});
  settleAll();
}

void WindowUser::scrollTo(QQuickItem* item) {
  for (QQuickItem* area = item->parentItem(); area; area = area->parentItem()) {
    if (!area->inherits("QQuickFlickable") || !area->property("interactive").toBool()) continue;
    const bool isWide = area->property("contentWidth").toDouble() > area->width();
    for (int turn = 0; turn < kLongestScroll; ++turn) {
      const QPointF place = area->mapFromScene(middleOf(item));
      const QPointF by(isWide ? past(place.x(), area->width()) : 0, past(place.y(), area->height()));
      if (by.isNull()) break;
      scrollBy(middleOf(area), -by);
      if (area->mapFromScene(middleOf(item)) == place) break;  // it is as far in as it comes
    }
  }
}

void WindowUser::scrollBy(QPointF at, QPointF by) {
  const auto send = [&](Qt::ScrollPhase phase, QPointF moved) {
    QWheelEvent event(at, window().mapToGlobal(at), moved.toPoint(), moved.toPoint(), Qt::NoButton, Qt::NoModifier,
                      phase, false, Qt::MouseEventSynthesizedBySystem);
    event.setTimestamp(static_cast<quint64>(QTest::lastMouseTimestamp += kStepTime));
    QCoreApplication::sendEvent(&window(), &event);
  };
  send(Qt::ScrollBegin, {});
  for (int i = 0; i < 2; ++i) send(Qt::ScrollUpdate, by / std::hypot(by.x(), by.y()) * kStartOfScroll);
  send(Qt::ScrollUpdate, by);
  send(Qt::ScrollEnd, {});
  settleAll();
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <string>
#include <vector>

namespace pillora {

/// What a person does with a window, by mouse, touch and keys, and what there is to see in it. Controls are known by
/// the names that a screen reader says: "Aspirin" is also "Aspirin, 1 tablet" and "Duration" also "Duration: 10 min".
/// Names are looked up in whatever lies on top, as long as that keeps everything behind it from being reached. Any
/// blank in them is a plain one.
class WindowUser {
 public:
  /// The control of this name, or the one that follows `skipped` others of that name; null when there is none.
  QQuickItem* control(const QString& name, int skipped = 0);
  std::vector<QQuickItem*> controls(const QString& name);
  bool has(const QString& name) { return control(name) != nullptr; }
  bool isEnabled(const QString& name);
  /// The names of everything that can be pressed, stepped or typed into, in the order of the window: "Cancel; Save".
  std::string allControls();
  /// Whether a switch is on, a choice is ticked or a tab is selected.
  bool isOn(const QString& name, int skipped = 0);
  /// Whether this stands somewhere in the window, also behind what lies on top.
  bool shows(const QString& text);
  /// Whether this can be seen without scrolling.
  bool isInSight(const QString& text);
  /// How many headings in the window say this.
  int headings(const QString& text);
  /// What a text field holds.
  QString textIn(const QString& name);

  // Each of these scrolls to the control first, and fails the test when there is none.

  void tap(const QString& name, int skipped = 0);
  /// Where this text stands.
  void tapText(const QString& text);
  void touch(const QString& name);
  void touchLong(const QString& name);
  void rightClick(const QString& name);
  /// Pulls it this far, at a hand's speed, and comes to rest before letting go.
  void swipe(const QString& name, QPointF by);
  void swipeText(const QString& text, QPointF by);
  /// Presses plus or minus.
  void stepUp(const QString& name) { pressAt(name, 0.75); }
  void stepDown(const QString& name) { pressAt(name, 0.25); }
  /// Clicks the field, takes what it holds away and types this.
  void fill(const QString& name, const QString& text);

  void type(const QString& text);
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
  /// Walks with the Tab key until the focus is on the control; answers whether it can be reached so.
  bool tabTo(const QString& name);
  /// Drags the choice of a drum that bears this text so many rows down, or up where that is negative.
  void turnDrum(const QString& text, int rows);
  /// A flick of a finger over the middle of the window, upwards where `by` is negative.
  void flick(int by);
  /// So many screens further down, in one go.
  void scrollDown(int screens = 1);
  /// Where the window is dimmed, beside what lies on top.
  void tapBeside();

 protected:
  virtual ~WindowUser() = default;
  virtual QQuickWindow& window() = 0;
  /// Everything that is waiting has happened and is drawn.
  virtual void settleAll() = 0;

 private:
  /// What bears this text in whatever lies on top; null, and the test fails, when nothing does.
  QQuickItem* bearerOf(const QString& text);
  QQuickItem* await(const QString& name, int skipped = 0);
  void pressAt(const QString& name, double across);
  /// Nothing where there is no item.
  void click(QQuickItem* item, Qt::MouseButton button, double across);
  void scrollTo(QQuickItem* item);
  /// As two fingers on a touchpad do, to the pixel.
  void scrollBy(QPointF at, QPointF by);
  void drag(QPointF from, QPointF by);
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickItem>

namespace pillora {

/// What can have the keyboard's focus, and knows whether to show it: after Tab and other keys, not after a press. Where
/// the window, a popup or a page gives the focus back, it is shown as it was.
///
/// The controls stand on this and not on Qt's templates, because those give themselves a role for screen readers that
/// QML cannot change.
class FocusItem : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(bool visualFocus READ visualFocus NOTIFY visualFocusChanged)

 public:
  using QQuickItem::QQuickItem;

  /// Takes the focus as Tab would, also where it has it already.
  Q_INVOKABLE void showFocus();

  bool visualFocus() const { return cameByKey_ && hasActiveFocus(); }

 signals:
  void visualFocusChanged();

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool cameByKey_ = false;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "ui/FocusItem.h"

namespace pillora {

void FocusItem::showFocus() {
  forceActiveFocus(Qt::TabFocusReason);
  cameByKey_ = true;
  emit visualFocusChanged();
}

void FocusItem::focusInEvent(QFocusEvent* event) {
  switch (event->reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::OtherFocusReason:
      break;
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
      cameByKey_ = true;
      break;
    default:
      cameByKey_ = false;
  }
  emit visualFocusChanged();
}

void FocusItem::focusOutEvent(QFocusEvent*) { emit visualFocusChanged(); }

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "ui/FocusItem.h"

namespace pillora {

void FocusItem::focusInEvent(QFocusEvent* event) {
  switch (event->reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
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

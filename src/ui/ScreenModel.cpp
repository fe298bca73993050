// SPDX-License-Identifier: MIT
#include "ui/ScreenModel.h"

namespace pillora {

QObject* ScreenModel::content() {
  if (!isDrawn_) redraw();
  return &content_;
}

void ScreenModel::redraw() {
  isDrawn_ = true;
  content_.update(drawn());
}

UUID uuidOf(const QString& id) { return UUID::parse(id.toStdString()).value_or(UUID()); }

}  // namespace pillora

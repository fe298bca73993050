// SPDX-License-Identifier: MIT
#include "ui/ProgressArc.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace pillora {

ProgressArc::ProgressArc(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
  connect(this, &ProgressArc::changed, this, [this] { update(); });
}

void ProgressArc::paint(QPainter* painter) {
  constexpr int kTop = 90 * 16, kRound = 360 * 16;  // sixteenths of a degree, counter-clockwise from three o'clock
  const double side = std::min(width(), height()) - lineWidth_;
  const QRectF circle((width() - side) / 2, (height() - side) / 2, side, side);
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(trackColor_, lineWidth_));
  painter->drawEllipse(circle);
  if (!(value_ > 0)) return;
  painter->setPen(QPen(color_, lineWidth_, Qt::SolidLine, Qt::RoundCap));
  painter->drawArc(circle, kTop, -static_cast<int>(std::lround(std::min(value_, 1.0) * kRound)));
}

}  // namespace pillora

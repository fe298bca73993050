// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace pillora {

/// A ring with round ends: a track, and over it an arc from the top, clockwise, for `value` of the way round. Beyond 1
/// the circle is full.
class ProgressArc : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(double value MEMBER value_ NOTIFY changed)
  Q_PROPERTY(double lineWidth MEMBER lineWidth_ NOTIFY changed)
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
  Q_PROPERTY(QColor trackColor MEMBER trackColor_ NOTIFY changed)

 public:
  explicit ProgressArc(QQuickItem* parent = nullptr);

  void paint(QPainter* painter) override;

 signals:
  void changed();

 private:
  double value_ = 0;
  double lineWidth_ = 6;
  QColor color_ = Qt::black;
  QColor trackColor_ = Qt::transparent;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <QString>

namespace pillora {

/// One of our symbols, by name, in one colour and as large as the item, sharp at every size. Drawn without shader
/// effects, which the software renderer leaves out: the symbol is painted into an image, the colour laid over what it
/// covers. Images are kept, so that a symbol in a hundred rows is painted once. An unknown name is a warning.
class SymbolImage : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString name MEMBER name_ NOTIFY changed)
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
  Q_PROPERTY(bool flipped MEMBER flipped_ NOTIFY changed)  ///< left and right exchanged

 public:
  explicit SymbolImage(QQuickItem* parent = nullptr);

 signals:
  void changed();

 protected:
  void updatePolish() override;
  QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData*) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;

 private:
  QString name_;
  QColor color_ = Qt::black;
  bool flipped_ = false;
  QImage image_;
  bool isImageNew_ = false;
};

/// The symbol painted `pixels` wide and high; null when there is none of that name.
QImage symbolImage(const QString& name, const QColor& color, int pixels);

}  // namespace pillora

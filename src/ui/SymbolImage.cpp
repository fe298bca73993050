// SPDX-License-Identifier: MIT
#include "ui/SymbolImage.h"

#include <QCache>
#include <QFile>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

namespace pillora {
namespace {

constexpr int kKeptBytes = 8 << 20;

QImage paint(const QString& name, const QColor& color, int pixels) {
  const QString file = QStringLiteral(":/qt/qml/Pillora/symbols/") + name + QStringLiteral(".svg");
  if (!QFile::exists(file)) return {};
  QSvgRenderer drawing(file);
  if (!drawing.isValid()) return {};
  QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawing.render(&painter);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(image.rect(), color);
  return image;
}

}  // namespace

QImage symbolImage(const QString& name, const QColor& color, int pixels) {
  static QCache<QString, QImage> kept(kKeptBytes);
  const QString key = QStringLiteral("%1/%2/%3").arg(name, color.name(QColor::HexArgb)).arg(pixels);
  if (const QImage* image = kept.object(key)) return *image;
  QImage image = paint(name, color, pixels);
  if (!image.isNull()) kept.insert(key, new QImage(image), static_cast<int>(image.sizeInBytes()));
  return image;
}

SymbolImage::SymbolImage(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents);
  connect(this, &SymbolImage::changed, this, &QQuickItem::polish);
}

void SymbolImage::updatePolish() {
  const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
  const int pixels = static_cast<int>(std::lround(std::min(width(), height()) * ratio));
  image_ = name_.isEmpty() || pixels <= 0 ? QImage() : symbolImage(name_, color_, pixels);
  if (image_.isNull() && !name_.isEmpty() && pixels > 0) qWarning("There is no symbol \"%s\".", qPrintable(name_));
  if (flipped_) image_ = image_.mirrored(true, false);
  isImageNew_ = true;
  update();
}

QSGNode* SymbolImage::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
  if (image_.isNull()) {
    delete node;
    return nullptr;
  }
  auto* shown = static_cast<QSGImageNode*>(node);
  if (!shown) {
    shown = window()->createImageNode();
    shown->setOwnsTexture(true);
    shown->setFiltering(QSGTexture::Linear);
    isImageNew_ = true;
  }
  if (isImageNew_) shown->setTexture(window()->createTextureFromImage(image_));
  isImageNew_ = false;
  const double side = std::min(width(), height());
  shown->setRect((width() - side) / 2, (height() - side) / 2, side, side);
  return shown;
}

void SymbolImage::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  if (now.size() != before.size()) polish();
}

void SymbolImage::itemChange(ItemChange change, const ItemChangeData& data) {
  QQuickItem::itemChange(change, data);
  if (change == ItemDevicePixelRatioHasChanged || (change == ItemSceneChange && data.window)) polish();
}

}  // namespace pillora

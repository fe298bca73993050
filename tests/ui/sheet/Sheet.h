// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QImage>
#include <QQuickItem>
#include <QQuickView>
#include <QString>

#include "ui/Appearance.h"
#include "ui/Sample.h"

namespace pillora {

/// Draws the components as they are, brought into each state by real events, and composes the pictures into pages.
class Sheet {
 public:
  explicit Sheet(const QDir& folder);

  /// False when something could not be loaded or written.
  bool drawAll();

 private:
  /// The specimens of one file, a row each and a column a state.
  bool drawStates(const QString& file);
  /// One picture of the whole page at each size, and mirrored, and with larger text.
  bool drawPage(const QString& file);
  bool drawSymbols();

  QQuickItem* show(const QString& source, QSize size);
  QImage picture(QQuickItem* item, const QString& state);
  bool write(const QImage& image, const QString& name);
  QString suffix() const;

  QDir folder_;
  Sample sample_;
  QQuickView view_;
  Appearance* appearance_ = nullptr;
};

}  // namespace pillora

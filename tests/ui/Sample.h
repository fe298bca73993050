// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVariantList>
#include <QVariantMap>

namespace pillora {

/// Made-up content for QML, from plain JavaScript values: what a component is handed by a screen.
class Sample : public QObject {
  Q_OBJECT

 public:
  /// As `Sample` of the module Pillora.Samples.
  static void registerType(Sample& sample);

  Q_INVOKABLE QObject* object(const QVariantMap& members);
  Q_INVOKABLE QObject* rows(const QVariantList& rows);
};

}  // namespace pillora

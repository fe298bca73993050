// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

#include "support/UUID.h"
#include "ui/ContentObject.h"

namespace pillora {

/// One screen in QML: its content, and what a person does there as invokable actions. QML never changes content; it
/// calls an action and draws what comes of it.
///
/// Deliberate: models name their base with its namespace. The registration of types of Qt 6.4 finds it by no other
/// name, and without it qmllint does not know what a model inherits.
class ScreenModel : public QObject {
  Q_OBJECT
  QML_ANONYMOUS
  Q_PROPERTY(QObject* content READ content CONSTANT)

 public:
  /// The screen's content(), drawn when it is first asked for and then by redraw().
  QObject* content();
  void redraw();

 signals:
  /// The person did something that changes what is shown, also where the store does not tell of it.
  void acted();

 protected:
  virtual ContentRow drawn() const = 0;

 private:
  ContentObject content_;
  bool isDrawn_ = false;
};

/// The identifier that a row's id holds; one that none has where it holds none.
UUID uuidOf(const QString& id);

}  // namespace pillora

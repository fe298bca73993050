// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlPropertyMap>
#include <vector>

#include "ui/ContentCell.h"

namespace pillora {

/// A described content value in QML: a property per member, of the same name. An update changes what differs and
/// notifies about nothing else; objects and lists inside keep their identity, so that bindings and delegates on them
/// live on. QML reads it and cannot write it.
class ContentObject : public QQmlPropertyMap {
  Q_OBJECT

 public:
  explicit ContentObject(QObject* parent = nullptr);

  template <Described T>
  void setContent(const T& value) {
    update(contentRow(value));
  }
  /// `row` has the same shape every time.
  void update(ContentRow row);

 protected:
  QVariant updateValue(const QString& key, const QVariant& input) override;

 private:
  ContentRow row_;
  std::vector<QObject*> children_;  ///< of cells that are no scalars, made when first present
};

/// What QML sees of a cell. An object or a list is `child`, which is made for `parent` when it is null and then
/// brought up to date; it outlives an absent value, so that the next present one finds the same object.
QVariant shownValue(const ContentCell& cell, QObject*& child, QObject* parent);

}  // namespace pillora

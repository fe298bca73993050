// SPDX-License-Identifier: MIT
#include "ui/Sample.h"

#include <QQmlEngine>
#include <deque>
#include <map>
#include <string>

#include "ui/ContentObject.h"
#include "ui/RowsModel.h"

namespace pillora {
namespace {

/// One shape for each set of names, for as long as the program runs.
const ContentShape* shapeFor(const QVariantMap& members) {
  static std::map<std::string, ContentShape> shapes;
  static std::deque<std::string> names;
  ContentShape& shape = shapes[members.keys().join(u',').toStdString()];
  if (shape.names.empty()) {
    for (const QString& name : members.keys()) shape.names.push_back(names.emplace_back(name.toStdString()));
  }
  return &shape;
}

ContentRow rowOf(const QVariantMap& members);

ContentCell cellOf(const QVariant& value) {
  if (value.metaType().id() == QMetaType::QVariantMap) {
    return {.kind = ContentCell::Kind::object, .rows = {rowOf(value.toMap())}};
  }
  const QVariantList list = value.toList();
  if (value.metaType().id() != QMetaType::QVariantList ||
      (!list.isEmpty() && list.first().metaType().id() != QMetaType::QVariantMap)) {
    return {.scalar = value};
  }
  ContentCell cell{.kind = ContentCell::Kind::rows};
  for (const QVariant& row : list) cell.rows.push_back(rowOf(row.toMap()));
  if (!list.isEmpty()) cell.elementShape = cell.rows.front().shape;
  return cell;
}

ContentRow rowOf(const QVariantMap& members) {
  ContentRow row{.shape = shapeFor(members)};
  for (const QVariant& value : members) row.cells.push_back(cellOf(value));
  return row;
}

}  // namespace

void Sample::registerType(Sample& sample) { qmlRegisterSingletonInstance("Pillora.Samples", 1, 0, "Sample", &sample); }

QObject* Sample::object(const QVariantMap& members) {
  auto* object = new ContentObject(this);
  object->update(rowOf(members));
  return object;
}

QObject* Sample::rows(const QVariantList& rows) {
  auto* model = new RowsModel(this);
  model->update(cellOf(rows));
  return model;
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "ui/ContentObject.h"

#include <algorithm>
#include <utility>

#include "ui/RowsModel.h"

namespace pillora {
int ContentShape::keyMember() const {
  for (std::string_view key : {"id", "medicineId", "day"}) {
    const auto found = std::find(names.begin(), names.end(), key);
    if (found != names.end()) return static_cast<int>(found - names.begin());
  }
  return -1;
}

QVariant shownValue(const ContentCell& cell, QObject*& child, QObject* parent) {
  if (cell.kind == ContentCell::Kind::scalar) return cell.scalar;
  if (cell.kind == ContentCell::Kind::rows) {
    if (!child) child = new RowsModel(parent);
    static_cast<RowsModel*>(child)->update(cell);
    return QVariant::fromValue(child);
  }
  if (cell.rows.empty()) return QVariant::fromValue(nullptr);
  if (!child) child = new ContentObject(parent);
  static_cast<ContentObject*>(child)->update(cell.rows.front());
  return QVariant::fromValue(child);
}

ContentObject::ContentObject(QObject* parent) : QQmlPropertyMap(this, parent) {}

void ContentObject::update(ContentRow row) {
  Q_ASSERT(!row_.shape || row_.shape == row.shape);
  const bool isFirst = row_.shape == nullptr;
  const ContentRow before = std::exchange(row_, std::move(row));
  children_.resize(row_.cells.size());
  QVariantHash changed;
  for (size_t i = 0; i < row_.cells.size(); ++i) {
    if (!isFirst && before.cells[i] == row_.cells[i]) continue;
    changed.insert(nameOf(row_.shape->names[i]), shownValue(row_.cells[i], children_[i], this));
  }
  insert(changed);
}

QVariant ContentObject::updateValue(const QString& key, const QVariant&) { return value(key); }

}  // namespace pillora

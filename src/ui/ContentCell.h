// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "support/Fields.h"
#include "support/Instant.h"
#include "support/UUID.h"

Q_DECLARE_METATYPE(pillora::Instant)

namespace pillora {

// How content reaches the window: a described value becomes a ContentRow, one cell per member in fields() order. That
// is all that depends on a content's type; ContentObject and RowsModel show rows to QML and change them in place.
//
// Texts and numbers are themselves, an absent value is null, an identifier its text. An Instant stays one: QML cannot
// look into it, but hands it back unchanged with an action.

/// The names of a described struct's members, one object per type.
struct ContentShape {
  std::vector<std::string_view> names;
  std::string_view kind;  ///< tells apart the rows of a mixed list; empty outside one

  /// The member that identifies a row in its list: `id`, else `medicineId`, else `day`, else -1.
  int keyMember() const;
};

/// A member's name in QML.
inline QString nameOf(std::string_view member) {
  return QString::fromLatin1(member.data(), static_cast<qsizetype>(member.size()));
}

struct ContentCell;

struct ContentRow {
  const ContentShape* shape = nullptr;
  std::vector<ContentCell> cells = {};

  bool operator==(const ContentRow&) const;
};

struct ContentCell {
  enum class Kind { scalar, object, rows };

  Kind kind = Kind::scalar;
  QVariant scalar = {};                        ///< of a scalar; a list of scalars is a QVariantList
  std::vector<ContentRow> rows = {};           ///< the rows; of an object itself, or none when it is absent
  const ContentShape* elementShape = nullptr;  ///< of rows; null when they are of several types

  bool operator==(const ContentCell&) const = default;
};

inline bool ContentRow::operator==(const ContentRow& other) const {
  return shape == other.shape && cells == other.cells;
}

template <Described T>
const ContentShape& shapeOf() {
  static const ContentShape shape = [] {
    ContentShape made;
    forEachField<T>([&](std::string_view name, auto) { made.names.push_back(name); });
    if constexpr (requires { T::kKind; }) made.kind = T::kKind;
    return made;
  }();
  return shape;
}

inline QVariant scalarOf(bool value) { return value; }
inline QVariant scalarOf(double value) { return value; }
inline QVariant scalarOf(std::integral auto value) { return QVariant::fromValue(static_cast<qint64>(value)); }
inline QVariant scalarOf(const std::string& value) { return QString::fromStdString(value); }
inline QVariant scalarOf(const UUID& value) { return QString::fromStdString(value.text()); }
inline QVariant scalarOf(Instant value) { return QVariant::fromValue(value); }

template <Described T>
ContentRow contentRow(const T& value);

template <typename... Alternatives>
ContentRow contentRow(const std::variant<Alternatives...>& value) {
  return std::visit([](const auto& alternative) { return contentRow(alternative); }, value);
}

/// A row that is a list itself, such as a week of days: its one member is `cells`.
template <typename T>
ContentRow contentRow(const std::vector<T>& values);

template <typename T>
ContentCell contentCell(const T& value) {
  if constexpr (Described<T>) {
    return {.kind = ContentCell::Kind::object, .rows = {contentRow(value)}, .elementShape = &shapeOf<T>()};
  } else {
    return {.scalar = scalarOf(value)};
  }
}

template <typename T>
ContentCell contentCell(const std::optional<T>& value) {
  if (value) return contentCell(*value);
  if constexpr (Described<T>) return {.kind = ContentCell::Kind::object, .elementShape = &shapeOf<T>()};
  return {.scalar = QVariant::fromValue(nullptr)};
}

template <typename T>
ContentCell contentCell(const std::vector<T>& values) {
  if constexpr (requires(const T& value) { scalarOf(value); }) {
    QVariantList scalars;
    for (const T& value : values) scalars.append(scalarOf(value));
    return {.scalar = scalars};
  } else {
    ContentCell cell{.kind = ContentCell::Kind::rows};
    if constexpr (Described<T>) cell.elementShape = &shapeOf<T>();
    cell.rows.reserve(values.size());
    for (const T& value : values) cell.rows.push_back(contentRow(value));
    return cell;
  }
}

template <typename T>
ContentRow contentRow(const std::vector<T>& values) {
  static const ContentShape shape{.names = {"cells"}, .kind = {}};
  return {.shape = &shape, .cells = {contentCell(values)}};
}

template <Described T>
ContentRow contentRow(const T& value) {
  ContentRow row{.shape = &shapeOf<T>()};
  row.cells.reserve(row.shape->names.size());
  forEachField<T>([&](std::string_view, auto member) { row.cells.push_back(contentCell(value.*member)); });
  return row;
}

}  // namespace pillora

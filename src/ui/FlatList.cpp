// SPDX-License-Identifier: MIT
#include "ui/FlatList.h"

#include <algorithm>
#include <map>
#include <utility>

namespace pillora {
namespace {

/// One object for each shape, by which lists tell their rows apart.
const ContentShape& withSection(const ContentShape& shape) {
  static std::map<const ContentShape*, ContentShape> known;
  const auto [found, isNew] = known.try_emplace(&shape, shape);
  if (isNew) found->second.names.insert(found->second.names.end(), {"heading", "group", "isGroupsLast"});
  return found->second;
}

ContentCell& member(ContentRow& row, std::string_view name) {
  const auto found = std::ranges::find(row.shape->names, name);
  Q_ASSERT(found != row.shape->names.end());
  return row.cells[static_cast<size_t>(found - row.shape->names.begin())];
}

QVariant keyOf(const ContentRow& section) {
  const int key = section.shape->keyMember();
  return key < 0 ? QVariant() : section.cells[static_cast<size_t>(key)].scalar;
}

}  // namespace

ContentRow flattened(ContentRow content, std::string_view list, std::string_view rows, const ContentShape& shape) {
  ContentCell flat{.kind = ContentCell::Kind::rows, .elementShape = &withSection(shape)};
  ContentCell& sections = member(content, list);
  for (ContentRow& section : sections.rows) {
    std::vector<ContentRow> ofSection = std::exchange(member(section, rows).rows, {});
    const QVariant group = keyOf(section);
    for (size_t i = 0; i < ofSection.size(); ++i) {
      ContentRow& row = flat.rows.emplace_back(std::move(ofSection[i]));
      row.shape = flat.elementShape;
      ContentCell heading{.kind = ContentCell::Kind::object, .elementShape = section.shape};
      if (i == 0) heading.rows.push_back(section);
      row.cells.push_back(std::move(heading));
      row.cells.push_back({.scalar = group});
      row.cells.push_back({.scalar = i + 1 == ofSection.size()});
    }
  }
  sections = std::move(flat);
  return content;
}

}  // namespace pillora

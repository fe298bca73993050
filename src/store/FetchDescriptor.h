// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "model/Record.h"
#include "support/Fields.h"

namespace pillora {

/// A value as the store keeps it: NULL, INTEGER (numbers, booleans, instants in microseconds), TEXT or BLOB (UUIDs).
using StoredValue = std::variant<std::monostate, int64_t, std::string, UUID>;

inline StoredValue toStoredValue(bool value) { return static_cast<int64_t>(value); }
inline StoredValue toStoredValue(int64_t value) { return value; }
inline StoredValue toStoredValue(Instant value) { return value.microseconds(); }
inline StoredValue toStoredValue(std::string value) { return value; }
inline StoredValue toStoredValue(const UUID& value) { return value; }
template <typename T>
StoredValue toStoredValue(const std::optional<T>& value) {
  return value ? toStoredValue(*value) : StoredValue();
}

/// Which records of one type a fetch returns, and in which order. Without conditions all of them; without a sort in
/// the order of their insertion, which is also the order of equals in a sort.
///
///     FetchDescriptor<Medicine>().where(&Medicine::isActive, Comparison::equal, true)
enum class Comparison { equal, atLeast, lessThan };
enum class SortOrder { ascending, descending };

template <Described T>
class FetchDescriptor {
 public:
  struct Condition {
    std::string_view column;
    Comparison comparison;
    StoredValue value;
  };
  struct Sort {
    std::string_view column;
    SortOrder order;
  };

  template <typename V>
  FetchDescriptor&& where(Stored<V> T::*field, Comparison comparison, V value) && {
    conditions.push_back({columnOf(field), comparison, toStoredValue(std::move(value))});
    return std::move(*this);
  }
  template <typename V>
  FetchDescriptor&& sortedBy(Stored<V> T::*field, SortOrder order = SortOrder::ascending) && {
    sort = Sort{columnOf(field), order};
    return std::move(*this);
  }
  FetchDescriptor&& limitedTo(int64_t rows) && {
    limit = rows;
    return std::move(*this);
  }

  std::vector<Condition> conditions;
  std::optional<Sort> sort;
  std::optional<int64_t> limit;

 private:
  template <typename V>
  static std::string_view columnOf(Stored<V> T::*wanted) {
    std::string_view column;
    forEachField<T>([&](std::string_view name, auto member) {
      if constexpr (std::is_same_v<decltype(member), Stored<V> T::*>) {
        if (member == wanted) column = name;
      }
    });
    return column;
  }
};

}  // namespace pillora

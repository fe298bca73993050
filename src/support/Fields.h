// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <string_view>
#include <tuple>

namespace pillora {

/// One member of a described struct: the name under which it is stored, exported and bound, and where it lies.
template <typename Owner, typename Member>
struct FieldOf {
  std::string_view name;
  Member Owner::*member;
};

template <typename Owner, typename Member>
constexpr FieldOf<Owner, Member> field(std::string_view name, Member Owner::*member) {
  return {name, member};
}

/// A struct that lists its members once, as a tuple of field(...) values in their order. Records and content values
/// are described; the store's columns, the JSON members and the window's properties all come from that one list:
///
///     struct Badge {
///       std::string label, value;
///       static constexpr auto fields() { return std::tuple(field("label", &Badge::label), field("value",
///       &Badge::value)); }
///     };
template <typename T>
concept Described = requires {
  T::fields();
};

/// Calls `visit(name, memberPointer)` for each field of T in order.
template <Described T, typename Visitor>
constexpr void forEachField(Visitor&& visit) {
  std::apply([&](const auto&... fields) { (visit(fields.name, fields.member), ...); }, T::fields());
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace pillora {

/// The identity of a record: 128 bits, written as upper-case 8-4-4-4-12 text in identifiers, backups and JSON.
struct UUID {
  std::array<uint8_t, 16> bytes{};

  /// A new version 4 identifier from the kernel's random source.
  static UUID random();
  /// Reads the 8-4-4-4-12 form in either case; nothing for any other shape (braces, no hyphens).
  static std::optional<UUID> parse(std::string_view text);

  std::string text() const;

  auto operator<=>(const UUID&) const = default;
};

}  // namespace pillora

template <>
struct std::hash<pillora::UUID> {
  size_t operator()(const pillora::UUID& id) const noexcept {
    size_t value = 0;  // the bytes are random already: any eight of them spread well
    for (size_t i = 0; i < sizeof value; ++i) value = value << 8 | id.bytes[i];
    return value;
  }
};

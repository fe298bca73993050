// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pillora {

/// What a compiled file of the tz database (TZif, version 2 or later) tells about wall times. Which of them are
/// daylight saving time, and what they are called, is left out.
struct ZoneFile {
  /// From this second since 1970 on, wall time is `offset` seconds ahead of UTC.
  struct Change {
    int64_t second;
    int32_t offset;

    bool operator==(const Change&) const = default;
  };

  int32_t initial = 0;          ///< the offset before the first change
  std::vector<Change> changes;  ///< ascending, each to another offset than the one before
  std::string footer;           ///< what holds after the last change, as POSIX writes it; may be empty

  int32_t last() const { return changes.empty() ? initial : changes.back().offset; }
  /// Adds what happens next, unless nothing does.
  void add(const Change& change) {
    if (change.offset != last()) changes.push_back(change);
  }

  /// Nothing when the bytes are malformed, cut short, or count leap seconds. Changes before the year 1600, which is how
  /// some files begin, become the initial offset.
  static std::optional<ZoneFile> parse(std::string_view bytes);
};

}  // namespace pillora

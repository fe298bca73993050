// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <unicode/basictz.h>
#include <vector>

#include "support/Instant.h"

namespace pillora {

/// Every change of one zone's distance from UTC between 1900 and 2100, read from ICU once. Looking up the segment that
/// was looked up last, or one near by, costs a few comparisons; nothing allocates. All times are microseconds. A table
/// may be used from several threads at once.
class OffsetTable {
 public:
  /// A stretch of time with one distance from UTC. A wall time that a clock change removes or repeats belongs to the
  /// segment before the change: it then moves forward by the gap, or means its first occurrence.
  struct Segment {
    int64_t start, end;          ///< instants, `end` excluded
    int64_t wallStart, wallEnd;  ///< the wall times that belong to this segment, `wallEnd` excluded
    int64_t offset;              ///< wall time minus UTC
  };

  explicit OffsetTable(const icu::BasicTimeZone& zone);

  /// Whether the table holds for an instant, or for a wall time, of this many microseconds.
  static constexpr bool covers(int64_t time) { return time >= kFirst && time < kEnd; }

  /// The segment in which an instant lies; covers(instant).
  const Segment& at(int64_t instant) const {
    const Segment& recent = segments_[recent_.load(std::memory_order_relaxed)];
    return instant >= recent.start && instant < recent.end ? recent : findInstant(instant);
  }
  /// The segment to which a wall time belongs; covers(wall).
  const Segment& ofWall(int64_t wall) const {
    const Segment& recent = segments_[recent_.load(std::memory_order_relaxed)];
    return wall >= recent.wallStart && wall < recent.wallEnd ? recent : findWall(wall);
  }

 private:
  static constexpr int64_t kMicrosPerDay = 86'400'000'000;
  static constexpr int64_t kFirst = daysFromCivil(1900, 1, 1) * kMicrosPerDay;
  static constexpr int64_t kEnd = daysFromCivil(2100, 1, 1) * kMicrosPerDay;

  const Segment& findInstant(int64_t instant) const;
  const Segment& findWall(int64_t wall) const;

  std::vector<Segment> segments_;           ///< ascending, without holes, beyond what is covered at both ends
  mutable std::atomic<size_t> recent_ = 0;  ///< the segment found last: a hint, right or wrong
};

}  // namespace pillora

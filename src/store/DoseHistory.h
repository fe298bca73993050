// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "model/DoseLog.h"
#include "support/Instant.h"

namespace pillora {

// A look back over the logs of all medicines, see ModelContext::doseHistory.

/// How many logs there are, by what became of their doses.
struct DoseCounts {
  int64_t taken = 0, missed = 0, skipped = 0;
  int64_t total = 0;  ///< with those of any other status

  void add(DoseStatus status);
  bool operator==(const DoseCounts&) const = default;
};

/// Which logs to look at. Logs that belong to no medicine never count.
struct DoseHistoryQuery {
  Instant from;                      ///< those scheduled then or later, however far ahead
  std::optional<DoseStatus> status;  ///< taken, missed or skipped: those with this status alone. Absent: all
  size_t limit = 0;                  ///< of how many the records are wanted
  std::function<Instant(Instant)> startOfDay;
  /// Records are wanted of those scheduled then or earlier; the counts are of all.
  Instant until = Instant::distantFuture();
};

/// What was found, all of it as of one moment of the file.
struct DoseHistory {
  struct Dose {
    Instant scheduledTime;
    DoseStatus status;
  };

  DoseCounts counts;  ///< of all that match
  /// Records of those scheduled last, the latest first; at one time in the order of their medicines, those of one
  /// medicine in the order of their insertion.
  std::vector<std::shared_ptr<DoseLog>> latest;
  /// What lies before and behind `latest` in that order and may be of the same days.
  std::vector<Dose> rest;
  bool hasMore = false;  ///< more match behind `latest`
};

}  // namespace pillora

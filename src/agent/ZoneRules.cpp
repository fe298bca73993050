// SPDX-License-Identifier: MIT
#include "agent/ZoneRules.h"

#include <ctime>

namespace pillora {

namespace {

constexpr int64_t kDay = 86'400;
constexpr int64_t kFarthestYear = 100'000;

/// Seconds by which local time is ahead of UTC; nothing where the library cannot tell.
std::optional<int64_t> offsetAt(int64_t seconds) {
  const auto time = static_cast<time_t>(seconds);
  tm local{};
  if (localtime_r(&time, &local) == nullptr) return std::nullopt;
  return static_cast<int64_t>(local.tm_gmtoff);
}

}  // namespace

bool isRealMinute(const WallTime& wall) {
  if (wall.year < -kFarthestYear || wall.year > kFarthestYear) return false;
  if (wall.month < 1 || wall.month > 12 || wall.day < 1 || wall.day > 31) return false;
  if (wall.hour > 23 || wall.minute > 59) return false;
  const CivilDate same = civilFromDays(daysFromCivil(wall.year, wall.month, wall.day));
  return same == CivilDate{wall.year, wall.month, wall.day};
}

std::optional<Instant> LibraryZone::instantOf(const WallTime& wall) const {
  if (!isRealMinute(wall)) return std::nullopt;
  const int64_t local = daysFromCivil(wall.year, wall.month, wall.day) * kDay + wall.hour * 3600 + wall.minute * 60;
  // No offset reaches a whole day, so a day on either side of `local` lies before and after every instant that could
  // show it, and zones do not change twice within these two days.
  const auto before = offsetAt(local - kDay);
  const auto after = offsetAt(local + kDay);
  if (!before || !after) return std::nullopt;
  const int64_t first = local - *before;
  const int64_t second = local - *after;
  if (offsetAt(first) == before) return Instant::fromSeconds(first);
  if (offsetAt(second) == after) return Instant::fromSeconds(second);
  return Instant::fromSeconds(first);  // in a gap: the old offset carries it past the change by the gap's length
}

void LibraryZone::refresh() { tzset(); }

std::optional<Instant> CalendarZone::instantOf(const WallTime& wall) const {
  if (!isRealMinute(wall)) return std::nullopt;
  DateComponents components;
  components.year = wall.year;
  components.month = wall.month;
  components.day = wall.day;
  components.hour = wall.hour;
  components.minute = wall.minute;
  return gregorian_.date(components);
}

}  // namespace pillora

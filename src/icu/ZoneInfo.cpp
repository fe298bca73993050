// SPDX-License-Identifier: MIT
#include "icu/ZoneInfo.h"

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <map>
#include <optional>
#include <sys/stat.h>
#include <unicode/rbtz.h>
#include <unicode/tzrule.h>
#include <unistd.h>
#include <vector>

#include "icu/PosixZone.h"
#include "icu/ZoneFile.h"
#include "support/Instant.h"

namespace pillora {

namespace {

using AnnualRule = icu::AnnualTimeZoneRule;

constexpr size_t kLongestId = 64;
constexpr off_t kMostBytes = 65'536;  // real files have less than 4 KB
constexpr int64_t kSecondsPerDay = 86'400;
constexpr int32_t kFirstYear = 1600;

int64_t changeIn(int32_t year, const AnnualRule& rule) {
  UDate time = 0;
  rule.getStartInYear(year, 0, 0, time);
  return static_cast<int64_t>(time / 1000);
}

int32_t yearOf(int64_t second) { return static_cast<int32_t>(civilFromDays(floorDiv(second, kSecondsPerDay)).year); }

/// Whether something holds in years of every kind: leap or not, beginning with each day of the week.
template <typename Condition>
bool everyYear(const Condition& holds) {
  for (int32_t year = 2000; year < 2028; ++year) {
    if (!holds(year)) return false;
  }
  return true;
}

/// The two changes of each year.
struct Yearly {
  AnnualRule begin, end;

  explicit Yearly(const PosixZone& zone, int32_t firstYear = kFirstYear)
      : begin({}, zone.daylight->offset * 1000, 0, zone.daylight->begin, firstYear, AnnualRule::MAX_YEAR),
        end({}, zone.offset * 1000, 0, zone.daylight->end, firstYear, AnnualRule::MAX_YEAR) {}

  /// "EST5EDT,0/0,J365/25": each year's daylight saving time ends when the next year's begins.
  bool isAllYear() const {
    return everyYear([&](int32_t year) { return changeIn(year, end) >= changeIn(year + 1, begin); });
  }
  /// ICU expects the changes of a year within that year, by UTC.
  bool isSearchable() const {
    return everyYear([&](int32_t year) {
      const int64_t first = changeIn(year, begin), second = changeIn(year, end);
      return first != second && yearOf(first) == year && yearOf(second) == year;
    });
  }
};

/// The yearly changes that follow the last listed one in its year join the list, and `zone` gets those of later years.
void addYearly(const PosixZone& rule, ZoneFile& file, icu::RuleBasedTimeZone& zone, UErrorCode& status) {
  const int64_t last = file.changes.empty() ? INT64_MIN : file.changes.back().second;
  const int32_t year = file.changes.empty() ? kFirstYear : yearOf(last);
  const Yearly yearly(rule);
  std::vector<ZoneFile::Change> changes = {{changeIn(year, yearly.begin), rule.daylight->offset},
                                           {changeIn(year, yearly.end), rule.offset}};
  if (changes[1].second < changes[0].second) std::swap(changes[0], changes[1]);
  for (const ZoneFile::Change& change : changes) {
    if (change.second > last) file.add(change);
  }
  const Yearly later(rule, year + 1);
  zone.addTransitionRule(later.begin.clone(), status);
  zone.addTransitionRule(later.end.clone(), status);
}

void addListed(const std::vector<ZoneFile::Change>& changes, icu::RuleBasedTimeZone& zone, UErrorCode& status) {
  std::map<int32_t, std::vector<UDate>> starts;
  for (const auto& [second, offset] : changes) starts[offset].push_back(static_cast<double>(second) * 1000);
  for (const auto& [offset, times] : starts) {
    zone.addTransitionRule(
        new icu::TimeArrayTimeZoneRule({}, offset * 1000, 0, times.data(), static_cast<int32_t>(times.size()),
                                       icu::DateTimeRule::UTC_TIME),
        status);
  }
}

std::unique_ptr<icu::BasicTimeZone> zoneOf(const std::string& id, ZoneFile file) {
  auto rule = file.footer.empty() ? PosixZone{.offset = file.last()} : PosixZone::parse(file.footer);
  if (!rule) return nullptr;
  if (rule->daylight && Yearly(*rule).isAllYear()) rule = PosixZone{.offset = rule->daylight->offset};
  if (rule->daylight ? !Yearly(*rule).isSearchable() : rule->offset != file.last()) return nullptr;
  UErrorCode status = U_ZERO_ERROR;
  auto zone = std::make_unique<icu::RuleBasedTimeZone>(icu::UnicodeString::fromUTF8(id),
                                                       new icu::InitialTimeZoneRule({}, file.initial * 1000, 0));
  if (rule->daylight) addYearly(*rule, file, *zone, status);
  addListed(file.changes, *zone, status);
  zone->complete(status);
  return U_SUCCESS(status) ? std::move(zone) : nullptr;
}

/// Whether the name may be looked up: its parts begin with capital letters, as no other files of the folder do.
bool isZoneName(std::string_view id) {
  const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
  const auto isOther = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '+' || c == '-';
  };
  bool atStart = true;
  for (const char c : id) {
    if (!isCapital(c) && (atStart || (c != '/' && !isOther(c)))) return false;
    atStart = c == '/';
  }
  return !atStart && id.size() <= kLongestId;
}

/// The bytes of a regular file; empty when there is none, or too large a one.
std::string read(const std::string& path) {
  std::string bytes;
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return bytes;
  struct stat found {};
  if (::fstat(file, &found) == 0 && S_ISREG(found.st_mode) && found.st_size <= kMostBytes) {
    bytes.resize(static_cast<size_t>(found.st_size));
    bytes.resize(static_cast<size_t>(std::max<ssize_t>(::read(file, bytes.data(), bytes.size()), 0)));
  }
  ::close(file);
  return bytes;
}

}  // namespace

std::unique_ptr<icu::BasicTimeZone> readZone(const std::string& id, const std::string& folder) {
  return isZoneName(id) ? zoneFromBytes(id, read(folder + '/' + id)) : nullptr;
}

std::unique_ptr<icu::BasicTimeZone> zoneFromBytes(const std::string& id, std::string_view bytes) {
  auto file = ZoneFile::parse(bytes);
  return file ? zoneOf(id, std::move(*file)) : nullptr;
}

}  // namespace pillora

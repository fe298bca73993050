// SPDX-License-Identifier: MIT
#include "icu/OffsetTable.h"

#include <algorithm>
#include <limits>
#include <unicode/tzrule.h>

namespace pillora {

namespace {

constexpr int kFirstYear = 1899, kLastYear = 2100;  // a year more than is covered, so that its edges are known
constexpr int64_t kMicrosPerMilli = 1000;

struct Change {
  UDate time;
  int64_t offset;
};

int64_t offsetOf(const icu::TimeZoneRule& rule) {
  return (int64_t{rule.getRawOffset()} + rule.getDSTSavings()) * kMicrosPerMilli;
}

std::vector<const icu::TimeZoneRule*> rulesOf(const icu::BasicTimeZone& zone,
                                              const icu::InitialTimeZoneRule*& initial) {
  UErrorCode status = U_ZERO_ERROR;
  int32_t count = zone.countTransitionRules(status);
  std::vector<const icu::TimeZoneRule*> rules(U_SUCCESS(status) ? static_cast<size_t>(count) : 0);
  zone.getTimeZoneRules(initial, rules.data(), count, status);
  rules.resize(U_SUCCESS(status) ? static_cast<size_t>(count) : 0);
  return rules;
}

/// The changes of a rule that lists them one by one.
void addListed(const icu::TimeArrayTimeZoneRule& rule, std::vector<Change>& changes) {
  for (int32_t i = 0; i < rule.countStartTimes(); ++i) {
    UDate time = 0;
    if (rule.getStartTimeAt(i, time)) changes.push_back({time, offsetOf(rule)});
  }
}

/// The changes of a rule that holds every year; `other` is the annual rule that ends where this one starts.
void addAnnual(const icu::AnnualTimeZoneRule& rule, const icu::AnnualTimeZoneRule& other,
               std::vector<Change>& changes) {
  for (int year = std::max(kFirstYear, rule.getStartYear()); year <= kLastYear; ++year) {
    UDate time = 0;
    if (rule.getStartInYear(year, other.getRawOffset(), other.getDSTSavings(), time)) {
      changes.push_back({time, offsetOf(rule)});
    }
  }
}

std::vector<Change> changesOf(const std::vector<const icu::TimeZoneRule*>& rules) {
  std::vector<Change> changes;
  std::vector<const icu::AnnualTimeZoneRule*> annual;
  for (const icu::TimeZoneRule* rule : rules) {
    if (const auto* listed = dynamic_cast<const icu::TimeArrayTimeZoneRule*>(rule)) addListed(*listed, changes);
    if (const auto* yearly = dynamic_cast<const icu::AnnualTimeZoneRule*>(rule)) annual.push_back(yearly);
  }
  for (size_t i = 0; i < annual.size(); ++i) addAnnual(*annual[i], *annual[annual.size() - 1 - i], changes);
  std::sort(changes.begin(), changes.end(), [](const Change& a, const Change& b) { return a.time < b.time; });
  return changes;
}

}  // namespace

OffsetTable::OffsetTable(const icu::BasicTimeZone& zone) {
  constexpr int64_t kBegin = std::numeric_limits<int64_t>::min(), kNever = std::numeric_limits<int64_t>::max();
  const icu::InitialTimeZoneRule* initial = nullptr;
  const std::vector<Change> changes = changesOf(rulesOf(zone, initial));
  segments_.push_back({kBegin, kNever, kBegin, kNever, initial ? offsetOf(*initial) : 0});
  for (const Change& change : changes) {
    Segment& before = segments_.back();
    if (change.offset == before.offset) continue;
    before.end = static_cast<int64_t>(change.time) * kMicrosPerMilli;
    before.wallEnd = before.end + std::max(before.offset, change.offset);
    segments_.push_back({before.end, kNever, before.wallEnd, kNever, change.offset});
  }
}

const OffsetTable::Segment& OffsetTable::findInstant(int64_t instant) const {
  const auto next = std::upper_bound(segments_.begin(), segments_.end(), instant,
                                     [](int64_t value, const Segment& segment) { return value < segment.start; });
  recent_.store(static_cast<size_t>(next - segments_.begin()) - 1, std::memory_order_relaxed);
  return *(next - 1);
}

const OffsetTable::Segment& OffsetTable::findWall(int64_t wall) const {
  const auto next = std::upper_bound(segments_.begin(), segments_.end(), wall,
                                     [](int64_t value, const Segment& segment) { return value < segment.wallStart; });
  recent_.store(static_cast<size_t>(next - segments_.begin()) - 1, std::memory_order_relaxed);
  return *(next - 1);
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "icu/GregorianCalendar.h"

#include <gtest/gtest.h>

#include <memory>
#include <rapidcheck/gtest.h>
#include <sstream>
#include <string>
#include <unicode/strenum.h>
#include <unicode/tztrans.h>
#include <vector>

#include "doubles/Instants.h"
#include "icu/IcuCalendar.h"
#include "icu/Locales.h"

namespace pillora {

namespace {

/// The Gregorian calendar of one zone twice, by day arithmetic and by ICU.
struct Pair {
  std::string zoneId;
  std::unique_ptr<icu::BasicTimeZone> zone;
  std::unique_ptr<GregorianCalendar> fast;
  std::unique_ptr<IcuCalendar> icu;

  explicit Pair(const std::string& id) : zoneId(id), zone(std::move(*timeZoneNamed(id))) {
    const icu::Locale locale("en_US");
    fast = std::make_unique<GregorianCalendar>(std::move(*IcuCalendar::make(locale, *zone)), *zone);
    icu = std::move(*IcuCalendar::make(locale, *zone));
  }
};

const std::vector<Pair>& allZones() {
  static const std::vector<Pair> pairs = [] {
    std::vector<Pair> out;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::StringEnumeration> ids(
        icu::TimeZone::createTimeZoneIDEnumeration(UCAL_ZONE_TYPE_CANONICAL, nullptr, nullptr, status));
    while (const char* id = ids->next(nullptr, status)) {
      if (timeZoneNamed(id)) out.emplace_back(id);
    }
    return out;
  }();
  return pairs;
}

std::string describe(const DateComponents& c) {
  std::ostringstream out;
  out << "era " << c.era.value_or(-1) << ' ' << c.year << '-' << c.month << '-' << c.day << ' ' << c.hour << ':'
      << c.minute << ':' << c.second;
  return out.str();
}

std::string describe(const std::optional<Instant>& instant) { return instant ? iso8601(*instant) : "nothing"; }

/// The first difference between the two answers about an instant; empty when there is none.
std::string difference(const Pair& pair, Instant t, const std::vector<int64_t>& days) {
  std::ostringstream out;
  const auto note = [&](const std::string& what, const std::string& fast, const std::string& icu) {
    if (fast != icu) out << pair.zoneId << ' ' << iso8601(t) << ' ' << what << ": " << fast << ", ICU " << icu << '\n';
  };
  const auto noteTime = [&](const std::string& what, std::optional<Instant> fast, std::optional<Instant> icu) {
    if (fast != icu) note(what, describe(fast), describe(icu));
  };
  const DateComponents components = pair.fast->components(t);
  if (components != pair.icu->components(t))
    note("components", describe(components), describe(pair.icu->components(t)));
  if (pair.fast->weekday(t) != pair.icu->weekday(t)) note("weekday", "differs", "");
  if (pair.fast->utcOffset(t) != pair.icu->utcOffset(t)) note("utcOffset", "differs", "");
  noteTime("date", pair.fast->date(components), pair.icu->date(components));
  noteTime("startOfDay", pair.fast->startOfDay(t), pair.icu->startOfDay(t));
  noteTime("startOfMinute", pair.fast->startOfMinute(t), pair.icu->startOfMinute(t));
  for (const int64_t amount : days) {
    noteTime("adding " + std::to_string(amount) + " days", pair.fast->adding(CalendarUnit::day, amount, t),
             pair.icu->adding(CalendarUnit::day, amount, t));
  }
  return out.str();
}

std::string difference(const Pair& pair, const DateComponents& components) {
  const auto fast = pair.fast->date(components);
  const auto icu = pair.icu->date(components);
  if (fast == icu) return {};
  return pair.zoneId + ' ' + describe(components) + ": " + describe(fast) + ", ICU " + describe(icu) + '\n';
}

Instant instantFrom(int64_t micros) { return Instant(Instant::Duration(micros)); }

/// Instants of the covered two centuries, and a little beyond at both ends.
rc::Gen<Instant> someInstant() {
  return rc::gen::map(
      rc::gen::inRange<int64_t>(at("1899-12-20T00:00:00Z").microseconds(), at("2100-01-12T00:00:00Z").microseconds()),
      instantFrom);
}

rc::Gen<int64_t> lenient(int64_t first, int64_t last) {
  return rc::gen::weightedOneOf<int64_t>(
      {{6, rc::gen::inRange(first, last + 1)},
       {3, rc::gen::inRange(first - 3 * last, 4 * last)},
       {1, rc::gen::inRange<int64_t>(-100'000, 100'000)},
       {1, rc::gen::element<int64_t>(-kLargestStep - 1, -kLargestStep, kLargestStep, kLargestStep + 1, INT32_MAX,
                                     INT64_MAX, INT64_MIN)}});
}

rc::Gen<DateComponents> someComponents() {
  return rc::gen::build<DateComponents>(
      rc::gen::set(&DateComponents::era, rc::gen::element<std::optional<int64_t>>(std::nullopt, 1, 1, 0)),
      rc::gen::set(&DateComponents::year, rc::gen::weightedOneOf<int64_t>(
                                              {{9, rc::gen::inRange<int64_t>(1899, 2102)}, {1, lenient(0, 4000)}})),
      rc::gen::set(&DateComponents::month, lenient(1, 12)), rc::gen::set(&DateComponents::day, lenient(1, 31)),
      rc::gen::set(&DateComponents::hour, lenient(0, 23)), rc::gen::set(&DateComponents::minute, lenient(0, 59)),
      rc::gen::set(&DateComponents::second, lenient(0, 59)));
}

}  // namespace

RC_GTEST_PROP(GregorianCalendar, answersLikeIcuAboutEveryInstantInEveryZone, ()) {
  const Instant t = *someInstant();
  const int64_t days = *lenient(-40, 40);
  for (const Pair& pair : allZones()) {
    if (const auto found = difference(pair, t, {days}); !found.empty()) RC_FAIL(found);
  }
}

RC_GTEST_PROP(GregorianCalendar, formsTheSameDatesAsIcuFromAnyFieldsInEveryZone, ()) {
  const DateComponents components = *someComponents();
  for (const Pair& pair : allZones()) {
    if (const auto found = difference(pair, components); !found.empty()) RC_FAIL(found);
  }
}

/// Every change of every zone: the last moment before, the first moments after, and the days on either side.
TEST(GregorianCalendar, answersLikeIcuAtEveryClockChangeOfEveryZone) {
  std::string found;
  int changes = 0;
  for (const Pair& pair : allZones()) {
    icu::TimeZoneTransition change;
    for (UDate time = -2.3e12; pair.zone->getNextTransition(time, false, change) && change.getTime() < 4.2e12;
         ++changes) {
      time = change.getTime();
      const int64_t micros = static_cast<int64_t>(time) * 1000;
      for (const int64_t distance : {int64_t{-1}, int64_t{0}, int64_t{40'000'001}}) {
        found += difference(pair, instantFrom(micros + distance), {-1, 1});
      }
      if (found.size() > 2000) break;
    }
  }
  EXPECT_EQ(found, "");
  EXPECT_GT(changes, 10'000);
}

/// Thirty hours before and after each change in steps of ten minutes and an odd second, as instants and as wall times.
TEST(GregorianCalendar, answersLikeIcuAllAroundTheClockChangesOfDifficultZones) {
  std::string found;
  for (const char* id : {"America/New_York", "Australia/Lord_Howe", "America/Havana", "America/Sao_Paulo",
                         "America/St_Johns", "Pacific/Apia", "Africa/Monrovia", "America/Toronto"}) {
    const Pair pair(id);
    icu::TimeZoneTransition change;
    for (UDate time = -2.3e12; pair.zone->getNextTransition(time, false, change) && change.getTime() < 2.1e12;) {
      time = change.getTime();
      for (int64_t second = -30 * 3600; second <= 30 * 3600 && found.size() < 2000; second += 1801) {
        const Instant t = Instant::fromSeconds(static_cast<int64_t>(time) / 1000 + second);
        found += difference(pair, t, {-1});
        DateComponents wall = pair.fast->components(t);
        wall.minute += 17;
        found += difference(pair, wall);
      }
    }
  }
  EXPECT_EQ(found, "");
}

}  // namespace pillora

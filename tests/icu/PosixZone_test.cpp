// SPDX-License-Identifier: MIT
#include "icu/PosixZone.h"

#include <gtest/gtest.h>

#include <string>
#include <unicode/tzrule.h>
#include <vector>

#include "doubles/Instants.h"

namespace pillora {

namespace {

Instant inYear(int year, const icu::DateTimeRule& day) {
  const icu::AnnualTimeZoneRule rule({}, 0, 0, day, 1900, icu::AnnualTimeZoneRule::MAX_YEAR);
  UDate time = 0;
  rule.getStartInYear(year, 0, 0, time);
  return Instant::fromSeconds(static_cast<int64_t>(time / 1000));
}

}  // namespace

TEST(PosixZone, takesZonesWithoutDaylightSaving) {
  struct Case {
    const char* text;
    int32_t offset;
  };
  for (const auto& [text, offset] :
       {Case{"UTC0", 0}, Case{"EST5", -18'000}, Case{"CST+6", -21'600}, Case{"IST-5:30", 19'800},
        Case{"<+0545>-5:45", 20'700}, Case{"<-00>0", 0}, Case{"LMT-0:19:32", 1172}, Case{"ABC-24", 86'400}}) {
    const auto zone = PosixZone::parse(text);
    ASSERT_TRUE(zone) << text;
    EXPECT_EQ(zone->offset, offset) << text;
    EXPECT_FALSE(zone->daylight) << text;
  }
}

TEST(PosixZone, takesEveryFormOfDayAndTime) {
  struct Case {
    const char* text;
    int year;
    const char *begin, *end;
  };
  for (const auto& [text, year, begin, end] : {
           Case{"EST5EDT,M3.2.0,M11.1.0", 2026, "2026-03-08T07:00:00Z", "2026-11-01T06:00:00Z"},
           Case{"CET-1CEST,M3.5.0,M10.5.0/3", 2026, "2026-03-29T01:00:00Z", "2026-10-25T01:00:00Z"},
           Case{"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 2026, "2026-03-29T01:00:00Z", "2026-10-25T01:00:00Z"},
           Case{"IST-2IDT,M3.4.4/26,M10.5.0", 2026, "2026-03-27T00:00:00Z", "2026-10-24T23:00:00Z"},
           Case{"EET-2EEST,M3.4.4/50,M10.4.4/50", 2026, "2026-03-28T00:00:00Z", "2026-10-23T23:00:00Z"},
           Case{"IST-1GMT0,M10.5.0,M3.5.0/1", 2026, "2026-10-25T01:00:00Z", "2026-03-29T01:00:00Z"},
           Case{"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", 2026, "2026-10-03T15:30:00Z", "2026-04-04T15:00:00Z"},
           Case{"AAA0BBB,J60/0,J365/1:02:03", 2028, "2028-03-01T00:00:00Z", "2028-12-31T00:02:03Z"},
           Case{"AAA0BBB,J59/0,J1", 2028, "2028-02-28T00:00:00Z", "2028-01-01T01:00:00Z"},
           Case{"AAA0BBB,59/0,300/0", 2028, "2028-02-29T00:00:00Z", "2028-10-26T23:00:00Z"},
           Case{"AAA0BBB,59/0,300/0", 2027, "2027-03-01T00:00:00Z", "2027-10-27T23:00:00Z"},
           Case{"AAA0BBB,0/-167,365/167", 2028, "2027-12-25T01:00:00Z", "2029-01-06T22:00:00Z"},
       }) {
    const auto zone = PosixZone::parse(text);
    ASSERT_TRUE(zone && zone->daylight) << text;
    EXPECT_EQ(inYear(year, zone->daylight->begin), at(begin)) << text;
    EXPECT_EQ(inYear(year, zone->daylight->end), at(end)) << text;
  }
}

TEST(PosixZone, daylightSavingIsAnHourUnlessItSaysOtherwise) {
  EXPECT_EQ(PosixZone::parse("EST5EDT,M3.2.0,M11.1.0")->daylight->offset, -14'400);
  EXPECT_EQ(PosixZone::parse("<+1030>-10:30<+11>-11,M10.1.0,M4.1.0")->daylight->offset, 39'600);
  EXPECT_EQ(PosixZone::parse("IST-1GMT0,M10.5.0,M3.5.0/1")->daylight->offset, 0);
}

TEST(PosixZone, refusesEveryOtherText) {
  for (const std::string text : {"",
                                 "UTC",
                                 "0",
                                 "U0",
                                 "UT0",
                                 "UTC 0",
                                 "UTC0 ",
                                 "UTC25",
                                 "UTC0:60",
                                 "UTC0:",
                                 "UTC0:0:0:0",
                                 "UTC--1",
                                 "UTC99999999999",
                                 "<+0>0",
                                 "<+01-1",
                                 "+01-1",
                                 "<>0",
                                 "<A B>0",
                                 "EST5EDT",
                                 "EST5EDT4",
                                 "EST5EDT,",
                                 "EST5EDT,M3.2.0",
                                 "EST5EDT,M3.2.0,",
                                 "EST5EDT,M3.2.0,M11.1.0,",
                                 "EST5EDT,M3.2.0,M11.1.0/",
                                 "EST5EDT,M13.2.0,M11.1.0",
                                 "EST5EDT,M0.2.0,M11.1.0",
                                 "EST5EDT,M3.6.0,M11.1.0",
                                 "EST5EDT,M3.0.0,M11.1.0",
                                 "EST5EDT,M3.2.7,M11.1.0",
                                 "EST5EDT,M3.2,M11.1.0",
                                 "EST5EDT,J0,J300",
                                 "EST5EDT,J366,J300",
                                 "EST5EDT,366,300",
                                 "EST5EDT,-1,300",
                                 "EST5EDT,M3.2.0/168,M11.1.0",
                                 "EST5EDT,M3.2.0/-168,M11.1.0",
                                 "EST5E,M3.2.0,M11.1.0",
                                 "EST5EDT,X3,X4"}) {
    EXPECT_FALSE(PosixZone::parse(text)) << text;
  }
  EXPECT_FALSE(PosixZone::parse(std::string_view("UTC0\0", 5)));
}

TEST(PosixZone, aTextCutShortIsRefusedOrAnother) {
  const std::string text = "<-02>2<-01>,M3.5.0/-1,M10.5.0/0";
  for (size_t length = 0; length < text.size(); ++length) {
    const auto zone = PosixZone::parse(text.substr(0, length));
    const std::string_view whole = std::string_view(text).substr(0, length);
    EXPECT_EQ(zone.has_value(), whole == "<-02>2" || whole == "<-02>2<-01>,M3.5.0/-1,M10.5.0") << whole;
  }
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "icu/ZoneInfo.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sys/stat.h>
#include <unicode/timezone.h>
#include <unicode/tztrans.h>
#include <vector>

#include "doubles/Instants.h"
#include "doubles/ScopedZone.h"
#include "doubles/TemporaryFolder.h"
#include "icu/Calendars.h"
#include "icu/Locales.h"
#include "icu/ZoneFile.h"

namespace pillora {

namespace {

namespace fs = std::filesystem;

int64_t secondOf(const char* text) { return at(text).microseconds() / 1'000'000; }

int64_t offsetAt(const icu::TimeZone& zone, int64_t second) {
  int32_t raw = 0, saved = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(static_cast<double>(second) * 1000, false, raw, saved, status);
  EXPECT_TRUE(U_SUCCESS(status));
  return (int64_t{raw} + saved) / 1000;
}

int64_t hoursAt(const char* zone, const char* instant) {
  return (*makeCalendar("en_US", zone))->utcOffset(at(instant)) / std::chrono::hours(1);
}

std::string bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string bytesOfZone(const std::string& id) { return bytesOf(fs::path(kZoneInfoFolder) / id); }

/// The names of all files with zones in the system's folder, without the copies that count leap seconds or not.
std::vector<std::string> allZones() {
  std::vector<std::string> ids;
  for (auto entry = fs::recursive_directory_iterator(kZoneInfoFolder); entry != fs::end(entry); ++entry) {
    const std::string id = fs::relative(entry->path(), kZoneInfoFolder).string();
    if (id == "posix" || id == "right") entry.disable_recursion_pending();
    if (id == "localtime" || id == "posixrules" || !entry->is_regular_file()) continue;
    if (bytesOf(entry->path()).rfind("TZif", 0) == 0) ids.push_back(id);
  }
  return ids;
}

uint64_t bigEndian(std::string_view bytes) {
  uint64_t value = 0;
  for (const char c : bytes) value = value << 8 | static_cast<unsigned char>(c);
  return value;
}

/// The seconds around each listed change of a zone and each change that its rules make until 2100, and some in between.
std::vector<int64_t> secondsToCompare(std::string_view bytes, const icu::BasicTimeZone& zone, std::mt19937_64& random) {
  std::vector<int64_t> seconds;
  const auto addAround = [&](int64_t change) { seconds.insert(seconds.end(), {change - 1, change, change + 1}); };
  const std::string_view block = bytes.substr(bytes.find("TZif", 4));
  const uint64_t listed = bigEndian(block.substr(32, 4));
  for (size_t i = 0; i < listed; ++i) addAround(static_cast<int64_t>(bigEndian(block.substr(44 + 8 * i, 8))));
  icu::TimeZoneTransition next;
  for (UDate time = 2.1e12; zone.getNextTransition(time, false, next) && next.getTime() < 4.1e12;) {
    time = next.getTime();
    addAround(static_cast<int64_t>(time / 1000));
  }
  std::uniform_int_distribution<int64_t> any(secondOf("1902-01-01T00:00:00Z"), secondOf("2100-01-01T00:00:00Z"));
  for (int i = 0; i < 300; ++i) seconds.push_back(any(random));
  return seconds;
}

std::string number(uint64_t value, int bytes) {
  std::string out;
  for (int shift = 8 * bytes; shift > 0; shift -= 8) out += static_cast<char>(value >> (shift - 8) & 0xFF);
  return out;
}

/// A zone's file, for tests to write wrongly.
struct File {
  char version = '2';
  std::vector<int32_t> offsets = {0};
  std::vector<ZoneFile::Change> changes = {};  ///< to the local time type of that number
  std::string footer = "UTC0";
  uint64_t leapSeconds = 0;
  uint64_t statedChanges = changes.size();

  std::string header(uint64_t leaps, uint64_t changeCount, uint64_t types) const {
    return std::string("TZif") + version + std::string(15, '\0') + number(0, 4) + number(0, 4) + number(leaps, 4) +
           number(changeCount, 4) + number(types, 4) + number(4, 4);
  }
  std::string bytes() const {
    std::string out = header(0, 0, 1) + std::string(6, '\0') + "UTC" + '\0';
    out += header(leapSeconds, statedChanges, offsets.size());
    for (const auto& change : changes) out += number(static_cast<uint64_t>(change.second), 8);
    for (const auto& change : changes) out += static_cast<char>(change.offset);
    for (const int32_t offset : offsets) out += number(static_cast<uint32_t>(offset), 4) + std::string(2, '\0');
    return out + "UTC" + '\0' + std::string(leapSeconds * 12, '\0') + '\n' + footer + '\n';
  }
  std::unique_ptr<icu::BasicTimeZone> zone() const { return zoneFromBytes("Test", bytes()); }
};

}  // namespace

TEST(ZoneInfo, zonesFollowTheChangesOfRecentYears) {
  EXPECT_EQ(hoursAt("America/Mexico_City", "2026-07-01T12:00:00Z"), -6);  // no daylight saving since 2022
  EXPECT_EQ(hoursAt("Africa/Cairo", "2026-07-01T12:00:00Z"), 3);          // daylight saving again since 2023
  EXPECT_EQ(hoursAt("Africa/Cairo", "2026-01-01T12:00:00Z"), 2);
  EXPECT_EQ(hoursAt("Asia/Almaty", "2026-01-01T12:00:00Z"), 5);
  EXPECT_EQ(hoursAt("America/Asuncion", "2026-07-01T12:00:00Z"), -3);
  EXPECT_EQ(hoursAt("America/Nuuk", "2026-01-01T12:00:00Z"), -2);
  EXPECT_EQ(hoursAt("America/Nuuk", "2026-07-01T12:00:00Z"), -1);
  EXPECT_EQ(hoursAt("America/Ciudad_Juarez", "2026-07-01T12:00:00Z"), -6);
}

TEST(ZoneInfo, yearlyRulesHoldForEver) {
  struct Case {
    const char *footer, *instant;
    int64_t hours;
  };
  for (const auto& [footer, instant, hours] : {
           Case{"UTC0BST,M3.5.0/1,M10.5.0", "2500-01-01T12:00:00Z", 0},
           Case{"UTC0BST,M3.5.0/1,M10.5.0", "2500-07-01T12:00:00Z", 1},
           Case{"UTC0BST,M10.1.0,M4.1.0/3", "2300-01-01T12:00:00Z", 1},  // south of the equator
           Case{"UTC0BST,M10.1.0,M4.1.0/3", "2300-07-01T12:00:00Z", 0},
           Case{"UTC0XXX1,M10.5.0,M3.5.0/1", "2026-01-01T12:00:00Z", -1},  // back in winter, as in Dublin
           Case{"UTC0XXX1,M10.5.0,M3.5.0/1", "2026-07-01T12:00:00Z", 0},
           Case{"UTC0IDT,M3.4.4/26,M10.5.0", "2026-03-27T01:59:59Z", 0},  // Friday, told from Thursday: Jerusalem
           Case{"UTC0IDT,M3.4.4/26,M10.5.0", "2026-03-27T02:00:00Z", 1},
           Case{"UTC0XXX,59/0,J300", "2028-02-29T00:00:00Z", 1},
           Case{"UTC0XXX,59/0,J300", "2100-02-28T23:59:59Z", 0},
           Case{"UTC0XXX,59/0,J300", "2100-03-01T00:00:00Z", 1},
       }) {
    const auto zone = File{.footer = footer}.zone();
    ASSERT_TRUE(zone) << footer;
    EXPECT_EQ(offsetAt(*zone, secondOf(instant)), hours * 3600) << footer << ' ' << instant;
  }
}

TEST(ZoneInfo, offsetsAreThoseOfTheCLibraryInEveryZone) {
  ScopedZone library("UTC");
  std::mt19937_64 random(20260101);
  size_t zones = 0, instants = 0;
  for (const std::string& id : allZones()) {
    const auto zone = readZone(id);
    ASSERT_TRUE(zone) << id;
    const auto calendar = std::move(*makeCalendar("en_US", id));
    library.set(id);
    std::string found;
    const auto seconds = secondsToCompare(bytesOfZone(id), *zone, random);
    for (const time_t second : seconds) {
      tm local{};
      ASSERT_NE(localtime_r(&second, &local), nullptr);
      const Instant instant = Instant::fromSeconds(second);
      if (offsetAt(*zone, second) != local.tm_gmtoff || calendar->utcOffset(instant).count() != local.tm_gmtoff) {
        found += id + ' ' + iso8601(instant) + '\n';
      }
    }
    EXPECT_EQ(found.substr(0, 300), "");
    ++zones;
    instants += seconds.size();
  }
  EXPECT_GT(zones, 400U);
  EXPECT_GT(instants, 200'000U);
}

TEST(ZoneInfo, withoutFilesTheOldRulesOfIcuServe) {
  const TemporaryFolder none;
  for (const char* id : {"Europe/Berlin", "America/New_York", "Asia/Kolkata", "UTC", "Australia/Lord_Howe"}) {
    const auto fallback = timeZoneNamed(id, none.path());
    const auto zone = readZone(id);
    ASSERT_TRUE(fallback && zone) << id;
    for (int64_t second = secondOf("1972-01-01T00:00:00Z"); second < secondOf("2020-01-01T00:00:00Z");
         second += 86'400 * 5 + 1801) {
      ASSERT_EQ(offsetAt(**fallback, second), offsetAt(*zone, second)) << id << ' ' << second;
    }
  }
}

TEST(ZoneInfo, withoutAUsableFileTheZoneIsIcus) {
  const TemporaryFolder folder;
  std::ofstream(folder.path() + "/UTC") << "TZif2";
  EXPECT_EQ(readZone("UTC", folder.path()), nullptr);
  EXPECT_TRUE(timeZoneNamed("UTC", folder.path()));
  for (const char* id : {"Europe/Berlin", "Etc/GMT+2", "US/Eastern", "EST5EDT"}) {
    EXPECT_TRUE(timeZoneNamed(id, folder.path())) << id;
    EXPECT_TRUE(timeZoneNamed(id, folder.path() + "/missing")) << id;
  }
  EXPECT_FALSE(timeZoneNamed("Mars/Olympus", folder.path()));
}

TEST(ZoneInfo, aFileMakesAZoneKnownThatIcuDoesNotKnow) {
  const TemporaryFolder folder;
  fs::create_directory(folder.path() + "/Mars");
  std::ofstream(folder.path() + "/Mars/Olympus") << File{.offsets = {2220}, .footer = "MTC-0:37"}.bytes();
  const auto zone = timeZoneNamed("Mars/Olympus", folder.path());
  ASSERT_TRUE(zone);
  EXPECT_EQ(offsetAt(**zone, 0), 2220);
}

TEST(ZoneInfo, aFileMakesNoZoneOfARefusedName) {
  const TemporaryFolder folder;
  for (const char* id : {"IST", "PST", "utc"}) {
    std::ofstream(folder.path() + '/' + id) << File{}.bytes();
    EXPECT_FALSE(timeZoneNamed(id, folder.path())) << id;
  }
}

TEST(ZoneInfo, namesDoNotLeadOutOfTheFolder) {
  for (const std::string id : {"../zoneinfo/UTC", "/usr/share/zoneinfo/UTC", "Europe/../UTC", "Europe/./Berlin",
                               "./UTC", "Europe//Berlin", "Europe/", "Europe", "", "/", "posix/UTC", "right/UTC",
                               "localtime", "posixrules", "tzdata.zi", "zone.tab", "UTC ", "UTC/", "Europe\\Berlin"}) {
    EXPECT_EQ(readZone(id), nullptr) << id;
    EXPECT_FALSE(timeZoneNamed(id)) << id;
  }
  EXPECT_EQ(readZone(std::string("UTC\0x", 5)), nullptr);
  EXPECT_EQ(readZone("U" + std::string(5000, 'x')), nullptr);
}

TEST(ZoneInfo, onlyRegularFilesOfASensibleSizeAreRead) {
  const TemporaryFolder folder;
  const auto path = [&](const char* name) { return folder.path() + '/' + name; };
  std::ofstream(path("Good")) << File{}.bytes();
  fs::create_symlink("Good", path("Link"));
  fs::create_symlink("Loop", path("Loop"));
  fs::create_directory(path("Folder"));
  ASSERT_EQ(mkfifo(path("Pipe").c_str(), 0600), 0);
  std::ofstream(path("Empty"));
  std::ofstream(path("Large")) << File{}.bytes() << std::string(70'000, '\0');
  EXPECT_NE(readZone("Good", folder.path()), nullptr);
  EXPECT_NE(readZone("Link", folder.path()), nullptr);
  for (const char* id : {"Loop", "Folder", "Pipe", "Empty", "Large", "Missing"}) {
    EXPECT_EQ(readZone(id, folder.path()), nullptr) << id;
  }
}

TEST(ZoneInfo, beforeTheFirstChangeTheFirstTypeHolds) {
  const auto zone =
      File{.offsets = {1172, 3600, 7200}, .changes = {{-1'000'000'000, 2}, {0, 1}}, .footer = "CET-1"}.zone();
  ASSERT_TRUE(zone);
  EXPECT_EQ(offsetAt(*zone, -1'000'000'001), 1172);
  EXPECT_EQ(offsetAt(*zone, -5'000'000'000), 1172);
  EXPECT_EQ(offsetAt(*zone, -1'000'000'000), 7200);
  EXPECT_EQ(offsetAt(*zone, -1), 7200);
  EXPECT_EQ(offsetAt(*zone, 0), 3600);
}

TEST(ZoneInfo, aChangeAtTheBeginningOfTimeIsNone) {
  for (const int64_t first : {INT64_MIN, -(int64_t{1} << 59), secondOf("1599-12-31T23:59:59Z")}) {
    const auto file = ZoneFile::parse(File{.offsets = {1172, 3600}, .changes = {{first, 1}, {0, 0}}}.bytes());
    ASSERT_TRUE(file) << first;
    EXPECT_EQ(file->initial, 3600) << first;
    EXPECT_EQ(file->changes, (std::vector<ZoneFile::Change>{{0, 1172}})) << first;
  }
}

TEST(ZoneInfo, changesOfTheNameAloneAreLeftOut) {
  const auto file = ZoneFile::parse(
      File{.offsets = {0, 3600, 3600}, .changes = {{5, 0}, {10, 1}, {20, 2}, {30, 0}, {40, 0}}}.bytes());
  ASSERT_TRUE(file);
  EXPECT_EQ(file->changes, (std::vector<ZoneFile::Change>{{10, 3600}, {30, 0}}));
}

TEST(ZoneInfo, yearlyRulesTakeOverRightAfterTheLastListedChange) {
  const std::string footer = "CET-1CEST,M3.5.0,M10.5.0/3";
  const int64_t march = secondOf("2026-03-29T01:00:00Z"), october = secondOf("2026-10-25T01:00:00Z");
  for (const auto& changes : {std::vector<ZoneFile::Change>{}, {{0, 0}}, {{march, 1}}, {{march, 1}, {october, 0}}}) {
    const auto zone = File{.offsets = {3600, 7200}, .changes = changes, .footer = footer}.zone();
    ASSERT_TRUE(zone);
    EXPECT_EQ(offsetAt(*zone, march), 7200) << changes.size();
    EXPECT_EQ(offsetAt(*zone, october - 1), 7200) << changes.size();
    EXPECT_EQ(offsetAt(*zone, october), 3600) << changes.size();
    EXPECT_EQ(offsetAt(*zone, secondOf("2027-03-28T00:59:59Z")), 3600) << changes.size();
    EXPECT_EQ(offsetAt(*zone, secondOf("2027-03-28T01:00:00Z")), 7200) << changes.size();
  }
}

TEST(ZoneInfo, yearlyRulesDoNotReachBackBeforeTheLastListedChange) {
  const int64_t december = secondOf("2026-12-01T00:00:00Z");
  const auto zone =
      File{.offsets = {0, 3600}, .changes = {{december, 1}}, .footer = "CET-1CEST,M3.5.0,M10.5.0/3"}.zone();
  ASSERT_TRUE(zone);
  EXPECT_EQ(offsetAt(*zone, secondOf("2026-07-01T00:00:00Z")), 0);
  EXPECT_EQ(offsetAt(*zone, december), 3600);
  EXPECT_EQ(offsetAt(*zone, secondOf("2027-07-01T00:00:00Z")), 7200);
}

TEST(ZoneInfo, daylightSavingMayLastAllYear) {
  const auto zone = File{.offsets = {-18'000, -14'400}, .changes = {{0, 1}}, .footer = "EST5EDT,0/0,J365/25"}.zone();
  ASSERT_TRUE(zone);
  for (const char* instant : {"1980-07-01T00:00:00Z", "2026-01-01T04:59:59Z", "2028-01-01T05:00:00Z"}) {
    EXPECT_EQ(offsetAt(*zone, secondOf(instant)), -14'400) << instant;
  }
}

TEST(ZoneInfo, anUnknownFutureIsLikeThePresent) {
  const auto zone = File{.offsets = {0, 3600}, .changes = {{0, 1}}, .footer = ""}.zone();
  ASSERT_TRUE(zone);
  EXPECT_EQ(offsetAt(*zone, secondOf("2090-07-01T00:00:00Z")), 3600);
}

TEST(ZoneInfo, refusesMalformedFiles) {
  ASSERT_TRUE(File{}.zone());
  ASSERT_TRUE((File{.version = '4'}.zone()));
  EXPECT_FALSE((File{.version = '\0'}.zone())) << "version 1";
  EXPECT_FALSE((File{.offsets = {}}.zone())) << "no type";
  EXPECT_FALSE((File{.offsets = std::vector<int32_t>(257)}.zone())) << "too many types";
  EXPECT_FALSE((File{.offsets = {-90'000}, .footer = ""}.zone())) << "too far behind";
  EXPECT_FALSE((File{.offsets = {0, 93'600}}.zone())) << "too far ahead";
  EXPECT_FALSE((File{.offsets = {INT32_MIN}, .footer = ""}.zone())) << "farther still";
  EXPECT_FALSE((File{.changes = {{0, 1}}}.zone())) << "a type beyond the list";
  EXPECT_FALSE((File{.changes = {{0, -1}}}.zone())) << "a type far beyond the list";
  EXPECT_FALSE((File{.changes = {{0, 0}, {0, 0}}}.zone())) << "the same time twice";
  EXPECT_FALSE((File{.changes = {{5, 0}, {-5, 0}}}.zone())) << "descending";
  EXPECT_FALSE((File{.changes = {{INT64_MAX, 0}}}.zone())) << "at the end of time";
  EXPECT_FALSE((File{.leapSeconds = 1}.zone())) << "leap seconds";
  for (const uint64_t stated : {1ULL, 2001ULL, 0x7FFFFFFFULL, 0xFFFFFFFFULL}) {
    EXPECT_FALSE((File{.statedChanges = stated}.zone())) << stated;
  }
  std::vector<ZoneFile::Change> many;
  for (int i = 0; i < 2001; ++i) many.push_back({i, 0});
  EXPECT_FALSE((File{.changes = many}.zone())) << "too many changes";
}

TEST(ZoneInfo, refusesFootersThatCannotBeFollowed) {
  EXPECT_FALSE((File{.footer = "UTC"}.zone())) << "malformed";
  EXPECT_FALSE((File{.footer = "CET-1"}.zone())) << "another offset than the last";
  EXPECT_FALSE((File{.footer = "AAA0BBB,0/-1,J180"}.zone())) << "begins the year before";
  EXPECT_FALSE((File{.footer = "AAA0BBB,J180,J365/26"}.zone())) << "ends the year after";
  EXPECT_FALSE((File{.footer = "AAA0BBB,J100/1,J100/2"}.zone())) << "no time in between";
}

TEST(ZoneInfo, aFileCutShortIsRefusedWhereverItEnds) {
  for (const char* id : {"America/New_York", "America/Nuuk", "Asia/Jerusalem", "UTC"}) {
    const std::string bytes = bytesOfZone(id);
    ASSERT_TRUE(zoneFromBytes(id, bytes)) << id;
    for (size_t length = 0; length < bytes.size(); ++length) {
      // A copy of that length, so that reading beyond it shows.
      const std::vector<char> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
      ASSERT_EQ(zoneFromBytes(id, {cut.data(), cut.size()}), nullptr) << id << ' ' << length;
    }
  }
}

TEST(ZoneInfo, aFileWithAnyByteChangedIsHarmless) {
  const std::string bytes = bytesOfZone("America/Nuuk");
  for (size_t i = 0; i < bytes.size(); ++i) {
    for (const int flipped : {0xFF, 0x80, 0x01}) {
      std::string changed = bytes;
      changed[i] = static_cast<char>(changed[i] ^ flipped);
      const auto zone = zoneFromBytes("Test", changed);
      if (zone == nullptr) continue;
      for (const int64_t second : {int64_t{-4'000'000'000}, int64_t{1'784'000'000}, int64_t{4'000'000'000}}) {
        EXPECT_LT(std::abs(offsetAt(*zone, second)), 26 * 3600) << i;
      }
    }
  }
}

}  // namespace pillora

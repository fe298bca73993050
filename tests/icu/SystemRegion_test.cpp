// SPDX-License-Identifier: MIT
#include "icu/SystemRegion.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <set>
#include <thread>

#include "doubles/Instants.h"
#include "doubles/ScopedVariable.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

class SystemRegionTest : public testing::Test {
 protected:
  /// Puts another link in the place of the one before, as systems do.
  void travelTo(const std::string& zone) {
    std::filesystem::create_symlink("/usr/share/zoneinfo/" + zone, etc_.file("new"));
    std::filesystem::rename(etc_.file("new"), etc_.file("localtime"));
  }
  std::unique_ptr<SystemRegion> open() {
    auto region = SystemRegion::open("en", {}, etc_.path());
    EXPECT_TRUE(region) << region.error().description;
    return *std::move(region);
  }

  ScopedVariable zone_{"TZ", std::nullopt};
  ScopedVariable locale_{"LC_ALL", "th_TH.UTF-8"};
  TemporaryFolder etc_;
  const Instant instant_ = at("2025-01-10T12:00:00Z");
};

TEST_F(SystemRegionTest, calendarsAndTextsGoByTheZoneThatTheSystemIsIn) {
  travelTo("Asia/Kolkata");
  const auto region = open();
  const Calendar& calendar = region->calendar();
  const Calendar& gregorian = region->gregorian();
  const Texts& texts = region->texts();
  EXPECT_EQ(calendar.identifier(), "buddhist");
  EXPECT_EQ(gregorian.identifier(), "gregorian");
  EXPECT_EQ(calendar.startOfDay(instant_), at("2025-01-09T18:30:00Z"));
  EXPECT_EQ(texts.shortTime(instant_, true), "17:30");
  travelTo("America/New_York");
  EXPECT_EQ(texts.shortTime(instant_, true), "17:30") << "nobody has looked yet";
  EXPECT_TRUE(region->refresh());
  EXPECT_EQ(calendar.startOfDay(instant_), at("2025-01-10T05:00:00Z"));
  EXPECT_EQ(gregorian.components(instant_).hour, 7);
  EXPECT_EQ(texts.shortTime(instant_, true), "07:00");
  EXPECT_EQ(texts.textIn("greeting", "Hello {name}", {{"name", "Ada"}}), "Hello Ada");
  EXPECT_EQ(texts.counted(2, "{n} dose", "{n} doses"), "2 doses");
  EXPECT_EQ(texts.fileSize(1'200'000), "1.2 MB");
}

TEST_F(SystemRegionTest, whatWritesTheSameZoneAgainChangesNothing) {
  travelTo("Asia/Kolkata");
  const auto region = open();
  EXPECT_FALSE(region->refresh());
  travelTo("Asia/Kolkata");
  EXPECT_FALSE(region->refresh());
}

TEST_F(SystemRegionTest, anUnknownLanguageIsRefused) {
  const auto region = SystemRegion::open("tlh", {}, etc_.path());
  ASSERT_FALSE(region);
  EXPECT_NE(region.error().description.find("tlh"), std::string::npos);
}

TEST_F(SystemRegionTest, anotherThreadReadsTheOneZoneOrTheOther) {
  travelTo("Asia/Kolkata");
  const auto region = open();
  std::set<std::string> read;
  std::atomic<bool> isReading = false, isOver = false;
  std::thread reader([&] {
    while (!isOver) {
      read.insert(region->texts().shortTime(instant_, true));
      isReading = true;
    }
  });
  while (!isReading) std::this_thread::yield();
  for (const char* zone : {"America/New_York", "Asia/Kolkata", "America/New_York"}) {
    travelTo(zone);
    EXPECT_TRUE(region->refresh());
  }
  isOver = true;
  reader.join();
  for (const std::string& text : read) EXPECT_TRUE(text == "17:30" || text == "07:00") << text;
}

}  // namespace
}  // namespace pillora

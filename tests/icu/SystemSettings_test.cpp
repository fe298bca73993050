// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>

#include "doubles/TemporaryFolder.h"
#include "icu/Calendars.h"

namespace pillora {

namespace {

/// The variables that these tests set, put back at the end.
class SystemSettings : public testing::Test {
 protected:
  SystemSettings() {
    for (const char* name : {"TZ", "LC_ALL", "LC_TIME", "LANG"}) {
      if (const char* value = std::getenv(name))
        before_[name] = value;
      else
        before_[name] = std::nullopt;
      unsetenv(name);
    }
  }
  ~SystemSettings() override {
    for (const auto& [name, value] : before_) {
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
  }

  void link(const std::string& target, const std::string& name = "localtime") {
    std::filesystem::create_symlink(target, etc() + "/" + name);
  }
  void write(const std::string& name, const std::string& text) { std::ofstream(etc() + "/" + name) << text; }
  const std::string& etc() const { return folder_.path(); }

 private:
  std::map<std::string, std::optional<std::string>> before_;
  TemporaryFolder folder_;
};

}  // namespace

TEST_F(SystemSettings, theZoneOfTheEnvironmentComesFirst) {
  link("/usr/share/zoneinfo/Europe/Berlin");
  struct Case {
    const char *variable, *zone;
  };
  for (const auto& [variable, zone] :
       {Case{"America/New_York", "America/New_York"}, Case{":Asia/Kolkata", "Asia/Kolkata"}, Case{"", "UTC"},
        Case{":", "UTC"}, Case{"/usr/share/zoneinfo/Asia/Tokyo", "Asia/Tokyo"},
        Case{":/usr/share/zoneinfo/right/Asia/Tokyo", "Asia/Tokyo"}, Case{":/etc/localtime", "Europe/Berlin"},
        Case{"Mars/Olympus", "Europe/Berlin"}}) {
    setenv("TZ", variable, 1);
    EXPECT_EQ(systemTimeZone(etc()), zone) << variable;
  }
}

TEST_F(SystemSettings, theLinkOfTheClockIsFollowed) {
  link("../usr/share/zoneinfo/posix/Europe/Berlin");
  write("timezone", "Asia/Tokyo\n");
  EXPECT_EQ(systemTimeZone(etc()), "Europe/Berlin");
}

TEST_F(SystemSettings, aLinkMayLeadThroughOthers) {
  link("second");
  link("/usr/share/zoneinfo/America/Argentina/Buenos_Aires", "second");
  EXPECT_EQ(systemTimeZone(etc()), "America/Argentina/Buenos_Aires");
}

TEST_F(SystemSettings, aLinkThatLeadsNowhereIsPassedOver) {
  link("localtime");  // to itself
  write("timezone", "Asia/Tokyo\n");
  EXPECT_EQ(systemTimeZone(etc()), "Asia/Tokyo");
}

TEST_F(SystemSettings, aCopiedClockFileLeavesItToTheName) {
  write("localtime", "TZif2");
  write("timezone", "Asia/Tokyo\n");
  EXPECT_EQ(systemTimeZone(etc()), "Asia/Tokyo");
}

TEST_F(SystemSettings, withoutAKnownZoneItIsUtc) {
  EXPECT_EQ(systemTimeZone(etc()), "UTC");
  link("/usr/share/zoneinfo/Mars/Olympus");
  write("timezone", "Mars/Olympus\n");
  EXPECT_EQ(systemTimeZone(etc()), "UTC");
}

TEST_F(SystemSettings, aChangeOfZoneIsSeenAtOnce) {
  link("/usr/share/zoneinfo/Europe/Berlin");
  EXPECT_EQ(systemTimeZone(etc()), "Europe/Berlin");
  std::filesystem::remove(etc() + "/localtime");
  link("/usr/share/zoneinfo/Asia/Tokyo");
  EXPECT_EQ(systemTimeZone(etc()), "Asia/Tokyo");
}

TEST_F(SystemSettings, theFirstLocaleVariableThatIsSetCounts) {
  EXPECT_EQ(systemLocale(), "en_US");
  setenv("LANG", "de_DE.UTF-8", 1);
  EXPECT_EQ(systemLocale(), "de_DE.UTF-8");
  setenv("LC_TIME", "en_DK.UTF-8", 1);
  EXPECT_EQ(systemLocale(), "en_DK.UTF-8");
  setenv("LC_ALL", "", 1);
  EXPECT_EQ(systemLocale(), "en_DK.UTF-8");
  setenv("LC_ALL", "fa_IR", 1);
  EXPECT_EQ(systemLocale(), "fa_IR");
}

TEST_F(SystemSettings, anUnknownLocaleIsEnglishOfTheUnitedStates) {
  setenv("LANG", "de_DE.UTF-8", 1);
  for (const char* unknown : {"xx_YY", "nonsense.UTF-8", "\xff"}) {
    setenv("LC_TIME", unknown, 1);
    EXPECT_EQ(systemLocale(), "en_US") << unknown;
  }
}

}  // namespace pillora

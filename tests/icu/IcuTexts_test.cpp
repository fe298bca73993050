// SPDX-License-Identifier: MIT
#include "icu/IcuTexts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "doubles/Instants.h"

namespace pillora {

namespace {

using namespace std::chrono_literals;

std::unique_ptr<Texts> in(const std::string& locale, const std::string& zone = "America/New_York") {
  return std::move(*makeTexts(locale, zone, "en"));
}

/// The text with plain blanks in place of narrow and unbreakable ones.
std::string plain(std::string text) {
  for (const std::string_view blank : {"\u202F", "\u00A0"}) {
    for (size_t at = text.find(blank); at != std::string::npos; at = text.find(blank))
      text.replace(at, blank.size(), " ");
  }
  return text;
}

}  // namespace

TEST(IcuTexts, datesAndTimesFollowTheLocale) {
  struct Case {
    const char *locale, *time, *time24, *full, *medium, *day;
  };
  const Instant t = at("2025-01-10T19:05:00Z");
  for (const auto& [locale, time, time24, full, medium, day] : {
           Case{"en_US", "2:05 PM", "14:05", "Friday, January 10, 2025", "Jan 10, 2025", "Friday, Jan 10"},
           Case{"C.UTF-8", "2:05 PM", "14:05", "Friday, January 10, 2025", "Jan 10, 2025", "Friday, Jan 10"},
           Case{"en_GB", "14:05", "14:05", "Friday, 10 January 2025", "10 Jan 2025", "Friday, Jan 10"},
           Case{"de_DE", "14:05", "14:05", "Freitag, 10. Januar 2025", "10.01.2025", "Freitag, Jan. 10"},
           Case{"da_DK", "14.05", "14.05", "fredag den 10. januar 2025", "10. jan. 2025", "fredag, jan. 10"},
           Case{"ar_EG", "٢:٠٥ م", "١٤:٠٥", "الجمعة، ١٠ يناير ٢٠٢٥", "١٠\u200F/٠١\u200F/٢٠٢٥", "الجمعة, يناير ١٠"},
           Case{"th_TH", "14:05", "14:05", "วันศุกร์ที่ 10 มกราคม พ.ศ. 2568", "10 ม.ค. 2568", "วันศุกร์, ม.ค. 10"},
           Case{"fa_IR", "۱۴:۰۵", "۱۴:۰۵", "۱۴۰۳ دی ۲۱, جمعه", "۲۱ دی ۱۴۰۳", "جمعه, دی ۲۱"},
           Case{"ko_KR", "오후 2:05", "14:05", "2025년 1월 10일 금요일", "2025. 1. 10.", "금요일, 1월 10"},
       }) {
    const auto texts = in(locale);
    EXPECT_EQ(plain(texts->shortTime(t, false)), time) << locale;
    EXPECT_EQ(plain(texts->shortTime(t, true)), time24) << locale;
    EXPECT_EQ(plain(texts->fullDate(t)), full) << locale;
    EXPECT_EQ(plain(texts->mediumDate(t)), medium) << locale;
    EXPECT_EQ(plain(texts->weekdayAndDay(t)), day) << locale;
  }
}

TEST(IcuTexts, dateAndTimeAreJoinedAsInTheLocale) {
  const Instant t = at("2025-01-10T19:05:00Z");
  struct Case {
    const char *locale, *usual, *in24Hours;
  };
  for (const auto& [locale, usual, in24Hours] : {
           Case{"en_US", "Jan 10, 2025, 2:05 PM", "Jan 10, 2025, 14:05"},
           Case{"en_GB", "10 Jan 2025, 14:05", "10 Jan 2025, 14:05"},
           Case{"de_DE", "10.01.2025, 14:05", "10.01.2025, 14:05"},
           Case{"ja_JP", "2025/01/10 14:05", "2025/01/10 14:05"},
           Case{"ko_KR", "2025. 1. 10. 오후 2:05", "2025. 1. 10. 14:05"},
       }) {
    const auto texts = in(locale);
    EXPECT_EQ(plain(texts->mediumDateAndShortTime(t, false)), usual) << locale;
    EXPECT_EQ(plain(texts->mediumDateAndShortTime(t, true)), in24Hours) << locale;
  }
}

TEST(IcuTexts, midnightAndNoonInBothForms) {
  const auto texts = in("en_US", "UTC");
  EXPECT_EQ(plain(texts->shortTime(at("2025-01-10T00:00:00Z"), false)), "12:00 AM");
  EXPECT_EQ(plain(texts->shortTime(at("2025-01-10T12:00:00Z"), false)), "12:00 PM");
  EXPECT_EQ(plain(texts->shortTime(at("2025-01-10T00:00:00Z"), true)), "00:00");
  EXPECT_EQ(plain(texts->shortTime(at("2025-01-10T09:07:59.9Z"), true)), "09:07");
}

TEST(IcuTexts, timesAreThoseOfTheZone) {
  const Instant t = at("2025-03-09T07:30:00Z");
  EXPECT_EQ(plain(in("en_US", "America/New_York")->shortTime(t, false)), "3:30 AM");
  EXPECT_EQ(plain(in("en_US", "Asia/Kolkata")->shortTime(t, false)), "1:00 PM");
  EXPECT_EQ(in("en_US", "Pacific/Kiritimati")->mediumDate(at("2025-01-10T10:00:00Z")), "Jan 11, 2025");
  EXPECT_EQ(in("en_US", "UTC")->mediumDate(at("1969-12-31T23:59:59.999999Z")), "Dec 31, 1969");
}

TEST(IcuTexts, weekdaySymbolsCountFromSunday) {
  const auto symbols = [](const std::string& locale) {
    std::string all;
    const auto texts = in(locale);
    for (int day = 1; day <= 7; ++day) all += texts->shortWeekdaySymbol(day) + ' ';
    return all;
  };
  EXPECT_EQ(symbols("en_US"), "Sun Mon Tue Wed Thu Fri Sat ");
  EXPECT_EQ(symbols("de_DE"), "So. Mo. Di. Mi. Do. Fr. Sa. ");
  EXPECT_EQ(symbols("fr_FR"), "dim. lun. mar. mer. jeu. ven. sam. ");
}

TEST(IcuTexts, partsOfDatesAndTimesStandAloneOnSheets) {
  struct Case {
    const char *locale, *month, *day, *hour, *hour24, *minute;
  };
  const Instant t = at("2025-01-10T19:05:00Z");
  for (const auto& [locale, month, day, hour, hour24, minute] : {
           Case{"en_US", "January 2025", "10", "2 PM", "14", "05"},
           Case{"en_GB", "January 2025", "10", "14", "14", "05"},
           Case{"de_DE", "Januar 2025", "10", "14 Uhr", "14 Uhr", "05"},
           Case{"th_TH", "มกราคม 2568", "10", "14", "14", "05"},
           Case{"fa_IR", "۱۴۰۳ دی", "۲۱", "۱۴", "۱۴", "۰۵"},
           Case{"ar_EG", "يناير ٢٠٢٥", "١٠", "٢ م", "١٤", "٠٥"},
           Case{"ja_JP@calendar=japanese", "令和7年1月", "10", "14時", "14時", "05"},
           Case{"en_US@calendar=hebrew", "Tevet 5785", "10", "2 PM", "14", "05"},
       }) {
    const auto texts = in(locale);
    EXPECT_EQ(plain(texts->monthAndYear(t)), month) << locale;
    EXPECT_EQ(plain(texts->dayOfMonth(t)), day) << locale;
    EXPECT_EQ(plain(texts->hour(t, false)), hour) << locale;
    EXPECT_EQ(plain(texts->hour(t, true)), hour24) << locale;
    EXPECT_EQ(plain(texts->minute(t)), minute) << locale;
  }
}

TEST(IcuTexts, relativeTimesUseTheLargestWholeUnit) {
  const auto texts = in("en_US");
  const Instant now = at("2025-01-10T10:30:00Z");
  struct Case {
    Instant::Duration distance;
    const char* text;
  };
  for (const auto& [distance, text] : {
           Case{0s, "in 0 sec."},
           Case{999'999us, "in 0 sec."},
           Case{-999'999us, "in 0 sec."},
           Case{-1s, "1 sec. ago"},
           Case{59s, "in 59 sec."},
           Case{60s, "in 1 min."},
           Case{7199s, "in 1 hr."},
           Case{2h, "in 2 hr."},
           Case{-2h, "2 hr. ago"},
           Case{24h - 1us, "in 23 hr."},
           Case{24h, "in 1 day"},
           Case{-72h, "3 days ago"},
           Case{168h - 1us, "in 6 days"},
           Case{168h, "in 1 wk."},
           Case{30 * 24h, "in 4 wk."},
           Case{31 * 24h, "in 1 mo."},
           Case{-30 * 24h, "4 wk. ago"},
           Case{-31 * 24h, "1 mo. ago"},
           Case{364 * 24h, "in 11 mo."},
           Case{365 * 24h, "in 1 yr."},
           Case{-365 * 24h, "11 mo. ago"},
           Case{-366 * 24h, "1 yr. ago"},
           Case{10 * 365 * 24h, "in 9 yr."},
       }) {
    EXPECT_EQ(texts->relative(now + distance, now), text) << distance.count();
  }
}

TEST(IcuTexts, aMonthThatLostAnHourIsAMonth) {
  EXPECT_EQ(in("en_US")->relative(at("2025-03-10T09:30:00Z"), at("2025-02-10T10:30:00Z")), "in 1 mo.");
  EXPECT_EQ(in("en_US")->relative(at("2025-03-10T09:29:59Z"), at("2025-02-10T10:30:00Z")), "in 3 wk.");
}

TEST(IcuTexts, monthsAndYearsAreThoseOfTheCalendarInUse) {
  const auto relative = [](const char* calendar, const char* instant, const char* now) {
    return in(std::string("en_US@calendar=") + calendar, "UTC")->relative(at(instant), at(now));
  };
  EXPECT_EQ(relative("ethiopic", "2025-09-13T12:00:00Z", "2025-09-08T12:00:00Z"), "in 1 mo.");
  EXPECT_EQ(relative("gregorian", "2025-09-13T12:00:00Z", "2025-09-08T12:00:00Z"), "in 5 days");
  EXPECT_EQ(relative("islamic-civil", "2025-12-30T12:00:00Z", "2025-01-08T12:00:00Z"), "in 1 yr.");
  EXPECT_EQ(relative("japanese", "2021-01-10T12:00:00Z", "2019-01-10T12:00:00Z"), "in 2 yr.");
}

TEST(IcuTexts, relativeTimesFollowTheLocale) {
  const Instant now = at("2025-01-10T10:30:00Z");
  EXPECT_EQ(plain(in("de_DE")->relative(now + 2h, now)), "in 2 Std.");
  EXPECT_EQ(plain(in("fa_IR")->relative(now - 72h, now)), "۳ روز پیش");
  EXPECT_EQ(plain(in("ar_EG")->relative(now + 2h, now)), "خلال ساعتين");
}

TEST(IcuTexts, theEndsOfTimeAreHarmless) {
  for (const char* locale : {"en_US", "th_TH", "fa_IR", "ja_JP@calendar=japanese", "he_IL@calendar=hebrew",
                             "zh_CN@calendar=chinese", "am_ET@calendar=ethiopic"}) {
    const auto texts = in(locale);
    EXPECT_NE(texts->relative(Instant::distantFuture(), Instant::distantPast()), "") << locale;
    EXPECT_NE(texts->relative(Instant::distantPast(), Instant::distantFuture()), "") << locale;
    for (const Instant end : {Instant::distantPast(), Instant::distantFuture()}) {
      EXPECT_NE(texts->fullDate(end), "") << locale;
      EXPECT_NE(texts->shortTime(end, true), "") << locale;
    }
  }
}

TEST(IcuTexts, namesAreOrderedAsInTheLocale) {
  const auto english = in("en_US");
  EXPECT_LT(english->compareNames("aspirin", "Ibuprofen"), 0);
  EXPECT_LT(english->compareNames("Ibuprofen", "zinc"), 0);
  EXPECT_LT(english->compareNames("Évista", "Fiber"), 0);
  EXPECT_EQ(english->compareNames("caf\u00e9", "cafe\u0301"), 0);
  EXPECT_GT(english->compareNames("b", ""), 0);
  EXPECT_LT(in("de_DE")->compareNames("Östrogen", "Zink"), 0);
  EXPECT_GT(in("sv_SE")->compareNames("Östrogen", "Zink"), 0);
}

TEST(IcuTexts, searchIgnoresCaseAndHeedsAccents) {
  struct Case {
    const char *locale, *text, *part;
    bool found;
  };
  for (const auto& [locale, text, part, found] : {
           Case{"en_US", "Ibuprofen", "PROF", true},
           Case{"en_US", "Ibuprofen", "", true},
           Case{"en_US", "", "a", false},
           Case{"en_US", "", "", true},
           Case{"en_US", "Ibuprofen", "ibuprofen ", false},
           Case{"en_US", "Évista", "evista", false},
           Case{"en_US", "Évista", "éVISTA", true},
           Case{"en_US", "caf\u00e9", "CAFE\u0301", true},
           Case{"en_US", "cafe\u0301", "caf\u00c9", true},
           Case{"en_US", "cafe\u0301", "cafe", false},
           Case{"en_US", "cafe\u0301 cafe", "cafe", true},
           Case{"en_US", "Straße", "STRASSE", true},
           Case{"el_GR", "ΦΑΡΜΑΚΟΣ", "φαρμακος", true},
           Case{"tr_TR", "İlaç", "ilaç", true},
           Case{"tr_TR", "I\u0307laç", "ilaç", true},
           Case{"tr_TR", "ilaç", "ILAÇ", false},
           Case{"en_US", "ilaç", "ILAÇ", true},
           Case{"ko_KR", "각막", "가", false},
           Case{"ko_KR", "각막", "막", true},
           Case{"ja_JP", "カルシウム", "かるしうむ", false},
           Case{"en_US", "50% (x2)", "% (X", true},
       }) {
    EXPECT_EQ(in(locale)->containsIgnoringCase(text, part), found) << locale << ' ' << text << ' ' << part;
  }
}

TEST(IcuTexts, brokenUtf8IsHarmless) {
  const auto texts = in("en_US");
  for (const std::string broken : {"\xff\xfe", "a\xc3", "\xed\xa0\x80", "\xf4\x90\x80\x80"}) {
    EXPECT_TRUE(texts->containsIgnoringCase("x" + broken, "X")) << broken;
    EXPECT_FALSE(texts->containsIgnoringCase("abc", broken + "y")) << broken;
    EXPECT_EQ(texts->compareNames(broken, broken), 0);
    EXPECT_EQ(texts->text(broken), broken);
  }
}

TEST(IcuTexts, ownTextsPassThroughTheLanguage) {
  const auto english = in("de_DE");
  EXPECT_EQ(english->text("Hello {who}", {{"who", "{n}"}}), "Hello {n}");
  EXPECT_EQ(english->counted(1, "{n} dose", "{n} doses"), "1 dose");
  EXPECT_EQ(english->counted(3, "{n} dose of {name}", "{n} doses of {name}", {{"name", "Zinc"}}), "3 doses of Zinc");
  const auto pseudo = std::move(*makeTexts("de_DE", "UTC", "en-XA"));
  EXPECT_EQ(pseudo->text("Hi {who}", {{"who", "Ann"}}), "Hî~ Ann");
}

TEST(IcuTexts, refusesWhatItDoesNotKnowByName) {
  EXPECT_EQ(makeTexts("xx_YY", "UTC", "en").error().description, "unknown locale: xx_YY");
  EXPECT_EQ(makeTexts("en_US", "GMT+2", "en").error().description, "unknown time zone: GMT+2");
  EXPECT_EQ(makeTexts("en_US", "UTC", "tlh").error().description, "unknown language: tlh");
}

TEST(IcuTexts, fileSizesAreInDecimalUnits) {
  const auto texts = in("en_US");
  for (const auto& [bytes, size] : std::initializer_list<std::pair<int64_t, const char*>>{
           {-1, "0 bytes"},
           {0, "0 bytes"},
           {1, "1 byte"},
           {512, "512 bytes"},
           {999, "999 bytes"},
           {1000, "1 KB"},
           {1499, "1 KB"},
           {1500, "2 KB"},
           {4096, "4 KB"},
           {999'499, "999 KB"},
           {999'500, "1 MB"},
           {1'234'567, "1.2 MB"},
           {999'949'999, "999.9 MB"},
           {999'950'000, "1 GB"},
           {1'254'000'000, "1.25 GB"},
           {5'000'000'000'000, "5 TB"},
           {7'000'000'000'000'000, "7 PB"},
           {INT64_MAX, "9.22 EB"},
       }) {
    EXPECT_EQ(texts->fileSize(bytes), size) << bytes;
  }
}

TEST(IcuTexts, fileSizesHaveTheLocalesDigitsAndTheLanguagesWords) {
  EXPECT_EQ(in("de_DE")->fileSize(1'234'567), "1,2 MB");
  EXPECT_EQ(in("ar_EG")->fileSize(1'234'567), "١٫٢ MB");
  EXPECT_EQ(in("fa_IR")->fileSize(512), "۵۱۲ bytes");
  EXPECT_EQ((*makeTexts("en_US", "UTC", "en-XA"))->fileSize(1), "1 býţé~~");
}

}  // namespace pillora

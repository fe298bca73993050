// SPDX-License-Identifier: MIT
#include "icu/Language.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "doubles/RecordingConsole.h"
#include "doubles/ScopedVariable.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {

namespace {

size_t letters(const std::string& utf8) {
  size_t count = 0;
  for (const char c : utf8) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return count;
}

}  // namespace

TEST(Language, englishIsGivenToTheByte) {
  const auto english = *makeLanguage("en");
  for (const std::string text : {"No doses today", "", "{n} of {total}", "caf\xc3\xa9", "\xff\xfe{", "a\nb"}) {
    EXPECT_EQ(english->translated({}, text), text);
  }
}

TEST(Language, oneThingAloneIsSingular) {
  const auto english = *makeLanguage("en");
  EXPECT_EQ(english->translatedCount(1, "{n} dose", "{n} doses"), "{n} dose");
  for (const int64_t n : {int64_t{0}, int64_t{2}, int64_t{-1}, int64_t{11}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(english->translatedCount(n, "{n} dose", "{n} doses"), "{n} doses") << n;
  }
}

TEST(Language, pseudoTextsAreAccentedAndLonger) {
  const auto pseudo = *makeLanguage("en-XA");
  EXPECT_EQ(pseudo->translated({}, "Medicine"), "Méðîçîñé~~~~");
  EXPECT_EQ(pseudo->translated({}, "Take 2"), "Ţåké~~ 2");
  const std::string text = "Take your medicine with a glass of water every morning";
  const double growth = static_cast<double>(letters(pseudo->translated({}, text))) / static_cast<double>(text.size());
  EXPECT_GT(growth, 1.3);
  EXPECT_LT(growth, 1.6);
  EXPECT_EQ(pseudo->translated({}, text), (*makeLanguage("en_XA"))->translated({}, text));
}

TEST(Language, pseudoTextsKeepPlaceholdersAndForeignBytes) {
  const auto pseudo = *makeLanguage("en-XA");
  EXPECT_EQ(pseudo->translated({}, "{n} of {total}"), "{n} öf~ {total}");
  EXPECT_EQ(pseudo->translated({}, "\xff{a"), "\xff{å~");
  EXPECT_EQ(pseudo->translated({}, ""), "");
  EXPECT_EQ(pseudo->translatedCount(1, "{n} x", "{n} xx"), "{n} x~");
  EXPECT_EQ(pseudo->translatedCount(2, "{n} x", "{n} xx"), "{n} xx~");
}

TEST(Language, aWordIsTheSameInEveryContextWhereThereIsNoCatalogue) {
  EXPECT_EQ((*makeLanguage("en"))->translated("doses", "All"), "All");
  EXPECT_EQ((*makeLanguage("en-XA"))->translated("doses", "All"), (*makeLanguage("en-XA"))->translated({}, "All"));
}

TEST(Language, englishHasManyNames) {
  for (const std::string id : {"en", "en_US", "en-GB", "en_US.UTF-8", "C", "C.UTF-8", "POSIX"}) {
    const auto language = makeLanguage(id);
    ASSERT_TRUE(language) << id;
    EXPECT_EQ((*language)->translated({}, "Take"), "Take") << id;
  }
}

TEST(Language, refusesAnUnknownLanguageByName) {
  for (const std::string id : {"", "it", "ja_JP", "en-XB", "zh_TW", "zh-Hant", "zh_HK", "tlh", "de:fr", "\xff"}) {
    const auto language = makeLanguage(id);
    ASSERT_FALSE(language) << id;
    EXPECT_EQ(language.error().description, "unknown language: " + id);
  }
}

TEST(Language, withoutItsCatalogueALanguageIsEnglishAndSaysSoOnce) {
  const TemporaryFolder folder;
  RecordingConsole console;
  const auto language = makeLanguage("de_AT.UTF-8", {folder.path(), &console});
  ASSERT_TRUE(language);
  EXPECT_EQ((*language)->translated({}, "Take"), "Take");
  EXPECT_EQ((*language)->translatedCount(1, "{n} dose", "{n} doses"), "{n} dose");
  const std::string file = folder.file("de/LC_MESSAGES/pillora.mo");
  EXPECT_EQ(console.lines(), std::vector<std::string>{"Own texts are in English: there is no " + file});
}

TEST(Language, theEnvironmentChoosesAsForEveryProgram) {
  struct Case {
    const char *all, *messages, *lang, *list, *language;
  };
  for (const auto& [all, messages, lang, list, language] : {
           Case{nullptr, nullptr, nullptr, nullptr, "en"},
           Case{nullptr, nullptr, "de_DE.UTF-8", nullptr, "de"},
           Case{nullptr, "fr_CA.UTF-8", "de_DE.UTF-8", nullptr, "fr"},
           Case{"es_MX.UTF-8", "fr_CA.UTF-8", "de_DE.UTF-8", nullptr, "es"},
           Case{"", "", "ar_EG.UTF-8", "", "ar"},
           Case{nullptr, nullptr, "zh_CN.UTF-8", nullptr, "zh_CN"},
           Case{nullptr, nullptr, "zh_SG", nullptr, "zh_CN"},
           Case{nullptr, nullptr, "zh_TW.UTF-8", nullptr, "en"},
           Case{nullptr, nullptr, "de_DE@euro", nullptr, "de"},
           Case{nullptr, nullptr, "ja_JP.UTF-8", nullptr, "en"},
           Case{"ja_JP.UTF-8", nullptr, "de_DE.UTF-8", nullptr, "en"},
           Case{nullptr, nullptr, "ja_JP.UTF-8", "it:fr:de", "fr"},
           Case{nullptr, nullptr, "de_DE.UTF-8", "en_GB:de", "en"},
           Case{nullptr, nullptr, "de_DE.UTF-8", "it:nonsense::", "de"},
           Case{"C", nullptr, "de_DE.UTF-8", "fr", "en"},
           Case{nullptr, nullptr, "C.UTF-8", "fr", "en"},
           Case{nullptr, nullptr, nullptr, "fr", "en"},
       }) {
    const auto value = [](const char* text) { return text ? std::optional<std::string>(text) : std::nullopt; };
    const ScopedVariable a("LC_ALL", value(all)), b("LC_MESSAGES", value(messages)), c("LANG", value(lang)),
        d("LANGUAGE", value(list));
    EXPECT_EQ(systemLanguage(), language) << (lang ? lang : "") << ' ' << (list ? list : "");
  }
}

TEST(Language, englishIsReadFromLeftToRightWhateverItStandsFor) {
  const TemporaryFolder empty;
  for (const char* id : {"en", "en-XA", "ar", "ar_EG.UTF-8"}) {
    EXPECT_FALSE((*makeLanguage(id, {empty.path()}))->readsRightToLeft()) << id;
  }
}

}  // namespace pillora

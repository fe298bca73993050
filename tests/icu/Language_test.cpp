// SPDX-License-Identifier: MIT
#include "icu/Language.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(english->translated(text), text);
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
  EXPECT_EQ(pseudo->translated("Medicine"), "Méðîçîñé~~~~");
  EXPECT_EQ(pseudo->translated("Take 2"), "Ţåké~~ 2");
  const std::string text = "Take your medicine with a glass of water every morning";
  const double growth = static_cast<double>(letters(pseudo->translated(text))) / static_cast<double>(text.size());
  EXPECT_GT(growth, 1.3);
  EXPECT_LT(growth, 1.6);
  EXPECT_EQ(pseudo->translated(text), (*makeLanguage("en_XA"))->translated(text));
}

TEST(Language, pseudoTextsKeepPlaceholdersAndForeignBytes) {
  const auto pseudo = *makeLanguage("en-XA");
  EXPECT_EQ(pseudo->translated("{n} of {total}"), "{n} öf~ {total}");
  EXPECT_EQ(pseudo->translated("\xff{a"), "\xff{å~");
  EXPECT_EQ(pseudo->translated(""), "");
  EXPECT_EQ(pseudo->translatedCount(1, "{n} x", "{n} xx"), "{n} x~");
  EXPECT_EQ(pseudo->translatedCount(2, "{n} x", "{n} xx"), "{n} xx~");
}

TEST(Language, refusesAnUnknownLanguageByName) {
  for (const std::string id : {"", "de", "EN", "en_US", "en-XB", "\xff"}) {
    const auto language = makeLanguage(id);
    ASSERT_FALSE(language) << id;
    EXPECT_EQ(language.error().description, "unknown language: " + id);
  }
}

}  // namespace pillora

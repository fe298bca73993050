// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

#include "doubles/RecordingConsole.h"
#include "icu/Language.h"
#include "languages/PoFile.h"

// What every catalogue must have and what its texts must keep of the English.

namespace pillora {
namespace {

using Placeholders = std::multiset<std::string>;

Placeholders placeholders(const std::string& text) {
  static const std::regex kPlaceholder("\\{\\w*\\}");
  return {std::sregex_token_iterator(text.begin(), text.end(), kPlaceholder), std::sregex_token_iterator()};
}

Placeholders without(Placeholders names, const std::string& name) {
  names.erase(name);
  return names;
}

std::string withoutPlaceholders(const std::string& text) {
  return std::regex_replace(text, std::regex("\\{\\w*\\}"), "0");
}

std::pair<size_t, size_t> blanksAround(const std::string& text) {
  const size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? std::pair(text.size(), text.size())
                                    : std::pair(first, text.size() - text.find_last_not_of(' '));
}

/// Calls `check` for each translated form of each text with the English that it stands for.
template <typename Check>
void eachForm(Check check) {
  for (const auto& [language, forms] : kCatalogueLanguages) {
    for (const auto& [key, text] : readPo(std::string(language) + ".po")) {
      for (const std::string& form : text.translations) {
        SCOPED_TRACE(std::string(language) + ": " + key.second + " -> " + form);
        check(language, text.plural.empty() ? key.second : text.plural, form, !text.plural.empty());
      }
    }
  }
}

TEST(Catalogues, haveEveryTextInAllItsForms) {
  const PoTexts english = readPo("pillora.pot");
  ASSERT_GT(english.size(), 250u);
  for (const auto& [language, forms] : kCatalogueLanguages) {
    const PoTexts catalogue = readPo(std::string(language) + ".po");
    EXPECT_EQ(catalogue.size(), english.size()) << language;
    for (const auto& [key, text] : english) {
      const auto found = catalogue.find(key);
      ASSERT_NE(found, catalogue.end()) << language << ": " << key.second;
      const auto& translations = found->second.translations;
      EXPECT_EQ(translations.size(), text.plural.empty() ? 1 : forms) << language << ": " << key.second;
      EXPECT_EQ(std::count(translations.begin(), translations.end(), ""), 0) << language << ": " << key.second;
    }
  }
}

TEST(Catalogues, keepThePlaceholders) {
  eachForm([](std::string_view, const std::string& english, const std::string& form, bool counts) {
    // A form for one or two things may name them in words.
    const bool same = placeholders(form) == placeholders(english);
    EXPECT_TRUE(same || (counts && placeholders(form) == without(placeholders(english), "{n}")));
  });
}

TEST(Catalogues, keepTheLines) {
  eachForm([](std::string_view, const std::string& english, const std::string& form, bool) {
    EXPECT_EQ(std::count(form.begin(), form.end(), '\n'), std::count(english.begin(), english.end(), '\n'));
  });
}

TEST(Catalogues, keepTheBlanksAround) {
  eachForm([](std::string_view, const std::string& english, const std::string& form, bool) {
    EXPECT_EQ(blanksAround(form), blanksAround(english));
  });
}

TEST(Catalogues, holdNoMarksOfDirection) {
  for (const std::string_view mark : {"\t", "\u200E", "\u200F", "\u061C", "\u202A", "\u202B", "\u2066", "\u2069"}) {
    eachForm([&](std::string_view, const std::string&, const std::string& form, bool) {
      EXPECT_EQ(form.find(mark), std::string::npos);
    });
  }
}

TEST(Catalogues, arePunctuatedAsTheirLanguageIs) {
  struct Rule {
    std::string_view language;
    const char* refused;
  };
  static const Rule kRules[] = {
      {"fr", "[^\u202F][!?;]|[^\u00A0]:(\\s|$)|\"|'|\u00AB[^\u00A0]"},
      {"es", "^[^\u00A1]*!|^[^\u00BF]*\\?|\""},
      {"de", "\"|'|\u201C[^\u201D]*\u201D"},
      {"ar", "[\x80-\xFF][,;?]|\""},
      {"zh_CN", "[\x80-\xFF][,;?!:]|\""},
      {"", "\\.\\.\\.|  \\S.*  |\u00A0 | \u00A0"},
  };
  eachForm([](std::string_view language, const std::string&, const std::string& form, bool) {
    for (const Rule& rule : kRules) {
      if (!rule.language.empty() && rule.language != language) continue;
      EXPECT_FALSE(std::regex_search(withoutPlaceholders(form), std::regex(rule.refused))) << rule.refused;
    }
  });
}

TEST(Catalogues, areReadAsTheyAreWritten) {
  for (const auto& [id, forms] : kCatalogueLanguages) {
    RecordingConsole console;
    const auto language = *makeLanguage(std::string(id), {PILLORA_CATALOGUES, &console});
    EXPECT_TRUE(console.lines().empty()) << id;
    for (const auto& [key, text] : readPo(std::string(id) + ".po")) {
      // A word that also counts elsewhere stands by itself in the first form.
      EXPECT_EQ(language->translated(key.first, key.second), text.translations.at(0)) << id;
      if (text.plural.empty()) continue;
      std::set<std::string> used;
      for (int64_t n = 0; n < 120; ++n) used.insert(language->translatedCount(n, key.second, text.plural));
      EXPECT_EQ(used, std::set(text.translations.begin(), text.translations.end())) << id;
    }
  }
}

TEST(Catalogues, areReadInTheDirectionOfTheirScript) {
  for (const auto& [id, forms] : kCatalogueLanguages) {
    const auto language = *makeLanguage(std::string(id), {PILLORA_CATALOGUES});
    EXPECT_EQ(language->readsRightToLeft(), id == "ar") << id;
  }
}

TEST(Catalogues, answerWhatTheyDoNotKnowInEnglish) {
  for (const auto& [id, forms] : kCatalogueLanguages) {
    const auto language = *makeLanguage(std::string(id), {PILLORA_CATALOGUES});
    EXPECT_EQ(language->translated({}, "Not a text of ours"), "Not a text of ours");
    EXPECT_EQ(language->translated("no context", "Take"), "Take");
    EXPECT_EQ(language->translated({}, ""), "") << "the empty text is the key of the catalogue's header";
    EXPECT_EQ(language->translatedCount(1, "{n} thing", "{n} things"), "{n} thing");
    EXPECT_EQ(language->translatedCount(2, "{n} thing", "{n} things"), "{n} things");
  }
}

TEST(Catalogues, leaveEnglishAsItStands) {
  const auto english = *makeLanguage("en", {PILLORA_CATALOGUES});
  for (const auto& [key, text] : readPo("pillora.pot")) {
    EXPECT_EQ(english->translated(key.first, key.second), key.second);
    if (text.plural.empty()) continue;
    EXPECT_EQ(english->translatedCount(1, key.second, text.plural), key.second);
    for (const int64_t n : {0, 2, 11, -1}) EXPECT_EQ(english->translatedCount(n, key.second, text.plural), text.plural);
  }
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "icu/Language.h"

#include <algorithm>
#include <array>
#include <boost/locale/gnu_gettext.hpp>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <locale>
#include <sstream>
#include <utility>
#include <vector>

#include "icu/Locales.h"

namespace pillora {

namespace {

/// The languages that there are catalogues of, but for Chinese, whose script has to be looked at.
constexpr std::array<std::string_view, 5> kLanguages = {"en", "de", "fr", "es", "ar"};

class English final : public Language {
 public:
  std::string translated(std::string_view, std::string_view english) const override { return std::string(english); }
  std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const override {
    return std::string(n == 1 ? one : other);
  }
};

/// The accented letter that stands for an ASCII letter; empty for everything else.
std::string_view accented(char c) {
  static constexpr std::string_view kPlain = "AaCcDdEeGgIiNnOoRrSsTtUuYyZz";
  static constexpr std::string_view kAccented[] = {"Å", "å", "Ç", "ç", "Ð", "ð", "É", "é", "Ĝ", "ĝ",
                                                   "Î", "î", "Ñ", "ñ", "Ö", "ö", "Ŕ", "ŕ", "Š", "š",
                                                   "Ţ", "ţ", "Û", "û", "Ý", "ý", "Ž", "ž"};
  const size_t at = kPlain.find(c);
  return at == std::string_view::npos ? std::string_view() : kAccented[at];
}

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// The length of the "{name}" at the front of `text`, 0 when there is none.
size_t placeholder(std::string_view text) {
  if (text.empty() || text.front() != '{') return 0;
  const size_t end = text.find('}');
  return end == std::string_view::npos ? 0 : end + 1;
}

/// "Medicine" as "Méðîçîñé~~~".
std::string drawnOut(std::string_view word) {
  std::string out;
  for (const char c : word) {
    const std::string_view letter = accented(c);
    out += letter.empty() ? std::string_view(&c, 1) : letter;
  }
  out.append((word.size() * 2 + 4) / 5, '~');
  return out;
}

/// Words that no one writes but everyone can read: letters become accented, a tail makes each word about two fifths
/// longer. "{name}" stays as it is, and so does every byte that is no ASCII letter.
class Pseudo final : public Language {
 public:
  std::string translated(std::string_view, std::string_view english) const override {
    std::string out;
    while (!english.empty()) {
      size_t taken = placeholder(english);
      if (taken > 0) {
        out += english.substr(0, taken);
      } else if (isLetter(english.front())) {
        taken = static_cast<size_t>(std::find_if_not(english.begin(), english.end(), isLetter) - english.begin());
        out += drawnOut(english.substr(0, taken));
      } else {
        out += english[taken++];
      }
      english.remove_prefix(taken);
    }
    return out;
  }
  std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const override {
    return translated({}, n == 1 ? one : other);
  }
};

/// A language with a catalogue. Boost reads its file, the rule of its plural forms included.
class Translated final : public Language {
 public:
  using Messages = boost::locale::message_format<char>;

  /// Takes the messages over; only a std::locale can own them.
  Translated(const std::string& language, Messages* messages)
      : owner_(std::locale::classic(), messages),
        messages_(*messages),
        readsRightToLeft_(icu::Locale(language.c_str()).isRightToLeft()) {}

  std::string translated(std::string_view context, std::string_view english) const override {
    if (english.empty()) return {};  // the key of the catalogue's own header
    const std::string key(english), within(context);
    const char* found = messages_.get(kDomain, within.empty() ? nullptr : within.c_str(), key.c_str());
    return found == nullptr ? key : found;
  }
  std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const override {
    const uint64_t size = n < 0 ? 0 - static_cast<uint64_t>(n) : static_cast<uint64_t>(n);
    const char* found = messages_.get(kDomain, nullptr, std::string(one).c_str(), sameForm(size));
    return found == nullptr ? English().translatedCount(n, one, other) : found;
  }
  bool readsRightToLeft() const override { return readsRightToLeft_; }

 private:
  static constexpr int kDomain = 0;

  /// A number that fits where Boost takes it and ends in the same digits, which is what the rules look at.
  static int sameForm(uint64_t n) {
    constexpr uint64_t kMillion = 1'000'000;
    return static_cast<int>(n < kMillion ? n : kMillion + n % kMillion);
  }

  const std::locale owner_;
  const Messages& messages_;
  const bool readsRightToLeft_;
};

/// Whether these bytes are a catalogue as msgfmt writes one: Boost believes what it reads. The format is in gettext's
/// manual, "The Format of GNU MO Files".
bool isSound(const std::vector<char>& bytes) {
  const auto word = [&](size_t at) {
    uint32_t value = 0;
    if (at + sizeof value <= bytes.size()) std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
  };
  const auto holds = [&](size_t table, size_t words) {
    return table <= bytes.size() && words <= (bytes.size() - table) / sizeof(uint32_t);
  };
  const size_t count = word(8), texts = word(12), translations = word(16), slots = word(20), hashes = word(24);
  if (word(0) != 0x950412de || word(4) != 0) return false;
  if (!holds(texts, count * 2) || !holds(translations, count * 2) || !holds(hashes, slots)) return false;
  for (size_t i = 0; i < count * 2; i += 2) {
    for (const size_t at : {texts + i * 4, translations + i * 4}) {
      const size_t end = size_t{word(at)} + word(at + 4);
      if (end >= bytes.size() || bytes[end] != '\0') return false;
    }
  }
  size_t filled = 0;
  for (size_t i = 0; i < slots; ++i) {
    if (word(hashes + i * 4) > count) return false;
    filled += word(hashes + i * 4) != 0;
  }
  return slots > 2 && filled < slots;  // a search ends at a slot that is free
}

Result<std::unique_ptr<const Language>> readCatalogue(const std::string& language, const std::string& folder) {
  const std::string path = folder + '/' + language + "/LC_MESSAGES/pillora.mo";
  std::ifstream file(path, std::ios::binary);
  if (!file) return Error{"there is no " + path};
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!isSound(bytes)) return Error{path + " is damaged"};
  boost::locale::gnu_gettext::messages_info info;
  info.language = language;
  info.encoding = "UTF-8";
  info.domains = {{"pillora"}};
  info.paths = {folder};
  info.callback = [&](const std::string&, const std::string&) { return bytes; };
  try {
    return std::unique_ptr<const Language>(
        std::make_unique<Translated>(language, boost::locale::gnu_gettext::create_messages_facet<char>(info)));
  } catch (const std::exception& error) {
    return Error{path + ": " + error.what()};
  }
}

/// The name of the catalogue for a language as people and systems write it, "en" for English; empty for what is not
/// known.
std::string catalogueNamed(const std::string& id) {
  const auto locale = localeNamed(id);
  if (!locale) return {};
  const std::string language = locale->getLanguage();
  if (language != "zh") return std::ranges::find(kLanguages, language) != kLanguages.end() ? language : "";
  // Traditional characters are not those of the catalogue.
  icu::Locale likely = *locale;
  UErrorCode status = U_ZERO_ERROR;
  likely.addLikelySubtags(status);
  return likely.getScript() == std::string_view("Hans") ? "zh_CN" : "";
}

/// The variable's value; empty when it is not set.
std::string environment(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

}  // namespace

Result<std::unique_ptr<const Language>> makeLanguage(const std::string& id, const Catalogues& catalogues) {
  if (id == "en-XA" || id == "en_XA") return std::unique_ptr<const Language>(std::make_unique<Pseudo>());
  const std::string name = catalogueNamed(id);
  if (name.empty()) return Error{"unknown language: " + id};
  std::unique_ptr<const Language> english = std::make_unique<English>();
  if (name == "en") return english;
  auto read = readCatalogue(name, catalogues.folder);
  if (read) return read;
  if (catalogues.console != nullptr) {
    catalogues.console->print("Own texts are in English: " + read.error().description);
  }
  return english;
}

std::string systemLanguage() {
  std::string asked;
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (asked.empty()) asked = environment(variable);
  }
  const std::string plain = asked.substr(0, asked.find('.'));
  if (plain.empty() || plain == "C" || plain == "POSIX") return "en";
  std::stringstream list(environment("LANGUAGE") + ':' + asked);
  for (std::string id; std::getline(list, id, ':');) {
    if (std::string name = catalogueNamed(id); !name.empty()) return name;
  }
  return "en";
}

}  // namespace pillora

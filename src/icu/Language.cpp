// SPDX-License-Identifier: MIT
#include "icu/Language.h"

#include <algorithm>

namespace pillora {

namespace {

class English final : public Language {
 public:
  std::string translated(std::string_view english) const override { return std::string(english); }
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
  std::string translated(std::string_view english) const override {
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
    return translated(n == 1 ? one : other);
  }
};

}  // namespace

Result<std::unique_ptr<const Language>> makeLanguage(const std::string& id) {
  if (id == "en") return std::unique_ptr<const Language>(std::make_unique<English>());
  if (id == "en-XA" || id == "en_XA") return std::unique_ptr<const Language>(std::make_unique<Pseudo>());
  return Error{"unknown language: " + id};
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Console.h"
#include "support/Result.h"

namespace pillora {

/// A language for the system's own texts. The English text is the key, together with its context where it has one; a
/// language that does not know it answers with the English. Implementations never change after they are made and may be
/// used from several threads.
class Language {
 public:
  virtual ~Language() = default;

  virtual std::string translated(std::string_view context, std::string_view english) const = 0;
  /// The form that this language uses for the count `n`. English knows two, `one` for 1 alone and `other`; a language
  /// with a catalogue uses for a count below zero the form of the count without its sign.
  virtual std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const = 0;
  /// Of what it answers: a language whose catalogue is missing is read as English is.
  virtual bool readsRightToLeft() const { return false; }
};

/// Where the catalogues lie, as "de/LC_MESSAGES/pillora.mo" in `folder`, and who is told of one that cannot be read.
struct Catalogues {
  std::string folder;
  Console* console = nullptr;
};

/// "en", one of the languages of catalogues ("de", "fr", "es", "ar", "zh_CN"), also with a region, an encoding or
/// hyphens ("de_AT.UTF-8", "zh-Hans"), or "en-XA": English made longer and accented, so that a test of the layout sees
/// which texts do not pass through here and which do not fit. Any other language is refused by name. One whose
/// catalogue is missing or damaged is English, and the console gets a line that says so.
Result<std::unique_ptr<const Language>> makeLanguage(const std::string& id, const Catalogues& catalogues = {});

/// The language that the environment asks for, by the rules of gettext: that of the first of LC_ALL, LC_MESSAGES and
/// LANG that is set, unless LANGUAGE lists others that come first. "en" where none of them is known, and for "C", which
/// no list overrules.
std::string systemLanguage();

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "icu/Calendars.h"
#include "icu/IcuTexts.h"

namespace pillora {

template <typename T>
std::unique_ptr<T> valueOrAbort(Result<std::unique_ptr<T>> made) {
  if (made) return *std::move(made);
  std::cerr << made.error().description << '\n';
  std::abort();
}

/// The real calendar of a locale in a zone. A name that is not known ends the test program.
inline std::unique_ptr<Calendar> calendarOf(const std::string& locale, const std::string& zone) {
  return valueOrAbort(makeCalendar(locale, zone));
}

/// The real texts of a locale in a zone, own texts in `language`. A name that is not known ends the test program.
inline std::unique_ptr<Texts> textsOf(const std::string& locale, const std::string& zone,
                                      const std::string& language = "en", const std::string& catalogues = {}) {
  return valueOrAbort(makeTexts(locale, zone, language, {catalogues}));
}

/// `text` with plain blanks in place of the narrow and no-break blanks that locales put into times.
inline std::string plainBlanks(std::string text) {
  for (const std::string_view blank : {"\u202F", "\u00A0"}) {
    for (size_t at = 0; (at = text.find(blank)) != std::string::npos;) text.replace(at, blank.size(), " ");
  }
  return text;
}

}  // namespace pillora

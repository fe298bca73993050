// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pillora {

/// The languages that Pillora is translated into, and how many forms each has for counts.
struct CatalogueLanguage {
  std::string_view id;
  size_t forms;
};
inline constexpr std::array kCatalogueLanguages = {CatalogueLanguage{"ar", 6}, CatalogueLanguage{"de", 2},
                                                   CatalogueLanguage{"es", 2}, CatalogueLanguage{"fr", 2},
                                                   CatalogueLanguage{"zh_CN", 1}};

/// One own text: its English, and what a catalogue has for it.
struct PoText {
  std::string plural;                     ///< the English for several; empty for a text that does not count
  std::vector<std::string> translations;  ///< one, or one for each form
};
/// By context, which is empty where there is none, and English text.
using PoTexts = std::map<std::pair<std::string, std::string>, PoText>;

/// The texts of "de.po" or "pillora.pot", as the sources have it; the header is left out.
PoTexts readPo(const std::string& name);

}  // namespace pillora

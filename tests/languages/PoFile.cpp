// SPDX-License-Identifier: MIT
#include "languages/PoFile.h"

#include <fstream>

namespace pillora {

namespace {

/// The text between the quotes, its escapes resolved.
std::string unquoted(std::string_view line) {
  const size_t begin = line.find('"') + 1, end = line.rfind('"');
  std::string text;
  for (size_t at = begin; at < end; ++at) {
    if (line[at] == '\\' && line[++at] == 'n') {
      text += '\n';
    } else {
      text += line[at];
    }
  }
  return text;
}

}  // namespace

PoTexts readPo(const std::string& name) {
  PoTexts texts;
  std::string context, english;
  PoText text;
  std::string* into = nullptr;
  const auto finish = [&] {
    if (!english.empty()) texts[{context, english}] = text;
    context.clear(), english.clear(), text = {}, into = nullptr;
  };
  std::ifstream file(std::string(PILLORA_PO "/") + name);
  for (std::string line; std::getline(file, line);) {
    if (line.empty()) {
      finish();
    } else if (line.starts_with("msgctxt ")) {
      into = &context;
    } else if (line.starts_with("msgid ")) {
      into = &english;
    } else if (line.starts_with("msgid_plural ")) {
      into = &text.plural;
    } else if (line.starts_with("msgstr")) {
      into = &text.translations.emplace_back();
    }
    if (into != nullptr && line.find('"') != std::string::npos && line[0] != '#') *into += unquoted(line);
  }
  finish();
  return texts;
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "platform/Texts.h"

#include <algorithm>
#include <vector>

namespace pillora {

namespace {

std::string fill(std::string_view text, const std::vector<Texts::Argument>& arguments) {
  std::string out;
  for (size_t at = 0; at < text.size();) {
    const auto here = std::find_if(arguments.begin(), arguments.end(), [&](const Texts::Argument& argument) {
      const std::string_view rest = text.substr(at);
      return rest.size() >= argument.name.size() + 2 && rest[0] == '{' && rest[argument.name.size() + 1] == '}' &&
             rest.substr(1, argument.name.size()) == argument.name;
    });
    if (here == arguments.end()) {
      out += text[at++];
    } else {
      out += here->value;
      at += here->name.size() + 2;
    }
  }
  return out;
}

}  // namespace

std::string Texts::counted(int64_t n, std::string_view one, std::string_view other, Arguments arguments) const {
  std::vector<Argument> all(arguments);
  all.push_back({"n", std::to_string(n)});
  return fill(translatedCount(n, one, other), all);
}

std::string Texts::filled(std::string text, Arguments arguments) {
  if (arguments.size() == 0) return text;
  return fill(text, arguments);
}

}  // namespace pillora

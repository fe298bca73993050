// SPDX-License-Identifier: MIT
#include "platform/Texts.h"

#include <algorithm>
#include <cmath>
#include <iterator>
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

std::string Texts::fileSize(int64_t bytes) const {
  struct Unit {
    std::string_view text;
    double bytes;
    int fractionDigits;
  };
  static constexpr Unit kUnits[] = {{ownText("{size} KB"), 1e3, 0},  {ownText("{size} MB"), 1e6, 1},
                                    {ownText("{size} GB"), 1e9, 2},  {ownText("{size} TB"), 1e12, 2},
                                    {ownText("{size} PB"), 1e15, 2}, {ownText("{size} EB"), 1e18, 2}};
  bytes = std::max<int64_t>(bytes, 0);
  if (bytes < 1000) {
    return counted(bytes, "{size} byte", "{size} bytes", {{"size", number(static_cast<double>(bytes), 0)}});
  }
  const Unit* unit = kUnits;
  const auto rounded = [&] {
    const double steps = std::pow(10.0, unit->fractionDigits);
    return std::round(static_cast<double>(bytes) / unit->bytes * steps) / steps;
  };
  while (rounded() >= 1000 && unit + 1 != std::end(kUnits)) ++unit;
  return text(unit->text, {{"size", number(rounded(), unit->fractionDigits)}});
}

std::string Texts::filled(std::string text, Arguments arguments) {
  if (arguments.size() == 0) return text;
  return fill(text, arguments);
}

}  // namespace pillora

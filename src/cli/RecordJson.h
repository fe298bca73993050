// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "support/Json.h"

namespace pillora {

/// The stored fields of a record under their names, in their order.
template <Described Record>
Json recordJson(const Record& record) {
  Json json = Json::object();
  forEachField<Record>([&](std::string_view name, auto field) { json[std::string(name)] = toJson((record.*field)()); });
  return json;
}

}  // namespace pillora

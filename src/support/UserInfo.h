// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace pillora {

/// What a notification or a broadcast carries along: named values in the order in which they were put in.
using UserInfoValue = std::variant<std::string, bool, int64_t, double>;
using UserInfo = std::vector<std::pair<std::string, UserInfoValue>>;

/// The entry of this name if it is there and of type T, else null: an integer is no boolean and no double.
template <typename T>
const T* entryOf(const UserInfo& userInfo, std::string_view key) {
  const auto found =
      std::find_if(userInfo.begin(), userInfo.end(), [&](const auto& each) { return each.first == key; });
  return found == userInfo.end() ? nullptr : std::get_if<T>(&found->second);
}

}  // namespace pillora

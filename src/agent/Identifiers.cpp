// SPDX-License-Identifier: MIT
#include "agent/Identifiers.h"

#include "support/UUID.h"

namespace pillora {

std::string_view medicineOf(std::string_view requestIdentifier) {
  constexpr size_t kLength = 36;
  const std::string_view head = requestIdentifier.substr(0, kLength);
  return UUID::parse(head) ? head : requestIdentifier;
}

std::string_view doseOf(std::string_view requestIdentifier) {
  constexpr std::string_view kMark = "-followup-";
  const size_t mark = requestIdentifier.rfind(kMark);
  if (mark == std::string_view::npos) return requestIdentifier;
  const std::string_view ordinal = requestIdentifier.substr(mark + kMark.size());
  const bool isNumber = !ordinal.empty() && ordinal.find_first_not_of("0123456789") == std::string_view::npos;
  return isNumber ? requestIdentifier.substr(0, mark) : requestIdentifier;
}

}  // namespace pillora

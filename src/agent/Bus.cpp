// SPDX-License-Identifier: MIT
#include "agent/Bus.h"

#include <cstring>

namespace pillora {

Error busError(const std::string& what, int code) {
  return Error{what + ": " + std::strerror(code < 0 ? -code : code)};
}

std::optional<Error> errorOf(sd_bus_message* reply) {
  const sd_bus_error* error = sd_bus_message_get_error(reply);
  if (error == nullptr) return std::nullopt;
  return Error{error->message != nullptr ? error->message : error->name};
}

}  // namespace pillora

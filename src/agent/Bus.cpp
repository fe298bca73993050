// SPDX-License-Identifier: MIT
#include "agent/Bus.h"

#include <cstring>

namespace pillora {

Error busError(const std::string& what, int code) {
  return Error{what + ": " + std::strerror(code < 0 ? -code : code)};
}

Result<bool> isOwned(sd_bus* bus, const char* name) {
  sd_bus_message* message = nullptr;
  const int asked = sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                       "NameHasOwner", nullptr, &message, "s", name);
  const MessageHandle reply(message);
  int owned = 0;
  if (asked < 0 || sd_bus_message_read(message, "b", &owned) <= 0) return busError("session bus", asked);
  return owned != 0;
}

std::optional<Error> errorOf(sd_bus_message* reply) {
  const sd_bus_error* error = sd_bus_message_get_error(reply);
  if (error == nullptr) return std::nullopt;
  return Error{error->message != nullptr ? error->message : error->name};
}

}  // namespace pillora

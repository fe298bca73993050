// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

#include "agent/Bus.h"

namespace pillora {

/// Sends a method call and calls `answered` exactly once from the bus's event loop with the reply, which may be an
/// error; also when the time is over or the connection ends. When the call cannot be sent at all, `answered` is called
/// at once with null.
void callAsync(sd_bus* bus, sd_bus_message* call, std::chrono::milliseconds patience,
               std::function<void(sd_bus_message* reply)> answered);

}  // namespace pillora

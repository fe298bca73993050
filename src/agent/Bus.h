// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include "support/Result.h"

namespace pillora {

template <auto release>
struct Releaser {
  template <typename T>
  void operator()(T* handle) const {
    release(handle);
  }
};

using BusHandle = std::unique_ptr<sd_bus, Releaser<sd_bus_flush_close_unref>>;
using EventHandle = std::unique_ptr<sd_event, Releaser<sd_event_unref>>;
using SourceHandle = std::unique_ptr<sd_event_source, Releaser<sd_event_source_disable_unref>>;
using MessageHandle = std::unique_ptr<sd_bus_message, Releaser<sd_bus_message_unref>>;
using SlotHandle = std::unique_ptr<sd_bus_slot, Releaser<sd_bus_slot_unref>>;

// The names under which the programs find each other.
inline constexpr const char* kAgentName = "org.pillora.Pillora.Agent";
inline constexpr const char* kAgentPath = "/org/pillora/Pillora/Agent";
inline constexpr const char* kAgentInterface = "org.pillora.Pillora.Agent1";
inline constexpr const char* kAppName = "org.pillora.Pillora";
inline constexpr const char* kAppPath = "/org/pillora/Pillora";
inline constexpr const char* kDelegateInterface = "org.pillora.Pillora.Delegate1";

/// A negative errno as sd-bus returns it.
Error busError(const std::string& what, int code);
/// Whether somebody has the name on the bus.
Result<bool> isOwned(sd_bus* bus, const char* name);
/// The error that a reply carries; nothing for a successful one.
std::optional<Error> errorOf(sd_bus_message* reply);

}  // namespace pillora

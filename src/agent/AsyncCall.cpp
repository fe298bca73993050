// SPDX-License-Identifier: MIT
#include "agent/AsyncCall.h"

#include <memory>
#include <utility>

namespace pillora {

namespace {

using Answered = std::function<void(sd_bus_message*)>;

int deliver(sd_bus_message* reply, void* answered, sd_bus_error*) {
  // The slot owns the callback and goes with this call.
  const Answered call = std::exchange(*static_cast<Answered*>(answered), nullptr);
  if (call) call(reply);
  return 0;
}

}  // namespace

void callAsync(sd_bus* bus, sd_bus_message* call, std::chrono::milliseconds patience, Answered answered) {
  auto kept = std::make_unique<Answered>(std::move(answered));
  sd_bus_slot* slot = nullptr;
  const auto time = static_cast<uint64_t>(std::chrono::microseconds(patience).count());
  if (call == nullptr || sd_bus_call_async(bus, &slot, call, &deliver, kept.get(), time) < 0) {
    (*kept)(nullptr);
    return;
  }
  sd_bus_slot_set_destroy_callback(slot, [](void* callback) { delete static_cast<Answered*>(callback); });
  kept.release();
  sd_bus_slot_set_floating(slot, 1);
  sd_bus_slot_unref(slot);
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "linux/PolledBus.h"

#include <algorithm>
#include <poll.h>
#include <utility>

namespace pillora {

namespace {

/// The slot goes when its reply has come or with the connection, and what it calls with it.
void leaveToBus(sd_bus_slot* slot, std::unique_ptr<PolledBus::Heard> heard) {
  heard.release();
  sd_bus_slot_set_destroy_callback(slot, [](void* kept) { delete static_cast<PolledBus::Heard*>(kept); });
  sd_bus_slot_set_floating(slot, 1);
  sd_bus_slot_unref(slot);
}

int deliver(sd_bus_message* message, void* heard, sd_bus_error*) {
  (*static_cast<PolledBus::Heard*>(heard))(message);
  return 0;
}

}  // namespace

std::unique_ptr<PolledBus> PolledBus::open(int (*openBus)(sd_bus**)) {
  sd_bus* bus = nullptr;
  if (openBus(&bus) < 0) return nullptr;
  return std::unique_ptr<PolledBus>(new PolledBus(bus));
}

bool PolledBus::wantsToWrite() const {
  const int events = sd_bus_get_events(bus_.get());  // negative once the bus is gone
  return events > 0 && (events & POLLOUT) != 0;
}

void PolledBus::process() {
  while (sd_bus_process(bus_.get(), nullptr) > 0) {
  }
}

void PolledBus::processUntil(const std::function<bool()>& happened, Deadline deadline) {
  for (process(); !happened(); process()) {
    const auto left =
        std::chrono::duration_cast<std::chrono::microseconds>(deadline - std::chrono::steady_clock::now()).count();
    if (left <= 0 || sd_bus_wait(bus_.get(), static_cast<uint64_t>(left)) < 0) return;
  }
}

void PolledBus::call(const BusMessage& call, Heard answered) {
  auto heard = std::make_unique<Heard>(std::move(answered));
  sd_bus_slot* slot = nullptr;
  if (sd_bus_call_async(bus_.get(), &slot, call.get(), &deliver, heard.get(), 0) < 0) return;
  leaveToBus(slot, std::move(heard));
}

void PolledBus::listen(const std::string& rule, Heard heard) {
  auto kept = std::make_unique<Heard>(std::move(heard));
  sd_bus_slot* slot = nullptr;
  // A bus that refuses the rule is no reason to give the connection up, which is what happens without an answer's
  // handler.
  const auto installed = [](sd_bus_message*, void*, sd_bus_error*) { return 0; };
  if (sd_bus_add_match_async(bus_.get(), &slot, rule.c_str(), &deliver, installed, kept.get()) < 0) return;
  leaveToBus(slot, std::move(kept));
}

void PolledBus::awaitService(const std::string& service, std::function<void()> appeared) {
  listen("type='signal',sender='" + std::string(kBusItself) + "',member='NameOwnerChanged',arg0='" + service + "'",
         [appeared = std::move(appeared)](sd_bus_message* signal) {
           const char* owner = "";
           if (senderOf(signal) != kBusItself) return;
           if (sd_bus_message_read(signal, "sss", nullptr, nullptr, &owner) > 0 && *owner != '\0') appeared();
         });
}

}  // namespace pillora

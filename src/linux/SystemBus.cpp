// SPDX-License-Identifier: MIT
#include "linux/SystemBus.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <poll.h>

namespace pillora {

namespace {

Error systemError(const std::string& what, int code) { return Error{what + ": " + std::strerror(-code)}; }

int keepReply(sd_bus_message* reply, void* kept, sd_bus_error*) {
  static_cast<BusMessage*>(kept)->reset(sd_bus_message_ref(reply));
  return 0;
}

}  // namespace

BusMessage newCall(sd_bus* bus, const char* service, const char* path, const char* interface, const char* member) {
  sd_bus_message* message = nullptr;
  sd_bus_message_new_method_call(bus, &message, service, path, interface, member);
  return BusMessage(message);
}

std::string senderOf(sd_bus_message* message) {
  const char* sender = sd_bus_message_get_sender(message);
  return sender != nullptr ? sender : "";
}

Result<std::unique_ptr<SystemBus>> SystemBus::open(int cancelled) {
  sd_bus* bus = nullptr;
  if (const int opened = sd_bus_open_system(&bus); opened < 0) return systemError("no system bus", opened);
  return std::unique_ptr<SystemBus>(new SystemBus(bus, cancelled));
}

Result<BusMessage> SystemBus::call(const BusMessage& message, Deadline deadline) {
  if (!message) return Error{"the system bus is gone"};
  BusMessage reply;
  sd_bus_slot* slot = nullptr;
  // Time is kept by the wait.
  if (const int sent = sd_bus_call_async(bus_.get(), &slot, message.get(), &keepReply, &reply, UINT64_MAX); sent < 0) {
    return systemError("the system bus is gone", sent);
  }
  const BusSlot awaited(slot);
  if (const auto arrived = waitFor([&] { return reply != nullptr; }, deadline); !arrived) return arrived.error();
  if (const sd_bus_error* error = sd_bus_message_get_error(reply.get()); error != nullptr) {
    return Error{error->message != nullptr ? error->message : error->name};
  }
  return reply;
}

Result<void> SystemBus::waitFor(const std::function<bool()>& happened, Deadline deadline) {
  while (!happened()) {
    const int handled = sd_bus_process(bus_.get(), nullptr);
    if (handled < 0) return systemError("the system bus is gone", handled);
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    if (left <= 0 && handled == 0) return Error{"there was no answer in time"};
    std::array<pollfd, 2> awaited = {
        {{sd_bus_get_fd(bus_.get()), static_cast<short>(sd_bus_get_events(bus_.get())), 0}, {cancelled_, POLLIN, 0}}};
    poll(awaited.data(), awaited.size(), handled > 0 ? 0 : static_cast<int>(std::clamp<int64_t>(left, 0, 1 << 30)));
    if (awaited[1].revents != 0) return Error{"cancelled"};
  }
  return {};
}

}  // namespace pillora

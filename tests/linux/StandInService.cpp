// SPDX-License-Identifier: MIT
#include "linux/StandInService.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace pillora {

void StandInService::vanish() {
  slots_.clear();
  bus_.reset();
}

int StandInService::count(const std::string& call) const {
  return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

void StandInService::appear(const char* path, const char* interface, const sd_bus_vtable* table, void* self) {
  sd_bus_slot* slot = nullptr;
  EXPECT_GE(sd_bus_add_object_vtable(bus_.get(), &slot, path, interface, table, self), 0);
  slots_.emplace_back(slot);
  sd_bus_request_name(bus_.get(), name_.c_str(), 0);
}

bool StandInService::isToBeDone(sd_bus_message* call, const std::string& noted) {
  calls.push_back(noted);
  caller = senderOf(call);
  if (isHung) return false;
  const auto refusal = refusals.find(sd_bus_message_get_member(call));
  if (refusal == refusals.end()) return true;
  sd_bus_reply_method_errorf(call, refusal->second.c_str(), "refused");
  return false;
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "linux/Fingerprint.h"

#include <deque>
#include <string>
#include <string_view>

namespace pillora {

namespace {

constexpr const char* kService = "net.reactivated.Fprint";
constexpr const char* kManagerPath = "/net/reactivated/Fprint/Manager";
constexpr const char* kManager = "net.reactivated.Fprint.Manager";
constexpr const char* kDevice = "net.reactivated.Fprint.Device";
constexpr const char* kThisUser = "";
constexpr int kAttempts = 3;
constexpr std::chrono::seconds kTidyTime{1};

/// A reader, and the connection of the service that drives it.
struct Reader {
  std::string path, owner;
};

struct Status {
  std::string result;
  bool isDone = false;
};

/// What the service tells while it waits for a finger.
struct Verification {
  std::string owner;
  std::deque<Status> statuses;
  bool isServiceGone = false;
};

/// Anybody on the bus can send us a signal of this name; only the service's own connection is believed.
int statusArrived(sd_bus_message* signal, void* verification, sd_bus_error*) {
  auto& to = *static_cast<Verification*>(verification);
  const char* result = nullptr;
  int isDone = 0;
  if (senderOf(signal) == to.owner && sd_bus_message_read(signal, "sb", &result, &isDone) > 0) {
    to.statuses.push_back({result, isDone != 0});
  }
  return 0;
}

int ownerChanged(sd_bus_message* signal, void* verification, sd_bus_error*) {
  auto& to = *static_cast<Verification*>(verification);
  const char *name = nullptr, *former = nullptr, *now = nullptr;
  if (senderOf(signal) == kBusItself && sd_bus_message_read(signal, "sss", &name, &former, &now) > 0 &&
      to.owner == former) {
    to.isServiceGone = true;
  }
  return 0;
}

Result<BusMessage> callDevice(SystemBus& bus, const Reader& reader, const char* member, const char* text,
                              Deadline deadline) {
  const BusMessage call = bus.newCall(kService, reader.path.c_str(), kDevice, member);
  if (call && text != nullptr) sd_bus_message_append(call.get(), "s", text);
  return bus.call(call, deadline);
}

Result<Reader> findReader(SystemBus& bus, Deadline deadline) {
  const auto found = bus.call(bus.newCall(kService, kManagerPath, kManager, "GetDefaultDevice"), deadline);
  if (!found) return Error{"there is no fingerprint reader: " + found.error().description};
  const char* path = nullptr;
  if (sd_bus_message_read(found->get(), "o", &path) <= 0) return Error{"the fingerprint reader gave no sense"};
  Reader reader = {path, senderOf(found->get())};
  const auto fingers = callDevice(bus, reader, "ListEnrolledFingers", kThisUser, deadline);
  if (!fingers) return Error{"no fingerprint is enrolled: " + fingers.error().description};
  if (sd_bus_message_enter_container(fingers->get(), 'a', "s") < 0 || sd_bus_message_at_end(fingers->get(), 0) != 0) {
    return Error{"no fingerprint is enrolled"};
  }
  return reader;
}

Result<BusSlot> match(SystemBus& bus, const std::string& rule, sd_bus_message_handler_t arrived, Verification& to) {
  sd_bus_slot* slot = nullptr;
  // The bus takes rules and calls in their order, so the rule holds by the time that the service is called.
  if (sd_bus_add_match_async(bus.connection(), &slot, rule.c_str(), arrived, nullptr, &to) < 0) {
    return Error{"the system bus is gone"};
  }
  return BusSlot(slot);
}

/// Waits for the end of one scan, however often the reader wants the finger again.
Result<std::string> scan(SystemBus& bus, const Reader& reader, Verification& verification, Deadline deadline) {
  verification.statuses.clear();
  const auto started = callDevice(bus, reader, "VerifyStart", "any", deadline);
  if (!started) return started.error();
  for (;;) {
    const auto told =
        bus.waitFor([&] { return !verification.statuses.empty() || verification.isServiceGone; }, deadline);
    if (!told) return told.error();
    if (verification.statuses.empty()) return Error{"the fingerprint service is gone"};
    const Status status = verification.statuses.front();
    verification.statuses.pop_front();
    if (status.isDone) return status.result;
  }
}

Result<void> scanUntilMatch(SystemBus& bus, const Reader& reader, Deadline deadline) {
  Verification verification{reader.owner, {}, false};
  const auto telling = match(bus,
                             "type='signal',sender='" + reader.owner + "',path='" + reader.path + "',interface='" +
                                 kDevice + "',member='VerifyStatus'",
                             &statusArrived, verification);
  const auto vanishing = match(bus,
                               "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                               "member='NameOwnerChanged',arg0='" +
                                   std::string(kService) + "'",
                               &ownerChanged, verification);
  if (!telling || !vanishing) return Error{"the system bus is gone"};
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const auto result = scan(bus, reader, verification, deadline);
    if (!result) return result.error();
    if (*result == "verify-match") return {};
    if (*result != "verify-no-match") return Error{"the fingerprint reader ended with " + *result};
    if (const auto stopped = callDevice(bus, reader, "VerifyStop", nullptr, deadline); !stopped) return stopped.error();
  }
  return Error{"the fingerprint is not the owner's"};
}

}  // namespace

Result<void> canVerifyFingerprint(SystemBus& bus, Deadline deadline) {
  const auto reader = findReader(bus, deadline);
  return reader ? Result<void>() : reader.error();
}

Result<void> verifyFingerprint(SystemBus& bus, Deadline deadline) {
  const auto reader = findReader(bus, deadline);
  if (!reader) return reader.error();
  if (const auto claimed = callDevice(bus, *reader, "Claim", kThisUser, deadline); !claimed) return claimed.error();
  const auto verified = scanUntilMatch(bus, *reader, deadline);
  // Tidily, so that the next program need not wait until our connection has ended. What fails here is past mending.
  bus.ignoreCancel();
  static_cast<void>(callDevice(bus, *reader, "VerifyStop", nullptr, after(kTidyTime)));
  static_cast<void>(callDevice(bus, *reader, "Release", nullptr, after(kTidyTime)));
  return verified;
}

}  // namespace pillora

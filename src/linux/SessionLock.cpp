// SPDX-License-Identifier: MIT
#include "linux/SessionLock.h"

#include <cstdlib>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace pillora {

namespace {

constexpr const char* kService = "org.freedesktop.login1";
constexpr const char* kManagerInterface = "org.freedesktop.login1.Manager";
constexpr const char* kSessionInterface = "org.freedesktop.login1.Session";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

BusMessage managerCall(const PolledBus& bus, const char* member) {
  return bus.newCall(kService, "/org/freedesktop/login1", kManagerInterface, member);
}

BusMessage sessionNamed(const PolledBus& bus, const char* id) {
  BusMessage call = managerCall(bus, "GetSession");
  sd_bus_message_append(call.get(), "s", id);
  return call;
}

/// The ways to ask for our session, the best first; null after the last. A program that the session's bus or service
/// manager started is in no session itself: "auto" is then the one that its user is looking at. A logind that does not
/// know the word is asked by the process, then by what the login left in the environment.
BusMessage questionFor(const PolledBus& bus, size_t way) {
  if (way == 0) return sessionNamed(bus, "auto");
  if (way == 1) {
    BusMessage call = managerCall(bus, "GetSessionByPID");
    sd_bus_message_append(call.get(), "u", static_cast<uint32_t>(getpid()));
    return call;
  }
  const char* id = std::getenv("XDG_SESSION_ID");
  return way == 2 && id != nullptr ? sessionNamed(bus, id) : nullptr;
}

}  // namespace

std::unique_ptr<SessionLock> SessionLock::open(std::function<void(bool)> changed) {
  auto bus = PolledBus::openSystem();
  if (bus == nullptr) return nullptr;
  return std::unique_ptr<SessionLock>(new SessionLock(std::move(bus), std::move(changed)));
}

SessionLock::SessionLock(std::unique_ptr<PolledBus> bus, std::function<void(bool)> changed)
    : bus_(std::move(bus)), changed_(std::move(changed)) {
  bus_->listen("type='signal',sender='" + std::string(kService) + "',interface='" + kProperties +
                   "',member='PropertiesChanged',arg0='" + kSessionInterface + "'",
               [this](sd_bus_message* signal) { takeChange(signal); });
  bus_->awaitService(kService, [this] { findSession(0); });
  findSession(0);
}

void SessionLock::findSession(size_t way) {
  const BusMessage question = questionFor(*bus_, way);
  if (question == nullptr) return;
  bus_->call(question, [this, way](sd_bus_message* reply) {
    const char* session = nullptr;
    const bool isFound =
        sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read(reply, "o", &session) > 0;
    if (!isFound) return findSession(way + 1);
    session_ = session;
    logind_ = senderOf(reply);
    askForHint();
  });
}

void SessionLock::takeChange(sd_bus_message* signal) {
  if (senderOf(signal) != logind_ || sd_bus_message_get_path(signal) != session_) return;
  const char* name = nullptr;
  sd_bus_message_skip(signal, "s");
  sd_bus_message_enter_container(signal, 'a', "{sv}");
  while (sd_bus_message_enter_container(signal, 'e', "sv") > 0) {
    int isLocked = 0;
    sd_bus_message_read(signal, "s", &name);
    const bool isHint = std::string_view(name) == "LockedHint";
    if (isHint && sd_bus_message_read(signal, "v", "b", &isLocked) > 0) return take(isLocked != 0);
    sd_bus_message_skip(signal, "v");
    sd_bus_message_exit_container(signal);
  }
}

void SessionLock::askForHint() {
  const BusMessage call = bus_->newCall(kService, session_.c_str(), kProperties, "Get");
  sd_bus_message_append(call.get(), "ss", kSessionInterface, "LockedHint");
  bus_->call(call, [this](sd_bus_message* reply) {
    int isLocked = 0;
    if (sd_bus_message_is_method_error(reply, nullptr) != 0) return;
    if (sd_bus_message_read(reply, "v", "b", &isLocked) > 0) take(isLocked != 0);
  });
}

void SessionLock::take(bool isLocked) {
  if (std::exchange(isLocked_, isLocked) != isLocked) changed_(isLocked);
}

}  // namespace pillora

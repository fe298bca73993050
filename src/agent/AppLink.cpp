// SPDX-License-Identifier: MIT
#include "agent/AppLink.h"

#include <utility>

#include "agent/AsyncCall.h"
#include "agent/Wire.h"

namespace pillora {

namespace {

constexpr std::chrono::seconds kAnswerTime{25};

MessageHandle callTo(sd_bus* bus, const char* interface, const char* member) {
  sd_bus_message* call = nullptr;
  sd_bus_message_new_method_call(bus, &call, kAppName, kAppPath, interface, member);
  return MessageHandle(call);
}

}  // namespace

MessageHandle activationCall(sd_bus* bus, const Activation& activation) {
  const char* const interface = "org.freedesktop.Application";
  MessageHandle call = callTo(bus, interface, activation.action.empty() ? "Activate" : "ActivateAction");
  if (!activation.action.empty()) sd_bus_message_append(call.get(), "sav", activation.action.c_str(), 0);
  const char* token = activation.token.c_str();
  const int appended = *token == '\0' ? sd_bus_message_append(call.get(), "a{sv}", 0)
                                      : sd_bus_message_append(call.get(), "a{sv}", 2, "activation-token", "s", token,
                                                              "desktop-startup-id", "s", token);
  return appended < 0 ? nullptr : std::move(call);
}

void AppLink::willPresent(const UNNotificationRequest& request, std::function<void(unsigned)> completion) {
  const MessageHandle call = callTo(bus_, kDelegateInterface, "WillPresent");
  WireWriter writer(call.get());
  writer.request(request);
  // A reminder does not start the app.
  sd_bus_message_set_auto_start(call.get(), 0);
  callAsync(bus_, writer.status() < 0 ? nullptr : call.get(), patience_,
            [completion = std::move(completion)](sd_bus_message* reply) {
              uint32_t options = kUsualOptions;
              const bool answered = reply != nullptr && !errorOf(reply);
              if (answered && sd_bus_message_read(reply, "u", &options) <= 0) options = kUsualOptions;
              completion(options);
            });
}

void AppLink::didReceive(const UNNotificationResponse& response, bool opensTheApp, const std::string& activationToken) {
  if (opensTheApp) {
    callAsync(bus_, activationCall(bus_, {.token = activationToken}).get(), kAnswerTime, [](sd_bus_message*) {});
  }
  const MessageHandle call = callTo(bus_, kDelegateInterface, "DidReceive");
  WireWriter writer(call.get());
  writer.request(response.request);
  writer.text(response.actionIdentifier);
  if (writer.status() < 0) return;
  sd_bus_message_set_auto_start(call.get(), opensTheApp ? 1 : 0);
  callAsync(bus_, call.get(), kAnswerTime, [](sd_bus_message*) {});
}

void AppLink::showBadge(int64_t count) {
  sd_bus_emit_signal(bus_, "/org/pillora/Pillora/LauncherEntry", "com.canonical.Unity.LauncherEntry", "Update",
                     "sa{sv}", "application://org.pillora.Pillora.desktop", 2, "count", "x", count, "count-visible",
                     "b", count != 0 ? 1 : 0);
}

}  // namespace pillora

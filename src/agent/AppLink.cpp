// SPDX-License-Identifier: MIT
#include "agent/AppLink.h"

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

void activate(sd_bus* bus, const std::string& token) {
  const MessageHandle call = callTo(bus, "org.freedesktop.Application", "Activate");
  const char* text = token.c_str();
  const int appended = token.empty() ? sd_bus_message_append(call.get(), "a{sv}", 0)
                                     : sd_bus_message_append(call.get(), "a{sv}", 2, "activation-token", "s", text,
                                                             "desktop-startup-id", "s", text);
  if (appended >= 0) callAsync(bus, call.get(), kAnswerTime, [](sd_bus_message*) {});
}

}  // namespace

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
  if (opensTheApp) activate(bus_, activationToken);
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

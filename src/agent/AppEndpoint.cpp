// SPDX-License-Identifier: MIT
#include "agent/AppEndpoint.h"

#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>

#include "agent/AppLink.h"
#include "agent/Wire.h"

namespace pillora {

namespace {

/// Whether a call comes from the owner of the agent's name.
bool isFromAgent(sd_bus_message* call) {
  sd_bus_message* message = nullptr;
  sd_bus* bus = sd_bus_message_get_bus(call);
  const int asked = sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                       "GetNameOwner", nullptr, &message, "s", kAgentName);
  const MessageHandle reply(message);
  const char* owner = nullptr;
  const char* sender = sd_bus_message_get_sender(call);
  if (asked < 0 || sd_bus_message_read(message, "s", &owner) <= 0 || sender == nullptr) return false;
  return std::string_view(owner) == sender;
}

int refuseStranger(sd_bus_error* error) {
  return sd_bus_error_set(error, SD_BUS_ERROR_ACCESS_DENIED, "only Pillora's agent may do that");
}

/// The token among the desktop's platform data, an a{sv}; empty when there is none.
std::string activationToken(sd_bus_message* call) {
  std::string token;
  if (sd_bus_message_enter_container(call, 'a', "{sv}") < 0) return token;
  while (sd_bus_message_enter_container(call, 'e', "sv") > 0) {
    const char* key = nullptr;
    const char* value = nullptr;
    if (sd_bus_message_read(call, "s", &key) <= 0) break;
    const bool isToken = std::string_view(key) == "activation-token";
    if (isToken && sd_bus_message_read(call, "v", "s", &value) > 0) {
      token = value;
    } else if (isToken || sd_bus_message_skip(call, "v") < 0) {
      break;
    }
    sd_bus_message_exit_container(call);
  }
  return token;
}

}  // namespace

struct AppMethods {
  static AppEndpoint& app(void* self) { return *static_cast<AppEndpoint*>(self); }

  static int willPresent(sd_bus_message* call, void* self, sd_bus_error*) {
    WireReader reader(call);
    const UNNotificationRequest request = reader.request();
    if (reader.status() < 0) return reader.status();
    AppEndpoint& endpoint = app(self);
    const bool asks = endpoint.delegate_ != nullptr && endpoint.hooks_.isActive && endpoint.hooks_.isActive();
    if (!asks) return sd_bus_reply_method_return(call, "u", AppLink::kUsualOptions);
    const std::shared_ptr<sd_bus_message> kept(sd_bus_message_ref(call), &sd_bus_message_unref);
    endpoint.delegate_->willPresent(request,
                                    [kept](unsigned options) { sd_bus_reply_method_return(kept.get(), "u", options); });
    return 1;
  }

  static int didReceive(sd_bus_message* call, void* self, sd_bus_error* error) {
    WireReader reader(call);
    UNNotificationResponse response;
    response.request = reader.request();
    response.actionIdentifier = reader.text();
    if (reader.status() < 0) return reader.status();
    if (!isFromAgent(call)) return refuseStranger(error);
    AppEndpoint& endpoint = app(self);
    if (endpoint.delegate_ == nullptr) return sd_bus_reply_method_return(call, nullptr);
    const std::shared_ptr<sd_bus_message> kept(sd_bus_message_ref(call), &sd_bus_message_unref);
    endpoint.delegate_->didReceive(response, [kept] { sd_bus_reply_method_return(kept.get(), nullptr); });
    return 1;
  }

  /// All three ways in which a desktop opens an app come down to its one window. It opens no files.
  static int activate(sd_bus_message* call, void* self, sd_bus_error*) {
    const std::string_view member = sd_bus_message_get_member(call);
    const char* action = "";
    int read = 0;
    if (member == "Open") read = sd_bus_message_skip(call, "as");
    if (member == "ActivateAction") read = sd_bus_message_read(call, "s", &action);
    if (member == "ActivateAction" && read >= 0) read = sd_bus_message_skip(call, "av");
    if (read < 0) return read;
    const AppEndpoint& endpoint = app(self);
    if (endpoint.hooks_.activate) endpoint.hooks_.activate({action, activationToken(call)});
    return sd_bus_reply_method_return(call, nullptr);
  }
};

namespace {

constexpr uint64_t kOpen = SD_BUS_VTABLE_UNPRIVILEGED;

const sd_bus_vtable kDelegateTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_ARGS("WillPresent", SD_BUS_ARGS("(ssssaxa(sv)s(axxxbxxxs)(xyyyy)b)", request),
                            SD_BUS_RESULT("u", options), AppMethods::willPresent, kOpen),
    SD_BUS_METHOD_WITH_ARGS("DidReceive", SD_BUS_ARGS("(ssssaxa(sv)s(axxxbxxxs)(xyyyy)b)", request, "s", action),
                            SD_BUS_NO_RESULT, AppMethods::didReceive, kOpen),
    SD_BUS_VTABLE_END,
};

const sd_bus_vtable kApplicationTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_ARGS("Activate", SD_BUS_ARGS("a{sv}", platform_data), SD_BUS_NO_RESULT, AppMethods::activate,
                            kOpen),
    SD_BUS_METHOD_WITH_ARGS("Open", SD_BUS_ARGS("as", uris, "a{sv}", platform_data), SD_BUS_NO_RESULT,
                            AppMethods::activate, kOpen),
    SD_BUS_METHOD_WITH_ARGS("ActivateAction", SD_BUS_ARGS("s", action_name, "av", parameter, "a{sv}", platform_data),
                            SD_BUS_NO_RESULT, AppMethods::activate, kOpen),
    SD_BUS_VTABLE_END,
};

}  // namespace

Result<void> AppEndpoint::start(AppHooks hooks) {
  // A call that comes at once is handled in a later turn, when the object is there.
  int done = sd_bus_request_name(bus_, kAppName, 0);
  if (done == -EEXIST) return Error{"the app is running already"};
  if (done < 0) return busError(kAppName, done);
  hooks_ = std::move(hooks);
  sd_bus_slot* slot = nullptr;
  done = sd_bus_add_object_vtable(bus_, &slot, kAppPath, kDelegateInterface, kDelegateTable, this);
  if (done < 0) return busError(kDelegateInterface, done);
  delegateSlot_.reset(slot);
  done = sd_bus_add_object_vtable(bus_, &slot, kAppPath, "org.freedesktop.Application", kApplicationTable, this);
  if (done < 0) return busError("org.freedesktop.Application", done);
  applicationSlot_.reset(slot);
  return {};
}

void AppEndpoint::stop() {
  delegateSlot_.reset();
  applicationSlot_.reset();
  hooks_ = {};
  sd_bus_release_name(bus_, kAppName);
}

}  // namespace pillora

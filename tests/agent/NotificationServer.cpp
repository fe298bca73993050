// SPDX-License-Identifier: MIT
#include "agent/NotificationServer.h"

#include <gtest/gtest.h>

#include "agent/Wire.h"

namespace pillora {

namespace {

constexpr const char* kName = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";

std::map<std::string, std::string> readHints(sd_bus_message* call) {
  std::map<std::string, std::string> hints;
  EXPECT_GT(sd_bus_message_enter_container(call, 'a', "{sv}"), 0);
  while (sd_bus_message_enter_container(call, 'e', "sv") > 0) {
    const char* key = nullptr;
    const char* type = nullptr;
    sd_bus_message_read(call, "s", &key);
    sd_bus_message_peek_type(call, nullptr, &type);
    const std::string held = type;
    const char* text = nullptr;
    uint8_t byte = 0;
    int flag = 0;
    if (held == "s") {
      sd_bus_message_read(call, "v", "s", &text);
      hints[key] = text;
    } else if (held == "y") {
      sd_bus_message_read(call, "v", "y", &byte);
      hints[key] = std::to_string(byte);
    } else {
      EXPECT_EQ(held, "b") << key;
      sd_bus_message_read(call, "v", "b", &flag);
      hints[key] = flag != 0 ? "true" : "false";
    }
    sd_bus_message_exit_container(call);
  }
  sd_bus_message_exit_container(call);
  return hints;
}

}  // namespace

struct ServerMethods {
  static NotificationServer& server(void* self) { return *static_cast<NotificationServer*>(self); }

  static int notify(sd_bus_message* call, void* self, sd_bus_error* error) {
    NotificationServer& here = server(self);
    if (here.refuses) return sd_bus_error_set(error, "org.freedesktop.Notifications.Error", "too many");
    Notified shown;
    shown.sender = sd_bus_message_get_sender(call);
    WireReader reader(call);
    shown.app = reader.text();
    shown.replaces = reader.word();
    shown.icon = reader.text();
    shown.summary = reader.text();
    shown.body = reader.text();
    shown.actions = reader.texts();
    EXPECT_GE(reader.status(), 0);
    shown.hints = readHints(call);
    EXPECT_GT(sd_bus_message_read(call, "i", &shown.timeout), 0);
    shown.number = shown.replaces != 0 ? shown.replaces : ++here.last_;
    here.notified.push_back(shown);
    here.onScreen[shown.number] = shown;
    if (here.beforeAnswer && !here.beforeAnswer()) return 1;
    return sd_bus_reply_method_return(call, "u", shown.number);
  }

  static int closeNotification(sd_bus_message* call, void* self, sd_bus_error*) {
    const uint32_t bubble = WireReader(call).word();
    server(self).close(bubble, 3);
    return sd_bus_reply_method_return(call, nullptr);
  }

  static int getCapabilities(sd_bus_message* call, void* self, sd_bus_error*) {
    sd_bus_message* message = nullptr;
    sd_bus_message_new_method_return(call, &message);
    const MessageHandle reply(message);
    WireWriter(message).texts(server(self).capabilities);
    return sd_bus_send(nullptr, message, nullptr);
  }
};

namespace {

const sd_bus_vtable kTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Notify", "susssasa{sv}i", "u", ServerMethods::notify, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("CloseNotification", "u", "", ServerMethods::closeNotification, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetCapabilities", "", "as", ServerMethods::getCapabilities, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

}  // namespace

void NotificationServer::appear() {
  sd_bus_slot* slot = nullptr;
  EXPECT_GE(sd_bus_add_object_vtable(bus_.get(), &slot, kPath, kName, kTable, this), 0);
  slot_.reset(slot);
  EXPECT_GE(sd_bus_request_name(bus_.get(), kName, 0), 0);
}

void NotificationServer::disappear() {
  slot_.reset();
  bus_.reset();
  onScreen.clear();
}

void NotificationServer::invoke(uint32_t bubble, const std::string& action, const std::string& token) {
  if (!token.empty()) {
    EXPECT_GE(sd_bus_emit_signal(bus_.get(), kPath, kName, "ActivationToken", "us", bubble, token.c_str()), 0);
  }
  EXPECT_GE(sd_bus_emit_signal(bus_.get(), kPath, kName, "ActionInvoked", "us", bubble, action.c_str()), 0);
}

void NotificationServer::close(uint32_t bubble, uint32_t reason) {
  onScreen.erase(bubble);
  EXPECT_GE(sd_bus_emit_signal(bus_.get(), kPath, kName, "NotificationClosed", "uu", bubble, reason), 0);
}

}  // namespace pillora

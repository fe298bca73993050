// SPDX-License-Identifier: MIT
#include "linux/AuthenticationServices.h"

#include <gtest/gtest.h>

namespace pillora {

namespace {

constexpr const char* kReader = "/net/reactivated/Fprint/Device/0";
constexpr const char* kReaderInterface = "net.reactivated.Fprint.Device";

int replyWith(sd_bus_message* call, bool authorized, bool challenge, bool dismissed) {
  return dismissed ? sd_bus_reply_method_return(call, "(bba{ss})", authorized, challenge, 1, "polkit.dismissed", "true")
                   : sd_bus_reply_method_return(call, "(bba{ss})", authorized, challenge, 0);
}

std::string textOf(sd_bus_message* call) {
  const char* text = nullptr;
  EXPECT_GT(sd_bus_message_read(call, "s", &text), 0);
  return text == nullptr ? "" : text;
}

}  // namespace

struct FingerprintMethods {
  static FingerprintService& service(void* self) { return *static_cast<FingerprintService*>(self); }

  static int getDefaultDevice(sd_bus_message* call, void* self, sd_bus_error*) {
    if (!service(self).isToBeDone(call, "GetDefaultDevice")) return 1;
    return sd_bus_reply_method_return(call, "o", kReader);
  }
  static int listEnrolledFingers(sd_bus_message* call, void* self, sd_bus_error*) {
    if (!service(self).isToBeDone(call, "ListEnrolledFingers:" + textOf(call))) return 1;
    sd_bus_message* message = nullptr;
    sd_bus_message_new_method_return(call, &message);
    const BusMessage reply(message);
    sd_bus_message_open_container(message, 'a', "s");
    for (const std::string& finger : service(self).fingers) sd_bus_message_append(message, "s", finger.c_str());
    sd_bus_message_close_container(message);
    return sd_bus_send(nullptr, message, nullptr);
  }
  static int claim(sd_bus_message* call, void* self, sd_bus_error*) {
    if (!service(self).isToBeDone(call, "Claim:" + textOf(call))) return 1;
    service(self).client = sd_bus_message_get_sender(call);
    return sd_bus_reply_method_return(call, nullptr);
  }
  static int verifyStart(sd_bus_message* call, void* self, sd_bus_error*) {
    if (!service(self).isToBeDone(call, "VerifyStart:" + textOf(call))) return 1;
    return sd_bus_reply_method_return(call, nullptr);
  }
  static int plain(sd_bus_message* call, void* self, sd_bus_error*) {
    if (!service(self).isToBeDone(call, sd_bus_message_get_member(call))) return 1;
    return sd_bus_reply_method_return(call, nullptr);
  }
};

struct PolkitMethods {
  static PolkitService& service(void* self) { return *static_cast<PolkitService*>(self); }

  static PolkitService::Check read(sd_bus_message* call) {
    PolkitService::Check check;
    const char *kind = nullptr, *action = nullptr, *cancellation = nullptr, *key = nullptr, *value = nullptr;
    sd_bus_message_enter_container(call, 'r', "sa{sv}");
    sd_bus_message_read(call, "s", &kind);
    sd_bus_message_enter_container(call, 'a', "{sv}");
    while (sd_bus_message_enter_container(call, 'e', "sv") > 0) {
      sd_bus_message_read(call, "s", &key);
      const std::string name = key;
      if (name == "pid") sd_bus_message_read(call, "v", "u", &check.process);
      if (name == "start-time") sd_bus_message_read(call, "v", "t", &check.startTime);
      if (name == "uid") sd_bus_message_read(call, "v", "i", &check.user);
      sd_bus_message_exit_container(call);
    }
    sd_bus_message_exit_container(call);
    sd_bus_message_exit_container(call);
    sd_bus_message_read(call, "s", &action);
    sd_bus_message_enter_container(call, 'a', "{ss}");
    while (sd_bus_message_read(call, "{ss}", &key, &value) > 0) ++check.details;
    sd_bus_message_exit_container(call);
    EXPECT_GT(sd_bus_message_read(call, "us", &check.flags, &cancellation), 0);
    check.kind = kind;
    check.action = action;
    check.cancellation = cancellation;
    return check;
  }

  static int checkAuthorization(sd_bus_message* call, void* self, sd_bus_error*) {
    PolkitService& here = service(self);
    if (!here.isToBeDone(call, "CheckAuthorization")) return 1;
    here.checks.push_back(read(call));
    if (here.checks.back().flags == 0) return replyWith(call, here.isAuthorized, here.isChallenge, false);
    here.prompt_.reset(sd_bus_message_ref(call));
    return 1;
  }
  static int cancelCheckAuthorization(sd_bus_message* call, void* self, sd_bus_error*) {
    PolkitService& here = service(self);
    if (!here.isToBeDone(call, "CancelCheckAuthorization:" + textOf(call))) return 1;
    if (here.prompt_) {
      sd_bus_reply_method_errorf(here.prompt_.get(), "org.freedesktop.PolicyKit1.Error.Cancelled", "cancelled");
      here.prompt_.reset();
    }
    return sd_bus_reply_method_return(call, nullptr);
  }
};

namespace {

const sd_bus_vtable kManagerTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("GetDefaultDevice", "", "o", FingerprintMethods::getDefaultDevice, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

const sd_bus_vtable kReaderTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("ListEnrolledFingers", "s", "as", FingerprintMethods::listEnrolledFingers,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Claim", "s", "", FingerprintMethods::claim, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("VerifyStart", "s", "", FingerprintMethods::verifyStart, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("VerifyStop", "", "", FingerprintMethods::plain, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Release", "", "", FingerprintMethods::plain, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

const sd_bus_vtable kPolkitTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("CheckAuthorization", "(sa{sv})sa{ss}us", "(bba{ss})", PolkitMethods::checkAuthorization,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("CancelCheckAuthorization", "s", "", PolkitMethods::cancelCheckAuthorization,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

}  // namespace

FingerprintService::FingerprintService(sd_bus* bus) : StandInService(bus, "net.reactivated.Fprint") {
  appear("/net/reactivated/Fprint/Manager", "net.reactivated.Fprint.Manager", kManagerTable, this);
  appear(kReader, kReaderInterface, kReaderTable, this);
}

void FingerprintService::tell(const std::string& result, bool isDone) {
  EXPECT_GE(sd_bus_emit_signal(bus(), kReader, kReaderInterface, "VerifyStatus", "sb", result.c_str(), isDone ? 1 : 0),
            0);
}

PolkitService::PolkitService(sd_bus* bus) : StandInService(bus, "org.freedesktop.PolicyKit1") {
  appear("/org/freedesktop/PolicyKit1/Authority", "org.freedesktop.PolicyKit1.Authority", kPolkitTable, this);
}

void PolkitService::answer(bool authorized, bool challenge, bool dismissed) {
  ASSERT_TRUE(prompt_);
  replyWith(prompt_.get(), authorized, challenge, dismissed);
  prompt_.reset();
}

}  // namespace pillora

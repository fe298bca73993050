// SPDX-License-Identifier: MIT
#include "linux/Vibration.h"

#include "linux/SystemBus.h"

namespace pillora {

namespace {

constexpr const char* kService = "org.sigxcpu.Feedback";
constexpr int kUsualTimeout = -1;

}  // namespace

void vibrate() {
  sd_bus* opened = nullptr;
  if (sd_bus_open_user(&opened) < 0) return;
  const std::unique_ptr<sd_bus, BusReleaser<sd_bus_flush_close_unref>> bus(opened);
  sd_bus_message* message = nullptr;
  if (sd_bus_message_new_method_call(opened, &message, kService, "/org/sigxcpu/Feedback", kService, "TriggerFeedback") <
      0) {
    return;
  }
  const BusMessage call(message);
  // An event of the freedesktop sound naming that feedbackd's themes know: the shortest there is.
  if (sd_bus_message_append(message, "ssa{sv}i", "org.pillora.Pillora", "button-pressed", 0, kUsualTimeout) < 0) return;
  sd_bus_message_set_expect_reply(message, 0);
  sd_bus_send(opened, message, nullptr);
}

}  // namespace pillora

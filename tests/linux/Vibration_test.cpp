// SPDX-License-Identifier: MIT
#include "linux/Vibration.h"

#include <gtest/gtest.h>

#include "agent/PrivateBus.h"
#include "doubles/ScopedVariable.h"
#include "linux/StandInService.h"

namespace pillora {
namespace {

class Feedback final : public StandInService {
 public:
  explicit Feedback(sd_bus* bus) : StandInService(bus, "org.sigxcpu.Feedback") {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("TriggerFeedback", "ssa{sv}i", "u", &Feedback::trigger, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    };
    appear("/org/sigxcpu/Feedback", "org.sigxcpu.Feedback", table, this);
  }

 private:
  static int trigger(sd_bus_message* call, void* self, sd_bus_error*) {
    const char *app = nullptr, *event = nullptr;
    int timeout = 0;
    sd_bus_message_read(call, "ss", &app, &event);
    sd_bus_message_skip(call, "a{sv}");
    sd_bus_message_read(call, "i", &timeout);
    const std::string asked = std::string(app) + " " + event + " " + std::to_string(timeout);
    if (!static_cast<Feedback*>(self)->isToBeDone(call, asked)) return 1;
    return sd_bus_reply_method_return(call, "u", 1);
  }
};

TEST(Vibration, isOneShortEventOfTheFeedbackService) {
  const PrivateBus bus;
  const ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", bus.address());
  Feedback service(bus.connect().release());
  vibrate();
  ASSERT_TRUE(PrivateBus::pumpUntil({service.bus()}, [&] { return !service.calls.empty(); }));
  EXPECT_EQ(service.calls, std::vector<std::string>{"org.pillora.Pillora button-pressed -1"});
}

TEST(Vibration, isNotWaitedFor) {
  const PrivateBus bus;
  const ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", bus.address());
  Feedback service(bus.connect().release());
  service.isHung = true;
  for (int i = 0; i < 3; ++i) vibrate();  // nobody works for the service meanwhile
  EXPECT_TRUE(PrivateBus::pumpUntil({service.bus()}, [&] { return service.calls.size() == 3; }));
}

}  // namespace
}  // namespace pillora

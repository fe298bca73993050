// SPDX-License-Identifier: MIT
#include "linux/SessionLock.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <vector>

#include "agent/PrivateBus.h"
#include "doubles/ScopedVariable.h"
#include "linux/StandInService.h"

namespace pillora {
namespace {

constexpr const char* kOurs = "/org/freedesktop/login1/session/_37";
constexpr const char* kOther = "/org/freedesktop/login1/session/_38";
constexpr const char* kSessionInterface = "org.freedesktop.login1.Session";

/// A logind with two sessions, the first of which is ours.
class Logind final : public StandInService {
 public:
  explicit Logind(sd_bus* bus) : StandInService(bus, "org.freedesktop.login1") {
    static const sd_bus_vtable manager[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("GetSession", "s", "o", &Logind::getSession, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD("GetSessionByPID", "u", "o", &Logind::getSessionByPid, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    };
    static const sd_bus_vtable session[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_PROPERTY("Active", "b", &Logind::isActive, 0, SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
        SD_BUS_PROPERTY("LockedHint", "b", &Logind::lockedHint, 0, SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
        SD_BUS_VTABLE_END,
    };
    appear(kOurs, kSessionInterface, session, &isOursLocked);
    appear(kOther, kSessionInterface, session, &isOtherLocked);
    appear("/org/freedesktop/login1", "org.freedesktop.login1.Manager", manager, this);
  }

  std::string knownAs = "auto";  ///< how the session may be asked for by name
  int isOursLocked = 0, isOtherLocked = 0;

  void lock(bool isLocked) {
    isOursLocked = isLocked ? 1 : 0;
    EXPECT_GE(sd_bus_emit_properties_changed(bus(), kOurs, kSessionInterface, "Active", "LockedHint", nullptr), 0);
  }
  void lockOther() {
    isOtherLocked = 1;
    EXPECT_GE(sd_bus_emit_properties_changed(bus(), kOther, kSessionInterface, "LockedHint", nullptr), 0);
  }

 private:
  static int getSession(sd_bus_message* call, void* self, sd_bus_error* error) {
    Logind& logind = *static_cast<Logind*>(self);
    const char* id = nullptr;
    sd_bus_message_read(call, "s", &id);
    if (!logind.isToBeDone(call, std::string("GetSession:") + id)) return 1;
    if (id != logind.knownAs) return sd_bus_error_set(error, "org.freedesktop.login1.NoSuchSession", "no such session");
    return sd_bus_reply_method_return(call, "o", kOurs);
  }
  static int getSessionByPid(sd_bus_message* call, void* self, sd_bus_error* error) {
    Logind& logind = *static_cast<Logind*>(self);
    uint32_t process = 0;
    sd_bus_message_read(call, "u", &process);
    if (!logind.isToBeDone(call, "GetSessionByPID:" + std::to_string(process))) return 1;
    if (logind.knownAs != "process") {
      return sd_bus_error_set(error, "org.freedesktop.login1.NoSessionForPID", "no session");
    }
    return sd_bus_reply_method_return(call, "o", kOurs);
  }
  static int isActive(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*) {
    return sd_bus_message_append(reply, "b", 1);
  }
  static int lockedHint(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* isLocked,
                        sd_bus_error*) {
    return sd_bus_message_append(reply, "b", *static_cast<int*>(isLocked));
  }
};

class SessionLockTest : public ::testing::Test {
 protected:
  void open() {
    session = SessionLock::open([this](bool isLocked) { told.push_back(isLocked); });
    ASSERT_NE(session, nullptr);
  }
  bool waitFor(const std::function<bool()>& happened) {
    return PrivateBus::pumpUntil({logind.bus()}, [&] {
      session->connection().process();
      return happened();
    });
  }
  /// Until what signals sent so far would have brought is there.
  bool waitForAnswer() {
    bool isAnswered = false;
    PolledBus& connection = session->connection();
    connection.call(connection.newCall("org.freedesktop.login1", kOurs, "org.freedesktop.DBus.Peer", "Ping"),
                    [&](sd_bus_message*) { isAnswered = true; });
    return waitFor([&] { return isAnswered; });
  }
  bool waitForTold(std::vector<bool> expected) {
    return waitFor([&] { return told == expected; });
  }

  PrivateBus bus;
  ScopedVariable address{"DBUS_SYSTEM_BUS_ADDRESS", bus.address()};
  ScopedVariable login{"XDG_SESSION_ID", "c2"};
  Logind logind{bus.connect().release()};
  std::vector<bool> told;
  std::unique_ptr<SessionLock> session;
};

TEST_F(SessionLockTest, aSessionThatIsLockedAlreadyIsTold) {
  logind.isOursLocked = 1;
  open();
  EXPECT_TRUE(waitForTold({true}));
}

TEST_F(SessionLockTest, lockingAndUnlockingAreTold) {
  logind.isOursLocked = 1;
  open();
  ASSERT_TRUE(waitForTold({true}));
  logind.lock(false);
  ASSERT_TRUE(waitForTold({true, false}));
  logind.lock(false);  // as when another property changed
  logind.lock(true);
  EXPECT_TRUE(waitForTold({true, false, true}));
}

TEST_F(SessionLockTest, anotherSessionsLockIsNone) {
  logind.isOursLocked = 1;
  open();
  ASSERT_TRUE(waitForTold({true}));
  logind.lock(false);
  logind.lockOther();
  logind.lock(true);
  EXPECT_TRUE(waitForTold({true, false, true}));
}

TEST_F(SessionLockTest, theSessionIsFoundInEveryWayThereIs) {
  logind.isOursLocked = 1;
  for (const char* way : {"auto", "process", "c2"}) {
    told.clear();
    logind.calls.clear();
    logind.knownAs = way;
    open();
    EXPECT_TRUE(waitForTold({true})) << way;
  }
  EXPECT_EQ(logind.calls, (std::vector<std::string>{"GetSession:auto", "GetSessionByPID:" + std::to_string(getpid()),
                                                    "GetSession:c2"}));
}

TEST_F(SessionLockTest, aStrangersSignalIsNotBelieved) {
  logind.isOursLocked = 1;
  open();
  ASSERT_TRUE(waitForTold({true}));
  const BusHandle stranger = bus.connect();
  sd_bus_message* message = nullptr;
  sd_bus_message_new_signal(stranger.get(), &message, kOurs, "org.freedesktop.DBus.Properties", "PropertiesChanged");
  const MessageHandle signal(message);
  sd_bus_message_append(message, "sa{sv}as", kSessionInterface, 1, "LockedHint", "b", 0, 0);
  ASSERT_GE(sd_bus_send_to(stranger.get(), message, logind.caller.c_str(), nullptr), 0);
  ASSERT_TRUE(PrivateBus::isOwned(stranger.get(), "org.freedesktop.login1")) << "it is on its way";
  ASSERT_TRUE(waitForAnswer());
  EXPECT_EQ(told, std::vector<bool>{true});
}

TEST_F(SessionLockTest, oneThatIsStartedAnewIsAskedAgain) {
  logind.isOursLocked = 1;
  open();
  ASSERT_TRUE(waitForTold({true}));
  logind.vanish();
  Logind next{bus.connect().release()};
  const auto waitForNext = [&](const std::vector<bool>& expected) {
    return PrivateBus::pumpUntil({next.bus()}, [&] {
      session->connection().process();
      return told == expected;
    });
  };
  EXPECT_TRUE(waitForNext({true, false}));
  next.lock(true);
  EXPECT_TRUE(waitForNext({true, false, true}));
}

TEST_F(SessionLockTest, whoIsInNoSessionIsToldNothing) {
  logind.knownAs = "another";
  open();
  EXPECT_TRUE(waitFor([&] { return logind.count("GetSession:c2") == 1; }));
  logind.lock(true);
  ASSERT_TRUE(waitForAnswer());
  EXPECT_TRUE(told.empty());
}

TEST_F(SessionLockTest, withoutASystemBusThereIsNothingToFollow) {
  const ScopedVariable nowhere("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
  EXPECT_EQ(SessionLock::open([](bool) {}), nullptr);
}

}  // namespace
}  // namespace pillora

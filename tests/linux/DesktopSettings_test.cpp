// SPDX-License-Identifier: MIT
#include "linux/DesktopSettings.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "agent/PrivateBus.h"
#include "doubles/ScopedVariable.h"
#include "linux/StandInService.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";

/// What the portal holds: a variant's type, and the value.
struct Setting {
  std::string group, name;
  char type = 'u';
  double number = 0;
  std::string text = {};
};

int append(sd_bus_message* message, const Setting& setting) {
  switch (setting.type) {
    case 'd':
      return sd_bus_message_append(message, "v", "d", setting.number);
    case 's':
      return sd_bus_message_append(message, "v", "s", setting.text.c_str());
    case '(':
      return sd_bus_message_append(message, "v", "(ddd)", 0.1, 0.2, 0.3);
    default:
      return sd_bus_message_append(message, "v", std::string(1, setting.type).c_str(),
                                   static_cast<int>(setting.number));
  }
}

class Portal final : public StandInService {
 public:
  explicit Portal(sd_bus* bus) : StandInService(bus, "org.freedesktop.portal.Desktop") {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("ReadAll", "as", "a{sa{sv}}", &Portal::readAll, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    };
    appear(kPath, kInterface, table, this);
  }

  std::vector<Setting> settings;

  void change(const Setting& setting) {
    sd_bus_message* message = nullptr;
    sd_bus_message_new_signal(bus(), &message, kPath, kInterface, "SettingChanged");
    const BusMessage signal(message);
    sd_bus_message_append(message, "ss", setting.group.c_str(), setting.name.c_str());
    append(message, setting);
    EXPECT_GE(sd_bus_send(bus(), message, nullptr), 0);
  }

 private:
  static int readAll(sd_bus_message* call, void* self, sd_bus_error*) {
    Portal& portal = *static_cast<Portal*>(self);
    if (!portal.isToBeDone(call, "ReadAll")) return 1;
    std::vector<std::string> wanted;
    const char* group = nullptr;
    sd_bus_message_enter_container(call, 'a', "s");
    while (sd_bus_message_read(call, "s", &group) > 0) wanted.emplace_back(group);
    sd_bus_message* message = nullptr;
    sd_bus_message_new_method_return(call, &message);
    const BusMessage reply(message);
    sd_bus_message_open_container(message, 'a', "{sa{sv}}");
    for (const std::string& each : wanted) portal.appendGroup(message, each);
    sd_bus_message_close_container(message);
    return sd_bus_send(nullptr, message, nullptr);
  }
  void appendGroup(sd_bus_message* message, const std::string& group) const {
    sd_bus_message_open_container(message, 'e', "sa{sv}");
    sd_bus_message_append(message, "s", group.c_str());
    sd_bus_message_open_container(message, 'a', "{sv}");
    for (const Setting& each : settings) {
      if (each.group != group) continue;
      sd_bus_message_open_container(message, 'e', "sv");
      sd_bus_message_append(message, "s", each.name.c_str());
      append(message, each);
      sd_bus_message_close_container(message);
    }
    sd_bus_message_close_container(message);
    sd_bus_message_close_container(message);
  }
};

class DesktopSettingsTest : public ::testing::Test {
 protected:
  void open() {
    settings = DesktopSettings::open();
    ASSERT_NE(settings, nullptr);
  }
  void follow(std::chrono::milliseconds patience = 0ms) {
    settings->follow([this](const DesktopLook& look) { looks.push_back(look); }, patience);
  }
  bool waitFor(const std::function<bool()>& happened) {
    std::vector<sd_bus*> connections = {other.get()};
    if (portal.bus() != nullptr) connections.push_back(portal.bus());
    return PrivateBus::pumpUntil(connections, [&] {
      settings->connection().process();
      return happened();
    });
  }
  /// The look that the portal's settings make, once they have been read.
  DesktopLook read(std::vector<Setting> held) {
    looks.clear();
    portal.settings = std::move(held);
    open();
    follow();
    EXPECT_TRUE(waitFor([&] { return !looks.empty(); }));
    return looks.empty() ? DesktopLook() : looks.back();
  }

  PrivateBus bus;
  ScopedVariable address{"DBUS_SESSION_BUS_ADDRESS", bus.address()};
  BusHandle other = bus.connect();
  Portal portal{bus.connect().release()};
  std::vector<DesktopLook> looks;
  std::unique_ptr<DesktopSettings> settings;
};

TEST_F(DesktopSettingsTest, whatEveryDesktopSaysIsRead) {
  const std::string shared = "org.freedesktop.appearance";
  EXPECT_EQ(read({{shared, "color-scheme", 'u', 1}}), DesktopLook{.isDark = true});
  EXPECT_EQ(read({{shared, "contrast", 'u', 1}, {shared, "color-scheme", 'u', 2}}),
            DesktopLook{.isHighContrast = true});
  EXPECT_EQ(read({{shared, "reduced-motion", 'u', 1}, {shared, "color-scheme", 'u', 7}}),
            DesktopLook{.isMotionReduced = true});
}

TEST_F(DesktopSettingsTest, whatGnomeSaysIsRead) {
  const std::string gnome = "org.gnome.desktop.interface";
  EXPECT_EQ(read({{gnome, "text-scaling-factor", 'd', 1.25}}), DesktopLook{.textScale = 1.25});
  EXPECT_EQ(read({{gnome, "enable-animations", 'b', 0}}), DesktopLook{.isMotionReduced = true});
  EXPECT_EQ(read({{gnome, "font-name", 's', 0, "Ubuntu Medium 11"}}), DesktopLook{.font = "Ubuntu Medium"});
  EXPECT_EQ(read({{gnome, "font-name", 's', 0, "Cantarell"}}), DesktopLook{.font = "Cantarell"});
  EXPECT_EQ(read({{"org.gnome.desktop.a11y.interface", "high-contrast", 'b', 1}}), DesktopLook{.isHighContrast = true});
}

TEST_F(DesktopSettingsTest, whatKdeSaysIsRead) {
  EXPECT_EQ(read({{"org.kde.kdeglobals.KDE", "AnimationDurationFactor", 's', 0, "0"}}),
            DesktopLook{.isMotionReduced = true});
  EXPECT_EQ(read({{"org.kde.kdeglobals.General", "font", 's', 0, "Noto Sans,15,-1,5,50,0,0,0,0,0"}}),
            (DesktopLook{.textScale = 1.5, .font = "Noto Sans"}));
  EXPECT_EQ(read({{"org.kde.kdeglobals.General", "font", 's', 0, "Noto Sans"}}), DesktopLook{.font = "Noto Sans"});
}

TEST_F(DesktopSettingsTest, whatHasAnotherTypeIsPassedOver) {
  const std::string shared = "org.freedesktop.appearance";
  EXPECT_EQ(read({{shared, "accent-color", '('},
                  {shared, "contrast", 's', 0, "much"},
                  {shared, "color-scheme", 'u', 1},
                  {"org.gnome.desktop.interface", "font-name", 'd', 11},
                  {"org.kde.kdeglobals.General", "font", 's', 0, ",,,"}}),
            DesktopLook{.isDark = true});
  EXPECT_EQ(read({{shared, "color-scheme", 'u', 1}, {"org.kde.kdeglobals.General", "font", 's', 0, "Inter,nan"}}),
            (DesktopLook{.isDark = true, .font = "Inter"}));
}

TEST_F(DesktopSettingsTest, aChangeIsFollowed) {
  read({{"org.freedesktop.appearance", "color-scheme", 'u', 1}});
  portal.change({"org.freedesktop.appearance", "accent-color", '('});
  portal.change({"org.gnome.desktop.interface", "text-scaling-factor", 'd', 2});
  ASSERT_TRUE(waitFor([&] { return looks.size() == 2; }));
  EXPECT_EQ(looks[1], (DesktopLook{.isDark = true, .textScale = 2}));
  portal.change({"org.freedesktop.appearance", "color-scheme", 'u', 0});
  ASSERT_TRUE(waitFor([&] { return looks.size() == 3; }));
  EXPECT_EQ(looks[2], DesktopLook{.textScale = 2});
  EXPECT_EQ(portal.count("ReadAll"), 1);
}

TEST_F(DesktopSettingsTest, aStrangersChangeIsNotBelieved) {
  read({{"org.freedesktop.appearance", "color-scheme", 'u', 1}});
  sd_bus_message* message = nullptr;
  sd_bus_message_new_signal(other.get(), &message, kPath, kInterface, "SettingChanged");
  const BusMessage signal(message);
  sd_bus_message_append(message, "ssv", "org.freedesktop.appearance", "color-scheme", "u", 0);
  ASSERT_GE(sd_bus_send_to(other.get(), message, portal.caller.c_str(), nullptr), 0);
  ASSERT_TRUE(PrivateBus::isOwned(other.get(), "org.freedesktop.portal.Desktop")) << "it is on its way";
  portal.change({"org.gnome.desktop.interface", "text-scaling-factor", 'd', 2});
  ASSERT_TRUE(waitFor([&] { return looks.size() == 2; }));
  EXPECT_EQ(looks[1], (DesktopLook{.isDark = true, .textScale = 2}));
}

TEST_F(DesktopSettingsTest, aPortalThatStartsLaterIsAsked) {
  portal.vanish();
  open();
  follow(10s);  // the bus says at once that there is none
  Portal later(bus.connect().release());
  later.settings = {{"org.freedesktop.appearance", "color-scheme", 'u', 1}};
  ASSERT_TRUE(PrivateBus::pumpUntil({later.bus()}, [&] {
    settings->connection().process();
    return !looks.empty();
  }));
  EXPECT_TRUE(looks[0].isDark);
}

TEST_F(DesktopSettingsTest, whatWasAnsweredBeforeIsThereWithoutWaiting) {
  portal.settings = {{"org.freedesktop.appearance", "color-scheme", 'u', 1}};
  open();
  ASSERT_TRUE(PrivateBus::pumpUntil({portal.bus()}, [&] { return portal.count("ReadAll") == 1; }));
  EXPECT_EQ(sd_bus_flush(portal.bus()), 0);
  follow(10s);
  EXPECT_EQ(looks, std::vector{DesktopLook{.isDark = true}});
}

TEST_F(DesktopSettingsTest, nobodyWaitsForAPortalThatHangsLongerThanTold) {
  portal.isHung = true;
  open();
  const auto began = std::chrono::steady_clock::now();
  follow(20ms);
  EXPECT_GE(std::chrono::steady_clock::now() - began, 20ms);
  EXPECT_TRUE(looks.empty());
  EXPECT_TRUE(waitFor([&] { return portal.count("ReadAll") == 1; }));
}

TEST_F(DesktopSettingsTest, withoutASessionBusThereIsNothingToFollow) {
  const ScopedVariable nowhere("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
  EXPECT_EQ(DesktopSettings::open(), nullptr);
}

}  // namespace
}  // namespace pillora

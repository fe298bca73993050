// SPDX-License-Identifier: MIT
#include "linux/DesktopSettings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace pillora {

namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";

constexpr const char* kShared = "org.freedesktop.appearance";
constexpr const char* kGnome = "org.gnome.desktop.interface";
constexpr const char* kGnomeAccess = "org.gnome.desktop.a11y.interface";
constexpr const char* kKde = "org.kde.kdeglobals.KDE";
constexpr const char* kKdeGeneral = "org.kde.kdeglobals.General";
constexpr std::array kGroups = {kShared, kGnome, kGnomeAccess, kKde, kKdeGeneral};

/// KDE scales texts by the size of its font alone; this is the size that it comes with.
constexpr double kKdeFontSize = 10;

std::optional<double> numberIn(std::string_view text) {
  double value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isNumber = failure == std::errc() && end == text.data() + text.size() && std::isfinite(value);
  return isNumber ? std::optional(value) : std::nullopt;
}

/// "Cantarell" of "Cantarell 11".
std::string withoutSize(const std::string& font) {
  const size_t blank = font.rfind(' ');
  return blank != std::string::npos && numberIn(font.substr(blank + 1)) ? font.substr(0, blank) : font;
}

/// A field of "Noto Sans,10,-1,5,50,0", the way that KDE writes fonts; empty where there are fewer.
std::string fieldOf(const std::string& font, int field) {
  std::string_view rest = font;
  for (; field > 0; --field) rest.remove_prefix(std::min(rest.find(','), rest.size() - 1) + 1);
  return std::string(rest.substr(0, rest.find(',')));
}

}  // namespace

std::unique_ptr<DesktopSettings> DesktopSettings::open() {
  auto bus = PolledBus::openSession();
  if (bus == nullptr) return nullptr;
  return std::unique_ptr<DesktopSettings>(new DesktopSettings(std::move(bus)));
}

DesktopSettings::DesktopSettings(std::unique_ptr<PolledBus> bus) : bus_(std::move(bus)) {
  bus_->listen(
      "type='signal',sender='" + std::string(kPortal) + "',interface='" + kInterface + "',member='SettingChanged'",
      [this](sd_bus_message* signal) {
        if (senderOf(signal) == portal_) takeChange(signal);
      });
  bus_->awaitService(kPortal, [this] { ask(); });
  ask();
  bus_->flush();
}

void DesktopSettings::follow(Changed changed, std::chrono::milliseconds patience) {
  bus_->processUntil([this] { return isAnswered_; }, after(patience));
  changed_ = std::move(changed);
  if (look_ != DesktopLook()) changed_(look_);
}

void DesktopSettings::ask() {
  const BusMessage call = bus_->newCall(kPortal, kPath, kInterface, "ReadAll");
  sd_bus_message_open_container(call.get(), 'a', "s");
  for (const char* group : kGroups) sd_bus_message_append(call.get(), "s", group);
  sd_bus_message_close_container(call.get());
  bus_->call(call, [this](sd_bus_message* reply) { takeAll(reply); });
}

void DesktopSettings::takeAll(sd_bus_message* reply) {
  isAnswered_ = true;
  if (sd_bus_message_is_method_error(reply, nullptr) != 0) return;
  if (sd_bus_message_enter_container(reply, 'a', "{sa{sv}}") < 0) return;
  portal_ = senderOf(reply);
  said_.clear();
  const char *group = nullptr, *name = nullptr;
  while (sd_bus_message_enter_container(reply, 'e', "sa{sv}") > 0) {
    sd_bus_message_read(reply, "s", &group);
    sd_bus_message_enter_container(reply, 'a', "{sv}");
    while (sd_bus_message_enter_container(reply, 'e', "sv") > 0) {
      sd_bus_message_read(reply, "s", &name);
      takeValue(reply, group, name);
      sd_bus_message_exit_container(reply);
    }
    sd_bus_message_exit_container(reply);
    sd_bus_message_exit_container(reply);
  }
  tell();
}

void DesktopSettings::takeChange(sd_bus_message* signal) {
  const char *group = nullptr, *name = nullptr;
  if (sd_bus_message_read(signal, "ss", &group, &name) <= 0) return;
  if (std::ranges::find(kGroups, std::string_view(group)) == kGroups.end()) return;
  takeValue(signal, group, name);
  tell();
}

/// A variant. Of its types those are kept that settings of interest have; others are passed over.
void DesktopSettings::takeValue(sd_bus_message* message, const std::string& group, const std::string& name) {
  char type = 0;
  const char* contents = nullptr;
  if (sd_bus_message_peek_type(message, &type, &contents) <= 0 || type != 'v' || contents == nullptr) return;
  const std::string_view kind(contents);
  int32_t whole = 0;
  double number = 0;
  const char* text = nullptr;
  int read = 0;
  if (kind == "u" || kind == "i" || kind == "b") {
    read = sd_bus_message_read(message, "v", contents, &whole);
    number = whole;
  } else if (kind == "d") {
    read = sd_bus_message_read(message, "v", "d", &number);
  } else if (kind == "s") {
    read = sd_bus_message_read(message, "v", "s", &text);
  } else {
    sd_bus_message_skip(message, "v");
  }
  if (read > 0) said_[{group, name}] = text != nullptr ? Value(text) : Value(number);
}

double DesktopSettings::number(const char* group, const char* name, double otherwise) const {
  const auto found = said_.find({group, name});
  if (found == said_.end()) return otherwise;
  const double* number = std::get_if<double>(&found->second);
  return number != nullptr ? *number : numberIn(std::get<std::string>(found->second)).value_or(otherwise);
}

std::string DesktopSettings::text(const char* group, const char* name) const {
  const auto found = said_.find({group, name});
  const auto* text = found == said_.end() ? nullptr : std::get_if<std::string>(&found->second);
  return text == nullptr ? std::string() : *text;
}

DesktopLook DesktopSettings::lookSaid() const {
  constexpr double kPreferred = 1;  // 0 is no preference, and 2 of the colours a light one
  const std::string gnomeFont = text(kGnome, "font-name"), kdeFont = text(kKdeGeneral, "font");
  DesktopLook look;
  look.isDark = number(kShared, "color-scheme", 0) == kPreferred;
  look.isHighContrast =
      number(kShared, "contrast", 0) == kPreferred || number(kGnomeAccess, "high-contrast", 0) == kPreferred;
  look.isMotionReduced = number(kShared, "reduced-motion", 0) == kPreferred ||
                         number(kGnome, "enable-animations", 1) == 0 || number(kKde, "AnimationDurationFactor", 1) == 0;
  look.textScale =
      number(kGnome, "text-scaling-factor", 1) * numberIn(fieldOf(kdeFont, 1)).value_or(kKdeFontSize) / kKdeFontSize;
  look.font = kdeFont.empty() ? withoutSize(gnomeFont) : fieldOf(kdeFont, 0);
  return look;
}

void DesktopSettings::tell() {
  const DesktopLook look = lookSaid();
  if (look == look_) return;
  look_ = look;
  if (changed_) changed_(look);
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "agent/ZoneWatch.h"

#include <array>
#include <cstring>
#include <string_view>
#include <sys/epoll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace pillora {

namespace {

/// Reads all events that are waiting; whether one is about `localtime`.
bool takeLocaltimeEvents(int descriptor) {
  bool found = false;
  alignas(inotify_event) std::array<char, 4096> buffer;
  for (;;) {
    const ssize_t size = read(descriptor, buffer.data(), buffer.size());
    if (size <= 0) return found;
    for (size_t place = 0; place < static_cast<size_t>(size);) {
      inotify_event event;
      std::memcpy(&event, buffer.data() + place, sizeof event);
      const char* name = buffer.data() + place + sizeof event;
      if ((event.mask & IN_Q_OVERFLOW) != 0 || (event.len > 0 && std::string_view(name) == "localtime")) found = true;
      place += sizeof event + event.len;
    }
  }
}

}  // namespace

ZoneWatch::ZoneWatch(sd_event* event, const std::string& folder, std::function<void()> changed)
    : changed_(std::move(changed)) {
  watchFolder(event, folder);
  watchService(event);
}

ZoneWatch::~ZoneWatch() {
  source_.reset();
  if (notify_ >= 0) close(notify_);
}

void ZoneWatch::watchFolder(sd_event* event, const std::string& folder) {
  notify_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  // The link is replaced, not written, so the folder is what changes.
  if (notify_ < 0 || inotify_add_watch(notify_, folder.c_str(), IN_CREATE | IN_MOVED_TO | IN_CLOSE_WRITE) < 0) return;
  sd_event_source* source = nullptr;
  const auto happened = [](sd_event_source*, int descriptor, uint32_t, void* self) {
    if (takeLocaltimeEvents(descriptor)) static_cast<ZoneWatch*>(self)->changed_();
    return 0;
  };
  if (sd_event_add_io(event, &source, notify_, EPOLLIN, happened, this) >= 0) source_.reset(source);
}

void ZoneWatch::watchService(sd_event* event) {
  sd_bus* bus = nullptr;
  if (sd_bus_open_system(&bus) < 0) return;
  system_.reset(bus);
  const auto happened = [](sd_bus_message*, void* self, sd_bus_error*) {
    static_cast<ZoneWatch*>(self)->changed_();
    return 0;
  };
  sd_bus_slot* slot = nullptr;
  const int matched = sd_bus_match_signal(bus, &slot, "org.freedesktop.timedate1", "/org/freedesktop/timedate1",
                                          "org.freedesktop.DBus.Properties", "PropertiesChanged", happened, this);
  if (matched < 0 || sd_bus_attach_event(bus, event, SD_EVENT_PRIORITY_NORMAL) < 0) {
    system_.reset();
    return;
  }
  slot_.reset(slot);
}

}  // namespace pillora

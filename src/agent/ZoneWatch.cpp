// SPDX-License-Identifier: MIT
#include "agent/ZoneWatch.h"

#include <sys/epoll.h>

namespace pillora {

ZoneWatch::ZoneWatch(sd_event* event, const std::string& folder, std::function<void()> changed)
    : changed_(std::move(changed)) {
  watchFolder(event, folder);
  watchService(event);
}

void ZoneWatch::watchFolder(sd_event* event, const std::string& folder) {
  // The link is replaced, not written, so the folder is what changes.
  auto opened = FolderWatch::open(folder);
  if (!opened) return;
  folder_ = *std::move(opened);
  sd_event_source* source = nullptr;
  const auto happened = [](sd_event_source*, int, uint32_t, void* context) {
    const auto& self = *static_cast<ZoneWatch*>(context);
    if (self.folder_->takeChanges({"localtime"})) self.changed_();
    return 0;
  };
  if (sd_event_add_io(event, &source, folder_->descriptor(), EPOLLIN, happened, this) >= 0) source_.reset(source);
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

// SPDX-License-Identifier: MIT
#include "support/FolderWatch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sys/inotify.h>
#include <system_error>
#include <unistd.h>

namespace pillora {

Result<std::unique_ptr<FolderWatch>> FolderWatch::open(const std::string& folder) {
  const auto failure = [&folder] {
    return Error{folder + " cannot be watched: " + std::generic_category().message(errno)};
  };
  const int descriptor = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (descriptor < 0) return failure();
  std::unique_ptr<FolderWatch> watch(new FolderWatch(descriptor));
  const uint32_t changes = IN_MODIFY | IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE;
  if (inotify_add_watch(descriptor, folder.c_str(), changes) < 0) return failure();
  return watch;
}

FolderWatch::~FolderWatch() { close(descriptor_); }

bool FolderWatch::takeChanges(const std::vector<std::string_view>& names) {
  bool found = false;
  alignas(inotify_event) std::array<char, 4096> buffer;
  for (;;) {
    const ssize_t size = read(descriptor_, buffer.data(), buffer.size());
    if (size <= 0) return found;
    for (size_t place = 0; place < static_cast<size_t>(size);) {
      inotify_event event;
      std::memcpy(&event, buffer.data() + place, sizeof event);
      const char* name = event.len > 0 ? buffer.data() + place + sizeof event : "";
      if ((event.mask & IN_Q_OVERFLOW) != 0 || std::ranges::find(names, name) != names.end()) found = true;
      place += sizeof event + event.len;
    }
  }
}

}  // namespace pillora

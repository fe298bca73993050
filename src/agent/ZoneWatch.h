// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "agent/Bus.h"
#include "support/FolderWatch.h"

namespace pillora {

/// Notices that the system's time zone may have changed: `localtime` in the folder given was replaced, or the
/// system's time service says so. A system without one of them is watched by the other.
class ZoneWatch {
 public:
  ZoneWatch(sd_event* event, const std::string& folder, std::function<void()> changed);
  ZoneWatch(const ZoneWatch&) = delete;
  ZoneWatch& operator=(const ZoneWatch&) = delete;

 private:
  void watchFolder(sd_event* event, const std::string& folder);
  void watchService(sd_event* event);

  std::function<void()> changed_;
  std::unique_ptr<FolderWatch> folder_;
  SourceHandle source_;
  SlotHandle slot_;
  BusHandle system_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "support/Observers.h"
#include "support/UserInfo.h"

namespace pillora {

/// Named messages from one part of the process to whichever others listen: the sender does not know whom it reaches,
/// and a broadcast that nobody listens to is gone. May be used from any thread.
class BroadcastCentre {
 public:
  /// Calls `observer` for every broadcast of this name until the returned handle is gone, on the thread that posts.
  [[nodiscard]] std::shared_ptr<void> observe(std::string_view name, std::function<void(const UserInfo&)> observer);

  /// Returns when every observer has been called.
  void post(std::string_view name, const UserInfo& userInfo) const;

 private:
  mutable std::mutex mutex_;
  std::map<std::string, Observers<const UserInfo&>, std::less<>> observers_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "support/BroadcastCentre.h"

#include <utility>

namespace pillora {

std::shared_ptr<void> BroadcastCentre::observe(std::string_view name, std::function<void(const UserInfo&)> observer) {
  const std::lock_guard lock(mutex_);
  return observers_[std::string(name)].add(std::move(observer));
}

void BroadcastCentre::post(std::string_view name, const UserInfo& userInfo) const {
  Observers<const UserInfo&> listening;
  {
    const std::lock_guard lock(mutex_);
    if (const auto found = observers_.find(name); found != observers_.end()) listening = found->second;
  }
  // Outside the lock, so that an observer may observe and post.
  listening.notify(userInfo);
}

}  // namespace pillora

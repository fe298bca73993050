// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace pillora {

/// Those who want to hear of something. Each is called until the handle that it was given is gone, in the order in
/// which they came. Not for use from several threads at once.
template <typename... Arguments>
class Observers {
 public:
  using Observer = std::function<void(Arguments...)>;

  [[nodiscard]] std::shared_ptr<void> add(Observer observer) {
    std::erase_if(observers_, [](const auto& each) { return each.expired(); });
    auto kept = std::make_shared<Observer>(std::move(observer));
    observers_.push_back(kept);
    return kept;
  }

  /// Observers may come and go meanwhile: who comes is not called yet, who is gone is not called any more.
  void notify(const Arguments&... arguments) const {
    for (const auto& each : std::vector(observers_)) {
      if (const auto observer = each.lock()) (*observer)(arguments...);
    }
  }

 private:
  std::vector<std::weak_ptr<Observer>> observers_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "agent/Presenter.h"

namespace pillora {

/// A notification server in memory: it keeps what stands on the screen by number and writes down what it was handed.
/// On demand it holds its completions back, fails, or numbers bubbles itself.
class RecordingPresenter final : public Presenter {
 public:
  enum class Manner { shows, answersLate, fails, wantsNone };

  Manner manner = Manner::shows;
  std::string name = "server 1";
  uint32_t ownNumber = 0;  ///< when set, bubbles get this number and those after it

  std::vector<Delivery> deliveries;
  int64_t badge = 0;

  std::string server() const override { return name; }
  void showBadge(int64_t count) override { badge = count; }

  void show(const Delivery& delivery, std::function<void(Result<uint32_t>)> completion) override {
    deliveries.push_back(delivery);
    switch (manner) {
      case Manner::shows:
        return completion(ownNumber == 0 ? delivery.bubble : ownNumber++);
      case Manner::answersLate:
        held_.push_back([completion, number = delivery.bubble] { completion(number); });
        return;
      case Manner::fails:
        return completion(Error{"no server"});
      case Manner::wantsNone:
        return completion(0);
    }
  }

  void release() {
    for (const auto& completion : std::exchange(held_, {})) completion();
  }

  /// The identifiers shown since the last call.
  std::vector<std::string> takeShown() {
    std::vector<std::string> identifiers;
    for (const Delivery& each : std::exchange(deliveries, {})) identifiers.push_back(each.request.identifier);
    return identifiers;
  }

 private:
  std::deque<std::function<void()>> held_;
};

}  // namespace pillora

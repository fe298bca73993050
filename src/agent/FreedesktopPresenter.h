// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "agent/AppLink.h"
#include "agent/Bus.h"
#include "agent/Presenter.h"

namespace pillora {

/// What hears of answers in bubbles. Numbers are as the server gave them; it may know bubbles that are not ours.
class BubbleObserver {
 public:
  virtual ~BubbleObserver() = default;

  virtual void bubbleAnswered(uint32_t bubble, const std::string& server, const std::string& action,
                              const std::string& activationToken) = 0;
  virtual void bubbleClosed(uint32_t bubble, const std::string& server) = 0;
  /// A notification server has come up.
  virtual void serverAppeared() = 0;
};

/// Shows through the desktop's notification server, by the Desktop Notifications Specification 1.2
/// (org.freedesktop.Notifications). Signals count only when they come from the owner of that name.
class FreedesktopPresenter final : public Presenter {
 public:
  /// Bus, app and observer must outlive the presenter.
  FreedesktopPresenter(sd_bus* bus, AppLink& app, BubbleObserver& observer);

  /// Subscribes to the server's signals and finds out who it is.
  Result<void> start();

  /// The bus's identity and the server's place on it, so that numbers of a server that is gone are told apart.
  std::string server() const override;
  void show(const Delivery& delivery, std::function<void(Result<uint32_t>)> completion) override;
  void showBadge(int64_t count) override { app_.showBadge(count); }
  /// Takes a bubble off the screen. Some servers leave it there after an answer.
  void close(uint32_t bubble);

  /// Whether there is a server, or one that the bus can start. The completion comes exactly once.
  void findServer(std::function<void(Result<void>)> completion);

 private:
  using Capabilities = std::set<std::string, std::less<>>;

  static int ownerChanged(sd_bus_message* signal, void* self, sd_bus_error*);
  static int signalCame(sd_bus_message* signal, void* self, sd_bus_error*);
  void ownerBecame(const std::string& owner);
  void deliver(const Delivery& delivery, unsigned options, const std::function<void(Result<uint32_t>)>& completion);
  void notify(const Delivery& delivery, unsigned options, std::function<void(Result<uint32_t>)> completion);
  MessageHandle notifyCall(const Delivery& delivery, unsigned options) const;

  sd_bus* bus_;
  AppLink& app_;
  BubbleObserver& observer_;
  std::string owner_;                         ///< the server's unique name; empty when there is none
  std::optional<Capabilities> capabilities_;  ///< of this owner
  std::map<uint32_t, std::string> tokens_;    ///< activation tokens that came ahead of their answers
  SlotHandle ownerSlot_, signalSlot_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "agent/AgentService.h"
#include "agent/AppLink.h"
#include "agent/Bus.h"
#include "agent/Engine.h"
#include "agent/FreedesktopPresenter.h"
#include "agent/WakeTimer.h"
#include "platform/Clock.h"

namespace pillora {

/// The agent: the engine between the bus, the notification server, the app and the timer. Between due times it does
/// nothing at all.
class Agent final : private BubbleObserver {
 public:
  struct Environment {
    sd_bus* bus;
    const Clock& clock;
    WakeTimer& timer;
    ZoneRules& zone;
    TaskLauncher& launcher;
  };

  /// Opens the file, takes the agent's name on the bus and shows what fell due meanwhile. Everything handed in must
  /// outlive the agent. Null when another agent has the name.
  static Result<std::unique_ptr<Agent>> start(const Environment& environment, const std::string& file);

  /// What is due is shown, and the timer armed for what comes next. Called by the timer.
  void wake();
  /// The system's time zone may have changed.
  void zoneChanged();
  /// Gives the name back and keeps what was asked of it until then, for a program that ends: whoever asked is answered.
  /// Nothing is shown and nothing launched any more. The bus must not have been closed.
  void retire();

 private:
  explicit Agent(const Environment& environment);

  void bubbleAnswered(uint32_t bubble, const std::string& server, const std::string& action,
                      const std::string& activationToken) override;
  void bubbleClosed(uint32_t bubble, const std::string& server) override;
  void serverAppeared() override { wake(); }

  Environment environment_;
  bool isRetiring_ = false;
  AppLink app_;
  FreedesktopPresenter presenter_;
  std::unique_ptr<Engine> engine_;
  std::unique_ptr<AgentService> service_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "agent/AgentFixture.h"
#include "agent/StandIn.h"

namespace pillora {

/// A running agent with a notification server, a client and a registered category.
class AgentTest : public ::testing::Test {
 protected:
  void SetUp() override {
    world.startServer();
    world.startAgent();
    world.connectClient();
    world.client->setNotificationCategories({reminderCategory()});
    world.settle();
  }

  /// Waits with the stand-in taking part.
  bool waitWith(StandIn& app, const std::function<bool()>& happened) {
    return PrivateBus::pumpUntil({world.own.get(), world.server->bus(), app.bus()}, happened);
  }
  const Notified& lastNotified() { return world.server->notified.back(); }

  AgentWorld world;
};

}  // namespace pillora

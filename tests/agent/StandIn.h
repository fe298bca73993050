// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "agent/AppEndpoint.h"
#include "agent/Bus.h"

namespace pillora {

/// A stand-in that owns the app's bus name and writes down what reaches it.
class StandIn final : public UNUserNotificationCenterDelegate {
 public:
  explicit StandIn(BusHandle bus) : bus_(std::move(bus)), endpoint_(bus_.get()) {
    endpoint_.setDelegate(this);
    const auto started = endpoint_.start({[this] { return isActive; },
                                          [this](const Activation& activation) {
                                            actions.push_back(activation.action);
                                            activations.push_back(activation.token);
                                          }});
    EXPECT_TRUE(started);
  }

  bool isActive = true;
  unsigned options = 19;
  std::vector<std::string> asked, answers;
  std::vector<std::string> activations, actions;  ///< the token of each, and what it asked for

  sd_bus* bus() const { return bus_.get(); }

  void willPresent(const UNNotificationRequest& request, const std::function<void(unsigned)>& completion) override {
    asked.push_back(request.identifier);
    completion(options);
  }
  void didReceive(const UNNotificationResponse& response, const std::function<void()>& completion) override {
    answers.push_back(response.request.identifier + " " + response.actionIdentifier);
    completion();
  }

 private:
  BusHandle bus_;
  AppEndpoint endpoint_;
};

}  // namespace pillora

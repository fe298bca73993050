// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "agent/PrivateBus.h"
#include "linux/AuthenticationServices.h"
#include "linux/DeviceOwnerAuthentication.h"

namespace pillora {

/// A system bus of the test's own with both services on it. The test's thread works for the services, whoever is
/// tested works on others.
class DeviceOwnerTest : public ::testing::Test {
 protected:
  static constexpr auto kFinger = LAPolicy::deviceOwnerAuthenticationWithBiometrics;
  static constexpr auto kOwner = LAPolicy::deviceOwnerAuthentication;

  /// What came of an evaluation. Its reply comes on another thread.
  struct Outcome {
    std::mutex mutex;
    int replies = 0;
    bool success = false;
    std::string error;
    std::thread::id thread;
  };

  DeviceOwnerTest() { setenv("DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str(), 1); }
  ~DeviceOwnerTest() override { unsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }

  bool waitFor(const std::function<bool()>& happened) {
    std::vector<sd_bus*> connections;
    for (sd_bus* each : {reader.bus(), polkit.bus()}) {
      if (each != nullptr) connections.push_back(each);
    }
    return PrivateBus::pumpUntil(connections, happened);
  }
  bool waitForCall(const StandInService& service, const std::string& call, int times = 1) {
    return waitFor([&] { return service.count(call) >= times; });
  }
  /// What `work` answers while the services go on.
  template <typename Work>
  auto whileServed(Work work) {
    auto working = std::async(std::launch::async, work);
    EXPECT_TRUE(waitFor([&] { return working.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    return working.get();
  }
  Result<void> can(LAPolicy policy) {
    return whileServed([&] { return device->contextFactory()()->canEvaluatePolicy(policy); });
  }

  /// Begins an evaluation with a context of its own.
  std::unique_ptr<LAContext> ask(LAPolicy policy, Outcome& outcome) {
    auto context = device->contextFactory()();
    context->evaluatePolicy(policy, "a reason", [&outcome](bool success, const std::optional<Error>& error) {
      const std::lock_guard lock(outcome.mutex);
      ++outcome.replies;
      outcome.success = success;
      outcome.error = error ? error->description : "";
      outcome.thread = std::this_thread::get_id();
    });
    return context;
  }
  /// "success", or the error.
  std::string resultOf(Outcome& outcome) {
    const auto replied = [&] {
      const std::lock_guard lock(outcome.mutex);
      return outcome.replies > 0;
    };
    if (!waitFor(replied)) return "no reply";
    const std::lock_guard lock(outcome.mutex);
    EXPECT_EQ(outcome.replies, 1);
    EXPECT_EQ(outcome.success, outcome.error.empty());
    return outcome.success ? "success" : outcome.error;
  }
  void make(DeviceOwnerAuthentication::Options options) {
    device = std::make_unique<DeviceOwnerAuthentication>(std::move(options));
  }

  PrivateBus bus;
  FingerprintService reader{bus.connect().release()};
  PolkitService polkit{bus.connect().release()};
  std::unique_ptr<DeviceOwnerAuthentication> device = std::make_unique<DeviceOwnerAuthentication>();
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/LAContext.h"

namespace pillora {

/// Asks for the device's owner: biometrics through fprintd, and biometrics or passcode through polkit, or through
/// fprintd alone where there is no polkit. Each prompt waits on a thread and a bus connection of its own, so it works
/// under any main loop and under none; replies come on that thread.
///
/// One prompt is open at a time: who asks meanwhile, by whatever policy, gets its result. It is taken down when no
/// context waits for it any more, when a context that waits for it is invalidated, or when its time is over.
class DeviceOwnerAuthentication {
 public:
  struct Options {
    std::chrono::milliseconds check = std::chrono::seconds(1);  ///< for canEvaluatePolicy()
    /// For a finger: nobody sees that the reader waits, so the passcode's prompt comes soon.
    std::chrono::milliseconds finger = std::chrono::seconds(30);
    std::chrono::milliseconds prompt = std::chrono::minutes(5);  ///< for a prompt on the screen
    /// For a program at a terminal: "pkttyagent", which shows the prompt there where nobody else shows it.
    std::string terminalAgent = {};
  };

  DeviceOwnerAuthentication() : DeviceOwnerAuthentication(Options()) {}
  explicit DeviceOwnerAuthentication(Options options) : options_(std::move(options)) {}
  /// Takes an open prompt down and waits for its end.
  ~DeviceOwnerAuthentication();

  /// Contexts must go before the device does; on the main thread alone, like all else here. One that is only asked
  /// whether it can evaluate may live on any thread.
  LAContextFactory contextFactory();

 private:
  class Context;
  struct Prompt;

  Result<void> canEvaluate(LAPolicy policy) const;
  void ask(const Context& context, LAPolicy policy, LAContext::Reply reply);
  void cancel(const Context& context);
  void withdraw(const Context& context);
  void run(const std::shared_ptr<Prompt>& prompt, LAPolicy policy);

  Options options_;
  std::mutex mutex_;  ///< guards `open_` and the list of those who wait for it
  std::shared_ptr<Prompt> open_;
  std::thread thread_;  ///< of the last prompt; it ends after those before it
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <list>
#include <memory>

#include "platform/Console.h"
#include "platform/LAContext.h"
#include "platform/MainExecutor.h"
#include "platform/Texts.h"
#include "store/ModelContainer.h"
#include "support/Observers.h"

namespace pillora {

/// What the manager works with. All of it outlives the manager.
struct AuthenticationEnvironment {
  LAContextFactory makeContext;
  const Texts& texts;
  MainExecutor& executor;
  Console& console;
};

/// Knows whether the app is locked behind the device owner's authentication, and runs it: biometrics first, and the
/// passcode when these fail or cannot be used. Nothing starts locked; the setting is what locks (see ContentView).
///
/// Main thread only. Replies come on any thread and are acted on in a later turn of the main thread. Refusals and
/// errors of the device are neither shown nor printed: the app stays locked and may ask again.
class AuthenticationManager {
 public:
  explicit AuthenticationManager(AuthenticationEnvironment environment);

  /// The owner has authenticated since the app last went to the background.
  bool isUnlocked() const { return isUnlocked_; }
  /// A biometric evaluation is under way.
  bool isAuthenticating() const { return isAuthenticating_; }
  /// The setting as of the last check.
  bool requiresAuth() const { return requiresAuth_; }
  /// Whether any reply, also one to the passcode's prompt, is still to come.
  bool isAwaitingReply() const { return !evaluations_.empty(); }

  /// Reads the setting from the first settings record and begins to authenticate where that is required and not done.
  /// Without a record nothing changes; nor when the store cannot be read, which is printed.
  void checkAuthenticationRequirement(ModelContainer& container);
  /// Asks the owner. Asking again while a prompt is open is harmless: the device shows one prompt at a time.
  void authenticate();
  /// The owner would rather use the passcode: ends the biometric evaluation, and the passcode's prompt follows.
  void cancelBiometrics();
  /// The app went to the background. Where authentication is required it is locked again, open prompts are taken down,
  /// and no answer to them counts any more.
  void relock();

  /// Calls `observer` when isUnlocked() or isAuthenticating() has changed, until the returned handle is gone.
  [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> observer);

 private:
  /// A prompt whose reply is awaited. One that is not in the list any more is not heard.
  struct Evaluation {
    std::unique_ptr<LAContext> context;
    LAPolicy policy;
  };

  void evaluate(std::unique_ptr<LAContext> context, LAPolicy policy);
  void replied(LAPolicy policy, bool success);
  void set(bool& property, bool value);

  AuthenticationEnvironment environment_;
  bool isUnlocked_ = false, isAuthenticating_ = false, requiresAuth_ = false;
  std::list<std::shared_ptr<Evaluation>> evaluations_;
  Observers<> observers_;
};

}  // namespace pillora

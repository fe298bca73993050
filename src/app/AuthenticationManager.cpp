// SPDX-License-Identifier: MIT
#include "app/AuthenticationManager.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace pillora {

AuthenticationManager::AuthenticationManager(AuthenticationEnvironment environment)
    : environment_(std::move(environment)) {}

void AuthenticationManager::checkAuthenticationRequirement(ModelContainer& container) {
  const auto settings = container.mainContext().fetch<AppSettings>();
  if (!settings) return environment_.console.print("Error checking auth settings: " + settings.error().description);
  if (settings->empty()) return;
  requiresAuth_ = settings->front()->requireAuthentication();
  if (requiresAuth_ && !isUnlocked_) authenticate();
}

void AuthenticationManager::authenticate() {
  auto context = environment_.makeContext();
  if (!context->canEvaluatePolicy(LAPolicy::deviceOwnerAuthenticationWithBiometrics)) {
    return evaluate(environment_.makeContext(), LAPolicy::deviceOwnerAuthentication);
  }
  set(isAuthenticating_, true);
  evaluate(std::move(context), LAPolicy::deviceOwnerAuthenticationWithBiometrics);
}

void AuthenticationManager::evaluate(std::unique_ptr<LAContext> context, LAPolicy policy) {
  const auto evaluation = std::make_shared<Evaluation>(Evaluation{std::move(context), policy});
  evaluations_.push_back(evaluation);
  // The list is the only one to hold the evaluation for long: once it is out of there, or the manager is gone with the
  // list, a reply finds nobody.
  evaluation->context->evaluatePolicy(policy, environment_.texts.text("Unlock Pillora to view your medications"),
                                      [this, &executor = environment_.executor, awaited = std::weak_ptr(evaluation)](
                                          bool success, const std::optional<Error>&) {
                                        executor.post([this, awaited, success] {
                                          const auto answered = awaited.lock();
                                          if (!answered) return;
                                          evaluations_.remove(answered);
                                          replied(answered->policy, success);
                                        });
                                      });
}

void AuthenticationManager::replied(LAPolicy policy, bool success) {
  set(isAuthenticating_, false);
  if (policy == LAPolicy::deviceOwnerAuthentication) return set(isUnlocked_, success);
  if (success) return set(isUnlocked_, true);
  evaluate(environment_.makeContext(), LAPolicy::deviceOwnerAuthentication);
}

void AuthenticationManager::cancelBiometrics() {
  const std::vector open(evaluations_.begin(), evaluations_.end());
  for (const auto& each : open) {
    if (each->policy == LAPolicy::deviceOwnerAuthenticationWithBiometrics) each->context->invalidate();
  }
}

void AuthenticationManager::relock() {
  if (!requiresAuth_) return;
  evaluations_.clear();
  set(isAuthenticating_, false);
  set(isUnlocked_, false);
}

void AuthenticationManager::set(bool& property, bool value) {
  if (std::exchange(property, value) != value) observers_.notify();
}

std::shared_ptr<void> AuthenticationManager::observe(std::function<void()> observer) {
  return observers_.add(std::move(observer));
}

}  // namespace pillora

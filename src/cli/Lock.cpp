// SPDX-License-Identifier: MIT
#include <memory>
#include <utility>

#include "app/AuthenticationManager.h"
#include "cli/Session.h"

namespace pillora {

namespace {

/// What `--authenticator` answers in place of the device's owner.
class AnsweringContext final : public LAContext {
 public:
  explicit AnsweringContext(bool allows) : allows_(allows) {}

  Result<void> canEvaluatePolicy(LAPolicy policy) override {
    if (policy == LAPolicy::deviceOwnerAuthentication) return {};
    return Error{"there are no biometrics"};
  }
  void evaluatePolicy(LAPolicy, const std::string&, Reply reply) override { reply(allows_, std::nullopt); }
  void invalidate() override {}

 private:
  bool allows_;
};

}  // namespace

Result<bool> Session::unlock() {
  const auto context = openStore();
  if (!context) return context.error();
  const auto settings = (*context)->fetch(FetchDescriptor<AppSettings>().limitedTo(1));
  if (!settings) return settings.error();
  if (settings->empty() || !settings->front()->requireAuthentication()) return true;
  if (!line_.store && line_.noPrompt) return false;

  const bool allows = line_.authenticator == "allow";
  const LAContextFactory answering = [allows] { return std::make_unique<AnsweringContext>(allows); };
  AuthenticationManager manager({line_.store ? answering : environment_.deviceOwner.makeContext, texts(),
                                 environment_.executor, environment_.console});
  const auto telling = manager.observe([&] {
    // A fingerprint reader shows no prompt of its own.
    if (manager.isAuthenticating()) environment_.deviceOwner.tell(texts().text("Touch the fingerprint reader"));
  });
  manager.checkAuthenticationRequirement(*container_);
  while (manager.isAwaitingReply()) environment_.deviceOwner.await();
  return manager.isUnlocked();
}

std::string Session::lockedText() const {
  if (line_.store) return "the store is locked, and --authenticator allow is not there to open it";
  if (line_.noPrompt) return "Pillora is locked";
  const auto possible = environment_.deviceOwner.makeContext()->canEvaluatePolicy(LAPolicy::deviceOwnerAuthentication);
  return possible ? "Pillora is locked, and its owner did not authenticate"
                  : "Pillora is locked, and this device cannot ask for its owner: " + possible.error().description;
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/LAContext.h"

namespace pillora {

/// A device whose owner does as a test says: prompts stay open until they are answered, on the thread that answers.
class ScriptedAuthenticator {
 public:
  /// One prompt. It stays on record after its context is gone.
  struct Prompt {
    LAPolicy policy;
    std::string reason;
    LAContext::Reply reply;
    bool isTakenDown = false;  ///< its context is gone
    bool isAnswered = false;

    void answer(bool success) {
      isAnswered = true;
      reply(success, success ? std::nullopt : std::optional(Error{"cancelled"}));
    }
  };

  bool hasBiometrics = true, hasPasscode = true;
  std::vector<std::shared_ptr<Prompt>> prompts;  ///< every one that was ever opened, in order
  int contexts = 0;                              ///< how many were ever made

  LAContextFactory factory() {
    return [this] {
      ++contexts;
      return std::make_unique<Context>(*this);
    };
  }
  Prompt& last() { return *prompts.back(); }
  /// The policies of all prompts, a letter each: "b"iometrics or "o"wner.
  std::string asked() const {
    std::string letters;
    for (const auto& each : prompts) letters += each->policy == LAPolicy::deviceOwnerAuthentication ? 'o' : 'b';
    return letters;
  }

 private:
  class Context final : public LAContext {
   public:
    explicit Context(ScriptedAuthenticator& device) : device_(device) {}
    ~Context() override {
      for (const auto& each : mine_) each->isTakenDown = true;
    }

    Result<void> canEvaluatePolicy(LAPolicy policy) override {
      if (policy == LAPolicy::deviceOwnerAuthenticationWithBiometrics && !device_.hasBiometrics) {
        return Error{"no fingerprints are enrolled"};
      }
      if (policy == LAPolicy::deviceOwnerAuthentication && !device_.hasPasscode) return Error{"there is no passcode"};
      return {};
    }
    void evaluatePolicy(LAPolicy policy, const std::string& localizedReason, Reply reply) override {
      mine_.push_back(std::make_shared<Prompt>(Prompt{policy, localizedReason, std::move(reply)}));
      device_.prompts.push_back(mine_.back());
    }
    void invalidate() override {
      for (const auto& each : mine_) {
        if (!each->isAnswered) each->answer(false);
      }
    }

   private:
    ScriptedAuthenticator& device_;
    std::vector<std::shared_ptr<Prompt>> mine_;
  };
};

}  // namespace pillora

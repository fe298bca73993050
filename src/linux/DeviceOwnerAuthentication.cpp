// SPDX-License-Identifier: MIT
#include "linux/DeviceOwnerAuthentication.h"

#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

#include "linux/Fingerprint.h"
#include "linux/SystemBus.h"
#include "linux/TerminalAgent.h"
#include "linux/UnlockAction.h"

namespace pillora {

/// A prompt and those who wait for its result.
struct DeviceOwnerAuthentication::Prompt {
  struct Waiting {
    const Context* context;
    LAContext::Reply reply;
  };

  Prompt() : cancelled(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
  ~Prompt() { close(cancelled); }
  Prompt(const Prompt&) = delete;
  Prompt& operator=(const Prompt&) = delete;

  void cancel() const { eventfd_write(cancelled, 1); }

  const int cancelled;  ///< readable once nobody wants the prompt any more
  std::vector<Waiting> waiting;
};

class DeviceOwnerAuthentication::Context final : public LAContext {
 public:
  explicit Context(DeviceOwnerAuthentication& device) : device_(device) {}
  ~Context() override { device_.withdraw(*this); }

  Result<void> canEvaluatePolicy(LAPolicy policy) override { return device_.canEvaluate(policy); }
  void evaluatePolicy(LAPolicy policy, const std::string&, Reply reply) override {
    device_.ask(*this, policy, std::move(reply));
  }
  void invalidate() override { device_.cancel(*this); }

 private:
  DeviceOwnerAuthentication& device_;
};

namespace {

using Options = DeviceOwnerAuthentication::Options;

Result<void> evaluate(LAPolicy policy, int cancelled, const Options& options) {
  const auto bus = SystemBus::open(cancelled);
  if (!bus) return bus.error();
  if (policy == LAPolicy::deviceOwnerAuthentication && canAuthorizeUnlock(**bus, after(options.check))) {
    std::optional<TerminalAgent> agent;
    if (!options.terminalAgent.empty()) agent.emplace(options.terminalAgent);
    return authorizeUnlock(**bus, after(options.prompt));
  }
  return verifyFingerprint(**bus, after(options.finger));
}

}  // namespace

DeviceOwnerAuthentication::~DeviceOwnerAuthentication() {
  {
    const std::lock_guard lock(mutex_);
    if (open_) open_->cancel();
  }
  if (thread_.joinable()) thread_.join();
}

LAContextFactory DeviceOwnerAuthentication::contextFactory() {
  return [this] { return std::make_unique<Context>(*this); };
}

Result<void> DeviceOwnerAuthentication::canEvaluate(LAPolicy policy) const {
  const auto bus = SystemBus::open();
  if (!bus) return bus.error();
  const Deadline deadline = after(options_.check);
  const bool isFingerEnough = policy == LAPolicy::deviceOwnerAuthenticationWithBiometrics;
  if (isFingerEnough) return canVerifyFingerprint(**bus, deadline);
  const auto byPolkit = canAuthorizeUnlock(**bus, deadline);
  if (byPolkit) return {};
  const auto byFinger = canVerifyFingerprint(**bus, deadline);
  if (byFinger) return {};
  return Error{byPolkit.error().description + "; " + byFinger.error().description};
}

void DeviceOwnerAuthentication::ask(const Context& context, LAPolicy policy, LAContext::Reply reply) {
  const std::lock_guard lock(mutex_);
  const bool isOpen = open_ != nullptr;
  if (!isOpen) open_ = std::make_shared<Prompt>();
  open_->waiting.push_back({&context, std::move(reply)});
  if (isOpen) return;
  // A prompt that was taken down may still be busy tidying up. The next one waits for that, not its caller.
  thread_ = std::thread([this, former = std::move(thread_), prompt = open_, policy]() mutable {
    if (former.joinable()) former.join();
    run(prompt, policy);
  });
}

void DeviceOwnerAuthentication::run(const std::shared_ptr<Prompt>& prompt, LAPolicy policy) {
  const auto result = evaluate(policy, prompt->cancelled, options_);
  std::vector<Prompt::Waiting> waiting;
  {
    const std::lock_guard lock(mutex_);
    waiting.swap(prompt->waiting);
    if (open_ == prompt) open_.reset();
  }
  for (const auto& each : waiting) {
    each.reply(static_cast<bool>(result), result ? std::nullopt : std::optional(result.error()));
  }
}

void DeviceOwnerAuthentication::cancel(const Context& context) {
  const std::lock_guard lock(mutex_);
  if (!open_) return;
  for (const auto& each : open_->waiting) {
    if (each.context == &context) return open_->cancel();
  }
}

void DeviceOwnerAuthentication::withdraw(const Context& context) {
  const std::lock_guard lock(mutex_);
  if (!open_) return;
  const auto removed = std::erase_if(open_->waiting, [&](const auto& each) { return each.context == &context; });
  if (removed == 0 || !open_->waiting.empty()) return;
  open_->cancel();
  open_.reset();
}

}  // namespace pillora

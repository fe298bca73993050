// SPDX-License-Identifier: MIT
#include "agent/Agent.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace pillora {

namespace {

constexpr std::chrono::seconds kAppPatience{2};
/// How long to leave a failing file alone.
constexpr std::chrono::minutes kAfterFailure{1};
/// The key of a click on the bubble itself.
constexpr const char* kDefaultAction = "default";

void report(const Error& failure) { std::fprintf(stderr, "pillora-agent: %s\n", failure.description.c_str()); }

bool opensTheApp(const std::string& action, const std::vector<UNNotificationCategory>& categories,
                 const std::string& category) {
  if (action == kDefaultAction) return true;
  for (const UNNotificationCategory& each : categories) {
    if (each.identifier != category) continue;
    return std::ranges::any_of(each.actions,
                               [&](const auto& one) { return one.identifier == action && one.foreground; });
  }
  return false;
}

}  // namespace

Agent::Agent(const Environment& environment)
    : environment_(environment), app_(environment.bus, kAppPatience), presenter_(environment.bus, app_, *this) {}

Result<std::unique_ptr<Agent>> Agent::start(const Environment& environment, const std::string& file) {
  const auto owned = isOwned(environment.bus, kAgentName);
  if (!owned) return owned.error();
  if (*owned) return std::unique_ptr<Agent>();
  std::unique_ptr<Agent> agent(new Agent(environment));
  if (const auto started = agent->presenter_.start(); !started) return started.error();
  auto engine = Engine::open(file, environment.clock, environment.zone, agent->presenter_, environment.launcher);
  if (!engine) return engine.error();
  agent->engine_ = *std::move(engine);
  agent->service_ = std::make_unique<AgentService>(environment.bus, *agent->engine_, agent->presenter_,
                                                   [self = agent.get()] { self->wake(); });
  if (const auto started = agent->service_->start(); !started) return started.error();
  // Only now, so that whoever finds the name finds an agent that keeps what it is told.
  const int named = sd_bus_request_name(environment.bus, kAgentName, 0);
  if (named == -EEXIST) return std::unique_ptr<Agent>();
  if (named < 0) return busError(kAgentName, named);
  environment.timer.onWake([self = agent.get()] { self->wake(); });
  agent->presenter_.showBadge(agent->engine_->badge());
  agent->wake();
  return agent;
}

void Agent::wake() {
  if (isRetiring_) return;
  const auto advanced = engine_->advance();
  auto next = engine_->nextDeadline();
  if (!advanced) {
    report(advanced.error());
    const Instant later = environment_.clock.now() + kAfterFailure;
    next = next ? std::max(*next, later) : later;
  } else {
    for (const std::string& request : advanced->unreadable) report({"damaged in the file: " + request});
    for (const std::string& task : advanced->notLaunched) report({"could not start " + task});
  }
  environment_.timer.arm(next);
}

void Agent::zoneChanged() {
  if (const auto computed = engine_->zoneChanged(); !computed) report(computed.error());
  wake();
}

void Agent::retire() {
  isRetiring_ = true;
  // When the bus has answered, all that was sent to the name lies in our queue.
  sd_bus_release_name(environment_.bus, kAgentName);
  while (sd_bus_process(environment_.bus, nullptr) > 0) {
  }
}

void Agent::bubbleAnswered(uint32_t bubble, const std::string& server, const std::string& action,
                           const std::string& activationToken) {
  const auto response = engine_->answered(bubble, server, action);
  if (!response) return;
  const auto categories = engine_->categories();
  const std::string& category = response->request.content.categoryIdentifier;
  const bool opens = categories && opensTheApp(action, *categories, category);
  app_.didReceive(*response, opens, activationToken);
  presenter_.close(bubble);
}

void Agent::bubbleClosed(uint32_t bubble, const std::string& server) { engine_->bubbleClosed(bubble, server); }

}  // namespace pillora

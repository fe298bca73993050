// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "agent/Bus.h"
#include "agent/Engine.h"
#include "agent/FreedesktopPresenter.h"

namespace pillora {

/// The agent's interface on the session bus, org.pillora.Pillora.Agent1 at /org/pillora/Pillora/Agent. Calls with
/// wrong types are refused and change nothing.
///
///     Apply(a(sv) operations) → (as errors)     one turn of a client, applied in order in one transaction; one text
///                                               per operation, empty for success. Operations are ("add", request),
///                                               ("remove", as identifiers), ("categories", a category),
///                                               ("badge", x count) and ("submit", task)
///     GetPendingRequests() → (a request)        in order of their trigger, then identifier
///     GetPendingIdentifiers() → (as)            in the order of their bytes
///     GetCategories() → (a category)
///     GetTasks() → (a task)
///     RequestAuthorization(u options) → (b granted, s error)
///     GetSettings() → (u authorization, u criticalAlerts)      in the order of their enumerations
///     Badge                                     property, x
class AgentService {
 public:
  /// Everything must outlive the service. `changed` is called after a call that may have moved the next deadline.
  AgentService(sd_bus* bus, Engine& engine, FreedesktopPresenter& presenter, std::function<void()> changed);

  Result<void> start();

 private:
  friend struct AgentMethods;

  sd_bus* bus_;
  Engine& engine_;
  FreedesktopPresenter& presenter_;
  std::function<void()> changed_;
  SlotHandle slot_;
};

}  // namespace pillora

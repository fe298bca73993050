// SPDX-License-Identifier: MIT
#include "app/PilloraApp.h"

#include <chrono>
#include <utility>

#include "app/MissedDoses.h"
#include "store/SettingsInUse.h"

namespace pillora {

Result<std::unique_ptr<PilloraApp>> PilloraApp::start(const Platform& platform,
                                                      const ModelConfiguration& configuration) {
  ModelConfiguration timed = configuration;
  timed.clock = &platform.clock;
  auto container = ModelContainer::open(timed, platform.executor);
  if (!container) return Error{std::string(kStoreFailure) + container.error().description};
  return std::unique_ptr<PilloraApp>(new PilloraApp(platform, *std::move(container)));
}

PilloraApp::PilloraApp(const Platform& platform, std::unique_ptr<ModelContainer> container)
    : platform_(platform),
      container_(std::move(container)),
      notificationManager_({platform.notificationCenter, platform.clock, platform.calendar, platform.texts,
                            platform.executor, platform.console, broadcasts_}),
      authenticationManager_({platform.makeLAContext, platform.texts, platform.executor, platform.console}),
      alive_(std::make_shared<int>()) {
  platform_.taskScheduler.registerForTaskWithIdentifier(
      missedDoseCheckIdentifier(), [this, alive = std::weak_ptr(alive_)](const std::shared_ptr<BGTask>& task) {
        if (!alive.expired()) handleMissedDoseCheck(task);
      });
}

Result<int64_t> PilloraApp::rootViewAppeared() {
  notificationManager_.requestAuthorization();
  setupInitialSettings();
  auto marked = markMissedDoses();
  scheduleMissedDoseCheck();
  platform_.notificationCenter.setBadgeCount(0);
  hasAppeared_ = true;
  if (std::exchange(isActivationHeldBack_, false)) becameActive();
  return marked;
}

void PilloraApp::scenePhaseChanged(ScenePhase phase) {
  isActivationHeldBack_ = phase == ScenePhase::active && !hasAppeared_;
  if (phase == ScenePhase::background) {
    scheduleMissedDoseCheck();
    authenticationManager_.relock();
  } else if (phase == ScenePhase::active && hasAppeared_) {
    becameActive();
  }
}

void PilloraApp::becameActive() {
  platform_.notificationCenter.setBadgeCount(0);
  authenticationManager_.checkAuthenticationRequirement(*container_);
}

void PilloraApp::setupInitialSettings() {
  ModelContext& context = container_->mainContext();
  static_cast<void>(context.takeReadError());  // of an earlier read, which says nothing about this one
  static_cast<void>(settingsInUse(context));
  auto error = context.takeReadError();
  if (!error && context.hasChanges()) {
    if (const auto saved = context.save(); !saved) error = saved.error();
  }
  if (error) platform_.console.print("Error setting up initial settings: " + error->description);
}

Result<int64_t> PilloraApp::markMissedDoses() { return markMissedDoses("Error marking missed doses: "); }

Result<int64_t> PilloraApp::markMissedDoses(std::string_view failureMessage) {
  auto marked = markDosesMissed(container_->mainContext(), platform_.clock.now(), platform_.calendar);
  if (!marked) platform_.console.print(std::string(failureMessage) + marked.error().description);
  return marked;
}

std::string PilloraApp::missedDoseCheckIdentifier() const { return platform_.bundle.identifier + ".missedDoseCheck"; }

Instant PilloraApp::nextMissedDoseCheck() const {
  const Instant now = platform_.clock.now();
  const auto midnight = platform_.calendar.adding(CalendarUnit::day, 1, platform_.calendar.startOfDay(now));
  return midnight.value_or(now + std::chrono::hours(6));
}

void PilloraApp::scheduleMissedDoseCheck() {
  const auto submitted =
      platform_.taskScheduler.submit({missedDoseCheckIdentifier(), nextMissedDoseCheck(), false, false});
  platform_.console.print(submitted ? "Background task scheduled for missed dose check"
                                    : "Failed to schedule background task: " + submitted.error().description);
}

void PilloraApp::handleMissedDoseCheck(const std::shared_ptr<BGTask>& task) {
  // First of all, so that the chain of checks goes on whatever comes of this one.
  scheduleMissedDoseCheck();
  task->setExpirationHandler([expiring = std::weak_ptr(task)] {
    if (const auto expired = expiring.lock()) expired->setTaskCompleted(false);
  });
  platform_.executor.post([this, task, alive = std::weak_ptr(alive_)] {
    if (alive.expired()) return;
    // Deliberate: success also when the marking failed. The task reports only that it ran.
    static_cast<void>(markMissedDoses("Error marking missed doses in background: "));
    task->setTaskCompleted(true);
  });
}

}  // namespace pillora

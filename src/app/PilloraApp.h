// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "app/AuthenticationManager.h"
#include "app/Platform.h"
#include "notifications/NotificationManager.h"
#include "store/ModelContainer.h"
#include "support/BroadcastCentre.h"
#include "support/Result.h"

namespace pillora {

/// How far the app is from the user. Background: hidden, minimised, closing, or behind the session's lock. Inactive:
/// visible without focus. Active: focused.
enum class ScenePhase { active, inactive, background };

/// The app from its start to its end: it opens the store, keeps the chain of daily checks for missed doses going, and
/// answers to the window's coming and going. It owns what lives as long as the app does.
///
/// Main thread only, except for handleMissedDoseCheck. Failures are printed as one line each, and the app goes on.
class PilloraApp {
 public:
  /// What the reason why a store cannot be opened begins with on a console.
  static constexpr std::string_view kStoreFailure = "Could not create ModelContainer: ";

  /// Opens the store and registers for the background check. The one error that no program goes on after is a store
  /// that cannot be opened; its description is the line to end with.
  static Result<std::unique_ptr<PilloraApp>> start(const Platform& platform, const ModelConfiguration& configuration);

  ModelContainer& container() { return *container_; }
  NotificationManager& notificationManager() { return notificationManager_; }
  AuthenticationManager& authenticationManager() { return authenticationManager_; }
  BroadcastCentre& broadcasts() { return broadcasts_; }

  /// The root view is shown for the first time: asks for permission, sets up the settings, marks missed doses, submits
  /// the next check and resets the badge, in this order. Answers what markMissedDoses() answers.
  Result<int64_t> rootViewAppeared();
  /// The window came or went: going to the background submits the next check and locks the app again, coming to the
  /// front resets the badge and asks for the owner where that is required. An activation before rootViewAppeared() is
  /// acted on after it.
  void scenePhaseChanged(ScenePhase phase);

  /// Makes and saves the settings record if the store holds none.
  void setupInitialSettings();
  /// Marks the missed doses of the past seven days and saves. Answers how many; the error has been printed.
  Result<int64_t> markMissedDoses();

  /// The task that the scheduler launches for the background check.
  std::string missedDoseCheckIdentifier() const;
  /// When the next check is due at the earliest: the next midnight.
  Instant nextMissedDoseCheck() const;
  void scheduleMissedDoseCheck();
  /// Runs a background check: submits the next one, then marks on the main thread. Any thread.
  void handleMissedDoseCheck(const std::shared_ptr<BGTask>& task);

 private:
  PilloraApp(const Platform& platform, std::unique_ptr<ModelContainer> container);
  Result<int64_t> markMissedDoses(std::string_view failureMessage);
  void becameActive();

  Platform platform_;
  std::unique_ptr<ModelContainer> container_;
  BroadcastCentre broadcasts_;
  NotificationManager notificationManager_;
  AuthenticationManager authenticationManager_;
  bool hasAppeared_ = false;
  bool isActivationHeldBack_ = false;
  std::shared_ptr<void> alive_;  ///< what hops to the main thread does nothing once this is gone
};

}  // namespace pillora

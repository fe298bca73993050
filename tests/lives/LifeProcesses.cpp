// SPDX-License-Identifier: MIT
#include <array>

#include "lives/Life.h"

namespace pillora {

// How the simulated person's program starts, ends and comes back.

namespace {

constexpr std::array kJourneys = {"America/New_York",  "Europe/Berlin",  "Australia/Lord_Howe", "Asia/Kolkata",
                                  "America/Sao_Paulo", "Asia/Tokyo",     "America/Santiago",    "Pacific/Auckland",
                                  "Africa/Casablanca", "Asia/Kathmandu", "America/Havana",      "Pacific/Kiritimati"};

}  // namespace

void Life::start() {
  note("starts the app");
  ++done_["starts"];
  process_ = std::make_unique<Process>(world_);
  isUnlocked_ = requiresAuth_ = false;
  appear();
}

/// The program is run for the background check alone, and ends when that is over.
void Life::runInBackground() {
  note("the system runs the app in the background");
  ++done_["background runs"];
  process_ = std::make_unique<Process>(world_);
  advance();
  inspect([](Inspection& look) { look.records(); });
  process_.reset();
}

void Life::appear() {
  const bool isActiveFirst = oneIn(2);
  if (isActiveFirst) process_->app->scenePhaseChanged(ScenePhase::active);
  expect(static_cast<bool>(process_->app->rootViewAppeared()), "marking at the start failed");
  if (!ledger_.records.settings) ledger_.records.settings = SettingsBackup();
  ledger_.mark(now());
  ledger_.submitCheck(now());
  ledger_.reminders.badge = 0;
  if (!isActiveFirst) process_->app->scenePhaseChanged(ScenePhase::active);
  becomeActive();
  inspect([](Inspection& look) { look.adoptMarked(); });
  advance();
}

void Life::becomeActive() {
  isInFront_ = true;
  ledger_.reminders.badge = 0;
  requiresAuth_ = ledger_.records.settings->requireAuthentication;
  endTurn();
  const bool isAsked = process_->app->authenticationManager().isAwaitingReply();
  expect(isAsked == (requiresAuth_ && !isUnlocked_), "whether the owner is asked for");
  if (isAsked && !oneIn(4)) answerPrompts();
}

void Life::comeToFront() {
  note("comes back to the app");
  process_->app->scenePhaseChanged(ScenePhase::active);
  becomeActive();
}

void Life::leave() {
  note("leaves the app");
  if (oneIn(2)) process_->app->scenePhaseChanged(ScenePhase::inactive);
  process_->app->scenePhaseChanged(ScenePhase::background);
  ledger_.submitCheck(now());
  if (requiresAuth_) isUnlocked_ = false;
  isInFront_ = false;
}

void Life::atLockScreen() {
  const bool isLeaving = oneIn(4);
  note(isLeaving ? "gives up at the lock" : "unlocks");
  if (isLeaving) return leave();
  ++done_["unlocks"];
  process_->root.unlock();
  answerPrompts();
}

/// Answers every open prompt, not always as the owner.
void Life::answerPrompts() {
  auto& prompts = world_.device.prompts;
  for (size_t i = 0; i < prompts.size(); ++i) {
    const auto prompt = prompts[i];
    if (prompt->isTakenDown || prompt->isAnswered) continue;
    const bool isOwner = !oneIn(4);
    const bool isBiometric = prompt->policy == LAPolicy::deviceOwnerAuthenticationWithBiometrics;
    prompt->answer(isOwner);
    process_->executor.drain();
    if (isOwner || !isBiometric) isUnlocked_ = isOwner;
  }
  expect(!process_->app->authenticationManager().isAwaitingReply(), "a prompt is still waited for");
  prompts.clear();
  world_.device.hasBiometrics = !oneIn(3);
}

void Life::travel() {
  const std::string zone = oneOf(kJourneys);
  note("travels to " + zone);
  ++done_["journeys"];
  world_.travelTo(zone);
  ledger_.travel();
  expect(static_cast<bool>(process_->center->zoneChanged()), "the reminders did not follow the zone");
  advance();
}

void Life::quit() {
  note("the app is quit");
  ++done_["quits"];
  process_->executor.drain();
  process_.reset();
  isInFront_ = false;
}

void Life::killBetweenTurns() {
  note("the app is killed");
  const Ledger before = ledger_;
  restartAfterKill(before);
}

/// Does something, and is killed before or while what was done is written.
void Life::killWithinTurn() {
  const Choice* choice = &chosen();
  while (!choice->isOneTurn) choice = &chosen();
  const Ledger before = ledger_;
  isDying_ = true;
  (this->*choice->act)();
  const uint64_t jobs = below(4);
  for (uint64_t i = 0; i < jobs; ++i) process_->executor.runOne();
  isDying_ = false;
  note("... and the app is killed " + std::to_string(jobs) + " jobs after");
  restartAfterKill(before);
}

/// What is found afterwards is all of the last turn or nothing of it: in the store, and in the reminders. These are two
/// files, so that a kill between their commits leaves the turn in one of them alone.
void Life::restartAfterKill(const Ledger& before) {
  world_.killNow();
  process_.reset();
  world_.device.prompts.clear();
  const auto planned = world_.remindersLeft();
  process_ = std::make_unique<Process>(world_);
  isUnlocked_ = requiresAuth_ = isInFront_ = false;
  if (!leftBehind(ledger_, &Inspection::records)) {
    ++done_["turns lost in the store"];
    ledger_.records = before.records;
    inspect([](Inspection& look) { look.records(); });
  }
  for (const Reminders* each : std::array<const Reminders*, 2>{&ledger_.reminders, &before.reminders}) {
    for (const auto& [identifier, request] : each->pending) {
      if (ledger_.medicine(*UUID::parse(request.medicine)) == nullptr) ledger_.orphans.insert(request.medicine);
    }
  }
  // The same names may have been planned anew, with other words or in another order.
  if (ledger_.plannedInOrder() != planned || !leftBehind(ledger_, &Inspection::reminders)) {
    ++done_["turns lost in the reminders"];
    ledger_.reminders = before.reminders;
    expect(ledger_.plannedInOrder() == planned, "half a turn is left in the reminders");
    inspect([](Inspection& look) { look.reminders(); });
  }
  if (fault_.empty()) appear();
}

bool Life::leftBehind(const Ledger& candidate, void (Inspection::*look)()) {
  Ledger copy = candidate;
  Inspection inspection(copy, *process_);
  (inspection.*look)();
  return inspection.isFine();
}

/// Everything is compared, the program ends, and what it left must show the same once more.
void Life::inspectWeekly() {
  nextInspection_ = now() + std::chrono::hours(24 * 7);
  if (!process_) start();
  if (!fault_.empty()) return;
  note("everything is inspected");
  ++done_["inspections"];
  inspect([](Inspection& look) {
    look.screens();
    look.reminders();
  });
  if (!fault_.empty()) return;
  const auto shown = screensOf(*process_);
  process_.reset();
  world_.device.prompts.clear();
  process_ = std::make_unique<Process>(world_);
  isUnlocked_ = requiresAuth_ = isInFront_ = false;
  const auto shownAgain = screensOf(*process_);
  for (const auto& [name, text] : shown) {
    expect(shownAgain.at(name) == text,
           name + " shows something else after the store was opened again:\n  " + text + "\n  " + shownAgain.at(name));
  }
  inspect([](Inspection& look) {
    look.records();
    look.reminderNames();
  });
  if (fault_.empty()) appear();
}

}  // namespace pillora

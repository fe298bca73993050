// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "agent/AgentFixture.h"
#include "agent/ZoneRules.h"

namespace pillora {

/// What became of the requests of a campaign, and what was done to the agent meanwhile.
struct CampaignCounts {
  int64_t added = 0, notAhead = 0, armed = 0;
  // The fate of each armed request; these add up to `armed`.
  int64_t shownInTheirMinute = 0, shownOverdue = 0, foldedAway = 0, cancelled = 0, replaced = 0, stillPending = 0;
  // Shown again after a kill, in the bubble it had.
  int64_t bubblesReplaced = 0;
  // Faults of the agent.
  int64_t lost = 0, doubled = 0, early = 0, late = 0, uncalledFor = 0, stuck = 0;
  // Faults done to it.
  int64_t kills = 0, killsWhileMoving = 0, sleeps = 0, stepsForward = 0, stepsBack = 0, zoneChanges = 0,
          serverRestarts = 0, serverAbsences = 0;

  int64_t faults() const { return lost + doubled + early + late + uncalledFor + stuck; }
  std::string text() const;
};

/// Drives the real agent process through simulated time, with everything that can happen to it, and holds what it
/// shows against a ledger of its own. The ledger's times come from the calendar library, not from the agent's rules.
class Campaign {
 public:
  Campaign(uint32_t seed, int64_t requests, int days);

  /// Until all requests were planned and their days are over, or something went wrong.
  CampaignCounts run();

 private:
  struct Entry {
    std::string identifier, medicine;
    WallTime wall;
    Instant due;
    bool armed = false;
    // How it was shown.
    bool shown = false;
    Instant shownAt;
    uint32_t bubble = 0;
    std::string sender;  ///< which life of the agent showed it last
  };
  using Key = std::string;  ///< identifier and generation, which is what the bubble reads

  int64_t below(int64_t bound) { return std::uniform_int_distribution<int64_t>(0, bound - 1)(random_); }
  const std::string& zone() const { return world_.zoneName; }
  Instant dueOf(const WallTime& wall) const;
  WallTime someMinute();
  void plan();
  void cancel();
  void disturb();

  void passTime(Instant until);
  void sleepFor(Instant::Duration time);
  void stepBy(Instant::Duration time);
  void changeZone();
  void killAndRestart();
  void killWhileMoving();
  void restartServer();
  void loseServer();

  void noteShown();
  void note(const Notified& notified);
  /// Waits until the agent has done what is due, and closes those entries.
  void settle(bool inTheirMinute);
  void close(const std::vector<Key>& due, bool inTheirMinute);
  bool isFolded(const Entry& entry, const std::vector<Key>& due) const;

  AgentWorld world_;
  std::mt19937 random_;
  int64_t wanted_;
  Instant start_, end_;
  std::map<std::string, std::unique_ptr<Calendar>> calendars_;
  std::map<std::string, int64_t> generations_;
  std::map<Key, Entry> open_;
  std::map<std::string, Key> openKeys_;  ///< by identifier
  std::set<Key> closed_;                 ///< to notice what is shown once more
  size_t seen_ = 0;
  CampaignCounts counts_;
};

}  // namespace pillora

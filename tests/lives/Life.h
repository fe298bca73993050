// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "lives/Inspection.h"
#include "lives/Ledger.h"
#include "lives/World.h"

namespace pillora {

/// A random person who lives with Pillora: through its screens, through nights and journeys, with a program that is
/// quit, killed and started in the background. After every step what is shown is held against a ledger, once a week the
/// store is opened anew and everything is compared. One seed is one life: it goes the same way every time, except for
/// the identities of records.
class Life {
 public:
  Life(uint64_t seed, int days);

  /// Lives until the end or until something is wrong. Answers what that is, with the seed, the day, the step and what
  /// was done last; empty when all was well.
  std::string run();
  /// How often each thing was done.
  const std::map<std::string, int64_t>& done() const { return done_; }
  /// Where the person is at home.
  std::string home() const;

 private:
  struct Choice {
    const char* name;
    unsigned weight;
    void (Life::*act)();
    bool isOneTurn = false;  ///< its changes belong together: a kill leaves all of them or none
  };
  struct Backup {
    std::vector<NewMedicine> medicines;
    SettingsBackup settings;
  };

  static std::span<const Choice> choices();

  // Chance (Life.cpp).
  uint64_t below(uint64_t bound) { return random_() % bound; }
  bool oneIn(uint64_t n) { return below(n) == 0; }
  template <typename List>
  auto& oneOf(List& list) {
    return list[below(list.size())];
  }
  const Choice& chosen();

  // Time and processes (Life.cpp, LifeProcesses.cpp).
  Instant now() const { return world_.clock.now(); }
  void step();
  void passTime();
  void passTo(Instant time);
  void advance();
  void start();
  void runInBackground();
  void appear();
  void quit();
  void killBetweenTurns();
  void killWithinTurn();
  void restartAfterKill(const Ledger& before);
  bool leftBehind(const Ledger& candidate, void (Inspection::*look)());
  void inspectWeekly();
  void comeToFront();
  void becomeActive();
  void leave();
  void travel();
  void atLockScreen();
  void answerPrompts();

  // Doses (LifeDoses.cpp).
  void takeToday();
  void skipToday();
  void snoozeToday();
  void undoToday();
  void takeUpcoming();
  void skipUpcoming();
  void actElsewhere();
  void changeInHistory();
  void answerNotification();
  void book(const Result<std::optional<UUID>>& log, BookedMedicine& medicine, Instant time, DoseStatus status);

  // Medicines (LifeMedicines.cpp).
  void addMedicine();
  void setSchedule(AddMedicineView& form, ReminderInterval& interval);
  void setTime(AddMedicineView& form, std::string_view row, TimeOfDay& time);
  void setDays(AddMedicineView& form, std::string_view row, int64_t most, std::set<int64_t>& days);
  void editMedicine();
  void editField(MedicineDetailView& details, BookedMedicine& medicine);
  void flip(MedicineDetailView& details, BookedMedicine& medicine);
  void deleteBySwipe();
  void deleteInDetails();
  void search();

  // Settings (LifeSettings.cpp).
  void changeSetting();
  void makeBackup();
  void restore();
  void deleteBackup();
  void restoreWhatIsNoBackup();

  // Keeping watch.
  void note(const std::string& what);
  void expect(bool isTrue, std::string_view what);
  template <typename Look>
  void inspect(Look look) {
    if (!fault_.empty() || !process_) return;
    Inspection inspection(ledger_, *process_);
    look(inspection);
    fault_ = inspection.fault();
  }
  void endTurn();
  bool isLocked() const { return ledger_.records.settings->requireAuthentication && !isUnlocked_; }

  const uint64_t seed_;
  std::mt19937_64 random_;
  World world_;
  Ledger ledger_;
  const Instant birth_, end_;
  std::unique_ptr<Process> process_;
  bool isInFront_ = false, isUnlocked_ = false, requiresAuth_ = false;
  bool isDying_ = false;  ///< the turn under way will not end
  Instant nextInspection_;
  std::map<std::string, Backup> backups_;  ///< by path
  int64_t steps_ = 0;
  std::deque<std::string> diary_;
  std::map<std::string, int64_t> done_;
  std::string fault_;
};

}  // namespace pillora

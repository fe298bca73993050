// SPDX-License-Identifier: MIT
#include "lives/Life.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <numeric>

#include "doubles/Instants.h"

namespace pillora {

namespace {

using namespace std::chrono_literals;

struct Home {
  const char *locale, *zone;
};

/// Clocks that change by an hour, by half of one, at midnight and not at all; calendars of other months and years.
constexpr std::array kHomes = {Home{"en_US", "America/New_York"},
                               Home{"de_DE", "Europe/Berlin"},
                               Home{"fa_IR", "Asia/Tehran"},
                               Home{"en_AU", "Australia/Lord_Howe"},
                               Home{"pt_BR", "America/Sao_Paulo"},
                               Home{"en_IN", "Asia/Kolkata"},
                               Home{"he_IL@calendar=hebrew", "Asia/Jerusalem"},
                               Home{"es_CU", "America/Havana"},
                               Home{"th_TH", "Asia/Bangkok"},
                               Home{"es_CL", "America/Santiago"}};

constexpr size_t kActionsInDiary = 20;

/// From the last years in which Brazil changed its clocks into the coming ones.
Instant birthOf(uint64_t seed) { return at("2016-01-04T12:00:00Z") + 24h * static_cast<int64_t>(seed * 397 % 4000); }

const Home& homeOf(uint64_t seed) { return kHomes[seed % kHomes.size()]; }

}  // namespace

Life::Life(uint64_t seed, int days)
    : seed_(seed),
      random_(seed),
      world_(birthOf(seed), homeOf(seed).locale, homeOf(seed).zone),
      ledger_(world_.calendar, world_.gregorian),
      birth_(now()),
      end_(birth_ + 24h * days),
      nextInspection_(birth_ + 24h * 7) {}

std::string Life::home() const { return std::string(homeOf(seed_).zone) + " (" + homeOf(seed_).locale + ")"; }

std::span<const Life::Choice> Life::choices() {
  static constexpr std::array kChoices = {
      Choice{"takes on Today", 24, &Life::takeToday, true},
      Choice{"skips on Today", 4, &Life::skipToday, true},
      Choice{"snoozes", 3, &Life::snoozeToday, true},
      Choice{"undoes", 4, &Life::undoToday, true},
      Choice{"takes on Upcoming", 5, &Life::takeUpcoming, true},
      Choice{"skips on Upcoming", 2, &Life::skipUpcoming, true},
      Choice{"acts in another program", 2, &Life::actElsewhere},
      Choice{"changes a status in History", 4, &Life::changeInHistory, true},
      Choice{"answers a notification", 2, &Life::answerNotification},
      Choice{"edits a medicine", 2, &Life::editMedicine, true},
      Choice{"searches", 2, &Life::search},
      Choice{"changes a setting", 3, &Life::changeSetting, true},
      Choice{"makes a backup", 1, &Life::makeBackup},
      Choice{"deletes a backup", 1, &Life::deleteBackup},
      Choice{"restores what is no backup", 1, &Life::restoreWhatIsNoBackup},
      Choice{"travels", 1, &Life::travel},
      Choice{"leaves", 18, &Life::leave},
      Choice{"is killed", 1, &Life::killBetweenTurns},
      Choice{"is killed within a turn", 2, &Life::killWithinTurn},
  };
  return kChoices;
}

/// What a person does next. Medicines come and go so that there are always some, and never too many.
const Life::Choice& Life::chosen() {
  static constexpr Choice kAdd{"adds a medicine", 0, &Life::addMedicine, true};
  static constexpr Choice kRestore{"restores a backup", 0, &Life::restore};
  static constexpr std::array kDelete = {Choice{"deletes by swipe", 0, &Life::deleteBySwipe, true},
                                         Choice{"deletes in the details", 0, &Life::deleteInDetails, true}};
  const size_t medicines = ledger_.records.medicines.size();
  if (medicines == 0 || (medicines < 4 && oneIn(15)) || (medicines < 6 && oneIn(120))) return kAdd;
  if (medicines < 6 && !backups_.empty() && oneIn(150)) return kRestore;
  if ((medicines > 4 && oneIn(8)) || oneIn(200)) return oneOf(kDelete);
  const auto all = choices();
  uint64_t place = below(std::accumulate(all.begin(), all.end(), uint64_t{0},
                                         [](uint64_t sum, const Choice& each) { return sum + each.weight; }));
  for (const Choice& each : all) {
    if (place < each.weight) return each;
    place -= each.weight;
  }
  return all.back();
}

std::string Life::run() {
  while (now() < end_ && fault_.empty()) {
    ++steps_;
    step();
    if (now() >= nextInspection_) inspectWeekly();
  }
  if (fault_.empty()) return {};
  const int64_t day = (now() - birth_) / std::chrono::hours(24);
  std::string report = fault_ + "\nseed " + std::to_string(seed_) + ", day " + std::to_string(day) + ", step " +
                       std::to_string(steps_) + ", at home in " + home() + "; to see it again:\n  simulated-lives " +
                       std::to_string(seed_) + " 1 " + std::to_string(day + 1) + "\nlast:\n";
  for (const std::string& line : diary_) report += "  " + line + "\n";
  return report;
}

void Life::step() {
  passTime();
  if (!fault_.empty()) return;
  if (!process_) {
    oneIn(6) ? runInBackground() : start();
  } else if (!isInFront_) {
    oneIn(12) ? quit() : oneIn(40) ? killBetweenTurns() : oneIn(20) ? travel() : comeToFront();
  } else if (isLocked()) {
    atLockScreen();
  } else {
    const Choice& choice = chosen();
    ++done_[choice.name];
    (this->*choice.act)();
    endTurn();
  }
  if (!process_) return;
  const TimeRange range = oneIn(20) ? TimeRange::all : kAllTimeRanges[below(3)];
  inspect([&](Inspection& look) {
    look.glance(range, kAllHistoryFilters[below(4)]);
    if (oneIn(6)) look.upcoming();
  });
  expect(process_->root.isLocked() == isLocked(), "the lock");
  expect(process_->root.content().lockScreen.has_value() == isLocked(), "the lock screen");
  if (!world_.console.lines.empty()) expect(false, "printed: " + world_.console.lines.front());
}

/// Seconds to minutes while the app is in front, minutes to days otherwise; now and then up to the very moment at which
/// something is due.
void Life::passTime() {
  const auto next = process_ ? process_->center->nextDeadline() : std::nullopt;
  if (next && *next > now() && oneIn(12)) return passTo(*next);
  const int64_t seconds = isInFront_ ? 1 + static_cast<int64_t>(below(below(600) + 1))
                                     : 600 + static_cast<int64_t>(below(below(1'100'000) + 1));
  // Mostly whole seconds, as in files; now and then what a clock really says.
  const Instant whole = now() - now().sinceEpoch() % std::chrono::seconds(1);
  const auto fraction = std::chrono::milliseconds(oneIn(3) ? below(1000) : 0);
  passTo(whole + std::chrono::seconds(seconds) + fraction);
}

/// Awake, everything fires when its time comes; asleep or without a process, what came due is overdue afterwards.
void Life::passTo(Instant time) {
  if (process_ && (isInFront_ || oneIn(8))) {
    for (auto next = process_->center->nextDeadline(); next && *next <= time && fault_.empty();
         next = process_->center->nextDeadline()) {
      world_.clock.set(std::max(now(), *next));
      advance();
    }
  }
  world_.clock.set(std::max(now(), time));
  if (process_) advance();
}

void Life::advance() {
  const auto expected = ledger_.advance(now());
  const auto advanced = process_->center->advance();
  process_->executor.drain();
  done_["reminders shown"] += static_cast<int64_t>(expected.size());
  inspect([&](Inspection& look) {
    look.expect(static_cast<bool>(advanced), "advancing failed");
    if (advanced) look.expectEqual("the reminders shown at " + iso8601(now()), expected, advanced->shown);
    if (advanced && !advanced->launched.empty()) ++done_["background checks"];
    look.adoptMarked();
  });
}

void Life::endTurn() {
  if (process_ && !isDying_) process_->executor.drain();
}

void Life::note(const std::string& what) {
  diary_.push_back(iso8601(now()) + " " + world_.zone() + ": " + what);
  if (diary_.size() > kActionsInDiary) diary_.pop_front();
}

void Life::expect(bool isTrue, std::string_view what) {
  if (!isTrue && fault_.empty()) fault_ = what;
}

}  // namespace pillora

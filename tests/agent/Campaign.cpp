// SPDX-License-Identifier: MIT
#include "agent/Campaign.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "icu/Calendars.h"

namespace pillora {

namespace {

using std::chrono::hours;
using std::chrono::minutes;

constexpr const char* kZones[] = {"America/New_York", "Australia/Lord_Howe"};
constexpr int64_t kMedicines = 12;
constexpr std::chrono::seconds kMinute{60};

std::string medicineNumber(int64_t number) {
  char text[64];
  std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012lld", static_cast<long long>(number));
  return text;
}

}  // namespace

std::string CampaignCounts::text() const {
  std::ostringstream out;
  out << "requests added         " << added << "\n  minute not ahead      " << notAhead << "\n  armed                 "
      << armed << "\narmed requests\n  shown in their minute " << shownInTheirMinute << "\n  shown as overdue      "
      << shownOverdue << "\n  folded away           " << foldedAway << "\n  cancelled             " << cancelled
      << "\n  replaced              " << replaced << "\n  still pending         " << stillPending
      << "\nbubbles shown again    " << bubblesReplaced << "\nfaults done to it\n  kills                 " << kills
      << "\n  kills while showing   " << killsWhileMoving << "\n  sleeps                " << sleeps
      << "\n  clock steps           " << stepsForward << " forward, " << stepsBack << " back\n  zone changes          "
      << zoneChanges << "\n  server restarts       " << serverRestarts << "\n  server absences       " << serverAbsences
      << "\nfaults of the agent\n  lost                  " << lost << "\n  doubled               " << doubled
      << "\n  early                 " << early << "\n  late                  " << late << "\n  uncalled for          "
      << uncalledFor << "\n  stuck                 " << stuck << "\n";
  return out.str();
}

Campaign::Campaign(uint32_t seed, int64_t requests, int days)
    : world_(kZones[0]),
      random_(seed),
      wanted_(requests),
      start_(at("2025-01-01T00:00:00Z")),
      end_(start_ + hours(24 * days)) {
  for (const char* name : kZones) {
    auto calendar = makeCalendar("en_US", name);
    if (calendar) calendars_[name] = *std::move(calendar);
  }
  world_.now = start_;
  world_.startServer();
  world_.startAgent();
  world_.connectClient();
}

CampaignCounts Campaign::run() {
  const auto length = static_cast<double>((end_ - start_).count());
  while (counts_.faults() == 0 && (counts_.added < wanted_ || world_.now < end_)) {
    const double passed = static_cast<double>((world_.now - start_).count()) / length;
    while (counts_.added < wanted_ && static_cast<double>(counts_.added) <= passed * static_cast<double>(wanted_))
      plan();
    if (below(20) == 0) cancel();
    if (below(3) == 0) disturb();
    passTime(world_.now + minutes(1 + below(8 * 60)));
  }
  for (const auto& [key, entry] : open_) counts_.stillPending += entry.armed ? 1 : 0;
  return counts_;
}

Instant Campaign::dueOf(const WallTime& wall) const {
  return CalendarZone(*calendars_.at(zone())).instantOf(wall).value_or(Instant::distantPast());
}

/// Mostly in the coming days, sometimes just past, often about the hours that a clock change takes away or repeats.
WallTime Campaign::someMinute() {
  const Instant time = world_.now + minutes(below(4 * 24 * 60) - 20);
  WallTime wall = utcWallTime(time + calendars_.at(zone())->utcOffset(time));
  wall.second = {};
  if (below(6) == 0) wall.hour = static_cast<unsigned>(1 + below(2));
  return wall;
}

void Campaign::plan() {
  const std::string medicine = medicineNumber(below(kMedicines));
  for (int64_t count = 1 + below(20); count > 0 && counts_.added < wanted_; --count) {
    Entry entry;
    entry.medicine = medicine;
    entry.wall = someMinute();
    entry.due = dueOf(entry.wall);
    entry.armed = entry.due > world_.now;
    const int64_t dose = counts_.added - (below(2) == 0 ? 1 : 0);
    entry.identifier = medicine + "-" + std::to_string(dose) + ".0" + (dose == counts_.added ? "" : "-followup-1");
    if (!openKeys_.empty() && below(20) == 0) {
      entry.identifier = std::next(openKeys_.begin(), below(static_cast<int64_t>(openKeys_.size())))->first;
      entry.medicine = entry.identifier.substr(0, medicine.size());
    }
    const Key key = entry.identifier + "#" + std::to_string(++generations_[entry.identifier]);
    if (const auto former = openKeys_.find(entry.identifier); former != openKeys_.end()) {
      counts_.replaced += open_.at(former->second).armed ? 1 : 0;
      open_.erase(former->second);
    }
    UNNotificationRequest planned = request(entry.identifier, "2025-01-01T00:00");
    planned.content.body = key;
    planned.trigger.wallTime = entry.wall;
    world_.client->add(planned, [this](const std::optional<Error>& error) { counts_.lost += error ? 1 : 0; });
    ++counts_.added;
    ++(entry.armed ? counts_.armed : counts_.notAhead);
    openKeys_[entry.identifier] = key;
    open_[key] = std::move(entry);
  }
  world_.settle();
}

void Campaign::cancel() {
  if (open_.empty()) return;
  const std::string medicine = std::next(open_.begin(), below(static_cast<int64_t>(open_.size())))->second.medicine;
  auto identifiers = world_.pending();
  std::erase_if(identifiers, [&](const std::string& each) { return !each.starts_with(medicine); });
  world_.client->removePendingNotificationRequests(identifiers);
  world_.settle();
  for (const std::string& identifier : identifiers) {
    const auto key = openKeys_.extract(identifier);
    if (!key) {
      ++counts_.uncalledFor;
      continue;
    }
    counts_.cancelled += open_.at(key.mapped()).armed ? 1 : 0;
    closed_.insert(key.mapped());
    open_.erase(key.mapped());
  }
}

void Campaign::disturb() {
  switch (below(8)) {
    case 0:
      return sleepFor(minutes(30 + below(3 * 24 * 60)));
    case 1:
      return stepBy(minutes(1 + below(180)));
    case 2:
      return stepBy(-minutes(1 + below(180)));
    case 3:
      return changeZone();
    case 4:
      return killAndRestart();
    case 5:
      return killWhileMoving();
    case 6:
      return restartServer();
    default:
      return loseServer();
  }
}

/// As it passes for a machine that is awake: the timer goes off at each time that it was armed for.
void Campaign::passTime(Instant until) {
  world_.move("Pass", world_.now);
  while (counts_.faults() == 0 && world_.armed && *world_.armed <= until) {
    world_.move("Pass", std::max(world_.now, *world_.armed));
    settle(true);
  }
  world_.move("Pass", until);
  settle(true);
}

void Campaign::sleepFor(Instant::Duration time) {
  ++counts_.sleeps;
  world_.move("Pass", world_.now + time);
  settle(false);
}

void Campaign::stepBy(Instant::Duration time) {
  ++(time.count() > 0 ? counts_.stepsForward : counts_.stepsBack);
  world_.move("Step", world_.now + time);
  settle(false);
}

void Campaign::changeZone() {
  ++counts_.zoneChanges;
  world_.setZone(zone() == kZones[0] ? kZones[1] : kZones[0]);
  for (auto& [key, entry] : open_) entry.due = dueOf(entry.wall);
  settle(false);
}

void Campaign::killAndRestart() {
  ++counts_.kills;
  world_.killAgent();
  if (below(2) == 0) world_.now = world_.now + minutes(below(300));
  world_.startAgent();
  settle(false);
}

void Campaign::killWhileMoving() {
  ++counts_.killsWhileMoving;
  const Instant until = world_.now + minutes(1 + below(24 * 60));
  if (below(2) == 0) {
    // Just when the first that is due has come to the server.
    world_.server->beforeAnswer = [this, answers = below(2) == 0] {
      world_.agent.kill();
      return answers;
    };
  }
  world_.beginMove("Pass", until);
  int64_t rounds = below(30);
  world_.waitFor([&] { return world_.agent.id() <= 0 || rounds-- <= 0; });
  world_.agent.kill();
  world_.server->beforeAnswer = nullptr;
  if (!world_.waitFor([&] { return !PrivateBus::isOwned(world_.own.get(), kAgentName); })) ++counts_.stuck;
  noteShown();
  if (below(2) == 0) world_.now = until + minutes(below(300));
  world_.startAgent();
  settle(false);
}

void Campaign::restartServer() {
  ++counts_.serverRestarts;
  world_.stopServer();
  world_.startServer();
  seen_ = 0;
}

void Campaign::loseServer() {
  ++counts_.serverAbsences;
  world_.stopServer();
  if (!world_.waitFor([&] { return !PrivateBus::isOwned(world_.own.get(), "org.freedesktop.Notifications"); })) {
    ++counts_.stuck;
  }
  world_.move("Pass", world_.now + minutes(1 + below(12 * 60)));
  world_.startServer();
  seen_ = 0;
  settle(false);
}

void Campaign::noteShown() {
  if (!world_.server->isThere()) return;
  while (seen_ < world_.server->notified.size()) note(world_.server->notified[seen_++]);
}

void Campaign::note(const Notified& notified) {
  const auto found = open_.find(notified.body);
  if (found == open_.end()) {
    ++(closed_.contains(notified.body) ? counts_.doubled : counts_.uncalledFor);
    return;
  }
  Entry& entry = found->second;
  if (!entry.armed) ++counts_.uncalledFor;
  if (entry.due > world_.now) ++counts_.early;
  if (entry.shown) {
    const bool replacesItself = entry.sender != notified.sender && entry.bubble == notified.number;
    ++(replacesItself ? counts_.bubblesReplaced : counts_.doubled);
  } else {
    entry.shownAt = world_.now;
  }
  entry.shown = true;
  entry.bubble = notified.number;
  entry.sender = notified.sender;
}

void Campaign::settle(bool inTheirMinute) {
  std::vector<Key> due;
  for (const auto& [key, entry] : open_) {
    if (entry.armed && entry.due <= world_.now) due.push_back(key);
  }
  const bool done = world_.waitFor([&] {
    noteShown();
    if (due.empty()) return true;
    const auto pending = world_.pending();
    const std::set<std::string> names(pending.begin(), pending.end());
    return std::ranges::none_of(due, [&](const Key& key) { return names.contains(open_.at(key).identifier); });
  });
  noteShown();
  if (!done) ++counts_.stuck;
  close(due, inTheirMinute);
}

bool Campaign::isFolded(const Entry& entry, const std::vector<Key>& due) const {
  if (world_.now < entry.due + kMinute) return false;
  return std::ranges::any_of(due, [&](const Key& key) {
    const Entry& other = open_.at(key);
    return other.shown && other.medicine == entry.medicine && other.due >= entry.due;
  });
}

void Campaign::close(const std::vector<Key>& due, bool inTheirMinute) {
  for (const Key& key : due) {
    const Entry& entry = open_.at(key);
    const bool onTime = entry.shown && entry.shownAt < entry.due + kMinute;
    const bool folded = isFolded(entry, due);
    if (inTheirMinute && !onTime) ++counts_.late;
    if (onTime) {
      ++counts_.shownInTheirMinute;
    } else if (entry.shown) {
      ++counts_.shownOverdue;
    } else if (folded) {
      ++counts_.foldedAway;
    } else {
      ++counts_.lost;
    }
  }
  for (const Key& key : due) {
    openKeys_.erase(open_.at(key).identifier);
    open_.erase(key);
    closed_.insert(key);
  }
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <algorithm>
#include <unordered_set>

#include "agent/Engine.h"
#include "agent/Guarded.h"
#include "agent/Identifiers.h"
#include "agent/ReminderFile.h"
#include "agent/RequestJson.h"

namespace pillora {

namespace {

constexpr int64_t kMinute = 60;
constexpr int64_t kBubblesKeptFor = 7 * 86'400;
/// Our own bubble numbers begin far above those that a server counts up from 1.
constexpr int64_t kFirstBubble = 0x5000'0000;
constexpr int64_t kLastBubble = 0x7FFF'FFFF;

}  // namespace

std::optional<Instant> Engine::nextDeadline() {
  const auto next = guarded<std::optional<Instant>>([this] {
    std::optional<Instant> earliest;
    const auto consider = [&](Instant instant) { earliest = earliest ? std::min(*earliest, instant) : instant; };
    SQLite::Statement requests(database_, "SELECT due FROM requests WHERE state=0 ORDER BY due LIMIT 1");
    if (requests.executeStep()) consider(Instant::fromSeconds(requests.getColumn(0).getInt64()));
    SQLite::Statement tasks(database_, "SELECT serial, ifnull(earliest, 0) FROM tasks");
    while (tasks.executeStep()) {
      if (notLaunched_.contains(tasks.getColumn(0).getInt64())) continue;
      consider(Instant(Instant::Duration(tasks.getColumn(1).getInt64())));
    }
    return earliest;
  });
  return next ? *next : std::nullopt;
}

Result<Advanced> Engine::advance() {
  Advanced advanced;
  const auto begun = guarded<std::vector<Begun>>([&] {
    const auto due = dueRequests();
    return due.empty() ? std::vector<Begun>() : beginDelivery(due, advanced);
  });
  if (!begun) return begun.error();
  if (!begun->empty()) presenter_.showBadge(badge());
  for (const Begun& each : *begun) present(each);
  const auto launched = guarded<bool>([&] {
    launchTasks(advanced);
    return true;
  });
  if (!launched) return launched.error();
  return advanced;
}

/// Oldest first.
std::vector<Engine::Due> Engine::dueRequests() {
  const int64_t now = wholeSeconds(clock_.now());
  std::vector<Due> due;
  SQLite::Statement query(database_,
                          "SELECT serial, identifier, due FROM requests WHERE (state=0 AND due<=?) OR state=1 "
                          "ORDER BY due, wall, serial");
  query.bind(1, now);
  while (query.executeStep()) {
    const int64_t serial = query.getColumn(0).getInt64();
    if (inFlight_.contains(serial)) continue;
    due.push_back({serial, query.getColumn(1).getString(), now < query.getColumn(2).getInt64() + kMinute});
  }
  return due;
}

/// From the newest to the oldest, so that one that is damaged neither folds away those before it nor keeps them back.
std::vector<Engine::Begun> Engine::beginDelivery(const std::vector<Due>& due, Advanced& advanced) {
  std::unordered_set<std::string_view> shown;  // medicines
  std::vector<Begun> begun;
  SQLite::Transaction transaction(database_);
  for (auto each = due.rbegin(); each != due.rend(); ++each) {
    const std::string_view medicine = medicineOf(each->identifier);
    if (!each->onTime && shown.contains(medicine)) {
      dropRequest(each->serial);
      advanced.folded.push_back(each->identifier);
    } else if (const auto request = storedRequest(contentOf(each->serial))) {
      setState(each->serial, RequestState::delivering);
      shown.insert(medicine);
      begun.push_back({each->serial, {*request, {}, 0}});
    } else {
      setState(each->serial, RequestState::past);
      advanced.unreadable.push_back(each->identifier);
    }
  }
  for (auto* each : {&advanced.folded, &advanced.unreadable}) std::ranges::reverse(*each);
  std::ranges::reverse(begun);
  for (Begun& each : begun) {
    const UNNotificationRequest& request = each.delivery.request;
    if (request.content.badge) file_->setValue("badge", std::to_string(*request.content.badge));
    each.delivery.bubble = bubbleFor(std::string(doseOf(request.identifier)), contentOf(each.serial));
    advanced.shown.push_back(request.identifier);
  }
  SQLite::Statement purge(database_, "DELETE FROM bubbles WHERE shown<?");
  purge.bind(1, wholeSeconds(clock_.now()) - kBubblesKeptFor);
  purge.exec();
  transaction.commit();
  return begun;
}

std::string Engine::contentOf(int64_t serial) {
  SQLite::Statement& query = file_->statement("SELECT content FROM requests WHERE serial=?");
  query.bind(1, serial);
  query.executeStep();
  std::string content = query.getColumn(0).getString();
  query.reset();
  return content;
}

void Engine::setState(int64_t serial, RequestState state) {
  SQLite::Statement& change = file_->statement("UPDATE requests SET state=? WHERE serial=?");
  change.bind(1, static_cast<int>(state));
  change.bind(2, serial);
  change.exec();
}

void Engine::dropRequest(int64_t serial) {
  SQLite::Statement& drop = file_->statement("DELETE FROM requests WHERE serial=?");
  drop.bind(1, serial);
  drop.exec();
}

/// The number under which a dose is shown: one of our own, or the one that the present server gave it. It is written
/// down before it is used, so that after a kill the same one is used again. A number that another server gave may by
/// now be another program's.
uint32_t Engine::bubbleFor(const std::string& dose, const std::string& content) {
  const std::string server = presenter_.server();
  SQLite::Statement query(database_, "SELECT number FROM bubbles WHERE dose=? AND (server=? OR number>=?)");
  query.bind(1, dose);
  query.bind(2, server);
  query.bind(3, kFirstBubble);
  const uint32_t number = query.executeStep() ? query.getColumn(0).getUInt() : freshBubble();
  SQLite::Statement keep(database_, "INSERT OR REPLACE INTO bubbles VALUES(?,?,?,?,?)");
  keep.bind(1, dose);
  keep.bind(2, number);
  keep.bind(3, server);
  keep.bind(4, wholeSeconds(clock_.now()));
  keep.bind(5, content);
  keep.exec();
  return number;
}

uint32_t Engine::freshBubble() {
  const int64_t last = file_->number("lastBubble").value_or(0);
  const int64_t next = last >= kFirstBubble && last < kLastBubble ? last + 1 : kFirstBubble;
  file_->setValue("lastBubble", std::to_string(next));
  return static_cast<uint32_t>(next);
}

void Engine::present(const Begun& begun) {
  Delivery delivery = begun.delivery;
  if (const auto registered = categories()) {
    for (const UNNotificationCategory& category : *registered) {
      if (category.identifier == delivery.request.content.categoryIdentifier) delivery.actions = category.actions;
    }
  }
  inFlight_.insert(begun.serial);
  presenter_.show(delivery, [this, begun, alive = std::weak_ptr(alive_)](Result<uint32_t> shown) {
    if (alive.expired()) return;
    inFlight_.erase(begun.serial);
    if (!shown) return;  // stays written down as being delivered; the next advance() tries again
    const auto ended = guarded<bool>([&] {
      endDelivery(begun, presenter_.server(), *shown);
      return true;
    });
    if (!ended) inFlight_.insert(begun.serial);  // shown, but not written down: never again in this process
  });
}

void Engine::endDelivery(const Begun& begun, const std::string& server, uint32_t shownAs) {
  SQLite::Transaction transaction(database_);
  dropRequest(begun.serial);
  if (shownAs == 0) {
    SQLite::Statement none(database_, "DELETE FROM bubbles WHERE number=?");
    none.bind(1, begun.delivery.bubble);
    none.exec();
  } else {
    SQLite::Statement shown(database_, "UPDATE OR REPLACE bubbles SET number=?, server=? WHERE number=?");
    shown.bind(1, shownAs);
    shown.bind(2, server);
    shown.bind(3, begun.delivery.bubble);
    shown.exec();
  }
  transaction.commit();
}

void Engine::launchTasks(Advanced& advanced) {
  std::vector<std::pair<int64_t, std::string>> due;
  SQLite::Statement query(database_, "SELECT serial, identifier FROM tasks WHERE ifnull(earliest, 0)<=?");
  query.bind(1, clock_.now().microseconds());
  while (query.executeStep()) due.emplace_back(query.getColumn(0).getInt64(), query.getColumn(1).getString());
  SQLite::Statement remove(database_, "DELETE FROM tasks WHERE serial=?");
  for (const auto& [serial, identifier] : due) {
    if (notLaunched_.contains(serial)) continue;
    if (!launcher_.launch(identifier)) {
      notLaunched_.insert(serial);
      advanced.notLaunched.push_back(identifier);
      continue;
    }
    // By number: the run may already have submitted its successor under the same identifier.
    remove.bind(1, serial);
    remove.exec();
    remove.reset();
    advanced.launched.push_back(identifier);
  }
}

std::optional<UNNotificationResponse> Engine::answered(uint32_t bubble, const std::string& server,
                                                       const std::string& action) {
  auto response =
      guarded<std::optional<UNNotificationResponse>>([&]() -> Result<std::optional<UNNotificationResponse>> {
        SQLite::Statement query(database_, "SELECT content FROM bubbles WHERE number=? AND server=?");
        query.bind(1, bubble);
        query.bind(2, server);
        if (!query.executeStep()) return std::optional<UNNotificationResponse>();
        auto request = storedRequest(query.getColumn(0).getString());
        if (!request) return request.error();
        return std::optional(UNNotificationResponse{*std::move(request), action});
      });
  return response ? *std::move(response) : std::nullopt;
}

void Engine::bubbleClosed(uint32_t bubble, const std::string& server) {
  (void)guarded<bool>([&] {
    SQLite::Statement remove(database_, "DELETE FROM bubbles WHERE number=? AND server=?");
    remove.bind(1, bubble);
    remove.bind(2, server);
    return remove.exec() > 0;
  });
}

}  // namespace pillora

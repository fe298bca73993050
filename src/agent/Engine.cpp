// SPDX-License-Identifier: MIT
#include "agent/Engine.h"

#include <utility>

#include "agent/Guarded.h"
#include "agent/ReminderFile.h"
#include "agent/RequestJson.h"

namespace pillora {

namespace {

constexpr int64_t kMostRequests = 100'000;
constexpr size_t kLongestIdentifier = 1024;

Error notStored(const Error& error) { return Error{"the request cannot be kept: " + error.description}; }

}  // namespace

Result<std::unique_ptr<Engine>> Engine::open(const std::string& path, const Clock& clock, ZoneRules& zone,
                                             Presenter& presenter, TaskLauncher& launcher) {
  auto file = ReminderFile::open(path);
  if (!file) return file.error();
  std::unique_ptr<Engine> engine(new Engine(std::move(*file), clock, zone, presenter, launcher));
  // The zone may have changed while nothing ran.
  if (const auto computed = engine->zoneChanged(); !computed) return computed.error();
  return engine;
}

Engine::Engine(std::unique_ptr<ReminderFile> file, const Clock& clock, ZoneRules& zone, Presenter& presenter,
               TaskLauncher& launcher)
    : file_(std::move(file)),
      database_(file_->database()),
      clock_(clock),
      zone_(zone),
      presenter_(presenter),
      launcher_(launcher) {}

Engine::~Engine() = default;

OperationErrors Engine::apply(const std::vector<Operation>& operations) {
  const auto badgeBefore = badge();
  auto errors = guarded<OperationErrors>([&] {
    OperationErrors each;
    SQLite::Transaction transaction(database_);
    room_ = kMostRequests - database_.execAndGet("SELECT count(*) FROM requests").getInt64();
    for (const Operation& operation : operations) {
      each.push_back(std::visit([this](const auto& one) { return applyOne(one); }, operation));
    }
    transaction.commit();
    return each;
  });
  if (!errors) return OperationErrors(operations.size(), errors.error());
  if (badge() != badgeBefore) presenter_.showBadge(badge());
  return *std::move(errors);
}

std::optional<Error> Engine::applyOne(const AddRequest& operation) {
  const UNNotificationRequest& request = operation.request;
  if (request.identifier.empty() || request.identifier.size() > kLongestIdentifier) {
    return Error{"the request's identifier is empty or too long"};
  }
  if (request.trigger.repeats) return Error{"repeating triggers are not supported"};
  const auto due = zone_.instantOf(request.trigger.wallTime);
  if (!due) return Error{"the request's trigger names no date"};
  const auto content = storedText(request);
  if (!content) return notStored(content.error());
  if (room_ <= 0) return Error{"too many requests are pending"};
  --room_;
  SQLite::Statement& insert =
      file_->statement("INSERT OR REPLACE INTO requests(identifier, state, due, wall, content) VALUES(?,?,?,?,?)");
  insert.bind(1, request.identifier);
  insert.bind(2, static_cast<int>(*due > clock_.now() ? RequestState::armed : RequestState::past));
  insert.bind(3, wholeSeconds(*due));
  insert.bind(4, wholeSeconds(utcInstant(request.trigger.wallTime)));
  insert.bind(5, *content);
  insert.exec();
  return std::nullopt;
}

std::optional<Error> Engine::applyOne(const RemoveRequests& operation) {
  for (const std::string& identifier : operation.identifiers) {
    SQLite::Statement& remove = file_->statement("DELETE FROM requests WHERE identifier=?");
    remove.bind(1, identifier);
    room_ += remove.exec();
  }
  return std::nullopt;
}

std::optional<Error> Engine::applyOne(const SetCategories& operation) {
  const auto text = storedText(operation.categories);
  if (!text) return notStored(text.error());
  file_->setValue("categories", *text);
  return std::nullopt;
}

std::optional<Error> Engine::applyOne(const SetBadge& operation) {
  if (operation.count < 0) return Error{"the badge count is negative"};
  file_->setValue("badge", std::to_string(operation.count));
  return std::nullopt;
}

std::optional<Error> Engine::applyOne(const SubmitTask& operation) {
  const BGProcessingTaskRequest& task = operation.request;
  if (task.identifier.empty() || task.identifier.size() > kLongestIdentifier) {
    return Error{"the task's identifier is empty or too long"};
  }
  SQLite::Statement insert(database_,
                           "INSERT OR REPLACE INTO tasks(identifier, earliest, network, power) VALUES(?,?,?,?)");
  insert.bind(1, task.identifier);
  if (task.earliestBeginDate) insert.bind(2, task.earliestBeginDate->microseconds());
  insert.bind(3, task.requiresNetworkConnectivity ? 1 : 0);
  insert.bind(4, task.requiresExternalPower ? 1 : 0);
  insert.exec();
  return std::nullopt;
}

Result<std::vector<UNNotificationRequest>> Engine::pendingRequests() {
  using Requests = std::vector<UNNotificationRequest>;
  return guarded<Requests>([this] {
    Requests requests;
    SQLite::Statement query(database_, "SELECT content FROM requests ORDER BY wall, identifier");
    while (query.executeStep()) {
      auto request = storedRequest(query.getColumn(0).getString());
      if (request) requests.push_back(*std::move(request));
    }
    return requests;
  });
}

Result<std::vector<std::string>> Engine::pendingIdentifiers() {
  return guarded<std::vector<std::string>>([this] {
    std::vector<std::string> identifiers;
    // In an order that an index has: the content, most of the file, is not looked at.
    SQLite::Statement query(database_, "SELECT identifier FROM requests ORDER BY identifier");
    while (query.executeStep()) identifiers.push_back(query.getColumn(0).getString());
    return identifiers;
  });
}

Result<std::vector<UNNotificationCategory>> Engine::categories() {
  using Categories = std::vector<UNNotificationCategory>;
  return guarded<Categories>([this]() -> Result<Categories> {
    const auto text = file_->value("categories");
    return text ? storedCategories(*text) : Categories();
  });
}

Result<std::vector<BGProcessingTaskRequest>> Engine::tasks() {
  return guarded<std::vector<BGProcessingTaskRequest>>([this] {
    std::vector<BGProcessingTaskRequest> tasks;
    SQLite::Statement query(database_, "SELECT identifier, earliest, network, power FROM tasks ORDER BY serial");
    while (query.executeStep()) {
      BGProcessingTaskRequest task;
      task.identifier = query.getColumn(0).getString();
      if (!query.isColumnNull(1)) task.earliestBeginDate = Instant(Instant::Duration(query.getColumn(1).getInt64()));
      task.requiresNetworkConnectivity = query.getColumn(2).getInt() != 0;
      task.requiresExternalPower = query.getColumn(3).getInt() != 0;
      tasks.push_back(std::move(task));
    }
    return tasks;
  });
}

int64_t Engine::badge() {
  const auto stored = guarded<std::optional<int64_t>>([this] { return file_->number("badge"); });
  return stored ? stored->value_or(0) : 0;
}

UNAuthorizationStatus Engine::authorizationStatus() {
  const auto stored = guarded<std::optional<std::string>>([this] { return file_->value("authorization"); });
  if (!stored || !*stored) return UNAuthorizationStatus::notDetermined;
  return **stored == "authorized" ? UNAuthorizationStatus::authorized : UNAuthorizationStatus::denied;
}

Result<void> Engine::setAuthorizationStatus(UNAuthorizationStatus status) {
  return guarded<void>([&]() -> Result<void> {
    file_->setValue("authorization", status == UNAuthorizationStatus::authorized ? "authorized" : "denied");
    return {};
  });
}

Result<void> Engine::zoneChanged() {
  zone_.refresh();
  return guarded<void>([this]() -> Result<void> {
    SQLite::Transaction transaction(database_);
    SQLite::Statement query(database_, "SELECT serial, due, wall FROM requests WHERE state=0");
    SQLite::Statement change(database_, "UPDATE requests SET due=? WHERE serial=?");
    std::vector<std::pair<int64_t, int64_t>> moved;
    while (query.executeStep()) {
      const auto wall = utcWallTime(Instant::fromSeconds(query.getColumn(2).getInt64()));
      const auto due = zone_.instantOf(wall);
      if (!due || wholeSeconds(*due) == query.getColumn(1).getInt64()) continue;
      moved.emplace_back(wholeSeconds(*due), query.getColumn(0).getInt64());
    }
    for (const auto& [due, serial] : moved) {
      change.bind(1, due);
      change.bind(2, serial);
      change.exec();
      change.reset();
    }
    transaction.commit();
    return {};
  });
}

}  // namespace pillora

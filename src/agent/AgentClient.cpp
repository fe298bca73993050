// SPDX-License-Identifier: MIT
#include "agent/AgentClient.h"

#include <algorithm>
#include <poll.h>
#include <thread>
#include <utility>

#include "agent/AsyncCall.h"
#include "agent/ProcessLauncher.h"
#include "agent/RequestJson.h"
#include "agent/Wire.h"
#include "agent/ZoneRules.h"

namespace pillora {

namespace {

using std::chrono::steady_clock;

/// How long an agent that could not be reached is left alone, so that a window does not stand still at every change.
constexpr std::chrono::seconds kLeaveAlone{30};

constexpr const char* kUnreachable = "the reminder agent cannot be reached";

std::optional<Error> soundness(const UNNotificationRequest& request) {
  if (!isRealMinute(request.trigger.wallTime)) return Error{"the request's trigger names no date"};
  const auto text = storedText(request);
  return text ? std::nullopt : std::optional(text.error());
}

}  // namespace

Result<std::unique_ptr<AgentClient>> AgentClient::connect(MainExecutor& executor, const Options& options) {
  sd_bus* session = nullptr;
  if (const int opened = sd_bus_open_user(&session); opened < 0) return busError("no session bus", opened);
  BusHandle bus(session);
  std::unique_ptr<AgentClient> client(new AgentClient(executor, options, std::move(bus)));
  if (const auto found = client->findAgent(); !found) return found.error();
  return client;
}

AgentClient::AgentClient(MainExecutor& executor, const Options& options, BusHandle bus)
    : options_(options),
      bus_(std::move(bus)),
      endpoint_(bus_.get()),
      queue_(executor, [this](const TurnQueue::Batch& batch) { send(batch); }) {}

AgentClient::~AgentClient() { finish(); }

Result<void> AgentClient::becomeApp(AppHooks hooks) { return endpoint_.start(std::move(hooks)); }

bool AgentClient::wantsToWrite() const { return (sd_bus_get_events(bus_.get()) & POLLOUT) != 0; }

void AgentClient::process() {
  while (sd_bus_process(bus_.get(), nullptr) > 0) {
  }
}

void AgentClient::finish() {
  queue_.flush();
  const auto deadline = steady_clock::now() + options_.patience;
  for (process(); owed_ > 0; process()) {
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - steady_clock::now());
    if (left.count() <= 0 || sd_bus_wait(bus_.get(), static_cast<uint64_t>(left.count())) < 0) return;
  }
}

Result<bool> AgentClient::agentRuns() {
  sd_bus_message* message = nullptr;
  const int asked = sd_bus_call_method(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                       "org.freedesktop.DBus", "NameHasOwner", nullptr, &message, "s", kAgentName);
  const MessageHandle reply(message);
  int owned = 0;
  if (asked < 0 || sd_bus_message_read(message, "b", &owned) <= 0) return busError("session bus", asked);
  return owned != 0;
}

Result<void> AgentClient::findAgent() {
  if (missingSince_ && steady_clock::now() < *missingSince_ + kLeaveAlone) return Error{kUnreachable};
  const auto runs = agentRuns();
  if (!runs) return runs.error();
  if (*runs) return {};
  sd_bus_message* message = nullptr;
  sd_bus_message_new_method_call(bus_.get(), &message, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                 "org.freedesktop.DBus", "StartServiceByName");
  const MessageHandle start(message);
  sd_bus_message_append(message, "su", kAgentName, 0U);
  if (callAndWait(message)) return {};
  const auto spawned = spawnAgent();
  missingSince_ = spawned ? std::nullopt : std::optional(steady_clock::now());
  return spawned;
}

Result<void> AgentClient::spawnAgent() {
  if (options_.agentProgram.empty()) return Error{kUnreachable};
  if (const auto started = spawn({options_.agentProgram}); !started) return started.error();
  const auto deadline = steady_clock::now() + options_.patience;
  while (steady_clock::now() < deadline) {
    const auto runs = agentRuns();
    if (!runs) return runs.error();
    if (*runs) return {};
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return Error{kUnreachable};
}

MessageHandle AgentClient::newCall(const char* member) const {
  sd_bus_message* message = nullptr;
  sd_bus_message_new_method_call(bus_.get(), &message, kAgentName, kAgentPath, kAgentInterface, member);
  return MessageHandle(message);
}

Result<MessageHandle> AgentClient::callAndWait(sd_bus_message* call) {
  sd_bus_message* reply = nullptr;
  sd_bus_error error = SD_BUS_ERROR_NULL;
  const auto time = static_cast<uint64_t>(std::chrono::microseconds(options_.patience).count());
  const int called = sd_bus_call(bus_.get(), call, time, &error, &reply);
  MessageHandle kept(reply);
  const std::string why = error.message != nullptr ? error.message : "";
  sd_bus_error_free(&error);
  if (called < 0) return why.empty() ? busError(kUnreachable, called) : Error{why};
  return kept;
}

Result<MessageHandle> AgentClient::call(const char* member) {
  queue_.flush();
  if (const auto found = findAgent(); !found) return found.error();
  return callAndWait(newCall(member).get());
}

/// Calls `answered` once with the reply, or with the error that took its place.
template <typename Answered>
void AgentClient::callLater(const MessageHandle& call, Answered answered) {
  ++owed_;
  const auto got = [this, alive = std::weak_ptr(alive_), answered](sd_bus_message* reply) {
    if (alive.expired()) return;
    --owed_;
    const auto failure = reply == nullptr ? Error{kUnreachable} : errorOf(reply);
    failure ? answered(nullptr, *failure) : answered(reply, Error{});
  };
  if (!findAgent()) return got(nullptr);
  callAsync(bus_.get(), call.get(), options_.patience, got);
}

void AgentClient::send(const TurnQueue::Batch& batch) {
  const MessageHandle call = newCall("Apply");
  WireWriter writer(call.get());
  writer.operations(batch.operations);
  if (writer.status() < 0) {
    return batch.complete(OperationErrors(batch.operations.size(), busError("unsendable request", writer.status())));
  }
  callLater(call, [batch](sd_bus_message* reply, const Error& failure) {
    const size_t count = batch.operations.size();
    if (reply == nullptr) return batch.complete(OperationErrors(count, failure));
    WireReader reader(reply);
    const auto texts = reader.texts();
    if (reader.status() < 0 || texts.size() != count) {
      return batch.complete(OperationErrors(count, Error{"the reminder agent gave no sense"}));
    }
    OperationErrors errors;
    for (const std::string& text : texts) errors.push_back(text.empty() ? std::nullopt : std::optional(Error{text}));
    batch.complete(errors);
  });
}

void AgentClient::requestAuthorization(unsigned options, std::function<void(bool, std::optional<Error>)> completion) {
  queue_.flush();
  const MessageHandle call = newCall("RequestAuthorization");
  WireWriter(call.get()).word(options);
  callLater(call, [completion = std::move(completion)](sd_bus_message* reply, const Error& failure) {
    if (reply == nullptr) return completion(false, failure);
    WireReader reader(reply);
    const bool granted = reader.flag();
    const std::string why = reader.text();
    completion(granted && reader.status() >= 0, why.empty() ? std::nullopt : std::optional(Error{why}));
  });
}

void AgentClient::getNotificationSettings(std::function<void(UNNotificationSettings)> completion) {
  queue_.flush();
  callLater(newCall("GetSettings"), [completion = std::move(completion)](sd_bus_message* reply, const Error&) {
    UNNotificationSettings settings;
    if (reply == nullptr) return completion(settings);
    WireReader reader(reply);
    const uint32_t status = reader.word();
    const auto last = static_cast<uint32_t>(UNAuthorizationStatus::ephemeral);
    if (reader.status() >= 0 && status <= last)
      settings.authorizationStatus = static_cast<UNAuthorizationStatus>(status);
    completion(settings);
  });
}

void AgentClient::setNotificationCategories(std::vector<UNNotificationCategory> categories) {
  if (storedText(categories)) queue_.push(SetCategories{std::move(categories)});
}

void AgentClient::getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) {
  const auto reply = call("GetCategories");
  completion(reply ? WireReader(reply->get()).categories() : std::vector<UNNotificationCategory>());
}

void AgentClient::add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) {
  // What the bus cannot carry would take the whole turn with it.
  if (const auto failure = soundness(request)) return completion(failure);
  queue_.push(AddRequest{std::move(request)}, std::move(completion));
}

void AgentClient::getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) {
  const auto reply = call("GetPendingRequests");
  completion(reply ? WireReader(reply->get()).requests() : std::vector<UNNotificationRequest>());
}

void AgentClient::getPendingNotificationRequestIdentifiers(std::function<void(std::vector<std::string>)> completion) {
  const auto reply = call("GetPendingIdentifiers");
  completion(reply ? WireReader(reply->get()).texts() : std::vector<std::string>());
}

void AgentClient::removePendingNotificationRequests(std::vector<std::string> identifiers) {
  queue_.push(RemoveRequests{std::move(identifiers)});
}

void AgentClient::setBadgeCount(int64_t count) { queue_.push(SetBadge{count}); }

void AgentClient::getBadgeCount(std::function<void(int64_t)> completion) {
  queue_.flush();
  int64_t count = 0;
  const int got =
      sd_bus_get_property_trivial(bus_.get(), kAgentName, kAgentPath, kAgentInterface, "Badge", nullptr, 'x', &count);
  completion(got < 0 ? 0 : count);
}

void AgentClient::registerForTaskWithIdentifier(const std::string& identifier,
                                                std::function<void(std::shared_ptr<BGTask>)> launchHandler) {
  handlers_.registerHandler(identifier, std::move(launchHandler));
}

/// Waited for, since its caller says at once whether it succeeded.
Result<void> AgentClient::submit(BGProcessingTaskRequest request) {
  queue_.flush();
  if (const auto found = findAgent(); !found) return found.error();
  const MessageHandle call = newCall("Apply");
  WireWriter writer(call.get());
  writer.operations({SubmitTask{std::move(request)}});
  if (writer.status() < 0) return busError("unsendable request", writer.status());
  const auto reply = callAndWait(call.get());
  if (!reply) return reply.error();
  const auto errors = WireReader(reply->get()).texts();
  if (errors.size() != 1) return Error{"the reminder agent gave no sense"};
  if (!errors.front().empty()) return Error{errors.front()};
  return {};
}

std::shared_ptr<RunningTask> AgentClient::launchTask(const std::string& identifier,
                                                     std::function<void(bool)> completed) {
  return handlers_.launch(identifier, std::move(completed));
}

}  // namespace pillora

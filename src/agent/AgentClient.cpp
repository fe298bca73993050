// SPDX-License-Identifier: MIT
#include "agent/AgentClient.h"

#include <algorithm>
#include <array>
#include <poll.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <type_traits>
#include <unistd.h>
#include <utility>

#include "agent/AsyncCall.h"
#include "agent/ProcessLauncher.h"
#include "agent/RequestJson.h"
#include "agent/Wire.h"
#include "agent/ZoneRules.h"

namespace pillora {

namespace {

using std::chrono::steady_clock;

/// Permission and settings may have to wait for a notification server that the agent has the bus start.
constexpr std::chrono::seconds kServerPatience{30};

/// How long an agent that could not be reached is left alone, so that a window does not stand still at every change.
constexpr std::chrono::seconds kLeaveAlone{30};

constexpr const char* kUnreachable = "the reminder agent cannot be reached";
constexpr const char* kNoSense = "the reminder agent gave no sense";

/// The first line of what a program said, or that it cannot be reached.
std::string said(int speech) {
  std::array<char, 500> buffer{};
  const ssize_t size = pread(speech, buffer.data(), buffer.size(), 0);
  const std::string_view text(buffer.data(), size > 0 ? static_cast<size_t>(size) : 0);
  const std::string_view line = text.substr(0, text.find('\n'));
  return line.empty() ? kUnreachable : std::string(line);
}

std::optional<Error> soundness(const UNNotificationRequest& request) {
  if (!isRealMinute(request.trigger.wallTime)) return Error{"the request's trigger names no date"};
  const auto text = storedText(request);
  return text ? std::nullopt : std::optional(text.error());
}

}  // namespace

std::unique_ptr<AgentClient> AgentClient::open(MainExecutor& executor, const Options& options) {
  sd_bus* session = nullptr;
  if (sd_bus_open_user(&session) < 0) return nullptr;
  return std::unique_ptr<AgentClient>(new AgentClient(executor, options, BusHandle(session)));
}

Result<std::unique_ptr<AgentClient>> AgentClient::connect(MainExecutor& executor, const Options& options) {
  auto client = open(executor, options);
  if (client == nullptr) return client;
  if (const auto found = client->findAgent(); !found) return found.error();
  return client;
}

AgentClient::AgentClient(MainExecutor& executor, const Options& options, BusHandle bus)
    : options_(options),
      bus_(std::move(bus)),
      endpoint_(bus_.get()),
      queue_(executor, [this](const TurnQueue::Batch& batch) { send(batch); }) {}

AgentClient::~AgentClient() {
  queue_.flush();
  awaitAnswers(changes_);
}

Result<bool> AgentClient::activateApp(const Activation& activation) {
  const auto runs = [this] {
    const auto owned = isOwned(bus_.get(), kAppName);
    return owned && *owned;
  };
  if (!runs()) return false;
  if (callAndWait(activationCall(bus_.get(), activation).get())) return true;
  if (runs()) return Error{"Pillora runs already but does not answer"};
  return false;  // it was about to end
}

Result<void> AgentClient::becomeApp(AppHooks hooks) { return endpoint_.start(std::move(hooks)); }

bool AgentClient::wantsToWrite() const {
  const int events = sd_bus_get_events(bus_.get());  // negative once the bus is gone
  return events > 0 && (events & POLLOUT) != 0;
}

void AgentClient::process() {
  while (sd_bus_process(bus_.get(), nullptr) > 0) {
  }
}

Result<void> AgentClient::finish() {
  queue_.flush();
  awaitAnswers(questions_);
  awaitAnswers(changes_);
  if (isAwaiting()) queue_.fail(Error{kUnreachable});
  return queue_.takeFailure();
}

void AgentClient::awaitAnswers(const Owed& owed) {
  for (process(); owed.count > 0; process()) {
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(owed.lastBy - steady_clock::now());
    if (left.count() <= 0 || sd_bus_wait(bus_.get(), static_cast<uint64_t>(left.count())) < 0) return;
  }
}

Result<void> AgentClient::findAgent() {
  if (missingSince_ && steady_clock::now() < *missingSince_ + kLeaveAlone) return Error{kUnreachable};
  const auto runs = isOwned(bus_.get(), kAgentName);
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
  // What it says goes where nobody waits for its end, and can be read when it fails at once.
  const int speech = memfd_create("pillora-agent", MFD_CLOEXEC);
  const auto started = spawn({options_.agentProgram}, speech);
  const auto found = started ? awaitAgent(*started, speech) : Result<void>(started.error());
  if (speech >= 0) close(speech);
  return found;
}

Result<void> AgentClient::awaitAgent(pid_t process, int speech) {
  const auto deadline = steady_clock::now() + options_.patience;
  while (steady_clock::now() < deadline) {
    const bool hasEnded = waitpid(process, nullptr, WNOHANG) == process;
    // One that ended because another was quicker is no failure.
    const auto runs = isOwned(bus_.get(), kAgentName);
    if (!runs) return runs.error();
    if (*runs) return {};
    if (hasEnded) return Error{said(speech)};
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
  sd_bus_error error{};
  const auto time = static_cast<uint64_t>(std::chrono::microseconds(options_.patience).count());
  const int called = sd_bus_call(bus_.get(), call, time, &error, &reply);
  MessageHandle kept(reply);
  const std::string why = error.message != nullptr ? error.message : "";
  sd_bus_error_free(&error);
  if (called < 0) return why.empty() ? busError(kUnreachable, called) : Error{why};
  return kept;
}

/// Waits for the answer and reads it; nothing when there is none that makes sense.
template <typename Read>
auto AgentClient::ask(const char* member, Read read) {
  using Answer = std::invoke_result_t<Read, WireReader&>;
  const auto answer = [&]() -> Result<Answer> {
    queue_.flush();
    if (const auto found = findAgent(); !found) return found.error();
    const auto reply = callAndWait(newCall(member).get());
    if (!reply) return reply.error();
    WireReader reader(reply->get());
    auto found = read(reader);
    return reader.status() < 0 ? Result<Answer>(Error{kNoSense}) : Result<Answer>(std::move(found));
  };
  return queue_.foundOrNone(answer());
}

/// Calls `answered` once with the reply, or with the error that took its place.
template <typename Answered>
void AgentClient::callLater(const MessageHandle& call, std::chrono::milliseconds patience, Owed& owed,
                            Answered answered) {
  ++owed.count;
  // A little more than the call's own time, which ends in an error for an answer.
  owed.lastBy = std::max(owed.lastBy, steady_clock::now() + patience + std::chrono::seconds(1));
  const auto got = [&owed, alive = std::weak_ptr(alive_), answered](sd_bus_message* reply) {
    if (alive.expired()) return;
    --owed.count;
    const auto failure = reply == nullptr ? Error{kUnreachable} : errorOf(reply);
    failure ? answered(nullptr, *failure) : answered(reply, Error{});
  };
  if (!findAgent()) return got(nullptr);
  callAsync(bus_.get(), call.get(), patience, got);
}

void AgentClient::send(const TurnQueue::Batch& batch) {
  const MessageHandle call = newCall("Apply");
  WireWriter writer(call.get());
  writer.operations(batch.operations);
  if (writer.status() < 0) {
    const Error unsendable = busError("unsendable request", writer.status());
    return queue_.complete(batch, OperationErrors(batch.operations.size(), unsendable));
  }
  callLater(call, options_.patience, changes_, [this, batch](sd_bus_message* reply, const Error& failure) {
    const size_t count = batch.operations.size();
    if (reply == nullptr) return queue_.complete(batch, OperationErrors(count, failure));
    WireReader reader(reply);
    const auto texts = reader.texts();
    if (reader.status() < 0 || texts.size() != count) {
      return queue_.complete(batch, OperationErrors(count, Error{kNoSense}));
    }
    OperationErrors errors;
    for (const std::string& text : texts) errors.push_back(text.empty() ? std::nullopt : std::optional(Error{text}));
    queue_.complete(batch, errors);
  });
}

void AgentClient::requestAuthorization(unsigned options, std::function<void(bool, std::optional<Error>)> completion) {
  queue_.flush();
  const MessageHandle call = newCall("RequestAuthorization");
  WireWriter(call.get()).word(options);
  const auto answered = [completion = std::move(completion)](sd_bus_message* reply, const Error& failure) {
    if (reply == nullptr) return completion(false, failure);
    WireReader reader(reply);
    const bool granted = reader.flag();
    const std::string why = reader.text();
    completion(granted && reader.status() >= 0, why.empty() ? std::nullopt : std::optional(Error{why}));
  };
  callLater(call, kServerPatience, questions_, answered);
}

void AgentClient::getNotificationSettings(std::function<void(UNNotificationSettings)> completion) {
  queue_.flush();
  const auto answered = [completion = std::move(completion)](sd_bus_message* reply, const Error&) {
    UNNotificationSettings settings;
    if (reply == nullptr) return completion(settings);
    WireReader reader(reply);
    const uint32_t status = reader.word();
    const auto last = static_cast<uint32_t>(UNAuthorizationStatus::ephemeral);
    if (reader.status() >= 0 && status <= last) {
      settings.authorizationStatus = static_cast<UNAuthorizationStatus>(status);
    }
    completion(settings);
  };
  callLater(newCall("GetSettings"), kServerPatience, questions_, answered);
}

void AgentClient::setNotificationCategories(std::vector<UNNotificationCategory> categories) {
  const auto text = storedText(categories);
  text ? queue_.push(SetCategories{std::move(categories)}) : queue_.fail(text.error());
}

void AgentClient::getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) {
  completion(ask("GetCategories", [](WireReader& reader) { return reader.categories(); }));
}

void AgentClient::add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) {
  // What the bus cannot carry would take the whole turn with it.
  if (const auto failure = soundness(request)) return completion(failure);
  queue_.push(AddRequest{std::move(request)}, std::move(completion));
}

void AgentClient::getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) {
  completion(ask("GetPendingRequests", [](WireReader& reader) { return reader.requests(); }));
}

void AgentClient::getPendingNotificationRequestIdentifiers(std::function<void(std::vector<std::string>)> completion) {
  completion(ask("GetPendingIdentifiers", [](WireReader& reader) { return reader.texts(); }));
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
  if (got < 0) queue_.fail(busError(kUnreachable, got));
  completion(got < 0 ? 0 : count);
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
  if (errors.size() != 1) return Error{kNoSense};
  if (!errors.front().empty()) return Error{errors.front()};
  return {};
}

}  // namespace pillora

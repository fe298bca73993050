// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "agent/AppEndpoint.h"
#include "agent/Bus.h"
#include "agent/TurnQueue.h"
#include "platform/BGTaskScheduler.h"
#include "platform/MainExecutor.h"
#include "platform/UNUserNotificationCenter.h"

namespace pillora {

/// The agent, as the app and the command line see it. What is issued in one turn travels as one message, and its
/// completions come when the agent has answered. Listings are waited for, so that a cancel takes what is pending now
/// and travels together with what is planned after it. An agent that does not run is started through the bus, or from
/// the program beside ours. Every call ends within its time; then the completions get an error.
///
/// Main thread only; completions are called on it, from process(), finish(), the destructor or the call itself.
class AgentClient final : public UNUserNotificationCenter, public BGTaskScheduler {
 public:
  struct Options {
    std::string agentProgram;  ///< started when the bus cannot start the agent; none when empty
    std::chrono::milliseconds patience = std::chrono::seconds(5);  ///< for each call
  };

  /// Null when there is no session bus; then the in-process centre takes the agent's place.
  static std::unique_ptr<AgentClient> open(MainExecutor& executor, const Options& options);
  /// The same, and an error when there is a bus and no agent can be reached.
  static Result<std::unique_ptr<AgentClient>> connect(MainExecutor& executor, const Options& options);
  /// Sends what is queued and waits until it is kept or refused, but for no answer to a question.
  ~AgentClient() override;

  /// Whether there is an agent, started if need be. Every call looks for itself; this is for who wants to know.
  Result<void> findAgent();

  /// Lets the app that runs come to the front and do what is asked. False when the bus knows of none that runs; an
  /// error when it does not answer.
  Result<bool> activateApp(const Activation& activation);
  /// Makes this process the app that the agent asks and answers; see AppEndpoint.
  Result<void> becomeApp(AppHooks hooks);
  /// From here on this process is not the app any more, and nothing of `hooks` is called.
  void resignApp() { endpoint_.stop(); }

  /// What a host's event loop watches for reading (and writing, when wantsToWrite()), and calls process() for; also
  /// after every turn.
  int descriptor() const { return sd_bus_get_fd(bus_.get()); }
  bool wantsToWrite() const;
  sd_bus* connection() const { return bus_.get(); }
  void process();
  /// Whether answers are still to come.
  bool isAwaiting() const { return changes_.count + questions_.count > 0; }
  /// Sends what is queued and waits for all answers that are owed, for programs that end. The error is the first since
  /// the last call that no completion told: a change that was refused or is not known to be stored, a listing that
  /// came empty because the agent was gone.
  Result<void> finish();

  void setDelegate(UNUserNotificationCenterDelegate* delegate) override { endpoint_.setDelegate(delegate); }
  void requestAuthorization(unsigned options,
                            std::function<void(bool granted, std::optional<Error>)> completion) override;
  void getNotificationSettings(std::function<void(UNNotificationSettings)> completion) override;
  void setNotificationCategories(std::vector<UNNotificationCategory> categories) override;
  void getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) override;
  void add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) override;
  void getPendingNotificationRequests(std::function<void(std::vector<UNNotificationRequest>)> completion) override;
  void getPendingNotificationRequestIdentifiers(std::function<void(std::vector<std::string>)> completion) override;
  void removePendingNotificationRequests(std::vector<std::string> identifiers) override;
  void setBadgeCount(int64_t count) override;
  void getBadgeCount(std::function<void(int64_t)> completion) override;

  /// Deliberate: does nothing. The agent runs `pilloractl run-task`, which has its handler at hand.
  void registerForTaskWithIdentifier(const std::string&, std::function<void(std::shared_ptr<BGTask>)>) override {}
  Result<void> submit(BGProcessingTaskRequest request) override;

 private:
  /// Answers that have not come.
  struct Owed {
    int count = 0;
    std::chrono::steady_clock::time_point lastBy;  ///< when the last of them has come, if only as an error
  };

  AgentClient(MainExecutor& executor, const Options& options, BusHandle bus);

  Result<void> spawnAgent();
  Result<void> awaitAgent(pid_t process, int speech);
  MessageHandle newCall(const char* member) const;
  template <typename Read>
  auto ask(const char* member, Read read);
  Result<MessageHandle> callAndWait(sd_bus_message* call);
  template <typename Answered>
  void callLater(const MessageHandle& call, std::chrono::milliseconds patience, Owed& owed, Answered answered);
  void awaitAnswers(const Owed& owed);
  void send(const TurnQueue::Batch& batch);

  Options options_;
  BusHandle bus_;
  AppEndpoint endpoint_;
  Owed changes_, questions_;
  std::optional<std::chrono::steady_clock::time_point> missingSince_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
  TurnQueue queue_;
};

}  // namespace pillora

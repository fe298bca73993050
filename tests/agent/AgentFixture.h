// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "agent/AgentClient.h"
#include "agent/NotificationServer.h"
#include "agent/PrivateBus.h"
#include "agent/ProcessLauncher.h"
#include "doubles/Instants.h"
#include "doubles/Requests.h"
#include "doubles/TemporaryFolder.h"
#include "linux/QueuedMainExecutor.h"

namespace pillora {

/// The real agent process on a bus of its own, with a clock that stands at 2025-01-10T12:00:00Z until it is moved, and
/// a notification server and a client in the test's process.
class AgentWorld {
 public:
  /// `zone` is where the agent lives.
  explicit AgentWorld(const std::string& zone = "UTC");
  ~AgentWorld();

  void startAgent();
  void killAgent();
  void startServer();
  void stopServer() { server->disappear(); }
  /// The agent's present connection to the bus; empty when it has none.
  std::string agentConnection() const;
  /// The folder that stands for /etc.
  std::string etc() const { return folder.path() + "/etc"; }
  /// The command that starts an agent with that file.
  std::vector<std::string> agentCommand(const std::string& file) const;
  void connectClient();

  /// Time passes in the agent up to then, or its clock is set; returns when it has acted.
  void pass(std::string_view instant) { move("Pass", at(instant)); }
  void step(std::string_view instant) { move("Step", at(instant)); }
  void move(const char* method, Instant to);
  /// The same without waiting for the agent.
  void beginMove(const char* method, Instant to);
  void setZone(const std::string& zone);
  /// How many background runs have not ended.
  int64_t running();

  /// Ends the client's turn and waits for what it is owed.
  void settle();
  void add(const std::string& identifier, std::string_view minute);
  std::vector<std::string> pending();
  bool waitFor(const std::function<bool()>& happened);
  /// Waits until so many notifications have come.
  bool waitForNotified(size_t count) {
    return waitFor([&] { return server->notified.size() >= count; });
  }

  TemporaryFolder folder;
  PrivateBus bus;
  BusHandle own = bus.connect();
  QueuedMainExecutor executor;
  std::unique_ptr<NotificationServer> server;
  std::unique_ptr<AgentClient> client;
  StartedProgram agent;
  Instant now = at("2025-01-10T12:00:00Z");
  std::string zoneName;
  std::string agentProgram = PILLORA_AGENT_UNDER_TEST;
  std::string taskProgram = "true";
  ProcessLauncher::Limits taskLimits;
  std::string reminderFile = folder.path() + "/reminders.db";
  std::vector<std::string> extraEnvironment;  ///< of the agent
  std::string systemBus;                      ///< the address of the bus of the time service; none runs by itself
  std::optional<Instant> armed;               ///< what the agent's timer is armed for, as of the last move
  bool moved = false;                         ///< whether the agent has answered the last move

 private:
  template <typename Argument>
  void control(const char* method, const char* type, Argument argument);
};

}  // namespace pillora

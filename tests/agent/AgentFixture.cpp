// SPDX-License-Identifier: MIT
#include "agent/AgentFixture.h"

#include <cstdlib>
#include <filesystem>

#include "agent/Wire.h"

namespace pillora {

namespace {

constexpr const char* kControlName = "org.pillora.Pillora.AgentUnderTest";
constexpr const char* kControlPath = "/org/pillora/Pillora/AgentUnderTest";
constexpr const char* kControlInterface = "org.pillora.Pillora.AgentUnderTest1";

}  // namespace

AgentWorld::AgentWorld(const std::string& zone) : zoneName(zone) {
  setenv("DBUS_SESSION_BUS_ADDRESS", bus.address().c_str(), 1);
  std::filesystem::create_directory(etc());
  // So that waiting for a name wakes up.
  sd_bus_match_signal(
      own.get(), nullptr, "org.freedesktop.DBus", nullptr, "org.freedesktop.DBus", "NameOwnerChanged",
      [](sd_bus_message*, void*, sd_bus_error*) { return 0; }, nullptr);
}

AgentWorld::~AgentWorld() {
  client.reset();
  killAgent();
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void AgentWorld::startAgent() {
  auto environment = bus.environment();
  environment.push_back("TZ=" + zoneName);
  environment.push_back("DBUS_SYSTEM_BUS_ADDRESS=" +
                        (systemBus.empty() ? "unix:path=" + folder.path() + "/none" : systemBus));
  environment.insert(environment.end(), extraEnvironment.begin(), extraEnvironment.end());
  agent = StartedProgram(agentCommand(reminderFile), environment);
  ASSERT_TRUE(waitFor([&] { return PrivateBus::isOwned(own.get(), kControlName); })) << "the agent did not start";
}

std::vector<std::string> AgentWorld::agentCommand(const std::string& file) const {
  return {agentProgram,
          file,
          std::to_string(now.microseconds()),
          taskProgram,
          etc(),
          std::to_string(taskLimits.granted.count()),
          std::to_string(taskLimits.untilKilled.count())};
}

std::string AgentWorld::agentConnection() const {
  sd_bus_creds* owner = nullptr;
  if (sd_bus_get_name_creds(own.get(), kControlName, SD_BUS_CREDS_UNIQUE_NAME, &owner) < 0) return "";
  const char* name = nullptr;
  sd_bus_creds_get_unique_name(owner, &name);
  const std::string found = name != nullptr ? name : "";
  sd_bus_creds_unref(owner);
  return found;
}

int64_t AgentWorld::running() {
  sd_bus_message* message = nullptr;
  const int asked = sd_bus_call_method(own.get(), kControlName, kControlPath, kControlInterface, "Running", nullptr,
                                       &message, nullptr);
  const MessageHandle reply(message);
  int64_t count = -1;
  EXPECT_TRUE(asked >= 0 && sd_bus_message_read(message, "x", &count) > 0);
  return count;
}

void AgentWorld::killAgent() {
  if (agent.id() <= 0) return;
  agent.kill();
  ASSERT_TRUE(waitFor([&] { return !PrivateBus::isOwned(own.get(), kAgentName); }));
}

void AgentWorld::startServer() {
  server = std::make_unique<NotificationServer>(bus.connect());
  server->appear();
}

void AgentWorld::connectClient() {
  auto connected = AgentClient::connect(executor, {});
  ASSERT_TRUE(connected) << connected.error().description;
  client = *std::move(connected);
}

void AgentWorld::move(const char* method, Instant to) {
  beginMove(method, to);
  EXPECT_TRUE(waitFor([&] { return moved; }));
}

void AgentWorld::beginMove(const char* method, Instant to) {
  now = to;
  control(method, "x", to.microseconds());
}

void AgentWorld::setZone(const std::string& zone) {
  zoneName = zone;
  control("SetZone", "s", zone.c_str());
  EXPECT_TRUE(waitFor([&] { return moved; }));
}

template <typename Argument>
void AgentWorld::control(const char* method, const char* type, Argument argument) {
  moved = false;
  armed.reset();
  const auto answered = [](sd_bus_message* reply, void* self, sd_bus_error*) {
    auto& world = *static_cast<AgentWorld*>(self);
    int64_t time = -1;
    if (sd_bus_message_read(reply, "x", &time) > 0 && time >= 0) world.armed = Instant(Instant::Duration(time));
    world.moved = true;
    return 0;
  };
  sd_bus_call_method_async(own.get(), nullptr, kControlName, kControlPath, kControlInterface, method, answered, this,
                           type, argument);
}

void AgentWorld::settle() {
  executor.drain();
  EXPECT_TRUE(waitFor([&] { return !client->isAwaiting(); }));
}

void AgentWorld::add(const std::string& identifier, std::string_view minute) {
  client->add(request(identifier, minute),
              [](const std::optional<Error>& error) { EXPECT_FALSE(error) << error->description; });
  settle();
}

std::vector<std::string> AgentWorld::pending() {
  std::vector<std::string> found;
  client->getPendingNotificationRequestIdentifiers([&](std::vector<std::string> names) { found = std::move(names); });
  return found;
}

bool AgentWorld::waitFor(const std::function<bool()>& happened) {
  std::vector<sd_bus*> connections = {own.get()};
  if (server && server->isThere()) connections.push_back(server->bus());
  if (client) connections.push_back(client->connection());
  return PrivateBus::pumpUntil(connections, happened);
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "agent/AgentFixture.h"
#include "agent/AsyncCall.h"
#include "agent/Wire.h"

namespace pillora {
namespace {

/// Appends values of random types, among them those that the agent expects, whole and cut short.
class RandomArguments {
 public:
  explicit RandomArguments(uint32_t seed) : random_(seed) {}

  uint32_t below(uint32_t bound) { return std::uniform_int_distribution<uint32_t>(0, bound - 1)(random_); }

  void append(sd_bus_message* message, int depth = 0) {
    const uint32_t kind = below(depth > 4 ? 8 : 12);
    const int64_t number = numbers_[below(static_cast<uint32_t>(numbers_.size()))];
    switch (kind) {
      case 0:
        sd_bus_message_append(message, "s", text().c_str());
        return;
      case 1:
        sd_bus_message_append(message, "x", number);
        return;
      case 2:
        sd_bus_message_append(message, "u", static_cast<uint32_t>(number));
        return;
      case 3:
        sd_bus_message_append(message, "b", static_cast<int>(below(2)));
        return;
      case 4:
        sd_bus_message_append(message, "y", static_cast<int>(number & 0xFF));
        return;
      case 5:
        sd_bus_message_append(message, "d", static_cast<double>(number) / 3);
        return;
      case 6:
        sd_bus_message_append(message, "as", 2, text().c_str(), text().c_str());
        return;
      case 7:
        sd_bus_message_append(message, "o", "/a/b");
        return;
      case 8:
        sd_bus_message_append(message, "a(sv)", 1, names_[below(7)], "x", number);
        return;
      case 9:
        appendOperation(message);
        return;
      case 10:
        sd_bus_message_append(message, "v", "v", "s", text().c_str());
        return;
      default:
        for (uint32_t i = below(4); i > 0; --i) append(message, depth + 1);
    }
  }

  /// An operation of the right type with odd values.
  void appendOperation(sd_bus_message* message) {
    UNNotificationRequest odd = request("x", "2025-01-10T13:00");
    odd.identifier = text();
    odd.content.body = text();
    odd.content.badge = numbers_[below(8)];
    odd.trigger.wallTime = {numbers_[below(8)], below(256), below(256), below(256), below(256), {}};
    odd.trigger.repeats = below(2) == 0;
    WireWriter(message).operations({AddRequest{odd}, SetBadge{numbers_[below(8)]},
                                    SubmitTask{{text(), Instant(Instant::Duration(numbers_[below(8)])), true, true}},
                                    RemoveRequests{{text(), text()}}, SetCategories{{{text(), {}}}}});
  }

 private:
  std::string text() {
    switch (below(5)) {
      case 0:
        return "";
      case 1:
        return std::string(below(70'000), 'x');
      case 2:
        return "%s%n'; DROP TABLE requests; --";
      case 3:
        return kAspirin + "-1.0-followup-" + std::to_string(below(9));
      default:
        return "A";
    }
  }

  std::mt19937 random_;
  std::vector<int64_t> numbers_ = {
      0, 1, -1, 2025, std::numeric_limits<int64_t>::max(), std::numeric_limits<int64_t>::min(), 31, 255};
  const char* names_[7] = {"add", "remove", "categories", "badge", "submit", "", "unknown"};
};

constexpr const char* kMembers[] = {"Apply",    "GetPendingRequests",   "GetPendingIdentifiers", "GetCategories",
                                    "GetTasks", "RequestAuthorization", "GetSettings",           "Unknown"};

/// Sends one random call and waits for its answer, which may be an error. False when the agent is gone.
bool sendRandom(AgentWorld& world, sd_bus* sender, RandomArguments& random) {
  sd_bus_message* message = nullptr;
  sd_bus_message_new_method_call(sender, &message, kAgentName, kAgentPath, kAgentInterface, kMembers[random.below(8)]);
  const MessageHandle call(message);
  random.append(message);
  std::optional<std::string> error;
  callAsync(sender, message, std::chrono::seconds(10), [&](sd_bus_message* reply) {
    error = reply != nullptr && sd_bus_message_get_error(reply) != nullptr ? sd_bus_message_get_error(reply)->name : "";
  });
  const bool answered =
      PrivateBus::pumpUntil({world.own.get(), sender, world.server->bus()}, [&] { return error.has_value(); });
  return answered && *error != SD_BUS_ERROR_NO_REPLY && *error != SD_BUS_ERROR_SERVICE_UNKNOWN;
}

TEST(AgentHardening, messagesOfWrongTypesAndSizesDoNotHarmIt) {
  AgentWorld world;
  world.startServer();
  world.startAgent();
  world.connectClient();
  world.add("kept", "2025-01-10T13:00");
  const BusHandle stranger = world.bus.connect();
  RandomArguments random(20250110);
  for (int i = 0; i < 1500; ++i) ASSERT_TRUE(sendRandom(world, stranger.get(), random)) << "message " << i;
  const auto pending = world.pending();
  EXPECT_TRUE(std::ranges::find(pending, "kept") != pending.end());
  world.pass("2025-01-10T13:00:00Z");
  EXPECT_TRUE(world.waitFor([&] {
    return std::ranges::any_of(world.server->notified,
                               [](const Notified& each) { return each.summary == "Time for your medicine"; });
  }));
}

struct KnownSignal {
  const char *path, *interface, *member;
};
constexpr KnownSignal kSignals[] = {
    {"/org/freedesktop/Notifications", "org.freedesktop.Notifications", "ActionInvoked"},
    {"/org/freedesktop/Notifications", "org.freedesktop.Notifications", "NotificationClosed"},
    {"/org/freedesktop/Notifications", "org.freedesktop.Notifications", "ActivationToken"},
    {"/org/freedesktop/Notifications", "org.freedesktop.Notifications", "Other"},
    {"/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged"}};

/// To everybody, or straight to the agent. A bus may refuse what does not become the sender; that harms nobody.
void sendRandomSignal(sd_bus* sender, RandomArguments& random) {
  const KnownSignal& known = kSignals[random.below(5)];
  sd_bus_message* message = nullptr;
  ASSERT_GE(sd_bus_message_new_signal(sender, &message, known.path, known.interface, known.member), 0);
  const MessageHandle signal(message);
  if (random.below(3) == 0) {
    sd_bus_message_append(message, "us", 0x5000'0000 + random.below(3), "TAKEN_ACTION");
  } else if (random.below(3) == 0) {
    sd_bus_message_append(message, "sss", "org.freedesktop.Notifications", "", sd_bus_message_get_sender(message));
  } else {
    random.append(message);
  }
  if (random.below(2) == 0) sd_bus_message_set_destination(message, kAgentName);
  sd_bus_send(sender, message, nullptr);
}

TEST(AgentHardening, signalsOfWrongTypesAndSendersDoNotHarmIt) {
  AgentWorld world;
  world.startServer();
  world.startAgent();
  world.connectClient();
  const BusHandle stranger = world.bus.connect();
  RandomArguments random(7);
  for (int i = 0; i < 1000; ++i) {
    ASSERT_NO_FATAL_FAILURE(sendRandomSignal(i % 2 == 0 ? stranger.get() : world.server->bus(), random));
  }
  ASSERT_GE(sd_bus_flush(stranger.get()), 0);
  world.add("A", "2025-01-10T13:00");
  world.pass("2025-01-10T13:00:00Z");
  EXPECT_TRUE(world.waitForNotified(1));
}

TEST(AgentHardening, answersOfWrongTypesDoNotHarmIt) {
  AgentWorld world;
  // In the places of the server and of the app stands somebody who answers anything at all.
  const BusHandle babbler = world.bus.connect();
  RandomArguments random(11);
  sd_bus_add_filter(
      babbler.get(), nullptr,
      [](sd_bus_message* call, void* words, sd_bus_error*) {
        sd_bus_message* message = nullptr;
        if (sd_bus_message_new_method_return(call, &message) < 0) return 0;
        const MessageHandle reply(message);
        static_cast<RandomArguments*>(words)->append(message);
        return sd_bus_send(nullptr, message, nullptr) < 0 ? 0 : 1;
      },
      &random);
  for (const char* name : {"org.freedesktop.Notifications", kAppName}) {
    ASSERT_GE(sd_bus_request_name(babbler.get(), name, 0), 0);
  }
  world.startAgent();
  world.connectClient();
  const auto settle = [&] {
    world.executor.drain();
    ASSERT_TRUE(PrivateBus::pumpUntil({world.own.get(), babbler.get(), world.client->connection()},
                                      [&] { return !world.client->isAwaiting(); }));
  };
  for (int i = 0; i < 100; ++i) {
    world.client->requestAuthorization(7, [](bool, const std::optional<Error>&) {});
    world.client->getNotificationSettings([](UNNotificationSettings) {});
    world.client->add(request("A" + std::to_string(i), "2025-01-10T13:00"), {});
    ASSERT_NO_FATAL_FAILURE(settle());
  }
  world.beginMove("Pass", at("2025-01-10T13:00:00Z"));
  ASSERT_TRUE(PrivateBus::pumpUntil({world.own.get(), babbler.get()}, [&] { return world.moved; }));
  ASSERT_GE(sd_bus_release_name(babbler.get(), "org.freedesktop.Notifications"), 0);
  world.startServer();
  world.add("B", "2025-01-10T14:00");
  world.pass("2025-01-10T14:00:00Z");
  EXPECT_TRUE(PrivateBus::pumpUntil({world.own.get(), babbler.get(), world.server->bus()},
                                    [&] { return !world.server->notified.empty(); }));
}

TEST(AgentHardening, theInterfaceDescribesItself) {
  AgentWorld world;
  world.startServer();
  world.startAgent();
  sd_bus_message* message = nullptr;
  ASSERT_GE(sd_bus_call_method(world.own.get(), kAgentName, kAgentPath, "org.freedesktop.DBus.Introspectable",
                               "Introspect", nullptr, &message, nullptr),
            0);
  const MessageHandle reply(message);
  const char* text = nullptr;
  ASSERT_GT(sd_bus_message_read(message, "s", &text), 0);
  const std::string description = text;
  for (const char* part :
       {"interface name=\"org.pillora.Pillora.Agent1\"", "method name=\"Apply\"", "type=\"a(sv)\" name=\"operations\"",
        "type=\"as\" name=\"errors\"", "method name=\"GetPendingRequests\"", "property name=\"Badge\" type=\"x\""}) {
    EXPECT_NE(description.find(part), std::string::npos) << part << "\n" << description;
  }
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
// The real window and the real agent on a private bus, without a display: there is one window, whoever starts it.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <regex>
#include <sstream>

#include "agent/PrivateBus.h"
#include "agent/StandIn.h"
#include "agent/Wire.h"
#include "doubles/ChildProcess.h"

namespace pillora {
namespace {

using Names = std::vector<std::string>;

class OneWindow : public ::testing::Test {
 protected:
  ~OneWindow() override {
    // One that the bus has started is nobody's child here.
    if (startedByBus > 0) kill(startedByBus, SIGTERM);
  }
  std::vector<std::string> environment() const {
    const std::string& path = folder.path();
    return {"HOME=" + path,
            "XDG_DATA_HOME=" + path + "/data",
            "XDG_STATE_HOME=" + path + "/state",
            "XDG_CONFIG_HOME=" + path + "/config",
            "XDG_RUNTIME_DIR=" + path,
            "DBUS_SESSION_BUS_ADDRESS=" + bus.address(),
            "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent/bus",
            "QT_QPA_PLATFORM=offscreen",
            "QT_QUICK_BACKEND=software",
            "LC_ALL=C.UTF-8",
            "TZ=UTC",
            "PATH=/usr/bin:/bin"};
  }
  /// What became of a start that ends by itself, while `others` are handled.
  ChildProcess::Result start(const Names& options, const std::vector<sd_bus*>& others = {}) {
    Names words = {PILLORA};
    words.insert(words.end(), options.begin(), options.end());
    Names variables = environment();
    variables.emplace_back("XDG_ACTIVATION_TOKEN=token-7");
    auto ended =
        std::async(std::launch::async, [child = ChildProcess(words, variables)]() mutable { return child.finish(); });
    EXPECT_TRUE(PrivateBus::pumpUntil(
        others, [&] { return ended.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    return ended.get();
  }
  bool isRunning() { return PrivateBus::isOwned(own.get(), kAppName); }
  pid_t process() {
    sd_bus_message* message = nullptr;
    uint32_t id = 0;
    sd_bus_call_method(own.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                       "GetConnectionUnixProcessID", nullptr, &message, "s", kAppName);
    const MessageHandle reply(message);
    if (message != nullptr) sd_bus_message_read(message, "u", &id);
    return static_cast<pid_t>(id);
  }
  /// How a call on the window's application object ends: empty, or the error's name.
  std::string call(const MessageHandle& activation) {
    sd_bus_error error{};
    sd_bus_call(own.get(), activation.get(), 10'000'000, &error, nullptr);
    const std::string name = error.name != nullptr ? error.name : "";
    sd_bus_error_free(&error);
    return name;
  }
  /// Lets the bus start the window by the service file that is installed, from where it was built.
  void installService() {
    std::ifstream file(PILLORA_SERVICE_FILE);
    std::stringstream text;
    text << file.rdbuf();
    std::string command = "/usr/bin/env";
    for (const std::string& each : environment()) command += " " + each;
    const std::regex program("Exec=.*/bin/pillora\n");
    ASSERT_TRUE(std::regex_search(text.str(), program)) << text.str();
    std::ofstream(bus.services() + "/org.pillora.Pillora.service")
        << std::regex_replace(text.str(), program, "Exec=" + command + " " + PILLORA + "\n");
    ASSERT_GE(sd_bus_call_method(own.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                 "ReloadConfig", nullptr, nullptr, nullptr),
              0);
  }

  TemporaryFolder folder;
  PrivateBus bus;  // the agent goes with it
  BusHandle own = bus.connect();
  pid_t startedByBus = 0;
};

TEST_F(OneWindow, aStartThatFindsItRunningHandsOverWhatIsAskedAndEnds) {
  StandIn running(bus.connect());
  struct Case {
    Names options;
    std::string action;
  };
  for (const auto& [options, action] :
       {Case{{}, ""}, Case{{"--add-medicine"}, "add-medicine"}, Case{{"--today"}, "today"}}) {
    running.actions.clear();
    running.activations.clear();
    const auto ended = start(options, {running.bus()});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_EQ(running.actions, Names{action});
    EXPECT_EQ(running.activations, Names{"token-7"});
  }
  EXPECT_FALSE(std::filesystem::exists(folder.path() + "/data")) << "it opened no store";
}

TEST_F(OneWindow, theFirstStartTakesTheNameAndAnswersTheDesktop) {
  const StartedProgram window({PILLORA}, environment());
  ASSERT_TRUE(PrivateBus::pumpUntil({own.get()}, [&] { return isRunning(); }));
  EXPECT_EQ(call(activationCall(own.get(), {})), "");
  EXPECT_EQ(call(activationCall(own.get(), {.action = "add-medicine", .token = "token-8"})), "");
  EXPECT_EQ(call(activationCall(own.get(), {.action = "nothing that there is"})), "");
  EXPECT_EQ(start({"--today"}).status, 0);
  EXPECT_EQ(process(), window.id());
}

TEST_F(OneWindow, theBusStartsItForWhoAsksSomethingOfIt) {
  installService();
  ASSERT_FALSE(isRunning());
  EXPECT_EQ(call(activationCall(own.get(), {.action = "add-medicine"})), "");
  startedByBus = process();
  EXPECT_GT(startedByBus, 0);
}

/// An agent that keeps what it is told and answers no question.
class SilentAgent {
 public:
  explicit SilentAgent(BusHandle bus) : bus_(std::move(bus)) {
    EXPECT_GE(sd_bus_request_name(bus_.get(), kAgentName, 0), 0);
    sd_bus_add_filter(bus_.get(), nullptr, &called, this);
  }
  sd_bus* bus() const { return bus_.get(); }
  bool isAsked = false;

 private:
  static int called(sd_bus_message* call, void* self, sd_bus_error*) {
    if (sd_bus_message_is_method_call(call, kAgentInterface, "RequestAuthorization") > 0) {
      static_cast<SilentAgent*>(self)->isAsked = true;
    }
    if (sd_bus_message_is_method_call(call, kAgentInterface, "Apply") > 0) {
      sd_bus_message* message = nullptr;
      sd_bus_message_new_method_return(call, &message);
      const MessageHandle reply(message);
      sd_bus_message_open_container(message, 'a', "s");
      for (size_t count = WireReader(call).operations().size(); count > 0; --count) {
        sd_bus_message_append(message, "s", "");
      }
      sd_bus_message_close_container(message);
      sd_bus_send(nullptr, message, nullptr);
    }
    return sd_bus_message_is_method_call(call, nullptr, nullptr) > 0 ? 1 : 0;
  }

  BusHandle bus_;
};

TEST_F(OneWindow, toldToEndItEndsInOrderWhateverIsAskedOfItMeanwhile) {
  SilentAgent agent(bus.connect());
  StartedProgram window({PILLORA}, environment());
  ASSERT_TRUE(PrivateBus::pumpUntil({own.get(), agent.bus()}, [&] { return agent.isAsked; }));
  ASSERT_TRUE(isRunning());
  kill(window.id(), SIGTERM);
  auto ended = std::async(std::launch::async, [&] { return window.wait(); });
  // It is owed an answer for half a minute, which it must not wait for.
  ASSERT_TRUE(PrivateBus::pumpUntil({own.get(), agent.bus()}, [&] {
    const auto activation = activationCall(own.get(), {.action = "add-medicine"});
    sd_bus_message_set_auto_start(activation.get(), 0);
    sd_bus_send(own.get(), activation.get(), nullptr);
    return ended.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
  }));
  EXPECT_EQ(ended.get(), 0);
  EXPECT_FALSE(isRunning());
}

TEST_F(OneWindow, anAgentThatCannotStartDoesNotKeepItAway) {
  std::filesystem::create_directories(folder.path() + "/state/pillora/reminders.db");
  ChildProcess window({PILLORA}, environment());
  ASSERT_TRUE(PrivateBus::pumpUntil({own.get()}, [&] { return isRunning(); }));
  EXPECT_FALSE(PrivateBus::isOwned(own.get(), kAgentName));
  EXPECT_EQ(call(activationCall(own.get(), {})), "");
  kill(process(), SIGTERM);
  const auto ended = window.finish();
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.err.find("pillora: pillora-agent: "), std::string::npos) << ended.err;
}

TEST_F(OneWindow, aLanguageThatNobodySpeaksIsRefusedByName) {
  const auto refused = start({"--language", "tlh"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_NE(refused.err.find("unknown language: tlh"), std::string::npos) << refused.err;
}

}  // namespace
}  // namespace pillora

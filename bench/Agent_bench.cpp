// SPDX-License-Identifier: MIT
// The real agent on a bus of its own with 10,000 pending requests: how long it takes to plan one medicine anew and to
// start, what it weighs, and how often it wakes when nothing is due.
#include <gtest/gtest.h>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "agent/AgentClient.h"
#include "agent/PrivateBus.h"
#include "doubles/Requests.h"
#include "linux/QueuedMainExecutor.h"

namespace pillora::bench {

namespace {

constexpr int kMedicines = 20;
constexpr int kPerMedicine = 500;  // thirty doses and most of a day's follow-ups for each

std::string medicine(int index) {
  char text[64];
  std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012d", index);
  return text;
}

/// The agent with its full file.
class Agent {
 public:
  Agent() {
    setenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().c_str(), 1);
    start();
    for (int index = 0; index < kMedicines; ++index) plan(index);
    finish();
  }

  void start() {
    client.reset();
    process_ = StartedProgram({PILLORA_AGENT}, {"XDG_STATE_HOME=" + folder_.path()});
    const auto owned = [this] { return PrivateBus::isOwned(own_.get(), kAgentName); };
    if (!PrivateBus::pumpUntil({own_.get()}, owned)) std::abort();
    auto connected = AgentClient::connect(executor_, {});
    if (!connected) std::abort();
    client = *std::move(connected);
  }
  void kill() {
    process_.kill();
    const auto gone = [this] { return !PrivateBus::isOwned(own_.get(), kAgentName); };
    if (!PrivateBus::pumpUntil({own_.get()}, gone)) std::abort();
  }

  void plan(int index) {
    for (int i = 0; i < kPerMedicine; ++i) {
      const std::string minute = "209" + std::to_string(i % 10) + "-01-10T08:00";
      client->add(request(medicine(index) + "-" + std::to_string(i) + ".0", minute),
                  [](const std::optional<Error>& error) {
                    if (error) std::abort();
                  });
    }
  }
  void cancel(int index) {
    client->getPendingNotificationRequestIdentifiers([&](std::vector<std::string> identifiers) {
      std::erase_if(identifiers, [prefix = medicine(index)](const auto& each) { return !each.starts_with(prefix); });
      client->removePendingNotificationRequests(std::move(identifiers));
    });
  }
  void finish() {
    executor_.drain();
    client->finish();
  }
  size_t pending() {
    size_t count = 0;
    client->getPendingNotificationRequestIdentifiers([&](const auto& found) { count = found.size(); });
    return count;
  }

  /// A number of /proc/PID/FILE behind `name`.
  long long proc(const std::string& file, const std::string& name) const {
    std::ifstream in("/proc/" + std::to_string(process_.id()) + "/" + file);
    for (std::string line; std::getline(in, line);) {
      if (line.rfind(name, 0) == 0) return std::strtoll(line.c_str() + name.size(), nullptr, 10);
    }
    return -1;
  }

  std::unique_ptr<AgentClient> client;

 private:
  TemporaryFolder folder_;
  PrivateBus bus_;
  BusHandle own_ = bus_.connect();
  QueuedMainExecutor executor_;
  StartedProgram process_;
};

Agent& agent() {
  static Agent full;
  return full;
}

void replanOneMedicine(benchmark::State& state) {
  int index = 0;
  agent();
  for (auto _ : state) {
    agent().cancel(index);
    agent().plan(index);
    agent().finish();
    index = (index + 1) % kMedicines;
  }
  if (agent().pending() != static_cast<size_t>(kMedicines * kPerMedicine)) state.SkipWithError("requests are missing");
}

void startToFirstAnswer(benchmark::State& state) {
  agent();
  for (auto _ : state) {
    state.PauseTiming();
    agent().kill();
    state.ResumeTiming();
    agent().start();
    if (agent().pending() != static_cast<size_t>(kMedicines * kPerMedicine))
      state.SkipWithError("requests are missing");
  }
}

void idleForAMinute(benchmark::State& state) {
  agent().kill();
  agent().start();
  const auto wakeUps = [] {
    return agent().proc("status", "voluntary_ctxt_switches:") + agent().proc("status", "nonvoluntary_ctxt_switches:");
  };
  std::this_thread::sleep_for(std::chrono::seconds(2));
  for (auto _ : state) {
    const auto before = wakeUps();
    std::this_thread::sleep_for(std::chrono::minutes(1));
    state.counters["wakeUps"] = static_cast<double>(wakeUps() - before);
  }
  state.counters["pssKiB"] = static_cast<double>(agent().proc("smaps_rollup", "Pss:"));
  state.counters["rssKiB"] = static_cast<double>(agent().proc("status", "VmRSS:"));
}

BENCHMARK(replanOneMedicine)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(startToFirstAnswer)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);
BENCHMARK(idleForAMinute)->Unit(benchmark::kSecond)->UseRealTime()->Iterations(1);

}  // namespace
}  // namespace pillora::bench

BENCHMARK_MAIN();

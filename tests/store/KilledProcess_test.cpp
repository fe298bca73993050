// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <random>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include "StoreTest.h"

namespace pillora {
namespace {

/// A running pillora_take_loop and the lines that it wrote.
class TakeLoop {
 public:
  TakeLoop(const std::string& store, const std::string& mode, uint64_t seed, int doses, int steps) {
    int ends[2];
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    output_ = ends[0];
    std::vector<std::string> words = {PILLORA_TAKE_LOOP,    store, mode, std::to_string(seed), std::to_string(doses),
                                      std::to_string(steps)};
    std::vector<char*> arguments;
    for (auto& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    EXPECT_EQ(::posix_spawn(&process_, words[0].c_str(), &actions, nullptr, arguments.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
  }
  ~TakeLoop() {
    ::close(output_);
    if (process_ > 0) kill();
  }
  TakeLoop(const TakeLoop&) = delete;
  TakeLoop& operator=(const TakeLoop&) = delete;

  /// Reads until there are that many lines or the time is over; false at the end of the output.
  bool read(size_t lines, std::chrono::microseconds time) {
    const auto deadline = std::chrono::steady_clock::now() + time;
    while (lines_.size() < lines) {
      const auto left =
          std::chrono::duration_cast<std::chrono::nanoseconds>(deadline - std::chrono::steady_clock::now());
      if (left.count() <= 0) return true;
      const timespec wait{static_cast<time_t>(left.count() / 1'000'000'000),
                          static_cast<long>(left.count() % 1'000'000'000)};
      pollfd ready{output_, POLLIN, 0};
      if (::ppoll(&ready, 1, &wait, nullptr) > 0 && !readSome()) return false;
    }
    return true;
  }
  void kill() {
    ::kill(process_, SIGKILL);
    int status = 0;
    ::waitpid(process_, &status, 0);
    process_ = 0;
    EXPECT_TRUE(WIFSIGNALED(status)) << "it ended by itself with status " << status;
  }
  void finish() {
    while (readSome()) continue;
    int status = 0;
    ::waitpid(process_, &status, 0);
    process_ = 0;
    EXPECT_EQ(status, 0);
  }
  /// The lines written so far; after kill() or finish() all of them.
  const Names& lines() {
    if (process_ == 0) {
      while (readSome()) continue;
    }
    return lines_;
  }

 private:
  bool readSome() {
    char buffer[4096];
    const ssize_t count = ::read(output_, buffer, sizeof buffer);
    for (ssize_t i = 0; i < count; ++i) {
      if (buffer[i] != '\n') {
        line_ += buffer[i];
      } else {
        lines_.push_back(std::exchange(line_, {}));
      }
    }
    return count > 0;
  }

  pid_t process_ = 0;
  int output_ = -1;
  std::string line_;
  Names lines_;
};

class KilledProcess : public StoreTest {
 protected:
  void SetUp() override {
    const auto container = open(store());
    container->mainContext().insert(makeMedicine("Aspirin"));
    queue_.drain();
  }

  /// How often each dose is in the store, as a sound file says.
  std::map<std::string, int> dosesInStore() {
    SQLite::Database database(store(), SQLite::OPEN_READWRITE, 30'000);
    EXPECT_EQ(database.execAndGet("PRAGMA integrity_check").getString(), "ok");
    EXPECT_FALSE(SQLite::Statement(database, "PRAGMA foreign_key_check").executeStep());
    std::map<std::string, int> doses;
    SQLite::Statement rows(database, "SELECT scheduledTime / 60000000, count(*) FROM DoseLog GROUP BY 1");
    while (rows.executeStep()) doses[rows.getColumn(0).getString()] = rows.getColumn(1).getInt();
    return doses;
  }
};

TEST_F(KilledProcess, everyReportedDoseIsThereOnceAfterAnyKill) {
  const char* asked = std::getenv("PILLORA_KILLS");
  const int kills = asked != nullptr ? std::atoi(asked) : 200;
  const uint64_t seed = std::random_device()();
  std::cout << "seed " << seed << ", kills " << kills << std::endl;
  std::mt19937_64 random(seed);
  const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };

  std::map<std::string, int> reported;
  for (int kill = 0; kill < kills; ++kill) {
    TakeLoop loop(store(), "take", random(), 1'000'000, 1'000'000);
    // Half of the kills follow a line, when the next step begins; the others come at any moment, start-up included.
    if (upTo(1) == 0) {
      EXPECT_TRUE(loop.read(static_cast<size_t>(1 + upTo(7)), std::chrono::seconds(30)));
    } else {
      EXPECT_TRUE(loop.read(SIZE_MAX, std::chrono::microseconds(upTo(30'000))));
    }
    loop.kill();
    for (const std::string& line : loop.lines()) {
      ASSERT_EQ(line.front(), '+') << line;
      ++reported[line.substr(1)];
    }
    const auto doses = dosesInStore();
    for (const auto& [dose, count] : doses) ASSERT_EQ(count, 1) << "dose " << dose << " after kill " << kill;
    for (const auto& [dose, count] : reported) {
      ASSERT_EQ(count, 1) << "dose " << dose << " was taken again";
      ASSERT_TRUE(doses.contains(dose)) << "dose " << dose << " is lost after kill " << kill;
    }
  }
  EXPECT_GT(reported.size(), static_cast<size_t>(kills));
  std::cout << reported.size() << " doses reported, " << dosesInStore().size() << " in the store" << std::endl;
}

TEST_F(KilledProcess, twoProcessesThatTakeAndUndoLoseAndDoubleNothing) {
  const uint64_t seed = std::random_device()();
  std::cout << "seed " << seed << std::endl;
  constexpr int kDoses = 20;
  constexpr int kSteps = 400;
  TakeLoop one(store(), "switch", seed, kDoses, kSteps);
  TakeLoop other(store(), "switch", seed + 1, kDoses, kSteps);
  one.finish();
  other.finish();
  std::map<std::string, int> balance;
  bool haveMet = false;
  for (TakeLoop* loop : {&one, &other}) {
    std::map<std::string, int> own;
    EXPECT_EQ(loop->lines().size(), size_t{kSteps}) << "a step was not saved";
    for (const std::string& line : loop->lines()) {
      ASSERT_NE(line.front(), '!') << "dose " << line.substr(1) << " was there twice";
      const int change = line.front() == '+' ? 1 : -1;
      balance[line.substr(1)] += change;
      own[line.substr(1)] += change;
      haveMet = haveMet || own[line.substr(1)] < 0;
    }
  }
  EXPECT_TRUE(haveMet) << "neither undid what the other took";
  const auto doses = dosesInStore();
  for (const auto& [dose, taken] : balance) {
    EXPECT_EQ(taken, doses.contains(dose) ? doses.at(dose) : 0) << "dose " << dose;
  }
  for (const auto& [dose, count] : doses) EXPECT_EQ(count, 1) << "dose " << dose;
}

TEST_F(KilledProcess, twoProcessesThatTakeTheSameDosesTakeEachOnce) {
  constexpr int kDoses = 50;
  TakeLoop one(store(), "take", 1, kDoses, 300);
  TakeLoop other(store(), "take", 1, kDoses, 300);
  one.finish();
  other.finish();
  const auto doses = dosesInStore();
  for (const auto& [dose, count] : doses) EXPECT_EQ(count, 1) << "dose " << dose;
  EXPECT_EQ(one.lines().size() + other.lines().size(), doses.size());
}

}  // namespace
}  // namespace pillora

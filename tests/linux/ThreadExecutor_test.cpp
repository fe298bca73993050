// SPDX-License-Identifier: MIT
#include "linux/ThreadExecutor.h"

#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "linux/QueuedMainExecutor.h"
#include "support/Result.h"

namespace pillora {
namespace {

/// Waits until all that was posted so far has run.
void finish(BackgroundExecutor& executor) {
  std::promise<void> done;
  executor.post([&] { done.set_value(); });
  done.get_future().wait();
}

TEST(ThreadExecutor, jobsRunOneAfterTheOtherOnOneThreadThatIsNotTheCallers) {
  ThreadExecutor executor;
  std::vector<std::pair<int, std::thread::id>> ran;
  for (int i = 0; i < 100; ++i) executor.post([&, i] { ran.emplace_back(i, std::this_thread::get_id()); });
  finish(executor);
  ASSERT_EQ(ran.size(), 100u);
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(ran[static_cast<size_t>(i)].first, i);
    EXPECT_EQ(ran[static_cast<size_t>(i)].second, ran[0].second);
  }
  EXPECT_NE(ran[0].second, std::this_thread::get_id());
}

TEST(ThreadExecutor, aJobMayPostAnother) {
  ThreadExecutor executor;
  std::promise<int> done;
  executor.post([&] { executor.post([&] { done.set_value(2); }); });
  EXPECT_EQ(done.get_future().get(), 2);
}

/// Runs something when it is destroyed.
struct AtEnd {
  std::function<void()> run;
  ~AtEnd() { run(); }
};

TEST(ThreadExecutor, theEndDropsWhatHasNotBegunAndWaitsForTheJobUnderWay) {
  std::promise<void> begun, mayEnd;
  bool ended = false, ranLater = false;
  {
    ThreadExecutor executor;
    executor.post([&] {
      begun.set_value();
      mayEnd.get_future().wait();
      ended = true;
    });
    begun.get_future().wait();
    // The first job ends once the second one is dropped; were it not, this test would never end.
    auto dropping = std::make_shared<AtEnd>(AtEnd{[] {}});
    dropping->run = [&] { mayEnd.set_value(); };
    executor.post([&, dropping = std::move(dropping)] { ranLater = true; });
  }
  EXPECT_TRUE(ended);
  EXPECT_FALSE(ranLater);
}

TEST(ThreadExecutor, withoutAJobThereIsNothingToWaitFor) { const ThreadExecutor executor; }

TEST(RunInBackground, worksOnTheQueueAndCompletesOnTheMainThread) {
  QueuedMainExecutor main;
  ThreadExecutor background;
  std::thread::id workedOn, completedOn;
  std::string result;
  runInBackground(
      background, main,
      [&] {
        workedOn = std::this_thread::get_id();
        return Result<std::string>("read");
      },
      [&](Result<std::string> outcome) {
        completedOn = std::this_thread::get_id();
        result = *outcome;
      });
  finish(background);
  EXPECT_EQ(result, "") << "the main thread's turn has not ended";
  main.drain();
  EXPECT_EQ(result, "read");
  EXPECT_EQ(completedOn, std::this_thread::get_id());
  EXPECT_NE(workedOn, completedOn);
}

TEST(RunInBackground, whatTheCompletionHoldsIsDestroyedOnTheMainThread) {
  QueuedMainExecutor main;
  ThreadExecutor background;
  std::thread::id destroyedOn;
  {
    const auto witness = std::make_shared<AtEnd>(AtEnd{[] {}});
    witness->run = [&] { destroyedOn = std::this_thread::get_id(); };
    runInBackground(
        background, main, [] { return 1; }, [witness](int) {});
  }
  finish(background);
  EXPECT_EQ(destroyedOn, std::thread::id()) << "still held";
  main.drain();
  EXPECT_EQ(destroyedOn, std::this_thread::get_id());
}

}  // namespace
}  // namespace pillora

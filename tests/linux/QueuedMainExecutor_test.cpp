// SPDX-License-Identifier: MIT
#include "linux/QueuedMainExecutor.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace pillora {
namespace {

TEST(QueuedMainExecutor, jobsRunInTheirOrderWhenTheTurnEndsAndNotBefore) {
  QueuedMainExecutor executor;
  std::vector<int> ran;
  executor.post([&] { ran.push_back(1); });
  executor.post([&] { ran.push_back(2); });
  EXPECT_TRUE(ran.empty());
  executor.drain();
  EXPECT_EQ(ran, (std::vector<int>{1, 2}));
  executor.drain();
  EXPECT_EQ(ran.size(), 2u) << "each job runs once";
}

TEST(QueuedMainExecutor, whatAJobPostsRunsInTheSameTurn) {
  QueuedMainExecutor executor;
  std::vector<int> ran;
  executor.post([&] {
    executor.post([&] { ran.push_back(2); });
    ran.push_back(1);
  });
  executor.drain();
  EXPECT_EQ(ran, (std::vector<int>{1, 2}));
}

TEST(QueuedMainExecutor, jobsMayComeFromAnyThreadAndRunOnTheOneThatDrains) {
  QueuedMainExecutor executor;
  std::thread::id ranOn;
  std::thread([&] { executor.post([&] { ranOn = std::this_thread::get_id(); }); }).join();
  executor.drain();
  EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(QueuedMainExecutor, waitingRunsWhatAnotherThreadPostsAndWhatWasThereBefore) {
  QueuedMainExecutor executor;
  std::vector<int> ran;
  executor.post([&] { ran.push_back(1); });
  executor.wait();
  EXPECT_EQ(ran, (std::vector<int>{1}));
  std::thread other([&] { executor.post([&] { ran.push_back(2); }); });
  executor.wait();
  other.join();
  EXPECT_EQ(ran, (std::vector<int>{1, 2}));
}

}  // namespace
}  // namespace pillora

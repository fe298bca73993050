// SPDX-License-Identifier: MIT
#include "support/BroadcastCentre.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace pillora {
namespace {

TEST(BroadcastCentre, reachesAllWhoListenToTheNameInTheirOrder) {
  BroadcastCentre centre;
  std::vector<std::string> heard;
  const auto note = [&](const std::string& who) {
    return [&heard, who](const UserInfo& userInfo) { heard.push_back(who + userInfo.front().first); };
  };
  const auto first = centre.observe("taken", note("first "));
  const auto second = centre.observe("taken", note("second "));
  const auto other = centre.observe("skipped", note("other "));
  centre.post("taken", {{"id", int64_t{1}}});
  centre.post("snoozed", {{"id", int64_t{1}}});
  EXPECT_EQ(heard, (std::vector<std::string>{"first id", "second id"}));
}

TEST(BroadcastCentre, anObserverWhoseHandleIsGoneIsNotCalled) {
  BroadcastCentre centre;
  int calls = 0;
  auto handle = centre.observe("taken", [&](const UserInfo&) { ++calls; });
  centre.post("taken", {});
  handle.reset();
  centre.post("taken", {});
  EXPECT_EQ(calls, 1);
}

TEST(BroadcastCentre, anObserverMayObservePostAndLeave) {
  BroadcastCentre centre;
  std::vector<std::string> heard;
  std::shared_ptr<void> late, leaving;
  leaving = centre.observe("taken", [&](const UserInfo&) {
    heard.emplace_back("taken");
    late = centre.observe("taken", [&](const UserInfo&) { heard.emplace_back("late"); });
    leaving.reset();
    centre.post("other", {});
  });
  const auto other = centre.observe("other", [&](const UserInfo&) { heard.emplace_back("other"); });
  centre.post("taken", {});
  EXPECT_EQ(heard, (std::vector<std::string>{"taken", "other"}));
  centre.post("taken", {});
  EXPECT_EQ(heard.back(), "late");
}

TEST(BroadcastCentre, mayBeUsedFromSeveralThreads) {
  BroadcastCentre centre;
  std::atomic<int> calls = 0;
  const auto handle = centre.observe("taken", [&](const UserInfo&) { ++calls; });
  const auto postMany = [&] {
    for (int i = 0; i < 1000; ++i) {
      const auto another = centre.observe("taken", [](const UserInfo&) {});
      centre.post("taken", {});
    }
  };
  std::thread first(postMany), second(postMany);
  first.join();
  second.join();
  EXPECT_EQ(calls, 2000);
}

TEST(UserInfo, anEntryIsFoundUnderItsNameAndTypeAlone) {
  const UserInfo userInfo = {{"number", int64_t{7}}, {"text", std::string("7")}, {"truth", true}, {"real", 7.0}};
  ASSERT_NE(entryOf<int64_t>(userInfo, "number"), nullptr);
  EXPECT_EQ(*entryOf<int64_t>(userInfo, "number"), 7);
  ASSERT_NE(entryOf<std::string>(userInfo, "text"), nullptr);
  EXPECT_EQ(*entryOf<std::string>(userInfo, "text"), "7");
  EXPECT_EQ(entryOf<int64_t>(userInfo, "text"), nullptr);
  EXPECT_EQ(entryOf<int64_t>(userInfo, "truth"), nullptr);
  EXPECT_EQ(entryOf<int64_t>(userInfo, "real"), nullptr);
  EXPECT_EQ(entryOf<bool>(userInfo, "number"), nullptr);
  EXPECT_EQ(entryOf<int64_t>(userInfo, "Number"), nullptr);
  EXPECT_EQ(entryOf<int64_t>({}, "number"), nullptr);
}

}  // namespace
}  // namespace pillora

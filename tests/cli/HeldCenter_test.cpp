// SPDX-License-Identifier: MIT
#include "cli/HeldCenter.h"

#include <gtest/gtest.h>

#include "doubles/FakeNotificationCenter.h"
#include "doubles/FakeTaskScheduler.h"
#include "doubles/Requests.h"

namespace pillora {
namespace {

class HeldCenterTest : public ::testing::Test {
 protected:
  /// What the completion of one request told: nothing yet, "" for success, or the error.
  std::optional<std::string> told;

  void addOne() {
    held.add(request("A", "2025-01-10T13:00"),
             [this](const std::optional<Error>& error) { told = error ? error->description : ""; });
  }

  FakeNotificationCenter center;
  FakeTaskScheduler scheduler;
  std::optional<Error> opening, finishing;
  int openings = 0;
  Reminders reminders{center, scheduler, nullptr, [this]() -> Result<void> {
                        if (finishing) return *finishing;
                        return {};
                      }};
  HeldCenter held{[this]() -> Result<Reminders*> {
    ++openings;
    if (opening) return *opening;
    return &reminders;
  }};
};

TEST_F(HeldCenterTest, holdsChangesUntilTheCommit) {
  addOne();
  held.setBadgeCount(2);
  EXPECT_EQ(openings, 0);
  ASSERT_TRUE(held.prepare());
  EXPECT_TRUE(center.pending.empty());
  ASSERT_TRUE(held.commit());
  EXPECT_EQ(center.pending.size(), 1u);
  EXPECT_EQ(center.badge, 2);
  EXPECT_EQ(told, "");
  EXPECT_EQ(openings, 1);
}

TEST_F(HeldCenterTest, aCommitThatIsNotKnownToBeKeptIsOneErrorForAll) {
  addOne();
  ASSERT_TRUE(held.prepare());
  finishing = Error{"the agent is gone"};
  const auto committed = held.commit();
  ASSERT_FALSE(committed);
  EXPECT_EQ(committed.error().description, "the agent is gone");
  EXPECT_EQ(told, std::nullopt);
  finishing.reset();
  EXPECT_TRUE(held.commit()) << "nothing is held any more";
  EXPECT_EQ(told, std::nullopt);
}

TEST_F(HeldCenterTest, aQuestionThatWasNotAnsweredStopsTheCommandBeforeItSaves) {
  held.getPendingNotificationRequestIdentifiers([](const std::vector<std::string>&) {});
  finishing = Error{"no answer"};
  EXPECT_FALSE(held.prepare());
}

TEST_F(HeldCenterTest, aCentreThatCannotBeOpenedIsTheErrorOfWhoeverPlans) {
  opening = Error{"no centre"};
  EXPECT_TRUE(held.prepare()) << "nothing is held";
  addOne();
  EXPECT_FALSE(held.prepare());
  opening.reset();
  EXPECT_TRUE(held.prepare());
}

}  // namespace
}  // namespace pillora

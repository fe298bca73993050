// SPDX-License-Identifier: MIT
#include "agent/Campaign.h"

#include <gtest/gtest.h>

namespace pillora {
namespace {

TEST(Campaign, noReminderIsLostOrDoubledWhateverHappens) {
  // 400 requests in three months, over the clock changes of both zones in spring and autumn.
  Campaign campaign(3, 400, 100);
  const CampaignCounts counts = campaign.run();
  EXPECT_EQ(counts.faults(), 0) << counts.text();
  EXPECT_EQ(counts.added, 400);
  EXPECT_EQ(counts.armed, counts.shownInTheirMinute + counts.shownOverdue + counts.foldedAway + counts.cancelled +
                              counts.replaced + counts.stillPending)
      << counts.text();
  // A campaign in which nothing happened would show nothing.
  EXPECT_GT(counts.shownInTheirMinute, 50) << counts.text();
  EXPECT_GT(counts.shownOverdue, 0) << counts.text();
  EXPECT_GT(counts.foldedAway, 0) << counts.text();
  EXPECT_GT(counts.killsWhileMoving, 0) << counts.text();
  EXPECT_GT(counts.bubblesReplaced, 0) << counts.text();
}

}  // namespace
}  // namespace pillora

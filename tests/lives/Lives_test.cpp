// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "lives/Life.h"

namespace pillora {
namespace {

constexpr int kFiveYears = 1826;

/// One life of five years at each of the ten homes.
class Lives : public ::testing::TestWithParam<uint64_t> {};

TEST_P(Lives, whatIsShownAndKeptIsWhatWasDone) {
  Life life(GetParam(), kFiveYears);
  EXPECT_EQ(life.run(), "") << "seed " << GetParam() << ", " << life.home();
  // A life in which little happens shows little.
  for (const char* what :
       {"adds a medicine", "takes on Today", "takes on Upcoming", "snoozes", "undoes", "changes a status in History",
        "edits a medicine", "makes a backup", "restores a backup", "deletes by swipe", "deletes in the details",
        "journeys", "background checks", "background runs", "is killed", "turns lost in the store", "inspections",
        "unlocks", "reminders shown"}) {
    EXPECT_TRUE(life.done().contains(what) && life.done().at(what) > 0) << "nobody ever " << what;
  }
}

INSTANTIATE_TEST_SUITE_P(Seed, Lives, ::testing::Range<uint64_t>(1, 11), ::testing::PrintToStringParamName());

}  // namespace
}  // namespace pillora

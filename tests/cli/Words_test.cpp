// SPDX-License-Identifier: MIT
#include "cli/Words.h"

#include <gtest/gtest.h>

#include <limits>

namespace pillora {
namespace {

TEST(Words, wholeNumbersAreDigitsPerhapsAfterAMinus) {
  EXPECT_EQ(wholeNumber("0"), 0);
  EXPECT_EQ(wholeNumber("007"), 7);
  EXPECT_EQ(wholeNumber("-12"), -12);
  EXPECT_EQ(wholeNumber("99999999999999999999"), std::numeric_limits<int64_t>::max());
  EXPECT_EQ(wholeNumber("-99999999999999999999"), std::numeric_limits<int64_t>::min());
  for (const char* word : {"", "-", "+1", "1.0", "1e3", " 1", "1 ", "0x1", "一", "--1"})
    EXPECT_FALSE(wholeNumber(word)) << word;
}

TEST(Words, flagsAreYesOrNo) {
  EXPECT_EQ(yesOrNo("yes"), true);
  EXPECT_EQ(yesOrNo("no"), false);
  for (const char* word : {"", "Yes", "true", "1", "y"}) EXPECT_FALSE(yesOrNo(word)) << word;
}

TEST(Words, timesOfDayAreHoursAndTwoDigitsOfMinutes) {
  EXPECT_EQ(timeOfDay("08:30"), (TimeOfDay{8, 30}));
  EXPECT_EQ(timeOfDay("8:30"), (TimeOfDay{8, 30}));
  EXPECT_EQ(timeOfDay("25:61"), (TimeOfDay{25, 61}));
  for (const char* word : {"", "8", "8:3", "008:30", "8:300", "8:30:00", "8.30", "-8:30", "8:-3", ":30", "8:"}) {
    EXPECT_FALSE(timeOfDay(word)) << word;
  }
}

TEST(Words, listsOfTimesKeepTheirOrder) {
  EXPECT_EQ(timesOfDay("20:00,08:00"), (std::vector<TimeOfDay>{{20, 0}, {8, 0}}));
  for (const char* words : {"", ",", "08:00,", ",08:00", "08:00,,20:00", "08:00 20:00"})
    EXPECT_FALSE(timesOfDay(words)) << words;
}

TEST(Words, daysStandBeforeTheirTime) {
  const auto read = daysAndTime("6,2,4,2@09:05");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->days, (std::set<int64_t>{2, 4, 6}));
  EXPECT_EQ(read->time, (TimeOfDay{9, 5}));
  ASSERT_TRUE(daysAndTime("@09:00"));
  EXPECT_TRUE(daysAndTime("@09:00")->days.empty());
  for (const char* words : {"", "2", "2@", "2@9", "09:00", "2,@09:00", ",2@09:00", "2@09:00@10:00", "Mon@09:00"}) {
    EXPECT_FALSE(daysAndTime(words)) << words;
  }
}

}  // namespace
}  // namespace pillora

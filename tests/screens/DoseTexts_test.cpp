// SPDX-License-Identifier: MIT
#include "screens/DoseTexts.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "icu/IcuTexts.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

const Instant kDue = at("2025-01-10T13:00:00Z");

class DoseTexts : public testing::Test {
 protected:
  std::unique_ptr<Texts> texts_ = *makeTexts("en_US", "UTC", "en");
};

TEST_F(DoseTexts, timingIsWordedByItsDistanceAndColouredByItsSign) {
  struct Case {
    Instant::Duration late;
    std::string text, color;
  };
  const Case cases[] = {
      {60s, "1m late", "orange"},
      {90s, "1m late", "orange"},
      {-60s, "1m early", "blue"},
      {59min + 59s, "59m late", "orange"},
      {1h, "1h late", "orange"},
      {-3600s, "1h early", "blue"},
      {1h + 59s, "1h late", "orange"},
      {1h + 1min, "1h 1m late", "orange"},
      {2h + 30s, "2h late", "orange"},
      {2h + 15min, "2h 15m late", "orange"},
      {-(2h + 5min), "2h 5m early", "blue"},
      {24h - 1us, "23h 59m late", "orange"},
      {24h, "1d late", "orange"},
      {-25h, "1d early", "blue"},
      {72h, "3d late", "orange"},
  };
  for (const Case& each : cases) {
    const auto timing = doseTiming(*DoseLog::make(kDue, kDue + each.late, DoseStatus::taken), *texts_);
    ASSERT_TRUE(timing) << each.text;
    EXPECT_EQ(timing->text, each.text);
    EXPECT_EQ(timing->color, each.color) << each.text;
  }
}

TEST_F(DoseTexts, lessThanAMinuteOffHasNoTiming) {
  for (const Instant::Duration late : {Instant::Duration(0s), Instant::Duration(30s), Instant::Duration(-30s),
                                       Instant::Duration(59s), Instant::Duration(60s - 1us)}) {
    EXPECT_FALSE(doseTiming(*DoseLog::make(kDue, kDue + late, DoseStatus::taken), *texts_)) << late.count();
  }
}

TEST_F(DoseTexts, onlyATakenLogWithAnActionTimeHasTiming) {
  EXPECT_FALSE(doseTiming(*DoseLog::make(kDue, std::nullopt, DoseStatus::taken), *texts_));
  for (const DoseStatus status : {DoseStatus::missed, DoseStatus::skipped, DoseStatus::snoozed, DoseStatus::pending}) {
    EXPECT_FALSE(doseTiming(*DoseLog::make(kDue, kDue + 2h, status), *texts_)) << rawValue(status);
  }
}

TEST_F(DoseTexts, timesAtTheEndsOfTimeHaveATimingAllTheSame) {
  const auto late = DoseLog::make(Instant::distantPast(), Instant::distantFuture(), DoseStatus::taken);
  EXPECT_EQ(doseTiming(*late, *texts_)->color, "orange");
  const auto early = DoseLog::make(Instant::distantFuture(), Instant::distantPast(), DoseStatus::taken);
  EXPECT_EQ(doseTiming(*early, *texts_)->text, "106751991d early");
  const auto earliest = DoseLog::make(Instant(), Instant::distantPast(), DoseStatus::taken);
  EXPECT_EQ(doseTiming(*earliest, *texts_)->text, "106751991d early");
}

TEST_F(DoseTexts, tenColourNamesAreKnownAndAllOthersAreBlue) {
  for (const std::string name :
       {"blue", "green", "red", "orange", "purple", "pink", "yellow", "teal", "indigo", "mint"}) {
    EXPECT_EQ(medicineColor(name), name);
  }
  for (const std::string name : {"", "Red", "RED", "grey", "red ", "#ff0000"}) {
    EXPECT_EQ(medicineColor(name), "blue") << name;
  }
}

TEST_F(DoseTexts, eachStatusHasItsWordSymbolAndColour) {
  struct Case {
    DoseStatus status;
    std::string word, inSentence, symbol, color;
  };
  const Case cases[] = {
      {DoseStatus::taken, "Taken", "taken", "checkmark.circle.fill", "green"},
      {DoseStatus::missed, "Missed", "missed", "xmark.circle.fill", "red"},
      {DoseStatus::skipped, "Skipped", "skipped", "forward.circle.fill", "orange"},
      {DoseStatus::snoozed, "Snoozed", "snoozed", "clock.arrow.circlepath", "yellow"},
      {DoseStatus::pending, "Pending", "pending", "circle", "grey"},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(statusText(each.status, *texts_), each.word);
    EXPECT_EQ(statusTextInSentence(each.status, *texts_), each.inSentence);
    EXPECT_EQ(statusSymbol(each.status), each.symbol);
    EXPECT_EQ(statusColor(each.status), each.color);
  }
}

TEST_F(DoseTexts, everyWordHasItsLanguage) {
  const auto pseudo = *makeTexts("en_US", "UTC", "en-XA");
  EXPECT_NE(medicineName(*DoseLog::make(kDue), *pseudo), "Unknown");
  for (const DoseStatus status : kAllDoseStatuses) {
    EXPECT_NE(statusText(status, *pseudo), statusText(status, *texts_));
    EXPECT_NE(statusTextInSentence(status, *pseudo), statusTextInSentence(status, *texts_));
  }
}

TEST_F(DoseTexts, unitsOfOursHaveTheirLanguageAndOthersAreData) {
  const auto pseudo = *makeTexts("en_US", "UTC", "en-XA");
  EXPECT_EQ(unitText("drops", *texts_), "drops");
  EXPECT_NE(unitText("drops", *pseudo), "drops");
  EXPECT_EQ(unitText("spoons", *pseudo), "spoons");
}

TEST_F(DoseTexts, dosageIsShownAsTyped) {
  NewMedicine values;
  values.dosage = "½ {minutes}";
  values.unit = "%s";
  EXPECT_EQ(dosageText(*Medicine::make(values, kDue), *texts_), "½ {minutes} %s");
}

}  // namespace
}  // namespace pillora

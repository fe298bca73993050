// SPDX-License-Identifier: MIT
#include "screens/UpcomingView.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/RefusingCalendar.h"
#include "doubles/ScreenFixture.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kMidnight = at("2025-01-10T00:00:00-05:00");
const Instant kNow = at("2025-01-10T10:30:00-05:00");

using Titles = std::vector<std::string>;

Titles titles(const UpcomingContent& content) {
  Titles titles;
  for (const auto& day : content.days) titles.push_back(day.title);
  return titles;
}

std::vector<UpcomingDoseCard> cards(const UpcomingContent& content) {
  std::vector<UpcomingDoseCard> cards;
  for (const auto& day : content.days) cards.insert(cards.end(), day.doses.begin(), day.doses.end());
  return cards;
}

class UpcomingViewTest : public testing::Test {
 protected:
  std::shared_ptr<Medicine> addDaily(const std::string& name, int64_t hour, int64_t minute = 0) {
    return fixture_.add(medicineNamed(name, daily({{hour, minute}})));
  }
  UpcomingContent content() const { return view_.content(); }

  ScreenFixture fixture_{kNow};
  UpcomingView view_{fixture_.environment()};
};

TEST_F(UpcomingViewTest, withoutAnActiveMedicineThereAreNoMedicines) {
  const Panel noMedicines{"pills", "No Medicines", "Add medicines to see your upcoming schedule."};
  EXPECT_EQ(content().title, "Upcoming");
  EXPECT_EQ(content().empty, noMedicines);
  addDaily("Aspirin", 8)->isActive = false;
  EXPECT_EQ(content().empty, noMedicines);
  EXPECT_TRUE(content().days.empty());
}

TEST_F(UpcomingViewTest, withEveryDoseDoneAllIsCaughtUp) {
  const auto medicine = addDaily("Aspirin", 8);
  for (int day = 1; day <= 7; ++day) {
    fixture_.log(medicine, kMidnight + 8h + day * 24h, day % 2 == 0 ? DoseStatus::taken : DoseStatus::skipped);
  }
  EXPECT_EQ(content().empty, (Panel{"checkmark.circle", "All Caught Up", "No upcoming doses scheduled."}));
  EXPECT_EQ(content().title, "Upcoming");
  EXPECT_TRUE(content().days.empty());
}

TEST_F(UpcomingViewTest, anIntervalThatYieldsNothingContributesNothing) {
  fixture_.add(medicineNamed("Drops", custom(0)));
  EXPECT_EQ(content().empty->title, "All Caught Up");
}

TEST_F(UpcomingViewTest, dosesOfAWeekAreHeadedByTheirDay) {
  addDaily("Aspirin", 12);
  EXPECT_EQ(titles(content()), (Titles{"Today", "Tomorrow", "Sunday, Jan 12", "Monday, Jan 13", "Tuesday, Jan 14",
                                       "Wednesday, Jan 15", "Thursday, Jan 16"}));
  EXPECT_FALSE(content().empty || content().hasMore);
}

TEST_F(UpcomingViewTest, aDailyDoseSeenAfterItsTimeHasSevenEntriesFromTomorrowOn) {
  addDaily("Aspirin", 8);
  const auto all = cards(content());
  EXPECT_EQ(titles(content()).front(), "Tomorrow");
  ASSERT_EQ(all.size(), 7U);
  EXPECT_EQ(all.front().time, kMidnight + 32h);
  EXPECT_EQ(all.back().time, kMidnight + 8h + 7 * 24h);
}

TEST_F(UpcomingViewTest, aDailyDoseSeenAtItsVeryMomentHasEightEntries) {
  addDaily("Aspirin", 8);
  fixture_.clock.set(kMidnight + 8h);
  const auto all = cards(content());
  ASSERT_EQ(all.size(), 8U);
  EXPECT_EQ(all.front().time, kMidnight + 8h);
  EXPECT_EQ(all.front().relative, "in 0m");
  EXPECT_EQ(all.back().time, kMidnight + 8h + 7 * 24h);
}

TEST_F(UpcomingViewTest, aCardShowsTheMedicineAndItsDueTime) {
  NewMedicine values = medicineNamed("Aspirin", daily({{12, 5}}));
  values.dosage = "2";
  values.color = "mint";
  values.icon = "cross.vial";
  const auto medicine = fixture_.add(values);
  const UpcomingDoseCard card = content().days.front().doses.front();
  EXPECT_EQ(card.id, medicine->id().text() + "-1736528700.0");
  EXPECT_EQ(card.medicineId, medicine->id());
  EXPECT_EQ(card.name, "Aspirin");
  EXPECT_EQ(card.dosageText, "2 tablet");
  EXPECT_EQ(card.icon, "cross.vial");
  EXPECT_EQ(card.color, "mint");
  EXPECT_EQ(card.time, kMidnight + 12h + 5min);
  EXPECT_EQ(plainBlanks(card.timeText), "12:05 PM");
  EXPECT_EQ(card.relative, "in 1h 35m");
  EXPECT_EQ(card.relativeColor, "secondary");
  EXPECT_EQ(card.actions, (std::vector<ActionItem>{{"take", "Take", "checkmark"}, {"skip", "Skip", "forward.fill"}}));
}

TEST_F(UpcomingViewTest, relativeTextIsWordedByItsDistance) {
  struct Case {
    Instant::Duration ahead;
    std::string text, color;
  };
  const Case cases[] = {
      {-1us, "0m ago", "red"},
      {-30s, "0m ago", "red"},
      {-59s, "0m ago", "red"},
      {0s, "in 0m", "secondary"},
      {59s, "in 0m", "secondary"},
      {60s, "in 1m", "secondary"},
      {3599s, "in 59m", "secondary"},
      {3600s, "in 1h", "secondary"},
      {1h + 59s, "in 1h", "secondary"},
      {2h, "in 2h", "secondary"},
      {2h + 5min, "in 2h 5m", "secondary"},
      {24h - 1us, "in 23h 59m", "secondary"},
      {24h, "in 1d", "secondary"},
      {48h - 1us, "in 1d", "secondary"},
      {72h, "in 3d", "secondary"},
      {7 * 24h, "in 7d", "secondary"},
  };
  fixture_.add(medicineNamed("Aspirin", monthly({20}, {9, 0})));
  for (const Case& each : cases) {
    fixture_.clock.set(kMidnight + 10 * 24h + 9h - each.ahead);
    const UpcomingDoseCard card = cards(content()).front();
    EXPECT_EQ(card.relative, each.text);
    EXPECT_EQ(card.relativeColor, each.color) << each.text;
  }
}

TEST_F(UpcomingViewTest, pastTimesAreWordedInMinutesUpToAnHourAndThenInHours) {
  const std::pair<Instant::Duration, std::string> cases[] = {
      {59min + 59s, "59m ago"}, {60min, "1h ago"}, {90min, "1h ago"}, {2h, "2h ago"}, {49h, "49h ago"}};
  const auto medicine = addDaily("Aspirin", 12);
  for (const auto& [ago, text] : cases) {
    const auto card = upcomingDoseCard({"", medicine, kNow - ago}, kNow, AppSettings(), *fixture_.texts);
    EXPECT_EQ(card.relative, text);
    EXPECT_EQ(card.relativeColor, "red");
  }
}

TEST_F(UpcomingViewTest, tomorrowFollowsADayOf25Hours) {
  addDaily("Aspirin", 8);
  fixture_.clock.set(at("2025-11-02T12:00:00-05:00"));
  EXPECT_EQ(titles(content()).front(), "Tomorrow");
}

TEST_F(UpcomingViewTest, dosesOfOneMomentStandUnderOneHeadingInTheOrderOfTheirMedicines) {
  addDaily("Zinc", 12);
  addDaily("Aspirin", 12);
  const UpcomingDay day = content().days.front();
  ASSERT_EQ(day.doses.size(), 2U);
  EXPECT_EQ(day.doses[0].name, "Zinc");
  EXPECT_EQ(day.doses[1].name, "Aspirin");
}

TEST_F(UpcomingViewTest, takingADoseRemovesItAndKeepsTheLaterOnes) {
  const auto medicine = fixture_.add(medicineNamed("Aspirin", daily({{12, 0}, {20, 0}})));
  const size_t before = cards(content()).size();
  ASSERT_TRUE(*view_.take(medicine->id(), kMidnight + 12h));
  ASSERT_TRUE(*view_.skip(medicine->id(), kMidnight + 36h));
  const auto after = cards(content());
  EXPECT_EQ(after.size(), before - 2);
  EXPECT_EQ(after[0].time, kMidnight + 20h);
  EXPECT_EQ(after[1].time, kMidnight + 44h);
}

TEST_F(UpcomingViewTest, aDoseIsTakenAtTheInstantThatWasDrawn) {
  const auto medicine = fixture_.add(medicineNamed("Drops", hourly(6)));
  const UpcomingDoseCard drawn = cards(content()).front();
  EXPECT_EQ(drawn.time, kMidnight + 16h + 29min);
  fixture_.clock.advance(20s);
  EXPECT_NE(cards(content()).front().time, drawn.time);
  ASSERT_TRUE(*view_.take(medicine->id(), drawn.time));
  EXPECT_EQ(medicine->doseLogs().front()->scheduledTime(), drawn.time);
}

TEST_F(UpcomingViewTest, aMedicineThatIsGoneIsNotTaken) {
  const auto medicine = addDaily("Aspirin", 12);
  fixture_.context().delete_(medicine);
  EXPECT_FALSE(*view_.take(medicine->id(), kMidnight + 12h));
  EXPECT_FALSE(*view_.skip(medicine->id(), kMidnight + 12h));
}

TEST_F(UpcomingViewTest, unknownColoursAreBlue) {
  addDaily("Aspirin", 12)->color = "BLUE";
  addDaily("Zinc", 12)->color = "crimson";
  const UpcomingContent shown = content();
  for (const auto& card : shown.days.front().doses) EXPECT_EQ(card.color, "blue");
}

TEST_F(UpcomingViewTest, aOneMinuteMedicineIsShownUpToTheRowLimit) {
  fixture_.add(medicineNamed("Drops", custom(1)));
  EXPECT_EQ(cards(content()).size(), 100U);
  EXPECT_TRUE(content().hasMore);
  EXPECT_EQ(titles(content()), (Titles{"Today"}));
  view_.showMore();
  EXPECT_EQ(cards(content()).size(), 200U);
  view_.rowLimit = 10'081;
  EXPECT_EQ(cards(content()).size(), 10'081U);
  EXPECT_FALSE(content().hasMore);
}

TEST_F(UpcomingViewTest, fromFourHundredRowsOnTheFirstGiveWay) {
  fixture_.add(medicineNamed("Drops", custom(1)));
  const std::string first = cards(content()).front().id;
  for (int page = 2; page <= 4; ++page) view_.showMore();
  EXPECT_EQ(cards(content()).size(), 400U);
  EXPECT_EQ(cards(content()).front().id, first);
  EXPECT_FALSE(content().hasPrevious);
  const std::string hundredth = cards(content())[100].id;
  view_.showMore();
  EXPECT_EQ(cards(content()).size(), 400U);
  EXPECT_EQ(cards(content()).front().id, hundredth);
  EXPECT_TRUE(content().hasPrevious);
  view_.showPrevious();
  EXPECT_EQ(cards(content()).front().id, first);
  EXPECT_FALSE(content().hasPrevious);
  for (int page = 0; page < 200; ++page) view_.showMore();
  EXPECT_FALSE(content().hasMore);
  EXPECT_EQ(cards(content()).size(), 400U) << "past the end it stays there";
  view_.showFirst();
  EXPECT_EQ(cards(content()).size(), 100U);
  EXPECT_EQ(cards(content()).front().id, first);
}

TEST_F(UpcomingViewTest, aListAsLongAsTheRowLimitHasNoMore) {
  addDaily("Aspirin", 8);
  view_.rowLimit = 7;
  EXPECT_FALSE(content().hasMore);
  view_.rowLimit = 6;
  EXPECT_TRUE(content().hasMore);
  EXPECT_EQ(cards(content()).size(), 6U);
}

TEST_F(UpcomingViewTest, daysKeepTheirDosesAcrossAClockChange) {
  for (const char* now : {"2025-03-07T12:00:00-05:00", "2025-10-31T12:00:00-04:00"}) {
    ScreenFixture fixture(at(now));
    fixture.add(medicineNamed("Aspirin", daily({{0, 0}, {23, 59}})));
    const auto days = UpcomingView(fixture.environment()).content().days;
    ASSERT_EQ(days.size(), 8U) << now;
    for (size_t i = 1; i < 7; ++i) EXPECT_EQ(days[i].doses.size(), 2U) << now << ' ' << days[i].title;
    EXPECT_EQ(days[1].title, "Tomorrow");
  }
}

TEST_F(UpcomingViewTest, theRepeatedHourBelongsToOneDay) {
  ScreenFixture fixture(at("2025-11-01T23:30:00-04:00"), {"America/Havana", "en_US", "en"});
  fixture.add(medicineNamed("Drops", hourly(1)));
  const auto days = UpcomingView(fixture.environment()).content().days;
  EXPECT_EQ(days[0].title, "Tomorrow");
  EXPECT_EQ(days[0].doses.size(), 25U);
  EXPECT_EQ(plainBlanks(days[0].doses[0].timeText), "12:29 AM");
  EXPECT_EQ(plainBlanks(days[0].doses[1].timeText), "12:29 AM");
}

TEST_F(UpcomingViewTest, tomorrowIsTheNextDayThatThereIs) {
  // Samoa had no 30 December 2011.
  ScreenFixture fixture(at("2011-12-29T10:00:00-10:00"), {"Pacific/Apia", "en_US", "en"});
  fixture.add(medicineNamed("Aspirin", daily({{12, 0}})));
  const UpcomingContent content = UpcomingView(fixture.environment()).content();
  EXPECT_EQ(titles(content),
            (Titles{"Today", "Tomorrow", "Sunday, Jan 1", "Monday, Jan 2", "Tuesday, Jan 3", "Wednesday, Jan 4"}));
  EXPECT_EQ(content.days[1].doses.front().time, at("2011-12-31T12:00:00+14:00"));
}

TEST_F(UpcomingViewTest, aCalendarThatAddsNoDaysListsNothing) {
  addDaily("Aspirin", 12);
  const RefusingCalendar refusing(*fixture_.calendar, {.addingDays = true});
  const UpcomingView view({fixture_.context(), fixture_.clock, refusing, *fixture_.texts, fixture_.notifications});
  EXPECT_EQ(view.content().empty->title, "All Caught Up");
}

}  // namespace
}  // namespace pillora

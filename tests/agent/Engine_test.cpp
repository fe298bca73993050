// SPDX-License-Identifier: MIT
#include "agent/Engine.h"

#include "agent/EngineFixture.h"

namespace pillora {
namespace {

class EngineTest : public EngineFixture {};

TEST_F(EngineTest, aRequestFiresOnceInItsMinute) {
  apply({adding("A", "2025-01-10T08:00")});
  EXPECT_EQ(engine->nextDeadline(), at("2025-01-10T13:00:00Z"));
  EXPECT_EQ(shownAt("2025-01-10T12:59:59Z"), Names{});
  EXPECT_EQ(shownAt("2025-01-10T13:00:00Z"), Names{"A"});
  EXPECT_EQ(pending(), Names{});
  EXPECT_EQ(engine->nextDeadline(), std::nullopt);
  EXPECT_EQ(shownAt("2025-01-10T13:00:01Z"), Names{});
}

TEST_F(EngineTest, aMinuteThatIsNotAheadNeverFiresAndStaysPending) {
  clock.set(at("2025-01-10T13:00:20Z"));
  apply({adding("now", "2025-01-10T08:00"), adding("past", "2025-01-09T08:00")});
  EXPECT_EQ(engine->nextDeadline(), std::nullopt);
  EXPECT_EQ(shownAt("2025-01-11T13:00:00Z"), Names{});
  start();
  EXPECT_EQ(advance().shown, Names{});
  EXPECT_EQ(pending(), (Names{"now", "past"}));
}

TEST_F(EngineTest, theMinuteThatBeginsNowIsNotAhead) {
  clock.set(at("2025-01-10T13:00:00Z"));
  apply({adding("now", "2025-01-10T08:00"), adding("next", "2025-01-10T08:01")});
  EXPECT_EQ(shownAt("2025-01-10T13:01:00Z"), Names{"next"});
}

TEST_F(EngineTest, aReplacedRequestTakesTheNewTriggerAndIsArmedAnew) {
  apply({adding("A", "2025-01-10T08:00"), adding("A", "2025-01-10T09:00")});
  EXPECT_EQ(shownAt("2025-01-10T13:00:00Z"), Names{});
  EXPECT_EQ(shownAt("2025-01-10T14:00:00Z"), Names{"A"});
  apply({adding("A", "2025-01-10T08:00")});
  EXPECT_EQ(pending(), Names{"A"});
  apply({adding("A", "2025-01-10T10:00")});
  EXPECT_EQ(shownAt("2025-01-10T15:00:00Z"), Names{"A"});
}

TEST_F(EngineTest, operationsOfABatchTakeEffectInTheirOrder) {
  apply({adding("A", "2025-01-10T08:00"), adding("B", "2025-01-10T09:00")});
  apply({RemoveRequests{{"A", "B", "unknown"}}, adding("A", "2025-01-10T10:00"), SetBadge{3}, SetBadge{2}});
  EXPECT_EQ(pending(), Names{"A"});
  EXPECT_EQ(engine->badge(), 2);
  EXPECT_EQ(presenter.badge, 2);
}

TEST_F(EngineTest, aRefusedOperationDoesNotKeepTheOthersBack) {
  auto repeating = request("R", "2025-01-10T08:00");
  repeating.trigger.repeats = true;
  auto noDate = request("N", "2025-01-10T08:00");
  noDate.trigger.wallTime.month = 13;
  auto notText = request("T", "2025-01-10T08:00");
  notText.content.body = "\xFF";
  const auto errors = engine->apply({AddRequest{repeating}, AddRequest{noDate}, AddRequest{notText},
                                     AddRequest{request("", "2025-01-10T08:00")}, SetBadge{-1},
                                     AddRequest{request(std::string(2000, 'x'), "2025-01-10T08:00")}, SubmitTask{},
                                     adding("A", "2025-01-10T08:00")});
  for (size_t i = 0; i + 1 < errors.size(); ++i) EXPECT_TRUE(errors[i]) << i;
  EXPECT_FALSE(errors.back());
  EXPECT_EQ(pending(), Names{"A"});
}

TEST_F(EngineTest, listsInTheOrderOfTheTriggersThenIdentifiers) {
  apply({adding("C", "2025-01-10T09:00"), adding("B", "2025-01-10T08:00"), adding("A", "2025-01-10T09:00")});
  const auto requests = *engine->pendingRequests();
  EXPECT_EQ(identifiersOf(requests), (Names{"B", "A", "C"}));
  EXPECT_EQ(pending(), (Names{"A", "B", "C"}));
  EXPECT_EQ(requests.front(), request("B", "2025-01-10T08:00"));
}

TEST_F(EngineTest, afterASleepTheNewestOverdueOfEachMedicineIsShown) {
  apply({adding(kAspirin + "-1.0", "2025-01-10T08:00"), adding(kAspirin + "-1.0-followup-1", "2025-01-10T09:00"),
         adding(kAspirin + "-2.0", "2025-01-10T10:00"), adding(kIbuprofen + "-1.0", "2025-01-10T08:30"),
         adding("other", "2025-01-10T08:15"), adding(kAspirin + "-3.0", "2025-01-10T12:00")});
  const Advanced advanced = advanceTo("2025-01-10T15:30:00Z");
  EXPECT_EQ(advanced.shown, (Names{"other", kIbuprofen + "-1.0", kAspirin + "-2.0"}));
  EXPECT_EQ(advanced.folded, (Names{kAspirin + "-1.0", kAspirin + "-1.0-followup-1"}));
  EXPECT_EQ(pending(), Names{kAspirin + "-3.0"});
  EXPECT_EQ(shownAt("2025-01-10T17:00:00Z"), Names{kAspirin + "-3.0"});
}

TEST_F(EngineTest, oneThatFiresInItsMinuteIsNewerThanAllOverdueOnes) {
  apply({adding(kAspirin + "-1.0", "2025-01-10T08:00"), adding(kAspirin + "-2.0", "2025-01-10T09:00"),
         adding(kAspirin + "-3.0", "2025-01-10T09:00")});
  const Advanced advanced = advanceTo("2025-01-10T14:00:59Z");
  EXPECT_EQ(advanced.shown, (Names{kAspirin + "-2.0", kAspirin + "-3.0"}));
  EXPECT_EQ(advanced.folded, Names{kAspirin + "-1.0"});
}

TEST_F(EngineTest, aMinuteLastsSixtySeconds) {
  apply({adding(kAspirin + "-1.0", "2025-01-10T08:00"), adding(kAspirin + "-2.0", "2025-01-10T08:00")});
  EXPECT_EQ(advanceTo("2025-01-10T13:01:00Z").folded, Names{kAspirin + "-1.0"});
}

TEST_F(EngineTest, whatFellDueWhileNothingRanIsOverdueAtTheNextStart) {
  apply({adding(kAspirin + "-1.0", "2025-01-10T08:00"), adding(kAspirin + "-2.0", "2025-01-11T08:00")});
  engine.reset();
  clock.set(at("2025-01-12T00:00:00Z"));
  start();
  EXPECT_EQ(engine->nextDeadline(), at("2025-01-10T13:00:00Z"));
  const Advanced advanced = advance();
  EXPECT_EQ(advanced.shown, Names{kAspirin + "-2.0"});
  EXPECT_EQ(advanced.folded, Names{kAspirin + "-1.0"});
}

TEST_F(EngineTest, aClockThatStepsForwardMakesOverdueAndOneThatStepsBackFiresNothingTwice) {
  apply({adding("A", "2025-01-10T08:00"), adding("B", "2025-01-10T09:00")});
  EXPECT_EQ(shownAt("2025-01-10T13:00:00Z"), Names{"A"});
  EXPECT_EQ(shownAt("2025-01-10T12:30:00Z"), Names{});
  EXPECT_EQ(shownAt("2025-01-10T13:00:00Z"), Names{});
  EXPECT_EQ(shownAt("2025-01-10T16:00:00Z"), Names{"B"});
}

TEST_F(EngineTest, triggersFollowTheZone) {
  apply({adding("A", "2025-01-10T08:00")});
  timeZone.set("America/Los_Angeles");
  ASSERT_TRUE(engine->zoneChanged());
  EXPECT_EQ(engine->nextDeadline(), at("2025-01-10T16:00:00Z"));
  EXPECT_EQ(shownAt("2025-01-10T13:00:00Z"), Names{});
  EXPECT_EQ(shownAt("2025-01-10T16:00:00Z"), Names{"A"});
}

TEST_F(EngineTest, aMinuteThatAZoneChangeMovesIntoThePastIsOverdue) {
  apply({adding(kAspirin + "-1.0", "2025-01-10T08:00"), adding(kAspirin + "-2.0", "2025-01-10T09:00")});
  timeZone.set("Europe/Berlin");  // it is 13:00 there
  ASSERT_TRUE(engine->zoneChanged());
  const Advanced advanced = advance();
  EXPECT_EQ(advanced.shown, Names{kAspirin + "-2.0"});
  EXPECT_EQ(advanced.folded, Names{kAspirin + "-1.0"});
  timeZone.set("America/New_York");
  ASSERT_TRUE(engine->zoneChanged());
  EXPECT_EQ(shownAt("2025-01-10T14:00:00Z"), Names{});
}

TEST_F(EngineTest, aMinuteThatAZoneChangeMovesAheadDoesNotArmWhatWasPast) {
  apply({adding("A", "2025-01-10T06:00")});
  timeZone.set("America/Los_Angeles");  // 04:00 there
  ASSERT_TRUE(engine->zoneChanged());
  EXPECT_EQ(shownAt("2025-01-10T14:00:00Z"), Names{});
  EXPECT_EQ(pending(), Names{"A"});
}

TEST_F(EngineTest, aZoneThatChangedWhileNothingRanIsSeenAtTheStart) {
  apply({adding("A", "2025-01-10T08:00")});
  engine.reset();
  timeZone.set("Asia/Kolkata");
  start();
  EXPECT_EQ(engine->nextDeadline(), at("2025-01-10T02:30:00Z"));
}

TEST_F(EngineTest, firesAtTheFirstOfARepeatedTimeAndAfterAGap) {
  clock.set(at("2025-03-09T00:00:00Z"));
  apply({adding("gap", "2025-03-09T02:30"), adding("repeat", "2025-11-02T01:30")});
  EXPECT_EQ(engine->nextDeadline(), at("2025-03-09T07:30:00Z"));
  EXPECT_EQ(shownAt("2025-03-09T07:30:00Z"), Names{"gap"});
  EXPECT_EQ(engine->nextDeadline(), at("2025-11-02T05:30:00Z"));
}

TEST_F(EngineTest, everythingSurvivesARestart) {
  apply({adding("A", "2025-01-10T08:00"), SetCategories{{reminderCategory()}}, SetBadge{1},
         SubmitTask{{"check", at("2025-01-11T05:00:00Z"), true, false}}});
  ASSERT_TRUE(engine->setAuthorizationStatus(UNAuthorizationStatus::authorized));
  start();
  EXPECT_EQ(*engine->pendingRequests(), (std::vector{request("A", "2025-01-10T08:00")}));
  EXPECT_EQ(*engine->categories(), (std::vector{reminderCategory()}));
  EXPECT_EQ(engine->badge(), 1);
  EXPECT_EQ(*engine->tasks(), (std::vector{BGProcessingTaskRequest{"check", at("2025-01-11T05:00:00Z"), true, false}}));
  EXPECT_EQ(engine->authorizationStatus(), UNAuthorizationStatus::authorized);
}

TEST_F(EngineTest, permissionIsUndeterminedUntilItIsAskedFor) {
  EXPECT_EQ(engine->authorizationStatus(), UNAuthorizationStatus::notDetermined);
  ASSERT_TRUE(engine->setAuthorizationStatus(UNAuthorizationStatus::denied));
  EXPECT_EQ(engine->authorizationStatus(), UNAuthorizationStatus::denied);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "agent/EngineFixture.h"
#include "agent/ReminderFile.h"

namespace pillora {
namespace {

using Manner = RecordingPresenter::Manner;

class EngineDeliveryTest : public EngineFixture {};

TEST_F(EngineDeliveryTest, carriesTheActionsOfTheCategoryThatIsRegisteredNow) {
  apply({adding("A", "2025-01-10T08:00"), adding("B", "2025-01-10T09:00"), SetCategories{{reminderCategory()}}});
  advanceTo("2025-01-10T13:00:00Z");
  EXPECT_EQ(presenter.deliveries.back().actions, reminderCategory().actions);
  apply({SetCategories{{{"MEDICINE_REMINDER_NO_SNOOZE", {}}}}});
  advanceTo("2025-01-10T14:00:00Z");
  EXPECT_TRUE(presenter.deliveries.back().actions.empty());
}

TEST_F(EngineDeliveryTest, setsTheBadgeOfTheRequest) {
  auto without = request("B", "2025-01-10T09:00");
  without.content.badge = std::nullopt;
  apply({adding("A", "2025-01-10T08:00"), AddRequest{without}});
  advanceTo("2025-01-10T13:00:00Z");
  EXPECT_EQ(engine->badge(), 1);
  EXPECT_EQ(presenter.badge, 1);
  apply({SetBadge{0}});
  EXPECT_EQ(presenter.badge, 0);
  advanceTo("2025-01-10T14:00:00Z");
  EXPECT_EQ(engine->badge(), 0);
}

TEST_F(EngineDeliveryTest, aFollowUpReplacesTheBubbleOfItsOwnDose) {
  apply({adding("A-1.0", "2025-01-10T08:00"), adding("B-1.0", "2025-01-10T08:30"),
         adding("A-1.0-followup-1", "2025-01-10T09:00")});
  presenter.ownNumber = 17;
  for (const char* time : {"2025-01-10T13:00:00Z", "2025-01-10T13:30:00Z", "2025-01-10T14:00:00Z"}) advanceTo(time);
  ASSERT_EQ(presenter.deliveries.size(), 3u);
  EXPECT_EQ(presenter.deliveries[2].bubble, 17u);  // the number that the server gave
  EXPECT_NE(presenter.deliveries[1].bubble, presenter.deliveries[0].bubble);
}

TEST_F(EngineDeliveryTest, aNumberOfAnotherServerIsNeverUsedAgain) {
  apply({adding("A-1.0", "2025-01-10T08:00"), adding("A-1.0-followup-1", "2025-01-10T09:00")});
  presenter.ownNumber = 17;
  advanceTo("2025-01-10T13:00:00Z");
  presenter.name = "server 2";
  advanceTo("2025-01-10T14:00:00Z");
  EXPECT_NE(presenter.deliveries[1].bubble, 17u);
}

TEST_F(EngineDeliveryTest, aClosedBubbleIsNotReplaced) {
  apply({adding("A-1.0", "2025-01-10T08:00"), adding("A-1.0-followup-1", "2025-01-10T09:00")});
  advanceTo("2025-01-10T13:00:00Z");
  engine->bubbleClosed(presenter.deliveries[0].bubble, presenter.name);
  advanceTo("2025-01-10T14:00:00Z");
  EXPECT_NE(presenter.deliveries[1].bubble, presenter.deliveries[0].bubble);
}

TEST_F(EngineDeliveryTest, killedWhileShowingItShowsAgainInTheSameBubble) {
  apply({adding("A", "2025-01-10T08:00")});
  presenter.manner = Manner::answersLate;
  EXPECT_EQ(shownAt("2025-01-10T13:00:00Z"), Names{"A"});
  EXPECT_EQ(advance().shown, Names{});  // on its way: not twice
  start();
  EXPECT_EQ(pending(), Names{"A"});
  presenter.manner = Manner::shows;
  EXPECT_EQ(advance().shown, Names{"A"});
  EXPECT_EQ(presenter.deliveries[0].bubble, presenter.deliveries[1].bubble);
  start();
  EXPECT_EQ(advance().shown, Names{});
  EXPECT_EQ(pending(), Names{});
}

TEST_F(EngineDeliveryTest, aCompletionThatComesAfterTheEndIsIgnored) {
  apply({adding("A", "2025-01-10T08:00")});
  presenter.manner = Manner::answersLate;
  advanceTo("2025-01-10T13:00:00Z");
  engine.reset();
  presenter.release();
  start();
  EXPECT_EQ(pending(), Names{"A"});
}

TEST_F(EngineDeliveryTest, whatCouldNotBeShownIsTriedAgainUntilItIs) {
  apply({adding("A", "2025-01-10T08:00")});
  presenter.manner = Manner::fails;
  presenter.name = "";
  EXPECT_EQ(shownAt("2025-01-10T13:00:00Z"), Names{"A"});
  EXPECT_EQ(engine->nextDeadline(), std::nullopt);
  EXPECT_EQ(pending(), Names{"A"});
  presenter.manner = Manner::shows;
  presenter.name = "server 2";
  EXPECT_EQ(shownAt("2025-01-10T15:00:00Z"), Names{"A"});
  EXPECT_EQ(pending(), Names{});
}

TEST_F(EngineDeliveryTest, whatWasNeverShownIsFoldedLikeAnyOverdueRequest) {
  apply({adding(kAspirin + "-1.0", "2025-01-10T08:00"), adding(kAspirin + "-2.0", "2025-01-10T09:00")});
  presenter.manner = Manner::fails;
  advanceTo("2025-01-10T13:00:00Z");
  presenter.manner = Manner::shows;
  const Advanced advanced = advanceTo("2025-01-10T14:00:00Z");
  EXPECT_EQ(advanced.shown, Names{kAspirin + "-2.0"});
  EXPECT_EQ(advanced.folded, Names{kAspirin + "-1.0"});
}

TEST_F(EngineDeliveryTest, aRequestReplacedWhileItIsShownStaysPending) {
  apply({adding("A", "2025-01-10T08:00")});
  presenter.manner = Manner::answersLate;
  advanceTo("2025-01-10T13:00:00Z");
  apply({adding("A", "2025-01-10T09:00")});
  presenter.release();
  EXPECT_EQ(pending(), Names{"A"});
  EXPECT_EQ(shownAt("2025-01-10T14:00:00Z"), Names{"A"});
}

TEST_F(EngineDeliveryTest, aCancelReachesWhatCouldNotBeShown) {
  apply({adding("A", "2025-01-10T08:00")});
  presenter.manner = Manner::fails;
  advanceTo("2025-01-10T13:00:00Z");
  apply({RemoveRequests{{"A"}}});
  EXPECT_EQ(shownAt("2025-01-10T15:00:00Z"), Names{});
}

TEST_F(EngineDeliveryTest, aDamagedRequestDoesNotKeepTheOthersBack) {
  apply({adding("damaged", "2025-01-10T08:00"), adding("A", "2025-01-10T08:00"), SetBadge{3}});
  engine.reset();
  {
    const auto file = ReminderFile::open(path());
    ASSERT_TRUE(file);
    (*file)->database().exec("UPDATE requests SET content='{}' WHERE identifier='damaged'");
    (*file)->setValue("badge", "many");
    (*file)->setValue("lastBubble", "");
  }
  start();
  EXPECT_EQ(engine->badge(), 0);
  const Advanced advanced = advanceTo("2025-01-10T13:00:00Z");
  EXPECT_EQ(advanced.shown, Names{"A"});
  EXPECT_EQ(advanced.unreadable, Names{"damaged"});
  EXPECT_TRUE(engine->pendingRequests()->empty());
  EXPECT_EQ(shownAt("2025-01-10T14:00:00Z"), Names{});
  apply({RemoveRequests{{"damaged"}}});
  EXPECT_EQ(pending(), Names{});
}

TEST_F(EngineDeliveryTest, aDamagedRequestThatIsTheNewestOfItsMedicineDoesNotFoldTheOthers) {
  apply({adding(kAspirin + "-1.0", "2025-01-10T08:00"), adding(kAspirin + "-2.0", "2025-01-10T09:00"),
         adding(kAspirin + "-3.0", "2025-01-10T10:00"), adding(kAspirin + "-4.0", "2025-01-10T11:00")});
  engine.reset();
  {
    const auto file = ReminderFile::open(path());
    ASSERT_TRUE(file);
    (*file)->database().exec("UPDATE requests SET content='junk' WHERE due>=unixepoch('2025-01-10T15:00:00')");
  }
  start();
  const Advanced advanced = advanceTo("2025-01-10T20:00:00Z");
  EXPECT_EQ(advanced.shown, Names{kAspirin + "-2.0"});
  EXPECT_EQ(advanced.folded, Names{kAspirin + "-1.0"});
  EXPECT_EQ(advanced.unreadable, (Names{kAspirin + "-3.0", kAspirin + "-4.0"}));
}

TEST_F(EngineDeliveryTest, whatTheAppDoesNotWantShownIsDone) {
  apply({adding("A", "2025-01-10T08:00")});
  presenter.manner = Manner::wantsNone;
  advanceTo("2025-01-10T13:00:00Z");
  EXPECT_EQ(pending(), Names{});
  EXPECT_FALSE(engine->answered(presenter.deliveries[0].bubble, presenter.name, "TAKEN_ACTION"));
}

TEST_F(EngineDeliveryTest, onlyAnswersToOurBubblesOfThatServerAreAnswers) {
  apply({adding("A", "2025-01-10T08:00")});
  advanceTo("2025-01-10T13:00:00Z");
  start();  // also after a restart
  const uint32_t bubble = presenter.deliveries[0].bubble;
  const auto answer = engine->answered(bubble, presenter.name, "TAKEN_ACTION");
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->request, request("A", "2025-01-10T08:00"));
  EXPECT_EQ(answer->actionIdentifier, "TAKEN_ACTION");
  EXPECT_FALSE(engine->answered(bubble + 1, presenter.name, "TAKEN_ACTION"));
  EXPECT_FALSE(engine->answered(bubble, "server 2", "TAKEN_ACTION"));
  engine->bubbleClosed(bubble, "server 2");
  EXPECT_TRUE(engine->answered(bubble, presenter.name, "TAKEN_ACTION"));
  engine->bubbleClosed(bubble, presenter.name);
  EXPECT_FALSE(engine->answered(bubble, presenter.name, "TAKEN_ACTION"));
}

TEST_F(EngineDeliveryTest, aTaskIsLaunchedWhenItIsDueAndThenGone) {
  apply({SubmitTask{{"check", at("2025-01-11T05:00:00Z"), false, false}}});
  EXPECT_EQ(engine->nextDeadline(), at("2025-01-11T05:00:00Z"));
  EXPECT_EQ(advanceTo("2025-01-11T04:59:59Z").launched, Names{});
  EXPECT_EQ(advanceTo("2025-01-11T05:00:00Z").launched, Names{"check"});
  EXPECT_TRUE(engine->tasks()->empty());
  EXPECT_EQ(engine->nextDeadline(), std::nullopt);
}

TEST_F(EngineDeliveryTest, submittingReplacesTheTaskOfThatIdentifier) {
  apply({SubmitTask{{"check", at("2025-01-11T05:00:00Z"), false, false}},
         SubmitTask{{"check", at("2025-01-12T05:00:00Z"), false, false}}});
  EXPECT_EQ(advanceTo("2025-01-11T05:00:00Z").launched, Names{});
  EXPECT_EQ(advanceTo("2025-01-12T05:00:00Z").launched, Names{"check"});
}

TEST_F(EngineDeliveryTest, aTaskWithoutABeginIsDueAtOnce) {
  apply({SubmitTask{{"check", std::nullopt, false, false}}});
  EXPECT_LE(engine->nextDeadline(), clock.now());
  EXPECT_EQ(advance().launched, Names{"check"});
}

TEST_F(EngineDeliveryTest, theSuccessorSubmittedByTheRunStays) {
  launcher.atLaunch = [this] { apply({SubmitTask{{"check", at("2025-01-12T05:00:00Z"), false, false}}}); };
  apply({SubmitTask{{"check", at("2025-01-11T05:00:00Z"), false, false}}});
  advanceTo("2025-01-11T05:00:00Z");
  EXPECT_EQ(engine->nextDeadline(), at("2025-01-12T05:00:00Z"));
}

TEST_F(EngineDeliveryTest, aTaskThatCouldNotBeStartedIsTriedAgainAtTheNextStart) {
  apply({SubmitTask{{"check", at("2025-01-11T05:00:00Z"), false, false}}});
  launcher.fails = true;
  EXPECT_EQ(advanceTo("2025-01-11T05:00:00Z").notLaunched, Names{"check"});
  EXPECT_EQ(engine->nextDeadline(), std::nullopt);
  launcher.fails = false;
  EXPECT_EQ(advance().launched, Names{});
  start();
  EXPECT_EQ(advance().launched, Names{"check"});
}

}  // namespace
}  // namespace pillora

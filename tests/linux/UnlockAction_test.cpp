// SPDX-License-Identifier: MIT
#include <unistd.h>

#include "linux/DeviceOwnerTest.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

constexpr const char* kUnknownAction = "org.freedesktop.PolicyKit1.Error.Failed";

class UnlockAction : public DeviceOwnerTest {
 protected:
  std::unique_ptr<LAContext> askForOwner(Outcome& outcome) {
    auto context = ask(kOwner, outcome);
    EXPECT_TRUE(waitFor([&] { return polkit.isAsking(); }));
    return context;
  }
};

TEST_F(UnlockAction, whatPolkitCanAskForCanBeEvaluated) {
  reader.vanish();
  EXPECT_TRUE(can(kOwner));
  polkit.isChallenge = false;
  polkit.isAuthorized = true;
  EXPECT_TRUE(can(kOwner)) << "who need not be asked";
  ASSERT_EQ(polkit.checks.size(), 2u);
  EXPECT_EQ(polkit.checks[0].flags, 0u) << "no prompt opens";
}

TEST_F(UnlockAction, aDeviceThatCanDoNeitherSaysWhy) {
  reader.vanish();
  polkit.isChallenge = false;
  EXPECT_TRUE(can(kOwner).error().description.starts_with("polkit's rules refuse to unlock Pillora; "));
  polkit.refusals["CheckAuthorization"] = kUnknownAction;
  EXPECT_TRUE(can(kOwner).error().description.starts_with("polkit cannot ask for the password: refused; there is no "));
  polkit.vanish();
  EXPECT_TRUE(can(kOwner).error().description.starts_with("polkit cannot ask for the password: "));
}

TEST_F(UnlockAction, polkitThatHangsIsNotWaitedForLong) {
  make({50ms, 50ms, 50ms});
  polkit.isHung = true;
  EXPECT_TRUE(
      can(kOwner).error().description.starts_with("polkit cannot ask for the password: there was no answer in time; "));
}

TEST_F(UnlockAction, asksForThisProcessAndNoOther) {
  Outcome outcome;
  const auto context = askForOwner(outcome);
  const PolkitService::Check check = polkit.checks.back();
  EXPECT_EQ(check.kind, "unix-process");
  EXPECT_EQ(check.process, static_cast<uint32_t>(getpid()));
  EXPECT_EQ(check.user, static_cast<int32_t>(getuid()));
  EXPECT_GT(check.startTime, 0u);
  EXPECT_EQ(check.action, "org.pillora.Pillora.unlock");
  EXPECT_EQ(check.details, 0) << "polkit takes them from trusted callers only";
  EXPECT_EQ(check.flags, 1u);
  EXPECT_FALSE(check.cancellation.empty());
  polkit.answer(true);
  EXPECT_EQ(resultOf(outcome), "success");
  EXPECT_TRUE(reader.calls.empty());
}

TEST_F(UnlockAction, whatPolkitRefusesIsRefused) {
  struct Case {
    bool challenge, dismissed;
    std::string error;
  };
  for (const Case& each :
       {Case{false, false, "the user was not authenticated"}, Case{true, true, "the prompt was dismissed"},
        Case{true, false, "no program is there to show the prompt"}}) {
    Outcome outcome;
    const auto context = askForOwner(outcome);
    polkit.answer(false, each.challenge, each.dismissed);
    EXPECT_EQ(resultOf(outcome), each.error);
  }
}

TEST_F(UnlockAction, polkitThatVanishesMidwayIsARefusal) {
  Outcome outcome;
  const auto context = askForOwner(outcome);
  polkit.vanish();
  EXPECT_NE(resultOf(outcome), "success");
}

TEST_F(UnlockAction, aPromptThatIsCancelledOrTooLateIsTakenDown) {
  make({1s, 1s, 50ms});
  Outcome late;
  auto waiting = ask(kOwner, late);
  EXPECT_EQ(resultOf(late), "there was no answer in time");
  EXPECT_EQ(polkit.calls.back(), "CancelCheckAuthorization:" + polkit.checks.back().cancellation);
  waiting.reset();
  make({});
  Outcome cancelled;
  const auto context = askForOwner(cancelled);
  context->invalidate();
  EXPECT_EQ(resultOf(cancelled), "cancelled");
  EXPECT_EQ(polkit.calls.back(), "CancelCheckAuthorization:" + polkit.checks.back().cancellation);
  EXPECT_FALSE(polkit.isAsking());
}

TEST_F(UnlockAction, withoutPolkitAFingerWillDo) {
  polkit.vanish();
  EXPECT_TRUE(can(kOwner));
  Outcome outcome;
  const auto context = ask(kOwner, outcome);
  EXPECT_TRUE(waitForCall(reader, "VerifyStart:any"));
  reader.tell("verify-match", true);
  EXPECT_EQ(resultOf(outcome), "success");
}

TEST_F(UnlockAction, aSecondRequestGetsTheResultOfTheFirst) {
  Outcome first, second;
  const auto one = askForOwner(first);
  const auto two = ask(kOwner, second);
  polkit.answer(false, true, true);
  EXPECT_EQ(resultOf(first), "the prompt was dismissed");
  EXPECT_EQ(resultOf(second), "the prompt was dismissed");
}

}  // namespace
}  // namespace pillora

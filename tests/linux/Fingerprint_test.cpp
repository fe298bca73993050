// SPDX-License-Identifier: MIT
#include "linux/DeviceOwnerTest.h"

namespace pillora {
namespace {

using Calls = std::vector<std::string>;
using namespace std::chrono_literals;

class Fingerprint : public DeviceOwnerTest {
 protected:
  /// Begins to wait for a finger; answers once the reader does.
  std::unique_ptr<LAContext> askForFinger(Outcome& outcome) {
    auto context = ask(kFinger, outcome);
    EXPECT_TRUE(waitForCall(reader, "VerifyStart:any"));
    return context;
  }
  /// The next scan after `scans` of them.
  void waitForScan(int scans) { EXPECT_TRUE(waitForCall(reader, "VerifyStart:any", scans + 1)); }
};

TEST_F(Fingerprint, aReaderThatKnowsAFingerCanBeUsed) { EXPECT_TRUE(can(kFinger)); }

TEST_F(Fingerprint, aDeviceWithoutReaderOrFingerCannot) {
  reader.refusals["ListEnrolledFingers"] = "net.reactivated.Fprint.Error.NoEnrolledPrints";
  EXPECT_EQ(can(kFinger).error().description, "no fingerprint is enrolled: refused");
  reader.refusals.clear();
  reader.fingers.clear();
  EXPECT_EQ(can(kFinger).error().description, "no fingerprint is enrolled");
  reader.refusals["GetDefaultDevice"] = "net.reactivated.Fprint.Error.NoSuchDevice";
  EXPECT_EQ(can(kFinger).error().description, "there is no fingerprint reader: refused");
  reader.vanish();
  EXPECT_TRUE(can(kFinger).error().description.starts_with("there is no fingerprint reader: "));
}

TEST_F(Fingerprint, aServiceThatHangsIsNotWaitedForLong) {
  make({50ms, 50ms, 50ms});
  reader.isHung = true;
  EXPECT_EQ(can(kFinger).error().description, "there is no fingerprint reader: there was no answer in time");
}

TEST_F(Fingerprint, withoutASystemBusNothingCanBeAsked) {
  setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
  EXPECT_FALSE(can(kFinger));
  EXPECT_FALSE(can(kOwner));
  Outcome outcome;
  const auto context = ask(kOwner, outcome);
  EXPECT_NE(resultOf(outcome), "success");
}

TEST_F(Fingerprint, aMatchSucceedsAndTheReaderIsLetGo) {
  Outcome outcome;
  const auto context = askForFinger(outcome);
  reader.tell("verify-match", true);
  EXPECT_EQ(resultOf(outcome), "success");
  EXPECT_NE(outcome.thread, std::this_thread::get_id());
  EXPECT_EQ(reader.calls,
            (Calls{"GetDefaultDevice", "ListEnrolledFingers:", "Claim:", "VerifyStart:any", "VerifyStop", "Release"}));
  EXPECT_TRUE(polkit.calls.empty());
}

TEST_F(Fingerprint, aScanThatFailedIsWaitedForAgain) {
  Outcome outcome;
  const auto context = askForFinger(outcome);
  for (const char* again : {"verify-retry-scan", "verify-swipe-too-short", "verify-finger-not-centered",
                            "verify-remove-and-retry", "verify-something-of-a-later-version"}) {
    reader.tell(again, false);
  }
  reader.tell("verify-match", true);
  EXPECT_EQ(resultOf(outcome), "success");
  EXPECT_EQ(reader.count("VerifyStart:any"), 1);
}

TEST_F(Fingerprint, aWrongFingerMayBeFollowedByTheRightOne) {
  Outcome outcome;
  const auto context = askForFinger(outcome);
  reader.tell("verify-no-match", true);
  waitForScan(1);
  reader.tell("verify-match", true);
  EXPECT_EQ(resultOf(outcome), "success");
  EXPECT_EQ(reader.count("VerifyStop"), 2);
  EXPECT_EQ(reader.count("Claim:"), 1);
}

TEST_F(Fingerprint, threeWrongFingersAreARefusal) {
  Outcome outcome;
  const auto context = askForFinger(outcome);
  for (int scans = 1; scans < 3; ++scans) {
    reader.tell("verify-no-match", true);
    waitForScan(scans);
  }
  reader.tell("verify-no-match", true);
  EXPECT_EQ(resultOf(outcome), "the fingerprint is not the owner's");
  EXPECT_EQ(reader.count("VerifyStart:any"), 3);
  EXPECT_EQ(reader.count("Release"), 1);
}

TEST_F(Fingerprint, aReaderThatEndsOtherwiseIsARefusal) {
  for (const std::string end : {"verify-disconnected", "verify-unknown-error", ""}) {
    reader.calls.clear();
    Outcome outcome;
    const auto context = askForFinger(outcome);
    reader.tell(end, true);
    EXPECT_EQ(resultOf(outcome), "the fingerprint reader ended with " + end);
    EXPECT_EQ(reader.count("Release"), 1);
  }
}

TEST_F(Fingerprint, aReaderThatAnotherProgramHasClaimedIsARefusalAndStaysTheirs) {
  reader.refusals["Claim"] = "net.reactivated.Fprint.Error.AlreadyInUse";
  Outcome outcome;
  const auto context = ask(kFinger, outcome);
  EXPECT_EQ(resultOf(outcome), "refused");
  EXPECT_EQ(reader.calls.back(), "Claim:");
}

TEST_F(Fingerprint, aReaderThatWillNotStartIsLetGo) {
  reader.refusals["VerifyStart"] = "net.reactivated.Fprint.Error.Internal";
  Outcome outcome;
  const auto context = ask(kFinger, outcome);
  EXPECT_EQ(resultOf(outcome), "refused");
  EXPECT_EQ(reader.count("Release"), 1);
}

TEST_F(Fingerprint, aServiceThatVanishesMidwayIsARefusal) {
  Outcome outcome;
  const auto context = askForFinger(outcome);
  reader.vanish();
  EXPECT_EQ(resultOf(outcome), "the fingerprint service is gone");
}

TEST_F(Fingerprint, onlyTheServiceIsBelieved) {
  Outcome outcome;
  const auto context = askForFinger(outcome);
  const BusHandle stranger = bus.connect();
  sd_bus_message* signal = nullptr;
  sd_bus_message_new_signal(stranger.get(), &signal, "/net/reactivated/Fprint/Device/0",
                            "net.reactivated.Fprint.Device", "VerifyStatus");
  const BusMessage forged(signal);
  sd_bus_message_append(signal, "sb", "verify-match", 1);
  ASSERT_GE(sd_bus_send_to(stranger.get(), signal, reader.client.c_str(), nullptr), 0);
  ASSERT_TRUE(PrivateBus::isOwned(stranger.get(), "net.reactivated.Fprint")) << "by now the forgery is delivered";
  reader.tell("verify-disconnected", true);
  EXPECT_EQ(resultOf(outcome), "the fingerprint reader ended with verify-disconnected");
}

TEST_F(Fingerprint, whenTheTimeIsOverTheReaderIsLetGo) {
  make({1s, 50ms, 50ms});
  Outcome outcome;
  const auto context = ask(kFinger, outcome);
  EXPECT_EQ(resultOf(outcome), "there was no answer in time");
  EXPECT_EQ(reader.count("Release"), reader.count("Claim:"));
}

TEST_F(Fingerprint, anInvalidatedPromptFailsAndLetsTheReaderGo) {
  Outcome outcome;
  const auto context = askForFinger(outcome);
  context->invalidate();
  EXPECT_EQ(resultOf(outcome), "cancelled");
  EXPECT_EQ(reader.count("VerifyStop"), 1);
  EXPECT_EQ(reader.count("Release"), 1);
  context->invalidate();
}

TEST_F(Fingerprint, aContextThatGoesTakesItsPromptDownUnheard) {
  Outcome outcome;
  auto context = askForFinger(outcome);
  context.reset();
  EXPECT_TRUE(waitForCall(reader, "Release"));
  whileServed([&] {
    device.reset();
    return true;
  });
  EXPECT_EQ(outcome.replies, 0);
}

TEST_F(Fingerprint, aDeviceThatGoesTakesItsPromptDown) {
  Outcome outcome;
  auto context = askForFinger(outcome);
  context.reset();
  EXPECT_TRUE(whileServed([&] {
    device.reset();
    return true;
  }));
  EXPECT_EQ(reader.calls.back(), "Release");
}

TEST_F(Fingerprint, aSecondRequestGetsTheResultOfTheFirst) {
  Outcome first, second, third;
  const auto one = askForFinger(first);
  const auto two = ask(kFinger, second);
  const auto three = ask(kOwner, third);
  reader.tell("verify-match", true);
  EXPECT_EQ(resultOf(first), "success");
  EXPECT_EQ(resultOf(second), "success");
  EXPECT_EQ(resultOf(third), "success");
  EXPECT_EQ(reader.count("Claim:"), 1);
  EXPECT_TRUE(polkit.checks.empty());
}

TEST_F(Fingerprint, whileAnotherWaitsThePromptStays) {
  Outcome first, second;
  auto one = askForFinger(first);
  const auto two = ask(kFinger, second);
  one.reset();
  reader.tell("verify-match", true);
  EXPECT_EQ(resultOf(second), "success");
  EXPECT_EQ(first.replies, 0);
}

TEST_F(Fingerprint, aPromptAfterOneThatWasTakenDownIsANewOne) {
  Outcome first, second;
  auto one = askForFinger(first);
  one.reset();
  const auto two = ask(kFinger, second);
  waitForScan(1);
  EXPECT_EQ(reader.count("Release"), 1) << "the former has let the reader go before";
  reader.tell("verify-match", true);
  EXPECT_EQ(resultOf(second), "success");
  EXPECT_EQ(first.replies, 0);
}

}  // namespace
}  // namespace pillora

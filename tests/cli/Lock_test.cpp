// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "cli/CliFixture.h"
#include "cli/CommandLine.h"

namespace pillora {
namespace {

constexpr const char* kTask = "org.pillora.Pillora.missedDoseCheck";
constexpr const char* kInterval =
    R"({"type":"Custom","hourlyInterval":4,"dailyTimes":[],"weeklyDays":[],"weeklyTime":{},"monthlyDays":[],)"
    R"("monthlyTime":{},"customIntervalMinutes":90})";
const std::string kLogId = "6F9619FF-8B86-D011-B42D-00CF4FC964FF";

// UTC, en_US; Friday, 2025-01-10, 10:30. Aspirin has missed a week of doses.
class Lock : public Cli {
 protected:
  Lock() {
    add({"Aspirin", "--daily", "08:00", "--start", "2025-01-01T00:00:00Z"});
    lock();
  }
  size_t logCount() {
    lock(false);
    const size_t count = logs().size();
    lock();
    return count;
  }
  std::string storeBytes() const {
    std::string bytes;
    for (const std::string& file : {store, store + "-wal"}) {
      std::ifstream in(file, std::ios::binary);
      bytes.append(std::istreambuf_iterator<char>(in), {});
    }
    return bytes;
  }
  Words inStore(const Words& words) const { return Words{"--store", store} + words; }
};

/// A call of each command that is right but for the lock.
std::vector<Words> calls() {
  return {{"launch"},
          {"today"},
          {"upcoming"},
          {"medicines"},
          {"add", "Zinc"},
          {"edit", "Aspirin"},
          {"take", "Aspirin"},
          {"skip", "Aspirin"},
          {"undo", kLogId},
          {"snooze", "Aspirin"},
          {"delete", "Aspirin"},
          {"logs"},
          {"reminders"},
          {"mark-missed"},
          {"run-task", kTask}};
}

TEST_F(Lock, aLockedStoreRefusesEveryCommandAndNothingIsChanged) {
  const std::string before = storeBytes();
  for (const Words& words : calls()) {
    for (const Words& option : {Words(), {"--authenticator", "refuse"}, {"--json"}, {"--no-prompt"}}) {
      EXPECT_TRUE(run(inStore(option + words)).failedWith(kLocked)) << ::testing::PrintToString(option + words);
    }
  }
  EXPECT_EQ(storeBytes(), before);
  EXPECT_EQ(openings, 1) << "of the fixture's own medicine alone";
  EXPECT_EQ(device.contexts, 0) << "with --store nobody is asked";
}

TEST_F(Lock, everyCommandIsLockedButThoseThatKnowNothingOfAPerson) {
  for (const CommandWords& command : knownWords(*textsOf("en_US", "UTC"))) {
    if (command.name.empty() || command.name == "next" || command.name == "completion") continue;
    Words words = {command.name};
    if (command.argument == "REF") words.push_back("Aspirin");
    if (command.argument == "LOG-ID") words.push_back(kLogId);
    if (command.argument == "NAME") words.push_back("Zinc");
    if (command.argument == "IDENTIFIER") words.push_back(kTask);
    const int status = run(inStore(words)).status;
    EXPECT_TRUE(status == kLocked || status == kWrongUsage) << command.name << " ended with " << status;
  }
  EXPECT_EQ(run(inStore({"next", "--interval", kInterval})).status, kDone);
  EXPECT_EQ(run(inStore({"completion", "bash"})).status, kDone);
  EXPECT_EQ(run(inStore({"--help"})).status, kDone);
  EXPECT_EQ(run(inStore({"today", "--help"})).status, kDone);
  EXPECT_EQ(run({"--version"}).status, kDone);
}

TEST_F(Lock, theAuthenticatorThatAllowsOpensALockedStore) {
  const Called called = run(inStore({"--authenticator", "allow", "take", "Aspirin"}));
  EXPECT_EQ(called.status, kDone);
  EXPECT_TRUE(called.lines.empty());
  EXPECT_EQ(logCount(), 1u);
  EXPECT_EQ(run(inStore({"--no-prompt", "--authenticator", "allow", "today"})).status, kDone) << "nobody is asked";
}

TEST_F(Lock, anUnlockedStoreNeedsNoAuthenticator) {
  lock(false);
  EXPECT_EQ(run(inStore({"today"})).status, kDone);
  EXPECT_EQ(run(inStore({"--authenticator", "refuse", "today"})).status, kDone);
  EXPECT_EQ(run({"today"}).status, kDone);
  EXPECT_EQ(device.contexts, 0);
}

TEST_F(Lock, aStoreWithoutASettingsRecordIsNotLocked) {
  EXPECT_EQ(run({"--store", folder.path() + "/New", "today"}).status, kDone);
}

TEST_F(Lock, theAuthenticatorIsForNamedStoresAndKnowsTwoWords) {
  for (const Words& words : {Words{"--authenticator", "allow", "today"},
                             {"--authenticator", "refuse", "next", "--interval", kInterval},
                             {"--store", store, "--authenticator", "perhaps", "today"},
                             {"--store", store, "--authenticator", "", "today"},
                             {"--store", store, "--authenticator", "allow", "--authenticator", "allow", "today"},
                             {"--store", store, "--authenticator"},
                             {"today", "--authenticator", "allow"},
                             {"today", "--no-prompt"},
                             {"today", "--scheduled"}}) {
    EXPECT_TRUE(run(words).failedWith(kWrongUsage)) << ::testing::PrintToString(words);
  }
}

TEST_F(Lock, wrongUsageComesBeforeTheLockAndTheLockBeforeARefusal) {
  EXPECT_TRUE(run(inStore({"take", "Nobody", "yesterday"})).failedWith(kWrongUsage));
  EXPECT_TRUE(run(inStore({"undo", "12"})).failedWith(kWrongUsage));
  EXPECT_TRUE(run(inStore({"take", "Nobody"})).failedWith(kLocked));
  EXPECT_TRUE(run(inStore({"add", "A", "--unit", "barrel"})).failedWith(kLocked));
  EXPECT_TRUE(run(inStore({"run-task", "nonsense"})).failedWith(kLocked));
}

TEST_F(Lock, remindersThatFellDueStayWhileLocked) {
  const Words file = {"--reminders", folder.path() + "/R"};
  EXPECT_TRUE(run(file + inStore({"reminders"})).failedWith(kLocked));
  EXPECT_FALSE(std::filesystem::exists(folder.path() + "/R"));
}

TEST_F(Lock, aStoreThatCannotBeOpenedOrReadIsARefusal) {
  EXPECT_TRUE(run({"--store", folder.path() + "/none/S", "today"}).failedWith(kRefused));
}

TEST_F(Lock, theOwnerIsAskedForTheOwnStoreAndAFingerprintUnlocks) {
  answers = {true};
  EXPECT_EQ(names(), (Words{"Aspirin"}));
  EXPECT_EQ(device.asked(), "b");
  EXPECT_EQ(device.last().reason, "Unlock Pillora to view your medications");
  EXPECT_EQ(told, (Words{"Touch the fingerprint reader"}));
}

TEST_F(Lock, withoutAFingerprintThePasscodeIsAskedFor) {
  device.hasBiometrics = false;
  answers = {true};
  EXPECT_EQ(names(), (Words{"Aspirin"}));
  EXPECT_EQ(device.asked(), "o");
  EXPECT_TRUE(told.empty()) << "its prompt speaks for itself";
}

TEST_F(Lock, cancellingBothPromptsIsStatusThree) {
  const Called called = run({"today"});
  EXPECT_TRUE(called.failedWith(kLocked));
  EXPECT_EQ(called.lines, (Words{"pilloractl: Pillora is locked, and its owner did not authenticate"}));
  EXPECT_EQ(device.asked(), "bo");
}

TEST_F(Lock, aDeviceThatCannotAskSaysSo) {
  device.hasBiometrics = false;
  device.hasPasscode = false;
  const Called called = run({"today"});
  EXPECT_TRUE(called.failedWith(kLocked));
  EXPECT_EQ(called.lines,
            (Words{"pilloractl: Pillora is locked, and this device cannot ask for its owner: there is no passcode"}));
}

TEST_F(Lock, withoutPromptsALockedAppEndsAtOnce) {
  const Called called = run({"--no-prompt", "--json", "medicines"});
  EXPECT_TRUE(called.failedWith(kLocked));
  EXPECT_EQ(called.lines, (Words{"pilloractl: Pillora is locked"}));
  EXPECT_EQ(device.contexts, 0);
  lock(false);
  EXPECT_EQ(run({"--no-prompt", "medicines"}).status, kDone);
}

TEST_F(Lock, theSchedulersOwnRunMarksWhileLockedAsksNobodyAndPrintsNothing) {
  const Called called = run({"run-task", "--scheduled", kTask});
  EXPECT_EQ(called.status, kDone);
  EXPECT_EQ(called.out, "");
  EXPECT_EQ(called.lines, (Words{"Background task scheduled for missed dose check"}));
  EXPECT_EQ(device.contexts, 0);
  EXPECT_EQ(logCount(), 7u);
  EXPECT_TRUE(scheduler.pending.contains(kTask));
  EXPECT_EQ(run({"--json", "run-task", "--scheduled", kTask}).out, "");
  EXPECT_TRUE(run({"run-task", "--scheduled", "nonsense"}).failedWith(kRefused));
}

TEST_F(Lock, withoutTheSchedulerARunAsksForTheOwner) {
  EXPECT_TRUE(run({"run-task", kTask}).failedWith(kLocked));
  EXPECT_EQ(device.asked(), "bo");
  EXPECT_EQ(logCount(), 0u);
}

}  // namespace
}  // namespace pillora

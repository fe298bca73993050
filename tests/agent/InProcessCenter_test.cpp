// SPDX-License-Identifier: MIT
#include "agent/InProcessCenter.h"

#include <gtest/gtest.h>

#include "contract/NotificationCenterContract.h"
#include "doubles/FakeClock.h"
#include "doubles/FakeNotificationCenter.h"
#include "doubles/Instants.h"
#include "doubles/RecordingPresenter.h"
#include "doubles/Requests.h"
#include "doubles/ScopedZone.h"
#include "doubles/TemporaryFolder.h"
#include "linux/QueuedMainExecutor.h"

namespace pillora {
namespace {

using Names = std::vector<std::string>;

class FakeUnderTest final : public CenterUnderTest {
 public:
  UNUserNotificationCenter& center() override { return center_; }
  void settle() override {}

 private:
  FakeNotificationCenter center_;
};

/// The centre in a program whose clock, screen and folder are the test's.
class InProcessUnderTest final : public CenterUnderTest {
 public:
  InProcessUnderTest() { start(); }

  void start() {
    inProcess.reset();
    auto opened = InProcessCenter::open(folder.path() + "/reminders.db", clock, zone, executor, presenter);
    ASSERT_TRUE(opened) << opened.error().description;
    inProcess = *std::move(opened);
  }

  UNUserNotificationCenter& center() override { return *inProcess; }
  void settle() override { executor.drain(); }

  std::vector<UNNotificationCategory> categories() {
    std::vector<UNNotificationCategory> registered;
    inProcess->getNotificationCategories([&](std::vector<UNNotificationCategory> found) { registered = found; });
    return registered;
  }
  int64_t badge() {
    int64_t shown = -1;
    inProcess->getBadgeCount([&](int64_t count) { shown = count; });
    return shown;
  }

  ScopedZone timeZone{"UTC"};
  TemporaryFolder folder;
  FakeClock clock{at("2025-01-10T12:00:00Z")};
  LibraryZone zone;
  QueuedMainExecutor executor;
  RecordingPresenter presenter;
  std::unique_ptr<InProcessCenter> inProcess;
};

template <typename Subject>
std::unique_ptr<CenterUnderTest> make() {
  return std::make_unique<Subject>();
}

INSTANTIATE_TEST_SUITE_P(Fake, NotificationCenterContract, ::testing::Values(&make<FakeUnderTest>));
INSTANTIATE_TEST_SUITE_P(InProcess, NotificationCenterContract, ::testing::Values(&make<InProcessUnderTest>));

class RecordingDelegate final : public UNUserNotificationCenterDelegate {
 public:
  unsigned options = un_options::kBanner;
  Names asked, answers;

  void willPresent(const UNNotificationRequest& request, const std::function<void(unsigned)>& completion) override {
    asked.push_back(request.identifier);
    completion(options);
  }
  void didReceive(const UNNotificationResponse& response, const std::function<void()>& completion) override {
    answers.push_back(response.request.identifier + " " + response.actionIdentifier);
    completion();
  }
};

class InProcessCenterTest : public ::testing::Test {
 protected:
  void add(const std::string& identifier, std::string_view minute) {
    subject.inProcess->add(request(identifier, minute), [](const std::optional<Error>& error) { EXPECT_FALSE(error); });
    subject.settle();
  }
  Names pending() {
    Names names;
    subject.inProcess->getPendingNotificationRequestIdentifiers([&](Names found) { names = std::move(found); });
    return names;
  }
  Names advanceTo(std::string_view instant) {
    subject.clock.set(at(instant));
    const auto advanced = subject.inProcess->advance();
    EXPECT_TRUE(advanced);
    return advanced ? advanced->shown : Names();
  }

  InProcessUnderTest subject;
};

TEST_F(InProcessCenterTest, keepsEverythingForTheNextProgram) {
  subject.inProcess->add(request("A", "2025-01-10T13:00"), [](const std::optional<Error>&) {});
  subject.inProcess->setNotificationCategories({reminderCategory()});
  subject.inProcess->requestAuthorization(7, [](bool, const std::optional<Error>&) {});
  subject.start();  // what was issued is kept even though the turn had not ended
  EXPECT_EQ(pending(), Names{"A"});
  EXPECT_EQ(subject.categories(), std::vector{reminderCategory()});
  UNNotificationSettings settings;
  subject.inProcess->getNotificationSettings([&](UNNotificationSettings found) { settings = found; });
  EXPECT_EQ(settings.authorizationStatus, UNAuthorizationStatus::authorized);
}

TEST_F(InProcessCenterTest, letsPassWhatFellDue) {
  add("A", "2025-01-10T13:00");
  add("B", "2025-01-11T13:00");
  EXPECT_EQ(subject.inProcess->nextDeadline(), at("2025-01-10T13:00:00Z"));
  EXPECT_EQ(advanceTo("2025-01-10T20:00:00Z"), Names{"A"});
  EXPECT_EQ(pending(), Names{"B"});
  EXPECT_EQ(subject.badge(), 1);
}

TEST_F(InProcessCenterTest, theDelegateIsAskedHowToPresent) {
  RecordingDelegate delegate;
  subject.inProcess->setDelegate(&delegate);
  add("A", "2025-01-10T13:00");
  advanceTo("2025-01-10T13:00:00Z");
  EXPECT_EQ(delegate.asked, Names{"A"});
  EXPECT_EQ(subject.presenter.takeShown(), Names{"A"});
  delegate.options = un_options::kBadge;
  add("B", "2025-01-10T14:00");
  advanceTo("2025-01-10T14:00:00Z");
  EXPECT_EQ(subject.presenter.takeShown(), Names{});
  EXPECT_EQ(pending(), Names{});
}

TEST_F(InProcessCenterTest, answersReachTheDelegate) {
  RecordingDelegate delegate;
  add("A", "2025-01-10T13:00");
  ASSERT_EQ(advanceTo("2025-01-10T13:00:00Z"), Names{"A"});
  const uint32_t bubble = subject.presenter.deliveries.front().bubble;
  subject.inProcess->answered(bubble, "TAKEN_ACTION");  // nobody listens
  subject.inProcess->setDelegate(&delegate);
  subject.inProcess->answered(bubble, "TAKEN_ACTION");
  subject.inProcess->answered(bubble + 1, "TAKEN_ACTION");
  EXPECT_EQ(delegate.answers, Names{"A TAKEN_ACTION"});
}

TEST_F(InProcessCenterTest, aDueTaskRunsItsHandlerAndIsUsedUp) {
  std::shared_ptr<BGTask> running;
  subject.inProcess->registerForTaskWithIdentifier("check", [&](std::shared_ptr<BGTask> task) { running = task; });
  ASSERT_TRUE(subject.inProcess->submit({"check", at("2025-01-11T00:00:00Z"), false, false}));
  advanceTo("2025-01-10T23:59:59Z");
  EXPECT_EQ(running, nullptr);
  advanceTo("2025-01-11T00:00:00Z");
  ASSERT_NE(running, nullptr);
  EXPECT_EQ(running->identifier(), "check");
  EXPECT_TRUE(subject.inProcess->tasks().empty());
}

TEST_F(InProcessCenterTest, aDueTaskWithoutAHandlerStaysSubmitted) {
  ASSERT_TRUE(subject.inProcess->submit({"check", at("2025-01-11T00:00:00Z"), false, false}));
  advanceTo("2025-01-12T00:00:00Z");
  EXPECT_EQ(subject.inProcess->tasks().size(), 1u);
}

TEST_F(InProcessCenterTest, refusesATaskWithoutAName) { EXPECT_FALSE(subject.inProcess->submit({})); }

TEST(RunningTask, theFirstCompletionCounts) {
  RunningTask task("check");
  EXPECT_EQ(task.outcome(), std::nullopt);
  int expirations = 0;
  task.setExpirationHandler([&] {
    ++expirations;
    task.setTaskCompleted(false);
  });
  task.expire();
  task.setTaskCompleted(true);
  task.expire();
  EXPECT_EQ(task.outcome(), false);
  EXPECT_EQ(expirations, 1);
}

TEST(RunningTask, neitherExpiresAfterItsEndNorKeepsItsHandler) {
  RunningTask task("check");
  const auto held = std::make_shared<int>(0);
  task.setExpirationHandler([held] { ++*held; });
  task.setTaskCompleted(true);
  EXPECT_EQ(held.use_count(), 1);
  task.setExpirationHandler([held] { ++*held; });
  EXPECT_EQ(held.use_count(), 1);
  task.expire();
  EXPECT_EQ(*held, 0);
  EXPECT_EQ(task.outcome(), true);
}

TEST(RunningTask, withoutAHandlerAnExpiredRunHasFailed) {
  RunningTask task("check");
  task.expire();
  EXPECT_EQ(task.outcome(), false);
}

TEST(TaskHandlers, launchesWhatIsRegisteredAlone) {
  TaskHandlers handlers;
  int runs = 0;
  handlers.registerHandler("check", [&](const std::shared_ptr<BGTask>& task) {
    ++runs;
    task->setTaskCompleted(true);
  });
  EXPECT_EQ(handlers.launch("other"), nullptr);
  const auto task = handlers.launch("check");
  ASSERT_NE(task, nullptr);
  EXPECT_EQ(task->outcome(), true);
  EXPECT_EQ(runs, 1);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "app/PilloraApp.h"

#include <gtest/gtest.h>

#include <sqlite3.h>
#include <thread>

#include "app/AppFixture.h"
#include "doubles/Intervals.h"
#include "doubles/RefusingCalendar.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

using Lines = std::vector<std::string>;

const std::string kCheck = "org.pillora.Pillora.missedDoseCheck";
const std::string kScheduled = "Background task scheduled for missed dose check";
const Instant kLongAgo = at("2024-12-01T00:00:00-05:00");
const Instant kNextMidnight = at("2025-01-11T00:00:00-05:00");

/// An app on doubles and a store, in memory where the path is empty.
struct RunningApp : AppFixture {
  explicit RunningApp(const std::string& path = {}) { start(platform(), path); }
  explicit RunningApp(const RefusingCalendar::Refused& refused) : refusing(std::in_place, *calendar, refused) {
    start(platformWith(*refusing), {});
  }

  void start(const Platform& platform, const std::string& path) {
    ModelConfiguration configuration;
    configuration.path = path;
    configuration.isStoredInMemoryOnly = path.empty();
    app = valueOrAbort(PilloraApp::start(platform, configuration));
  }
  ModelContext& context() { return app->container().mainContext(); }
  void appear() { EXPECT_TRUE(app->rootViewAppeared()); }
  /// A medicine with seven doses that nobody acted on.
  void addMissedMedicine() {
    addMedicine(context(), daily({{8, 0}}), kLongAgo);
    executor.drain();
  }

  std::optional<RefusingCalendar> refusing;
  std::unique_ptr<PilloraApp> app;
};

/// A running app with missed doses, on a store file that another program then spoils.
struct SpoiltApp {
  explicit SpoiltApp(const std::string& sql) {
    app.addMissedMedicine();
    if (ForeignConnection(path).run(sql) != SQLITE_OK) std::abort();
  }
  TemporaryFolder folder;
  std::string path = folder.path() + "/Pillora.store";
  RunningApp app{path};
};

const char* const kFullDisk = "CREATE TRIGGER full BEFORE INSERT ON DoseLog BEGIN SELECT RAISE(ABORT, 'no space'); END";

TEST(PilloraApp, endsWithOneLineWhenTheStoreCannotBeOpened) {
  AppFixture in;
  const TemporaryFolder folder;
  ModelConfiguration configuration;
  configuration.path = folder.path();
  const auto app = PilloraApp::start(in.platform(), configuration);
  ASSERT_FALSE(app);
  EXPECT_TRUE(app.error().description.starts_with("Could not create ModelContainer: ")) << app.error().description;
  EXPECT_GT(app.error().description.size(), std::string("Could not create ModelContainer: ").size());
  EXPECT_FALSE(in.scheduler.isRegistered(kCheck));
  EXPECT_TRUE(in.center.calls.empty());
}

TEST(PilloraApp, startsByRegisteringForTheCheckAndAsksForNothing) {
  RunningApp in;
  EXPECT_TRUE(in.scheduler.isRegistered(kCheck));
  EXPECT_EQ(in.app->missedDoseCheckIdentifier(), kCheck);
  EXPECT_TRUE(in.scheduler.submissions.empty());
  EXPECT_EQ(in.center.calls, (Lines{"setDelegate", "getNotificationSettings"}));
  EXPECT_TRUE(in.console.lines().empty());
}

TEST(PilloraApp, theFirstAppearanceRunsItsStepsInOrder) {
  /// Writes console lines in between the centre's calls.
  struct Journal final : Console {
    explicit Journal(Lines& journal) : lines(journal) {}
    void print(std::string_view line) override { lines.emplace_back(line); }
    Lines& lines;
  };
  const TemporaryFolder folder;
  ModelConfiguration configuration;
  configuration.path = folder.path() + "/Pillora.store";
  AppFixture in;
  Journal journal(in.center.calls);
  const Platform platform = {in.clock, *in.calendar, *in.texts, in.center, in.scheduler, in.executor, journal, {}, {}};
  const auto app = valueOrAbort(PilloraApp::start(platform, configuration));
  ASSERT_EQ(ForeignConnection(configuration.path)
                .run("CREATE TRIGGER full BEFORE INSERT ON AppSettings BEGIN SELECT RAISE(ABORT, 'no space'); END"),
            SQLITE_OK);
  in.center.permissionError = Error{"no server"};
  in.center.calls.clear();
  EXPECT_FALSE(app->rootViewAppeared());
  EXPECT_EQ(in.center.calls, (Lines{"requestAuthorization 7", "Notification authorization error: no server",
                                    "Error setting up initial settings: no space",
                                    "Error marking missed doses: no space", kScheduled, "setBadgeCount 0"}));
}

TEST(PilloraApp, theFirstAppearanceLeavesSettingsMarkedDosesAndARequest) {
  RunningApp in;
  in.addMissedMedicine();
  in.center.badge = 1;
  EXPECT_EQ(*in.app->rootViewAppeared(), 7);
  EXPECT_EQ(scheduledTimes(in.context()).size(), 7U);
  EXPECT_EQ(in.center.badge, 0);
  EXPECT_TRUE(in.app->notificationManager().isAuthorized());
  EXPECT_EQ(in.console.lines(), Lines{kScheduled});
  EXPECT_EQ(in.scheduler.submissions, (std::vector<BGProcessingTaskRequest>{{kCheck, kNextMidnight, false, false}}));
}

TEST(PilloraApp, aStoreWithoutSettingsGetsOneRecordWithTheDefaults) {
  RunningApp in;
  in.app->setupInitialSettings();
  EXPECT_FALSE(in.context().hasChanges());
  in.app->setupInitialSettings();
  const auto settings = in.context().fetch<AppSettings>();
  ASSERT_TRUE(settings);
  ASSERT_EQ(settings->size(), 1U);
  EXPECT_EQ(settings->front()->autoMarkMissedAfterMinutes(), 60);
  EXPECT_EQ(settings->front()->backupFrequencyRaw(), "weekly");
  EXPECT_FALSE(settings->front()->requireAuthentication());
}

TEST(PilloraApp, settingsThatAreThereStayAsTheyAre) {
  RunningApp in;
  const auto mine = AppSettings::make();
  mine->use24HourTime = true;
  in.context().insert(mine);
  in.executor.drain();
  in.app->setupInitialSettings();
  const auto settings = in.context().fetch<AppSettings>();
  ASSERT_TRUE(settings);
  EXPECT_EQ(*settings, std::vector{mine});
  EXPECT_TRUE(mine->use24HourTime());
}

TEST(PilloraApp, settingsThatCannotBeReadArePrintedAndTheStartGoesOn) {
  SpoiltApp spoilt("ALTER TABLE AppSettings RENAME TO Elsewhere");
  RunningApp& in = spoilt.app;
  EXPECT_EQ(*in.app->rootViewAppeared(), 7);
  ASSERT_EQ(in.console.lines().size(), 2U);
  EXPECT_TRUE(in.console.lines().front().starts_with("Error setting up initial settings: ")) << in.console.lines()[0];
  EXPECT_EQ(in.console.lines().back(), kScheduled);
}

TEST(PilloraApp, medicinesThatCannotBeReadArePrintedAndTheStartGoesOn) {
  SpoiltApp spoilt("ALTER TABLE Medicine RENAME TO Elsewhere");
  RunningApp& in = spoilt.app;
  EXPECT_FALSE(in.app->rootViewAppeared());
  ASSERT_EQ(in.console.lines().size(), 2U);
  EXPECT_TRUE(in.console.lines().front().starts_with("Error marking missed doses: ")) << in.console.lines()[0];
  EXPECT_EQ(in.center.calls.back(), "setBadgeCount 0");
}

TEST(PilloraApp, aMarkingThatCannotBeSavedIsPrintedOnce) {
  SpoiltApp spoilt(kFullDisk);
  RunningApp& in = spoilt.app;
  EXPECT_FALSE(in.app->markMissedDoses());
  EXPECT_EQ(in.console.lines(), Lines{"Error marking missed doses: no space"});
}

TEST(PilloraApp, launchedTwiceOnOneStoreInsertsNothingTwice) {
  const TemporaryFolder folder;
  const std::string path = folder.path() + "/Pillora.store";
  {
    RunningApp first(path);
    first.addMissedMedicine();
    EXPECT_EQ(*first.app->rootViewAppeared(), 7);
  }
  RunningApp second(path);
  EXPECT_EQ(*second.app->rootViewAppeared(), 0);
  EXPECT_EQ(scheduledTimes(second.context()).size(), 7U);
  EXPECT_EQ(second.context().fetch<AppSettings>()->size(), 1U);
}

TEST(PilloraApp, theCheckIsDueAtTheNextLocalMidnight) {
  RunningApp in;
  for (const auto& [now, midnight] : {std::pair("2025-01-10T00:00:00-05:00", "2025-01-11T00:00:00-05:00"),
                                      std::pair("2025-01-10T23:59:59.5-05:00", "2025-01-11T00:00:00-05:00"),
                                      std::pair("2025-03-09T12:00:00-04:00", "2025-03-10T00:00:00-04:00"),
                                      std::pair("2025-11-02T00:30:00-04:00", "2025-11-03T00:00:00-05:00")}) {
    in.clock.set(at(now));
    in.app->scheduleMissedDoseCheck();
    EXPECT_EQ(in.scheduler.submissions.back().earliestBeginDate, at(midnight)) << now;
  }
  EXPECT_EQ(in.scheduler.pending.size(), 1U);
  EXPECT_EQ(in.console.lines(), Lines(4, kScheduled));
}

TEST(PilloraApp, withoutDaysInTheCalendarTheCheckIsDueInSixHoursAndNothingIsMarked) {
  RunningApp in(RefusingCalendar::Refused{.addingDays = true});
  in.addMissedMedicine();
  EXPECT_EQ(*in.app->rootViewAppeared(), 0);
  EXPECT_EQ(in.scheduler.submissions.back().earliestBeginDate, at("2025-01-10T15:00:00-05:00"));
}

TEST(PilloraApp, aRefusedCheckIsPrintedAndNotTriedAgain) {
  RunningApp in;
  in.scheduler.refusal = Error{"no agent"};
  in.app->scheduleMissedDoseCheck();
  in.executor.drain();
  EXPECT_EQ(in.console.lines(), Lines{"Failed to schedule background task: no agent"});
  EXPECT_TRUE(in.scheduler.submissions.empty());
}

TEST(PilloraApp, theSettingsChangeNoReminder) {
  RunningApp in;
  const auto medicine = addMedicine(in.context(), daily({{8, 0}}), kLongAgo);
  in.app->notificationManager().scheduleUpcomingNotifications(*medicine, 3);
  const auto before = in.center.pending;
  const auto settings = AppSettings::make();
  settings->setNotificationSound(NotificationSound::urgent);
  settings->enableCriticalAlerts = true;
  settings->reminderAdvanceMinutes = 30;
  settings->defaultSnoozeDurationMinutes = 45;
  in.context().insert(settings);
  in.app->notificationManager().cancelNotifications(*medicine);
  in.app->notificationManager().scheduleUpcomingNotifications(*medicine, 3);
  EXPECT_EQ(in.center.pending, before);
}

TEST(PilloraApp, anAnswerInANotificationChangesNoRecord) {
  RunningApp in;
  const auto medicine = addMedicine(in.context(), daily({{8, 0}}), kLongAgo);
  in.executor.drain();
  in.app->notificationManager().scheduleUpcomingNotifications(*medicine, 1);
  const auto pending = in.center.pending;
  int heard = 0, completed = 0;
  const auto handle = in.app->broadcasts().observe("medicineTaken", [&](const UserInfo&) { ++heard; });
  in.center.delegate->didReceive({pending.front(), "TAKEN_ACTION"}, [&] { ++completed; });
  in.executor.drain();
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(completed, 1);
  EXPECT_TRUE(allLogs(in.context()).empty());
  EXPECT_EQ(in.center.pending, pending);
}

// Scene phases

TEST(PilloraApp, goingToTheBackgroundSubmitsTheCheckAndMarksNothing) {
  RunningApp in;
  in.appear();
  in.addMissedMedicine();
  in.center.calls.clear();
  in.app->scenePhaseChanged(ScenePhase::background);
  EXPECT_EQ(in.scheduler.submissions.size(), 2U);
  EXPECT_EQ(in.scheduler.pending.size(), 1U);
  EXPECT_TRUE(in.center.calls.empty());
  EXPECT_TRUE(allLogs(in.context()).empty());
}

TEST(PilloraApp, becomingActiveResetsTheBadgeAndMarksNothing) {
  RunningApp in;
  in.appear();
  in.addMissedMedicine();
  in.center.calls.clear();
  in.app->scenePhaseChanged(ScenePhase::active);
  EXPECT_EQ(in.center.calls, Lines{"setBadgeCount 0"});
  EXPECT_EQ(in.scheduler.submissions.size(), 1U);
  EXPECT_TRUE(allLogs(in.context()).empty());
}

TEST(PilloraApp, becomingInactiveDoesNothing) {
  RunningApp in;
  in.appear();
  in.center.calls.clear();
  in.app->scenePhaseChanged(ScenePhase::inactive);
  EXPECT_TRUE(in.center.calls.empty());
  EXPECT_EQ(in.scheduler.submissions.size(), 1U);
}

TEST(PilloraApp, anActivationBeforeTheFirstAppearanceIsActedOnAfterIt) {
  RunningApp in;
  in.center.calls.clear();
  in.app->scenePhaseChanged(ScenePhase::active);
  EXPECT_TRUE(in.center.calls.empty());
  in.appear();
  EXPECT_EQ(in.center.calls, (Lines{"requestAuthorization 7", "setBadgeCount 0", "setBadgeCount 0"}));
}

TEST(PilloraApp, anActivationThatIsOverByTheFirstAppearanceIsForgotten) {
  RunningApp in;
  in.app->scenePhaseChanged(ScenePhase::active);
  in.app->scenePhaseChanged(ScenePhase::inactive);
  in.center.calls.clear();
  in.appear();
  EXPECT_EQ(in.center.calls, (Lines{"requestAuthorization 7", "setBadgeCount 0"}));
}

// The background check

TEST(BackgroundCheck, submitsItsSuccessorMarksAndReportsSuccess) {
  RunningApp in;
  in.addMissedMedicine();
  in.app->scheduleMissedDoseCheck();
  in.clock.set(at("2025-01-11T00:00:05-05:00"));
  const auto task = in.scheduler.launch(kCheck);
  ASSERT_TRUE(task);
  EXPECT_EQ(in.scheduler.pending.at(kCheck).earliestBeginDate, at("2025-01-12T00:00:00-05:00"));
  EXPECT_FALSE(task->success());
  EXPECT_TRUE(allLogs(in.context()).empty());
  in.executor.drain();
  EXPECT_EQ(task->success(), true);
  EXPECT_EQ(allLogs(in.context()).size(), 7U);
  EXPECT_FALSE(in.context().hasChanges());
}

TEST(BackgroundCheck, isOnTheStoreOnTheMainThreadAlone) {
  RunningApp in;
  in.addMissedMedicine();
  in.app->scheduleMissedDoseCheck();
  std::shared_ptr<FakeTask> task;
  std::thread([&] { task = in.scheduler.launch(kCheck); }).join();
  EXPECT_EQ(in.console.lines(), Lines(2, kScheduled));
  EXPECT_TRUE(allLogs(in.context()).empty());
  in.executor.drain();
  EXPECT_EQ(task->success(), true);
  EXPECT_EQ(allLogs(in.context()).size(), 7U);
}

TEST(BackgroundCheck, reportsSuccessAlsoWhenTheMarkingFailed) {
  SpoiltApp spoilt(kFullDisk);
  RunningApp& in = spoilt.app;
  in.app->scheduleMissedDoseCheck();
  const auto task = in.scheduler.launch(kCheck);
  in.executor.drain();
  EXPECT_EQ(task->success(), true);
  EXPECT_EQ(in.console.lines(), (Lines{kScheduled, kScheduled, "Error marking missed doses in background: no space"}));
}

TEST(BackgroundCheck, goesOnWhenItsSuccessorIsRefused) {
  RunningApp in;
  in.addMissedMedicine();
  in.app->scheduleMissedDoseCheck();
  in.scheduler.refusal = Error{"no agent"};
  const auto task = in.scheduler.launch(kCheck);
  in.executor.drain();
  EXPECT_EQ(task->success(), true);
  EXPECT_EQ(in.console.lines().back(), "Failed to schedule background task: no agent");
  EXPECT_EQ(allLogs(in.context()).size(), 7U);
}

TEST(BackgroundCheck, thatExpiresIsNoSuccessAndIsMarkedAllTheSame) {
  RunningApp in;
  in.addMissedMedicine();
  in.app->scheduleMissedDoseCheck();
  const auto task = in.scheduler.launch(kCheck);
  task->expire();
  EXPECT_EQ(task->success(), false);
  in.executor.drain();
  EXPECT_EQ(task->success(), false);
  EXPECT_EQ(allLogs(in.context()).size(), 7U);
}

TEST(BackgroundCheck, thatIsOverIsLetGo) {
  RunningApp in;
  in.app->scheduleMissedDoseCheck();
  std::weak_ptr<FakeTask> task = in.scheduler.launch(kCheck);
  in.executor.drain();
  EXPECT_TRUE(task.expired());
}

TEST(BackgroundCheck, thatFindsTheAppGoneDoesNothing) {
  RunningApp in;
  in.app->scheduleMissedDoseCheck();
  const auto first = in.scheduler.launch(kCheck);
  in.app.reset();
  in.executor.drain();
  EXPECT_FALSE(first->success());
  const auto second = in.scheduler.launch(kCheck);
  EXPECT_FALSE(second->success());
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include "doubles/FailingVfs.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"
#include "doubles/TemporaryFolder.h"
#include "screens/ReminderHistoryView.h"
#include "support/Json.h"

// The rows of History, what their buttons do, and the shape of its JSON.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kMidnight = at("2025-01-10T00:00:00-05:00");
const Instant kDue = at("2025-01-10T08:00:00-05:00");
const Instant kNow = at("2025-01-10T10:30:00-05:00");

using Names = std::vector<std::string>;

Names membersOf(const Json& object) {
  Names names;
  for (const auto& [name, value] : object.items()) names.push_back(name);
  return names;
}

class ReminderHistoryRow : public testing::Test {
 protected:
  std::shared_ptr<DoseLog> add(DoseStatus status, std::optional<Instant> action = std::nullopt) {
    return fixture_.log(aspirin_, kDue, status, action);
  }
  HistoryLogRow row(const DoseLog& log, bool use24HourTime = false) const {
    return historyLogRow(log, *fixture_.texts, use24HourTime);
  }

  ScreenFixture fixture_{kNow};
  std::shared_ptr<Medicine> aspirin_ = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}})));
  ReminderHistoryView view_{fixture_.environment()};
};

TEST_F(ReminderHistoryRow, aStatusHasAWordASymbolAndAColor) {
  const std::vector<std::array<std::string, 3>> expected = {{"Taken", "checkmark.circle.fill", "green"},
                                                            {"Missed", "xmark.circle.fill", "red"},
                                                            {"Skipped", "forward.circle.fill", "orange"},
                                                            {"Snoozed", "clock.arrow.circlepath", "yellow"},
                                                            {"Pending", "circle", "grey"}};
  for (size_t i = 0; i < expected.size(); ++i) {
    const auto shown = row(*add(kAllDoseStatuses[i]));
    EXPECT_EQ((std::array{shown.statusText, shown.symbol, shown.color}), expected[i]);
    EXPECT_EQ(shown.status, expected[i][0]);
  }
}

TEST_F(ReminderHistoryRow, anUnknownStatusShowsAsPendingAndStaysStored) {
  const auto log = add(DoseStatus::taken, kNow);
  log->statusRaw = "Forgotten";
  const auto shown = view_.content().days.at(0).logs.at(0);
  EXPECT_EQ(shown.status, "Pending");
  EXPECT_EQ(shown.symbol, "circle");
  EXPECT_FALSE(shown.timing);
  EXPECT_EQ(log->statusRaw(), "Forgotten");
}

TEST_F(ReminderHistoryRow, theNameIsTheMedicinesOrUnknown) {
  EXPECT_EQ(row(*add(DoseStatus::taken)).name, "Aspirin");
  EXPECT_EQ(row(*DoseLog::make(kDue)).name, "Unknown");
}

TEST_F(ReminderHistoryRow, theTimeIsThatOfTheActionOrElseWhenItWasDue) {
  const auto time = [&](const DoseLog& log, bool use24HourTime = false) {
    return plainBlanks(row(log, use24HourTime).timeText);
  };
  EXPECT_EQ(time(*add(DoseStatus::pending)), "8:00 AM");
  EXPECT_EQ(time(*add(DoseStatus::taken, kNow)), "10:30 AM");
  EXPECT_EQ(time(*add(DoseStatus::missed, kMidnight)), "12:00 AM") << "when it was found missed";
  EXPECT_EQ(time(*add(DoseStatus::taken, kMidnight + 20h), true), "20:00");
  EXPECT_EQ(row(*add(DoseStatus::taken, kNow)).time, kNow);
  EXPECT_EQ(row(*add(DoseStatus::taken)).time, kDue);
}

TEST_F(ReminderHistoryRow, timesFollowTheSettingForTwentyFourHours) {
  add(DoseStatus::taken, kMidnight + 20h);
  const auto settings = AppSettings::make();
  fixture_.context().insert(settings);
  EXPECT_EQ(plainBlanks(view_.content().days.at(0).logs.at(0).timeText), "8:00 PM");
  settings->use24HourTime = true;
  EXPECT_EQ(view_.content().days.at(0).logs.at(0).timeText, "20:00");
}

TEST_F(ReminderHistoryRow, aTakenDoseTellsHowFarOffItWas) {
  struct Case {
    Instant::Duration off;
    std::string text;  ///< empty: no badge
  };
  const std::vector<Case> cases = {{0s, ""},
                                   {59s, ""},
                                   {59s + 999'999us, ""},
                                   {60s, "1m late"},
                                   {61s, "1m late"},
                                   {5min + 59s, "5m late"},
                                   {3599s, "59m late"},
                                   {3600s, "1h late"},
                                   {2h + 30s, "2h late"},
                                   {2h + 59s, "2h late"},
                                   {2h + 1min, "2h 1m late"},
                                   {24h - 1s, "23h 59m late"},
                                   {24h, "1d late"},
                                   {71h, "2d late"},
                                   {-59s, ""},
                                   {-60s, "1m early"},
                                   {-(2h + 5min), "2h 5m early"},
                                   {-3600s, "1h early"},
                                   {-25h, "1d early"}};
  for (const Case& each : cases) {
    const auto shown = row(*add(DoseStatus::taken, kDue + each.off));
    EXPECT_EQ(shown.timing.value_or(""), each.text);
    EXPECT_EQ(shown.timing.has_value(), !each.text.empty());
    const std::string color = each.text.empty() ? "" : each.off > 0s ? "orange" : "blue";
    EXPECT_EQ(shown.timingColor.value_or(""), color) << each.text;
  }
}

TEST_F(ReminderHistoryRow, onlyATakenDoseWithAnActionTimeHasABadge) {
  EXPECT_FALSE(row(*add(DoseStatus::taken)).timing);
  for (const DoseStatus status : {DoseStatus::missed, DoseStatus::skipped, DoseStatus::snoozed, DoseStatus::pending}) {
    EXPECT_FALSE(row(*add(status, kNow)).timing) << rawValue(status);
  }
}

TEST_F(ReminderHistoryRow, missedAndSkippedDosesOfferWhatTheyAreNot) {
  const std::vector<std::pair<DoseStatus, Names>> offered = {{DoseStatus::taken, {}},
                                                             {DoseStatus::missed, {"take", "skip"}},
                                                             {DoseStatus::skipped, {"take"}},
                                                             {DoseStatus::snoozed, {}},
                                                             {DoseStatus::pending, {}}};
  for (const auto& [status, actions] : offered) {
    const auto shown = row(*add(status));
    Names found;
    for (const ActionItem& action : shown.actions) found.push_back(action.id);
    EXPECT_EQ(found, actions) << rawValue(status);
    EXPECT_EQ(shown.canTake, !actions.empty()) << rawValue(status);
    EXPECT_EQ(shown.canSkip, actions.size() == 2) << rawValue(status);
  }
  const auto missed = row(*add(DoseStatus::missed));
  EXPECT_EQ(missed.actions[0], (ActionItem{"take", "Mark as Taken", "checkmark"}));
  EXPECT_EQ(missed.actions[1], (ActionItem{"skip", "Mark as Skipped", "forward.fill"}));
}

// Changing a status

TEST_F(ReminderHistoryRow, aMissedDoseMarkedTakenIsTakenNowAndSaved) {
  const auto log = add(DoseStatus::missed, kMidnight);
  fixture_.endTurn();
  fixture_.clock.set(kNow + 48h);
  EXPECT_TRUE(*view_.onStatusChange(log->id(), DoseStatus::taken));
  EXPECT_FALSE(fixture_.context().hasChanges()) << "saved at once";
  EXPECT_EQ(log->statusRaw(), "Taken");
  EXPECT_EQ(log->actionTime(), kNow + 48h);
  EXPECT_EQ(log->scheduledTime(), kDue);
  const auto content = view_.content();
  EXPECT_EQ(content.stats.at(0).value, 1);
  EXPECT_EQ(content.adherence.message, "Perfect!");
  EXPECT_EQ(content.days.at(0).logs.at(0).timing, "2d late");
}

TEST_F(ReminderHistoryRow, changingAStatusPlansAndCancelsNothing) {
  const auto log = add(DoseStatus::missed);
  fixture_.notifications.scheduleUpcomingNotifications(*aspirin_, 2);
  fixture_.endTurn();
  const auto planned = fixture_.center.pendingIdentifiers();
  ASSERT_FALSE(planned.empty());
  EXPECT_TRUE(*view_.onStatusChange(log->id(), DoseStatus::skipped));
  EXPECT_TRUE(*view_.onStatusChange(log->id(), DoseStatus::taken));
  fixture_.endTurn();
  EXPECT_EQ(fixture_.center.pendingIdentifiers(), planned);
}

TEST_F(ReminderHistoryRow, onlyWhatARowOffersIsDone) {
  for (const DoseStatus recorded : kAllDoseStatuses) {
    for (const DoseStatus wanted : kAllDoseStatuses) {
      const auto log = add(recorded);
      const auto shown = row(*log);
      const bool isOffered =
          (wanted == DoseStatus::taken && shown.canTake) || (wanted == DoseStatus::skipped && shown.canSkip);
      EXPECT_EQ(*view_.onStatusChange(log->id(), wanted), isOffered) << rawValue(recorded) << rawValue(wanted);
      EXPECT_EQ(log->status(), isOffered ? wanted : recorded);
      EXPECT_EQ(log->actionTime().has_value(), isOffered);
    }
  }
}

TEST_F(ReminderHistoryRow, aLogThatIsGoneOrBelongsToNoMedicineIsLeftAlone) {
  const auto log = add(DoseStatus::missed);
  aspirin_->removeDoseLog(log);
  EXPECT_FALSE(*view_.onStatusChange(log->id(), DoseStatus::taken));
  fixture_.context().delete_(log);
  EXPECT_FALSE(*view_.onStatusChange(log->id(), DoseStatus::taken));
  EXPECT_FALSE(*view_.onStatusChange(UUID::random(), DoseStatus::taken));
  EXPECT_EQ(*fixture_.context().fetchCount<DoseLog>(), 0);
}

class ReminderHistoryInAFile : public testing::Test {
 protected:
  void TearDown() override { failingVfs::heal(); }
  HistoryContent content() { return view_.content(); }

  TemporaryFolder folder_;
  const ModelConfiguration configuration_{.path = folder_.file("Pillora.store"), .vfsName = failingVfs::name()};
  ScreenFixture fixture_{kNow, {}, configuration_};
  std::shared_ptr<DoseLog> log_ = [this] {
    const auto medicine = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}})));
    const auto log = fixture_.log(medicine, kDue, DoseStatus::missed, kMidnight);
    fixture_.endTurn();
    return log;
  }();
  ReminderHistoryView view_{fixture_.environment()};
};

TEST_F(ReminderHistoryInAFile, whatAnotherProcessDidInTheMeantimeStands) {
  EXPECT_TRUE(content().days.at(0).logs.at(0).canTake);
  ScreenFixture other(kNow, {}, configuration_);
  EXPECT_TRUE(*ReminderHistoryView(other.environment()).onStatusChange(log_->id(), DoseStatus::taken));
  EXPECT_FALSE(*view_.onStatusChange(log_->id(), DoseStatus::skipped)) << "it is taken by now";
  fixture_.endTurn();
  EXPECT_EQ(content().days.at(0).logs.at(0).status, "Taken");
  other.context().delete_(other.context().find<DoseLog>(log_->id()));
  other.endTurn();
  EXPECT_FALSE(*view_.onStatusChange(log_->id(), DoseStatus::taken)) << "it is gone by now";
  EXPECT_TRUE(content().empty);
}

TEST_F(ReminderHistoryInAFile, anErrorOfTheSaveIsSwallowedAndTheChangeIsWrittenLater) {
  failingVfs::failAt(1, SQLITE_FULL, true);
  const auto changed = view_.onStatusChange(log_->id(), DoseStatus::taken);
  ASSERT_TRUE(changed);
  EXPECT_TRUE(*changed);
  EXPECT_TRUE(failingVfs::hasFailed());
  EXPECT_TRUE(fixture_.context().hasChanges());
  EXPECT_TRUE(fixture_.console.lines().empty());
  failingVfs::heal();
  ASSERT_TRUE(fixture_.context().save());
  ScreenFixture other(kNow, {}, configuration_);
  EXPECT_EQ(other.context().find<DoseLog>(log_->id())->actionTime(), kNow);
}

TEST_F(ReminderHistoryInAFile, withoutTheLockNothingIsChanged) {
  failingVfs::refuseWriteLock();
  EXPECT_FALSE(view_.onStatusChange(log_->id(), DoseStatus::taken));
  EXPECT_EQ(log_->status(), DoseStatus::missed);
  EXPECT_FALSE(fixture_.context().hasChanges());
}

TEST_F(ReminderHistoryInAFile, whatCannotBeReadAnewStaysAsItWas) {
  const Json before = toJson(content());
  SQLite::Database(configuration_.path, SQLite::OPEN_READWRITE).exec("ALTER TABLE DoseLog RENAME TO Elsewhere");
  EXPECT_EQ(toJson(content()), before);
  EXPECT_TRUE(fixture_.context().takeReadError());
  view_.selectedFilter = HistoryFilter::missed;
  EXPECT_TRUE(content().days.empty()) << "nothing is known of another selection";
}

TEST_F(ReminderHistoryInAFile, aLogThatCannotBeLookedUpIsAnErrorAndNotTakenForGone) {
  ScreenFixture other(kNow, {}, configuration_);
  SQLite::Database(configuration_.path, SQLite::OPEN_READWRITE).exec("ALTER TABLE DoseLog RENAME TO Elsewhere");
  EXPECT_FALSE(ReminderHistoryView(other.environment()).onStatusChange(log_->id(), DoseStatus::taken));
}

// The JSON

TEST_F(ReminderHistoryRow, membersOfTheContent) {
  add(DoseStatus::taken, kNow);
  const Json json = toJson(view_.content());
  EXPECT_EQ(membersOf(json), (Names{"title", "rangeTitle", "range", "ranges", "adherence", "stats", "filter", "chips",
                                    "days", "empty", "hasMore", "hasPrevious"}));
  EXPECT_EQ(membersOf(json["adherence"]),
            (Names{"rate", "ring", "percent", "percentText", "percentSign", "title", "message", "color"}));
  EXPECT_TRUE(json["adherence"]["rate"].is_number_float());
  EXPECT_TRUE(json["adherence"]["percent"].is_number_integer());
  EXPECT_EQ(membersOf(json["stats"][0]), (Names{"value", "label", "icon", "color"}));
  EXPECT_TRUE(json["stats"][0]["value"].is_number_integer());
  EXPECT_EQ(membersOf(json["days"][0]), (Names{"day", "title", "count", "logs"}));
  EXPECT_EQ(membersOf(json["days"][0]["logs"][0]),
            (Names{"id", "name", "status", "statusText", "symbol", "color", "time", "timeText", "timing", "timingColor",
                   "canTake", "canSkip", "actions", "isFirst", "isLast"}));
  EXPECT_TRUE(json["empty"].is_null());
}

TEST_F(ReminderHistoryRow, withoutLogsTheRateIsNull) {
  const Json json = toJson(view_.content());
  EXPECT_TRUE(json["adherence"]["rate"].is_null());
  EXPECT_EQ(json["adherence"]["percent"], 0);
  EXPECT_EQ(json["days"], Json::array());
  EXPECT_EQ(membersOf(json["empty"]), (Names{"symbol", "title", "text"}));
}

TEST(ReminderHistoryLanguage, changesTextsAndNeitherIdsNorRules) {
  ScreenFixture fixture(kNow, {.language = "en-XA"});
  fixture.log(fixture.add(medicineNamed("Aspirin", daily({{8, 0}}))), kDue, DoseStatus::taken, kDue + 5min);
  const auto content = ReminderHistoryView(fixture.environment()).content();
  EXPECT_NE(content.title, "History");
  EXPECT_NE(content.ranges.at(1).title, "Week");
  EXPECT_EQ(content.ranges.at(1).id, "Week");
  EXPECT_EQ(content.filter, "All");
  const auto row = content.days.at(0).logs.at(0);
  EXPECT_EQ(row.status, "Taken");
  EXPECT_NE(row.statusText, "Taken");
  EXPECT_EQ(row.timingColor, "orange") << "whatever the word for late";
}

}  // namespace
}  // namespace pillora

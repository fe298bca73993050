// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <set>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"
#include "doubles/TemporaryFolder.h"
#include "screens/TodayView.h"
#include "screens/UpcomingView.h"
#include "support/Json.h"

// What holds for both screens: the shape of their JSON, languages, settings, and how they follow the store.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kMidnight = at("2025-01-10T00:00:00-05:00");
const Instant kNow = at("2025-01-10T10:30:00-05:00");

using Names = std::vector<std::string>;

Names membersOf(const Json& object) {
  Names names;
  for (const auto& [name, value] : object.items()) names.push_back(name);
  return names;
}

class ScreenContent : public testing::Test {
 protected:
  /// A morning dose taken late, a noon dose open.
  void addTypicalDay() {
    fixture_.log(fixture_.add(medicineNamed("Aspirin", daily({{8, 0}}))), kMidnight + 8h, DoseStatus::taken, kNow);
    fixture_.add(medicineNamed("Zinc", daily({{12, 0}})));
  }
  Json today() const { return toJson(today_.content()); }
  Json upcoming() const { return toJson(upcoming_.content()); }

  ScreenFixture fixture_{kNow};
  TodayView today_{fixture_.environment()};
  UpcomingView upcoming_{fixture_.environment()};
};

TEST_F(ScreenContent, membersOfToday) {
  addTypicalDay();
  const Json json = today();
  EXPECT_EQ(membersOf(json), (Names{"title", "toolbar", "greeting", "date", "progress", "badges", "dosesTitle", "doses",
                                    "message", "activityTitle", "activity", "empty", "emptyAction"}));
  EXPECT_EQ(membersOf(json["progress"]), (Names{"value", "text", "color"}));
  EXPECT_TRUE(json["progress"]["value"].is_number_float());
  EXPECT_EQ(membersOf(json["badges"][0]), (Names{"icon", "value", "label", "color"}));
  EXPECT_TRUE(json["badges"][0]["value"].is_string());
  EXPECT_EQ(membersOf(json["doses"][0]), (Names{"medicineId", "name", "dosageText", "icon", "color", "time", "timeText",
                                                "countdown", "countdownColor", "allowSnooze", "actions"}));
  EXPECT_EQ(json["doses"][0]["time"], "2025-01-10T17:00:00Z");
  EXPECT_EQ(json["doses"][0]["allowSnooze"], true);
  EXPECT_EQ(membersOf(json["activity"][0]), (Names{"id", "name", "status", "statusText", "statusColor", "time",
                                                   "timeText", "timing", "timingColor", "undoSymbol", "undoAlert"}));
  EXPECT_TRUE(json["message"].is_null());
  EXPECT_TRUE(json["empty"].is_null());
}

TEST_F(ScreenContent, membersOfTodayWithoutMedicines) {
  const Json json = today();
  for (const char* absent : {"greeting", "date", "progress", "message"}) EXPECT_TRUE(json[absent].is_null()) << absent;
  for (const char* empty : {"badges", "doses", "activity"}) EXPECT_EQ(json[empty], Json::array()) << empty;
  EXPECT_EQ(membersOf(json["empty"]), (Names{"symbol", "title", "text"}));
}

TEST_F(ScreenContent, aPanelWithoutTextHasNull) {
  fixture_.add(medicineNamed("Drops", hourly(0)));
  EXPECT_EQ(membersOf(today()["message"]), (Names{"symbol", "title", "text"}));
  EXPECT_TRUE(today()["message"]["text"].is_null());
}

TEST_F(ScreenContent, membersOfUpcoming) {
  addTypicalDay();
  const Json json = upcoming();
  EXPECT_EQ(membersOf(json), (Names{"title", "days", "empty", "hasMore", "hasPrevious"}));
  EXPECT_TRUE(json["empty"].is_null());
  EXPECT_EQ(membersOf(json["days"][0]), (Names{"title", "doses"}));
  EXPECT_EQ(membersOf(json["days"][0]["doses"][0]),
            (Names{"id", "medicineId", "name", "dosageText", "icon", "color", "time", "timeText", "relative",
                   "relativeColor", "actions"}));
}

TEST_F(ScreenContent, membersOfUpcomingWithoutMedicines) {
  const Json json = upcoming();
  EXPECT_EQ(json["days"], Json::array());
  EXPECT_EQ(json["hasMore"], false);
  EXPECT_EQ(membersOf(json["empty"]), (Names{"symbol", "title", "text"}));
}

/// Every text under one of the names of own texts differs between the two, and nothing else does.
void expectOnlyOwnTextsToDiffer(const Json& english, const Json& other, const std::string& name = {}) {
  static const std::set<std::string> kOwnTexts = {"title",      "text",      "greeting", "dosesTitle", "activityTitle",
                                                  "label",      "countdown", "relative", "timing",     "message",
                                                  "statusText", "cancel",    "confirm",  "dosageText"};
  ASSERT_EQ(english.type(), other.type()) << name;
  if (english.is_structured()) {
    ASSERT_EQ(english.size(), other.size()) << name;
    auto at = other.begin();
    for (const auto& [key, value] : english.items()) {
      expectOnlyOwnTextsToDiffer(value, *at++, english.is_object() ? key : name);
    }
  } else if (kOwnTexts.contains(name) && !english.is_null()) {
    EXPECT_NE(english, other) << name;
  } else {
    EXPECT_EQ(english, other) << name;
  }
}

class ScreenContentInPseudoLanguage : public ScreenContent {
 protected:
  void compare() const {
    Json english = today();
    Json other = toJson(TodayView(pseudo_).content());
    if (english["progress"].is_object()) {  // the percentage is no own text
      EXPECT_EQ(english["progress"], other["progress"]);
      english.erase("progress");
      other.erase("progress");
    }
    expectOnlyOwnTextsToDiffer(english, other);
    UpcomingView upcoming(pseudo_);
    upcoming.rowLimit = upcoming_.rowLimit;
    expectOnlyOwnTextsToDiffer(this->upcoming(), toJson(upcoming.content()));
  }

  std::unique_ptr<Texts> texts_ = textsOf("en_US", "America/New_York", "en-XA");
  ScreenEnvironment pseudo_{fixture_.context(), fixture_.clock, *fixture_.calendar, *texts_, fixture_.notifications};
};

TEST_F(ScreenContentInPseudoLanguage, emptyStates) { compare(); }

TEST_F(ScreenContentInPseudoLanguage, noReminders) {
  fixture_.add(medicineNamed("Drops", hourly(0)));
  compare();
}

TEST_F(ScreenContentInPseudoLanguage, everyStatusGreetingCountdownAndRelativeText) {
  const auto medicine = fixture_.add(medicineNamed("Aspirin", daily({{23, 59}})));
  for (const DoseStatus status : kAllDoseStatuses) fixture_.log(medicine, kMidnight + 5h, status, kMidnight + 5h);
  for (const auto off : {-49h, -5h, 5h, 49h}) fixture_.log(medicine, kMidnight, DoseStatus::taken, kMidnight + off);
  for (const auto off : {-125min, -5min, 5min, 125min}) {
    fixture_.log(medicine, kMidnight, DoseStatus::taken, kMidnight + off);
  }
  upcoming_.rowLimit = 2;  // today and tomorrow: the other headings are dates of the locale
  for (const auto time : {4h + 59min, 11h + 59min, 13h + 1min, 18h + 0min, 22h + 59min, 23h + 30min, 23h + 59min}) {
    fixture_.clock.set(kMidnight + time);
    compare();
  }
  fixture_.clock.set(kMidnight + 23h + 59min + 30s);
  compare();
}

TEST_F(ScreenContentInPseudoLanguage, allDone) {
  const auto medicine = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}})));
  fixture_.log(medicine, kMidnight + 8h, DoseStatus::skipped, kNow);
  for (int day = 2; day <= 7; ++day) fixture_.log(medicine, kMidnight + 8h + day * 24h, DoseStatus::skipped, kNow);
  compare();
}

TEST_F(ScreenContent, withoutASettingsRecordIconsShowAndDrawingMakesNone) {
  addTypicalDay();
  EXPECT_EQ(today()["doses"][0]["icon"], "pills");
  EXPECT_EQ(upcoming()["days"][0]["doses"][0]["icon"], "pills");
  fixture_.endTurn();
  EXPECT_EQ(*fixture_.context().fetchCount<AppSettings>(), 0);
}

TEST_F(ScreenContent, iconsAreLeftOutWhenTheSettingIsOff) {
  addTypicalDay();
  const auto settings = AppSettings::make();
  fixture_.context().insert(settings);
  EXPECT_EQ(today()["doses"][0]["icon"], "pills");
  settings->showMedicineIcons = false;
  EXPECT_TRUE(today()["doses"][0]["icon"].is_null());
  EXPECT_TRUE(upcoming()["days"][0]["doses"][0]["icon"].is_null());
}

TEST_F(ScreenContent, timesFollowTheLocaleUntilThe24HourFormIsAskedFor) {
  addTypicalDay();
  const auto settings = AppSettings::make();
  fixture_.context().insert(settings);
  const auto times = [&] {
    return std::array{plainBlanks(today()["doses"][0]["timeText"]), plainBlanks(today()["activity"][0]["timeText"]),
                      plainBlanks(upcoming()["days"][0]["doses"][0]["timeText"])};
  };
  EXPECT_EQ(times(), (std::array<std::string, 3>{"12:00 PM", "8:00 AM", "12:00 PM"}));
  settings->use24HourTime = true;
  EXPECT_EQ(times(), (std::array<std::string, 3>{"12:00", "08:00", "12:00"}));
}

TEST_F(ScreenContent, aLocaleOf24HoursIsNeverForcedTo12) {
  ScreenFixture german(kNow, {"Europe/Berlin", "de_DE", "en"});
  german.add(medicineNamed("Aspirin", daily({{20, 0}})));
  EXPECT_EQ(TodayView(german.environment()).content().doses.front().timeText, "20:00");
}

TEST_F(ScreenContent, theFirstSettingsRecordCounts) {
  addTypicalDay();
  fixture_.context().insert(AppSettings::make());
  const auto second = AppSettings::make();
  second->showMedicineIcons = false;
  fixture_.context().insert(second);
  EXPECT_EQ(today()["doses"][0]["icon"], "pills");
}

TEST_F(ScreenContent, whatOneScreenDoesTheOtherShows) {
  const auto medicine = fixture_.add(medicineNamed("Aspirin", daily({{12, 0}})));
  const size_t days = upcoming()["days"].size();
  const auto log = *today_.take(medicine->id(), kMidnight + 12h);
  ASSERT_TRUE(log);
  EXPECT_EQ(upcoming()["days"].size(), days - 1);
  EXPECT_FALSE(*upcoming_.take(medicine->id(), kMidnight + 12h));
  ASSERT_TRUE(today_.undo(*log));
  EXPECT_EQ(upcoming()["days"].size(), days);
  ASSERT_TRUE(*upcoming_.skip(medicine->id(), kMidnight + 12h));
  EXPECT_EQ(today()["doses"], Json::array());
  EXPECT_EQ(today()["activity"][0]["status"], "Skipped");
}

TEST_F(ScreenContent, changesOfMedicinesAreShownAtOnce) {
  const auto medicine = fixture_.add(medicineNamed("Aspirin", daily({{12, 0}})));
  EXPECT_EQ(today()["doses"][0]["name"], "Aspirin");
  medicine->name = "Ibuprofen";
  EXPECT_EQ(today()["doses"][0]["name"], "Ibuprofen");
  medicine->isActive = false;
  EXPECT_EQ(today()["doses"], Json::array());
  EXPECT_EQ(upcoming()["empty"]["title"], "No Medicines");
  fixture_.context().delete_(medicine);
  EXPECT_EQ(today()["empty"]["title"], "No Medicines Added");
}

TEST_F(ScreenContent, changesOfAnotherProcessAreShownAfterARefresh) {
  const TemporaryFolder folder;
  ScreenFixture here(kNow, {}, {.path = folder.path() + "/Pillora.store"});
  ScreenFixture there(kNow, {}, {.path = folder.path() + "/Pillora.store"});
  const TodayView today(here.environment());
  const UpcomingView upcoming(here.environment());
  EXPECT_TRUE(today.content().empty);

  const UUID medicine = there.add(medicineNamed("Aspirin", daily({{12, 0}})))->id();
  there.endTurn();
  here.context().refresh();
  EXPECT_EQ(today.content().doses.size(), 1U);
  EXPECT_EQ(upcoming.content().days.size(), 7U);

  ASSERT_TRUE(*TodayView(there.environment()).take(medicine, kMidnight + 12h));
  there.endTurn();
  here.context().refresh();
  EXPECT_EQ(today.content().activity.size(), 1U);
  EXPECT_EQ(upcoming.content().days.size(), 6U);
}

TEST_F(ScreenContent, aTypicalDay) {
  fixture_.clock.set(kMidnight + 8h);
  const auto aspirin = fixture_.add(medicineNamed("Aspirin", daily({{8, 0}, {20, 0}})));
  const auto card = today_.content().doses.front();
  EXPECT_EQ(card.time, kMidnight + 8h);
  EXPECT_EQ(card.countdown, "Now");
  ASSERT_TRUE(*today_.take(card.medicineId, card.time));
  fixture_.endTurn();

  TodayContent after = today_.content();
  EXPECT_TRUE(after.doses.empty());
  EXPECT_EQ(after.message->title, "All done for today!");
  EXPECT_EQ(after.progress->text, "100%");
  fixture_.clock.set(kMidnight + 20h);
  EXPECT_TRUE(today_.content().doses.empty());
  EXPECT_EQ(upcoming_.content().days.front().doses.front().time, kMidnight + 20h);

  // The next morning the evening dose, which nobody acted on, is marked: one of two doses was taken.
  fixture_.clock.set(kMidnight + 24h);
  fixture_.log(aspirin, kMidnight + 20h, DoseStatus::missed, kMidnight + 24h);
  const auto logs = aspirin->doseLogs(kMidnight, kMidnight + 24h);
  ASSERT_EQ(logs.size(), 2U);
  EXPECT_EQ(logs[0]->status(), DoseStatus::taken);
  EXPECT_EQ(logs[1]->status(), DoseStatus::missed);
  EXPECT_EQ(today_.content().doses.front().time, kMidnight + 32h);
  EXPECT_TRUE(today_.content().activity.empty());
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"

namespace pillora {
namespace {

/// The JSON of the screens, member by member: scripts rely on these names.
class ScreenCommands : public Cli {};

TEST_F(ScreenCommands, todayWithDosesAndActivity) {
  const std::string id = add({"Aspirin", "--dosage", "2", "--unit", "tablets", "--daily", "08:00", "--color", "red"});
  add({"Vitamin D", "--daily", "09:00"});
  const std::string log = json({"take", "Vitamin D"}).at("log");
  const Json today = json({"today"});
  ASSERT_TRUE(
      hasMembers(today, {"title", "greeting", "date", "progress", "badges", "doses", "message", "activity", "empty"}));
  EXPECT_EQ(today.at("title"), "Today");
  EXPECT_EQ(today.at("greeting"), "Good Morning");
  EXPECT_EQ(today.at("date"), "Friday, January 10, 2025");
  EXPECT_EQ(today.at("progress"), Json::object({{"value", 0.5}, {"text", "50%"}, {"color", "blue"}}));
  ASSERT_EQ(today.at("badges").size(), 3u);
  EXPECT_EQ(today.at("badges").at(0),
            Json::object({{"icon", "checkmark.circle.fill"}, {"value", "1"}, {"label", "Taken"}, {"color", "green"}}));
  EXPECT_TRUE(today.at("message").is_null());
  EXPECT_TRUE(today.at("empty").is_null());

  ASSERT_EQ(today.at("doses").size(), 1u);
  const Json dose = today.at("doses").at(0);
  ASSERT_TRUE(hasMembers(dose, {"medicineId", "name", "dosageText", "icon", "color", "time", "timeText", "countdown",
                                "countdownColor", "allowSnooze"}));
  EXPECT_EQ(dose.at("medicineId"), id);
  EXPECT_EQ(dose.at("dosageText"), "2 tablets");
  EXPECT_EQ(dose.at("icon"), "pills");
  EXPECT_EQ(dose.at("color"), "red");
  EXPECT_EQ(dose.at("time"), "2025-01-10T08:00:00Z");
  EXPECT_EQ(dose.at("countdown"), "Overdue");
  EXPECT_EQ(dose.at("countdownColor"), "red");
  EXPECT_EQ(dose.at("allowSnooze"), true);

  ASSERT_EQ(today.at("activity").size(), 1u);
  const Json row = today.at("activity").at(0);
  ASSERT_TRUE(hasMembers(row, {"id", "name", "status", "statusColor", "time", "timeText", "timing", "timingColor"}));
  EXPECT_EQ(row.at("id"), log);
  EXPECT_EQ(row.at("status"), "Taken");
  EXPECT_EQ(row.at("statusColor"), "green");
  EXPECT_EQ(row.at("time"), "2025-01-10T09:00:00Z");
  EXPECT_EQ(row.at("timing"), "1h 30m late");
  EXPECT_EQ(row.at("timingColor"), "orange");
}

TEST_F(ScreenCommands, todayWithoutAnyMedicine) {
  const Json today = json({"today"});
  for (const std::string absent : {"greeting", "date", "progress", "message"})
    EXPECT_TRUE(today.at(absent).is_null()) << absent;
  for (const std::string list : {"badges", "doses", "activity"}) EXPECT_EQ(today.at(list), Json::array()) << list;
  EXPECT_EQ(today.at("empty"), Json::object({{"symbol", "pills.circle"},
                                             {"title", "No Medicines Added"},
                                             {"text", "Add your first medicine to start tracking your reminders."}}));
}

TEST_F(ScreenCommands, upcomingByDay) {
  const std::string id = add({"Aspirin", "--daily", "08:00"});
  const Json upcoming = json({"upcoming"});
  ASSERT_TRUE(hasMembers(upcoming, {"title", "days", "empty"}));
  EXPECT_EQ(upcoming.at("title"), "Upcoming");
  EXPECT_TRUE(upcoming.at("empty").is_null());
  ASSERT_EQ(upcoming.at("days").size(), 7u);
  EXPECT_EQ(upcoming.at("days").at(0).at("title"), "Tomorrow");
  const Json dose = upcoming.at("days").at(0).at("doses").at(0);
  ASSERT_TRUE(hasMembers(dose, {"id", "medicineId", "name", "dosageText", "icon", "color", "time", "timeText",
                                "relative", "relativeColor"}));
  EXPECT_EQ(dose.at("id"), id + "-1736582400.0");
  EXPECT_EQ(dose.at("time"), "2025-01-11T08:00:00Z");
  EXPECT_EQ(dose.at("relative"), "in 21h 30m");
}

TEST_F(ScreenCommands, upcomingPrintsEveryDose) {
  add({"A", "--interval",
       R"({"type":"Custom","hourlyInterval":4,"dailyTimes":[],"weeklyDays":[],"weeklyTime":{},"monthlyDays":[],)"
       R"("monthlyTime":{},"customIntervalMinutes":10})"});
  size_t doses = 0;
  const Json upcoming = json({"upcoming"});
  for (const Json& day : upcoming.at("days")) doses += day.at("doses").size();
  EXPECT_EQ(doses, 1008u) << "from 10:39 on, six an hour for seven days";
}

TEST_F(ScreenCommands, medicinesBySections) {
  const std::string id = add({"Zinc", "--every-hours", "6"});
  add({"aspirin", "--weekly", "2@09:00"});
  add({"Old", "--active", "no"});
  const Json list = json({"medicines"});
  ASSERT_TRUE(hasMembers(list, {"title", "sections", "empty"}));
  EXPECT_EQ(list.at("title"), "Medicines");
  EXPECT_TRUE(list.at("empty").is_null());
  ASSERT_EQ(list.at("sections").size(), 2u);
  EXPECT_EQ(list.at("sections").at(0).at("title"), "Active");
  EXPECT_EQ(list.at("sections").at(1).at("title"), "Inactive");
  EXPECT_EQ(names(), (Words{"aspirin", "Zinc", "Old"}));
  const Json row = list.at("sections").at(0).at("rows").at(1);
  ASSERT_TRUE(hasMembers(
      row, {"id", "name", "dosageText", "icon", "color", "isActive", "intervalSymbol", "nextDose", "nextDoseText"}));
  EXPECT_EQ(row.at("id"), id);
  EXPECT_EQ(row.at("isActive"), true);
  EXPECT_EQ(row.at("intervalSymbol"), "clock");
  EXPECT_EQ(row.at("nextDose"), "2025-01-10T16:30:00Z");
  EXPECT_EQ(row.at("nextDoseText"), "in 6 hr.");
  const Json inactive = list.at("sections").at(1).at("rows").at(0);
  EXPECT_TRUE(inactive.at("nextDose").is_null());
  EXPECT_TRUE(inactive.at("nextDoseText").is_null());
}

TEST_F(ScreenCommands, medicinesSearched) {
  for (const std::string name : {"Aspirin", "Baby aspirin", "Zinc"}) add({name});
  const Json found = json({"medicines", "--search", "ASP"});
  ASSERT_EQ(found.at("sections").size(), 1u);
  EXPECT_EQ(found.at("sections").at(0).at("rows").size(), 2u);
  const Json none = json({"medicines", "--search", "x"});
  EXPECT_EQ(none.at("sections"), Json::array());
  EXPECT_TRUE(none.at("empty").is_null()) << "no match is not an empty store";
}

TEST_F(ScreenCommands, medicinesOfAnEmptyStore) {
  EXPECT_EQ(json({"medicines"}).at("empty"),
            Json::object({{"symbol", "pills"},
                          {"title", "No Medicines Added"},
                          {"text", "Add medicines to track your reminders and never miss a dose."}}));
}

TEST_F(ScreenCommands, rawValuesAndInstantsAreTheSameInEveryLanguageAndLocale) {
  add({"Aspirin", "--daily", "08:00"});
  run({"take", "Aspirin"});
  const Json today = json({"--language", "en-XA", "--locale", "ar_EG", "today"});
  EXPECT_NE(today.at("title"), "Today");
  EXPECT_EQ(today.at("activity").at(0).at("status"), "Taken");
  EXPECT_EQ(today.at("activity").at(0).at("time"), "2025-01-10T08:00:00Z");
}

TEST_F(ScreenCommands, jsonIsOneLineAndHoldsNamesAsTheyAre) {
  const std::string name =
      "a\"b\\c\nd\x1b[31m\u202E"
      "é日本💊";
  add({name});
  const Called called = run({"--json", "today"});
  EXPECT_EQ(called.out.find('\n'), called.out.size() - 1);
  EXPECT_EQ(called.out.find('\x1b'), std::string::npos);
  EXPECT_EQ(called.json().at("doses").at(0).at("name"), name);
}

}  // namespace
}  // namespace pillora

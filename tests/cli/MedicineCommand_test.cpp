// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <sstream>

#include "cli/CliFixture.h"
#include "cli/DisplayText.h"

namespace pillora {
namespace {

// UTC, en_US; Friday, 2025-01-10, 10:30.
class MedicineCommand : public Cli {
 protected:
  std::string printed(const Words& words) { return plainBlanks(run(words).out); }
};

TEST_F(MedicineCommand, membersOfMedicine) {
  const std::string id = add({"Aspirin", "--daily", "20:00,08:00"});
  run({"take", "Aspirin", "2025-01-10T08:00"});
  const Json medicine = json({"medicine", id});
  ASSERT_TRUE(hasMembers(medicine, {"title", "record", "frequency", "details", "nextDose", "nextDoseText",
                                    "nextDoseRelative", "recentHistory"}));
  EXPECT_EQ(medicine.at("title"), "Details");
  EXPECT_EQ(medicine.at("frequency"), "Daily");
  EXPECT_EQ(plainBlanks(medicine.at("details")), "Daily at 8:00 PM, 8:00 AM");
  EXPECT_EQ(medicine.at("nextDose"), "2025-01-10T20:00:00Z");
  EXPECT_EQ(plainBlanks(medicine.at("nextDoseText")), "8:00 PM");
  EXPECT_EQ(medicine.at("nextDoseRelative"), "in 9 hr.");
  const Json dose = medicine.at("recentHistory").at(0);
  ASSERT_TRUE(hasMembers(dose, {"id", "symbol", "color", "dateText", "timeText", "status"}));
  EXPECT_EQ(dose.at("id"), logs().at(0).at("id"));
  EXPECT_EQ(dose.at("symbol"), "checkmark.circle.fill");
  EXPECT_EQ(dose.at("status"), "Taken");
}

TEST_F(MedicineCommand, theRecordHasItsFieldsWithTheScheduleSpelledOut) {
  const std::string id = add({"Aspirin", "--weekly", "7,1@09:05", "--end", "2025-02-01T00:00:00.5Z"});
  const Json record = json({"medicine", "asp"}).at("record");
  EXPECT_EQ(membersOf(record), (Words{"id", "name", "dosage", "unit", "instructions", "color", "icon", "interval",
                                      "isActive", "allowSnooze", "snoozeDurationMinutes", "maxSnoozeCount",
                                      "isRepeating", "createdAt", "updatedAt", "startDate", "endDate"}));
  EXPECT_EQ(record.at("id"), id);
  EXPECT_EQ(record.at("startDate"), "2025-01-10T10:30:00Z");
  EXPECT_EQ(record.at("endDate"), "2025-02-01T00:00:00.5Z");
  const Json interval = record.at("interval");
  EXPECT_EQ(membersOf(interval), (Words{"type", "hourlyInterval", "dailyTimes", "weeklyDays", "weeklyTime",
                                        "monthlyDays", "monthlyTime", "customIntervalMinutes"}));
  EXPECT_EQ(interval.at("weeklyDays"), Json::array({1, 7}));
  EXPECT_EQ(interval.at("weeklyTime"), Json::object({{"hour", 9}, {"minute", 5}}));
}

TEST_F(MedicineCommand, whatIsAbsentIsNullAndAListIsEmpty) {
  add({"Aspirin", "--active", "no"});
  const Json medicine = json({"medicine", "Aspirin"});
  for (const char* absent : {"nextDose", "nextDoseText", "nextDoseRelative"}) {
    EXPECT_TRUE(medicine.at(absent).is_null()) << absent;
  }
  EXPECT_EQ(medicine.at("recentHistory"), Json::array());
  EXPECT_TRUE(medicine.at("record").at("endDate").is_null());
}

TEST_F(MedicineCommand, rawValuesAreTheSameInEveryLanguage) {
  add({"Aspirin", "--daily", "08:00"});
  run({"take", "Aspirin"});
  const Json medicine = json({"--language", "en-XA", "medicine", "Aspirin"});
  EXPECT_NE(medicine.at("title"), "Details");
  EXPECT_EQ(medicine.at("frequency"), "Daily");
  EXPECT_EQ(medicine.at("recentHistory").at(0).at("status"), "Taken");
}

TEST_F(MedicineCommand, readsAsAPage) {
  add({"Aspirin", "--dosage", "2", "--unit", "tablets", "--daily", "08:00,20:00", "--instructions", "With water"});
  run({"take", "aspirin"});
  run({"skip", "aspirin", "2025-01-09T20:00"});
  EXPECT_EQ(printed({"medicine", "aspirin"}), R"(Details

  ● Aspirin, 2 tablets
  Active                 Yes           --active

Schedule
  Frequency              Daily
  Details                Daily at 8:00 AM, 8:00 PM
  Next Dose              8:00 PM, in 9 hr.

Snooze Options
  Allow Snooze           Yes           --allow-snooze
  Duration: 10 min                     --snooze-minutes
  Max Count: 3                         --max-snooze

Instructions
  With water

Duration
  Start Date             Jan 10, 2025  --start
  Repeating              Yes           --repeating

Recent History
  Jan 10, 2025, 8:00 AM  Taken
  Jan 9, 2025, 8:00 PM   Skipped

  Delete Medicine                      pilloractl delete

To change it:  pilloractl edit --help
)");
}

TEST_F(MedicineCommand, longTextsAreWrappedIntoTheTerminalAndNothingIsCut) {
  std::string name = "Acetylsalicylic", times = "00:00";
  for (int i = 0; i < 12; ++i) name += " acid";
  for (int hour = 1; hour < 24; ++hour) times += (hour < 10 ? ",0" : ",") + std::to_string(hour) + ":00";
  add({name, "--daily", times, "--instructions", std::string(30, 'w') + ' ' + name});
  const std::string page = printed({"medicine", "acetyl"});
  std::istringstream lines(page);
  std::string joined;
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(displayWidth(line), 80U) << line;
    joined += line.substr(std::min(line.find_first_not_of(' '), line.size())) + ' ';
  }
  EXPECT_EQ(page.find("…"), std::string::npos);
  EXPECT_NE(joined.find("● " + name + ", 1 pill"), std::string::npos);
  EXPECT_NE(joined.find("10:00 PM, 11:00 PM"), std::string::npos);
  EXPECT_NE(joined.find(std::string(30, 'w') + ' ' + name), std::string::npos);
}

TEST_F(MedicineCommand, onATerminalColoursAreThoseOfTheContent) {
  add({"Aspirin", "--color", "red", "--daily", "08:00"});
  run({"take", "aspirin"});
  terminal.hasColor = true;
  const std::string page = run({"medicine", "aspirin"}).out;
  EXPECT_NE(page.find("\x1b[1;31m● Aspirin, 1 pill\x1b[0m"), std::string::npos) << page;
  EXPECT_NE(page.find("\x1b[32mTaken\x1b[0m"), std::string::npos) << page;
}

TEST_F(MedicineCommand, aReferenceThatFitsNoneOrSeveralIsRefused) {
  EXPECT_TRUE(run({"medicine", "Aspirin"}).failedWith(kRefused));
  add({"Aspirin"});
  add({"Aspirin"});
  EXPECT_TRUE(run({"medicine", "Aspirin"}).failedWith(kRefused));
  EXPECT_TRUE(run({"medicine"}).failedWith(kWrongUsage));
  EXPECT_TRUE(run({"medicine", "Aspirin", "--search", "x"}).failedWith(kWrongUsage));
}

TEST_F(MedicineCommand, lookingChangesNothingAndOpensNoCentre) {
  const std::string id = add({"Aspirin"});
  const Json before = json({"medicine", id});
  openings = 0;
  run({"medicine", id});
  EXPECT_EQ(json({"medicine", id}), before);
  EXPECT_EQ(openings, 0);
}

}  // namespace
}  // namespace pillora

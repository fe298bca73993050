// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"
#include "cli/DisplayText.h"

namespace pillora {
namespace {

// UTC, en_US; Friday, 2025-01-10, 10:30, with a reminder file. A dose at 22:30 has one follow-up.
class ReminderCommands : public Cli {
 protected:
  Called inFile(const Words& words) { return run(file + words); }
  Json jsonInFile(const Words& words) { return json(file + words); }
  Json requests(const Words& ref = {}) { return jsonInFile(Words{"reminders"} + ref).at("requests"); }

  Words file = {"--reminders", folder.path() + "/R"};
};

TEST_F(ReminderCommands, aCentreWithoutPlans) {
  EXPECT_EQ(jsonInFile({"reminders"}),
            Json::object({{"requests", Json::array()}, {"categories", Json::array()}, {"badge", 0}}));
  EXPECT_EQ(inFile({"reminders"}).out, "No reminders are planned.\n");
}

TEST_F(ReminderCommands, addPlansThirtyDosesWithTheirFollowUps) {
  const std::string id = jsonInFile({"add", "Aspirin", "--daily", "22:30", "--unit", "tablet"}).at("id");
  const Json planned = requests();
  ASSERT_EQ(planned.size(), 60u);
  const Json first = planned.at(0);
  EXPECT_EQ(first.at("identifier"), id + "-1736548200.0");
  EXPECT_EQ(first.at("title"), "Time for your medicine");
  EXPECT_EQ(first.at("body"), "Aspirin - 1 tablet");
  EXPECT_EQ(first.at("sound"), "default");
  EXPECT_EQ(first.at("badge"), 1);
  EXPECT_EQ(first.at("categoryIdentifier"), "MEDICINE_REMINDER");
  EXPECT_EQ(first.at("userInfo"), Json::object({{"medicineId", id},
                                                {"medicineName", "Aspirin"},
                                                {"dosage", "1"},
                                                {"unit", "tablet"},
                                                {"allowSnooze", true},
                                                {"snoozeDuration", 10}}));
  const Json trigger = first.at("trigger");
  EXPECT_TRUE(hasMembers(trigger, {"year", "month", "day", "hour", "minute", "calendar", "repeats"}));
  EXPECT_EQ(trigger.at("year"), 2025);
  EXPECT_EQ(trigger.at("month"), 1);
  EXPECT_EQ(trigger.at("day"), 10);
  EXPECT_EQ(trigger.at("hour"), 22);
  EXPECT_EQ(trigger.at("minute"), 30);
  EXPECT_EQ(trigger.at("calendar"), "gregorian");
  EXPECT_EQ(trigger.at("repeats"), false);
  EXPECT_EQ(planned.at(1).at("identifier"), id + "-1736548200.0-followup-1");
  EXPECT_EQ(planned.at(1).at("userInfo").at("isFollowUp"), true);
  EXPECT_EQ(planned.at(1).at("userInfo").at("originalTime"), 1736548200.0);
  EXPECT_EQ(planned.at(59).at("trigger").at("day"), 8) << "of February";
}

TEST_F(ReminderCommands, categoriesAreThoseOfTheMedicinePlannedLast) {
  inFile({"add", "A", "--snooze-minutes", "15"});
  EXPECT_EQ(jsonInFile({"reminders"}).at("categories"),
            Json::array({{{"identifier", "MEDICINE_REMINDER"},
                          {"actions",
                           {{{"identifier", "TAKEN_ACTION"}, {"title", "Mark as Taken"}, {"options", {"foreground"}}},
                            {{"identifier", "SNOOZE_ACTION"}, {"title", "Snooze 15 min"}, {"options", Json::array()}},
                            {{"identifier", "SKIP_ACTION"}, {"title", "Skip"}, {"options", {"destructive"}}}}}}}));
  inFile({"add", "B", "--allow-snooze", "no"});
  const Json categories = jsonInFile({"reminders"}).at("categories");
  ASSERT_EQ(categories.size(), 1u);
  EXPECT_EQ(categories.at(0).at("identifier"), "MEDICINE_REMINDER_NO_SNOOZE");
}

TEST_F(ReminderCommands, requestsAreInTheOrderOfTheirTriggersAndOfOneMedicineWhenItIsNamed) {
  const std::string late = jsonInFile({"add", "Late", "--daily", "23:30"}).at("id");
  const std::string early = jsonInFile({"add", "Early", "--daily", "23:10"}).at("id");
  const Json all = requests();
  ASSERT_EQ(all.size(), 60u);
  for (size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(all[i].at("userInfo").at("medicineId"), i % 2 == 0 ? early : late) << i;
  }
  EXPECT_EQ(requests({"late"}).size(), 30u);
  EXPECT_EQ(requests({late}).at(0).at("body"), "Late - 1 pill");
  EXPECT_TRUE(inFile({"reminders", "Nobody"}).failedWith(kRefused));
}

TEST_F(ReminderCommands, triggersAreInTheCalendarOfTheLocale) {
  inFile({"--locale", "th_TH@calendar=buddhist", "add", "A", "--daily", "22:30"});
  EXPECT_EQ(requests().at(0).at("trigger").at("year"), 2568);
  EXPECT_EQ(requests().at(0).at("trigger").at("calendar"), "buddhist");
}

TEST_F(ReminderCommands, everyCommandLetsPassWhatFellDue) {
  inFile({"add", "Aspirin", "--daily", "22:30"});
  clock.set(at("2025-01-10T22:29:59Z"));
  EXPECT_EQ(requests().size(), 60u);
  EXPECT_EQ(jsonInFile({"reminders"}).at("badge"), 0);
  clock.set(at("2025-01-12T22:30:00Z"));
  inFile({"today"});
  clock.set(at("2025-01-10T10:30:00Z"));
  EXPECT_EQ(requests().size(), 55u) << "two days and the dose of the third are gone";
  EXPECT_EQ(jsonInFile({"reminders"}).at("badge"), 1);
  inFile({"launch"});
  EXPECT_EQ(jsonInFile({"reminders"}).at("badge"), 0);
}

TEST_F(ReminderCommands, takePlansTheNextReminderOfARepeatingMedicine) {
  inFile({"add", "Aspirin", "--daily", "09:00,22:30"});
  inFile({"add", "Once", "--daily", "22:40", "--repeating", "no"});
  inFile({"edit", "Aspirin", "--active", "no"});
  inFile({"edit", "Aspirin", "--active", "yes"});
  const Json planned = requests();
  run({"--reminders", folder.path() + "/Empty", "take", "Aspirin"});
  EXPECT_EQ(json({"--reminders", folder.path() + "/Empty", "reminders"}).at("requests").size(), 2u);
  inFile({"take", "Aspirin", "2025-01-09T09:00:00Z"});
  inFile({"take", "Once"});
  inFile({"skip", "Aspirin", "2025-01-08T09:00:00Z"});
  EXPECT_EQ(requests(), planned) << "nothing is extended, nothing cancelled";
}

TEST_F(ReminderCommands, deleteCancelsWhatIsPendingOfThisMedicineAlone) {
  inFile({"add", "Aspirin", "--daily", "22:30"});
  inFile({"add", "Other", "--daily", "23:30"});
  inFile({"delete", "Aspirin"});
  EXPECT_EQ(requests().size(), 30u);
}

TEST_F(ReminderCommands, snoozePlansAnotherReminderAndChangesNoRecord) {
  const std::string id = jsonInFile({"add", "Aspirin", "--daily", "22:30", "--snooze-minutes", "15"}).at("id");
  const std::string reminder = id + "-1736505900.0";
  EXPECT_EQ(jsonInFile({"snooze", "aspirin"}), Json::object({{"reminder", reminder}}));
  const Json planned = requests();
  EXPECT_EQ(planned.size(), 60u + 1u + 13u) << "at 10:45, and hourly from 11:45 to 23:45";
  EXPECT_EQ(planned.at(0).at("identifier"), reminder);
  EXPECT_TRUE(logs().empty());
  EXPECT_EQ(inFile({"snooze", "aspirin"}).out, "Snoozed for 15 minutes: Aspirin\n");
  EXPECT_EQ(requests(), planned);
}

TEST_F(ReminderCommands, whatAllowsNoSnoozeIsRefused) {
  inFile({"add", "Aspirin", "--allow-snooze", "no"});
  const Json planned = requests();
  EXPECT_TRUE(inFile({"snooze", "Aspirin"}).failedWith(kRefused));
  EXPECT_TRUE(inFile({"snooze", "Nobody"}).failedWith(kRefused));
  EXPECT_EQ(requests(), planned);
}

TEST_F(ReminderCommands, withAStoreAloneRemindersAreDropped) {
  const Words alone = {"--store", store};
  run(alone + Words{"add", "Aspirin", "--daily", "22:30"});
  run(alone + Words{"launch"});
  EXPECT_TRUE(json(alone + Words{"snooze", "Aspirin"}).at("reminder").is_string());
  EXPECT_EQ(json(alone + Words{"reminders"}),
            Json::object({{"requests", Json::array()}, {"categories", Json::array()}, {"badge", 0}}));
  EXPECT_EQ(openings, 0);
}

TEST_F(ReminderCommands, whatPlansNothingOpensNoCentre) {
  add({"Aspirin", "--daily", "08:00"});
  const int before = openings;
  for (const Words& words : {Words{"today"}, {"upcoming"}, {"medicines"}, {"logs"}, {"skip", "Aspirin"}}) {
    ASSERT_EQ(run(words).status, kDone) << words[0];
  }
  ASSERT_EQ(run({"undo", logs().at(0).at("id")}).status, kDone);
  EXPECT_EQ(openings, before);
  run({"take", "Aspirin"});
  EXPECT_EQ(openings, before + 1);
}

TEST_F(ReminderCommands, refusedRequestsArePrintedAndTheMedicineIsAdded) {
  center.refusal = [](const auto&) { return std::optional(Error{"full"}); };
  const Called called = run({"add", "Aspirin", "--daily", "23:30"});
  EXPECT_EQ(called.status, kDone);
  EXPECT_EQ(called.lines, Words(30, "Error scheduling notification: full"));
  EXPECT_EQ(names(), (Words{"Aspirin"}));
}

TEST_F(ReminderCommands, asTextUnderTheDaysWithin80Columns) {
  inFile({"add", "Aspirin of a brand whose name is far too long for the line of a terminal", "--daily", "22:30"});
  const Called called = inFile({"reminders"});
  std::istringstream lines(called.out);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "Jan 10, 2025");
  std::getline(lines, line);
  EXPECT_TRUE(plainBlanks(line).starts_with("  10:30 PM  Time for your medicine  ")) << line;
  EXPECT_NE(line.find("  Aspirin of a brand"), std::string::npos) << line;
  EXPECT_LE(displayWidth(line), 80u) << line;
  while (std::getline(lines, line)) EXPECT_LE(displayWidth(line), 80u) << line;
}

TEST_F(ReminderCommands, aDayOfAPerson) {
  const auto as = [this](const char* now) { clock.set(at(now)); };
  as("2025-01-09T20:00:00Z");
  const std::string id =
      jsonInFile({"add", "Aspirin", "--daily", "08:00,20:30", "--start", "2025-01-09T00:00:00Z"}).at("id");
  as("2025-01-10T07:55:00Z");
  EXPECT_EQ(jsonInFile({"launch"}).at("missed"), 2) << "yesterday's";
  as("2025-01-10T08:00:30Z");
  EXPECT_EQ(requests().at(0).at("identifier"), id + "-1736496000.0-followup-1") << "08:00 has fired";
  EXPECT_TRUE(jsonInFile({"snooze", "asp"}).at("reminder").is_string());
  as("2025-01-10T08:12:00Z");
  EXPECT_TRUE(jsonInFile({"take", "asp"}).at("log").is_string());
  EXPECT_EQ(jsonInFile({"today"}).at("badges").at(0).at("value"), "1");
  as("2025-01-11T07:00:00Z");
  EXPECT_EQ(jsonInFile({"launch"}).at("missed"), 1) << "the evening's dose";
  EXPECT_EQ(requests().at(0).at("trigger").at("day"), 11);
}

}  // namespace
}  // namespace pillora

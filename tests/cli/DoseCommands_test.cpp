// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"

namespace pillora {
namespace {

class DoseCommands : public Cli {};

TEST_F(DoseCommands, takeWithoutAnInstantTakesTodaysOpenDose) {
  const std::string id = add({"Aspirin", "--daily", "08:00,20:00"});
  const Json taken = json({"take", "aspirin"});
  ASSERT_EQ(membersOf(taken), (Words{"log"}));
  ASSERT_EQ(logs().size(), 1u);
  const Json log = logs().at(0);
  EXPECT_EQ(membersOf(log),
            (Words{"id", "medicineId", "scheduledTime", "actionTime", "statusRaw", "snoozeCount", "notes"}));
  EXPECT_EQ(log.at("id"), taken.at("log"));
  EXPECT_EQ(log.at("medicineId"), id);
  EXPECT_EQ(log.at("scheduledTime"), "2025-01-10T08:00:00Z");
  EXPECT_EQ(log.at("actionTime"), "2025-01-10T10:30:00Z");
  EXPECT_EQ(log.at("statusRaw"), "Taken");
  EXPECT_EQ(log.at("snoozeCount"), 0);
  EXPECT_EQ(log.at("notes"), "");
}

TEST_F(DoseCommands, withoutAnOpenDoseTodayNothingIsTaken) {
  add({"Aspirin", "--daily", "08:00,20:00"});
  add({"Inactive", "--active", "no"});
  add({"Sundays", "--weekly", "1@09:00"});
  add({"Never", "--custom", "0:0"});
  ASSERT_EQ(run({"take", "Aspirin"}).status, kDone);
  for (const std::string name : {"Aspirin", "Inactive", "Sundays", "Never"}) {
    EXPECT_TRUE(run({"take", name}).failedWith(kRefused)) << name;
    EXPECT_TRUE(run({"skip", name}).failedWith(kRefused)) << name;
  }
  EXPECT_EQ(logs().size(), 1u);
}

TEST_F(DoseCommands, anyInstantCanBeTakenOrSkipped) {
  add({"Aspirin", "--active", "no"});
  EXPECT_TRUE(json({"take", "Aspirin", "2031-05-05T01:02:03.000004Z"}).at("log").is_string());
  EXPECT_TRUE(json({"skip", "Aspirin", "1969-12-31T23:59:59+02:00"}).at("log").is_string());
  ASSERT_EQ(logs().size(), 2u);
  EXPECT_EQ(logs().at(0).at("scheduledTime"), "1969-12-31T21:59:59Z");
  EXPECT_EQ(logs().at(0).at("statusRaw"), "Skipped");
  EXPECT_EQ(logs().at(1).at("scheduledTime"), "2031-05-05T01:02:03.000004Z");
}

TEST_F(DoseCommands, aDoseIsTakenOrSkippedOnce) {
  add({"Aspirin", "--daily", "08:00"});
  ASSERT_TRUE(json({"take", "Aspirin"}).at("log").is_string());
  for (const std::string command : {"take", "skip"}) {
    EXPECT_TRUE(json({command, "Aspirin", "2025-01-10T08:00:59Z"}).at("log").is_null()) << "the same minute";
  }
  EXPECT_TRUE(json({"skip", "Aspirin", "2025-01-10T08:01:00Z"}).at("log").is_string()) << "the next minute";
  EXPECT_EQ(logs().size(), 2u);
}

TEST_F(DoseCommands, localInstantsAreReadInTheZoneInUse) {
  add({"Aspirin"});
  run({"--time-zone", "Europe/Berlin", "take", "Aspirin", "2025-07-01T08:00"});
  EXPECT_EQ(logs().at(0).at("scheduledTime"), "2025-07-01T06:00:00Z");
}

TEST_F(DoseCommands, undoTakesARecordBack) {
  add({"Aspirin", "--daily", "08:00"});
  const std::string log = json({"take", "Aspirin"}).at("log");
  std::string lower = log;
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  EXPECT_EQ(json({"undo", lower}), Json::object({{"id", log}}));
  EXPECT_TRUE(logs().empty());
  EXPECT_TRUE(run({"undo", log}).failedWith(kRefused));
  EXPECT_TRUE(json({"take", "Aspirin"}).at("log").is_string()) << "the dose is open again";
}

TEST_F(DoseCommands, logsComeEarliestFirstAndOfOneMedicineWhenItIsNamed) {
  const std::string aspirin = add({"Aspirin"});
  const std::string other = add({"Other"});
  run({"take", "Aspirin", "2025-01-09T08:00:00Z"});
  run({"take", "Other", "2025-01-07T08:00:00Z"});
  run({"skip", "Aspirin", "2025-01-08T08:00:00Z"});
  run({"take", "Other", "2025-01-09T08:00:00Z"});
  Words times, medicines;
  for (const Json& log : logs()) {
    times.push_back(log.at("scheduledTime"));
    medicines.push_back(log.at("medicineId"));
  }
  EXPECT_EQ(times,
            (Words{"2025-01-07T08:00:00Z", "2025-01-08T08:00:00Z", "2025-01-09T08:00:00Z", "2025-01-09T08:00:00Z"}));
  EXPECT_EQ(medicines, (Words{other, aspirin, aspirin, other})) << "ties in the order in which they were made";
  const Json ofOther = json({"logs", "other"}).at("logs");
  ASSERT_EQ(ofOther.size(), 2u);
  for (const Json& log : ofOther) EXPECT_EQ(log.at("medicineId"), other);
}

TEST_F(DoseCommands, anEmptyStoreHasNoLogs) { EXPECT_EQ(json({"logs"}), Json::object({{"logs", Json::array()}})); }

TEST_F(DoseCommands, deleteTakesTheMedicineAndItsLogsAlone) {
  const std::string aspirin = add({"Aspirin"});
  add({"Other"});
  run({"take", "Aspirin", "2025-01-09T08:00:00Z"});
  run({"take", "Other", "2025-01-09T08:00:00Z"});
  EXPECT_EQ(json({"delete", "Aspirin"}), Json::object({{"id", aspirin}}));
  EXPECT_EQ(names(), (Words{"Other"}));
  EXPECT_EQ(logs().size(), 1u);
  EXPECT_TRUE(run({"delete", aspirin}).failedWith(kRefused));
}

TEST_F(DoseCommands, aRefusedCommandChangesNothing) {
  add({"Aspirin", "--daily", "08:00"});
  const Json medicines = json({"medicines"});
  for (const Words& words : {Words{"take", "x"},
                             {"skip", "x"},
                             {"delete", "x"},
                             {"add", " "},
                             {"undo", "6F9619FF-8B86-D011-B42D-00CF4FC964FF"},
                             {"add", "B", "--unit", "barrel"}}) {
    EXPECT_TRUE(run(words).failedWith(kRefused)) << ::testing::PrintToString(words);
  }
  EXPECT_EQ(json({"medicines"}), medicines);
  EXPECT_TRUE(logs().empty());
}

}  // namespace
}  // namespace pillora

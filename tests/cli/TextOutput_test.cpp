// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"
#include "cli/DisplayText.h"

namespace pillora {
namespace {

class TextOutput : public Cli {
 protected:
  /// What a command prints, with plain blanks, identifiers as "<id>".
  std::string printed(const Words& words) {
    std::string text = run(words).out;
    for (size_t at = 0; (at = text.find("\u202F")) != std::string::npos;) text.replace(at, 3, " ");
    for (const Json& log : logs()) {
      const std::string id = log.at("id");
      for (size_t at = 0; (at = text.find(id)) != std::string::npos;) text.replace(at, id.size(), "<id>");
    }
    return text;
  }
  void addThree() {
    add({"Aspirin", "--dosage", "2", "--unit", "tablets", "--daily", "08:00,20:00"});
    add({"Vitamin D", "--unit", "drops", "--daily", "21:00"});
    add({"Metformin", "--active", "no", "--weekly", "2@09:00"});
  }
};

TEST_F(TextOutput, todayOfAnEmptyStoreTellsHowToBegin) {
  EXPECT_EQ(printed({"today"}), R"(Today

  ○ No Medicines Added
    Add your first medicine to start tracking your reminders.

  Add one with:
    pilloractl add Aspirin --dosage 1 --unit tablet --daily 08:00,20:00
    pilloractl add --help
)");
}

TEST_F(TextOutput, today) {
  addThree();
  run({"take", "Aspirin"});
  EXPECT_EQ(printed({"today"}), R"(Good Morning
Friday, January 10, 2025

██████████░░░░░░░░░░ 50%  ✓ 1 Taken  ○ 1 Remaining  » 0 Skipped

Today's Medicines
  ●  Vitamin D  1 drops  9:00 PM  In 10h 30m

Activity
  8:00 AM  Aspirin  Taken  2h 30m late
    undo with  pilloractl undo <id>
)");
}

TEST_F(TextOutput, todayWhenAllIsDone) {
  add({"Aspirin", "--daily", "10:30"});
  run({"skip", "Aspirin"});
  EXPECT_EQ(printed({"today"}), R"(Good Morning
Friday, January 10, 2025

░░░░░░░░░░░░░░░░░░░░ 0%  ✓ 0 Taken  ○ 0 Remaining  » 1 Skipped

  ✓ All done for today!
    You've completed all your medicines.

Activity
  10:30 AM  Aspirin  Skipped
    undo with  pilloractl undo <id>
)");
}

TEST_F(TextOutput, upcoming) {
  add({"Aspirin", "--unit", "tablet", "--weekly", "6,7@12:00"});
  EXPECT_EQ(printed({"upcoming"}), R"(Upcoming

Today
  ●  Aspirin  1 tablet  12:00 PM  in 1h 30m

Tomorrow
  ●  Aspirin  1 tablet  12:00 PM  in 1d
)");
}

TEST_F(TextOutput, medicines) {
  addThree();
  EXPECT_EQ(printed({"medicines"}), R"(Medicines

Active
  ●  Aspirin    2 tablets  Daily  in 9 hr.
  ●  Vitamin D  1 drops    Daily  in 10 hr.

Inactive
  ●  Metformin  1 pill  Weekly
)");
}

TEST_F(TextOutput, logsByDay) {
  addThree();
  run({"take", "Aspirin", "2025-01-09T20:00:00Z"});
  run({"skip", "Vitamin D", "2025-01-09T21:00:00Z"});
  run({"take", "Aspirin"});
  EXPECT_EQ(printed({"logs"}), R"(Jan 9, 2025
  8:00 PM  Aspirin    Taken    <id>
  9:00 PM  Vitamin D  Skipped  <id>

Jan 10, 2025
  8:00 AM  Aspirin  Taken  <id>
)");
  EXPECT_EQ(printed({"logs", "Metformin"}), "No doses have been recorded.\n");
}

TEST_F(TextOutput, changesAreConfirmedInASentence) {
  EXPECT_EQ(printed({"add", "Aspirin", "--daily", "08:00"}), "Added: Aspirin\n");
  EXPECT_EQ(printed({"take", "Aspirin"}), "Taken: Aspirin, Jan 10, 2025, 8:00 AM\n");
  EXPECT_EQ(printed({"take", "Aspirin", "2025-01-10T08:00Z"}), "Done already: Aspirin, Jan 10, 2025, 8:00 AM\n");
  EXPECT_EQ(printed({"skip", "Aspirin", "2025-01-11T08:00Z"}), "Skipped: Aspirin, Jan 11, 2025, 8:00 AM\n");
  EXPECT_EQ(printed({"undo", logs().at(0).at("id")}), "Taken back: Aspirin\n");
  EXPECT_EQ(printed({"delete", "Aspirin"}), "Deleted: Aspirin\n");
}

TEST_F(TextOutput, coloursFollowTheContentOnATerminal) {
  terminal.hasColor = true;
  add({"Aspirin", "--daily", "08:00", "--color", "green"});
  const std::string today = printed({"today"});
  EXPECT_NE(today.find("\x1b[32m●\x1b[0m"), std::string::npos) << "the medicine's colour";
  EXPECT_NE(today.find("\x1b[31mOverdue\x1b[0m"), std::string::npos);
}

TEST_F(TextOutput, noLineIsWiderThanTheTerminalAndNoNameReachesIt) {
  const std::string names[] = {
      std::string(10'000, 'x'), "日本語" + std::string(200, ' ') + "日本", "\x1b[2J\x1b]0;owned\a",
      "one\ntwo\rthree",        "\u202Eright to left\u202C אספירין",       "Z\u0323\u0301\u0323\u0301algo"};
  for (const std::string& name : names) add({name, "--dosage", name, "--instructions", name, "--daily", "08:00,21:00"});
  run({"take", "one"});
  for (const size_t columns : {40u, 80u, 120u}) {
    terminal.columns = columns;
    for (const std::string language : {"en", "en-XA"}) {
      for (const std::string command : {"today", "upcoming", "medicines"}) {
        const Called called = run({"--language", language, command});
        EXPECT_EQ(called.out.find_first_of("\x1b\a\r"), std::string::npos) << command;
        EXPECT_EQ(called.out.find("\u202E"), std::string::npos) << command;
        std::istringstream lines(called.out);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(displayWidth(line), columns) << line;
      }
    }
  }
}

TEST_F(TextOutput, anIdentifierIsNeverCut) {
  add({std::string(200, 'x'), "--daily", "08:00"});
  run({"take", "xx"});
  EXPECT_NE(printed({"logs"}).find("…  Taken  <id>\n"), std::string::npos);
}

}  // namespace
}  // namespace pillora

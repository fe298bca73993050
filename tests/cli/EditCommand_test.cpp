// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"
#include "store/ModelContainer.h"

namespace pillora {
namespace {

// UTC, en_US; Friday, 2025-01-10, 10:30. A dose at 22:30 has one follow-up.
class EditCommand : public Cli {
 protected:
  void SetUp() override {
    id = add({"Aspirin", "--daily", "22:30"});
    clock.set(at("2025-01-10T11:00:00Z"));
  }
  /// The record as stored.
  Json record() {
    QueuedMainExecutor executor;
    const auto container = valueOrAbort(ModelContainer::open({store}, executor));
    Json fields = Json::object();
    const auto medicine = container->mainContext().find<Medicine>(*UUID::parse(id));
    forEachField<Medicine>(
        [&](std::string_view name, auto member) { fields[std::string(name)] = toJson(((*medicine).*member)()); });
    return fields;
  }

  std::string id;
};

TEST_F(EditCommand, everyGivenFieldIsWrittenAndTheOthersStay) {
  Json expected = record();
  const std::vector<std::tuple<std::string, std::string, Json>> fields = {
      {"--name", " New\tname ", " New\tname "},
      {"--dosage", "", ""},
      {"--unit", "ml", "ml"},
      {"--instructions", "with water", "with water"},
      {"--color", "mint", "mint"},
      {"--icon", "lungs", "lungs"},
      {"--allow-snooze", "no", false},
      {"--snooze-minutes", "60", 60},
      {"--max-snooze", "1", 1},
      {"--repeating", "no", false},
      {"--start", "2025-02-01T00:00:00.25Z", "2025-02-01T00:00:00.25Z"},
      {"--active", "no", false}};
  const Words members = {"name",           "dosage",      "unit",        "instructions",
                         "color",          "icon",        "allowSnooze", "snoozeDurationMinutes",
                         "maxSnoozeCount", "isRepeating", "startDate",   "isActive"};
  expected["updatedAt"] = "2025-01-10T11:00:00Z";
  for (size_t i = 0; i < fields.size(); ++i) {
    const auto& [option, word, value] = fields[i];
    expected[members[i]] = value;
    EXPECT_EQ(json({"edit", id, option, word}), Json::object({{"id", id}})) << option;
    EXPECT_EQ(record(), expected) << option;
  }
}

TEST_F(EditCommand, aRefusedValueLeavesEveryFieldUnwritten) {
  const Json before = record();
  const auto calls = center.calls;
  for (const Words& words : std::vector<Words>{{"--unit", "barrel"},
                                               {"--color", "grey"},
                                               {"--icon", "Pills"},
                                               {"--snooze-minutes", "0"},
                                               {"--snooze-minutes", "61"},
                                               {"--max-snooze", "11"}}) {
    EXPECT_TRUE(run(Words{"edit", id, "--name", "New", "--dosage", "9"} + words).failedWith(kRefused));
    EXPECT_EQ(record(), before) << words[1];
  }
  EXPECT_TRUE(run({"edit", "Nobody", "--name", "New"}).failedWith(kRefused));
  EXPECT_EQ(record(), before);
  EXPECT_EQ(center.calls, calls);
}

TEST_F(EditCommand, withoutAFieldItIsSaveAlone) {
  Json expected = record();
  expected["updatedAt"] = "2025-01-10T11:00:00Z";
  center.pending.clear();
  EXPECT_EQ(run({"edit", "aspirin"}).out, "Saved: Aspirin\n");
  EXPECT_EQ(record(), expected);
  EXPECT_EQ(center.pending.size(), 60u) << "30 doses are planned anew";
}

TEST_F(EditCommand, remindersFollowTheFields) {
  ASSERT_EQ(center.pending.size(), 60u);
  run({"edit", id, "--name", "Ibuprofen"});
  ASSERT_EQ(center.pending.size(), 60u);
  EXPECT_EQ(center.pending[0].content.body, "Ibuprofen - 1 pill");
  run({"edit", id, "--active", "no"});
  EXPECT_TRUE(center.pending.empty());
  run({"edit", id, "--active", "yes", "--repeating", "no"});
  EXPECT_TRUE(center.pending.empty());
  run({"edit", id, "--repeating", "yes"});
  EXPECT_EQ(center.pending.size(), 60u);
}

TEST_F(EditCommand, remindersOfOtherMedicinesStay) {
  add({"Other", "--daily", "22:30"});
  run({"edit", id, "--active", "no"});
  EXPECT_EQ(center.pending.size(), 60u);
}

TEST_F(EditCommand, withoutItsCentreNothingIsWritten) {
  const Json before = record();
  refusal = Error{"in use"};
  for (const Words& words : {Words{"edit", id, "--name", "New"}, {"add", "B"}, {"delete", id}, {"take", id}}) {
    const Called called = run(words);
    EXPECT_TRUE(called.failedWith(kRefused)) << words[0];
    EXPECT_EQ(called.lines, (Words{"pilloractl: the reminders cannot be opened: in use"})) << words[0];
  }
  EXPECT_EQ(record(), before);
  EXPECT_EQ(names(), (Words{"Aspirin"}));
  EXPECT_TRUE(logs().empty());
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"
#include "doubles/Intervals.h"
#include "screens/MedicineForm.h"
#include "store/ModelContainer.h"

namespace pillora {
namespace {

class AddCommand : public Cli {
 protected:
  /// The medicines as stored.
  std::vector<std::shared_ptr<Medicine>> stored() {
    if (!container_) container_ = *ModelContainer::open({store}, executor_);
    container_->mainContext().refresh();
    return *container_->mainContext().fetch<Medicine>();
  }
  std::shared_ptr<Medicine> last() { return stored().back(); }
  /// The interval that these schedule words produce.
  ReminderInterval schedule(const Words& words) {
    const Called called = run(Words{"add", "A"} + words);
    EXPECT_EQ(called.status, kDone) << ::testing::PrintToString(called);
    return last()->interval();
  }

 private:
  QueuedMainExecutor executor_;
  std::unique_ptr<ModelContainer> container_;
};

TEST_F(AddCommand, aBareNameGetsWhatTheFormOpensWith) {
  const std::string id = add({"Aspirin"});
  const auto medicine = last();
  EXPECT_EQ(medicine->id().text(), id);
  EXPECT_EQ(medicine->name(), "Aspirin");
  EXPECT_EQ(medicine->dosage(), "1");
  EXPECT_EQ(medicine->unit(), "pill");
  EXPECT_EQ(medicine->instructions(), "");
  EXPECT_EQ(medicine->color(), "blue");
  EXPECT_EQ(medicine->icon(), "pills");
  EXPECT_EQ(medicine->interval(), fallbackInterval());
  EXPECT_TRUE(medicine->isActive());
  EXPECT_TRUE(medicine->allowSnooze());
  EXPECT_EQ(medicine->snoozeDurationMinutes(), 10);
  EXPECT_EQ(medicine->maxSnoozeCount(), 3);
  EXPECT_TRUE(medicine->isRepeating());
  EXPECT_EQ(medicine->startDate(), clock.now());
  EXPECT_EQ(medicine->endDate(), std::nullopt);
  EXPECT_EQ(medicine->createdAt(), clock.now());
  EXPECT_EQ(medicine->updatedAt(), clock.now());
}

TEST_F(AddCommand, everyFieldIsStoredAsGiven) {
  add({"Aspirin",
       "--dosage",
       "2 1/2",
       "--unit",
       "tablets",
       "--instructions",
       "with\nwater",
       "--color",
       "mint",
       "--icon",
       "lungs",
       "--active",
       "no",
       "--allow-snooze",
       "no",
       "--snooze-minutes",
       "60",
       "--max-snooze",
       "1",
       "--repeating",
       "no",
       "--start",
       "2025-02-01T00:00:00.25Z",
       "--end",
       "2025-01-01T08:00:00+01:00"});
  const auto medicine = last();
  EXPECT_EQ(medicine->dosage(), "2 1/2");
  EXPECT_EQ(medicine->unit(), "tablets");
  EXPECT_EQ(medicine->instructions(), "with\nwater");
  EXPECT_EQ(medicine->color(), "mint");
  EXPECT_EQ(medicine->icon(), "lungs");
  EXPECT_FALSE(medicine->isActive());
  EXPECT_FALSE(medicine->allowSnooze());
  EXPECT_EQ(medicine->snoozeDurationMinutes(), 60);
  EXPECT_EQ(medicine->maxSnoozeCount(), 1);
  EXPECT_FALSE(medicine->isRepeating());
  EXPECT_EQ(iso8601(medicine->startDate()), "2025-02-01T00:00:00.25Z");
  EXPECT_EQ(medicine->endDate(), at("2025-01-01T07:00:00Z"));
}

TEST_F(AddCommand, whatTheFormOffersIsAccepted) {
  for (const std::string_view unit : kUnitWords)
    EXPECT_EQ(run({"--store", store, "add", "A", "--unit", std::string(unit)}).status, kDone);
  for (const std::string_view name : kColorNames)
    EXPECT_EQ(run({"--store", store, "add", "A", "--color", std::string(name)}).status, kDone);
  for (const std::string_view icon : kIconNames)
    EXPECT_EQ(run({"--store", store, "add", "A", "--icon", std::string(icon)}).status, kDone);
  for (const Words& words : std::vector<Words>{{"--snooze-minutes", "1"},
                                               {"--snooze-minutes", "60"},
                                               {"--max-snooze", "1"},
                                               {"--max-snooze", "10"},
                                               {"--every-hours", "1"},
                                               {"--every-hours", "24"},
                                               {"--custom", "0:0"},
                                               {"--custom", "168:55"},
                                               {"--daily", "00:00,23:59"},
                                               {"--weekly", "1,7@00:00"},
                                               {"--monthly", "1,31@23:59"},
                                               {"--dosage", ""},
                                               {"--dosage="}}) {
    EXPECT_EQ(run(Words{"--store", store, "add", "A"} + words).status, kDone) << ::testing::PrintToString(words);
  }
}

TEST_F(AddCommand, whatTheFormCouldNotProduceIsRefused) {
  const std::vector<Words> refused = {{"--unit", "barrel"},
                                      {"--unit", "Pill"},
                                      {"--unit", ""},
                                      {"--color", "Red"},
                                      {"--color", "grey"},
                                      {"--color", ""},
                                      {"--icon", "pill"},
                                      {"--icon", "Pills"},
                                      {"--icon", ""},
                                      {"--snooze-minutes", "0"},
                                      {"--snooze-minutes", "61"},
                                      {"--snooze-minutes", "-5"},
                                      {"--max-snooze", "0"},
                                      {"--max-snooze", "11"},
                                      {"--max-snooze", "99999999999999999999"},
                                      {"--every-hours", "0"},
                                      {"--every-hours", "25"},
                                      {"--every-hours", "-1"},
                                      {"--daily", "24:00"},
                                      {"--daily", "08:60"},
                                      {"--daily", "08:00,24:00"},
                                      {"--weekly", "0@09:00"},
                                      {"--weekly", "8@09:00"},
                                      {"--weekly", "2@24:00"},
                                      {"--weekly", "-1@09:00"},
                                      {"--monthly", "0@09:00"},
                                      {"--monthly", "32@09:00"},
                                      {"--monthly", "1@09:60"},
                                      {"--custom", "169:0"},
                                      {"--custom", "1:60"},
                                      {"--custom", "1:31"},
                                      {"--custom", "1:59"},
                                      {"--custom", "-1:0"},
                                      {"--custom", "0:-5"},
                                      {"--custom", "9223372036854775807:0"}};
  for (const Words& words : refused) {
    EXPECT_TRUE(run(Words{"add", "A"} + words).failedWith(kRefused)) << ::testing::PrintToString(words);
  }
  EXPECT_TRUE(names().empty());
}

TEST_F(AddCommand, valuesOfAnotherShapeAreWrongUsage) {
  const std::vector<Words> malformed = {{"--active", "maybe"},
                                        {"--active", "Yes"},
                                        {"--allow-snooze", ""},
                                        {"--repeating", "true"},
                                        {"--snooze-minutes", ""},
                                        {"--snooze-minutes", "x"},
                                        {"--max-snooze", "1.5"},
                                        {"--every-hours", "four"},
                                        {"--daily", ""},
                                        {"--daily", "8"},
                                        {"--daily", "08:00,"},
                                        {"--weekly", "2"},
                                        {"--weekly", "Mon@9:00"},
                                        {"--monthly", "1@"},
                                        {"--custom", "8"},
                                        {"--custom", "8:"},
                                        {"--custom", "8:0:0"},
                                        {"--interval", ""},
                                        {"--interval", "{"},
                                        {"--interval", "[]"},
                                        {"--interval", "{}"},
                                        {"--interval", "null"},
                                        {"--interval", R"({"type":"Daily"})"},
                                        {"--daily", "08:00", "--custom", "1:0"},
                                        {"--every-hours", "4", "--weekly", "2@09:00"}};
  for (const Words& words : malformed) {
    EXPECT_TRUE(run(Words{"add", "A"} + words).failedWith(kWrongUsage)) << ::testing::PrintToString(words);
  }
  EXPECT_TRUE(names().empty());
}

TEST_F(AddCommand, scheduleWordsBuildTheIntervalAndLeaveTheOtherKindsAsTheFormHasThem) {
  ReminderInterval expected = hourly(6);
  EXPECT_EQ(schedule({"--every-hours", "6"}), expected);
  expected = daily({{20, 0}, {8, 0}, {8, 0}});
  EXPECT_EQ(schedule({"--daily", "20:00,08:00,8:00"}), expected);
  EXPECT_EQ(schedule({"--weekly", "6,2,4@21:30"}), weekly({2, 4, 6}, {21, 30}));
  EXPECT_EQ(schedule({"--weekly", "@21:30"}), weekly({}, {21, 30}));
  EXPECT_EQ(schedule({"--monthly", "15,1@07:05"}), monthly({1, 15}, {7, 5}));
  EXPECT_EQ(schedule({"--custom", "1:30"}), custom(90));
  EXPECT_EQ(schedule({"--custom", "0:0"}), custom(0));
}

TEST_F(AddCommand, anyReadableIntervalIsTakenWhateverItsRanges) {
  ReminderInterval interval = custom(-7);
  interval.weeklyDays = {-1, 99};
  interval.hourlyInterval = 1'000'000;
  EXPECT_EQ(schedule({"--interval", encodeInterval(interval)}), interval);
}

TEST_F(AddCommand, namesAreTrimmedOfBlanksAndTabsButNotOfLineBreaks) {
  const std::vector<std::pair<std::string, std::string>> trimmed = {{"  Aspirin\t", "Aspirin"},
                                                                    {"\u00A0\u2003Aspirin\u3000\u202F", "Aspirin"},
                                                                    {"Vitamin  D", "Vitamin  D"},
                                                                    {"\nAspirin\n", "\nAspirin\n"},
                                                                    {" \n ", "\n"},
                                                                    {"\u2028", "\u2028"}};
  for (const auto& [typed, name] : trimmed) {
    add({typed});
    EXPECT_EQ(last()->name(), name);
  }
  for (const std::string typed : {"", " ", "\t \u00A0", "\u2007\u205F\u1680"}) {
    EXPECT_TRUE(run({"add", typed}).failedWith(kRefused)) << typed;
  }
}

TEST_F(AddCommand, namesAreDataWhateverTheyHold) {
  const Words odd = {"[a,b]", "{}",  "%%", "{name}", "'quoted'", "\"double\"", "$(reboot)", "a,b", "a=b",
                     "today", "add", "#x", "\\n",    "~",        "*",          "%s%n",      "-",   "@file"};
  for (const std::string& name : odd) {
    add({name});
    EXPECT_EQ(last()->name(), name);
  }
  add({"--", "--json"});
  EXPECT_EQ(last()->name(), "--json");
  const std::string large(10'000, 'x');
  add({large});
  EXPECT_EQ(last()->name(), large);
}

TEST_F(AddCommand, instantsWithoutAnOffsetAreLocalInTheZoneInUse) {
  run({"--time-zone", "America/New_York", "add", "A", "--start", "2025-03-09T02:30"});
  EXPECT_EQ(last()->startDate(), at("2025-03-09T07:30:00Z")) << "02:30 does not exist and moves forward";
  run({"--time-zone", "America/New_York", "add", "A", "--start", "2025-11-02T01:30:00.5"});
  EXPECT_EQ(iso8601(last()->startDate()), "2025-11-02T05:30:00.5Z") << "the first 01:30";
  run({"--time-zone", "Asia/Kolkata", "--locale", "th_TH@calendar=buddhist", "add", "A", "--start",
       "2025-01-10T05:30"});
  EXPECT_EQ(last()->startDate(), at("2025-01-10T00:00:00Z")) << "written dates are Gregorian in every locale";
  run({"--time-zone", "Asia/Tehran", "--locale", "fa_IR", "add", "A", "--start", "2025-01-10T03:30"});
  EXPECT_EQ(last()->startDate(), at("2025-01-10T00:00:00Z"));
}

TEST_F(AddCommand, theInitialTimesAreNineOClockInEveryCalendar) {
  run({"--locale", "he_IL@calendar=hebrew", "--time-zone", "Asia/Jerusalem", "add", "A"});
  EXPECT_EQ(last()->interval().dailyTimes, (std::vector<TimeOfDay>{{9, 0}}));
}

}  // namespace
}  // namespace pillora

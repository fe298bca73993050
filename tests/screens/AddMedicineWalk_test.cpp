// SPDX-License-Identifier: MIT
// Somebody presses whatever the form shows, for a long time; what holds for the form holds after every press.
#include <gtest/gtest.h>

#include <random>

#include "doubles/Instants.h"
#include "doubles/ScreenFixture.h"
#include "screens/AddMedicineView.h"
#include "screens/FormRows.h"
#include "screens/MedicineForm.h"

namespace pillora {
namespace {

const Instant kOpened = at("2025-03-08T23:50:00-05:00");

/// Uses the form's own rows: each press is of something that is on show.
class Walker {
 public:
  Walker(AddMedicineView& form, FakeClock& clock, uint32_t seed) : form_(form), clock_(clock), random_(seed) {}

  void press() {
    const auto content = form_.content();
    const FormSection& section = content.sections[below(content.sections.size())];
    const FormRow row = section.rows[below(section.rows.size())];
    std::visit([&](const auto& shown) { use(shown); }, row);
    clock_.advance(std::chrono::minutes(below(300)));
  }

 private:
  size_t below(size_t limit) { return random_() % limit; }

  void use(const TextFieldRow& row) {
    static const std::vector<std::string> kTexts = {"", " ", "\t", "\n", "Aspirin", " a ", "\u00A0", "9999999999"};
    EXPECT_TRUE(form_.setText(row.id, kTexts[below(kTexts.size())]));
  }
  void use(const ToggleRow& row) { EXPECT_TRUE(form_.setOn(row.id, !row.isOn)); }
  void use(const StepperRow& row) {
    // Now and then a finger stays on the button until it gives way.
    const bool up = below(2) == 0;
    size_t presses = below(8) == 0 ? 200 : below(4);
    EXPECT_EQ(step(row.id, up), up ? row.canIncrement : row.canDecrement);
    while (presses-- > 0 && step(row.id, up)) {
    }
  }
  bool step(const std::string& row, bool up) { return up ? form_.increment(row) : form_.decrement(row); }
  void use(const PickerRow& row) { EXPECT_TRUE(form_.choose(row.id, row.options[below(row.options.size())].id)); }
  void use(const GridRow& row) { EXPECT_TRUE(form_.choose(row.id, row.cells[below(row.cells.size())].id)); }
  void use(const DateRow& row) {
    EXPECT_TRUE(form_.openSheet(row.id));
    if (below(2) == 0) form_.showNextMonth();
    const auto sheet = form_.content().monthSheet;
    const DayCell& day = sheet->weeks[below(sheet->weeks.size())].cells[below(7)];
    EXPECT_TRUE(form_.pickDay(day.id));
    if (below(2) == 0) form_.closeSheet();
  }
  void use(const TimeRow& row) {
    const auto hour = static_cast<int64_t>(below(24)), minute = static_cast<int64_t>(below(60));
    if (below(3) == 0) {
      EXPECT_EQ(form_.removeTime(row.id), row.remove.has_value());
    } else {
      EXPECT_TRUE(form_.setTime(row.id, hour, minute));
      const auto sections = form_.content().sections;
      const auto* set = rowNamed<TimeRow>(sections, row.id);
      EXPECT_EQ(std::pair(set->hour, set->minute), std::pair(hour, minute));
    }
  }
  void use(const ButtonRow&) { EXPECT_TRUE(form_.addTime()); }
  void use(const auto&) { ADD_FAILURE() << "the form has no such row"; }

  AddMedicineView& form_;
  FakeClock& clock_;
  std::mt19937 random_;
};

bool isSubset(const std::set<int64_t>& days, const Stepper& range) {
  return days.empty() || (*days.begin() >= range.least && *days.rbegin() <= range.most);
}

void expectInvariants(const AddMedicineView& form) {
  const AddMedicineState& state = form.state();
  ASSERT_FALSE(state.dailyTimes.empty());
  std::set<int64_t> ids;
  for (const DailyTime& time : state.dailyTimes) ASSERT_TRUE(ids.insert(time.id).second) << "one id, one row";
  ASSERT_TRUE(kHourlyInterval.reaches(state.hourlyInterval));
  ASSERT_TRUE(kCustomHours.reaches(state.customIntervalHours));
  ASSERT_TRUE(kCustomMinutes.reaches(state.customIntervalMinutes));
  ASSERT_TRUE(kSnoozeMinutes.reaches(state.snoozeDuration));
  ASSERT_TRUE(kMaxSnoozeCount.reaches(state.maxSnoozeCount));
  ASSERT_TRUE(isSubset(state.weeklyDays, kWeekdays) && isSubset(state.monthlyDays, kDaysOfMonth));
  ASSERT_TRUE(isOffered(kUnitWords, state.selectedUnit) && isOffered(kColorNames, state.selectedColor) &&
              isOffered(kIconNames, state.selectedIcon));
  const auto content = form.content();
  ASSERT_EQ(content.toolbar.at(1).isEnabled, !trimmedName(state.name).empty());
  ASSERT_EQ(content.sections.size(), 6U);
  std::set<std::string> rows;
  for (const FormSection& section : content.sections) {
    for (const FormRow& row : section.rows) {
      const std::string id = std::visit([](const auto& one) { return one.id; }, row);
      ASSERT_TRUE(rows.insert(id).second) << id << " stands there twice";
    }
  }
}

TEST(AddMedicineWalk, whateverIsPressedTheFormKeepsItsRules) {
  const uint32_t seed = std::random_device()();
  for (uint32_t walk = 0; walk < 10; ++walk) {
    SCOPED_TRACE("seed " + std::to_string(seed + walk));
    ScreenFixture fixture(kOpened);
    AddMedicineView form(fixture.environment());
    Walker walker(form, fixture.clock, seed + walk);
    for (int press = 0; press < 100; ++press) {
      walker.press();
      expectInvariants(form);
      if (testing::Test::HasFailure()) return;
    }
    const bool isValid = form.isValid();
    const auto id = form.save();
    ASSERT_EQ(id.has_value(), isValid);
    if (!id) continue;
    const auto medicine = fixture.context().find<Medicine>(*id);
    EXPECT_EQ(medicine->interval().type, form.state().intervalType);
    EXPECT_EQ(medicine->interval().dailyTimes.size(), form.state().dailyTimes.size());
    EXPECT_EQ(medicine->endDate().has_value(), form.state().hasEndDate);
    EXPECT_EQ(form.save(), std::nullopt);
  }
}

}  // namespace
}  // namespace pillora

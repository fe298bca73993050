// SPDX-License-Identifier: MIT
#include "screens/MedicineEditing.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"
#include "screens/TodayView.h"

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10, 22:10. A dose at 22:30 has one follow-up, at 23:30.
const Instant kMidnight = at("2025-01-10T00:00:00-05:00");
const Instant kNow = kMidnight + 22h + 10min;

class MedicineEditingTest : public testing::Test {
 protected:
  NewMedicine lateDaily() const { return medicineNamed("Aspirin", daily({{22, 30}})); }
  std::shared_ptr<Medicine> planned(NewMedicine values) {
    auto medicine = addMedicine(fixture_.environment(), std::move(values));
    fixture_.center.calls.clear();
    return medicine;
  }
  const FakeNotificationCenter& center() const { return fixture_.center; }

  ScreenFixture fixture_{kNow};
};

TEST_F(MedicineEditingTest, addingPlansTheNextThirtyDosesAndCancelsNothing) {
  const auto medicine = addMedicine(fixture_.environment(), lateDaily());
  EXPECT_EQ(medicine->createdAt(), kNow);
  EXPECT_EQ(medicine->updatedAt(), kNow);
  EXPECT_EQ(fixture_.context().find<Medicine>(medicine->id()), medicine);
  EXPECT_EQ(center().pending.size(), 60U) << "each with its one follow-up";
  for (const auto& call : center().calls) EXPECT_FALSE(call.starts_with("remove")) << call;
}

TEST_F(MedicineEditingTest, anInactiveOrNonRepeatingMedicineIsAddedWithoutReminders) {
  for (const bool isActive : {true, false}) {
    NewMedicine values = lateDaily();
    values.isActive = isActive;
    values.isRepeating = !isActive;
    addMedicine(fixture_.environment(), values);
  }
  EXPECT_EQ(fixture_.context().fetch<Medicine>()->size(), 2U);
  EXPECT_TRUE(center().added.empty());
}

TEST_F(MedicineEditingTest, savingUpdatesCancelsAndPlansAnewWithTheNewName) {
  const auto medicine = planned(lateDaily());
  medicine->name = "Ibuprofen";
  fixture_.clock.set(kNow + 1h);
  saveMedicine(fixture_.environment(), *medicine);
  EXPECT_EQ(medicine->updatedAt(), kNow + 1h);
  EXPECT_EQ(medicine->createdAt(), kNow);
  EXPECT_EQ(center().pending.size(), 60U) << "today's 22:30 has passed, 30 later ones are planned";
  for (const auto& request : center().pending) {
    EXPECT_GT(request.trigger.wallTime.day + 31 * request.trigger.wallTime.month, 10U + 31U) << request.identifier;
    EXPECT_NE((request.content.title + request.content.body).find("Ibuprofen"), std::string::npos);
  }
}

TEST_F(MedicineEditingTest, savingAnInactiveMedicineOnlyCancels) {
  const auto medicine = planned(lateDaily());
  medicine->isActive = false;
  saveMedicine(fixture_.environment(), *medicine);
  EXPECT_TRUE(center().pending.empty());
}

TEST_F(MedicineEditingTest, planningAnewLeavesTheTimeOfTheLastUpdate) {
  const auto medicine = planned(lateDaily());
  fixture_.clock.set(kNow + 1h);
  planRemindersAnew(fixture_.environment(), *medicine);
  EXPECT_EQ(medicine->updatedAt(), kNow);
  EXPECT_EQ(center().pending.size(), 60U);
}

TEST_F(MedicineEditingTest, deletingRemovesEveryReminderOfThisMedicineAndTheRecord) {
  const auto other = planned(lateDaily());
  const auto medicine = planned(lateDaily());
  deleteMedicine(fixture_.environment(), medicine);
  EXPECT_EQ(center().pending.size(), 60U);
  for (const auto& identifier : center().pendingIdentifiers()) EXPECT_TRUE(identifier.starts_with(other->id().text()));
  EXPECT_TRUE(medicine->isDeleted());
}

TEST_F(MedicineEditingTest, takingPlansTheNextReminderAndCancelsNothing) {
  const auto medicine = fixture_.add(lateDaily());
  TodayView today(fixture_.environment());
  ASSERT_TRUE(*today.take(medicine->id(), kMidnight + 22h + 30min));
  EXPECT_EQ(center().pending.size(), 2U) << "the next after now is the dose just taken";
  const auto calls = center().calls;
  EXPECT_FALSE(*today.take(medicine->id(), kMidnight + 22h + 30min)) << "done already";
  EXPECT_EQ(center().calls, calls);
}

TEST_F(MedicineEditingTest, takingANonRepeatingOrInactiveMedicineAndSkippingPlanNothing) {
  NewMedicine once = lateDaily(), inactive = lateDaily();
  once.isRepeating = false;
  inactive.isActive = false;
  TodayView today(fixture_.environment());
  ASSERT_TRUE(*today.take(fixture_.add(once)->id(), kNow));
  ASSERT_TRUE(*today.take(fixture_.add(inactive)->id(), kNow));
  ASSERT_TRUE(*today.skip(fixture_.add(lateDaily())->id(), kNow));
  EXPECT_TRUE(center().added.empty());
}

TEST_F(MedicineEditingTest, snoozingPlansOneReminderOfItsOwnWithFollowUps) {
  NewMedicine values = lateDaily();
  values.snoozeDurationMinutes = 15;
  values.isActive = false;
  values.isRepeating = false;
  const auto medicine = fixture_.add(values);
  TodayView today(fixture_.environment());
  const auto reminder = today.snooze(medicine->id());
  ASSERT_TRUE(reminder && *reminder);
  EXPECT_EQ(**reminder, medicine->id().text() + "-1736565900.0") << "22:25";
  EXPECT_EQ(center().pendingIdentifiers(), (std::vector<std::string>{**reminder, **reminder + "-followup-1"}));
  EXPECT_EQ(center().pending[0].trigger.wallTime.minute, 25U);
  EXPECT_TRUE(fixture_.context().fetch<DoseLog>()->empty());
}

TEST_F(MedicineEditingTest, whatCannotBeSnoozedPlansNothing) {
  NewMedicine firm = lateDaily(), endless = lateDaily();
  firm.allowSnooze = false;
  endless.snoozeDurationMinutes = 10'000'001;
  TodayView today(fixture_.environment());
  for (const UUID& id : {fixture_.add(firm)->id(), fixture_.add(endless)->id(), UUID::random()}) {
    const auto reminder = today.snooze(id);
    ASSERT_TRUE(reminder);
    EXPECT_FALSE(*reminder);
  }
  EXPECT_TRUE(center().added.empty());
}

}  // namespace
}  // namespace pillora

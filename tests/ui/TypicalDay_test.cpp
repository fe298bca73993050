// SPDX-License-Identifier: MIT
// One day with Pillora from its first medicine to the next morning, all of it by hand.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class TypicalDay : public WindowTest {
 protected:
  /// The titles of the reminders that come in this minute.
  std::vector<std::string> comingAt(Instant minute) {
    std::vector<std::string> titles;
    for (const auto& request : center.pending) {
      if (calendar->date(request.trigger.dateComponents) == minute) titles.push_back(request.content.title);
    }
    return titles;
  }
};

using Titles = std::vector<std::string>;

TEST_F(TypicalDay, fromTheFirstMedicineToTheNextMorning) {
  clock.set(at("2025-01-10T07:30:00-05:00"));
  open();
  EXPECT_TRUE(shows("No Medicines Added"));

  // Aspirin, a tablet at eight in the morning and in the evening.
  tap("Add Medicine", 1);
  fill("Medicine Name", "Aspirin");
  tap("Unit");
  tap("tablet");
  tap("Time 1");
  tapText("8 AM");
  EXPECT_TRUE(has("Hour, 8 AM"));
  tapBeside();
  tap("Add Time");
  tap("Time 2");
  turnDrum("30", 2);
  key(Qt::Key_Escape);
  tap("Time 2");
  for (int hour = 7; hour < 20; ++hour) key(Qt::Key_Down);
  key(Qt::Key_Right);
  for (int minute = 28; minute > 0; --minute) key(Qt::Key_Up);
  key(Qt::Key_Escape);
  EXPECT_TRUE(has("Time 1, 8:00 AM") && has("Time 2, 8:00 PM"));
  tap("Save");

  const auto aspirin = medicines().at(0);
  const std::string id = aspirin->id().text();
  const auto planned = plannedFor(*aspirin);
  ASSERT_EQ(planned.size(), 30U);
  EXPECT_EQ(planned[0], id + "-1736514000.0");
  EXPECT_EQ(planned[1], id + "-1736557200.0");
  EXPECT_EQ(comingAt(at("2025-01-10T08:00:00-05:00")), Titles{"Time for your medicine"});
  EXPECT_EQ(comingAt(at("2025-01-10T09:00:00-05:00")), Titles{"Reminder: Aspirin"});
  EXPECT_EQ(comingAt(at("2025-01-10T23:00:00-05:00")).size(), 2U) << "of both doses";
  EXPECT_TRUE(comingAt(at("2025-01-11T00:00:00-05:00")).empty());
  EXPECT_TRUE(shows("In 30 min") && shows("Good Morning"));

  // The reminder has come, and the person opens the app.
  leave();
  comeBack(at("2025-01-10T08:05:00-05:00"));
  EXPECT_EQ(center.badge, 0);
  EXPECT_TRUE(shows("Overdue") && shows("8:00 AM") && shows("0%"));
  tap("Aspirin");
  tap("Take");
  ASSERT_EQ(logs().size(), 1U);
  EXPECT_EQ(logs().front()->status(), DoseStatus::taken);
  EXPECT_TRUE(shows("5m late") && shows("100%") && shows("All done for today!"));
  EXPECT_EQ(plannedFor(*aspirin).size(), 30U) << "the next one was among them";
  EXPECT_EQ(comingAt(at("2025-01-10T09:00:00-05:00")).size(), 1U) << "follow-ups come all the same";

  // The evening's dose is only to be found under Upcoming, and is forgotten.
  comeBack(at("2025-01-10T19:00:00-05:00"));
  EXPECT_FALSE(shows("Today's Medicines"));
  tap("Upcoming");
  EXPECT_TRUE(shows("8:00 PM") && shows("in 1h"));
  leave();

  // At midnight the check for missed doses runs, and in the morning the person looks back.
  clock.set(at("2025-01-11T00:00:30-05:00"));
  const auto task = scheduler.launch(pillora_->missedDoseCheckIdentifier());
  settleAll();
  EXPECT_EQ(task->success(), true);
  comeBack(at("2025-01-11T07:00:00-05:00"));
  tap("History");
  EXPECT_EQ(headings("Yesterday"), 1);
  EXPECT_TRUE(shows("50") && shows("1/2") && shows("Good progress"));
  ASSERT_EQ(logs().size(), 2U);
  EXPECT_EQ(logs().back()->scheduledTime(), at("2025-01-10T20:00:00-05:00"));
  EXPECT_EQ(logs().back()->status(), DoseStatus::missed);
  tap("Today", 1);  // the tab, not the range
  EXPECT_TRUE(shows("In 1h") && shows("8:00 AM"));
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
// The list of medicines as a person uses it, and what comes of it in the store and among the planned reminders.
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class MedicinesScreen : public WindowTest {
 protected:
  void openMedicines(QSize size = {360, 720}) {
    open(size);
    key(Qt::Key_3, Qt::ControlModifier);
  }
  void plan(const Medicine& medicine) {
    pillora_->notificationManager().scheduleUpcomingNotifications(medicine, 3);
    executor.drain();
  }
};

constexpr QPointF kPartly(-120, 0), kHardly(-30, 0);

TEST_F(MedicinesScreen, typingNarrowsTheListAndTheCrossOrEscapeShowsAllOfItAgain) {
  add("Aspirin", {{8, 0}});
  add("Baby aspirin", {{8, 0}});
  add("Zinc", {{8, 0}});
  openMedicines();
  tap("Search medicines");
  type("ASP");
  EXPECT_TRUE(has("Aspirin") && has("Baby aspirin"));
  EXPECT_FALSE(has("Zinc"));
  tap("Clear Search");
  EXPECT_TRUE(has("Zinc"));
  EXPECT_EQ(textIn("Search medicines"), "");
  tap("Search medicines");
  type("xyz");
  EXPECT_FALSE(has("Aspirin") || shows("No Medicines Added"));
  key(Qt::Key_Escape);
  EXPECT_TRUE(has("Aspirin") && has("Zinc"));
  EXPECT_EQ(textIn("Search medicines"), "");
}

TEST_F(MedicinesScreen, controlAndFGoToTheSearch) {
  add("Zinc", {{8, 0}});
  openMedicines();
  key(Qt::Key_F, Qt::ControlModifier);
  type("zi");
  EXPECT_EQ(textIn("Search medicines"), "zi");
  EXPECT_TRUE(has("Zinc"));
}

TEST_F(MedicinesScreen, aSwipeUncoversDeleteAndItsPressDeletesWithoutAQuestion) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  const auto zinc = add("Zinc", {{9, 30}});
  plan(*aspirin);
  plan(*zinc);
  openMedicines();
  swipe("Aspirin", kPartly);
  EXPECT_TRUE(has("Delete"));
  ASSERT_EQ(medicines().size(), 2U);
  tap("Delete");
  ASSERT_EQ(medicines().size(), 1U);
  EXPECT_EQ(medicines().front()->name(), "Zinc");
  EXPECT_TRUE(plannedFor(*aspirin).empty());
  EXPECT_EQ(plannedFor(*zinc).size(), 3U);
  EXPECT_FALSE(has("Delete") || has("Aspirin"));
}

TEST_F(MedicinesScreen, aShortSwipeAndASwipeBackDeleteNothing) {
  add("Aspirin", {{8, 0}});
  openMedicines();
  swipe("Aspirin", kHardly);
  EXPECT_FALSE(has("Delete"));
  swipe("Aspirin", kPartly);
  swipe("Aspirin", -kPartly);
  EXPECT_FALSE(has("Delete"));
  EXPECT_EQ(medicines().size(), 1U);
  EXPECT_FALSE(app_->detail()->isOpen());
}

TEST_F(MedicinesScreen, swipesAndDeletionsGoByTheSearchedList) {
  add("Aspirin", {{8, 0}});
  add("Zinc", {{8, 0}});
  openMedicines();
  tap("Search medicines");
  type("z");
  swipe("Zinc", kPartly);
  tap("Delete");
  ASSERT_EQ(medicines().size(), 1U);
  EXPECT_EQ(medicines().front()->name(), "Aspirin");
}

TEST_F(MedicinesScreen, theDeleteKeyDeletesTheMedicineInFocus) {
  add("Aspirin", {{8, 0}});
  add("Zinc", {{8, 0}});
  openMedicines();
  ASSERT_TRUE(tabTo("Zinc"));
  key(Qt::Key_Delete);
  ASSERT_EQ(medicines().size(), 1U);
  EXPECT_EQ(medicines().front()->name(), "Aspirin");
}

TEST_F(MedicinesScreen, theMenuOfARowDeletesByKeyMouseAndTouch) {
  for (const char* name : {"Aspirin", "Biotin", "Zinc"}) add(name, {{8, 0}});
  openMedicines();
  ASSERT_TRUE(tabTo("Aspirin"));
  key(Qt::Key_Menu);
  key(Qt::Key_Return);
  EXPECT_EQ(medicines().size(), 2U);
  rightClick("Biotin");
  tap("Delete");
  EXPECT_EQ(medicines().size(), 1U);
  touchLong("Zinc");
  touch("Delete");
  EXPECT_TRUE(medicines().empty());
  EXPECT_TRUE(shows("No Medicines Added"));
  EXPECT_FALSE(app_->detail()->isOpen());
}

TEST_F(MedicinesScreen, aMenuThatIsLeftDeletesNothing) {
  add("Aspirin", {{8, 0}});
  openMedicines();
  rightClick("Aspirin");
  key(Qt::Key_Escape);
  EXPECT_FALSE(has("Delete"));
  EXPECT_EQ(medicines().size(), 1U);
}

TEST_F(MedicinesScreen, aPressOpensTheDetailsAndEveryWayBackClosesThem) {
  add("Aspirin", {{8, 0}});
  openMedicines();
  for (const char* way : {"tap", "key", "touch"}) {
    if (way == std::string("tap")) tap("Aspirin");
    if (way == std::string("key") && tabTo("Aspirin")) key(Qt::Key_Return);
    if (way == std::string("touch")) touch("Aspirin");
    EXPECT_TRUE(app_->detail()->isOpen()) << way;
    EXPECT_TRUE(shows("Details")) << way;
    if (way == std::string("tap")) tap("Medicines");
    if (way == std::string("key")) key(Qt::Key_Escape);
    if (way == std::string("touch")) key(Qt::Key_Back);
    EXPECT_FALSE(app_->detail()->isOpen()) << way;
    EXPECT_TRUE(has("Search medicines")) << way;
  }
}

TEST_F(MedicinesScreen, theListBehindTheDetailsIsNotReached) {
  add("Aspirin", {{8, 0}});
  openMedicines();
  tap("Aspirin");
  key(Qt::Key_F, Qt::ControlModifier);
  type("z");
  EXPECT_EQ(textIn("Search medicines"), "");
  EXPECT_FALSE(tabTo("Search medicines"));
}

TEST_F(MedicinesScreen, theFormOpensFromTheEmptyScreenAndFromTheToolbar) {
  openMedicines();
  ASSERT_EQ(controls("Add Medicine").size(), 2U);
  for (const int which : {0, 1}) {
    tap("Add Medicine", which);
    EXPECT_TRUE(app_->addMedicine()->isOpen()) << which;
    key(Qt::Key_Escape);
  }
  add("Aspirin", {{8, 0}});
  settleAll();
  tap("Add Medicine");
  EXPECT_TRUE(app_->addMedicine()->isOpen());
}

TEST_F(MedicinesScreen, aMirroredRowIsSwipedTheOtherWay) {
  add("Aspirin", {{8, 0}});
  appearance_.setProperty("mirrored", true);
  openMedicines();
  swipe("Aspirin", kPartly);
  EXPECT_FALSE(has("Delete"));
  swipe("Aspirin", -kPartly);
  tap("Delete");
  EXPECT_TRUE(medicines().empty());
}

TEST_F(MedicinesScreen, theDetailsStayAwayWhileTheWindowChangesItsSizeAndTheListIsNotDimmed) {
  add("Aspirin", {{8, 0}});
  openMedicines();
  appearance_.setProperty("reducedMotion", false);
  const auto details = [&] {
    return seek(
        [](QQuickItem* item) { return QByteArray(item->metaObject()->className()).startsWith("MedicineDetailView"); });
  };
  window_->resize(500, 720);
  settleAll();
  EXPECT_EQ(details(), nullptr);
  QQuickItem* const row = control("Aspirin");
  tap("Aspirin");
  EXPECT_NE(details(), nullptr);
  EXPECT_EQ(row->opacity(), 1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !row->isVisible(); }));
}

TEST_F(MedicinesScreen, controlAndFDoesNothingWhereNothingCanBeSearched) {
  openMedicines();
  key(Qt::Key_F, Qt::ControlModifier);
  ASSERT_NE(window_->activeFocusItem(), nullptr);
  EXPECT_FALSE(window_->activeFocusItem()->inherits("QQuickTextInput"));
  type("z");
  add("Aspirin", {{8, 0}});
  settleAll();
  EXPECT_EQ(textIn("Search medicines"), "");
}

}  // namespace
}  // namespace pillora

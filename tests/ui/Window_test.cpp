// SPDX-License-Identifier: MIT
// The window as a whole: every screen in every look, the ways from tab to tab, and its keys.
#include "ui/Demo.h"
#include "ui/ScreenPictures.h"
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class Window : public WindowTest {
 protected:
  /// The tab that is on show, by its title.
  std::string tabShown() {
    std::string shown;
    for (const char* title : {"Today", "Upcoming", "Medicines", "History", "Settings"}) {
      if (isOn(title)) shown += title;
    }
    return shown;
  }
};

struct Look {
  const char* name;
  QSize size;
  bool isDark, isOdd;  ///< odd: from right to left, and large letters
};

class EveryScreen : public Window, public testing::WithParamInterface<Look> {};

TEST_P(EveryScreen, isDrawnWithoutAWarning) {
  const Look look = GetParam();
  fillWithDemo(context(), *calendar, clock.now());
  appearance_.setProperty("dark", look.isDark);
  appearance_.setProperty("mirrored", look.isOdd);
  appearance_.setFontScale(look.isOdd ? 1.5 : 1);
  open(look.size);
  for (const Scene& scene : allScenes()) {
    scene.enter(*app_);
    settleAll();
    EXPECT_EQ(takeWarnings(), "") << scene.name;
    scene.leave(*app_);
    settleAll();
    EXPECT_EQ(takeWarnings(), "") << "leaving " << scene.name;
  }
}

constexpr QSize kPhone(360, 720), kDesktop(1000, 700);

INSTANTIATE_TEST_SUITE_P(Looks, EveryScreen,
                         testing::Values(Look{"phone", kPhone, false, false}, Look{"darkPhone", kPhone, true, false},
                                         Look{"desktop", kDesktop, false, false},
                                         Look{"darkDesktop", kDesktop, true, false},
                                         Look{"oddPhone", kPhone, false, true},
                                         Look{"oddDarkDesktop", kDesktop, true, true}),
                         [](const auto& look) { return std::string(look.param.name); });

TEST_F(Window, anEmptyAppIsDrawnWithoutAWarning) {
  open();
  for (int tab = 0; tab < 5; ++tab) {
    app_->root()->select(tab);
    settleAll();
    EXPECT_EQ(takeWarnings(), "") << tab;
  }
}

TEST_F(Window, aLongListBeginsAtItsTop) {
  fillWithDemo(context(), *calendar, clock.now());
  open();
  key(Qt::Key_4, Qt::ControlModifier);
  const QQuickItem* const range = control("Week");
  ASSERT_NE(range, nullptr);
  EXPECT_GE(range->mapToScene({}).y(), 64);
}

TEST_F(Window, controlAndANumberShowATab) {
  open();
  EXPECT_EQ(tabShown(), "Today");
  for (const auto& [number, title] :
       {std::pair(Qt::Key_2, "Upcoming"), std::pair(Qt::Key_3, "Medicines"), std::pair(Qt::Key_4, "History"),
        std::pair(Qt::Key_5, "Settings"), std::pair(Qt::Key_1, "Today")}) {
    key(number, Qt::ControlModifier);
    EXPECT_EQ(app_->root()->selectedTab(), number - Qt::Key_1);
    EXPECT_TRUE(isOn(title)) << title;
  }
}

class Layout : public Window, public testing::WithParamInterface<bool> {};

TEST_P(Layout, aTabIsShownByAPress) {
  open(GetParam() ? kDesktop : kPhone);
  for (const char* title : {"Medicines", "Upcoming", "Settings", "Today"}) {
    tap(title);
    EXPECT_EQ(tabShown(), title);
  }
  touch("Upcoming");
  EXPECT_EQ(tabShown(), "Upcoming");
}

TEST_P(Layout, theArrowsWalkOverTheTabsAndSpaceShowsOne) {
  const bool isWide = GetParam();
  open(isWide ? kDesktop : kPhone);
  ASSERT_TRUE(tabTo("Today"));
  const Qt::Key forth = isWide ? Qt::Key_Down : Qt::Key_Right, back = isWide ? Qt::Key_Up : Qt::Key_Left;
  for (const Qt::Key each : {forth, forth, back, Qt::Key_Space}) key(each);
  EXPECT_EQ(tabShown(), "Upcoming");
}

INSTANTIATE_TEST_SUITE_P(Sizes, Layout, testing::Bool(),
                         [](const auto& size) { return std::string(size.param ? "wide" : "narrow"); });

TEST_F(Window, aWindowThatIsMadeWiderKeepsItsTabAndWhatIsOpen) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  open();
  tap("Aspirin");
  ASSERT_TRUE(has("Take"));
  window_->resize(kDesktop);
  settleAll();
  EXPECT_EQ(tabShown(), "Today");
  tap("Take");
  EXPECT_EQ(logs().size(), 1U);
}

TEST_F(Window, keysOpenTheFormOfANewMedicineAndEscapeClosesIt) {
  open();
  key(Qt::Key_4, Qt::ControlModifier);
  key(Qt::Key_N, Qt::ControlModifier);
  EXPECT_TRUE(app_->addMedicine()->isOpen());
  EXPECT_TRUE(has("Medicine Name"));
  key(Qt::Key_Escape);
  EXPECT_FALSE(app_->addMedicine()->isOpen());
  EXPECT_TRUE(medicines().empty());
}

TEST_F(Window, whatIsDoneInAFormIsDrawnOnceWhenItsTurnEnds) {
  open();
  AddMedicineModel* const form = app_->addMedicine();
  const auto sheet = [&] { return form->content()->property("monthSheet").value<QObject*>(); };
  form->open();
  form->choose(QStringLiteral("intervalType"), QStringLiteral("weekly"));
  form->openSheet(QStringLiteral("startDate"));
  EXPECT_EQ(sheet(), nullptr);
  settleAll();
  EXPECT_NE(sheet(), nullptr);
}

TEST_F(Window, aPressBesideASheetOfAWideWindowLeavesIt) {
  open(kDesktop);
  for (int time = 0; time < 2; ++time) {
    key(Qt::Key_N, Qt::ControlModifier);
    ASSERT_TRUE(has("Medicine Name"));
    tapBeside();
    EXPECT_FALSE(app_->addMedicine()->isOpen());
    EXPECT_FALSE(has("Medicine Name"));
  }
}

TEST_F(Window, keysDoNotReachWhatLiesBehindASheet) {
  open();
  key(Qt::Key_N, Qt::ControlModifier);
  key(Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(app_->root()->selectedTab(), 0);
}

}  // namespace
}  // namespace pillora

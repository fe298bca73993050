// SPDX-License-Identifier: MIT
// The window as a person uses it: by keys, clicks and typing, and what comes of it in the store.
#include <array>

#include "ui/Demo.h"
#include "ui/ScreenPictures.h"
#include "ui/WindowTest.h"

namespace pillora {
namespace {

class Window : public WindowTest {
 protected:
  QQuickItem* card(const QString& name) { return seek("name", name, "DoseCard"); }
  QQuickItem* button(const QString& text) { return seek("text", text, "PButton"); }
  bool isExpanded(const QString& name) { return card(name) && card(name)->property("expanded").toBool(); }
};

struct Look {
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

INSTANTIATE_TEST_SUITE_P(Looks, EveryScreen,
                         testing::Values(Look{{360, 720}, false, false}, Look{{360, 720}, true, false},
                                         Look{{1000, 700}, false, false}, Look{{1000, 700}, true, false},
                                         Look{{360, 720}, false, true}, Look{{1000, 700}, true, true}));

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
  app_->root()->select(3);
  settleAll();
  const QQuickItem* const ranges = seek("name", "Time Range", "SegmentedPicker");
  ASSERT_NE(ranges, nullptr);
  EXPECT_GE(ranges->mapToScene({}).y(), 64);
}

TEST_F(Window, controlAndANumberShowATab) {
  open();
  const std::array keys = {Qt::Key_2, Qt::Key_3, Qt::Key_4, Qt::Key_5, Qt::Key_1};
  const std::array titles = {"Upcoming", "Medicines", "History", "Settings", "Today"};
  for (size_t i = 0; i < keys.size(); ++i) {
    key(keys.at(i), Qt::ControlModifier);
    EXPECT_NE(seek("title", QString::fromLatin1(titles.at(i)), "NavigationBar"), nullptr) << titles.at(i);
  }
}

TEST_F(Window, aDoseIsTakenFromItsCard) {
  add("Aspirin", {{8, 0}});
  open();
  ASSERT_NE(card("Aspirin"), nullptr);
  EXPECT_EQ(button("Take"), nullptr);
  clickOn(seek("text", "Aspirin"));
  EXPECT_TRUE(isExpanded("Aspirin"));
  clickOn(button("Take"));
  ASSERT_EQ(logs().size(), 1U);
  EXPECT_EQ(logs().front()->status(), DoseStatus::taken);
  EXPECT_EQ(logs().front()->scheduledTime(), at("2025-01-10T08:00:00-05:00"));
  EXPECT_EQ(card("Aspirin"), nullptr);
  EXPECT_EQ(desktop_.calls, std::vector<std::string>{"vibrate"});
}

TEST_F(Window, anExpandedCardStaysSoWhenAnotherDoseIsTaken) {
  const auto aspirin = add("Aspirin", {{8, 0}});
  add("Biotin", {{8, 30}});
  open();
  clickOn(seek("text", "Biotin"));
  EXPECT_TRUE(isExpanded("Biotin"));
  app_->today()->take(QString::fromStdString(aspirin->id().text()), at("2025-01-10T08:00:00-05:00"));
  settleAll();
  EXPECT_EQ(card("Aspirin"), nullptr);
  EXPECT_TRUE(isExpanded("Biotin"));
}

TEST_F(Window, aMedicineIsAddedByTypingItsName) {
  open();
  key(Qt::Key_N, Qt::ControlModifier);
  QQuickItem* const name = seek("name", "Medicine Name", "TextField");
  ASSERT_NE(name, nullptr);
  clickOn(name);
  for (const Qt::Key letter : {Qt::Key_Z, Qt::Key_I, Qt::Key_N, Qt::Key_C}) key(letter);
  clickOn(seek("text", "Save"));
  const auto medicines = *context().fetch<Medicine>();
  ASSERT_EQ(medicines.size(), 1U);
  EXPECT_EQ(medicines.front()->name(), "zinc");
  EXPECT_FALSE(center.pending.empty());
  EXPECT_FALSE(app_->addMedicine()->isOpen());
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

TEST_F(Window, whileItIsLockedOnlyTheLockIsLoaded) {
  add("Aspirin", {{8, 0}});
  settings()->requireAuthentication = true;
  executor.drain();
  open();
  EXPECT_NE(seek("text", "Pillora is Locked"), nullptr);
  EXPECT_EQ(seek("text", "Aspirin"), nullptr);
  EXPECT_EQ(seek([](QQuickItem* item) { return QByteArray(item->metaObject()->className()).startsWith("TabsView"); }),
            nullptr);
  device.last().answer(true);
  settleAll();
  EXPECT_EQ(seek("text", "Pillora is Locked"), nullptr);
  EXPECT_NE(card("Aspirin"), nullptr);
}

TEST_F(Window, aSnoozeOutOfRangeIsShownAndNotRewritten) {
  settings()->defaultSnoozeDurationMinutes = 1000;
  executor.drain();
  open();
  key(Qt::Key_5, Qt::ControlModifier);
  EXPECT_NE(seek("text", "Duration: 1000 min"), nullptr);
  EXPECT_EQ(settings()->defaultSnoozeDurationMinutes(), 1000);
}

}  // namespace
}  // namespace pillora

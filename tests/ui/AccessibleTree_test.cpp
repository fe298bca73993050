// SPDX-License-Identifier: MIT
// What a screen reader finds: whatever can be pressed or focused on any screen, with its role, its name and its state,
// and what comes of its actions.
#include <QAccessible>
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "ui/Demo.h"
#include "ui/ScreenPictures.h"
#include "ui/WindowTest.h"

namespace pillora {
namespace {

using Voices = std::map<QObject*, QAccessibleInterface*>;

const std::set kControls = {QAccessible::Button,       QAccessible::CheckBox, QAccessible::RadioButton,
                            QAccessible::SpinBox,      QAccessible::ComboBox, QAccessible::PageTab,
                            QAccessible::EditableText, QAccessible::Link,     QAccessible::MenuItem};
const std::set kOthers = {QAccessible::StaticText,  QAccessible::Heading, QAccessible::ProgressBar,
                          QAccessible::PageTabList, QAccessible::List,    QAccessible::ListItem,
                          QAccessible::Grouping,    QAccessible::Dialog,  QAccessible::AlertMessage,
                          QAccessible::PopupMenu,   QAccessible::Window};

/// Its name, with plain blanks.
std::string nameOf(QAccessibleInterface* voice) {
  return voice->text(QAccessible::Name).replace(QChar(0x202f), QChar(u' ')).toStdString();
}

std::string describe(QAccessibleInterface* voice) {
  return std::string(qAccessibleRoleString(voice->role())) + " '" + nameOf(voice) + "' of " +
         voice->object()->metaObject()->className();
}

void collect(QAccessibleInterface* voice, Voices& all) {
  if (voice->state().invisible) return;
  all[voice->object()] = voice;
  for (int i = 0; i < voice->childCount(); ++i) collect(voice->child(i), all);
}

bool isTapped(const QQuickItem* item) {
  return std::ranges::any_of(item->children(), [](const QObject* child) {
    return child->inherits("QQuickTapHandler") && child->property("enabled").toBool();
  });
}

/// Whether it takes a press or the focus. Left out: what lies around a modal and closes it, and a row that is swiped,
/// which holds the control that it is about.
bool isInteractive(QQuickItem* item) {
  const bool isAround = item->parentItem() && item->parentItem()->inherits("QQuickOverlay");
  const bool isSwiped = item->property("removeTitle").isValid();
  return item->activeFocusOnTab() || (isTapped(item) && !isAround && !isSwiped);
}

QRectF areaOf(QQuickItem* item) { return item->mapRectToScene({0, 0, item->width(), item->height()}); }

QRectF turned(const QRectF& area) { return {area.y(), area.x(), area.height(), area.width()}; }

/// Whether they lie side by side with nothing between them.
bool adjoin(const QRectF& one, const QRectF& other) {
  const auto meet = [](double a, double b) { return std::abs(a - b) < 0.5; };
  return one.top() < other.bottom() && other.top() < one.bottom() &&
         (meet(one.right(), other.left()) || meet(other.right(), one.left()));
}

class AccessibleTree : public WindowTest {
 protected:
  void openDemo(QSize size = {360, 720}) {
    fillWithDemo(context(), *calendar, clock.now());
    executor.drain();
    open(size);
  }

  Voices voices() {
    Voices all;
    collect(QAccessible::queryAccessibleInterface(window_.get()), all);
    return all;
  }

  /// The one with this role and name; null when there is none.
  QAccessibleInterface* voice(QAccessible::Role role, const std::string& name) {
    for (const auto& [object, found] : voices()) {
      if (found->role() == role && nameOf(found) == name) return found;
    }
    return nullptr;
  }

  void act(QAccessible::Role role, const std::string& name, const QString& action) {
    QAccessibleInterface* const found = voice(role, name);
    ASSERT_NE(found, nullptr) << name;
    found->actionInterface()->doAction(action);
    settleAll();
  }

  void expectEverythingSpeaks(const char* where) {
    const Voices all = voices();
    for (const auto& [object, found] : all) {
      EXPECT_TRUE(kControls.contains(found->role()) || kOthers.contains(found->role())) << where << describe(found);
      EXPECT_NE(nameOf(found), "") << where << ": " << describe(found);
    }
    const auto interactive = seekAll(isInteractive);
    EXPECT_FALSE(interactive.empty()) << where;
    for (QQuickItem* item : interactive) {
      QQuickItem* speaker = item;  // half of a stepper speaks with the whole
      while (speaker && !all.contains(speaker)) speaker = speaker->parentItem();
      ASSERT_NE(speaker, nullptr) << where << ": " << item->metaObject()->className();
      EXPECT_TRUE(kControls.contains(all.at(speaker)->role()))
          << where << ": " << item->metaObject()->className() << " speaks as " << describe(all.at(speaker));
      EXPECT_TRUE(speaker == item || !item->activeFocusOnTab()) << where << ": " << item->metaObject()->className();
    }
  }

  /// A finger finds it: 44 points each way, or as many as there are up to the middle of the gap to its neighbour.
  void expectEverythingIsLargeEnough(const char* where) {
    const auto interactive = seekAll(isInteractive);
    const auto hasNeighbour = [&](QQuickItem* item, bool isBelow) {
      return std::ranges::any_of(interactive, [&](QQuickItem* other) {
        return isBelow ? adjoin(turned(areaOf(item)), turned(areaOf(other))) : adjoin(areaOf(item), areaOf(other));
      });
    };
    for (QQuickItem* item : interactive) {
      const QRectF area = areaOf(item);
      EXPECT_TRUE(area.width() > 43.99 || hasNeighbour(item, false))
          << where << ": " << item->metaObject()->className() << " is " << area.width() << " wide";
      EXPECT_TRUE(area.height() > 43.99 || hasNeighbour(item, true))
          << where << ": " << item->metaObject()->className() << " is " << area.height() << " high";
    }
  }
};

class AccessibleScreens : public AccessibleTree, public testing::WithParamInterface<QSize> {};

TEST_P(AccessibleScreens, everyControlOfEveryScreenSpeaksAndIsLargeEnoughToTouch) {
  openDemo(GetParam());
  for (const Scene& scene : allScenes()) {
    scene.enter(*app_);
    settleAll();
    expectEverythingSpeaks(scene.name);
    expectEverythingIsLargeEnough(scene.name);
    scene.leave(*app_);
    settleAll();
  }
}

INSTANTIATE_TEST_SUITE_P(PhoneAndDesktop, AccessibleScreens, testing::Values(QSize(360, 720), QSize(1000, 700)));

TEST_F(AccessibleTree, anEmptyAppSpeaks) {
  open();
  for (int tab = 0; tab < 5; ++tab) {
    app_->root()->select(tab);
    settleAll();
    expectEverythingSpeaks("empty");
  }
}

TEST_F(AccessibleTree, whileItIsLockedOnlyTheLockSpeaks) {
  add("Aspirin", {{8, 0}});
  settings()->requireAuthentication = true;
  executor.drain();
  open();
  std::set<std::string> said;
  for (const auto& [object, found] : voices()) said.insert(nameOf(found));
  EXPECT_EQ(said, (std::set<std::string>{"Pillora", "Pillora is Locked", "Authenticate to view your medications",
                                         "Touch the fingerprint reader", "Unlock", "Use Password Instead"}));
  expectEverythingSpeaks("locked");
}

TEST_F(AccessibleTree, aMenuSpeaksAndTellsWhatIsPicked) {
  openDemo();
  app_->root()->select(4);
  settleAll();
  act(QAccessible::ComboBox, "Week Starts On, Sunday", QAccessibleActionInterface::pressAction());
  expectEverythingSpeaks("menu");
  EXPECT_NE(voice(QAccessible::PopupMenu, "Week Starts On"), nullptr);
  ASSERT_NE(voice(QAccessible::MenuItem, "Sunday"), nullptr);
  EXPECT_TRUE(voice(QAccessible::MenuItem, "Sunday")->state().checked);
  act(QAccessible::MenuItem, "Monday", QAccessibleActionInterface::pressAction());
  EXPECT_NE(voice(QAccessible::ComboBox, "Week Starts On, Monday"), nullptr);
}

TEST_F(AccessibleTree, aSwitchTellsItsStateAndIsToggled) {
  openDemo();
  app_->root()->select(4);
  settleAll();
  const char* const name = "Use 24-Hour Time";
  EXPECT_TRUE(voice(QAccessible::CheckBox, name)->state().checkable);
  EXPECT_FALSE(voice(QAccessible::CheckBox, name)->state().checked);
  act(QAccessible::CheckBox, name, QAccessibleActionInterface::toggleAction());
  EXPECT_TRUE(settings()->use24HourTime());
  EXPECT_TRUE(voice(QAccessible::CheckBox, name)->state().checked);
}

TEST_F(AccessibleTree, aStepperTellsItsValueAndSteps) {
  openDemo();
  app_->root()->select(4);
  settleAll();
  QAccessibleInterface* const stepper = voice(QAccessible::SpinBox, "Duration: 10 min");
  ASSERT_NE(stepper, nullptr);
  ASSERT_NE(stepper->valueInterface(), nullptr);
  EXPECT_EQ(stepper->valueInterface()->currentValue(), 10);
  stepper->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
  settleAll();
  EXPECT_EQ(settings()->defaultSnoozeDurationMinutes(), 11);
  EXPECT_EQ(nameOf(stepper), "Duration: 11 min");
  stepper->actionInterface()->doAction(QAccessibleActionInterface::decreaseAction());
  settleAll();
  EXPECT_EQ(settings()->defaultSnoozeDurationMinutes(), 10);
}

TEST_F(AccessibleTree, aTabTellsThatItIsSelectedAndIsPressed) {
  openDemo();
  EXPECT_TRUE(voice(QAccessible::PageTab, "Today")->state().selected);
  act(QAccessible::PageTab, "Upcoming", QAccessibleActionInterface::pressAction());
  EXPECT_FALSE(voice(QAccessible::PageTab, "Today")->state().selected);
  EXPECT_TRUE(voice(QAccessible::PageTab, "Upcoming")->state().selected);
}

TEST_F(AccessibleTree, aDoseIsTakenWithoutSight) {
  add("Aspirin", {{8, 0}});
  open();
  act(QAccessible::Button, "Aspirin, 1 pill, 8:00 AM, Overdue", QAccessibleActionInterface::pressAction());
  act(QAccessible::Button, "Take, Aspirin", QAccessibleActionInterface::pressAction());
  ASSERT_EQ(logs().size(), 1U);
  EXPECT_EQ(logs().front()->status(), DoseStatus::taken);
  EXPECT_NE(voice(QAccessible::ProgressBar, "100%"), nullptr);
}

TEST_F(AccessibleTree, theDrumsTellTheTimeAndTurn) {
  open();
  app_->addMedicine()->open();
  app_->addMedicine()->openSheet(QStringLiteral("dailyTimes-0"));
  settleAll();
  QAccessibleInterface* const hours = voice(QAccessible::SpinBox, "Hour, 9 AM");
  ASSERT_NE(hours, nullptr);
  EXPECT_EQ(hours->valueInterface()->currentValue(), 9);
  hours->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
  settleAll();
  EXPECT_EQ(nameOf(hours), "Hour, 10 AM");
}

}  // namespace
}  // namespace pillora

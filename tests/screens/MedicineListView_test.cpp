// SPDX-License-Identifier: MIT
#include "screens/MedicineListView.h"

#include <gtest/gtest.h>

#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScreenFixture.h"

namespace pillora {
namespace {

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kNow = at("2025-01-10T10:30:00-05:00");

using Names = std::vector<std::string>;

Names namesIn(const MedicineListContent& content) {
  Names names;
  for (const auto& section : content.sections) {
    names.push_back("# " + section.title);
    for (const auto& row : section.rows) names.push_back(row.name);
  }
  return names;
}

class MedicineListViewTest : public testing::Test {
 protected:
  std::shared_ptr<Medicine> add(const std::string& name, bool isActive = true) {
    NewMedicine values = medicineNamed(name, daily({{8, 0}}));
    values.isActive = isActive;
    return fixture_.add(values);
  }
  MedicineListContent content() const { return view_.content(); }
  MedicineRowView onlyRow() const { return content().sections.at(0).rows.at(0); }

  ScreenFixture fixture_{kNow};
  MedicineListView view_{fixture_.environment()};
};

TEST_F(MedicineListViewTest, anEmptyStoreShowsAPanelBelowTheTitle) {
  const auto empty = content();
  EXPECT_EQ(empty.title, "Medicines");
  EXPECT_EQ(empty.searchPrompt, "Search medicines");
  EXPECT_EQ(empty.clearSearch, "Clear Search");
  EXPECT_EQ(empty.toolbar, (std::vector<ActionItem>{{"addMedicine", "Add Medicine", "plus.circle.fill"}}));
  EXPECT_EQ(empty.empty,
            (Panel{"pills", "No Medicines Added", "Add medicines to track your reminders and never miss a dose."}));
  EXPECT_EQ(empty.emptyAction, (ActionItem{"addMedicine", "Add Medicine", "plus"}));
  EXPECT_TRUE(empty.sections.empty());
}

TEST_F(MedicineListViewTest, withOneActiveMedicineOnlyThatSectionIsShown) {
  add("Aspirin");
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "Aspirin"}));
  EXPECT_EQ(content().empty, std::nullopt);
  EXPECT_EQ(content().emptyAction, std::nullopt);
}

TEST_F(MedicineListViewTest, withOneInactiveMedicineOnlyThatSectionIsShown) {
  add("Aspirin", false);
  EXPECT_EQ(namesIn(content()), (Names{"# Inactive", "Aspirin"}));
}

TEST_F(MedicineListViewTest, bothSectionsAreInTheOrderOfNames) {
  for (const std::string name : {"zinc", "Éphédrine", "aspirin", "Zinc", "Ephedrin"}) add(name);
  add("Old", false);
  add("ample", false);
  EXPECT_EQ(namesIn(content()),
            (Names{"# Active", "aspirin", "Ephedrin", "Éphédrine", "zinc", "Zinc", "# Inactive", "ample", "Old"}));
}

TEST_F(MedicineListViewTest, equalNamesKeepTheOrderOfTheirInsertion) {
  const auto first = add("Aspirin"), second = add("Aspirin");
  const auto rows = content().sections.at(0).rows;
  EXPECT_EQ(rows.at(0).id, first->id());
  EXPECT_EQ(rows.at(1).id, second->id());
}

TEST_F(MedicineListViewTest, searchFindsPartsOfNamesWithoutRegardToCase) {
  add("Aspirin");
  add("Baby aspirin");
  add("Zinc", false)->instructions = "with aspirin";
  view_.searchText = "ASP";
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "Aspirin", "Baby aspirin"}));
  view_.searchText = "zi";
  EXPECT_EQ(namesIn(content()), (Names{"# Inactive", "Zinc"}));
}

TEST_F(MedicineListViewTest, blanksOfASearchCountAndAccentsDo) {
  add("Vitamin D");
  add("Éphédrine");
  view_.searchText = " ";
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "Vitamin D"}));
  view_.searchText = "ephe";
  EXPECT_TRUE(content().sections.empty());
  view_.searchText = "É";
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "Éphédrine"}));
}

TEST_F(MedicineListViewTest, aSearchWithoutMatchesIsAnEmptyListWithoutAPanel) {
  add("Aspirin");
  view_.searchText = "x";
  EXPECT_TRUE(content().sections.empty());
  EXPECT_EQ(content().empty, std::nullopt);
}

TEST_F(MedicineListViewTest, aRowShowsTheMedicine) {
  const auto medicine = add("Aspirin");
  medicine->dosage = "2";
  medicine->unit = "tablets";
  medicine->icon = "lungs";
  medicine->color = "mint";
  const auto row = onlyRow();
  EXPECT_EQ(row.id, medicine->id());
  EXPECT_EQ(row.dosageText, "2 tablets");
  EXPECT_EQ(row.icon, "lungs");
  EXPECT_EQ(row.color, "mint");
  EXPECT_TRUE(row.isActive);
  EXPECT_EQ(row.inactiveBadge, std::nullopt);
  EXPECT_EQ(row.nextDose, at("2025-01-11T08:00:00-05:00"));
  EXPECT_EQ(row.nextDoseText, "in 21 hr.");
}

TEST_F(MedicineListViewTest, anInactiveMedicineHasABadgeAndNoNextDose) {
  add("Aspirin", false);
  const auto row = onlyRow();
  EXPECT_FALSE(row.isActive);
  EXPECT_EQ(row.inactiveBadge, "Inactive");
  EXPECT_EQ(row.intervalSymbol, "sun.max");
  EXPECT_EQ(row.nextDose, std::nullopt);
  EXPECT_EQ(row.nextDoseText, std::nullopt);
}

TEST_F(MedicineListViewTest, anIntervalThatYieldsNoTimeShowsItsSymbolAlone) {
  fixture_.add(medicineNamed("Aspirin", weekly({}, {9, 0})));
  EXPECT_EQ(onlyRow().intervalSymbol, "calendar.badge.clock");
  EXPECT_EQ(onlyRow().nextDose, std::nullopt);
}

TEST_F(MedicineListViewTest, theColourMatchIsExact) {
  add("Aspirin")->color = "Red";
  EXPECT_EQ(onlyRow().color, "blue");
}

TEST_F(MedicineListViewTest, everyKindOfIntervalHasItsSymbol) {
  const std::vector<std::pair<ReminderInterval, std::string>> symbols = {{hourly(4), "clock"},
                                                                         {daily({{8, 0}}), "sun.max"},
                                                                         {weekly({2}, {8, 0}), "calendar.badge.clock"},
                                                                         {monthly({1}, {8, 0}), "calendar"},
                                                                         {custom(90), "slider.horizontal.3"}};
  for (const auto& [interval, symbol] : symbols) {
    const auto medicine = fixture_.add(medicineNamed("Aspirin", interval));
    EXPECT_EQ(onlyRow().intervalSymbol, symbol);
    fixture_.context().delete_(medicine);
  }
}

TEST_F(MedicineListViewTest, withIconsSwitchedOffRowsHaveNone) {
  add("Aspirin");
  const auto settings = AppSettings::make();
  settings->showMedicineIcons = false;
  fixture_.context().insert(settings);
  EXPECT_EQ(onlyRow().icon, std::nullopt);
}

TEST_F(MedicineListViewTest, theListFollowsTheStore) {
  const auto medicine = add("Aspirin");
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "Aspirin"}));
  medicine->isActive = false;
  EXPECT_EQ(namesIn(content()), (Names{"# Inactive", "Aspirin"}));
  fixture_.context().delete_(medicine);
  EXPECT_TRUE(content().empty.has_value());
}

TEST_F(MedicineListViewTest, everyRowOpensSomethingAndSectionsHaveStableIds) {
  const auto medicine = add("Aspirin");
  add("Old", false);
  EXPECT_EQ(content().sections.at(0).id, "active");
  EXPECT_EQ(content().sections.at(1).id, "inactive");
  EXPECT_EQ(onlyRow().chevron, "chevron.right");
  EXPECT_EQ(onlyRow().remove, (ActionItem{"delete", "Delete", "trash"}));
  view_.selectedMedicine = onlyRow().id;
  EXPECT_EQ(view_.selectedMedicine, medicine->id());
}

TEST_F(MedicineListViewTest, opensWithNothingPresentedAndNoSearch) {
  EXPECT_FALSE(view_.showingAddMedicine);
  EXPECT_EQ(view_.selectedMedicine, std::nullopt);
  EXPECT_EQ(view_.searchText, "");
}

TEST_F(MedicineListViewTest, swipingCancelsTheRemindersAndFollowUpsBeforeTheRecordGoes) {
  const auto medicine = fixture_.add(medicineNamed("Aspirin", daily({{22, 30}})));
  const auto other = fixture_.add(medicineNamed("Zinc", daily({{22, 30}})));
  const auto log = fixture_.log(medicine, kNow, DoseStatus::taken);
  for (const auto& each : {medicine, other}) fixture_.notifications.scheduleUpcomingNotifications(*each, 2);
  ASSERT_EQ(fixture_.center.pending.size(), 8U) << "each with its follow-up at 23:30";
  int removals = 0;
  fixture_.center.beforeRemoval = [&] {
    ++removals;
    EXPECT_FALSE(medicine->isDeleted());
  };
  view_.deleteRows("active", {medicine->id()});
  EXPECT_EQ(removals, 1);
  EXPECT_TRUE(medicine->isDeleted());
  EXPECT_TRUE(log->isDeleted());
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "Zinc"}));
  ASSERT_EQ(fixture_.center.pending.size(), 4U);
  for (const auto& id : fixture_.center.pendingIdentifiers()) EXPECT_TRUE(id.starts_with(other->id().text()));
}

TEST_F(MedicineListViewTest, severalRowsAreDeletedInTheirOrderAndAnActiveOneToo) {
  const auto a = add("A"), b = add("B"), c = add("C");
  std::vector<bool> wasThere;
  fixture_.center.beforeRemoval = [&] { wasThere = {a->isDeleted(), c->isDeleted()}; };
  for (const auto& each : {a, c}) fixture_.notifications.scheduleUpcomingNotifications(*each, 1);
  view_.deleteRows("active", {c->id(), a->id()});
  EXPECT_EQ(wasThere, (std::vector<bool>{false, true})) << "the second goes after the first is gone";
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "B"}));
}

TEST_F(MedicineListViewTest, onlyRowsOfTheSectionThatAreShownAreDeleted) {
  const auto aspirin = add("Aspirin"), zinc = add("Zinc"), old = add("Old", false);
  view_.deleteRows("inactive", {aspirin->id()});
  view_.deleteRows("active", {old->id(), UUID::random()});
  view_.deleteRows("Active", {aspirin->id()});
  view_.searchText = "zin";
  view_.deleteRows("active", {aspirin->id()});
  view_.deleteRows("active", {zinc->id(), zinc->id()});
  view_.searchText = "";
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "Aspirin", "# Inactive", "Old"}));
  view_.deleteRows("inactive", {old->id()});
  EXPECT_EQ(namesIn(content()), (Names{"# Active", "Aspirin"}));
}

TEST_F(MedicineListViewTest, swipingAwayTheLastMedicineShowsThePanel) {
  const auto medicine = add("Aspirin");
  view_.deleteRows("active", {medicine->id()});
  EXPECT_TRUE(content().empty);
}

}  // namespace
}  // namespace pillora

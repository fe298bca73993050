// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <sqlite3.h>

#include "SettingsFixture.h"
#include "doubles/FailingVfs.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/TemporaryFolder.h"

// What the settings screen says while changes cannot be saved.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York, en_US; Friday, 2025-01-10.
const Instant kNow = at("2025-01-10T10:30:00-05:00");

using Names = std::vector<std::string>;

class SettingsViewUnsaved : public testing::Test {
 protected:
  SettingsViewUnsaved() {
    view_.appeared();
    fixture_.endTurn();
  }
  ~SettingsViewUnsaved() override { failingVfs::heal(); }

  ModelConfiguration configuration() {
    return {.path = folder_.file("Pillora.store"), .vfsName = failingVfs::name(), .clock = &clock_};
  }
  std::optional<FormSection> unsaved() const { return view_.content().unsaved; }
  /// The medicines that another process finds in the file.
  Names namesInTheFile() {
    QueuedMainExecutor executor;
    const auto other = valueOrAbort(ModelContainer::open({.path = folder_.file("Pillora.store")}, executor));
    Names names;
    const auto medicines = *other->mainContext().fetch<Medicine>();
    for (const auto& medicine : medicines) names.push_back(medicine->name());
    return names;
  }

  TemporaryFolder folder_;
  FakeClock clock_{kNow};
  SettingsFixture fixture_{kNow, {}, configuration()};
  SettingsView view_ = fixture_.makeView();
};

TEST_F(SettingsViewUnsaved, nothingIsSaidWhileSavingWorks) {
  fixture_.add(medicineNamed("Aspirin", daily({{8, 0}})));
  EXPECT_FALSE(unsaved()) << "pending in this turn";
  fixture_.endTurn();
  EXPECT_FALSE(unsaved());
}

TEST_F(SettingsViewUnsaved, aFullDiskIsToldWithItsTimeAndGoesAgain) {
  failingVfs::failAt(1, SQLITE_FULL, true);
  fixture_.add(medicineNamed("Aspirin", daily({{8, 0}})));
  fixture_.endTurn();
  auto section = unsaved();
  ASSERT_TRUE(section);
  EXPECT_EQ(section->title, "Not Saved");
  EXPECT_EQ(section->footer, "Pillora keeps them as long as it is open and writes them as soon as it can.");
  ASSERT_EQ(section->rows.size(), 2u);
  auto row = std::get<ValueRow>(section->rows[0]);
  EXPECT_EQ(plainBlanks(row.text), "Your changes could not be saved since Jan 10, 2025, 10:30 AM.");
  EXPECT_EQ(row.detail, "The reason: database or disk is full");
  EXPECT_EQ(row.symbol, "exclamationmark.triangle.fill");
  EXPECT_EQ(row.color, "red");
  EXPECT_EQ(std::get<ButtonRow>(section->rows[1]).id, "saveAgain");
  EXPECT_EQ(std::get<ButtonRow>(section->rows[1]).title, "Try Again");
  EXPECT_TRUE(namesInTheFile().empty());

  clock_.advance(2h);
  fixture_.add(medicineNamed("Zinc", daily({{8, 0}})));
  fixture_.endTurn();
  row = std::get<ValueRow>(unsaved()->rows[0]);
  EXPECT_EQ(plainBlanks(row.text), "Your changes could not be saved since Jan 10, 2025, 10:30 AM.")
      << "since the first that failed";
  EXPECT_EQ(fixture_.medicineNames(), (Names{"Aspirin", "Zinc"})) << "what is pending is still seen";

  failingVfs::heal();
  view_.setToggle("use24HourTime", true);
  fixture_.endTurn();
  EXPECT_FALSE(unsaved());
  EXPECT_EQ(namesInTheFile(), (Names{"Aspirin", "Zinc"})) << "each of them once";
}

TEST_F(SettingsViewUnsaved, tryingAgainWritesWhatIsPendingOnce) {
  failingVfs::failAt(1, SQLITE_IOERR, true);
  fixture_.add(medicineNamed("Aspirin", daily({{8, 0}})));
  fixture_.endTurn();
  view_.saveAgain();
  EXPECT_TRUE(unsaved());
  failingVfs::heal();
  view_.saveAgain();
  EXPECT_FALSE(unsaved());
  view_.saveAgain();
  EXPECT_EQ(namesInTheFile(), Names{"Aspirin"});
}

TEST_F(SettingsViewUnsaved, theTimeFollowsThe24HourSetting) {
  view_.setToggle("use24HourTime", true);
  fixture_.endTurn();
  clock_.set(at("2025-01-10T15:05:00-05:00"));
  failingVfs::failAt(1, SQLITE_FULL, true);
  view_.setToggle("enableHaptics", false);
  fixture_.endTurn();
  EXPECT_EQ(std::get<ValueRow>(unsaved()->rows[0]).text, "Your changes could not be saved since Jan 10, 2025, 15:05.");
}

TEST_F(SettingsViewUnsaved, aRestoreThatCannotBeSavedStaysPendingAsAWhole) {
  for (int i = 0; i < 1000; ++i) fixture_.add(medicineNamed("M", daily({{8, 0}})));
  view_.createLocalBackup();
  fixture_.settle();
  ASSERT_EQ(namesInTheFile().size(), 1000u);
  // Wherever the disk fails, the file holds the whole restore or nothing of it.
  for (int operation = 1; operation <= 40; operation += 13) {
    const size_t before = namesInTheFile().size();
    failingVfs::failAt(operation, SQLITE_FULL, true);
    view_.restoreBackup(fixture_.files.files.begin()->first);
    fixture_.settle();
    ASSERT_TRUE(failingVfs::hasFailed());
    EXPECT_EQ(alertIds(view_.content()).back(), "restoreComplete");
    EXPECT_TRUE(unsaved());
    EXPECT_EQ(namesInTheFile().size(), before);
    failingVfs::heal();
    view_.saveAgain();
    EXPECT_EQ(namesInTheFile().size(), before + 1000);
  }
}

}  // namespace
}  // namespace pillora

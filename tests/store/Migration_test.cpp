// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <filesystem>
#include <fstream>
#include <sqlite3.h>

#include "StoreTest.h"
#include "doubles/FailingVfs.h"

namespace pillora {
namespace {

const Migration kToOneOne{{1, 0, 0}, {1, 1, 0}, "CREATE TABLE Pharmacy (name TEXT NOT NULL) STRICT"};
const Migration kToOneTwo{{1, 1, 0}, {1, 2, 0}, "CREATE INDEX PharmacyByName ON Pharmacy (name)"};
const Migration kFromNine{{0, 9, 0}, {1, 0, 0}, "ALTER TABLE DoseLog ADD COLUMN notes TEXT NOT NULL DEFAULT ''"};

class MigrationTest : public StoreTest {
 protected:
  /// A store of schema 1.0.0 with one medicine and one log of it.
  void makeStore() {
    const auto container = open(store());
    const auto medicine = makeMedicine("Aspirin");
    makeTaken(medicine);
    container->mainContext().insert(medicine);
    queue_.drain();
  }
  /// A store of schema 0.9.0, whose logs had no notes.
  void makeOldStore() {
    makeStore();
    SQLite::Database raw(store(), SQLite::OPEN_READWRITE);
    raw.exec("ALTER TABLE DoseLog DROP COLUMN notes; PRAGMA user_version = 900");
  }
  Result<std::unique_ptr<ModelContainer>> openWith(const Schema& schema) {
    return ModelContainer::open({.path = store()}, queue_, schema);
  }
  int version() { return SQLite::Database(store()).execAndGet("PRAGMA user_version").getInt(); }
  bool has(const std::string& name) {
    SQLite::Database raw(store());
    SQLite::Statement found(raw, "SELECT 1 FROM sqlite_master WHERE name = ?");
    found.bind(1, name);
    return found.executeStep();
  }
};

TEST_F(MigrationTest, anOlderStoreIsBroughtToTheSchemaWithItsRecords) {
  makeStore();
  {
    const auto opened = openWith({{1, 1, 0}, {kToOneOne}});
    ASSERT_TRUE(opened);
    EXPECT_EQ(namesOf(all<Medicine>((*opened)->mainContext())), Names{"Aspirin"});
  }
  EXPECT_EQ(version(), 10100);
  EXPECT_TRUE(has("Pharmacy"));
  EXPECT_TRUE(openWith({{1, 1, 0}, {kToOneOne}}));
}

TEST_F(MigrationTest, theStoreOfTheOldVersionStaysBesideTheMigratedOne) {
  makeStore();
  {
    const auto opened = openWith({{1, 1, 0}, {kToOneOne}});
    ASSERT_TRUE(opened);
    (*opened)->mainContext().insert(makeMedicine("Ibuprofen"));
    queue_.drain();
  }
  const std::string copy = store() + ".1.0.0";
  ASSERT_TRUE(std::filesystem::exists(copy));
  EXPECT_EQ(std::filesystem::status(copy).permissions(), std::filesystem::perms(0600));
  EXPECT_EQ(SQLite::Database(copy).execAndGet("PRAGMA integrity_check").getString(), "ok");
  const auto asBefore = open(copy);
  EXPECT_EQ(namesOf(all<Medicine>(asBefore->mainContext())), Names{"Aspirin"});
  EXPECT_EQ(all<DoseLog>(asBefore->mainContext()).size(), 1U);
}

TEST_F(MigrationTest, theCopyHoldsWhatIsStillInTheLog) {
  makeStore();
  SQLite::Database other(store(), SQLite::OPEN_READWRITE);
  other.exec("PRAGMA wal_autocheckpoint = 0; UPDATE Medicine SET name = 'Ibuprofen'");
  ASSERT_TRUE(openWith({{1, 1, 0}, {kToOneOne}}));
  EXPECT_EQ(namesOf(all<Medicine>(open(store() + ".1.0.0")->mainContext())), Names{"Ibuprofen"});
}

TEST_F(MigrationTest, aNewCopyTakesThePlaceOfAnOlderOneAndOfOneThatWasBrokenOff) {
  makeStore();
  std::ofstream(store() + ".1.0.0") << "of an attempt long ago";
  std::ofstream(store() + ".1.0.0.part") << "cut sho";
  ASSERT_TRUE(openWith({{1, 1, 0}, {kToOneOne}}));
  EXPECT_EQ(namesOf(all<Medicine>(open(store() + ".1.0.0")->mainContext())), Names{"Aspirin"});
  EXPECT_FALSE(std::filesystem::exists(store() + ".1.0.0.part"));
}

TEST_F(MigrationTest, noCopyIsMadeOfAStoreThatIsNewOrCurrent) {
  ASSERT_TRUE(openWith({{1, 1, 0}, {kToOneOne}}));
  ASSERT_TRUE(openWith({{1, 1, 0}, {kToOneOne}}));
  for (const auto& [name, bytes] : folder_.contents()) EXPECT_EQ(name.find(".1."), std::string::npos) << name;
}

TEST_F(MigrationTest, withoutACopyNothingIsMigrated) {
  makeStore();
  std::filesystem::create_directories(store() + ".1.0.0/in the way");
  const auto opened = openWith({{1, 1, 0}, {kToOneOne}});
  ASSERT_FALSE(opened);
  EXPECT_EQ(opened.error().description, "the store cannot be migrated (no copy of it can be kept: Is a directory)");
  EXPECT_EQ(version(), 10000);
  EXPECT_FALSE(std::filesystem::exists(store() + ".1.0.0.part"));
  EXPECT_EQ(namesOf(all<Medicine>(open(store())->mainContext())), Names{"Aspirin"});
}

TEST_F(MigrationTest, aFullDiskLeavesTheStoreAtItsOldVersion) {
  makeStore();
  const ModelConfiguration onFailingDisk{.path = store(), .vfsName = failingVfs::name()};
  failingVfs::failAt(1, SQLITE_FULL, true);
  const auto opened = ModelContainer::open(onFailingDisk, queue_, {{1, 1, 0}, {kToOneOne}});
  failingVfs::heal();
  ASSERT_FALSE(opened);
  EXPECT_EQ(version(), 10000);
  EXPECT_FALSE(std::filesystem::exists(store() + ".1.0.0"));
  ASSERT_TRUE(ModelContainer::open(onFailingDisk, queue_, {{1, 1, 0}, {kToOneOne}}));
  EXPECT_TRUE(std::filesystem::exists(store() + ".1.0.0"));
}

TEST_F(MigrationTest, anOldStoreWithoutAColumnGetsIt) {
  makeOldStore();
  const auto opened = openWith({{1, 0, 0}, {kFromNine}});
  ASSERT_TRUE(opened);
  const auto logs = all<DoseLog>((*opened)->mainContext());
  ASSERT_EQ(logs.size(), 1U);
  EXPECT_EQ(logs.front()->notes(), "");
  EXPECT_EQ(logs.front()->statusRaw(), "Taken");
  EXPECT_EQ(version(), 10000);
}

TEST_F(MigrationTest, severalStepsFollowOneAnotherInAnyOrderOfTheList) {
  makeOldStore();
  ASSERT_TRUE(openWith({{1, 2, 0}, {kToOneTwo, kFromNine, kToOneOne}}));
  EXPECT_EQ(version(), 10200);
  EXPECT_TRUE(has("PharmacyByName"));
}

TEST_F(MigrationTest, aNewStoreIsMadeAtTheSchemasVersion) {
  ASSERT_TRUE(openWith({{1, 2, 0}, {kFromNine, kToOneOne, kToOneTwo}}));
  EXPECT_EQ(version(), 10200);
  EXPECT_TRUE(has("PharmacyByName"));
}

TEST_F(MigrationTest, aFailingStepLeavesTheStoreAtItsOldVersionWithAllItsRecords) {
  makeOldStore();
  const Migration broken{{1, 1, 0}, {1, 2, 0}, "DELETE FROM Medicine; DROP TABLE NoSuchTable"};
  const auto opened = openWith({{1, 2, 0}, {kFromNine, kToOneOne, broken}});
  ASSERT_FALSE(opened);
  EXPECT_EQ(opened.error().description, "the store cannot be migrated (no such table: NoSuchTable)");
  EXPECT_EQ(version(), 900);
  EXPECT_FALSE(has("Pharmacy"));
  EXPECT_EQ(SQLite::Database(store()).execAndGet("SELECT count(*) FROM Medicine").getInt(), 1);
  EXPECT_EQ(SQLite::Database(store()).execAndGet("SELECT count(*) FROM DoseLog").getInt(), 1);
  EXPECT_TRUE(openWith({{1, 0, 0}, {kFromNine}}));
}

TEST_F(MigrationTest, aStepThatLosesAColumnOrAMedicineOfALogIsRefused) {
  makeStore();
  const Migration losesColumn{{1, 0, 0}, {1, 1, 0}, "ALTER TABLE Medicine DROP COLUMN icon"};
  EXPECT_FALSE(openWith({{1, 1, 0}, {losesColumn}}));
  const Migration losesMedicine{{1, 0, 0}, {1, 1, 0}, "DELETE FROM Medicine"};
  EXPECT_FALSE(openWith({{1, 1, 0}, {losesMedicine}}));
  EXPECT_EQ(version(), 10000);
  const auto container = open(store());
  EXPECT_EQ(all<DoseLog>(container->mainContext()).size(), 1U);
}

TEST_F(MigrationTest, aRebuiltTableKeepsTheLogsThatReferToIt) {
  makeStore();
  const Migration rebuild{{1, 0, 0},
                          {1, 1, 0},
                          "CREATE TABLE Rebuilt AS SELECT * FROM Medicine; DROP TABLE Medicine;"
                          "ALTER TABLE Rebuilt RENAME TO Medicine; CREATE UNIQUE INDEX MedicineById ON Medicine (id)"};
  const auto opened = openWith({{1, 1, 0}, {rebuild}});
  ASSERT_TRUE(opened) << opened.error().description;
  EXPECT_EQ(all<DoseLog>((*opened)->mainContext()).size(), 1U);
}

TEST_F(MigrationTest, withoutAWayTheStoreIsRefusedAndStaysAsItIs) {
  makeOldStore();
  const Migration standingStill{{0, 9, 0}, {0, 9, 0}, "SELECT 1"};
  const Migration beyond{{0, 9, 0}, {2, 0, 0}, "SELECT 1"};
  const auto before = folder_.contents();
  for (const Schema& schema :
       {currentSchema(), Schema{{1, 1, 0}, {kToOneOne}}, Schema{{1, 0, 0}, {standingStill, beyond}}}) {
    const auto opened = openWith(schema);
    ASSERT_FALSE(opened);
    EXPECT_NE(opened.error().description.find("the store is too old (schema 0.9.0)"), std::string::npos);
    EXPECT_TRUE(folder_.contents() == before);
  }
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "store/ModelContainer.h"

#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

#include "StoreTest.h"

namespace pillora {
namespace {

class ModelContainerTest : public StoreTest {
 protected:
  /// Makes a store with one medicine and closes it.
  void makeStore() {
    const auto container = open(store());
    container->mainContext().insert(makeMedicine("Aspirin"));
    queue_.drain();
  }
  void runSql(const std::string& sql) {
    SQLite::Database raw(store(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    raw.exec(sql);
  }
  void writeFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
  }
  std::string refusalOf(const std::string& path) {
    auto opened = ModelContainer::open({.path = path}, queue_);
    EXPECT_FALSE(opened);
    return opened ? "" : opened.error().description;
  }
  /// The refusal of store(), which must leave every file of the folder as it was.
  std::string refusal() {
    const auto before = folder_.contents();
    const std::string text = refusalOf(store());
    EXPECT_EQ(folder_.contents() == before, true) << "the refused file or its side files changed";
    return text;
  }
};

mode_t modeOf(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

TEST_F(ModelContainerTest, aMissingFileIsMadeForItsOwnerAlone) {
  const mode_t former = ::umask(0);
  const auto container = open(store());
  container->mainContext().insert(makeMedicine("Aspirin"));
  queue_.drain();
  ::umask(former);
  for (const char* suffix : {"", "-wal", "-shm"}) EXPECT_EQ(modeOf(store() + suffix), mode_t{0600}) << suffix;
}

TEST_F(ModelContainerTest, whatWasSavedIsThereAfterOpeningAgain) {
  makeStore();
  const auto container = open(store());
  EXPECT_EQ(namesOf(all<Medicine>(container->mainContext())), Names{"Aspirin"});
}

TEST_F(ModelContainerTest, aStoreSavesWhatIsPendingWhenItEnds) {
  auto container = open(store());
  container->mainContext().insert(makeMedicine("Aspirin"));
  container.reset();
  container = open(store());
  EXPECT_EQ(namesOf(all<Medicine>(container->mainContext())), Names{"Aspirin"});
}

TEST_F(ModelContainerTest, anEmptyFileCountsAsNew) {
  writeFile(store(), "");
  makeStore();
  EXPECT_TRUE(open(store()));
}

TEST_F(ModelContainerTest, aDatabaseWithNothingInItCountsAsNew) {
  runSql("PRAGMA journal_mode = WAL");
  EXPECT_GT(std::filesystem::file_size(store()), 0U);
  makeStore();
}

TEST_F(ModelContainerTest, aStoreInMemoryMakesNoFile) {
  const auto container = openInMemory();
  container->mainContext().insert(makeMedicine("Aspirin"));
  queue_.drain();
  EXPECT_TRUE(folder_.contents().empty());
}

TEST_F(ModelContainerTest, pathsAreNamesAndNothingElse) {
  const auto former = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  for (const char* name : {":memory:", "file:a?mode=memory", "100% #1 ? +.store", "plain"}) {
    { const auto container = open(name); }
    EXPECT_TRUE(std::filesystem::exists(folder_.file(name))) << name;
    EXPECT_TRUE(open(name)) << name;
  }
  std::filesystem::current_path(former);
}

TEST_F(ModelContainerTest, theFileCarriesItsKindAndItsVersion) {
  makeStore();
  SQLite::Database raw(store());
  EXPECT_EQ(raw.execAndGet("PRAGMA application_id").getInt(), 0x50696C6C);
  EXPECT_EQ(raw.execAndGet("PRAGMA user_version").getInt(), 10000);
  EXPECT_EQ(raw.execAndGet("PRAGMA journal_mode").getString(), "wal");
}

template <typename T>
Names fieldNames() {
  Names names;
  forEachField<T>([&](std::string_view name, auto) { names.emplace_back(name); });
  return names;
}

TEST_F(ModelContainerTest, everyTableHasOneColumnForEachFieldInTheirOrder) {
  makeStore();
  SQLite::Database raw(store());
  const auto columns = [&](const std::string& table) {
    Names names;
    SQLite::Statement rows(raw, "SELECT name FROM pragma_table_info('" + table + "') WHERE name <> 'rowid'");
    while (rows.executeStep()) names.push_back(rows.getColumn(0).getString());
    return names;
  };
  EXPECT_EQ(columns("Medicine"), fieldNames<Medicine>());
  EXPECT_EQ(columns("DoseLog"), fieldNames<DoseLog>());
  EXPECT_EQ(columns("AppSettings"), fieldNames<AppSettings>());
  SQLite::Statement plan(raw,
                         "EXPLAIN QUERY PLAN SELECT scheduledTime FROM DoseLog WHERE medicine = x'00' AND"
                         " scheduledTime >= 1 AND scheduledTime < 2 ORDER BY scheduledTime");
  ASSERT_TRUE(plan.executeStep());
  EXPECT_NE(plan.getColumn(3).getString().find("COVERING INDEX DoseLogByMedicine"), std::string::npos);
}

// Refused files

TEST_F(ModelContainerTest, aNewerSchemaIsRefused) {
  makeStore();
  runSql("PRAGMA user_version = 10100");
  EXPECT_EQ(
      refusal(),
      "the store was written by a newer version of Pillora (schema 1.1.0, this version reads up to 1.0.0); install "
      "that version again");
}

TEST_F(ModelContainerTest, everyNewerVersionNumberIsRefused) {
  makeStore();
  for (const int version : {10001, 10100, 20000, INT32_MAX}) {
    runSql("PRAGMA user_version = " + std::to_string(version));
    EXPECT_NE(refusal().find("newer version of Pillora"), std::string::npos) << version;
  }
}

TEST_F(ModelContainerTest, aNewerSchemaThatStillLiesInTheLogIsRefused) {
  makeStore();
  const TemporaryFolder elsewhere;
  {
    SQLite::Database newer(store(), SQLite::OPEN_READWRITE);
    newer.exec("PRAGMA wal_autocheckpoint = 0; PRAGMA user_version = 10100");
    for (const char* suffix : {"", "-wal"}) {
      std::filesystem::copy_file(store() + suffix, elsewhere.file("Pillora.store") + suffix);
    }
  }
  const auto before = elsewhere.contents();
  ASSERT_GT(before.at("Pillora.store-wal").size(), 0U);
  EXPECT_NE(refusalOf(elsewhere.file("Pillora.store")).find("(schema 1.1.0"), std::string::npos);
  EXPECT_TRUE(elsewhere.contents() == before);
}

TEST_F(ModelContainerTest, aNewerStoreThatItsProgramHasOpenIsRefused) {
  makeStore();
  SQLite::Database newer(store(), SQLite::OPEN_READWRITE);
  newer.exec("PRAGMA wal_autocheckpoint = 0; PRAGMA user_version = 10100");
  const auto before = folder_.contents();
  EXPECT_NE(refusalOf(store()).find("(schema 1.1.0"), std::string::npos);
  const auto after = folder_.contents();
  for (const char* name : {"Pillora.store", "Pillora.store-wal"}) EXPECT_TRUE(after.at(name) == before.at(name));
}

TEST_F(ModelContainerTest, aFileThatIsNoDatabaseIsRefused) {
  for (const std::string& bytes : {std::string("x"), std::string("dear diary\n"), std::string(100'000, '\0'),
                                   std::string("SQLite format 3"), std::string("SQLite format 3\0", 16)}) {
    writeFile(store(), bytes);
    EXPECT_EQ(refusal(), "the file is not a Pillora store") << bytes.size();
  }
}

TEST_F(ModelContainerTest, aDatabaseOfAnotherProgramIsRefused) {
  runSql("CREATE TABLE Bookmarks (url TEXT)");
  EXPECT_EQ(refusal(), "the file is a database of another program");
  runSql("PRAGMA journal_mode = WAL");
  EXPECT_EQ(refusal(), "the file is a database of another program");
  runSql("DROP TABLE Bookmarks");
  runSql("PRAGMA application_id = 1");
  EXPECT_EQ(refusal(), "the file is a database of another program");
  runSql("PRAGMA application_id = 0");
  runSql("PRAGMA user_version = 10000");
  EXPECT_EQ(refusal(), "the file is a database of another program");
}

TEST_F(ModelContainerTest, anInterruptedDatabaseOfAnotherProgramIsLeftForThatProgramToRepair) {
  const TemporaryFolder elsewhere;
  {
    SQLite::Database other(store(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    other.exec("CREATE TABLE Bookmarks (url TEXT); INSERT INTO Bookmarks VALUES (zeroblob(100000))");
    other.exec("PRAGMA cache_size = 1; BEGIN; UPDATE Bookmarks SET url = randomblob(100000)");
    for (const char* suffix : {"", "-journal"}) {
      std::filesystem::copy_file(store() + suffix, elsewhere.file("Pillora.store") + suffix);
    }
  }
  const auto before = elsewhere.contents();
  ASSERT_GT(before.at("Pillora.store-journal").size(), 0U);
  EXPECT_EQ(refusalOf(elsewhere.file("Pillora.store")), "the file is a database of another program");
  EXPECT_TRUE(elsewhere.contents() == before);
}

TEST_F(ModelContainerTest, aTruncatedStoreIsRefused) {
  makeStore();
  const auto size = std::filesystem::file_size(store());
  for (const auto rest : {size - 1, size - 4096, size / 2, uintmax_t{4096}, uintmax_t{1000}}) {
    const std::string whole = folder_.contents().at("Pillora.store");
    std::filesystem::resize_file(store(), rest);
    EXPECT_NE(refusal(), "") << rest;
    writeFile(store(), whole);
  }
  EXPECT_TRUE(open(store()));
}

TEST_F(ModelContainerTest, aStoreWithOverwrittenPagesIsRefused) {
  makeStore();
  const std::string whole = folder_.contents().at("Pillora.store");
  for (size_t page = 0; page < 4; ++page) {  // the schema and the tables' first pages
    std::string damaged = whole;
    std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(page * 4096 + (page == 0 ? 100 : 0)), 2000, '\xAB');
    writeFile(store(), damaged);
    EXPECT_NE(refusal(), "") << page;
  }
}

TEST_F(ModelContainerTest, aStoreWithoutAColumnIsRefused) {
  makeStore();
  runSql("ALTER TABLE DoseLog DROP COLUMN notes");
  EXPECT_EQ(refusal(), "the store is damaged (its table DoseLog has no column notes)");
}

TEST_F(ModelContainerTest, foldersPipesAndLinksAreRefusedWithoutWaiting) {
  std::filesystem::create_directory(folder_.file("folder"));
  EXPECT_NE(refusalOf(folder_.file("folder")).find("is a folder"), std::string::npos);
  ASSERT_EQ(::mkfifo(folder_.file("pipe").c_str(), 0600), 0);
  EXPECT_NE(refusalOf(folder_.file("pipe")).find("is not a regular file"), std::string::npos);
  EXPECT_NE(refusalOf("/dev/null").find("is not a regular file"), std::string::npos);
  makeStore();
  std::filesystem::create_symlink(store(), folder_.file("link"));
  EXPECT_NE(refusalOf(folder_.file("link")).find("is a link"), std::string::npos);
  std::filesystem::create_symlink(folder_.file("nowhere"), folder_.file("dangling"));
  EXPECT_NE(refusalOf(folder_.file("dangling")).find("is a link"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder_.file("nowhere")));
}

TEST_F(ModelContainerTest, aMissingFolderIsRefusedAndNotMade) {
  EXPECT_NE(refusalOf(folder_.file("absent/Pillora.store")).find("No such file or directory"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder_.file("absent")));
  EXPECT_NE(refusalOf(""), "");
  makeStore();
  EXPECT_NE(refusalOf(store() + "/Pillora.store").find("Not a directory"), std::string::npos);
}

/// What opening `path` says in a process of a user who is not root; empty when it opens.
std::string refusalAsOrdinaryUser(const std::string& path) {
  int ends[2];
  if (::pipe(ends) != 0) return "no pipe";
  const pid_t child = ::fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && (::setresgid(kNobody, kNobody, kNobody) != 0 || ::setresuid(kNobody, kNobody, kNobody))) {
      ::_exit(1);
    }
    QueuedMainExecutor queue;
    const auto opened = ModelContainer::open({.path = path}, queue);
    const std::string text = opened ? "" : opened.error().description;
    const bool isWritten = ::write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::_exit(isWritten ? 0 : 1);
  }
  ::close(ends[1]);
  std::string text;
  char buffer[512];
  for (ssize_t count; (count = ::read(ends[0], buffer, sizeof buffer)) > 0;) text.append(buffer, buffer + count);
  ::close(ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  return status == 0 ? text : "the other process failed";
}

TEST_F(ModelContainerTest, aFileThatMayNotBeReadOrWrittenIsRefused) {
  makeStore();
  std::filesystem::permissions(folder_.path(), std::filesystem::perms::all);
  const auto before = folder_.contents();
  for (const auto mode : {std::filesystem::perms::none, std::filesystem::perms(0444)}) {
    std::filesystem::permissions(store(), mode);
    EXPECT_EQ(refusalAsOrdinaryUser(store()), store() + ": Permission denied");
  }
  std::filesystem::permissions(store(), std::filesystem::perms(0600));
  EXPECT_TRUE(folder_.contents() == before);
}

TEST_F(ModelContainerTest, aFolderThatMayNotBeWrittenIsRefused) {
  std::filesystem::permissions(folder_.path(), std::filesystem::perms(0555));
  EXPECT_EQ(refusalAsOrdinaryUser(store()), store() + ": Permission denied");
  std::filesystem::permissions(folder_.path(), std::filesystem::perms(0700));
}

TEST_F(ModelContainerTest, programsThatMakeTheSameStoreAtOnceAllOpenIt) {
  std::vector<std::thread> programs;
  std::vector<std::string> failures(8);
  for (auto& failure : failures) {
    programs.emplace_back([&failure, path = store()] {
      QueuedMainExecutor queue;
      const auto opened = ModelContainer::open({.path = path}, queue);
      if (!opened) {
        failure = opened.error().description;
        return;
      }
      (*opened)->mainContext().insert(makeMedicine("Aspirin"));
      queue.drain();
    });
  }
  for (auto& program : programs) program.join();
  for (const auto& failure : failures) EXPECT_EQ(failure, "");
  const auto container = open(store());
  EXPECT_EQ(all<Medicine>(container->mainContext()).size(), failures.size());
}

}  // namespace
}  // namespace pillora

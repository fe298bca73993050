// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

#include "cli/CliFixture.h"

namespace pillora {
namespace {

constexpr const char* kName = "Pillora_Backup_2025-01-10_10-30-00.json";

class BackupCommands : public Cli {
 protected:
  /// Words before a command that works on the store of this test and on folders of its own.
  Words here(const Words& words) {
    return Words{"--store", store, "--documents", folder.file("documents"), "--cloud", folder.file("cloud")} + words;
  }
  std::string local(const std::string& name) { return folder.file("documents/Backups/") + name; }
  void write(const std::string& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path) << text;
  }
  std::string read(const std::string& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
  }
};

TEST_F(BackupCommands, createWritesIntoTheDocumentsFolderAndSetsTheDate) {
  add({"Aspirin"});
  const Called called = run(Words{"--json"} + here({"backup", "create"}));
  EXPECT_EQ(called.status, kDone);
  EXPECT_EQ(called.json(), Json::object({{"path", local(kName)}}));
  EXPECT_NE(read(local(kName)).find("\"Aspirin\""), std::string::npos);
  struct stat status = {};
  ASSERT_EQ(stat(local(kName).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  const Json settings = json(here({"settings"}));
  EXPECT_EQ(settings.at("record").at("lastBackupDate"), "2025-01-10T10:30:00Z");
  EXPECT_EQ(settings.at("lastBackup"), "in 0 sec.");
}

TEST_F(BackupCommands, createCanWriteIntoTheCloudFolder) {
  EXPECT_EQ(json(here({"backup", "create", "--cloud"})).at("path"), folder.file("cloud/Backups/") + kName);
}

TEST_F(BackupCommands, withAStoreTheFoldersExistOnlyIfGiven) {
  const Called localOnly = run({"--store", store, "backup", "create"});
  EXPECT_TRUE(localOnly.failedWith(kRefused));
  EXPECT_EQ(localOnly.lines, Words{"pilloractl: Backup directory not found"});
  const Called cloud = run({"--store", store, "--documents", folder.file("documents"), "backup", "create", "--cloud"});
  EXPECT_EQ(cloud.lines, Words{"pilloractl: iCloud is not available"});
  EXPECT_TRUE(json({"--store", store, "settings"}).at("lastBackup").is_null());
  EXPECT_EQ(json({"--store", store, "backup", "list"}),
            Json::object({{"local", Json::array()}, {"cloud", Json::array()}}));
}

TEST_F(BackupCommands, withoutAStoreTheFoldersAreThePersonsOwn) {
  EXPECT_EQ(json({"backup", "create"}).at("path"), folder.file("own-documents/Backups/") + kName);
  EXPECT_EQ(json({"backup", "create", "--cloud"}).at("path"), folder.file("own-cloud/Backups/") + kName);
  EXPECT_EQ(json({"--documents", folder.file("other"), "backup", "create"}).at("path"),
            folder.file("other/Backups/") + kName);
}

TEST_F(BackupCommands, listNamesEveryBackup) {
  run(here({"backup", "create"}));
  run(here({"backup", "create", "--cloud"}));
  write(local("notes.txt"), "");
  const Json list = json(here({"backup", "list"}));
  ASSERT_EQ(list.at("local").size(), 1u);
  ASSERT_EQ(list.at("cloud").size(), 1u);
  const Json backup = list.at("local").at(0);
  EXPECT_EQ(membersOf(backup), (Words{"path", "createdAt", "fileSize", "isCloudBackup"}));
  EXPECT_EQ(backup.at("path"), local(kName));
  EXPECT_EQ(backup.at("fileSize"), read(local(kName)).size());
  EXPECT_EQ(backup.at("isCloudBackup"), false);
  EXPECT_EQ(list.at("cloud").at(0).at("isCloudBackup"), true);
}

TEST_F(BackupCommands, listAsText) {
  EXPECT_EQ(run(here({"backup", "list"})).out, "No Backups\nCreate a backup to see it here.\n");
  run(here({"backup", "create"}));
  const std::string text = run(here({"backup", "list"})).out;
  EXPECT_EQ(text.substr(0, 14), "Local Backups\n");
  EXPECT_NE(text.find(" bytes  " + std::string(kName)), std::string::npos) << text;
}

TEST_F(BackupCommands, restoreAddsTheMedicinesAndTakesTheSettingsOver) {
  add({"Aspirin", "--color", "red"});
  add({"Zinc"});
  run({"settings", "set", "defaultMaxSnoozeCount", "9"});
  run(here({"backup", "create"}));
  const std::string other = folder.file("other.store");
  const Words there = {"--store", other, "--documents", folder.file("documents")};
  EXPECT_EQ(json(there + Words{"backup", "restore", kName}), Json::object({{"medicines", 2}, {"settings", true}}));
  const Json settings = json(there + Words{"settings"});
  EXPECT_EQ(settings.at("medicines"), 2);
  EXPECT_EQ(settings.at("record").at("defaultMaxSnoozeCount"), 9);
  EXPECT_EQ(run(there + Words{"backup", "restore", local(kName)}).out,
            "Restored 2 medicines and the settings.\n"
            "Restored medicines have no reminders yet. 'pilloractl edit REF' plans them.\n");
  EXPECT_EQ(json(there + Words{"settings"}).at("medicines"), 4) << "again all of them";
}

TEST_F(BackupCommands, anyFileCanBeRestoredByItsPath) {
  write(folder.file("mine.txt"), R"({"medicines": [], "createdAt": "2025-01-01T00:00:00Z", "appVersion": ""})");
  EXPECT_EQ(json(here({"backup", "restore", folder.file("mine.txt")})),
            Json::object({{"medicines", 0}, {"settings", false}}));
  EXPECT_EQ(run(here({"backup", "restore", folder.file("mine.txt")})).out, "Restored 0 medicines.\n");
}

TEST_F(BackupCommands, aHostileFileIsRefusedAndChangesNothing) {
  add({"Aspirin"});
  run(here({"backup", "create"}));
  const Json before = json(here({"settings"}));
  const std::string whole = read(local(kName));
  write(local("half.json"), whole.substr(0, whole.size() / 2));
  write(local("empty.json"), "");
  std::filesystem::create_directory(local("folder.json"));
  ASSERT_EQ(mkfifo(local("pipe.json").c_str(), 0600), 0);
  {
    std::ofstream large(local("large.json"));
    large.seekp(100'000'000);
    large << ' ';
  }
  for (const std::string name : {"half.json", "empty.json", "folder.json", "pipe.json", "large.json", "absent.json"}) {
    const Called called = run(here({"backup", "restore", name}));
    EXPECT_TRUE(called.failedWith(kRefused)) << name << ' ' << called.status;
  }
  EXPECT_EQ(json(here({"settings"})), before);
}

TEST_F(BackupCommands, deleteRemovesOneListedBackup) {
  run(here({"backup", "create"}));
  write(local("other.json"), "");
  write(local("notes.txt"), "");
  EXPECT_EQ(json(here({"backup", "delete", kName})), Json::object({{"path", local(kName)}}));
  EXPECT_FALSE(std::filesystem::exists(local(kName)));
  EXPECT_TRUE(std::filesystem::exists(local("other.json")));
  EXPECT_TRUE(run(here({"backup", "delete", kName})).failedWith(kRefused)) << "gone already";
  EXPECT_TRUE(run(here({"backup", "delete", local("notes.txt")})).failedWith(kRefused));
  EXPECT_TRUE(std::filesystem::exists(local("notes.txt")));
  EXPECT_EQ(run(here({"backup", "delete", local("other.json")})).out, "Deleted: " + local("other.json") + "\n");
}

TEST_F(BackupCommands, aNameInBothFoldersNeedsItsPath) {
  run(here({"backup", "create"}));
  run(here({"backup", "create", "--cloud"}));
  EXPECT_TRUE(run(here({"backup", "restore", kName})).failedWith(kRefused));
  EXPECT_TRUE(run(here({"backup", "delete", kName})).failedWith(kRefused));
  EXPECT_EQ(run(here({"backup", "delete", local(kName)})).status, kDone);
  EXPECT_EQ(run(here({"backup", "delete", kName})).status, kDone);
}

TEST_F(BackupCommands, wrongUsage) {
  for (const Words& words : std::vector<Words>{{"backup"},
                                               {"backup", "make"},
                                               {"backup", "create", "x.json"},
                                               {"backup", "list", "x.json"},
                                               {"backup", "list", "--cloud"},
                                               {"backup", "restore"},
                                               {"backup", "restore", ""},
                                               {"backup", "restore", "--cloud", "x.json"},
                                               {"backup", "delete"},
                                               {"backup", "delete", "a.json", "b.json"}}) {
    EXPECT_TRUE(run(words).failedWith(kWrongUsage)) << words.back();
  }
  EXPECT_FALSE(std::filesystem::exists(store));
}

TEST_F(BackupCommands, aLockedAppGivesNoBackup) {
  run(here({"settings", "set", "requireAuthentication", "yes"}));
  EXPECT_EQ(run(here({"backup", "create"})).status, kLocked);
  EXPECT_EQ(run(here({"backup", "list"})).status, kLocked);
  EXPECT_FALSE(std::filesystem::exists(folder.file("documents")));
  EXPECT_EQ(run(here({"--authenticator", "allow", "backup", "create"})).status, kDone);
}

TEST_F(BackupCommands, aFolderThatCannotBeListedIsAnError) {
  write(folder.file("documents/Backups"), "no folder");
  const Called called = run(here({"backup", "list"}));
  EXPECT_EQ(called.status, kRefused);
  EXPECT_EQ(called.out, "");
  ASSERT_EQ(called.lines.size(), 2u);
  EXPECT_TRUE(called.lines[0].starts_with("Error loading backups: "));
  EXPECT_TRUE(called.lines[1].starts_with("pilloractl: "));
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "agent/ReminderFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

constexpr std::chrono::milliseconds kNoPatience{0};

class ReminderFileTest : public ::testing::Test {
 protected:
  static unsigned modeOf(const std::string& path) {
    struct stat found {};
    return stat(path.c_str(), &found) == 0 ? found.st_mode & 0777U : 0;
  }
  static std::string bytesOf(const std::string& path) {
    std::stringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
  }
  std::string refusal() const {
    const auto file = ReminderFile::open(path, kNoPatience);
    return file ? "" : file.error().description;
  }

  TemporaryFolder folder;
  std::string path = folder.path() + "/state/pillora/reminders.db";
};

TEST_F(ReminderFileTest, foldersAreForTheOwnerAloneAndSoIsTheFile) {
  const mode_t mask = umask(0);
  const auto file = ReminderFile::open(path);
  umask(mask);
  ASSERT_TRUE(file) << file.error().description;
  EXPECT_EQ(modeOf(folder.path() + "/state"), 0700u);
  EXPECT_EQ(modeOf(folder.path() + "/state/pillora"), 0700u);
  for (const char* suffix : {"", "-wal", ".lock"}) EXPECT_EQ(modeOf(path + suffix), 0600u) << suffix;
}

TEST_F(ReminderFileTest, writesToTheDiskAtEveryCommit) {
  const auto file = ReminderFile::open(path);
  ASSERT_TRUE(file);
  EXPECT_EQ((*file)->database().execAndGet("PRAGMA journal_mode").getString(), "wal");
  EXPECT_EQ((*file)->database().execAndGet("PRAGMA synchronous").getInt(), 2);
  EXPECT_EQ((*file)->database().execAndGet("PRAGMA user_version").getInt(), 1);
}

TEST_F(ReminderFileTest, hasOneOwnerAtATime) {
  auto first = ReminderFile::open(path);
  ASSERT_TRUE(first);
  EXPECT_NE(refusal().find("in use by another program"), std::string::npos);
  *first = nullptr;
  EXPECT_EQ(refusal(), "");
}

TEST_F(ReminderFileTest, valuesAreKept) {
  {
    const auto file = ReminderFile::open(path);
    ASSERT_TRUE(file);
    EXPECT_EQ((*file)->value("badge"), std::nullopt);
    (*file)->setValue("badge", "1");
    (*file)->setValue("badge", "2");
  }
  const auto file = ReminderFile::open(path);
  ASSERT_TRUE(file);
  EXPECT_EQ((*file)->value("badge"), "2");
}

TEST_F(ReminderFileTest, aNewerFileIsRefusedAndLeftAsItIs) {
  {
    const auto file = ReminderFile::open(path);
    ASSERT_TRUE(file);
    (*file)->database().exec("PRAGMA user_version=2");
  }
  const std::string before = bytesOf(path);
  EXPECT_NE(refusal().find("newer version"), std::string::npos);
  EXPECT_EQ(bytesOf(path), before);
}

TEST_F(ReminderFileTest, whatIsNoReminderFileIsRefusedAndLeftAsItIs) {
  std::filesystem::create_directories(folder.path() + "/state/pillora");
  const std::string text = "these are notes, not reminders, and long enough to be taken for a file's first page";
  std::ofstream(path) << text;
  EXPECT_NE(refusal(), "");
  EXPECT_EQ(bytesOf(path), text);
}

TEST_F(ReminderFileTest, linksAndOddFilesAreRefused) {
  const std::string parent = folder.path() + "/state/pillora";
  std::filesystem::create_directories(parent);
  std::filesystem::create_symlink(folder.path() + "/elsewhere", path);
  EXPECT_NE(refusal(), "");
  EXPECT_FALSE(std::filesystem::exists(folder.path() + "/elsewhere"));
  std::filesystem::remove(path);
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_NE(refusal(), "");
}

}  // namespace
}  // namespace pillora

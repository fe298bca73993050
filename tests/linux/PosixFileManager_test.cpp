// SPDX-License-Identifier: MIT
#include "linux/PosixFileManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "doubles/InMemoryFileManager.h"
#include "doubles/TemporaryFolder.h"
#include "linux/SystemClock.h"

namespace pillora {
namespace {

namespace fs = std::filesystem;

struct RealFiles {
  TemporaryFolder root;
  PosixFileManager manager{[this] { return root.file("documents"); }, [] { return std::nullopt; }};
};

struct DoubledFiles {
  DoubledFiles() { manager.cloud = std::nullopt; }
  SystemClock clock;
  InMemoryFileManager manager{clock};
};

/// What backups are built on, of the real files and of the double alike.
template <typename Files>
class FileManagers : public testing::Test {
 protected:
  Files files_;
  FileManager& manager_ = files_.manager;
  std::string documents_ = *manager_.documentDirectory();
  std::string folder_ = documents_ + "/Backups";
  std::string file_ = folder_ + "/a.json";
};
using BothKinds = testing::Types<RealFiles, DoubledFiles>;
TYPED_TEST_SUITE(FileManagers, BothKinds);

TYPED_TEST(FileManagers, aFolderIsMadeWithThoseThatLeadToItAndMayBeThereAlready) {
  EXPECT_FALSE(this->manager_.fileExists(this->folder_));
  ASSERT_TRUE(this->manager_.createDirectory(this->folder_));
  EXPECT_TRUE(this->manager_.fileExists(this->documents_));
  EXPECT_TRUE(this->manager_.fileExists(this->folder_));
  EXPECT_TRUE(this->manager_.createDirectory(this->folder_));
}

TYPED_TEST(FileManagers, whatIsWrittenIsReadAndReplacesWhatWasThere) {
  ASSERT_TRUE(this->manager_.createDirectory(this->folder_));
  for (const std::string& text : {std::string("a longer text\0\n", 15), std::string("short"), std::string()}) {
    ASSERT_TRUE(this->manager_.write(this->file_, text));
    const auto read = this->manager_.contents(this->file_);
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, text);
    const auto attributes = this->manager_.attributesOfItem(this->file_);
    ASSERT_TRUE(attributes);
    EXPECT_EQ(attributes->size, static_cast<int64_t>(text.size()));
  }
}

TYPED_TEST(FileManagers, aFolderListsWhatLiesInItAndNothingHidden) {
  ASSERT_TRUE(this->manager_.createDirectory(this->folder_ + "/folder.json"));
  for (const char* name : {"/a.json", "/notes.txt", "/.hidden.json", "/folder.json/deeper"}) {
    ASSERT_TRUE(this->manager_.write(this->folder_ + name, "x"));
  }
  auto paths = this->manager_.contentsOfDirectory(this->folder_);
  ASSERT_TRUE(paths);
  std::sort(paths->begin(), paths->end());
  EXPECT_EQ(*paths,
            (std::vector{this->folder_ + "/a.json", this->folder_ + "/folder.json", this->folder_ + "/notes.txt"}));
}

TYPED_TEST(FileManagers, oneFileIsRemovedAndAFolderIsNot) {
  ASSERT_TRUE(this->manager_.createDirectory(this->folder_));
  ASSERT_TRUE(this->manager_.write(this->file_, "x"));
  ASSERT_TRUE(this->manager_.write(this->folder_ + "/b.json", "x"));
  ASSERT_TRUE(this->manager_.removeItem(this->file_));
  EXPECT_FALSE(this->manager_.fileExists(this->file_));
  EXPECT_FALSE(this->manager_.removeItem(this->file_)) << "it is gone";
  EXPECT_FALSE(this->manager_.removeItem(this->folder_));
  EXPECT_TRUE(this->manager_.fileExists(this->folder_ + "/b.json"));
}

TYPED_TEST(FileManagers, whatIsNotThereIsAnErrorThatNamesIt) {
  const std::string missing = this->folder_ + "/missing.json";
  EXPECT_NE(this->manager_.contents(missing).error().description.find(missing), std::string::npos);
  EXPECT_NE(this->manager_.attributesOfItem(missing).error().description.find(missing), std::string::npos);
  EXPECT_FALSE(this->manager_.fileExists(missing));
}

class PosixFiles : public testing::Test {
 protected:
  std::string readError(const std::string& path) {
    const auto read = manager_.contents(path);
    return read ? "read " + std::to_string(read->size()) + " bytes" : read.error().description;
  }
  void makeSparse(const std::string& path, off_t size) {
    std::ofstream(path).close();
    ASSERT_EQ(truncate(path.c_str(), size), 0);
  }
  std::string onDisk(const std::string& name) const { return folder_.contents().at(name); }

  TemporaryFolder folder_;
  std::string file_ = folder_.file("a.json");
  PosixFileManager manager_{[] { return std::nullopt; }, [] { return std::nullopt; }};
};

TEST_F(PosixFiles, foldersAndFilesAreTheirOwnersAlone) {
  const mode_t before = umask(0);
  ASSERT_TRUE(manager_.createDirectory(folder_.file("Backups")));
  ASSERT_TRUE(manager_.write(folder_.file("Backups/a.json"), "x"));
  umask(before);
  EXPECT_EQ(fs::status(folder_.file("Backups")).permissions(), fs::perms(0700));
  EXPECT_EQ(fs::status(folder_.file("Backups/a.json")).permissions(), fs::perms(0600));
}

TEST_F(PosixFiles, onlyRegularFilesAreRead) {
  fs::create_directory(folder_.file("folder.json"));
  ASSERT_EQ(mkfifo(folder_.file("pipe.json").c_str(), 0600), 0);
  fs::create_symlink("loop.json", folder_.file("loop.json"));
  std::ofstream(file_) << "x";
  const auto refused = [&](const std::string& path, const std::string& why) {
    EXPECT_EQ(readError(path), "The file " + path + " cannot be read: " + why);
  };
  refused(folder_.file("folder.json"), "It is a folder");
  refused(folder_.file("pipe.json"), "It is not a regular file");
  refused("/dev/zero", "It is not a regular file");
  refused(folder_.file("loop.json"), "It is a link");
  refused(folder_.file("missing.json"), "No such file or directory");
  refused(file_ + "/below", "Not a directory");
}

TEST_F(PosixFiles, aLinkToAFileIsRead) {
  ASSERT_TRUE(manager_.write(file_, "x"));
  fs::create_symlink("a.json", folder_.file("link.json"));
  EXPECT_EQ(readError(folder_.file("link.json")), "read 1 bytes");
}

TEST_F(PosixFiles, filesOfMoreThan64MiBAreRefusedUnread) {
  makeSparse(file_, static_cast<off_t>(kLargestFile));
  EXPECT_EQ(readError(file_), "read 67108864 bytes");
  for (const off_t size : {off_t{67'108'865}, off_t{100'000'000}, off_t{1} << 40}) {
    makeSparse(file_, size);
    EXPECT_EQ(readError(file_), "The file " + file_ + " cannot be read: It is larger than 64 MiB") << size;
  }
}

TEST_F(PosixFiles, nothingIsWrittenThroughALink) {
  std::ofstream(file_) << "precious";
  for (const char* target : {"a.json", "new.json"}) {
    const std::string link = folder_.file("link.json");
    fs::create_symlink(target, link);
    const auto written = manager_.write(link, "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().description, "The file " + link + " cannot be written: It is a link");
    fs::remove(link);
  }
  EXPECT_EQ(onDisk("a.json"), "precious");
  EXPECT_FALSE(fs::exists(folder_.file("new.json")));
}

TEST_F(PosixFiles, whatIsNoRegularFileIsNotWritten) {
  ASSERT_EQ(mkfifo(folder_.file("pipe.json").c_str(), 0600), 0);
  EXPECT_FALSE(manager_.write(folder_.file("pipe.json"), "x")) << "nobody reads it";
  const int reader = open(folder_.file("pipe.json").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  EXPECT_FALSE(manager_.write(folder_.file("pipe.json"), "x"));
  close(reader);
  EXPECT_FALSE(manager_.write("/dev/full", "x"));
  EXPECT_FALSE(manager_.write(folder_.path(), "x"));
  EXPECT_FALSE(manager_.write(folder_.file("missing/a.json"), "x"));
}

/// No file of this process may grow beyond `bytes` while this lives: the disk is as good as full.
class LargestFile {
 public:
  explicit LargestFile(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~LargestFile() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, signal_);
  }
  LargestFile(const LargestFile&) = delete;
  LargestFile& operator=(const LargestFile&) = delete;

 private:
  rlimit before_{};
  void (*signal_)(int);
};

TEST_F(PosixFiles, aWriteThatDoesNotFitIsAnErrorAndLeavesItsBeginning) {
  Result<void> written;
  {
    const LargestFile limit(4096);
    written = manager_.write(file_, std::string(10'000, 'x'));
  }
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error().description, "The file " + file_ + " cannot be written: File too large");
  EXPECT_EQ(onDisk("a.json"), std::string(4096, 'x'));
}

TEST_F(PosixFiles, aFileIsAsOldAsItsBirth) {
  ASSERT_TRUE(manager_.write(file_, "x"));
  // A change of contents or of the other times makes a file no younger and no older.
  const timespec early[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, file_.c_str(), early, 0), 0);
  struct statx status {};
  ASSERT_EQ(statx(AT_FDCWD, file_.c_str(), 0, STATX_BTIME, &status), 0);
  const auto attributes = manager_.attributesOfItem(file_);
  ASSERT_TRUE(attributes);
  ASSERT_EQ(attributes->creationDate.has_value(), (status.stx_mask & STATX_BTIME) != 0);
  if (!attributes->creationDate) return;
  EXPECT_EQ(attributes->creationDate->microseconds(),
            int64_t{status.stx_btime.tv_sec} * 1'000'000 + status.stx_btime.tv_nsec / 1000);
  EXPECT_GT(*attributes->creationDate, Instant::fromSeconds(1'000'000'000));
}

TEST_F(PosixFiles, aLinkIsDescribedItself) {
  fs::create_symlink("nowhere", file_);
  const auto attributes = manager_.attributesOfItem(file_);
  ASSERT_TRUE(attributes) << "one dangling link does not hide the files beside it";
  EXPECT_EQ(attributes->size, 7);
  EXPECT_FALSE(manager_.fileExists(file_));
  ASSERT_TRUE(manager_.removeItem(file_));
}

TEST_F(PosixFiles, aFolderThatCannotBeListedIsAnErrorThatNamesIt) {
  std::ofstream(file_) << "x";
  for (const std::string& path : {file_, folder_.file("missing")}) {
    const auto listed = manager_.contentsOfDirectory(path);
    ASSERT_FALSE(listed);
    EXPECT_TRUE(listed.error().description.starts_with("The folder " + path + " cannot be read: "));
  }
  EXPECT_FALSE(manager_.createDirectory(file_)) << "a file is in the way";
}

TEST_F(PosixFiles, aFolderIsNotDeletedWithItsContents) {
  const auto removed = manager_.removeItem(folder_.path());
  ASSERT_FALSE(removed);
  EXPECT_EQ(removed.error().description, "The file " + folder_.path() + " cannot be deleted: It is a folder");
}

}  // namespace
}  // namespace pillora

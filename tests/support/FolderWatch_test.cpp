// SPDX-License-Identifier: MIT
#include "support/FolderWatch.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <poll.h>

#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

class FolderWatchTest : public testing::Test {
 protected:
  FolderWatchTest() { watch_ = *FolderWatch::open(folder_.path()); }
  void write(const std::string& name) { std::ofstream(folder_.file(name), std::ios::app) << "x"; }
  bool isReadable() const {
    pollfd polled{watch_->descriptor(), POLLIN, 0};
    return poll(&polled, 1, 0) == 1;
  }

  TemporaryFolder folder_;
  std::unique_ptr<FolderWatch> watch_;
};

TEST_F(FolderWatchTest, nothingHappenedAtFirst) {
  EXPECT_FALSE(isReadable());
  EXPECT_FALSE(watch_->takeChanges({"store"}));
}

TEST_F(FolderWatchTest, aFileThatIsMadeWrittenOrReplacedIsNoticedOnce) {
  const auto expectNoticedOnce = [this](const char* what) {
    EXPECT_TRUE(isReadable()) << what;
    EXPECT_TRUE(watch_->takeChanges({"store", "store-wal"})) << what;
    EXPECT_FALSE(isReadable()) << what;
    EXPECT_FALSE(watch_->takeChanges({"store", "store-wal"})) << what;
  };
  write("store-wal");
  expectNoticedOnce("made");
  write("store-wal");
  expectNoticedOnce("written");
  write("other");
  EXPECT_FALSE(watch_->takeChanges({"store", "store-wal"}));
  std::filesystem::rename(folder_.file("other"), folder_.file("store"));
  expectNoticedOnce("replaced");
}

TEST_F(FolderWatchTest, otherNamesAreReadAndLeftAlone) {
  write("store-shm");
  write("store2");
  EXPECT_TRUE(isReadable());
  EXPECT_FALSE(watch_->takeChanges({"store"}));
  EXPECT_FALSE(isReadable());
}

TEST_F(FolderWatchTest, manyChangesAreOne) {
  for (int i = 0; i < 2000; ++i) write(i % 2 == 0 ? "store" : "other");
  EXPECT_TRUE(watch_->takeChanges({"store"}));
  EXPECT_FALSE(watch_->takeChanges({"store"}));
}

TEST(FolderWatch, aFolderThatIsNotThereIsAnErrorThatNamesIt) {
  const TemporaryFolder folder;
  const auto watch = FolderWatch::open(folder.file("gone"));
  ASSERT_FALSE(watch);
  EXPECT_EQ(watch.error().description, folder.file("gone") + " cannot be watched: No such file or directory");
}

}  // namespace
}  // namespace pillora

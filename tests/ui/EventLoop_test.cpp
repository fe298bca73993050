// SPDX-License-Identifier: MIT
#include "ui/EventLoop.h"

#include <gtest/gtest.h>

#include <QTest>
#include <csignal>
#include <filesystem>
#include <fstream>

#include "doubles/Instants.h"
#include "doubles/ScopedVariable.h"
#include "doubles/TemporaryFolder.h"
#include "icu/SystemRegion.h"

namespace pillora {
namespace {

TEST(FolderNotifier, tellsOfTheNamesThatItWasGivenAlone) {
  const TemporaryFolder folder;
  int calls = 0;
  const FolderNotifier notifier(folder.path(), {"store", "store-wal"}, [&] { ++calls; });
  std::ofstream(folder.file("other")) << "x";
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 0);
  std::ofstream(folder.file("store-wal")) << "x";
  EXPECT_TRUE(QTest::qWaitFor([&] { return calls == 1; }));
}

TEST(FolderNotifier, nothingComesOfAFolderThatIsMissing) {
  int calls = 0;
  const FolderNotifier notifier("/nonexistent/folder", {"store"}, [&] { ++calls; });
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 0);
}

TEST(FolderNotifier, letsTheRegionFollowWhoTravels) {
  const TemporaryFolder etc;
  const ScopedVariable zone("TZ", std::nullopt), locale("LC_ALL", "en_US.UTF-8");
  const auto travelTo = [&](const std::string& name) {
    std::filesystem::create_symlink("/usr/share/zoneinfo/" + name, etc.file("new"));
    std::filesystem::rename(etc.file("new"), etc.file("localtime"));
  };
  travelTo("Europe/Berlin");
  const auto region = *SystemRegion::open("en", {}, etc.path());
  const Instant noon = at("2025-01-10T12:00:00Z");
  EXPECT_EQ(region->texts().shortTime(noon, true), "13:00");
  bool isElsewhere = false;
  const FolderNotifier notifier(etc.path(), {"localtime"}, [&] { isElsewhere = region->refresh(); });
  travelTo("Asia/Tokyo");
  ASSERT_TRUE(QTest::qWaitFor([&] { return isElsewhere; }));
  EXPECT_EQ(region->texts().shortTime(noon, true), "21:00");
  EXPECT_EQ(region->calendar().components(noon).hour, 21);
}

TEST(TerminationNotifier, tellsFromTheLoopAndLeavesTheSignalAsItWas) {
  for (const int signal : {SIGTERM, SIGINT}) {
    int calls = 0;
    {
      const TerminationNotifier notifier([&] { ++calls; });
      raise(signal);
      EXPECT_EQ(calls, 0);
      EXPECT_TRUE(QTest::qWaitFor([&] { return calls == 1; }));
      raise(signal);
      EXPECT_TRUE(QTest::qWaitFor([&] { return calls == 2; }));
    }
    EXPECT_EQ(std::signal(signal, SIG_DFL), SIG_DFL);
  }
}

}  // namespace
}  // namespace pillora

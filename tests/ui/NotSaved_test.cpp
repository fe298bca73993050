// SPDX-License-Identifier: MIT
// What a person is told, and may do, while the disk does not take what they record.
#include <sqlite3.h>

#include "doubles/FailingVfs.h"
#include "doubles/TemporaryFolder.h"
#include "ui/WindowTest.h"

namespace pillora {
namespace {

/// Made before the store that lies in it.
struct StoreFolder {
  TemporaryFolder folder;
};

class NotSaved : private StoreFolder, public WindowTest {
 protected:
  NotSaved() : WindowTest({.path = folder.file("Pillora.store"), .vfsName = failingVfs::name()}) {}
  ~NotSaved() override { failingVfs::heal(); }

  /// The doses that another program finds in the file.
  size_t dosesInTheFile() {
    QueuedMainExecutor other;
    const auto store = valueOrAbort(ModelContainer::open({.path = folder.file("Pillora.store")}, other));
    return store->mainContext().fetch<DoseLog>()->size();
  }
};

TEST_F(NotSaved, aDoseTakenOnAFullDiskIsToldAndSavedAtTheNextTry) {
  add("Aspirin", {{8, 0}});
  open();
  failingVfs::failAt(1, SQLITE_FULL, true);
  tap("Aspirin");
  tap("Take");
  EXPECT_TRUE(shows("All done for today!"));
  EXPECT_EQ(dosesInTheFile(), 0U);
  key(Qt::Key_5, Qt::ControlModifier);
  EXPECT_EQ(headings("Not Saved"), 1);
  QQuickItem* const mark = seek("name", "exclamationmark.triangle.fill");
  ASSERT_NE(mark, nullptr);
  EXPECT_GE(mark->mapToScene({0, 0}).x(), 32) << "beside its card";
  EXPECT_LE(mark->mapToScene({mark->width(), 0}).x(), window_->width() - 32) << "beside its card";
  tap("Try Again");
  EXPECT_EQ(headings("Not Saved"), 1);
  failingVfs::heal();
  tap("Try Again");
  EXPECT_EQ(headings("Not Saved"), 0);
  EXPECT_EQ(dosesInTheFile(), 1U);
}

TEST_F(NotSaved, aDoseThatCannotBeLookedUpStaysOpen) {
  add("Aspirin", {{8, 0}});
  open();
  tap("Aspirin");
  failingVfs::refuseWriteLock();
  tap("Take");
  EXPECT_TRUE(has("Take"));
  failingVfs::heal();
  tap("Take");
  EXPECT_FALSE(has("Take"));
  EXPECT_EQ(dosesInTheFile(), 1U);
}

}  // namespace
}  // namespace pillora

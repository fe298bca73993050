// SPDX-License-Identifier: MIT
// The tests of the window run without a display and draw in memory.
#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  const QGuiApplication application(count, arguments);
  return RUN_ALL_TESTS();
}

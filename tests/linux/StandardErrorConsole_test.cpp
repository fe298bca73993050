// SPDX-License-Identifier: MIT
#include "linux/StandardErrorConsole.h"

#include <gtest/gtest.h>

namespace pillora {
namespace {

TEST(StandardErrorConsole, eachLineIsOneLine) {
  StandardErrorConsole console;
  testing::internal::CaptureStderr();
  console.print("Error: no\nsuch\r\nfile");
  console.print("");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: no such  file\n\n");
}

}  // namespace
}  // namespace pillora

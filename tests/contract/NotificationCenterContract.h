// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/UNUserNotificationCenter.h"

namespace pillora {

/// What the suite needs of a notification centre under test. It is 2025-01-10T12:00:00Z in the zone UTC.
class CenterUnderTest {
 public:
  virtual ~CenterUnderTest() = default;

  virtual UNUserNotificationCenter& center() = 0;
  /// Ends the turn and returns when every completion has come.
  virtual void settle() = 0;
};

/// What every notification centre keeps to: the double, the one inside a program, and the agent's over a bus. A
/// program instantiates it with a factory for each of its centres and links NotificationCenterContract.cpp.
class NotificationCenterContract : public ::testing::TestWithParam<std::unique_ptr<CenterUnderTest> (*)()> {
 protected:
  void SetUp() override { subject = GetParam()(); }

  UNUserNotificationCenter& center() { return subject->center(); }
  std::vector<UNNotificationRequest> pending();
  std::vector<UNNotificationCategory> categories();
  int64_t badge();

  std::unique_ptr<CenterUnderTest> subject;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "agent/Identifiers.h"

#include <gtest/gtest.h>

#include "doubles/Requests.h"

namespace pillora {
namespace {

TEST(Identifiers, aMedicineIsTheIdentifierBeforeTheDueTime) {
  EXPECT_EQ(medicineOf(kAspirin + "-1736514000.0"), kAspirin);
  EXPECT_EQ(medicineOf(kAspirin + "-1736514000.0-followup-3"), kAspirin);
  EXPECT_EQ(medicineOf(kAspirin), kAspirin);
  EXPECT_EQ(medicineOf("refill"), "refill");
  EXPECT_EQ(medicineOf(""), "");
  const std::string noUuid = "ZZ9619FF-8B86-D011-B42D-00CF4FC964FF-1736514000.0";
  EXPECT_EQ(medicineOf(noUuid), noUuid);
}

TEST(Identifiers, aDoseIsTheIdentifierWithoutTheFollowUp) {
  EXPECT_EQ(doseOf("A-1.0"), "A-1.0");
  EXPECT_EQ(doseOf("A-1.0-followup-12"), "A-1.0");
  EXPECT_EQ(doseOf("A-1.0-followup-"), "A-1.0-followup-");
  EXPECT_EQ(doseOf("A-1.0-followup-x"), "A-1.0-followup-x");
  EXPECT_EQ(doseOf("-followup-1"), "");
}

}  // namespace
}  // namespace pillora

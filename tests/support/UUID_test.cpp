// SPDX-License-Identifier: MIT
#include "support/UUID.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>
#include <set>
#include <string>

namespace pillora {
namespace {

TEST(UUID, readsEitherCaseAndWritesUpperCase) {
  const char* const kUpper = "6F9619FF-8B86-D011-B42D-00CF4FC964FF";
  for (const char* text : {kUpper, "6f9619ff-8b86-d011-b42d-00cf4fc964ff", "6f9619FF-8b86-D011-b42d-00CF4fc964ff"}) {
    const auto id = UUID::parse(text);
    ASSERT_TRUE(id) << text;
    EXPECT_EQ(id->text(), kUpper);
  }
}

TEST(UUID, refusesEveryOtherShape) {
  for (const char* text : {"", "6F9619FF8B86D011B42D00CF4FC964FF", "{6F9619FF-8B86-D011-B42D-00CF4FC964FF}",
                           "6F9619FF-8B86-D011-B42D-00CF4FC964F", "6F9619FF-8B86-D011-B42D-00CF4FC964FF0",
                           "6F9619FF-8B86-D011-B42D-00CF4FC964FG", "6F9619FF-8B86-D011-B42D-00CF4FC964F-",
                           "6F9619FF-8B86-D011B-42D-00CF4FC964FF", "6F9619FF 8B86 D011 B42D 00CF4FC964FF",
                           " F9619FF-8B86-D011-B42D-00CF4FC964FF", "6F9619FF-8B86-D011-B42D-00CF4FC964F\n",
                           "urn:uuid:6F9619FF-8B86-D011-B42D-00CF4FC9"}) {
    EXPECT_FALSE(UUID::parse(text)) << text;
  }
}

TEST(UUID, newOnesAreOfVersionFourAndDiffer) {
  std::set<UUID> seen;
  for (int i = 0; i < 1000; ++i) {
    const UUID id = UUID::random();
    const std::string text = id.text();
    EXPECT_EQ(text[14], '4') << text;
    EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
    EXPECT_TRUE(seen.insert(id).second) << text;
  }
}

TEST(UUID, ordersAndHashesByItsBytes) {
  const auto low = *UUID::parse("00000000-0000-0000-0000-0000000000FF");
  const auto high = *UUID::parse("00000000-0000-0001-0000-000000000000");
  EXPECT_LT(low, high);
  EXPECT_NE(std::hash<UUID>()(low), std::hash<UUID>()(high));
  EXPECT_EQ(std::hash<UUID>()(low), std::hash<UUID>()(*UUID::parse(low.text())));
}

RC_GTEST_PROP(UUID, readsBackWhatItWrites, ()) {
  UUID id;
  for (uint8_t& byte : id.bytes) byte = *rc::gen::arbitrary<uint8_t>();
  RC_ASSERT(UUID::parse(id.text()) == std::optional(id));
}

}  // namespace
}  // namespace pillora

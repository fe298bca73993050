// SPDX-License-Identifier: MIT
#include "agent/RequestJson.h"

#include <gtest/gtest.h>

#include <limits>

#include "doubles/Requests.h"

namespace pillora {
namespace {

TEST(RequestJson, isReadBackEqual) {
  UNNotificationRequest full = request(kAspirin + "-1736514000.25", "2025-01-10T08:00");
  full.content.title = "„Ünï\n\"\\ <b>";
  full.content.badge = std::nullopt;
  full.content.userInfo = {{"text", "1"}, {"flag", false},         {"whole", int64_t{5}},
                           {"real", 5.0}, {"time", 1736514000.25}, {"least", std::numeric_limits<int64_t>::min()}};
  full.trigger.dateComponents = {std::optional<int64_t>(235), 4722, 6, true, 30, 8, 0, 0};
  full.trigger.calendar = "chinese";
  const auto text = storedText(full);
  ASSERT_TRUE(text) << text.error().description;
  const auto back = storedRequest(*text);
  ASSERT_TRUE(back) << back.error().description;
  EXPECT_EQ(*back, full);
}

TEST(RequestJson, categoriesAreReadBackEqual) {
  const std::vector<UNNotificationCategory> categories = {reminderCategory(), {"EMPTY", {}}};
  const auto text = storedText(categories);
  ASSERT_TRUE(text);
  EXPECT_EQ(*storedCategories(*text), categories);
  EXPECT_TRUE(storedCategories(*storedText(std::vector<UNNotificationCategory>()))->empty());
}

TEST(RequestJson, refusesWhatCannotBeKeptOrSent) {
  const UNNotificationRequest good = request("A", "2025-01-10T08:00");
  const auto refused = [&](auto change) {
    UNNotificationRequest changed = good;
    change(changed);
    return !storedText(changed);
  };
  EXPECT_FALSE(refused([](auto&) {}));
  EXPECT_TRUE(refused([](auto& r) { r.content.title = "\xFF"; }));
  EXPECT_TRUE(refused([](auto& r) { r.content.body = std::string("a\0b", 3); }));
  EXPECT_TRUE(refused([](auto& r) { r.content.userInfo[0].first = "\xC3"; }));
  EXPECT_TRUE(refused([](auto& r) { r.content.userInfo[0].second = std::numeric_limits<double>::infinity(); }));
  EXPECT_TRUE(refused([](auto& r) { r.content.body = std::string(65 * 1024, 'x'); }));
}

TEST(RequestJson, whatIsNoneOfOursIsAnError) {
  for (const char* text : {"", "null", "[]", "{}", R"({"identifier":1})", R"({"identifier":"A","title":"t"})"}) {
    EXPECT_FALSE(storedRequest(text)) << text;
  }
  EXPECT_FALSE(storedCategories(R"([{"identifier":"A"}])"));
}

}  // namespace
}  // namespace pillora

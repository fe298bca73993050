// SPDX-License-Identifier: MIT
#include "support/Fields.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "doubles/Instants.h"
#include "support/Json.h"

namespace pillora {
namespace {

struct Badge {
  std::string label;
  int64_t count = 0;
  static constexpr auto fields() { return std::tuple(field("label", &Badge::label), field("count", &Badge::count)); }
};

struct Row {
  bool isOpen = false;
  double share = 0;
  int places = 0;
  Instant due;
  UUID id;
  std::optional<std::string> note;
  std::vector<Badge> badges;
  static constexpr auto fields() {
    return std::tuple(field("isOpen", &Row::isOpen), field("share", &Row::share), field("places", &Row::places),
                      field("due", &Row::due), field("id", &Row::id), field("note", &Row::note),
                      field("badges", &Row::badges));
  }
};

TEST(Fields, areVisitedInTheirOrder) {
  std::vector<std::string> names;
  forEachField<Row>([&](std::string_view name, auto) { names.emplace_back(name); });
  EXPECT_EQ(names, (std::vector<std::string>{"isOpen", "share", "places", "due", "id", "note", "badges"}));
}

TEST(Fields, becomeJsonMembersInTheirOrderWithAbsentValuesAsNull) {
  Row row;
  row.isOpen = true;
  row.share = 0.5;
  row.places = 3;
  row.due = at("2025-01-10T10:30:00.25Z");
  row.id = *UUID::parse("6f9619ff-8b86-d011-b42d-00cf4fc964ff");
  row.badges = {{"Taken", 2}, {"", -1}};
  EXPECT_EQ(toJson(row).dump(), R"({"isOpen":true,"share":0.5,"places":3,"due":"2025-01-10T10:30:00.25Z",)"
                                R"("id":"6F9619FF-8B86-D011-B42D-00CF4FC964FF","note":null,)"
                                R"("badges":[{"label":"Taken","count":2},{"label":"","count":-1}]})");
  row.note = "with food";
  EXPECT_EQ(toJson(row)["note"].get<std::string>(), "with food");
}

}  // namespace
}  // namespace pillora

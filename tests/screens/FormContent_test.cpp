// SPDX-License-Identifier: MIT
#include "screens/FormContent.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/Json.h"

namespace pillora {
namespace {

constexpr int64_t kFarthest = std::numeric_limits<int64_t>::max();

TEST(FormContent, aStepThatWouldLeaveTheRangeIsNotTaken) {
  struct Case {
    Stepper stepper;
    int64_t value;
    std::optional<int64_t> below, above;
  };
  for (const auto& [stepper, value, below, above] : {
           Case{{1, 24, 1}, 4, 3, 5},
           Case{{1, 24, 1}, 1, std::nullopt, 2},
           Case{{1, 24, 1}, 24, 23, std::nullopt},
           Case{{0, 59, 5}, 0, std::nullopt, 5},
           Case{{0, 59, 5}, 55, 50, std::nullopt},
           Case{{0, 59, 5}, 3, std::nullopt, 8},
           Case{{0, 59, 5}, 57, 52, std::nullopt},
           Case{{7, 7, 1}, 7, std::nullopt, std::nullopt},
       }) {
    EXPECT_EQ(stepper.below(value), below) << value;
    EXPECT_EQ(stepper.above(value), above) << value;
  }
}

TEST(FormContent, aValueOutsideTheRangeGoesBackToItsNearerEndAndNoFarther) {
  struct Case {
    Stepper stepper;
    int64_t value;
    std::optional<int64_t> below, above;
  };
  for (const auto& [stepper, value, below, above] : {
           Case{{1, 60, 1}, 1000, 60, std::nullopt},
           Case{{1, 60, 1}, 61, 60, std::nullopt},
           Case{{1, 60, 1}, 0, std::nullopt, 1},
           Case{{1, 60, 1}, -1000, std::nullopt, 1},
           Case{{0, 59, 5}, 59 + 5, 55, std::nullopt},
           Case{{1, 60, 1}, kFarthest, 60, std::nullopt},
           Case{{1, 60, 1}, -kFarthest - 1, std::nullopt, 1},
       }) {
    EXPECT_EQ(stepper.below(value), below) << value;
    EXPECT_EQ(stepper.above(value), above) << value;
  }
}

TEST(FormContent, aStepperRowTellsWhichOfItsButtonsAreEnabled) {
  const auto row = stepperRow("count", "Count: 1", 1, {1, 10, 1});
  EXPECT_EQ(toJson(FormRow(row)),
            *parseJson(R"({"kind":"stepper","id":"count","label":"Count: 1","value":1,"least":1,"most":10,"step":1,)"
                       R"("canDecrement":false,"canIncrement":true})"));
}

TEST(FormContent, aPickerShowsTheTitleOfItsOptionOrAStoredValueThatIsNone) {
  const std::vector<PickerOption> options = {{"a", "First"}, {"b", "Second"}};
  EXPECT_EQ(pickerRow("row", "Row", "b", options).valueText, "Second");
  EXPECT_EQ(pickerRow("row", "Row", "barrel", options).valueText, "barrel");
  EXPECT_EQ(pickerRow("row", "Row", "barrel", options).selected, "barrel");
}

TEST(FormContent, everyRowIsWrittenAfterItsKind) {
  FormSection section{"section", "Title"};
  section.rows = {TextFieldRow{"t", "Text", ""},
                  ToggleRow{"on", "On"},
                  PickerRow{"p", "Pick", "x", "x", {}},
                  GridRow{"g", "Grid", "days"},
                  DateRow{"d", "Date", Instant(), "Jan 1, 1970"},
                  TimeRow{"time", "Time", 9, 0, "9:00 AM"},
                  ValueRow{"v", "Value", "text"},
                  ButtonRow{"b", "Do"},
                  HeaderRow{"h", "pills", "blue", "Name", "1 ml"},
                  DoseRow{"log", "circle", "grey", "Jan 1, 1970", "9:00 AM", "Pending", "Pending"}};
  const Json json = toJson(section);
  std::vector<std::string> kinds;
  for (const Json& row : json.at("rows")) {
    kinds.push_back(row.at("kind"));
    EXPECT_EQ(row.begin().key(), "kind");
    EXPECT_TRUE(row.contains("id"));
  }
  EXPECT_EQ(kinds, (std::vector<std::string>{"textField", "toggle", "picker", "grid", "date", "time", "value", "button",
                                             "header", "dose"}));
  EXPECT_EQ(json.at("title"), "Title");
  EXPECT_TRUE(json.at("footer").is_null());
}

TEST(FormContent, rowsAreFoundByKindAndId) {
  const std::vector<FormSection> sections = {
      {"one", std::nullopt, std::nullopt, {ToggleRow{"a", "A"}}},
      {"two", std::nullopt, std::nullopt, {ToggleRow{"b", "B"}, stepperRow("n", "N", 9, {1, 10, 1})}}};
  ASSERT_NE(rowNamed<ToggleRow>(sections, "b"), nullptr);
  EXPECT_EQ(rowNamed<ToggleRow>(sections, "b")->label, "B");
  EXPECT_EQ(rowNamed<ToggleRow>(sections, "n"), nullptr);
  EXPECT_EQ(stepped(sections, "n", &Stepper::above), 10);
  EXPECT_EQ(stepped(sections, "n", &Stepper::below), 8);
  EXPECT_EQ(stepped(sections, "b", &Stepper::above), std::nullopt);
}

TEST(FormContent, onlyOptionsOnShowCanBeChosen) {
  const std::vector<FormSection> sections = {
      {"one",
       std::nullopt,
       std::nullopt,
       {pickerRow("p", "P", "x", {{"x", "X"}}), GridRow{"g", "G", "days", 7, 8, 36, {{"1", "Sun"}}}}}};
  EXPECT_TRUE(hasOption(sections, "p", "x"));
  EXPECT_FALSE(hasOption(sections, "p", "y"));
  EXPECT_TRUE(hasOption(sections, "g", "1"));
  EXPECT_FALSE(hasOption(sections, "g", "8"));
  EXPECT_FALSE(hasOption(sections, "nothing", "x"));
}

struct Fielded {
  bool isOn = false;
  std::string text;

  static constexpr auto fields() { return std::tuple(field("isOn", &Fielded::isOn), field("text", &Fielded::text)); }
};

TEST(FormContent, fieldsAreFoundByTypeAndName) {
  Fielded value;
  EXPECT_EQ(fieldNamed<bool>(value, "isOn"), &value.isOn);
  EXPECT_EQ(fieldNamed<std::string>(value, "text"), &value.text);
  EXPECT_EQ(fieldNamed<std::string>(value, "isOn"), nullptr);
  EXPECT_EQ(fieldNamed<bool>(value, "other"), nullptr);
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/CliFixture.h"

namespace pillora {
namespace {

/// How a command's first argument names a medicine.
class MedicineRef : public Cli {
 protected:
  /// The name of the medicine that `ref` picks; empty when it is refused.
  std::string picked(const std::string& ref, const Words& options = {}) {
    const Called called = run(Words{"--json"} + options + Words{"take", "--", ref, "2025-01-10T08:00:00Z"});
    if (called.failedWith(kRefused)) return "";
    const Json medicineId = logs().at(0).at("medicineId");
    run({"undo", logs().at(0).at("id")});
    const Json list = json({"medicines"});
    for (const Json& section : list.at("sections")) {
      for (const Json& row : section.at("rows")) {
        if (row.at("id") == medicineId) return row.at("name");
      }
    }
    return "?";
  }
};

std::string lowered(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

TEST_F(MedicineRef, anIdentifierFitsInEitherCase) {
  const std::string id = add({"Aspirin"});
  add({"Aspirin"});
  EXPECT_EQ(picked(id), "Aspirin");
  EXPECT_EQ(picked(lowered(id)), "Aspirin");
  EXPECT_EQ(picked("6F9619FF-8B86-D011-B42D-00CF4FC964FF"), "");
}

TEST_F(MedicineRef, aNameThatLooksLikeAnIdentifierIsStillAName) {
  add({"6F9619FF-8B86-D011-B42D-00CF4FC964FF"});
  EXPECT_EQ(picked("6f9619ff-8b86-d011-b42d-00cf4fc964ff"), "6F9619FF-8B86-D011-B42D-00CF4FC964FF");
}

TEST_F(MedicineRef, aNameFitsWithoutRegardToCase) {
  add({"Aspirin"});
  add({"Ärzteöl"});
  EXPECT_EQ(picked("aSPIRIN"), "Aspirin");
  EXPECT_EQ(picked("ÄRZTEÖL"), "Ärzteöl");
  EXPECT_EQ(picked("A\u0308rzteo\u0308l"), "Ärzteöl") << "composed and decomposed letters are the same";
  EXPECT_EQ(picked("Arzteol"), "") << "accents count";
}

TEST_F(MedicineRef, aWholeNameGoesBeforeTheBeginningOfAnother) {
  add({"Vitamin"});
  add({"Vitamin D"});
  EXPECT_EQ(picked("vitamin"), "Vitamin");
  EXPECT_EQ(picked("vitamin "), "Vitamin D");
}

TEST_F(MedicineRef, aBeginningFitsOnlyWhenOneMedicineHasIt) {
  add({"Vitamin C"});
  add({"Vitamin D"});
  add({"Baby aspirin"});
  EXPECT_EQ(picked("vit"), "");
  EXPECT_EQ(picked("vitamin d"), "Vitamin D");
  EXPECT_EQ(picked("B"), "Baby aspirin");
  EXPECT_EQ(picked("aspirin"), "") << "the end of a name is no beginning";
}

TEST_F(MedicineRef, twoMedicinesOfOneNameFitNeitherAndAreToldByIdentifier) {
  const std::string first = add({"Aspirin"});
  const std::string second = add({"aspirin"});
  const Called called = run({"delete", "Aspirin"});
  EXPECT_TRUE(called.failedWith(kRefused));
  EXPECT_EQ(called.lines.at(0),
            "pilloractl: several medicines fit 'Aspirin': name one by its identifier, " + first + ", " + second);
  EXPECT_EQ(names().size(), 2u);
  EXPECT_EQ(run({"delete", second}).status, kDone);
  EXPECT_EQ(names(), (Words{"Aspirin"}));
}

TEST_F(MedicineRef, theEmptyTextPicksNobody) {
  add({"Aspirin"});
  EXPECT_TRUE(run({"delete", ""}).failedWith(kRefused));
  EXPECT_EQ(names(), (Words{"Aspirin"}));
}

TEST_F(MedicineRef, oddNamesArePickedLikeAnyOther) {
  for (const std::string name : {"a.b*c", "50% \\ off", "%", "_", "\n", "日本", "💊", "אספירין", "--json"}) {
    add({"--", name});
    EXPECT_EQ(picked(name), name);
  }
}

TEST_F(MedicineRef, unknownNamesAreRefusedByEveryCommandThatTakesOne) {
  add({"Aspirin"});
  for (const Words& words : {Words{"take", "x"}, {"skip", "x"}, {"delete", "x"}, {"logs", "x"}}) {
    const Called called = run(words);
    EXPECT_TRUE(called.failedWith(kRefused)) << ::testing::PrintToString(words);
    EXPECT_EQ(called.lines.at(0), "pilloractl: no medicine fits 'x'");
  }
}

}  // namespace
}  // namespace pillora

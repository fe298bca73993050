// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "icu/IcuTexts.h"

namespace pillora {
namespace {

struct Forms {
  const char* language;
  std::vector<std::string> texts;  ///< for the counts below
};
constexpr int64_t kCounts[] = {0, 1, 2, 3, 5, 11, 21, 100};

void expectForms(const std::vector<Forms>& table, std::string_view one, std::string_view other) {
  for (const auto& [language, expected] : table) {
    const auto texts = *makeTexts("en_US", "UTC", language, {PILLORA_CATALOGUES});
    std::vector<std::string> found;
    for (const int64_t n : kCounts) found.push_back(texts->counted(n, one, other));
    EXPECT_EQ(found, expected) << language;
  }
}

TEST(Plurals, restoredMedicines) {
  expectForms(
      {{"en",
        {"Restored 0 medicines.", "Restored 1 medicine.", "Restored 2 medicines.", "Restored 3 medicines.",
         "Restored 5 medicines.", "Restored 11 medicines.", "Restored 21 medicines.", "Restored 100 medicines."}},
       {"de",
        {"0 Medikamente wiederhergestellt.", "1 Medikament wiederhergestellt.", "2 Medikamente wiederhergestellt.",
         "3 Medikamente wiederhergestellt.", "5 Medikamente wiederhergestellt.", "11 Medikamente wiederhergestellt.",
         "21 Medikamente wiederhergestellt.", "100 Medikamente wiederhergestellt."}},
       {"fr",
        {"0 médicament restauré.", "1 médicament restauré.", "2 médicaments restaurés.", "3 médicaments restaurés.",
         "5 médicaments restaurés.", "11 médicaments restaurés.", "21 médicaments restaurés.",
         "100 médicaments restaurés."}},
       {"es",
        {"Se han restaurado 0 medicamentos.", "Se ha restaurado 1 medicamento.", "Se han restaurado 2 medicamentos.",
         "Se han restaurado 3 medicamentos.", "Se han restaurado 5 medicamentos.", "Se han restaurado 11 medicamentos.",
         "Se han restaurado 21 medicamentos.", "Se han restaurado 100 medicamentos."}},
       {"ar",
        {"لم يُستعَد أي دواء.", "استُعيد دواء واحد.", "استُعيد دواءان.", "استُعيدت 3 أدوية.", "استُعيدت 5 أدوية.",
         "استُعيد 11 دواءً.", "استُعيد 21 دواءً.", "استُعيد 100 دواء."}},
       {"zh_CN",
        {"已恢复 0 种药物。", "已恢复 1 种药物。", "已恢复 2 种药物。", "已恢复 3 种药物。", "已恢复 5 种药物。",
         "已恢复 11 种药物。", "已恢复 21 种药物。", "已恢复 100 种药物。"}}},
      "Restored {n} medicine.", "Restored {n} medicines.");
}

TEST(Plurals, everySoManyHours) {
  expectForms(
      {{"en",
        {"Every 0 hours", "Every 1 hour", "Every 2 hours", "Every 3 hours", "Every 5 hours", "Every 11 hours",
         "Every 21 hours", "Every 100 hours"}},
       {"de",
        {"Alle 0 Stunden", "Jede Stunde", "Alle 2 Stunden", "Alle 3 Stunden", "Alle 5 Stunden", "Alle 11 Stunden",
         "Alle 21 Stunden", "Alle 100 Stunden"}},
       {"fr",
        {"Toutes les 0\u00A0h", "Toutes les 1\u00A0h", "Toutes les 2\u00A0h", "Toutes les 3\u00A0h",
         "Toutes les 5\u00A0h", "Toutes les 11\u00A0h", "Toutes les 21\u00A0h", "Toutes les 100\u00A0h"}},
       {"es",
        {"Cada 0 horas", "Cada hora", "Cada 2 horas", "Cada 3 horas", "Cada 5 horas", "Cada 11 horas", "Cada 21 horas",
         "Cada 100 horas"}},
       {"ar",
        {"كل 0 ساعة", "كل ساعة", "كل ساعتين", "كل 3 ساعات", "كل 5 ساعات", "كل 11 ساعة", "كل 21 ساعة", "كل 100 ساعة"}},
       {"zh_CN",
        {"每 0 小时", "每 1 小时", "每 2 小时", "每 3 小时", "每 5 小时", "每 11 小时", "每 21 小时", "每 100 小时"}}},
      "Every {n} hour", "Every {n} hours");
}

TEST(Plurals, hugeAndNegativeCountsTakeTheFormOfTheirLastDigits) {
  const auto arabic = *makeTexts("en_US", "UTC", "ar", {PILLORA_CATALOGUES});
  const auto every = [&](int64_t n) { return arabic->counted(n, "Every {n} minute", "Every {n} minutes"); };
  EXPECT_EQ(every(4'000'000'003), "كل 4000000003 دقائق");
  EXPECT_EQ(every(4'000'000'011), "كل 4000000011 دقيقة");
  EXPECT_EQ(every(-5), "كل -5 دقائق");
  EXPECT_EQ(every(INT64_MIN), "كل -9223372036854775808 دقائق");
  EXPECT_EQ(every(INT64_MAX), "كل 9223372036854775807 دقائق");
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "cli/DisplayText.h"

#include <gtest/gtest.h>

namespace pillora {
namespace {

TEST(DisplayText, utf8IsToldFromOtherBytes) {
  for (const std::string text : {"", "plain", "é", "日本", "💊", "\uFFFD", "\U0010FFFF"})
    EXPECT_TRUE(isUtf8(text)) << text;
  // A stray and a missing continuation byte, overlong forms, a surrogate, a code point past the last.
  for (const std::string bytes : {"\x80", "\xC3", "a\xE2\x82", "\xC0\xAF", "\xE0\x80\xAF", "\xF0\x80\x80\xAF",
                                  "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFE", "\xC3\x28"}) {
    EXPECT_FALSE(isUtf8(bytes));
  }
}

TEST(DisplayText, harmlessTextHasNoPowerOverTheTerminal) {
  EXPECT_EQ(harmless("Aspirin é 日本 💊"), "Aspirin é 日本 💊");
  EXPECT_EQ(harmless("a\nb\tc\rd\u2028e\u0085f"), "a b c d e f");
  EXPECT_EQ(harmless("\x1b[31mred\a\x7f\u009B2J"), "\uFFFD[31mred\uFFFD\uFFFD\uFFFD2J");
  EXPECT_EQ(harmless("a\u202Eb\u2066c"), "a\uFFFDb\uFFFDc");
  EXPECT_EQ(harmless("٢٢\u200F/١١"), "٢٢\u200F/١١");
  EXPECT_EQ(harmless("a\xFF\xC3z"), "a\uFFFD\uFFFDz");
  EXPECT_EQ(harmless("אספירין"), "אספירין");
}

TEST(DisplayText, widthCountsColumns) {
  EXPECT_EQ(displayWidth(""), 0u);
  EXPECT_EQ(displayWidth("Aspirin"), 7u);
  EXPECT_EQ(displayWidth("é"), 1u);
  EXPECT_EQ(displayWidth("e\u0301"), 1u);
  EXPECT_EQ(displayWidth("日本"), 4u);
  EXPECT_EQ(displayWidth("💊"), 2u);
  EXPECT_EQ(displayWidth("אספירין"), 7u);
}

TEST(DisplayText, whatIsTooWideIsCutWithAnEllipsis) {
  EXPECT_EQ(cutToWidth("Aspirin", 7), "Aspirin");
  EXPECT_EQ(cutToWidth("Aspirin", 6), "Aspir…");
  EXPECT_EQ(cutToWidth("Aspirin", 1), "…");
  EXPECT_EQ(cutToWidth("Aspirin", 0), "");
  EXPECT_EQ(cutToWidth("日本語", 5), "日本…");
  EXPECT_EQ(cutToWidth("日本語", 4), "日…");
  EXPECT_EQ(cutToWidth("日本語", 6), "日本語");
  EXPECT_EQ(cutToWidth("ne\u0301e\u0301", 3), "ne\u0301e\u0301");
  EXPECT_EQ(cutToWidth("ne\u0301e\u0301e", 3), "ne\u0301…");
  for (size_t width = 0; width < 20; ++width) EXPECT_LE(displayWidth(cutToWidth("日本 a e\u0301 💊 x日", width)), width);
}

TEST(DisplayText, wrappedTextFillsItsLines) {
  EXPECT_EQ(wrapped("one two three", 7), (std::vector<std::string>{"one two", "three"}));
  EXPECT_EQ(wrapped("one", 7), (std::vector<std::string>{"one"}));
  EXPECT_EQ(wrapped("", 7), (std::vector<std::string>{""}));
  EXPECT_EQ(wrapped("immeasurable one", 7), (std::vector<std::string>{"immeas…", "one"}));
  EXPECT_EQ(wrapped("undo  with", 12), (std::vector<std::string>{"undo  with"}));
}

TEST(DisplayText, chineseIsWrappedBetweenLettersButNotBeforePunctuation) {
  EXPECT_EQ(wrapped("启用之前不会有任何提醒", 10), (std::vector<std::string>{"启用之前不", "会有任何提", "醒"}));
  EXPECT_EQ(wrapped("通知未启用。启用", 10), (std::vector<std::string>{"通知未启", "用。启用"}));
  EXPECT_EQ(wrapped("选择“完成”或“保存”。", 12), (std::vector<std::string>{"选择“完成”或", "“保存”。"}));
  EXPECT_EQ(wrapped("打开 Pillora 后记录", 12), (std::vector<std::string>{"打开 Pillora", "后记录"}));
  EXPECT_EQ(wrapped("过去30天内", 6), (std::vector<std::string>{"过去30", "天内"}));
}

TEST(DisplayText, marksOfArabicTakeNoColumn) {
  EXPECT_EQ(displayWidth("لم تُضَف"), displayWidth("لم تضف"));
  EXPECT_EQ(displayWidth("دواء"), 4u);
}

}  // namespace
}  // namespace pillora

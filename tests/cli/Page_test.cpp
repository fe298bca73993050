// SPDX-License-Identifier: MIT
#include "cli/Page.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/DisplayText.h"

namespace pillora {
namespace {

using Align = Column::Align;
using Weight = Cell::Weight;

std::string longestLine(const std::string& page) {
  std::istringstream lines(page);
  std::string longest;
  for (std::string line; std::getline(lines, line);) {
    if (displayWidth(line) > displayWidth(longest)) longest = line;
  }
  return longest;
}

TEST(Page, columnsAreAsWideAsTheirWidestCell) {
  const Terminal terminal;
  Page page(terminal);
  page.table({{}, {Align::right}, {}}, {{{{"a"}, {"8:00"}, {"x"}}}, {{{"日本"}, {"12:00"}, {""}}}});
  EXPECT_EQ(page.text(), "  a      8:00  x\n  日本  12:00\n");
}

TEST(Page, theWidestColumnGivesWayButNeverAWholeOne) {
  const Terminal terminal{30, false};
  Page page(terminal);
  const std::string id(20, '#');
  page.table({{}, {}, {Align::left, true}}, {{{{"Acetylsalicylic"}, {"Taken"}, {id}}}});
  EXPECT_EQ(page.text().find(id), page.text().size() - 21);
  Page narrow(terminal);
  narrow.table({{}, {}}, {{{{std::string(500, 'n')}, {"1 tablet"}}}});
  EXPECT_EQ(narrow.text(), "  " + std::string(17, 'n') + "…  1 tablet\n");
}

TEST(Page, noLineIsWiderThanTheTerminal) {
  for (const size_t columns : {40u, 80u, 120u}) {
    const Terminal terminal{columns, false};
    Page page(terminal);
    const std::string text =
        "日本語 " + std::string(300, 'w') + " many more words that go on and on and on and on and on";
    page.heading(text);
    page.section(text);
    page.line({text}, 4);
    page.paragraph({text}, 4);
    page.item({text}, 4);
    page.flow({{text}, {"b"}, {text}, {"c"}});
    page.table({{}, {}, {}, {}, {}}, {{{{text}, {text}, {text}, {text}, {text}}, text}});
    EXPECT_LE(displayWidth(longestLine(page.text())), columns) << longestLine(page.text());
  }
}

TEST(Page, theLinesOfAnItemStandBelowItsText) {
  const Terminal terminal{14, false};
  Page page(terminal);
  page.item({"one two three"}, 2);
  EXPECT_EQ(page.text(), "  - one two\n    three\n");
}

TEST(Page, cellsFlowOntoTheNextLineWhenTheyDoNotFit) {
  const Terminal terminal{40, false};
  Page page(terminal);
  page.flow({{std::string(20, 'a')}, {std::string(18, 'b')}, {"c"}});
  EXPECT_EQ(page.text(), std::string(20, 'a') + "  " + std::string(18, 'b') + "\nc\n");
}

TEST(Page, coloursShowOnlyOnATerminalThatHasThem) {
  const Cell cell{"Overdue", "red", Weight::bold};
  const Terminal plain, colored{80, true};
  Page withoutColor(plain), withColor(colored);
  withoutColor.line(cell);
  withColor.line(cell);
  EXPECT_EQ(withoutColor.text(), "Overdue\n");
  EXPECT_EQ(withColor.text(), "\x1b[1;31mOverdue\x1b[0m\n");
}

TEST(Page, everyColourNameHasAColourAndOtherNamesNone) {
  const Terminal terminal{80, true};
  for (const std::string name :
       {"blue", "green", "red", "orange", "purple", "pink", "yellow", "teal", "indigo", "mint", "grey", "secondary"}) {
    Page page(terminal);
    page.line({"x", name});
    EXPECT_TRUE(page.text().starts_with("\x1b[")) << name;
  }
  Page page(terminal);
  page.line({"x", "ultraviolet"});
  EXPECT_EQ(page.text(), "x\n");
}

TEST(Page, escapeSequencesInTextsDoNotReachTheTerminal) {
  const Terminal terminal;
  Page page(terminal);
  page.table({{}}, {{{{"\x1b]0;title\a"}}, "\x1b[2J"}});
  page.flow({{"\x1b[1m"}});
  page.paragraph({"\x1b[1m"});
  page.heading("\x1b[1m");
  EXPECT_EQ(page.text().find('\x1b'), std::string::npos);
}

}  // namespace
}  // namespace pillora

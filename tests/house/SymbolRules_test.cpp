// SPDX-License-Identifier: MIT
#include "house/SymbolRules.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace pillora::house {
namespace {

using Findings = std::vector<std::string>;

const std::string kHead =
    "<!-- SPDX-License-Identifier: MIT -->\n"
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"24\" height=\"24\" viewBox=\"0 0 24 24\" fill=\"none\""
    " stroke=\"#000\" stroke-width=\"1.75\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";

std::string drawing(const std::string& element) { return kHead + "  " + element + "\n</svg>\n"; }

Findings missingIn(const char* path, const std::string& text) {
  SourceTree tree;
  tree.add(path, text);
  tree.add("assets/symbols/plus.svg", "");
  tree.add("assets/symbols/clock.fill.svg", "");
  return missingSymbols(tree);
}

Findings unfitIn(const std::string& text) {
  SourceTree tree;
  tree.add("assets/symbols/plus.svg", text);
  return unfitSymbols(tree);
}

struct Naming {
  const char* path;
  const char* text;
  const char* missing;  ///< empty: nothing is
};

TEST(SymbolRules, symbolsWithoutFilesAreFound) {
  const Naming namings[] = {
      {"src/screens/A.cpp", "Panel{\"clock.fill\", title};", ""},
      {"src/screens/A.cpp", "Panel{\"clock.badge\", title};", "clock.badge"},
      {"src/app/A.h", "{\"today\", \"sun.max\"}", "sun.max"},
      {"src/app/A.cpp", "{4, \"settings\", texts.text(\"Settings\"), \"gear\"}};", "gear"},
      {"src/app/A.cpp", "{4, \"settings\", texts.text(\"Settings\"), \"plus\"}};", ""},
      {"src/screens/A.cpp", "{{\"delete\", texts.text(\"Delete\"), \"trash\", true}}", "trash"},
      {"src/screens/A.cpp", "GridRow{\"days\", texts_.text(\"Days\"), \"days\", kColumns};", ""},
      {"src/screens/A.cpp", "{\"plus\", number, texts.text(\"Taken\"), \"green\"}", ""},
      {"src/ui/qml/A.qml", "symbol: \"plus\"", ""},
      {"src/ui/qml/A.qml", "symbol: \"minus\"", "minus"},
      {"src/ui/qml/A.qml", "symbol: \"\"", ""},
      {"src/ui/qml/A.qml", "text: \"word\"; trailingSymbol: open ? \"plus\" : \"minus\"", "minus"},
      {"src/ui/qml/A.qml", "readonly property string symbol: \"minus\"", "minus"},
      {"src/screens/A.h", "kIconNames = {\"plus\",\n\"drop\"};\n\"word\"", "drop"},
      {"src/screens/A.h", "kUnits = {\"plus\",\n\"drop\"};", ""},
      {"src/ui/A.cpp", "\"org.freedesktop.portal\" \"backup.json\" \"qrc:/a.b\" \"Clock.badge\"", ""},
      {"src/cli/A.cpp", "\"clock.badge\"", ""},
      {"docs/a.md", "\"clock.badge\"", ""},
  };
  for (const Naming& naming : namings) {
    const Findings found = missingIn(naming.path, naming.text);
    const std::string missing = naming.missing;
    EXPECT_EQ(found.size(), missing.empty() ? 0U : 1U) << naming.text;
    for (const std::string& finding : found) {
      EXPECT_TRUE(finding.ends_with(": no symbol " + missing)) << finding;
    }
  }
}

TEST(SymbolRules, aPlainDrawingIsFit) {
  for (const char* element :
       {"<path d=\"M1 2L3 4\"/>", "<path fill=\"#000\" fill-rule=\"evenodd\" stroke=\"none\" d=\"M1 2z\"/>",
        "<circle stroke-width=\"1.5\" cx=\"1\" cy=\"2\" r=\"3\"/>",
        "<rect x=\"1\" y=\"2\" width=\"3\" height=\"4\" rx=\"1\"/>", "<line x1=\"1\" y1=\"2\" x2=\"3\" y2=\"4\"/>",
        "<polyline points=\"1,2 3,4\"/>"}) {
    EXPECT_EQ(unfitIn(drawing(element)), Findings()) << element;
  }
}

struct Unfit {
  std::string text;
  std::string finding;
};

TEST(SymbolRules, whatTheRendererMayNotDrawIsFound) {
  const std::string path = "assets/symbols/plus.svg";
  const Unfit table[] = {
      {drawing("<text x=\"1\">a</text>"), ":3: one element a line"},
      {drawing("<text x=\"1\"/>"), ":3: no text here"},
      {drawing("<path d=\"M1 2z\"/><path d=\"M1 2z\"/>"), ":3: one element a line"},
      {drawing("<g fill=\"#000\"/>"), ":3: no g here"},
      {drawing("<path d=\"M1 2z\" transform=\"rotate(45)\"/>"), ":3: no transform here"},
      {drawing("<path d=\"M1 2z\" style=\"fill:red\"/>"), ":3: no style here"},
      {drawing("<path d=\"M1 2z\" fill=\"#f00\"/>"), ":3: fill is none or #000"},
      {drawing("<path d=\"M1 2z\" stroke=\"black\"/>"), ":3: stroke is none or #000"},
      {drawing("<circle d=\"M1 2z\"/>"), ":3: no d here"},
      {drawing("<path d=\"" + std::string(1600, '1') + "\"/>"), ":1: too large"},
      {kHead + "</svg>\n", ":1: no drawing"},
      {drawing("<path d=\"M1 2z\"/>").substr(kHead.find('\n') + 1), ":1: no licence"},
  };
  for (const Unfit& unfit : table) {
    const Findings found = unfitIn(unfit.text);
    EXPECT_TRUE(std::ranges::find(found, path + unfit.finding) != found.end())
        << unfit.finding << (found.empty() ? std::string() : "; found " + found.front());
  }
}

TEST(SymbolRules, anotherGridIsFound) {
  std::string text = drawing("<path d=\"M1 2z\"/>");
  text.replace(text.find("0 0 24 24"), 9, "0 0 16 16");
  EXPECT_EQ(unfitIn(text), Findings{"assets/symbols/plus.svg:2: viewBox is 0 0 24 24"});
}

TEST(SymbolRules, otherPicturesAreNobodysSymbols) {
  SourceTree tree;
  tree.add("assets/icons/org.pillora.Pillora.svg", "<svg/>");
  tree.add("assets/symbols/README.md", "text");
  EXPECT_EQ(unfitSymbols(tree), Findings());
}

}  // namespace
}  // namespace pillora::house

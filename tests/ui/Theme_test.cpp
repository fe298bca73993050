// SPDX-License-Identifier: MIT
// What is written and drawn can be read: the contrasts that the Web Content Accessibility Guidelines 2.1 ask for (1.4.3
// and 1.4.11: 4.5 for text, 3 for large text and for what is drawn; 1.4.6: 7 for text in high contrast), light and
// dark.
#include <algorithm>
#include <cmath>

#include "ui/QmlTest.h"

namespace pillora {
namespace {

const char* const kNames[] = {"blue",   "green", "red",    "orange", "purple", "pink",
                              "yellow", "teal",  "indigo", "mint",   "grey"};
const char* const kSurfaces[] = {"background", "surface", "raised"};

double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one) + 0.05, b = luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

/// What a translucent colour looks like on another.
QColor over(const QColor& top, const QColor& below) {
  const float a = top.alphaF();
  return QColor::fromRgbF(top.redF() * a + below.redF() * (1 - a), top.greenF() * a + below.greenF() * (1 - a),
                          top.blueF() * a + below.blueF() * (1 - a));
}

class ThemeTest : public QmlTest, public testing::WithParamInterface<bool> {
 protected:
  ThemeTest() {
    appearance_.setProperty("dark", GetParam());
    root_ = show(
        "Item {\n function fixed(name) { return Theme[name] }\n"
        " function named(table, name) { return Theme[table](name) } }");
  }

  QColor fixed(const char* name) { return ask("fixed", {name}); }
  QColor named(const char* table, const char* name) { return ask("named", {table, name}); }

 private:
  QColor ask(const char* function, std::vector<QVariant> values) {
    QVariant answer;
    values.resize(2);
    const bool done =
        values[1].isNull()
            ? QMetaObject::invokeMethod(root_, function, Q_RETURN_ARG(QVariant, answer), Q_ARG(QVariant, values[0]))
            : QMetaObject::invokeMethod(root_, function, Q_RETURN_ARG(QVariant, answer), Q_ARG(QVariant, values[0]),
                                        Q_ARG(QVariant, values[1]));
    EXPECT_TRUE(done && answer.canConvert<QColor>()) << function;
    return answer.value<QColor>();
  }

  QQuickItem* root_ = nullptr;
};

TEST_P(ThemeTest, textCanBeReadOnEverySurface) {
  for (const char* text : {"text", "secondary", "placeholder", "accent"}) {
    for (const char* surface : kSurfaces) EXPECT_GE(contrast(fixed(text), fixed(surface)), 4.5) << text << surface;
  }
  for (const char* text : {"text", "secondary", "placeholder"}) {
    EXPECT_GE(contrast(fixed(text), fixed("field")), 4.5) << text;
  }
  EXPECT_GE(contrast(fixed("text"), fixed("segment")), 4.5);
}

TEST_P(ThemeTest, whoAskedForContrastGetsTheEnhancedOneAndLines) {
  appearance_.setProperty("highContrast", true);
  for (const char* text : {"text", "secondary", "placeholder"}) {
    for (const char* surface : kSurfaces) EXPECT_GE(contrast(fixed(text), fixed(surface)), 7) << text << surface;
  }
  for (const char* line : {"separator", "outline"}) EXPECT_GE(contrast(fixed(line), fixed("surface")), 4.5) << line;
}

TEST_P(ThemeTest, colouredTextCanBeReadOnEverySurfaceAndOnItsOwnTint) {
  for (const char* name : kNames) {
    const QColor ink = named("ink", name), tint = named("tint", name);
    for (const char* surface : kSurfaces) {
      EXPECT_GE(contrast(ink, fixed(surface)), 4.5) << name << " on " << surface;
      EXPECT_GE(contrast(ink, over(tint, fixed(surface))), 4.5) << name << " on its tint on " << surface;
    }
  }
}

TEST_P(ThemeTest, symbolsStandOutFromEverySurfaceAndFromTheirOwnTint) {
  for (const char* name : kNames) {
    const QColor symbol = named("symbol", name);
    for (const char* surface : kSurfaces) EXPECT_GE(contrast(symbol, fixed(surface)), 3) << name << " on " << surface;
    EXPECT_GE(contrast(symbol, over(named("tint", name), fixed("surface"))), 3) << name << " on its tint";
  }
}

TEST_P(ThemeTest, whiteCanBeReadOnEverySolidColour) {
  for (const char* name : kNames) EXPECT_GE(contrast(fixed("onSolid"), named("solid", name)), 4.5) << name;
}

TEST_P(ThemeTest, theFocusStandsOut) {
  for (const char* surface : kSurfaces) EXPECT_GE(contrast(fixed("focus"), fixed(surface)), 3) << surface;
  EXPECT_GE(contrast(fixed("outline"), fixed("surface")), 3);
}

TEST_P(ThemeTest, coloursAreToldApart) {
  for (const char* one : kNames) {
    for (const char* other : kNames) {
      if (one == other) continue;
      const QColor a = named("fill", one), b = named("fill", other);
      const int distance =
          std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
      EXPECT_GE(distance, 45) << one << " and " << other;
    }
  }
}

TEST_P(ThemeTest, anUnknownColourIsBlue) {
  EXPECT_EQ(named("fill", "Red"), named("fill", "blue"));
  EXPECT_EQ(named("ink", ""), named("ink", "blue"));
  EXPECT_EQ(named("fill", "toString"), named("fill", "blue"));
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, ThemeTest, testing::Bool(),
                         [](const auto& mode) { return mode.param ? "dark" : "light"; });

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <limits>

#include "ui/QmlTest.h"

namespace pillora {
namespace {

class AppearanceTest : public QmlTest {
 protected:
  AppearanceTest() {
    root_ = show(
        "Item { property bool dark: Theme.dark; property bool highContrast: Theme.highContrast\n"
        " property real body: Theme.body; property int quick: Theme.quick }");
  }
  QVariant shown(const char* name) { return root_->property(name); }

  QQuickItem* root_ = nullptr;
};

TEST_F(AppearanceTest, whatTheDesktopAsksIsDrawnAtOnce) {
  appearance_.follow({.isDark = true, .isHighContrast = true, .textScale = 2});
  EXPECT_TRUE(shown("dark").toBool());
  EXPECT_TRUE(shown("highContrast").toBool());
  EXPECT_EQ(shown("body").toDouble(), 34);
  EXPECT_GT(shown("quick").toInt(), 0);
  appearance_.follow({.isMotionReduced = true});
  EXPECT_FALSE(shown("dark").toBool());
  EXPECT_FALSE(shown("highContrast").toBool());
  EXPECT_EQ(shown("body").toDouble(), 17);
  EXPECT_EQ(shown("quick").toInt(), 0);
}

TEST_F(AppearanceTest, theScaleStaysWithinWhatALayoutHolds) {
  for (const auto& [asked, expected] : {std::pair(100.0, 3.0), {0.1, 0.5}, {1.5, 1.5}}) {
    appearance_.follow({.textScale = asked});
    EXPECT_EQ(appearance_.fontScale(), expected);
  }
  for (const double none : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    appearance_.follow({.textScale = none});
    EXPECT_EQ(appearance_.fontScale(), 1.5);
  }
}

TEST_F(AppearanceTest, theDesktopsTypefaceIsFoundByTheNameBeforeItsWeight) {
  const QString none = QStringLiteral("No Such Typeface"), inter = QStringLiteral("Inter");
  const QString own = Appearance::typeface(none, {});
  EXPECT_FALSE(own.isEmpty());
  EXPECT_EQ(Appearance::typeface(none, none), own);
  EXPECT_EQ(Appearance::typeface(none, inter), inter);
  EXPECT_EQ(Appearance::typeface(none, inter + QStringLiteral(" Semi-Bold Oblique")), inter);
  EXPECT_EQ(Appearance::typeface(inter, none), inter);
}

}  // namespace
}  // namespace pillora

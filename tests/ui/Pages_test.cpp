// SPDX-License-Identifier: MIT
// Everything that the sheet shows loads and is drawn without one warning of QML.
#include <QDir>
#include <QQmlComponent>
#include <QQmlListReference>

#include "model/AppSettings.h"
#include "screens/MedicineForm.h"
#include "ui/QmlTest.h"
#include "ui/SymbolImage.h"

namespace pillora {
namespace {

class Pages : public QmlTest {};

TEST_F(Pages, loadWithoutAWarningInEveryLookAndSize) {
  for (const char* page : {"AlertPage", "FormEndPage", "FormPage", "ListPage", "LockPage", "MenuPage", "PartsPage",
                           "SheetPage", "TodayPage"}) {
    for (const QSize size : {QSize(360, 720), QSize(1000, 700)}) {
      for (const bool other : {false, true}) {
        appearance_.setProperty("dark", other);
        appearance_.setProperty("mirrored", other);
        appearance_.setFontScale(other ? 1.5 : 1);
        EXPECT_NE(showPage(page, size), nullptr) << page;
        EXPECT_EQ(takeWarnings(), "") << page;
      }
    }
  }
}

TEST_F(Pages, everySpecimenOfTheSheetCanBeMade) {
  QQuickItem* const stage = showPage("Stage");
  ASSERT_NE(stage, nullptr);
  for (const char* file : {"Controls", "Rows"}) {
    QQmlComponent specimens(view_.engine(), QUrl(QString("qrc:/qt/qml/Pillora/sheet/%1.qml").arg(file)));
    const std::unique_ptr<QObject> made(specimens.create());
    ASSERT_NE(made, nullptr) << specimens.errorString().toStdString();
    const QQmlListReference list(made.get(), "specimens");
    ASSERT_GT(list.count(), 10);
    for (qsizetype i = 0; i < list.count(); ++i) {
      stage->setProperty("body", list.at(i)->property("body"));
      settle();
      EXPECT_NE(stage->property("shown").value<QQuickItem*>(), nullptr) << i;
    }
    stage->setProperty("body", {});
  }
}

TEST_F(Pages, everyMedicineIconIsDrawn) {
  for (std::string_view name : kIconNames) {
    const QString symbol = QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
    EXPECT_FALSE(symbolImage(symbol, Qt::black, 24).isNull()) << name;
  }
}

TEST_F(Pages, aSymbolIsPaintedInItsColourAlone) {
  const QImage image = symbolImage("heart", QColor(200, 100, 50), 48);
  int painted = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      if (pixel.alpha() < 255) continue;
      ++painted;
      EXPECT_EQ(pixel, QColor(200, 100, 50));
    }
  }
  EXPECT_GT(painted, 100);
}

TEST_F(Pages, aSymbolThatPointsIsFlippedInAMirroredWindow) {
  QQuickItem* const root =
      show("Row { Symbol { name: 'chevron.right'; size: 40 } Symbol { name: 'heart'; size: 40 } }");
  const QImage before = view_.grabWindow();
  ASSERT_NE(root, nullptr);
  appearance_.setProperty("mirrored", true);
  settle();
  const QImage after = view_.grabWindow();
  EXPECT_NE(after.copy(0, 0, 40, 40), before.copy(0, 0, 40, 40));
  EXPECT_EQ(after.copy(40, 0, 40, 40), before.copy(40, 0, 40, 40));
}

TEST_F(Pages, anUnknownSymbolIsAWarning) {
  show("Symbol { name: 'no.such.symbol' }");
  EXPECT_EQ(takeWarnings(), "There is no symbol \"no.such.symbol\".");
}

}  // namespace
}  // namespace pillora

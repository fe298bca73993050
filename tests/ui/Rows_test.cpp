// SPDX-License-Identifier: MIT
// What the rows of forms show stands where it belongs, whatever their texts.
#include "ui/QmlTest.h"

namespace pillora {
namespace {

class Rows : public QmlTest {};

TEST_F(Rows, theSymbolOfAValueStandsInItsRow) {
  for (const char* label : {"null", "'Status'", "'The status of the notifications of this device'"}) {
    for (const bool isMirrored : {false, true}) {
      appearance_.setProperty("mirrored", isMirrored);
      show(QStringLiteral("ValueRow { objectName: 'r'; row: Sample.object({ label: %1, text: 'Some doses that "
                          "were taken are not saved yet, because the disk is full.', detail: 'The reason: database or "
                          "disk is full', symbol: "
                          "'exclamationmark.triangle.fill', color: 'red', action: null }) }")
               .arg(QLatin1String(label)));
      const auto symbolIn = [](const auto& self, QQuickItem* within) -> QQuickItem* {
        if (within->isVisible() && within->property("name") == "exclamationmark.triangle.fill") return within;
        for (QQuickItem* child : within->childItems()) {
          if (QQuickItem* const found = self(self, child)) return found;
        }
        return nullptr;
      };
      QQuickItem* const row = find("r");
      QQuickItem* const symbol = symbolIn(symbolIn, row);
      ASSERT_NE(symbol, nullptr);
      const QRectF place = symbol->mapRectToItem(row, {0, 0, symbol->width(), symbol->height()});
      EXPECT_TRUE(QRectF(16, 0, row->width() - 32, row->height()).contains(place)) << label << " at " << place.x();
    }
  }
}

TEST_F(Rows, returnGoesToTheNextFieldAndStaysInTheLast) {
  ASSERT_NE(show("Column { width: 328\n"
                 " TextField { objectName: 'a'; name: 'Name' } PButton { text: 'Between' }\n"
                 " TextField { objectName: 'b'; name: 'Amount' } }"),
            nullptr);
  click(find("a"));
  press(Qt::Key_Return);
  EXPECT_TRUE(find("b")->hasActiveFocus());
  press(Qt::Key_Return);
  EXPECT_TRUE(find("b")->hasActiveFocus());
}

}  // namespace
}  // namespace pillora

// SPDX-License-Identifier: MIT
// pillora-sheet FOLDER: draws every component in every state, the symbols and some arrangements into PNG files, without
// a display.
#include <QDir>
#include <QGuiApplication>
#include <QTextStream>

#include "ui/sheet/Sheet.h"

int main(int count, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  const QGuiApplication application(count, arguments);
  if (count != 2) {
    QTextStream(stderr) << "usage: pillora-sheet FOLDER\n";
    return 2;
  }
  const QDir folder(QString::fromLocal8Bit(arguments[1]));
  if (!folder.mkpath(QStringLiteral("."))) {
    QTextStream(stderr) << "pillora-sheet: cannot make " << folder.path() << '\n';
    return 1;
  }
  pillora::Sheet sheet(folder);
  return sheet.drawAll() ? 0 : 1;
}

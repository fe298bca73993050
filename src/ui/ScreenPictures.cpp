// SPDX-License-Identifier: MIT
#include "ui/ScreenPictures.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QMouseEvent>
#include <QTextStream>
#include <functional>
#include <vector>

#include "ui/RowsModel.h"

namespace pillora {

namespace {

/// Several turns of the event loop: bindings and layouts come to rest. Nothing moves meanwhile.
void settle() {
  for (int turn = 0; turn < 8; ++turn) QCoreApplication::processEvents();
}

/// The id of the first medicine of the list.
QString firstMedicine(AppModel& app) {
  app.medicines()->redraw();
  auto* const sections = app.medicines()->content()->property("sections").value<RowsModel*>();
  auto* const section = sections->data(sections->index(0), RowsModel::rowRole).value<ContentObject*>();
  auto* const rows = section->property("rows").value<RowsModel*>();
  auto* const row = rows->data(rows->index(0), RowsModel::rowRole).value<ContentObject*>();
  return row->property("id").toString();
}

/// The pointer rests where nothing is.
void movePointerAway(QQuickWindow& window) {
  const QPointF place(window.width() / 2.0, 2);
  QMouseEvent move(QEvent::MouseMove, place, window.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &move);
}

}  // namespace

std::vector<Scene> allScenes() {
  const auto tab = [](int tag) { return [tag](AppModel& app) { app.root()->select(tag); }; };
  const auto goBack = [](AppModel& app) { app.detail()->goBack(); };
  return {{"today", tab(0)},
          {"upcoming", tab(1)},
          {"medicines", tab(2)},
          {"detail",
           [](AppModel& app) {
             app.root()->select(2);
             app.detail()->open(firstMedicine(app));
           },
           goBack},
          {"detail-editing",
           [](AppModel& app) {
             app.detail()->open(firstMedicine(app));
             app.detail()->press(QStringLiteral("edit"));
           },
           goBack},
          {"add-medicine", [](AppModel& app) { app.addMedicine()->open(); },
           [](AppModel& app) { app.addMedicine()->press(QStringLiteral("cancel")); }},
          {"history", tab(3)},
          {"settings", tab(4)},
          {"backup", [](AppModel& app) { app.settings()->press(QStringLiteral("createBackup")); },
           [](AppModel& app) { app.settings()->closeSheets(); }},
          {"restore", [](AppModel& app) { app.settings()->press(QStringLiteral("restoreFromBackup")); },
           [](AppModel& app) { app.settings()->closeSheets(); }}};
}

bool drawScreens(AppModel& app, QQuickWindow& window, Appearance& appearance, const QString& folder) {
  QTextStream out(stdout);
  const QDir place(folder);
  bool isFine = place.mkpath(QStringLiteral("."));
  appearance.setProperty("reducedMotion", true);
  app.appeared();
  window.show();
  for (const bool isDark : {false, true}) {
    appearance.setProperty("dark", isDark);
    for (const QSize size : {QSize(360, 720), QSize(1000, 700)}) {
      window.resize(size);
      movePointerAway(window);
      for (const Scene& scene : allScenes()) {
        scene.enter(app);
        settle();
        window.grabWindow();  // texts take their lines
        settle();
        const QString name = QStringLiteral("%1-%2x%3-%4.png")
                                 .arg(QLatin1String(scene.name))
                                 .arg(size.width())
                                 .arg(size.height())
                                 .arg(isDark ? QLatin1String("dark") : QLatin1String("light"));
        isFine = window.grabWindow().save(place.filePath(name)) && isFine;
        out << place.filePath(name) << '\n';
        scene.leave(app);
        settle();
      }
    }
  }
  return isFine;
}

}  // namespace pillora

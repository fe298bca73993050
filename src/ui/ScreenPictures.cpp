// SPDX-License-Identifier: MIT
#include "ui/ScreenPictures.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMouseEvent>
#include <QTextStream>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string_view>
#include <system_error>
#include <vector>

#include "ui/RowsModel.h"

namespace pillora {

namespace {

/// Several turns of the event loop: bindings and layouts come to rest, and what is gone is deleted, which such turns
/// leave to a loop that runs. Nothing moves meanwhile.
void settle() {
  for (int turn = 0; turn < 8; ++turn) QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The id of the first medicine of the list.
QString firstMedicine(AppModel& app) {
  app.medicines()->redraw();
  auto* const rows = app.medicines()->content()->property("sections").value<RowsModel*>();
  auto* const row = rows->data(rows->index(0), RowsModel::rowRole).value<ContentObject*>();
  return row->property("id").toString();
}

/// The pointer rests where nothing is.
void movePointerAway(QQuickWindow& window) {
  const QPointF place(window.width() / 2.0, 2);
  QMouseEvent move(QEvent::MouseMove, place, window.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &move);
}

struct Look {
  const char* name;
  QSize size;
  bool isDark = false, isMirrored = false;
  double fontScale = 1;
};

void show(const Look& look, QQuickWindow& window, Appearance& appearance) {
  appearance.setProperty("dark", look.isDark);
  appearance.setProperty("mirrored", look.isMirrored);
  appearance.setFontScale(look.fontScale);
  window.resize(look.size);
}

/// "today-360x720-light.png"
QString fileName(const Scene& scene, const Look& look) {
  return QStringLiteral("%1-%2x%3-%4.png")
      .arg(QLatin1String(scene.name))
      .arg(look.size.width())
      .arg(look.size.height())
      .arg(QLatin1String(look.name));
}

Result<void> makeFolder(const QString& folder) {
  std::error_code failure;
  std::filesystem::create_directories(folder.toStdString(), failure);
  if (!failure) return {};
  return Error{"the folder '" + folder.toStdString() + "' cannot be made: " + failure.message()};
}

Result<void> write(const QImage& picture, const QString& path) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly) && picture.save(&file, "PNG") && file.flush()) return {};
  return Error{path.toStdString() + " cannot be written: " + file.errorString().toStdString()};
}

}  // namespace

std::vector<Scene> allScenes() {
  const auto tab = [](int tag) { return [tag](AppModel& app) { app.root()->select(tag); }; };
  const auto goBack = [](AppModel& app) { app.detail()->goBack(); };
  const auto openDetail = [](AppModel& app) {
    app.root()->select(2);
    app.detail()->open(firstMedicine(app));
  };
  const auto closeForm = [](AppModel& app) { app.addMedicine()->press(QStringLiteral("cancel")); };
  const auto openForm = [](ReminderIntervalType kind) {
    return [kind](AppModel& app) {
      app.addMedicine()->open();
      const std::string_view option = rawValue(kind);
      app.addMedicine()->choose(QStringLiteral("intervalType"), QString::fromUtf8(option.data(), std::ssize(option)));
    };
  };
  const auto openFormSheet = [](const char* row) {
    return [row](AppModel& app) {
      app.addMedicine()->open();
      app.addMedicine()->openSheet(QLatin1String(row));
    };
  };
  const auto closeSettingsSheets = [](AppModel& app) { app.settings()->closeSheets(); };
  return {{"today", tab(0)},
          {"upcoming", tab(1)},
          {"medicines", tab(2)},
          {"detail", openDetail, goBack, true},
          {"detail-editing",
           [openDetail](AppModel& app) {
             openDetail(app);
             app.detail()->press(QStringLiteral("edit"));
           },
           goBack, true},
          {"detail-delete",
           [openDetail](AppModel& app) {
             openDetail(app);
             app.detail()->press(QStringLiteral("delete"));
           },
           [goBack](AppModel& app) {
             app.detail()->dismissDeleteAlert();
             goBack(app);
           }},
          {"add-medicine", openForm(ReminderIntervalType::daily), closeForm, true},
          {"add-hourly", openForm(ReminderIntervalType::hourly), closeForm, true},
          {"add-weekly", openForm(ReminderIntervalType::weekly), closeForm, true},
          {"add-monthly", openForm(ReminderIntervalType::monthly), closeForm, true},
          {"add-custom", openForm(ReminderIntervalType::custom), closeForm, true},
          {"month-sheet", openFormSheet("startDate"), closeForm},
          {"time-sheet", openFormSheet("dailyTimes-0"), closeForm},
          {"history", tab(3)},
          {"settings", tab(4), [](AppModel&) {}, true},
          {"backup", [](AppModel& app) { app.settings()->press(QStringLiteral("createBackup")); }, closeSettingsSheets},
          {"restore", [](AppModel& app) { app.settings()->press(QStringLiteral("restoreFromBackup")); },
           closeSettingsSheets},
          {"lock",
           [](AppModel& app) {
             app.settings()->setOn(QStringLiteral("requireAuthentication"), true);
             app.setScenePhase(ScenePhase::background);
           },
           [](AppModel& app) { app.settings()->setOn(QStringLiteral("requireAuthentication"), false); }}};
}

Result<void> drawScreens(AppModel& app, QQuickWindow& window, Appearance& appearance, const QString& folder) {
  if (const auto made = makeFolder(folder); !made) return made;
  constexpr QSize kPhone(360, 720), kDesktop(1000, 700), kLong(360, 2000);
  Look looks[] = {{"light", kPhone},
                  {.name = "dark", .size = kPhone, .isDark = true},
                  {"light", kDesktop},
                  {.name = "dark", .size = kDesktop, .isDark = true},
                  {"long", kLong},
                  {.name = "mirrored", .size = kPhone, .isMirrored = true},
                  {.name = "large", .size = kPhone, .fontScale = 1.5}};
  // A language that reads from right to left does so in every look.
  const bool isMirrored = appearance.property("mirrored").toBool();
  for (Look& look : looks) look.isMirrored |= isMirrored;
  QTextStream out(stdout);
  const QDir place(folder);
  appearance.setProperty("reducedMotion", true);
  app.appeared();
  window.show();
  for (const Look& look : looks) {
    show(look, window, appearance);
    for (const Scene& scene : allScenes()) {
      if (look.size == kLong && !scene.isLong) continue;
      scene.enter(app);
      settle();
      window.grabWindow();  // texts take their lines
      movePointerAway(window);
      settle();
      const QString path = place.filePath(fileName(scene, look));
      if (const auto written = write(window.grabWindow(), path); !written) return written;
      out << path << '\n';
      scene.leave(app);
      settle();
    }
  }
  return {};
}

}  // namespace pillora

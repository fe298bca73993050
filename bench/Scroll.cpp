// SPDX-License-Identifier: MIT
// Frames of the real window, drawn by the software renderer, while a person scrolls through a long list from its first
// row to its last. A frame is all that happens between two of them: the list moves, rows come and go, more are read,
// and the window is drawn. Up to five milliseconds of its time Qt waits before it draws.
//
//   pillora_scroll [PIXELS_PER_FRAME [FRAMES]]
//
// With FRAMES no list is scrolled further than that.
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Fixture.h"
#include "app/PilloraApp.h"
#include "doubles/FakeBackgroundExecutor.h"
#include "doubles/FakeTaskScheduler.h"
#include "doubles/InMemoryFileManager.h"
#include "doubles/ScriptedAuthenticator.h"
#include "icu/Calendars.h"
#include "icu/IcuTexts.h"
#include "ui/AppModel.h"
#include "ui/QtMainExecutor.h"

void qml_register_types_Pillora();

namespace pillora::bench {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;
using std::chrono::steady_clock;

constexpr double kLimit = 33;  // milliseconds

struct SilentDesktop final : Desktop {
  void vibrate() override {}
  void openPage(std::string_view) override {}
};

Milliseconds processorTime() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

QQuickItem* listIn(QQuickItem* item) {
  if (!item->isVisible()) return nullptr;
  if (QByteArray(item->metaObject()->className()).startsWith("LongList")) return item;
  for (QQuickItem* child : item->childItems()) {
    if (QQuickItem* const found = listIn(child)) return found;
  }
  return nullptr;
}

/// The window over a store, as the program makes it.
class Stage {
 public:
  explicit Stage(const std::string& path)
      : pillora_(*PilloraApp::start(
            {clock_, *calendar_, *texts_, center_, scheduler_, executor_, console_, device_.factory(), Bundle()},
            {.path = path})),
        app_({*pillora_,
              {pillora_->container().mainContext(), clock_, *calendar_, *texts_, pillora_->notificationManager()},
              {files_, background_, executor_, clock_, *texts_, Bundle()},
              desktop_,
              console_,
              device_.factory()}) {
    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine_.setInitialProperties({{QStringLiteral("app"), QVariant::fromValue(&app_)}});
    engine_.load(QUrl(QStringLiteral("qrc:/qt/qml/Pillora/Main.qml")));
    if (engine_.rootObjects().isEmpty()) std::exit(1);
    window_ = qobject_cast<QQuickWindow*>(engine_.rootObjects().first());
  }

  AppModel& app() { return app_; }

  /// Scrolls the list of a tab from its first row to its last and prints what its frames took.
  void scroll(const char* name, QSize size, int tab, double step, size_t frames) {
    window_->resize(size);
    window_->show();
    app_.root()->select(tab);
    for (int turn = 0; turn < 20; ++turn) frame([] {});
    QQuickItem* const list = listIn(window_->contentItem());
    if (!list) std::exit(1);
    std::vector<double> whole, processor;
    const auto isThere = [&] { return list->property("atYEnd").toBool() && !list->property("hasMore").toBool(); };
    while (!isThere() && whole.size() < frames) {
      const auto begin = steady_clock::now();
      const auto used = processorTime();
      frame([&] { move(*list, step); });
      whole.push_back(Milliseconds(steady_clock::now() - begin).count());
      processor.push_back((processorTime() - used).count());
    }
    print(name, size, "time", whole);
    print(name, size, "processor time", processor);
  }

 private:
  static void move(QQuickItem& list, double step) {
    const auto value = [&](const char* name) { return list.property(name).toDouble(); };
    const double last = value("originY") + value("contentHeight") + value("bottomMargin") - list.height();
    list.setProperty("contentY", std::min(value("contentY") + step, last));
  }
  /// Does this and draws what comes of it.
  void frame(const std::function<void()>& act) {
    QEventLoop loop;
    QObject::connect(window_, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    QTimer::singleShot(0, window_, [&] {
      act();
      window_->update();
    });
    loop.exec();
  }
  static void print(const char* name, QSize size, const char* kind, std::vector<double>& frames) {
    std::ranges::sort(frames);
    const auto at = [&](double part) {
      return frames[static_cast<size_t>(part * static_cast<double>(frames.size() - 1))];
    };
    std::printf("| %s, %d × %d, %s | %zu | %.1f ms | %.1f ms | %.1f ms | %td |\n", name, size.width(), size.height(),
                kind, frames.size(), at(0.5), at(0.99), frames.back(),
                frames.end() - std::ranges::upper_bound(frames, kLimit));
    std::fflush(stdout);
  }

  FixedClock clock_;
  QtMainExecutor executor_;
  std::unique_ptr<Calendar> calendar_ = *makeCalendar(kLocale, kZone);
  std::unique_ptr<Texts> texts_ = *makeTexts(kLocale, kZone, "en");
  FakeNotificationCenter center_;
  FakeTaskScheduler scheduler_;
  RecordingConsole console_;
  ScriptedAuthenticator device_;
  InMemoryFileManager files_{clock_};
  FakeBackgroundExecutor background_;
  SilentDesktop desktop_;
  std::unique_ptr<PilloraApp> pillora_;
  AppModel app_;
  QQmlApplicationEngine engine_;
  QQuickWindow* window_ = nullptr;
};

/// Of one medicine, due every minute.
std::string busyStore() {
  const std::string path = emptyStore() + "-minutes";
  OpenStore store(path);
  NewMedicine values;
  values.name = "Drops";
  values.interval = fallbackInterval();
  values.interval.type = ReminderIntervalType::custom;
  values.interval.customIntervalMinutes = 1;
  values.startDate = kNow;
  store.context().insert(AppSettings::make());
  store.context().insert(Medicine::make(values, kNow));
  store.endTurn();
  return path;
}

}  // namespace
}  // namespace pillora::bench

int main(int argc, char** argv) {
  using namespace pillora::bench;
  qputenv("QT_QUICK_BACKEND", "software");
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  qml_register_types_Pillora();
  const double step = argc > 1 ? std::atof(argv[1]) : 240;
  const size_t frames = argc > 2 ? static_cast<size_t>(std::atoi(argv[2])) : SIZE_MAX;
  const QSize phone(360, 720), desktop(1000, 700);
  std::printf(
      "| list, window, %.0f pixels a frame | frames | median | 99 of 100 within | longest | over %.0f ms "
      "|\n|---|---|---|---|---|---|\n",
      step, kLimit);
  for (const QSize size : {phone, desktop}) {
    Stage stage(tenYearStore());
    stage.app().root()->select(3);
    stage.app().history()->selectRange(QStringLiteral("All"));
    stage.scroll("History, ten years", size, 3, step, frames);
  }
  for (const QSize size : {phone, desktop}) Stage(busyStore()).scroll("Upcoming, every minute", size, 1, step, frames);
}

// SPDX-License-Identifier: MIT
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QUrl>
#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/stat.h>

#include "agent/AgentClient.h"
#include "agent/InProcessCenter.h"
#include "agent/ProcessLauncher.h"
#include "icu/Calendars.h"
#include "icu/IcuTexts.h"
#include "linux/CloudFolder.h"
#include "linux/DeviceOwnerAuthentication.h"
#include "linux/Folders.h"
#include "linux/LoginStart.h"
#include "linux/PosixFileManager.h"
#include "linux/StandardErrorConsole.h"
#include "linux/SystemClock.h"
#include "linux/ThreadExecutor.h"
#include "linux/Vibration.h"
#include "support/FolderWatch.h"
#include "ui/AppModel.h"
#include "ui/Appearance.h"
#include "ui/Demo.h"
#include "ui/EventLoop.h"
#include "ui/QtMainExecutor.h"
#include "ui/SceneWatch.h"
#include "ui/ScreenPictures.h"
#include "ui/StartFailure.h"

void qml_register_types_Pillora();

namespace {

using namespace pillora;

/// Ends the program with the reason, which is printed, and shown in the words of `texts` where they are given: who
/// clicked an icon sees nothing that is printed.
[[noreturn]] void endWith(const Error& failure, const Texts* texts) {
  std::cerr << "pillora: " << failure.description << '\n';
  if (texts != nullptr) {
    qml_register_types_Pillora();
    QQmlApplicationEngine engine;
    if (QQuickWindow* const window = startFailureWindow(engine, failure, *texts)) {
      window->show();
      QGuiApplication::exec();
    }
  }
  std::exit(1);
}

/// The value, or the end of the program.
template <typename T>
T require(Result<T> result, const Texts* texts = nullptr) {
  if (!result) endWith(result.error(), texts);
  return *std::move(result);
}

/// Whether no display is needed, which has to be known before Qt looks for one.
bool needsNoDisplay(int argc, char** argv) {
  constexpr std::array<std::string_view, 5> kAnswered = {"-h", "--help", "--help-all", "-v", "--version"};
  return std::any_of(argv, argv + argc, [&](std::string_view word) {
    return word.starts_with("--pictures") || std::ranges::find(kAnswered, word) != kAnswered.end();
  });
}

struct Options {
  bool isDemo = false;
  QString pictures;  ///< the folder to draw every screen into; empty otherwise
};

Options readOptions(const QGuiApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Reminds you of your medicines."));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption demo(QStringLiteral("demo"),
                                QStringLiteral("Show a made-up month. Nothing is read or written."));
  const QCommandLineOption pictures(QStringLiteral("pictures"),
                                    QStringLiteral("Draw every screen of the demo into FOLDER and end."),
                                    QStringLiteral("FOLDER"));
  parser.addOptions({demo, pictures});
  parser.process(application);
  return {parser.isSet(demo) || parser.isSet(pictures), parser.value(pictures)};
}

class SystemDesktop final : public Desktop {
 public:
  void vibrate() override { pillora::vibrate(); }
  void openPage(std::string_view page) override {
    const std::string path = pagesFolder(ownProgram()) + "/" + std::string(page) + ".html";
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
  }
};

/// The notification centre: the agent where there is a session bus, else its engine in this process, which shows
/// nothing. That of the demo is gone with it.
class Reminders {
 public:
  /// `texts` for a failure that is to be shown.
  Reminders(bool isDemo, const Clock& clock, const Calendar& gregorian, MainExecutor& executor, const Texts* texts)
      : zone_(gregorian) {
    if (!isDemo) agent_ = require(AgentClient::connect(executor, {siblingProgram("pillora-agent")}), texts);
    if (agent_) {
      connection_ = std::make_unique<PolledConnection>(
          agent_->descriptor(), [this] { agent_->process(); }, [this] { return agent_->wantsToWrite(); });
      return;
    }
    if (isDemo) demoFolder_.emplace();
    const std::string folder = isDemo ? demoFolder_->path().toStdString() : require(stateFolder(), texts);
    engine_ = require(InProcessCenter::open(folder + "/reminders.db", clock, zone_, executor, presenter_), texts);
    timer_ = std::make_unique<DeadlineTimer>(
        clock, [this] { return engine_->nextDeadline(); }, [this] { static_cast<void>(engine_->advance()); });
  }
  ~Reminders() {
    if (agent_) static_cast<void>(agent_->finish());
  }

  UNUserNotificationCenter& notificationCenter() {
    if (agent_) return *agent_;
    return *engine_;
  }
  BGTaskScheduler& taskScheduler() {
    if (agent_) return *agent_;
    return *engine_;
  }
  AgentClient* agent() { return agent_.get(); }
  ReminderService service() const {
    if (demoFolder_) return ReminderService::fromEveryLogin;
    if (!agent_) return ReminderService::never;
    return agentStartsAtLogin() ? ReminderService::fromEveryLogin : ReminderService::untilLogout;
  }

 private:
  std::optional<QTemporaryDir> demoFolder_;
  CalendarZone zone_;
  SilentPresenter presenter_;
  std::unique_ptr<AgentClient> agent_;
  std::unique_ptr<InProcessCenter> engine_;
  std::unique_ptr<PolledConnection> connection_;
  std::unique_ptr<DeadlineTimer> timer_;
};

ModelConfiguration storeConfiguration(bool isDemo, const Clock& clock, const Texts* texts) {
  if (isDemo) return {.isStoredInMemoryOnly = true, .clock = &clock};
  return {.path = require(groupContainer(), texts) + "/Pillora.store", .clock = &clock};
}

std::unique_ptr<FileManager> fileManager(bool isDemo) {
  const auto nowhere = [] { return std::optional<std::string>(); };
  if (isDemo) return std::make_unique<PosixFileManager>(nowhere, nowhere);
  return std::make_unique<PosixFileManager>(documentsFolder, cloudFolder);
}

/// Lets what other programs write into the store show at once.
void watchStore(AppModel& app, QObject& owner) {
  auto opened = FolderWatch::open(require(groupContainer()));
  if (!opened) return;
  const std::shared_ptr<FolderWatch> watch = *std::move(opened);
  auto* const notifier = new QSocketNotifier(watch->descriptor(), QSocketNotifier::Read, &owner);
  QObject::connect(notifier, &QSocketNotifier::activated, &app, [&app, watch] {
    if (watch->takeChanges({"Pillora.store", "Pillora.store-wal"})) app.storeMayHaveChanged();
  });
}

/// What the agent and the desktop ask of the window.
AppHooks hooksOf(QQuickWindow& window, const SceneWatch& scene) {
  AppHooks hooks;
  hooks.isActive = [&scene] { return scene.isActive(); };
  hooks.activate = [&window](const std::string& token) {
    qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token));
    window.show();
    window.raise();
    window.requestActivate();
  };
  return hooks;
}

}  // namespace

int main(int argc, char** argv) {
  umask(077);
  if (needsNoDisplay(argc, argv)) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
  }
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("pillora"));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Pillora"));
  QGuiApplication::setApplicationVersion(QString::fromStdString(Bundle().shortVersion));
  QGuiApplication::setDesktopFileName(QString::fromStdString(Bundle().identifier));
  const Options options = readOptions(application);

  StandardErrorConsole console;
  QtMainExecutor executor;
  SystemDesktop desktop;
  DeviceOwnerAuthentication owner;
  const auto calendar = require(makeCalendar(systemLocale(), systemTimeZone()));
  const auto gregorian = require(makeCalendar("en_US", systemTimeZone()));
  const SystemClock systemClock;
  const DemoClock demoClock(*gregorian);
  const Clock& clock = options.pictures.isEmpty() ? static_cast<const Clock&>(systemClock) : demoClock;
  const auto texts = require(makeTexts(systemLocale(), systemTimeZone(), "en"));
  const auto files = fileManager(options.isDemo);
  ThreadExecutor background;
  const Texts* const shown = options.isDemo ? nullptr : texts.get();
  Reminders reminders(options.isDemo, clock, *gregorian, executor, shown);

  const Platform platform{clock,
                          *calendar,
                          *texts,
                          reminders.notificationCenter(),
                          reminders.taskScheduler(),
                          executor,
                          console,
                          owner.contextFactory(),
                          Bundle()};
  const auto pillora = require(PilloraApp::start(platform, storeConfiguration(options.isDemo, clock, shown)), shown);
  ModelContext& context = pillora->container().mainContext();
  if (options.isDemo) fillWithDemo(context, *calendar, clock.now());
  AppModel app({*pillora,
                {context, clock, *calendar, *texts, pillora->notificationManager()},
                {*files, background, executor, clock, *texts, Bundle()},
                desktop,
                console});
  app.settings()->setReminderService(reminders.service());

  qml_register_types_Pillora();
  QQmlApplicationEngine engine;
  engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
  engine.setInitialProperties({{QStringLiteral("app"), QVariant::fromValue(&app)}});
  engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Pillora/Main.qml")));
  if (engine.rootObjects().isEmpty()) return 1;
  auto& window = *qobject_cast<QQuickWindow*>(engine.rootObjects().first());
  if (!options.pictures.isEmpty()) return drawScreens(app, window, Appearance::of(engine), options.pictures) ? 0 : 1;

  SceneWatch scene(app, window);
  if (!options.isDemo) {
    const bool isOnly = reminders.agent() == nullptr || reminders.agent()->becomeApp(hooksOf(window, scene));
    if (!isOnly) return 0;
    watchStore(app, application);
  }
  // The first frame comes first: what the start has to do may take longer than a person likes to wait for it.
  QObject::connect(&window, &QQuickWindow::frameSwapped, &app, &AppModel::appeared,
                   static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
  window.show();
  return QGuiApplication::exec();
}

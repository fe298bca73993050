// SPDX-License-Identifier: MIT
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QUrl>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "agent/AgentClient.h"
#include "agent/InProcessCenter.h"
#include "agent/ProcessLauncher.h"
#include "icu/Language.h"
#include "icu/SystemRegion.h"
#include "linux/CloudFolder.h"
#include "linux/DesktopSettings.h"
#include "linux/DeviceOwnerAuthentication.h"
#include "linux/Folders.h"
#include "linux/LoginStart.h"
#include "linux/PosixFileManager.h"
#include "linux/SessionLock.h"
#include "linux/StandardErrorConsole.h"
#include "linux/SystemClock.h"
#include "linux/ThreadExecutor.h"
#include "linux/Vibration.h"
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

/// How long the window may wait for the desktop to say how it should look. It has been asked long before.
constexpr std::chrono::milliseconds kLookPatience(5);

void complain(const Error& failure) { std::cerr << "pillora: " << failure.description << '\n'; }

/// What every window of ours is drawn by.
struct Look {
  const Texts& texts;
  DesktopSettings* desktop;  ///< null where nobody says
};

/// Makes the module known to the engine, and lets it draw in the texts' direction and as the desktop asks.
Appearance& prepare(QQmlApplicationEngine& engine, const Look& look) {
  qml_register_types_Pillora();
  engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
  Appearance& appearance = Appearance::of(engine);
  const bool isMirrored = look.texts.readsRightToLeft();
  QGuiApplication::setLayoutDirection(isMirrored ? Qt::RightToLeft : Qt::LeftToRight);
  appearance.setProperty("mirrored", isMirrored);
  if (look.desktop != nullptr) {
    look.desktop->follow([&appearance](const DesktopLook& asked) { appearance.follow(asked); }, kLookPatience);
  }
  return appearance;
}

/// Ends the program with the reason, which is printed, and shown where a look is given: who clicked an icon sees
/// nothing that is printed.
[[noreturn]] void endWith(const Error& failure, const Look* look) {
  complain(failure);
  if (look != nullptr) {
    QQmlApplicationEngine engine;
    prepare(engine, *look);
    if (QQuickWindow* const window = startFailureWindow(engine, failure, look->texts)) {
      window->show();
      QGuiApplication::exec();
    }
  }
  std::exit(1);
}

/// The value, or the end of the program.
template <typename T>
T require(Result<T> result, const Look* look = nullptr) {
  if (!result) endWith(result.error(), look);
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
  std::optional<QString> pictures;  ///< the folder to draw every screen into
  std::string language;
  Activation activation;  ///< what to begin with, here or in the window that is open already
};

/// By which the desktop lets the window come to the front. Qt takes the variables away, so it is read first.
std::string activationToken() {
  for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
    if (const char* token = std::getenv(name); token != nullptr && *token != '\0') return token;
  }
  return {};
}

Options readOptions(const QGuiApplication& application, std::string token) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Reminds you of your medicines."));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption addMedicine(QStringLiteral("add-medicine"),
                                       QStringLiteral("Begin with the form for a new medicine."));
  const QCommandLineOption today(QStringLiteral("today"), QStringLiteral("Begin with Today."));
  const QCommandLineOption language(QStringLiteral("language"),
                                    QStringLiteral("Language of Pillora's own words (default: the system's)."),
                                    QStringLiteral("ID"));
  const QCommandLineOption demo(QStringLiteral("demo"),
                                QStringLiteral("Show a made-up month. Nothing is read or written."));
  const QCommandLineOption pictures(QStringLiteral("pictures"),
                                    QStringLiteral("Draw every screen of the demo into FOLDER and end."),
                                    QStringLiteral("FOLDER"));
  parser.addOptions({addMedicine, today, language, demo, pictures});
  parser.process(application);
  Activation activation{.token = std::move(token)};
  for (const QCommandLineOption& action : {today, addMedicine}) {
    if (parser.isSet(action)) activation.action = action.names().first().toStdString();
  }
  return {parser.isSet(demo) || parser.isSet(pictures),
          parser.isSet(pictures) ? std::optional(parser.value(pictures)) : std::nullopt,
          parser.isSet(language) ? parser.value(language).toStdString() : systemLanguage(), std::move(activation)};
}

/// For pictures, where nothing that the app prints is of interest.
class SilentConsole final : public Console {
 public:
  void print(std::string_view) override {}
};

/// Lets Qt's event loop drive a connection that is polled.
template <typename Connection>
std::unique_ptr<PolledConnection> drive(Connection& connection) {
  return std::make_unique<PolledConnection>(
      connection.descriptor(), [&connection] { connection.process(); },
      [&connection] { return connection.wantsToWrite(); });
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
  /// `agent` is null where there is no session bus. One that cannot be reached fails what is asked of it, and is looked
  /// for again later. `look` for a failure that is to be shown.
  Reminders(bool isDemo, std::unique_ptr<AgentClient> agent, const Clock& clock, const Calendar& gregorian,
            MainExecutor& executor, const Look* look)
      : zone_(gregorian), agent_(std::move(agent)) {
    if (agent_) {
      connection_ = drive(*agent_);
      return;
    }
    if (isDemo) demoFolder_.emplace();
    const std::string folder = isDemo ? demoFolder_->path().toStdString() : require(stateFolder(), look);
    engine_ = require(InProcessCenter::open(folder + "/reminders.db", clock, zone_, executor, presenter_), look);
    timer_ = std::make_unique<DeadlineTimer>(
        clock, [this] { return engine_->nextDeadline(); }, [this] { static_cast<void>(engine_->advance()); });
  }

  UNUserNotificationCenter& notificationCenter() {
    if (agent_) return *agent_;
    return *engine_;
  }
  BGTaskScheduler& taskScheduler() {
    if (agent_) return *agent_;
    return *engine_;
  }
  ReminderService service() const {
    if (demoFolder_) return ReminderService::fromEveryLogin;
    if (!agent_) return ReminderService::never;
    return agentStartsAtLogin() ? ReminderService::fromEveryLogin : ReminderService::untilLogout;
  }
  void zoneChanged() {
    if (engine_) static_cast<void>(engine_->zoneChanged());  // the agent sees it by itself
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

ModelConfiguration storeConfiguration(bool isDemo, const Clock& clock, const Look* look) {
  if (isDemo) return {.isStoredInMemoryOnly = true, .clock = &clock};
  return {.path = require(groupContainer(), look) + "/Pillora.store", .clock = &clock};
}

std::unique_ptr<FileManager> fileManager(bool isDemo) {
  const auto nowhere = [] { return std::optional<std::string>(); };
  if (isDemo) return std::make_unique<PosixFileManager>(nowhere, nowhere);
  return std::make_unique<PosixFileManager>(documentsFolder, cloudFolder);
}

/// What happens around the window and shows in it at once: the session is locked, the time zone becomes another, other
/// programs write into the store.
class Surroundings {
 public:
  Surroundings(AppModel& app, SceneWatch& scene, SystemRegion& region, Reminders& reminders, bool isDemo)
      : session_(SessionLock::open([&scene](bool isLocked) { scene.setSessionLocked(isLocked); })),
        zone_("/etc", {"localtime", "timezone"}, [&app, &region, &reminders] {
          if (!region.refresh()) return;
          reminders.zoneChanged();
          app.redraw();
        }) {
    if (session_) sessionConnection_ = drive(session_->connection());
    if (isDemo) return;
    const FolderNotifier::Names files = {"Pillora.store", "Pillora.store-wal"};
    store_ = std::make_unique<FolderNotifier>(require(groupContainer()), files, [&app] { app.storeMayHaveChanged(); });
  }

 private:
  std::unique_ptr<SessionLock> session_;
  std::unique_ptr<PolledConnection> sessionConnection_;
  FolderNotifier zone_;
  std::unique_ptr<FolderNotifier> store_;
};

/// What the agent and the desktop ask of the window.
AppHooks hooksOf(AppModel& app, QQuickWindow& window, const SceneWatch& scene) {
  AppHooks hooks;
  hooks.isActive = [&scene] { return scene.isActive(); };
  hooks.activate = [&app, &window](const Activation& activation) {
    if (!activation.token.empty()) qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activation.token));
    // show() would undo that it is maximised.
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.setVisible(true);
    window.raise();
    window.requestActivate();
    app.perform(activation.action);
  };
  return hooks;
}

/// Takes the app's name on the bus. False when another start was quicker; that one has been asked to come to the front.
bool becomeApp(AgentClient& agent, const AppHooks& hooks, const Activation& activation) {
  if (agent.becomeApp(hooks)) return true;
  if (require(agent.activateApp(activation))) return false;
  // The other one has ended in the meantime, or the bus gives us no name.
  if (const auto named = agent.becomeApp(hooks); !named) complain(named.error());
  return true;
}

/// The first frame of what is in the window comes first: what the start has to do may take longer than a person likes
/// to wait for it.
void startWhenDrawn(AppModel& app, QQuickWindow& window) {
  // Where frames are drawn by a thread of their own, several may be told of before the first is heard.
  const auto look = [&app, &window, hasStarted = false]() mutable {
    if (hasStarted || !window.property("isUp").toBool()) return;
    hasStarted = true;
    QMetaObject::invokeMethod(&app, &AppModel::appeared, Qt::QueuedConnection);
  };
  QObject::connect(&window, &QQuickWindow::frameSwapped, &app, look);
}

/// When it goes, so does what the window left to be deleted later. Without it that is deleted with the application,
/// when fields of text can no longer go.
struct LastDeletions {
  ~LastDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
};

}  // namespace

int main(int argc, char** argv) {
  umask(077);
  if (needsNoDisplay(argc, argv)) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
  }
  std::string token = activationToken();
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("pillora"));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Pillora"));
  QGuiApplication::setApplicationVersion(QString::fromStdString(Bundle().shortVersion));
  QGuiApplication::setDesktopFileName(QString::fromStdString(Bundle().identifier));
  const TerminationNotifier termination(&QCoreApplication::quit);
  const Options options = readOptions(application, std::move(token));
  const bool isDrawing = options.pictures.has_value();

  // Asked before the rest is made, so that the answer is there when the window is.
  const auto desktopSettings = isDrawing ? nullptr : DesktopSettings::open();
  StandardErrorConsole standardError;
  SilentConsole silence;
  Console& console = isDrawing ? static_cast<Console&>(silence) : standardError;
  QtMainExecutor executor;
  SystemDesktop desktop;
  DeviceOwnerAuthentication owner;
  const auto region = require(SystemRegion::open(options.language, {cataloguesFolder(), &console}));
  const Calendar& calendar = region->calendar();
  const Texts& texts = region->texts();
  const SystemClock systemClock;
  const DemoClock demoClock(region->gregorian());
  const Clock& clock = isDrawing ? static_cast<const Clock&>(demoClock) : systemClock;
  const auto files = fileManager(options.isDemo);
  ThreadExecutor background;
  const Look look{texts, desktopSettings.get()};
  const Look* const shown = options.isDemo ? nullptr : &look;
  auto client = options.isDemo ? nullptr : AgentClient::open(executor, {siblingProgram("pillora-agent")});
  AgentClient* const agent = client.get();
  if (agent != nullptr) {
    if (require(agent->activateApp(options.activation), shown)) return 0;
    if (const auto found = agent->findAgent(); !found) complain(found.error());
  }
  Reminders reminders(options.isDemo, std::move(client), clock, region->gregorian(), executor, shown);

  const Platform platform{clock,
                          calendar,
                          texts,
                          reminders.notificationCenter(),
                          reminders.taskScheduler(),
                          executor,
                          console,
                          owner.contextFactory(),
                          Bundle()};
  const auto pillora = require(PilloraApp::start(platform, storeConfiguration(options.isDemo, clock, shown)), shown);
  ModelContext& context = pillora->container().mainContext();
  if (options.isDemo) fillWithDemo(context, calendar, clock.now());
  AppModel app({*pillora,
                {context, clock, calendar, texts, pillora->notificationManager()},
                {*files, background, executor, clock, texts, Bundle()},
                desktop,
                console,
                owner.contextFactory()});
  app.settings()->setReminderService(reminders.service());

  const LastDeletions lastDeletions;
  QQmlApplicationEngine engine;
  engine.setInitialProperties({{QStringLiteral("app"), QVariant::fromValue(&app)}});
  Appearance& appearance = prepare(engine, look);
  engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Pillora/Main.qml")));
  if (engine.rootObjects().isEmpty()) return 1;
  auto& window = *qobject_cast<QQuickWindow*>(engine.rootObjects().first());
  if (isDrawing) {
    const auto drawn = drawScreens(app, window, appearance, *options.pictures);
    if (!drawn) complain(drawn.error());
    return drawn ? 0 : 1;
  }

  SceneWatch scene(app, window);
  if (agent != nullptr && !becomeApp(*agent, hooksOf(app, window, scene), options.activation)) return 0;
  const Surroundings surroundings(app, scene, *region, reminders, options.isDemo);
  const auto settingsConnection = desktopSettings ? drive(desktopSettings->connection()) : nullptr;
  startWhenDrawn(app, window);
  app.perform(options.activation.action);
  window.show();
  const int status = QGuiApplication::exec();
  if (agent != nullptr) agent->resignApp();
  return status;
}

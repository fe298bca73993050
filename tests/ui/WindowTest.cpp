// SPDX-License-Identifier: MIT
#include "ui/WindowTest.h"

#include <QQmlComponent>

namespace pillora {
namespace {

QQuickItem* seekIn(QQuickItem* item, const std::function<bool(QQuickItem*)>& wanted) {
  if (!item->isVisible()) return nullptr;
  if (wanted(item)) return item;
  for (QQuickItem* child : item->childItems()) {
    if (QQuickItem* found = seekIn(child, wanted)) return found;
  }
  return nullptr;
}

void seekAllIn(QQuickItem* item, const std::function<bool(QQuickItem*)>& wanted, std::vector<QQuickItem*>& all) {
  if (!item->isVisible() || !item->isEnabled()) return;
  if (wanted(item)) all.push_back(item);
  for (QQuickItem* child : item->childItems()) seekAllIn(child, wanted, all);
}

}  // namespace

WindowTest::WindowTest(const ModelConfiguration& configuration) {
  pillora_ = valueOrAbort(PilloraApp::start(platform(), configuration));
  pillora_->setupInitialSettings();
}

WindowTest::~WindowTest() {
  window_.reset();
  deleteWhatIsGone();
}

std::shared_ptr<Medicine> WindowTest::add(NewMedicine values) {
  values.startDate = at("2025-01-10T00:00:00-05:00");
  const auto medicine = Medicine::make(std::move(values), clock.now());
  context().insert(medicine);
  executor.drain();
  return medicine;
}

std::shared_ptr<Medicine> WindowTest::add(const std::string& name, std::vector<TimeOfDay> times) {
  NewMedicine values;
  values.name = name;
  values.interval = daily(std::move(times));
  return add(std::move(values));
}

std::shared_ptr<DoseLog> WindowTest::addLog(const std::shared_ptr<Medicine>& medicine, Instant time,
                                            DoseStatus status) {
  const auto log = DoseLog::make(time, time, status, 0, "", medicine);
  context().insert(log);
  executor.drain();
  return log;
}

std::vector<std::string> WindowTest::plannedFor(const Medicine& medicine) {
  std::vector<std::string> planned;
  for (const std::string& each : center.pendingIdentifiers()) {
    const bool isOurs = each.rfind(medicine.id().text(), 0) == 0;
    if (isOurs && each.find("-followup-") == std::string::npos) planned.push_back(each);
  }
  return planned;
}

void WindowTest::open(QSize size) {
  app_ = std::make_unique<AppModel>(
      WindowEnvironment{*pillora_,
                        {context(), clock, *calendar, *texts, pillora_->notificationManager()},
                        {files_, background_, executor, clock, *texts, Bundle()},
                        desktop_,
                        console,
                        device.factory()});
  QQmlComponent component(view_.engine(), QUrl(QStringLiteral("qrc:/qt/qml/Pillora/Main.qml")));
  window_.reset(qobject_cast<QQuickWindow*>(
      component.createWithInitialProperties({{QStringLiteral("app"), QVariant::fromValue(app_.get())}})));
  ASSERT_NE(window_, nullptr) << component.errorString().toStdString();
  scene_ = std::make_unique<SceneWatch>(*app_, *window_);
  window_->resize(size);
  comeBack(clock.now());
  app_->appeared();
  settleAll();
}

void WindowTest::leave() {
  window_->hide();
  settleAll();
}

void WindowTest::comeBack(Instant now) {
  clock.set(now);
  window_->show();
  window_->requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  settleAll();
}

void WindowTest::finishBackground() {
  do {
    background_.runAll();
    settleAll();
  } while (background_.waiting() > 0);
}

void WindowTest::settleAll() {
  const auto turns = [&] {
    for (int turn = 0; turn < 4; ++turn) {
      executor.drain();
      QCoreApplication::processEvents();
      deleteWhatIsGone();
    }
  };
  turns();
  if (!window_->isVisible()) return;
  window_->grabWindow();
  turns();
}

QQuickItem* WindowTest::seek(const Wanted& wanted) { return seekIn(window_->contentItem(), wanted); }

std::vector<QQuickItem*> WindowTest::seekAll(const Wanted& wanted) {
  std::vector<QQuickItem*> all;
  seekAllIn(window_->contentItem(), wanted, all);
  return all;
}

QQuickItem* WindowTest::seek(const char* property, const QString& value, const char* type) {
  return seek([&](QQuickItem* item) {
    return QByteArray(item->metaObject()->className()).startsWith(type) && item->property(property).toString() == value;
  });
}

void WindowTest::clickOn(QQuickItem* item) {
  ASSERT_NE(item, nullptr);
  QTest::mouseClick(window_.get(), Qt::LeftButton, {}, middle(item));
  settleAll();
}

}  // namespace pillora

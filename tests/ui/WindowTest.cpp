// SPDX-License-Identifier: MIT
#include "ui/WindowTest.h"

#include <QQmlComponent>

#include "doubles/Intervals.h"

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

WindowTest::WindowTest() {
  ModelConfiguration configuration;
  configuration.isStoredInMemoryOnly = true;
  pillora_ = valueOrAbort(PilloraApp::start(platform(), configuration));
  pillora_->setupInitialSettings();
}

std::shared_ptr<Medicine> WindowTest::add(const std::string& name, std::vector<TimeOfDay> times) {
  NewMedicine values;
  values.name = name;
  values.interval = daily(std::move(times));
  values.startDate = at("2025-01-10T00:00:00-05:00");
  const auto medicine = Medicine::make(std::move(values), clock.now());
  context().insert(medicine);
  executor.drain();
  return medicine;
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
  window_->resize(size);
  window_->show();
  window_->requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  app_->appeared();
  app_->setScenePhase(ScenePhase::active);
  settleAll();
}

void WindowTest::settleAll() {
  for (int turn = 0; turn < 4; ++turn) {
    executor.drain();
    QCoreApplication::processEvents();
  }
  window_->grabWindow();
  for (int turn = 0; turn < 4; ++turn) QCoreApplication::processEvents();
  deleteWhatIsGone();
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

void WindowTest::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(window_.get(), key, modifiers);
  settleAll();
}

}  // namespace pillora

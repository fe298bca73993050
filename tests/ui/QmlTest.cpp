// SPDX-License-Identifier: MIT
#include "ui/QmlTest.h"

#include <QQmlComponent>
#include <QStringList>
#include <utility>

void qml_register_types_Pillora();

namespace pillora {
namespace {

QStringList warnings;

void keepWarnings(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type != QtDebugMsg && type != QtInfoMsg) warnings.append(text);
}

QQuickItem* findIn(QQuickItem* item, const QString& name) {
  if (item->objectName() == name) return item;
  for (QQuickItem* child : item->childItems()) {
    if (QQuickItem* found = findIn(child, name)) return found;
  }
  return nullptr;
}

Appearance& prepare(QQuickView& view, Sample& sample) {
  qInstallMessageHandler(keepWarnings);
  qml_register_types_Pillora();
  Sample::registerType(sample);
  view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
  view.setResizeMode(QQuickView::SizeRootObjectToView);
  return Appearance::of(*view.engine());
}

}  // namespace

QmlTest::QmlTest() : appearance_(prepare(view_, sample_)) { appearance_.setProperty("reducedMotion", true); }

QmlTest::~QmlTest() {
  view_.setSource({});
  EXPECT_EQ(takeWarnings(), "");
  qInstallMessageHandler(nullptr);
}

QQuickItem* QmlTest::showPage(const QString& name, QSize size) {
  view_.setSource({});
  view_.resize(size);
  view_.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Pillora/sheet/") + name + QStringLiteral(".qml")));
  view_.show();
  settle();
  return view_.rootObject();
}

QQuickItem* QmlTest::show(const QString& qml, QSize size) {
  QQmlComponent component(view_.engine());
  component.setData(("import QtQuick\nimport Pillora\nimport Pillora.Samples\n" + qml).toUtf8(), QUrl("qrc:/test.qml"));
  made_.reset(qobject_cast<QQuickItem*>(component.create()));
  EXPECT_NE(made_, nullptr) << component.errorString().toStdString();
  if (!made_) return nullptr;
  view_.resize(size);
  made_->setParentItem(view_.contentItem());
  view_.show();
  view_.requestActivate();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&view_));
  settle();
  return made_.get();
}

void QmlTest::settle() {
  for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
  view_.grabWindow();
  QCoreApplication::processEvents();
  deleteWhatIsGone();
}

void QmlTest::deleteWhatIsGone() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

QQuickItem* QmlTest::find(const QString& name) {
  QQuickItem* const item = findIn(view_.contentItem(), name);
  EXPECT_NE(item, nullptr) << name.toStdString();
  return item;
}

std::string QmlTest::takeWarnings() { return std::exchange(warnings, {}).join(u'\n').toStdString(); }

}  // namespace pillora

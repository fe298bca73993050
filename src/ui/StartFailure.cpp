// SPDX-License-Identifier: MIT
#include "ui/StartFailure.h"

#include <QUrl>
#include <string_view>

#include "app/PilloraApp.h"

namespace pillora {

QQuickWindow* startFailureWindow(QQmlApplicationEngine& engine, const Error& failure, const Texts& texts) {
  const auto shown = [](const std::string& text) { return QVariant(QString::fromStdString(text)); };
  std::string_view why = failure.description;
  if (why.starts_with(PilloraApp::kStoreFailure)) why.remove_prefix(PilloraApp::kStoreFailure.size());
  const std::string reason = texts.text("The reason: {reason}", {{"reason", std::string(why)}});
  engine.setInitialProperties(
      {{QStringLiteral("heading"), shown(texts.text("Pillora Cannot Start"))},
       {QStringLiteral("reason"), shown(reason + "\n\n" + texts.text("Your records were left as they are."))},
       {QStringLiteral("closing"), shown(texts.text("Close"))}});
  engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Pillora/StartFailureView.qml")));
  return engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(engine.rootObjects().first());
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickWindow>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/AppFixture.h"
#include "doubles/FakeBackgroundExecutor.h"
#include "doubles/InMemoryFileManager.h"
#include "ui/AppModel.h"
#include "ui/QmlTest.h"

namespace pillora {

/// A desktop that writes down what it was asked.
class RecordingDesktop final : public Desktop {
 public:
  std::vector<std::string> calls;

  void vibrate() override { calls.emplace_back("vibrate"); }
  void openPage(std::string_view page) override { calls.emplace_back(page); }
};

/// The whole window over a store in memory, in New York on Friday 10 January 2025 at 09:00, used by keys and clicks.
class WindowTest : public QmlTest, protected AppFixture {
 protected:
  WindowTest();

  ModelContext& context() { return pillora_->container().mainContext(); }
  std::shared_ptr<Medicine> add(const std::string& name, std::vector<TimeOfDay> times);
  std::vector<std::shared_ptr<DoseLog>> logs() { return *context().fetch<DoseLog>(); }
  std::shared_ptr<AppSettings> settings() { return context().fetch<AppSettings>()->front(); }

  /// Loads and shows the window, as large as this, with the person in front of it.
  void open(QSize size = {360, 720});
  /// Everything that is waiting has happened and is drawn.
  void settleAll();

  using Wanted = std::function<bool(QQuickItem*)>;
  /// The first item in sight of which this holds; null when there is none.
  QQuickItem* seek(const Wanted& wanted);
  /// All of them that are enabled as well.
  std::vector<QQuickItem*> seekAll(const Wanted& wanted);
  /// One whose property has this value: a text, a name.
  QQuickItem* seek(const char* property, const QString& value, const char* type = "");
  void clickOn(QQuickItem* item);
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});

  InMemoryFileManager files_{clock};
  FakeBackgroundExecutor background_;
  RecordingDesktop desktop_;
  std::unique_ptr<PilloraApp> pillora_;
  std::unique_ptr<AppModel> app_;
  std::unique_ptr<QQuickWindow> window_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/AppFixture.h"
#include "doubles/FakeBackgroundExecutor.h"
#include "doubles/InMemoryFileManager.h"
#include "doubles/Intervals.h"
#include "ui/AppModel.h"
#include "ui/QmlTest.h"
#include "ui/SceneWatch.h"
#include "ui/WindowUser.h"

namespace pillora {

/// A desktop that writes down what it was asked.
class RecordingDesktop final : public Desktop {
 public:
  std::vector<std::string> calls;

  void vibrate() override { calls.emplace_back("vibrate"); }
  void openPage(std::string_view page) override { calls.emplace_back(page); }
};

/// The whole window over a store, in memory unless another is given, in New York on Friday 10 January 2025 at 09:00,
/// used as a person uses it.
class WindowTest : public QmlTest, protected AppFixture, protected WindowUser {
 protected:
  explicit WindowTest(const ModelConfiguration& configuration = {.isStoredInMemoryOnly = true});
  /// Deletes what the window left to be deleted later, too.
  ~WindowTest() override;

  ModelContext& context() { return pillora_->container().mainContext(); }
  /// A medicine that began on 10 January, inserted and saved; its name, interval and what else differs are given.
  std::shared_ptr<Medicine> add(NewMedicine values);
  std::shared_ptr<Medicine> add(const std::string& name, std::vector<TimeOfDay> times);
  std::shared_ptr<DoseLog> addLog(const std::shared_ptr<Medicine>& medicine, Instant time, DoseStatus status);
  std::vector<std::shared_ptr<Medicine>> medicines() { return *context().fetch<Medicine>(); }
  /// In the order of their due times.
  std::vector<std::shared_ptr<DoseLog>> logs() {
    return *context().fetch(FetchDescriptor<DoseLog>().sortedBy(&DoseLog::scheduledTime));
  }
  std::shared_ptr<AppSettings> settings() { return context().fetch<AppSettings>()->front(); }
  /// The identifiers of the pending reminders of the medicine, follow-ups left out, in the order of their planning.
  std::vector<std::string> plannedFor(const Medicine& medicine);

  /// Loads and shows the window, as large as this, with the person in front of it.
  void open(QSize size = {360, 720});
  /// The window goes out of sight, and comes back at this time.
  void leave();
  void comeBack(Instant now);
  /// What waits in the background comes to its end.
  void finishBackground();
  void settleAll() override;

  using Wanted = std::function<bool(QQuickItem*)>;
  /// The first item in sight of which this holds; null when there is none.
  QQuickItem* seek(const Wanted& wanted);
  /// All of them that are enabled as well.
  std::vector<QQuickItem*> seekAll(const Wanted& wanted);
  /// One whose property has this value: a text, a name.
  QQuickItem* seek(const char* property, const QString& value, const char* type = "");
  void clickOn(QQuickItem* item);

  InMemoryFileManager files_{clock};
  FakeBackgroundExecutor background_;
  RecordingDesktop desktop_;
  std::unique_ptr<PilloraApp> pillora_;
  std::unique_ptr<AppModel> app_;
  std::unique_ptr<QQuickWindow> window_;
  std::unique_ptr<SceneWatch> scene_;

 private:
  QQuickWindow& window() override { return *window_; }
};

}  // namespace pillora

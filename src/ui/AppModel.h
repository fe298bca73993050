// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QTimer>
#include <memory>
#include <string_view>
#include <vector>

#include "app/ContentView.h"
#include "app/PilloraApp.h"
#include "backup/BackupService.h"
#include "platform/Desktop.h"
#include "ui/DoseModels.h"
#include "ui/FormModels.h"

namespace pillora {

/// What the window is made from; all of it outlives the window.
struct WindowEnvironment {
  PilloraApp& app;
  ScreenEnvironment screens;
  BackupEnvironment backups;
  Desktop& desktop;
  Console& console;
  LAContextFactory makeLAContext;
};

/// The tabs, and the lock over them.
class RootModel final : public pillora::ScreenModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")

 public:
  RootModel(const ScreenEnvironment& environment, AuthenticationManager& authentication)
      : view_(environment, authentication) {}

  bool isLocked() const { return view_.isLocked(); }
  int selectedTab() const { return view_.selectedTab; }

  /// By the tag of a tab; another changes nothing.
  Q_INVOKABLE void select(int tag);
  /// By the id of a tab.
  void show(std::string_view id);
  Q_INVOKABLE void unlock() { view_.unlock(); }
  Q_INVOKABLE void usePasscode() { view_.usePasscode(); }

 protected:
  ContentRow drawn() const override { return contentRow(view_.content()); }

 private:
  ContentView view_;
};

/// The whole app as QML sees it: one model per screen. What is on show is drawn again after each change of the store,
/// whoever made it, after each action, when the app becomes active, and when a minute begins.
///
/// While the app is locked QML shows the root's lock screen and unloads all else.
class AppModel final : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(pillora::RootModel* root READ root CONSTANT)
  Q_PROPERTY(pillora::TodayModel* today READ today CONSTANT)
  Q_PROPERTY(pillora::UpcomingModel* upcoming READ upcoming CONSTANT)
  Q_PROPERTY(pillora::MedicineListModel* medicines READ medicines CONSTANT)
  Q_PROPERTY(pillora::HistoryModel* history READ history CONSTANT)
  Q_PROPERTY(pillora::SettingsModel* settings READ settings CONSTANT)
  Q_PROPERTY(pillora::MedicineDetailModel* detail READ detail CONSTANT)
  Q_PROPERTY(pillora::AddMedicineModel* addMedicine READ addMedicine CONSTANT)

 public:
  explicit AppModel(const WindowEnvironment& environment);

  RootModel* root() { return &root_; }
  TodayModel* today() { return &today_; }
  UpcomingModel* upcoming() { return &upcoming_; }
  MedicineListModel* medicines() { return &medicines_; }
  HistoryModel* history() { return &history_; }
  SettingsModel* settings() { return &settings_; }
  MedicineDetailModel* detail() { return &detail_; }
  AddMedicineModel* addMedicine() { return &addMedicine_; }

  /// The window has been shown for the first time.
  void appeared() { static_cast<void>(environment_.app.rootViewAppeared()); }
  void setScenePhase(ScenePhase phase);
  /// What the desktop's launcher offers, by its name there: "add-medicine" opens the form, a tab's id ("today") shows
  /// that tab. Another name does nothing. What is done under the lock shows once that is open.
  void perform(std::string_view action);
  /// Another process may have written the store.
  void storeMayHaveChanged() { environment_.screens.context.refresh(); }
  /// Draws what is on show.
  void redraw();

 private:
  ScreenModel& front();
  void redrawSoon();
  void awaitNextMinute();

  WindowEnvironment environment_;
  BackupService backups_;
  RootModel root_;
  TodayModel today_;
  UpcomingModel upcoming_;
  MedicineListModel medicines_;
  HistoryModel history_;
  SettingsModel settings_;
  MedicineDetailModel detail_;
  AddMedicineModel addMedicine_;

  ScenePhase phase_ = ScenePhase::inactive;
  int tabDrawn_ = -1;
  QTimer minute_, soon_;
  std::vector<std::shared_ptr<void>> observers_;
};

}  // namespace pillora

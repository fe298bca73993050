// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "platform/Desktop.h"
#include "screens/ReminderHistoryView.h"
#include "screens/TodayView.h"
#include "screens/UpcomingView.h"
#include "ui/FlatList.h"
#include "ui/ScreenModel.h"

namespace pillora {

// The screens that record doses. An action on what is gone meanwhile does nothing, and none shows an error.

/// A screen with dose actions, which can be felt where the device vibrates and the settings allow it.
class DoseModel : public pillora::ScreenModel {
  Q_OBJECT
  QML_ANONYMOUS

 protected:
  DoseModel(const ScreenEnvironment& environment, Desktop& desktop)
      : settings_(environment.context), desktop_(desktop) {}
  /// Whether something was recorded or planned.
  void finishAction(bool isDone);

 private:
  LiveQuery<AppSettings> settings_;
  Desktop& desktop_;
};

class TodayModel final : public pillora::DoseModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")

 public:
  TodayModel(const ScreenEnvironment& environment, Desktop& desktop)
      : DoseModel(environment, desktop), view_(environment) {}

  Q_INVOKABLE void take(const QString& medicine, pillora::Instant time);
  Q_INVOKABLE void snooze(const QString& medicine);
  Q_INVOKABLE void skip(const QString& medicine, pillora::Instant time);
  Q_INVOKABLE void undo(const QString& log);

 protected:
  ContentRow drawn() const override { return contentRow(view_.content()); }

 private:
  TodayView view_;
};

class UpcomingModel final : public pillora::DoseModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")

 public:
  UpcomingModel(const ScreenEnvironment& environment, Desktop& desktop)
      : DoseModel(environment, desktop), view_(environment) {}

  Q_INVOKABLE void take(const QString& medicine, pillora::Instant time);
  Q_INVOKABLE void skip(const QString& medicine, pillora::Instant time);
  Q_INVOKABLE void showMore();
  Q_INVOKABLE void showPrevious();
  Q_INVOKABLE void showFirst();

 protected:
  ContentRow drawn() const override {
    return flattened(contentRow(view_.content()), "days", "doses", shapeOf<UpcomingDoseCard>());
  }

 private:
  UpcomingView view_;
};

class HistoryModel final : public pillora::DoseModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")

 public:
  HistoryModel(const ScreenEnvironment& environment, Desktop& desktop)
      : DoseModel(environment, desktop), view_(environment) {}

  /// By the id of a segment or a chip; another id changes nothing.
  Q_INVOKABLE void selectRange(const QString& range);
  Q_INVOKABLE void selectFilter(const QString& filter);
  /// What the row's action is called: "take" or "skip".
  Q_INVOKABLE void act(const QString& log, const QString& action);
  Q_INVOKABLE void showMore();
  Q_INVOKABLE void showPrevious();
  Q_INVOKABLE void showFirst();

 protected:
  ContentRow drawn() const override {
    return flattened(contentRow(view_.content()), "days", "logs", shapeOf<HistoryLogRow>());
  }

 private:
  ReminderHistoryView view_;
};

}  // namespace pillora

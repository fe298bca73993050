// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTimer>
#include <optional>
#include <string>

#include "platform/Desktop.h"
#include "screens/AddMedicineView.h"
#include "screens/MedicineDetailView.h"
#include "screens/MedicineListView.h"
#include "screens/SettingsView.h"
#include "ui/FlatList.h"
#include "ui/ScreenModel.h"

namespace pillora {

/// A screen made of rows with controls, seen from a row: what a person does with it, by the row's id. What the row does
/// not offer changes nothing. Rows of a kind that a screen does not have need no action there.
class FormModel : public pillora::ScreenModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")

 public:
  Q_INVOKABLE virtual void setText(const QString&, const QString&) {}
  Q_INVOKABLE virtual void setOn(const QString& row, bool isOn) = 0;
  Q_INVOKABLE virtual void increment(const QString& row) = 0;
  Q_INVOKABLE virtual void decrement(const QString& row) = 0;
  /// An option of a picker, a cell of a grid.
  Q_INVOKABLE virtual void choose(const QString& row, const QString& option) = 0;
  /// A button, by its own id: a row's, one in a row, a toolbar's, or an item of its menu.
  Q_INVOKABLE virtual void press(const QString& id) = 0;
  /// Takes a row away.
  Q_INVOKABLE virtual void remove(const QString&) {}

  // The sheets of date and time rows.
  Q_INVOKABLE virtual void openSheet(const QString&) {}
  Q_INVOKABLE virtual void closeSheet() {}
  Q_INVOKABLE virtual void showPreviousMonth() {}
  Q_INVOKABLE virtual void showNextMonth() {}
  Q_INVOKABLE virtual void pickDay(const QString&) {}
  Q_INVOKABLE virtual void pickHour(int) {}
  Q_INVOKABLE virtual void pickMinute(int) {}
};

/// The form that makes a new medicine. Its content stays after it has closed, for the sheet that slides away.
class AddMedicineModel final : public pillora::FormModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")
  Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)

 public:
  explicit AddMedicineModel(const ScreenEnvironment& environment) : environment_(environment), view_(environment) {}

  bool isOpen() const { return isOpen_; }
  /// Begins with an empty form, unless one is open.
  Q_INVOKABLE void open();

  void setText(const QString& row, const QString& text) override;
  void setOn(const QString& row, bool isOn) override;
  void increment(const QString& row) override;
  void decrement(const QString& row) override;
  void choose(const QString& row, const QString& option) override;
  /// "save", "cancel", "addTime"
  void press(const QString& id) override;
  void remove(const QString& row) override;
  void openSheet(const QString& row) override;
  void closeSheet() override;
  void showPreviousMonth() override;
  void showNextMonth() override;
  void pickDay(const QString& cell) override;
  void pickHour(int hour) override;
  void pickMinute(int minute) override;

 signals:
  void isOpenChanged();

 protected:
  ContentRow drawn() const override { return contentRow(view_->content()); }

 private:
  void finishAction();

  ScreenEnvironment environment_;
  std::optional<AddMedicineView> view_;  ///< never empty
  bool isOpen_ = false;
};

/// The details of a medicine. Its content stays after it has closed, for the page that slides away.
class MedicineDetailModel final : public pillora::FormModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")
  Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)

 public:
  explicit MedicineDetailModel(const ScreenEnvironment& environment);
  ~MedicineDetailModel() override { flush(); }

  bool isOpen() const { return isOpen_; }
  Q_INVOKABLE void open(const QString& medicine);
  Q_INVOKABLE void goBack();
  Q_INVOKABLE void dismissDeleteAlert();
  Q_INVOKABLE void confirmDelete();
  /// Puts what is being typed into the record now, for an app that is about to go.
  void flush();
  /// Draws again while it is open, and closes when somebody else has deleted the medicine.
  void refresh();

  /// Takes effect when the typing rests, or before anything else is done here: each save waits for the disk.
  void setText(const QString& row, const QString& text) override;
  void setOn(const QString& row, bool isOn) override;
  void increment(const QString& row) override;
  void decrement(const QString& row) override;
  void choose(const QString& row, const QString& option) override;
  /// "edit", "save", "cancel", "done", "delete"
  void press(const QString& id) override;
  void openSheet(const QString& row) override;
  void closeSheet() override;
  void showPreviousMonth() override;
  void showNextMonth() override;
  void pickDay(const QString& cell) override;

 signals:
  void isOpenChanged();

 protected:
  ContentRow drawn() const override;

 private:
  /// Runs `action` on the view, after what was typed.
  template <typename Action>
  void act(Action action);
  void closeIfDismissed();

  struct Typed {
    std::string row, text;
  };

  ScreenEnvironment environment_;
  std::optional<MedicineDetailView> view_;
  std::optional<Typed> typed_;
  QTimer rest_;
  bool isOpen_ = false;
};

class MedicineListModel final : public pillora::ScreenModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")

 public:
  explicit MedicineListModel(const ScreenEnvironment& environment) : view_(environment) {}

  Q_INVOKABLE void search(const QString& text);
  /// At once, without a question.
  Q_INVOKABLE void deleteRow(const QString& section, const QString& medicine);

 protected:
  ContentRow drawn() const override {
    return flattened(contentRow(view_.content()), "sections", "rows", shapeOf<MedicineRowView>());
  }

 private:
  MedicineListView view_;
};

class SettingsModel final : public pillora::FormModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the app")

 public:
  SettingsModel(const ScreenEnvironment& environment, const BackupEnvironment& backupEnvironment,
                BackupService& backups, Console& console, Desktop& desktop, LAContextFactory makeLAContext);

  /// The tab came to the front.
  void appeared() { view_.appeared(); }
  void setReminderService(ReminderService service) { view_.reminderService = service; }

  void setOn(const QString& row, bool isOn) override;
  void increment(const QString& row) override;
  void decrement(const QString& row) override;
  void choose(const QString& row, const QString& option) override;
  void press(const QString& id) override;
  /// "cancel" of either sheet.
  Q_INVOKABLE void closeSheets();
  Q_INVOKABLE void restoreBackup(const QString& url);
  Q_INVOKABLE void deleteBackup(const QString& url);
  Q_INVOKABLE void dismissAlert(const QString& id);

 protected:
  ContentRow drawn() const override { return contentRow(view_.content()); }

 private:
  SettingsView view_;
  Desktop& desktop_;
  std::shared_ptr<void> observer_;
};

}  // namespace pillora

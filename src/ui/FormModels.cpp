// SPDX-License-Identifier: MIT
#include "ui/FormModels.h"

#include <chrono>

namespace pillora {

namespace {

constexpr auto kTypingRests = std::chrono::milliseconds(400);

int64_t selectedOf(const std::vector<TimeCell>& cells) {
  for (const TimeCell& cell : cells) {
    if (cell.isSelected) return cell.value;
  }
  return 0;
}

}  // namespace

// The form of a new medicine.

void AddMedicineModel::open() {
  if (isOpen_) return;
  view_.emplace(environment_);
  isOpen_ = true;
  redraw();
  emit isOpenChanged();
}

void AddMedicineModel::finishAction() {
  emit acted();
  if (isOpen_ && view_->isDismissed()) {
    isOpen_ = false;
    emit isOpenChanged();
  }
}

void AddMedicineModel::setText(const QString& row, const QString& text) {
  view_->setText(row.toStdString(), text.toStdString());
  finishAction();
}

void AddMedicineModel::setOn(const QString& row, bool isOn) {
  view_->setOn(row.toStdString(), isOn);
  finishAction();
}

void AddMedicineModel::increment(const QString& row) {
  view_->increment(row.toStdString());
  finishAction();
}

void AddMedicineModel::decrement(const QString& row) {
  view_->decrement(row.toStdString());
  finishAction();
}

void AddMedicineModel::choose(const QString& row, const QString& option) {
  view_->choose(row.toStdString(), option.toStdString());
  finishAction();
}

void AddMedicineModel::press(const QString& id) {
  if (id == QStringLiteral("save")) {
    view_->save();
  } else if (id == QStringLiteral("cancel")) {
    view_->cancel();
  } else if (id == QStringLiteral("addTime")) {
    view_->addTime();
  }
  finishAction();
}

void AddMedicineModel::remove(const QString& row) {
  view_->removeTime(row.toStdString());
  finishAction();
}

void AddMedicineModel::openSheet(const QString& row) {
  view_->openSheet(row.toStdString());
  finishAction();
}

void AddMedicineModel::closeSheet() {
  view_->closeSheet();
  finishAction();
}

void AddMedicineModel::showPreviousMonth() {
  view_->showPreviousMonth();
  finishAction();
}

void AddMedicineModel::showNextMonth() {
  view_->showNextMonth();
  finishAction();
}

void AddMedicineModel::pickDay(const QString& cell) {
  view_->pickDay(cell.toStdString());
  finishAction();
}

void AddMedicineModel::pickHour(int hour) {
  const auto sheet = view_->content().timeSheet;
  if (sheet) view_->setTime(sheet->row, hour, selectedOf(sheet->minutes));
  finishAction();
}

void AddMedicineModel::pickMinute(int minute) {
  const auto sheet = view_->content().timeSheet;
  if (sheet) view_->setTime(sheet->row, selectedOf(sheet->hours), minute);
  finishAction();
}

// The details of a medicine.

MedicineDetailModel::MedicineDetailModel(const ScreenEnvironment& environment) : environment_(environment) {
  rest_.setSingleShot(true);
  rest_.setInterval(kTypingRests);
  connect(&rest_, &QTimer::timeout, this, &MedicineDetailModel::flush);
}

ContentRow MedicineDetailModel::drawn() const { return contentRow(view_ ? view_->content() : MedicineDetailContent()); }

void MedicineDetailModel::open(const QString& medicine) {
  flush();
  view_.emplace(environment_, uuidOf(medicine));
  redraw();
  isOpen_ = true;
  emit isOpenChanged();
}

template <typename Action>
void MedicineDetailModel::act(Action action) {
  if (!view_) return;
  rest_.stop();
  if (typed_) view_->setText(typed_->row, typed_->text);
  typed_.reset();
  action(*view_);
  emit acted();
  closeIfDismissed();
}

void MedicineDetailModel::closeIfDismissed() {
  if (!isOpen_ || !view_->isDismissed()) return;
  isOpen_ = false;
  emit isOpenChanged();
}

void MedicineDetailModel::refresh() {
  if (!isOpen_) return;
  // What slides away keeps showing what it was.
  if (!view_->isDismissed()) redraw();
  closeIfDismissed();
}

void MedicineDetailModel::flush() {
  if (typed_) act([](MedicineDetailView&) {});
}

void MedicineDetailModel::setText(const QString& row, const QString& text) {
  const std::string name = row.toStdString();
  if (typed_ && typed_->row != name) flush();
  typed_ = {name, text.toStdString()};
  rest_.start();
}

void MedicineDetailModel::setOn(const QString& row, bool isOn) {
  act([&](MedicineDetailView& view) { view.setOn(row.toStdString(), isOn); });
}

void MedicineDetailModel::increment(const QString& row) {
  act([&](MedicineDetailView& view) { view.increment(row.toStdString()); });
}

void MedicineDetailModel::decrement(const QString& row) {
  act([&](MedicineDetailView& view) { view.decrement(row.toStdString()); });
}

void MedicineDetailModel::choose(const QString& row, const QString& option) {
  act([&](MedicineDetailView& view) { view.choose(row.toStdString(), option.toStdString()); });
}

void MedicineDetailModel::press(const QString& id) {
  act([&](MedicineDetailView& view) {
    if (id == QStringLiteral("edit")) view.edit();
    if (id == QStringLiteral("save")) view.save();
    if (id == QStringLiteral("cancel")) view.cancel();
    if (id == QStringLiteral("done")) view.done();
    if (id == QStringLiteral("delete")) view.askToDelete();
  });
}

void MedicineDetailModel::goBack() {
  act([](MedicineDetailView& view) { view.goBack(); });
}

void MedicineDetailModel::dismissDeleteAlert() {
  act([](MedicineDetailView& view) { view.dismissDeleteAlert(); });
}

void MedicineDetailModel::confirmDelete() {
  act([](MedicineDetailView& view) { view.delete_(); });
}

void MedicineDetailModel::openSheet(const QString& row) {
  act([&](MedicineDetailView& view) { view.openSheet(row.toStdString()); });
}

void MedicineDetailModel::closeSheet() {
  act([](MedicineDetailView& view) { view.closeSheet(); });
}

void MedicineDetailModel::showPreviousMonth() {
  act([](MedicineDetailView& view) { view.showPreviousMonth(); });
}

void MedicineDetailModel::showNextMonth() {
  act([](MedicineDetailView& view) { view.showNextMonth(); });
}

void MedicineDetailModel::pickDay(const QString& cell) {
  act([&](MedicineDetailView& view) { view.pickDay(cell.toStdString()); });
}

// The list of medicines.

void MedicineListModel::search(const QString& text) {
  view_.searchText = text.toStdString();
  emit acted();
}

void MedicineListModel::deleteRow(const QString& section, const QString& medicine) {
  view_.deleteRows(section.toStdString(), {uuidOf(medicine)});
  emit acted();
}

// Settings.

SettingsModel::SettingsModel(const ScreenEnvironment& environment, const BackupEnvironment& backupEnvironment,
                             BackupService& backups, Console& console, Desktop& desktop, LAContextFactory makeLAContext)
    : view_(environment, backupEnvironment, backups, console, std::move(makeLAContext)),
      desktop_(desktop),
      observer_(view_.observe([this] { emit acted(); })) {}

void SettingsModel::setOn(const QString& row, bool isOn) {
  view_.setToggle(row.toStdString(), isOn);
  emit acted();
}

void SettingsModel::increment(const QString& row) {
  view_.increment(row.toStdString());
  emit acted();
}

void SettingsModel::decrement(const QString& row) {
  view_.decrement(row.toStdString());
  emit acted();
}

void SettingsModel::choose(const QString& row, const QString& option) {
  view_.pick(row.toStdString(), option.toStdString());
  emit acted();
}

void SettingsModel::press(const QString& id) {
  const std::string name = id.toStdString();
  if (name == "enableNotifications") view_.enableNotifications();
  if (name == "saveAgain") view_.saveAgain();
  if (name == "createBackup") view_.openBackupSheet();
  if (name == "restoreFromBackup") view_.openRestoreSheet();
  if (name == "createLocalBackup") view_.createLocalBackup();
  if (name == "createiCloudBackup") view_.createiCloudBackup();
  if (name == "privacyPolicy" || name == "termsOfService") desktop_.openPage(name);
  emit acted();
}

void SettingsModel::closeSheets() {
  view_.closeBackupSheet();
  view_.closeRestoreSheet();
  emit acted();
}

void SettingsModel::restoreBackup(const QString& url) {
  view_.restoreBackup(url.toStdString());
  emit acted();
}

void SettingsModel::deleteBackup(const QString& url) {
  view_.deleteBackup(url.toStdString());
  emit acted();
}

void SettingsModel::dismissAlert(const QString& id) {
  view_.dismissAlert(id.toStdString());
  emit acted();
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include "screens/MedicineDetailView.h"

#include <utility>

#include "screens/DoseTexts.h"
#include "screens/MedicineEditing.h"

namespace pillora {

namespace {

constexpr int64_t kRecentDoses = 5;

FetchDescriptor<DoseLog> latestLogsOf(const UUID& medicine) {
  return FetchDescriptor<DoseLog>()
      .where(&DoseLog::medicineId, Comparison::equal, std::optional(medicine))
      .sortedBy(&DoseLog::scheduledTime, SortOrder::descending)
      .limitedTo(kRecentDoses);
}

std::vector<ToolbarButton> toolbar(bool isEditing, const Texts& texts) {
  if (isEditing) {
    return {{"cancel", "cancellation", texts.text("Cancel")}, {"save", "confirmation", texts.text("Save"), true, true}};
  }
  return {{"more",
           "primary",
           texts.text("More"),
           true,
           false,
           "ellipsis.circle",
           {{"edit", texts.text("Edit"), "pencil"}, {"delete", texts.text("Delete"), "trash", true}}},
          {"done", "confirmation", texts.text("Done"), true, true}};
}

ConfirmationAlert deleteAlert(const std::string& name, const Texts& texts) {
  return {texts.text("Delete Medicine?"),
          texts.text("This will permanently delete {name} and all its history. This action cannot be undone.",
                     {{"name", name}}),
          texts.text("Cancel"), texts.text("Delete")};
}

}  // namespace

MedicineDetailView::MedicineDetailView(ScreenEnvironment environment, const UUID& medicine)
    : environment_(environment),
      settings_(environment.context),
      latestLogs_(environment.context, latestLogsOf(medicine)),
      medicine_(environment.context.find<Medicine>(medicine)) {}

MedicineDetailContent MedicineDetailView::content() const {
  const auto& [context, clock, calendar, texts, notifications] = environment_;
  MedicineDetailContent content;
  content.isEditing = isEditing_;
  content.title = isEditing_ ? texts.text("Edit Medicine") : texts.text("Details");
  content.isDismissed = isDismissed();
  if (isGone()) return content;
  const Medicine& medicine = *medicine_;
  const Instant now = clock.now();
  content.toolbar = toolbar(isEditing_, texts);
  content.frequency = rawValue(medicine.interval().type);
  content.details = medicine.interval().displayText(calendar, texts);
  content.nextDose = medicine.nextDoseTime(now, calendar);
  if (content.nextDose) {
    content.nextDoseText = texts.shortTime(*content.nextDose, settingsShown(settings_).use24HourTime());
    content.nextDoseRelative = texts.relative(*content.nextDose, now);
  }
  content.recentHistory = recentHistory();
  content.sections = medicineDetailSections(medicine, content, texts);
  if (showingDeleteAlert_) content.deleteAlert = deleteAlert(medicine.name(), texts);
  if (monthSheet_ && rowNamed<DateRow>(content.sections, monthSheet_->row()) != nullptr) {
    content.monthSheet = monthSheet_->content(medicine.startDate());
  }
  return content;
}

std::vector<DoseRow> MedicineDetailView::recentHistory() const {
  const Texts& texts = environment_.texts;
  std::vector<DoseRow> rows;
  for (const auto& log : latestLogs_.records()) {
    const DoseStatus status = log->status();
    const Instant due = log->scheduledTime();
    rows.push_back({log->id().text(), statusSymbol(status), statusColor(status), texts.mediumDate(due),
                    texts.shortTime(due, settingsShown(settings_).use24HourTime()), std::string(rawValue(status)),
                    statusText(status, texts)});
  }
  return rows;
}

bool MedicineDetailView::beginAction() {
  if (isDismissed()) return false;
  // Reminders planned for a medicine that another process has just deleted would come for ever. Where the file cannot
  // be locked there is nothing newer to know, and the person's reminders are planned all the same.
  static_cast<void>(environment_.context.beginWriting());
  return !isGone();
}

void MedicineDetailView::edit() { isEditing_ = !isDismissed(); }

void MedicineDetailView::save() {
  if (!isEditing_ || !beginAction()) return;
  saveMedicine(environment_, *medicine_);
  cancel();
}

void MedicineDetailView::cancel() {
  isEditing_ = false;
  closeSheet();
}

void MedicineDetailView::done() {
  if (isEditing_ || !beginAction()) return;
  planRemindersAnew(environment_, *medicine_);
  isDismissed_ = true;
}

void MedicineDetailView::askToDelete() { showingDeleteAlert_ = !isDismissed(); }

void MedicineDetailView::delete_() {
  if (!showingDeleteAlert_ || !beginAction()) return;
  dismissDeleteAlert();
  deleteMedicine(environment_, medicine_);
  isDismissed_ = true;
}

bool MedicineDetailView::setText(std::string_view row, std::string text) {
  if (rowNamed<TextFieldRow>(content().sections, row) == nullptr) return false;
  *fieldNamed<Stored<std::string>>(*medicine_, row) = std::move(text);
  return true;
}

bool MedicineDetailView::setOn(std::string_view row, bool isOn) {
  if (rowNamed<ToggleRow>(content().sections, row) == nullptr) return false;
  *fieldNamed<Stored<bool>>(*medicine_, row) = isOn;
  return true;
}

bool MedicineDetailView::increment(std::string_view row) { return step(row, &Stepper::above); }

bool MedicineDetailView::decrement(std::string_view row) { return step(row, &Stepper::below); }

bool MedicineDetailView::step(std::string_view row, std::optional<int64_t> (Stepper::*next)(int64_t) const) {
  const auto value = stepped(content().sections, row, next);
  if (!value) return false;
  *fieldNamed<Stored<int64_t>>(*medicine_, row) = *value;
  return true;
}

bool MedicineDetailView::choose(std::string_view row, std::string_view option) {
  if (!hasOption(content().sections, row, option)) return false;
  *fieldNamed<Stored<std::string>>(*medicine_, row) = std::string(option);
  return true;
}

bool MedicineDetailView::setDate(std::string_view row, Instant date) {
  if (rowNamed<DateRow>(content().sections, row) == nullptr) return false;
  *fieldNamed<Stored<Instant>>(*medicine_, row) = date;
  return true;
}

bool MedicineDetailView::openSheet(std::string_view row) {
  const MedicineDetailContent shown = content();
  const auto* date = rowNamed<DateRow>(shown.sections, row);
  if (date == nullptr) return false;
  monthSheet_.emplace(environment_, date->id, date->value);
  return true;
}

void MedicineDetailView::showPreviousMonth() {
  if (monthSheet_) monthSheet_->showPreviousMonth();
}

void MedicineDetailView::showNextMonth() {
  if (monthSheet_) monthSheet_->showNextMonth();
}

bool MedicineDetailView::pickDay(std::string_view cell) {
  if (!monthSheet_ || isGone()) return false;
  const auto date = monthSheet_->dateOn(cell, medicine_->startDate());
  return date && setDate(monthSheet_->row(), *date);
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "screens/FormContent.h"
#include "screens/MonthSheet.h"
#include "screens/Screen.h"
#include "support/Fields.h"
#include "support/Instant.h"

namespace pillora {

/// The sections hold all that is shown; what they say of the schedule and the last doses is there once more as values.
/// Of a medicine that is gone there is only the title.
struct MedicineDetailContent {
  std::string title;
  bool isEditing = false;
  std::vector<ToolbarButton> toolbar;  ///< "more" and "done", while editing "cancel" and "save"
  std::vector<FormSection> sections;
  std::optional<std::string> frequency;  ///< raw value, the same in every language
  std::optional<std::string> details;
  std::optional<Instant> nextDose;
  std::optional<std::string> nextDoseText, nextDoseRelative;
  std::vector<DoseRow> recentHistory;            ///< the latest five doses, the latest first
  std::optional<ConfirmationAlert> deleteAlert;  ///< while it is up
  std::optional<MonthContent> monthSheet;
  bool isDismissed = false;  ///< the screen has closed itself, or its medicine is gone

  static constexpr auto fields() {
    using Detail = MedicineDetailContent;
    return std::tuple(field("title", &Detail::title), field("isEditing", &Detail::isEditing),
                      field("toolbar", &Detail::toolbar), field("sections", &Detail::sections),
                      field("frequency", &Detail::frequency), field("details", &Detail::details),
                      field("nextDose", &Detail::nextDose), field("nextDoseText", &Detail::nextDoseText),
                      field("nextDoseRelative", &Detail::nextDoseRelative),
                      field("recentHistory", &Detail::recentHistory), field("deleteAlert", &Detail::deleteAlert),
                      field("monthSheet", &Detail::monthSheet), field("isDismissed", &Detail::isDismissed));
  }
};

/// The sections of a medicine's details. What the schedule and the last doses show is taken from `content`.
std::vector<FormSection> medicineDetailSections(const Medicine& medicine, const MedicineDetailContent& content,
                                                const Texts& texts);

/// One medicine: what it is, when it is due, what became of its last doses; and where it is edited. Every control
/// writes straight into the record, so that nothing needs to be applied and nothing can be taken back. Once the
/// medicine is gone, whoever deleted it, the screen is dismissed and nothing here has any effect.
class MedicineDetailView {
 public:
  MedicineDetailView(ScreenEnvironment environment, const UUID& medicine);

  MedicineDetailContent content() const;

  void edit();
  /// Marks the medicine as updated now, plans its reminders anew and ends the editing.
  void save();
  /// Ends the editing. Deliberate: what has been edited stays, since it is in the record already; the time of the last
  /// update and the reminders stay as well.
  void cancel();
  /// Plans the reminders anew and closes.
  void done();
  /// Closes. Deliberate: the reminders stay as they were planned, whatever was switched meanwhile.
  void goBack() { isDismissed_ = true; }

  void askToDelete();
  void dismissDeleteAlert() { showingDeleteAlert_ = false; }
  /// The alert's "Delete": cancels the medicine's reminders, deletes it with its logs and closes.
  void delete_();

  // What a person does with the controls. Each takes the id of a row, which is the field that it edits, and answers
  // whether that row is on show and offers this: otherwise nothing changes.

  bool setText(std::string_view row, std::string text);
  bool setOn(std::string_view row, bool isOn);
  bool increment(std::string_view row);
  bool decrement(std::string_view row);
  bool choose(std::string_view row, std::string_view option);
  bool setDate(std::string_view row, Instant date);

  // The sheet of the date picker.

  bool openSheet(std::string_view row);
  void closeSheet() { monthSheet_.reset(); }
  void showPreviousMonth();
  void showNextMonth();
  bool pickDay(std::string_view cell);

  bool isEditing() const { return isEditing_; }
  bool isDismissed() const { return isDismissed_ || isGone(); }

 private:
  bool isGone() const { return !medicine_ || medicine_->isDeleted(); }
  /// Takes over what other processes did before something is decided from it. Answers whether the medicine is there.
  bool beginAction();
  bool step(std::string_view row, std::optional<int64_t> (Stepper::*next)(int64_t) const);
  std::vector<DoseRow> recentHistory() const;

  ScreenEnvironment environment_;
  LiveQuery<AppSettings> settings_;
  LiveQuery<DoseLog> latestLogs_;
  std::shared_ptr<Medicine> medicine_;  ///< null when there was none
  bool isEditing_ = false;
  bool showingDeleteAlert_ = false;
  bool isDismissed_ = false;
  std::optional<MonthSheet> monthSheet_;
};

}  // namespace pillora

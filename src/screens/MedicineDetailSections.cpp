// SPDX-License-Identifier: MIT
#include <utility>

#include "screens/DoseTexts.h"
#include "screens/MedicineDetailView.h"
#include "screens/MedicineForm.h"

namespace pillora {

namespace {

/// Builds the rows of one medicine's details.
class SectionBuilder {
 public:
  SectionBuilder(const Medicine& medicine, const MedicineDetailContent& content, const Texts& texts)
      : medicine_(medicine), content_(content), texts_(texts) {}

  FormSection header() const {
    HeaderRow header{"header", medicine_.icon(), medicineColor(medicine_.color()), medicine_.name(),
                     dosageText(medicine_, texts_)};
    FormSection section{"header"};
    if (content_.isEditing) {
      header.name.reset();
      section.rows.emplace_back(TextFieldRow{"name", texts_.text("Name"), medicine_.name(), "text", "title"});
    }
    section.rows.emplace_back(std::move(header));
    if (content_.isEditing) {
      section.rows.emplace_back(TextFieldRow{"instructions", texts_.text("Instructions"), medicine_.instructions()});
    }
    section.rows.emplace_back(ToggleRow{"isActive", texts_.text("Active"), medicine_.isActive(), true});
    return section;
  }

  FormSection dosage() const {
    return {"dosage",
            texts_.text("Dosage"),
            std::nullopt,
            {TextFieldRow{"dosage", texts_.text("Amount"), medicine_.dosage(), "decimal"},
             unitPicker("unit", medicine_.unit(), texts_)}};
  }

  FormSection appearance() const {
    return {
        "appearance",
        texts_.text("Appearance"),
        std::nullopt,
        {colorGrid("color", medicine_.color(), texts_), iconGrid("icon", medicine_.icon(), medicine_.color(), texts_)}};
  }

  FormSection schedule() const {
    FormSection section{
        "schedule",
        texts_.text("Schedule"),
        std::nullopt,
        {ValueRow{"frequency", texts_.text("Frequency"), intervalTypeText(medicine_.interval().type, texts_)},
         ValueRow{"details", texts_.text("Details"), content_.details.value_or("")}}};
    if (content_.nextDoseText) {
      section.rows.emplace_back(
          ValueRow{"nextDose", texts_.text("Next Dose"), *content_.nextDoseText, content_.nextDoseRelative});
    }
    return section;
  }

  FormSection snoozeOptions() const {
    FormSection section{"snoozeOptions",
                        texts_.text("Snooze Options"),
                        std::nullopt,
                        {ToggleRow{"allowSnooze", texts_.text("Allow Snooze"), medicine_.allowSnooze()}}};
    if (!medicine_.allowSnooze()) return section;
    const int64_t minutes = medicine_.snoozeDurationMinutes(), count = medicine_.maxSnoozeCount();
    section.rows.emplace_back(stepperRow("snoozeDurationMinutes",
                                         texts_.text("Duration: {n} min", {{"n", std::to_string(minutes)}}), minutes,
                                         kSnoozeMinutes));
    section.rows.emplace_back(stepperRow(
        "maxSnoozeCount", texts_.text("Max Count: {n}", {{"n", std::to_string(count)}}), count, kMaxSnoozeCount));
    return section;
  }

  FormSection instructions() const {
    return {"instructions",
            texts_.text("Instructions"),
            std::nullopt,
            {ValueRow{"instructionsText", std::nullopt, medicine_.instructions()}}};
  }

  FormSection duration() const {
    FormSection section{"duration", texts_.text("Duration")};
    const std::string start = texts_.text("Start Date"), startText = texts_.mediumDate(medicine_.startDate());
    if (content_.isEditing) {
      section.rows.emplace_back(DateRow{"startDate", start, medicine_.startDate(), startText});
    } else {
      section.rows.emplace_back(ValueRow{"startDate", start, startText});
    }
    if (const auto& end = medicine_.endDate()) {
      section.rows.emplace_back(ValueRow{"endDate", texts_.text("End Date"), texts_.mediumDate(*end)});
    }
    section.rows.emplace_back(ToggleRow{"isRepeating", texts_.text("Repeating"), medicine_.isRepeating()});
    return section;
  }

  FormSection recentHistory() const {
    return {"recentHistory",
            texts_.text("Recent History"),
            std::nullopt,
            {content_.recentHistory.begin(), content_.recentHistory.end()}};
  }

  FormSection deletion() const {
    return {"deletion",
            std::nullopt,
            std::nullopt,
            {ButtonRow{"delete", texts_.text("Delete Medicine"), std::nullopt, true}}};
  }

 private:
  const Medicine& medicine_;
  const MedicineDetailContent& content_;
  const Texts& texts_;
};

}  // namespace

std::vector<FormSection> medicineDetailSections(const Medicine& medicine, const MedicineDetailContent& content,
                                                const Texts& texts) {
  const SectionBuilder builder(medicine, content, texts);
  std::vector<FormSection> sections = {builder.header()};
  if (content.isEditing) {
    sections.push_back(builder.dosage());
    sections.push_back(builder.appearance());
  }
  sections.push_back(builder.schedule());
  sections.push_back(builder.snoozeOptions());
  if (!content.isEditing && !medicine.instructions().empty()) sections.push_back(builder.instructions());
  sections.push_back(builder.duration());
  if (!content.recentHistory.empty()) sections.push_back(builder.recentHistory());
  sections.push_back(builder.deletion());
  return sections;
}

}  // namespace pillora

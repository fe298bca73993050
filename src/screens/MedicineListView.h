// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "screens/Content.h"
#include "screens/Screen.h"
#include "support/Fields.h"
#include "support/Instant.h"

namespace pillora {

/// One medicine of the list.
struct MedicineRowView {
  UUID id;
  std::string name;
  std::string dosageText;
  std::optional<std::string> icon;  ///< absent when icons are switched off in the settings
  std::string color;
  bool isActive = true;
  std::optional<std::string> inactiveBadge;
  std::string intervalSymbol;
  std::optional<Instant> nextDose;
  std::optional<std::string> nextDoseText;  ///< "in 2 hr."
  std::string chevron;                      ///< symbol that says that the row opens something
  ActionItem remove;                        ///< behind a swipe, at once

  static constexpr auto fields() {
    using Row = MedicineRowView;
    return std::tuple(field("id", &Row::id), field("name", &Row::name), field("dosageText", &Row::dosageText),
                      field("icon", &Row::icon), field("color", &Row::color), field("isActive", &Row::isActive),
                      field("inactiveBadge", &Row::inactiveBadge), field("intervalSymbol", &Row::intervalSymbol),
                      field("nextDose", &Row::nextDose), field("nextDoseText", &Row::nextDoseText),
                      field("chevron", &Row::chevron), field("remove", &Row::remove));
  }
};

struct MedicineSection {
  std::string id;  ///< "active", "inactive"
  std::string title;
  std::vector<MedicineRowView> rows;

  static constexpr auto fields() {
    return std::tuple(field("id", &MedicineSection::id), field("title", &MedicineSection::title),
                      field("rows", &MedicineSection::rows));
  }
};

struct MedicineListContent {
  std::string title;
  std::vector<ActionItem> toolbar;  ///< "addMedicine"
  std::string searchPrompt;
  std::string searchText;  ///< what is searched for now
  std::string clearSearch;
  std::vector<MedicineSection> sections;  ///< without those that have no rows
  std::optional<Panel> empty;             ///< the store holds no medicine; not for a search without matches
  std::optional<ActionItem> emptyAction;

  static constexpr auto fields() {
    using List = MedicineListContent;
    return std::tuple(field("title", &List::title), field("toolbar", &List::toolbar),
                      field("searchPrompt", &List::searchPrompt), field("searchText", &List::searchText),
                      field("clearSearch", &List::clearSearch), field("sections", &List::sections),
                      field("empty", &List::empty), field("emptyAction", &List::emptyAction));
  }
};

/// The tab of all medicines, the active ones first, each part in the order of names.
class MedicineListView {
 public:
  explicit MedicineListView(ScreenEnvironment environment);

  MedicineListContent content() const;

  /// Cancels the reminders of each of these medicines and deletes it, in this order, without asking. Only rows that
  /// the section shows now count: one that was deleted, filtered away or switched to the other section since the list
  /// was drawn is left alone. Saving is left to the context.
  void deleteRows(std::string_view section, const std::vector<UUID>& rows);

  std::string searchText;                ///< only names that contain it are shown; blanks count
  bool showingAddMedicine = false;       ///< the add-medicine form is up
  std::optional<UUID> selectedMedicine;  ///< whose details are open

 private:
  Medicines shown() const;
  /// Those of `medicines` that the section lists.
  static Medicines inSection(std::string_view section, const Medicines& medicines);
  MedicineRowView row(const Medicine& medicine, Instant now) const;

  ScreenEnvironment environment_;
  LiveQuery<Medicine> medicines_;
  LiveQuery<AppSettings> settings_;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "app/ContentView.h"
#include "doubles/Instants.h"
#include "doubles/Intervals.h"
#include "doubles/ScriptedAuthenticator.h"
#include "languages/PoFile.h"
#include "notifications/ReminderRequests.h"
#include "screens/AddMedicineView.h"
#include "screens/MedicineDetailView.h"
#include "screens/MedicineListView.h"
#include "screens/ReminderHistoryView.h"
#include "screens/SettingsFixture.h"
#include "screens/TodayView.h"
#include "screens/UpcomingView.h"
#include "support/Json.h"

// Shows every screen in English and in each language side by side: what is an own text in the one may not stand in the
// other as well.

namespace pillora {
namespace {

using namespace std::chrono_literals;

// America/New_York; Friday, 2025-01-10.
const Instant kNow = at("2025-01-10T10:30:00-05:00");

/// With a locale of no language that is looked for: "Sun" is a weekday as well as an icon.
Place placeOf(std::string_view language) {
  return {"America/New_York", "it_IT", std::string(language), PILLORA_CATALOGUES};
}

/// Pillora in one language, led through all that it can show.
class Shown {
 public:
  explicit Shown(std::string_view language) : fixture_(kNow, placeOf(language)) {
    showLists();
    addMedicines();
    showLists();
    showDetails();
    showForm();
    showSettings();
    showLock();
    showNotifications();
  }

  const Json& everything() const { return everything_; }

 private:
  template <typename Content>
  void show(const Content& content) {
    everything_.push_back(toJson(content));
  }

  void showLists() {
    show(TodayView(fixture_.environment()).content());
    show(UpcomingView(fixture_.environment()).content());
    show(MedicineListView(fixture_.environment()).content());
    ReminderHistoryView history(fixture_.environment());
    history.selectedTimeRange = TimeRange::all;
    show(history.content());
  }

  /// Doses at 8:00 today, each with another fate, and others that are due in all manners.
  void addMedicines() {
    const Instant eight = kNow - 150min;
    for (const DoseStatus status : kAllDoseStatuses) {
      const auto medicine = fixture_.add(medicineNamed("Zinc", daily({{8, 0}})));
      const bool isTaken = status == DoseStatus::taken;
      fixture_.log(medicine, eight, status, isTaken ? std::optional(kNow) : std::nullopt);
      for (const auto off : {Instant::Duration(20min), Instant::Duration(3h), Instant::Duration(50h)}) {
        const Instant due = eight - 72h;
        fixture_.log(medicine, due, status, due + off);
        fixture_.log(medicine, due, status, due - off);
      }
    }
    for (const ReminderInterval& interval :
         {daily({{7, 0}, {11, 0}}), weekly({6, 7}, {14, 30}), monthly({10}, {10, 30}), monthly({1, 15}, {9, 0}),
          custom(45), custom(90), custom(120), hourly(1)}) {
      fixture_.add(medicineNamed("Zinc", interval));
    }
    auto resting = medicineNamed("Zinc", hourly(3));
    resting.isActive = false;
    resting.instructions = "1";
    resting.endDate = kNow;
    fixture_.add(resting);
  }

  void showDetails() {
    const auto medicines = *fixture_.context().fetch<Medicine>();
    for (const auto& medicine : medicines) {
      MedicineDetailView details(fixture_.environment(), medicine->id());
      show(details.content());
      details.edit();
      details.openSheet("startDate");
      details.askToDelete();
      show(details.content());
    }
  }

  void showForm() {
    AddMedicineView form(fixture_.environment());
    form.addTime();
    form.setOn("hasEndDate", true);
    for (const ReminderIntervalType type : kAllReminderIntervalTypes) {
      form.choose("intervalType", rawValue(type));
      form.openSheet("startDate");
      show(form.content());
      form.openSheet("weeklyTime");
      show(form.content());
    }
  }

  void showSettings() {
    SettingsView settings = fixture_.makeView();
    settings.appeared();
    show(settings.content());
    settings.openBackupSheet();
    settings.openRestoreSheet();
    show(settings.content());
    fixture_.settle();
    settings.openRestoreSheet();
    fixture_.settle();
    show(settings.content());
    settings.createLocalBackup();
    show(settings.content());
    fixture_.settle();
    settings.openRestoreSheet();
    fixture_.settle();
    show(settings.content());
    settings.restoreBackup(fixture_.files.files.begin()->first);
    show(settings.content());
    fixture_.settle();
    settings.openBackupSheet();
    fixture_.files.cloud.reset();
    settings.createiCloudBackup();
    fixture_.settle();
    fixture_.notifications.requestAuthorization();
    fixture_.endTurn();
    show(settings.content());
  }

  void showLock() {
    AuthenticationManager manager({device_.factory(), *fixture_.texts, fixture_.executor, fixture_.console});
    ContentView root(fixture_.environment(), manager);
    fixture_.record().requireAuthentication = true;
    root.unlock();
    show(root.content());
    everything_.push_back(device_.last().reason);
  }

  void showNotifications() {
    const auto medicine = fixture_.context().fetch<Medicine>()->front();
    const Texts& texts = *fixture_.texts;
    for (const auto& action : reminderCategory(*medicine, texts).actions) everything_.push_back(action.title);
    for (const auto& request : {reminderRequest(*medicine, kNow, *fixture_.calendar, texts),
                                followUpRequest(*medicine, kNow, kNow, 1, *fixture_.calendar, texts)}) {
      everything_.push_back(request.content.title);
      everything_.push_back(request.content.body);
    }
  }

  SettingsFixture fixture_;
  ScriptedAuthenticator device_;
  Json everything_ = Json::array();
};

/// Recognises an English text of the catalogues, also with its placeholders filled in.
class OwnTexts {
 public:
  explicit OwnTexts(std::string_view language) {
    for (const auto& [key, text] : readPo(std::string(language) + ".po")) {
      const bool staysEnglish = text.translations.at(0) == key.second;
      for (const std::string& english : {key.second, text.plural}) {
        if (!english.empty() && !staysEnglish) add(english);
      }
    }
  }

  bool has(const std::string& shown) const {
    return whole_.contains(shown) || std::any_of(patterns_.begin(), patterns_.end(),
                                                 [&](const std::regex& one) { return regex_match(shown, one); });
  }

 private:
  void add(const std::string& english) {
    static const std::regex kPlaceholder("\\{\\w*\\}"), kSpecial(R"([.^$|()\[\]*+?\\])"), kLetter("[A-Za-z]");
    const std::string words = regex_replace(english, kPlaceholder, "");
    if (words == english) {
      whole_.insert(english);
    } else if (regex_search(words, kLetter)) {  // one of placeholders alone would recognise everything
      const std::string plain = regex_replace(english, kSpecial, R"(\$&)");
      patterns_.emplace_back(regex_replace(plain, kPlaceholder, ".+"));
    }
  }

  std::set<std::string> whole_;
  std::vector<std::regex> patterns_;
};

/// Members that hold a stored word, which is the same in every language.
bool isRaw(const std::string& member) {
  static const std::set<std::string> kRaw = {"status", "range", "filter", "frequency", "selected",
                                             "symbol", "icon",  "id",     "kind"};
  return kRaw.contains(member);
}

/// Goes through both at once; `seen` gets every own text that was met.
void compare(const Json& english, const Json& shown, const OwnTexts& own, std::set<std::string>& seen) {
  ASSERT_EQ(english.type(), shown.type()) << english << ' ' << shown;
  ASSERT_EQ(english.size(), shown.size()) << english << ' ' << shown;
  if (english.is_array()) {
    for (size_t i = 0; i < english.size(); ++i) compare(english[i], shown[i], own, seen);
  } else if (english.is_object()) {
    for (const auto& [member, value] : english.items()) {
      if (!isRaw(member)) compare(value, shown.at(member), own, seen);
    }
  } else if (english.is_string()) {
    const std::string text = english;
    if (!own.has(text)) return;
    seen.insert(text);
    EXPECT_NE(shown.get<std::string>(), text);
  }
}

TEST(ScreensInLanguages, showNoTextInEnglish) {
  const Shown english("en");
  for (const auto& [language, forms] : kCatalogueLanguages) {
    SCOPED_TRACE(language);
    const OwnTexts own(language);
    const Shown shown(language);
    std::set<std::string> seen;
    compare(english.everything(), shown.everything(), own, seen);
    EXPECT_GT(seen.size(), 200u) << language << ": the walk shows hardly anything";
  }
}

}  // namespace
}  // namespace pillora

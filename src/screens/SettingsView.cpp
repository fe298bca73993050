// SPDX-License-Identifier: MIT
#include "screens/SettingsView.h"

#include <algorithm>
#include <array>
#include <utility>

#include "screens/MedicineForm.h"
#include "store/SettingsInUse.h"

namespace pillora {

namespace {

struct Toggle {
  std::string_view id;
  Stored<bool> AppSettings::*field;
};
constexpr std::array kToggles = {Toggle{"use24HourTime", &AppSettings::use24HourTime},
                                 Toggle{"showMedicineIcons", &AppSettings::showMedicineIcons},
                                 Toggle{"enableHaptics", &AppSettings::enableHaptics},
                                 Toggle{"enableiCloudSync", &AppSettings::enableiCloudSync},
                                 Toggle{"enableLocalBackup", &AppSettings::enableLocalBackup},
                                 Toggle{"requireAuthentication", &AppSettings::requireAuthentication}};

struct Number {
  std::string_view id;
  Stored<int64_t> AppSettings::*field;
  const Stepper& stepper;
};
constexpr std::array kNumbers = {
    Number{"defaultSnoozeDurationMinutes", &AppSettings::defaultSnoozeDurationMinutes, kSnoozeMinutes},
    Number{"defaultMaxSnoozeCount", &AppSettings::defaultMaxSnoozeCount, kMaxSnoozeCount}};

/// The control with this id, or null.
template <typename Controls>
const typename Controls::value_type* controlOf(const Controls& controls, std::string_view id) {
  const auto found = std::find_if(controls.begin(), controls.end(), [&](const auto& each) { return each.id == id; });
  return found == controls.end() ? nullptr : &*found;
}

ToggleRow toggleRow(std::string_view id, std::string label, const AppSettings& settings) {
  return {std::string(id), std::move(label), (settings.*controlOf(kToggles, id)->field)()};
}

/// `text` has "{n}" where the value stands.
StepperRow numberRow(std::string_view id, std::string_view text, const AppSettings& settings, const Texts& texts) {
  const Number& number = *controlOf(kNumbers, id);
  const int64_t value = (settings.*number.field)();
  return stepperRow(std::string(id), texts.text(text, {{"n", std::to_string(value)}}), value, number.stepper);
}

std::string optionId(WeekStartDay day) { return std::to_string(rawValue(day)); }
std::string optionId(NotificationSound sound) { return std::string(rawValue(sound)); }
std::string optionId(BackupFrequency frequency) { return std::string(rawValue(frequency)); }

/// `titles` stand in the order of `cases`.
template <typename Cases>
PickerRow casesRow(std::string id, std::string label, typename Cases::value_type selected, const Cases& cases,
                   const std::vector<std::string>& titles) {
  std::vector<PickerOption> options;
  for (size_t i = 0; i < cases.size(); ++i) options.push_back({optionId(cases[i]), titles[i]});
  return pickerRow(std::move(id), std::move(label), optionId(selected), std::move(options));
}

PickerRow weekStartRow(const AppSettings& settings, const Texts& texts) {
  return casesRow("weekStartDay", texts.text("Week Starts On"), settings.weekStartDay(), kAllWeekStartDays,
                  {texts.text("Sunday"), texts.text("Monday"), texts.text("Saturday")});
}

PickerRow soundRow(const AppSettings& settings, const Texts& texts) {
  return casesRow("notificationSound", texts.text("Sound"), settings.notificationSound(), kAllNotificationSounds,
                  {texts.text("Default"), texts.text("Chime"), texts.text("Bell"), texts.text("Gentle"),
                   texts.text("Urgent"), texts.text("Silent")});
}

PickerRow frequencyRow(const AppSettings& settings, const Texts& texts) {
  return casesRow("backupFrequency", texts.text("Auto-Backup"), settings.backupFrequency(), kAllBackupFrequencies,
                  {texts.text("Never"), texts.text("Daily"), texts.text("Weekly"), texts.text("Monthly")});
}

/// The case that an option stands for, or nothing.
template <typename Cases>
std::optional<typename Cases::value_type> caseOf(const Cases& cases, std::string_view option) {
  const auto found = std::find_if(cases.begin(), cases.end(), [&](auto each) { return optionId(each) == option; });
  return found == cases.end() ? std::nullopt : std::optional(*found);
}

ValueRow valueRow(std::string id, std::string label, std::string text) {
  return {.id = std::move(id), .label = std::move(label), .text = std::move(text)};
}

}  // namespace

SettingsView::SettingsView(ScreenEnvironment environment, const BackupEnvironment& backupEnvironment,
                           BackupService& backups, Console& console, LAContextFactory makeContext)
    : environment_(environment),
      backupEnvironment_(backupEnvironment),
      backups_(backups),
      console_(console),
      makeContext_(std::move(makeContext)),
      settings_(environment.context),
      alive_(std::make_shared<int>()) {}

void SettingsView::appeared() {
  static_cast<void>(settingsInUse(environment_.context));
  if (!makeContext_) return;
  // Services of the system may take their time to answer.
  const auto ask = [context = std::shared_ptr<LAContext>(makeContext_())] {
    return static_cast<bool>(context->canEvaluatePolicy(LAPolicy::deviceOwnerAuthentication));
  };
  runInBackground(backupEnvironment_.background, backupEnvironment_.executor, ask,
                  [this, alive = std::weak_ptr(alive_)](bool can) {
                    if (alive.expired() || std::exchange(canAskForOwner_, can) == can) return;
                    observers_.notify();
                  });
}

SettingsContent SettingsView::content() const {
  SettingsContent content;
  content.title = environment_.texts.text("Settings");
  content.unsaved = unsaved();
  content.sections = sections();
  content.notes = notes();
  if (showingBackupSheet_) content.backupSheet = backupSheet();
  if (showingRestoreSheet_) content.restoreSheet = restoreSheet();
  content.alerts = alerts();
  return content;
}

std::vector<FormSection> SettingsView::sections() const {
  const Texts& texts = environment_.texts;
  const AppSettings& settings = settingsShown(settings_);
  const auto toggle = [&](std::string_view id, std::string_view label) {
    return toggleRow(id, texts.text(label), settings);
  };
  const auto section = [&](std::string id, std::string_view title, std::vector<FormRow> rows) {
    return FormSection{.id = std::move(id), .title = texts.text(title), .rows = std::move(rows)};
  };
  return {section("calendar", ownText("Calendar"),
                  {weekStartRow(settings, texts), toggle("use24HourTime", ownText("Use 24-Hour Time"))}),
          section("notifications", ownText("Notifications"), {statusRow(), soundRow(settings, texts)}),
          section("defaultSnooze", ownText("Default Snooze"),
                  {numberRow("defaultSnoozeDurationMinutes", ownText("Duration: {n} min"), settings, texts),
                   numberRow("defaultMaxSnoozeCount", ownText("Max Count: {n}"), settings, texts)}),
          section("display", ownText("Display"),
                  {toggle("showMedicineIcons", ownText("Show Medicine Icons")),
                   toggle("enableHaptics", ownText("Haptic Feedback"))}),
          backupSection(settings),
          privacySection(settings),
          aboutSection()};
}

ValueRow SettingsView::statusRow() const {
  const Texts& texts = environment_.texts;
  ValueRow row = valueRow("notificationStatus", texts.text("Status"), {});
  if (environment_.notifications.isAuthorized()) {
    row.text = texts.text("Enabled");
    row.symbol = "checkmark.circle.fill";
    row.color = "green";
  } else {
    row.action = ActionItem{"enableNotifications", texts.text("Enable"), {}};
  }
  return row;
}

FormSection SettingsView::backupSection(const AppSettings& settings) const {
  const Texts& texts = environment_.texts;
  FormSection section{.id = "backupAndSync", .title = texts.text("Backup & Sync")};
  section.rows = {toggleRow("enableiCloudSync", texts.text("iCloud Sync"), settings),
                  toggleRow("enableLocalBackup", texts.text("Local Backup"), settings), frequencyRow(settings, texts)};
  if (const auto& last = settings.lastBackupDate()) {
    section.rows.push_back(
        valueRow("lastBackup", texts.text("Last Backup"), texts.relative(*last, environment_.clock.now())));
  }
  section.rows.push_back(ButtonRow{.id = "createBackup", .title = texts.text("Create Backup")});
  section.rows.push_back(ButtonRow{.id = "restoreFromBackup", .title = texts.text("Restore from Backup")});
  return section;
}

FormSection SettingsView::privacySection(const AppSettings& settings) const {
  const Texts& texts = environment_.texts;
  FormSection section{.id = "privacy", .title = texts.text("Privacy")};
  section.rows = {toggleRow("requireAuthentication", texts.text("Require Authentication"), settings)};
  if (!canAskForOwner_) {
    section.footer = texts.text(
        "This device cannot ask for a fingerprint or a password. With this switched on, Pillora stays locked.");
  }
  return section;
}

FormSection SettingsView::aboutSection() const {
  const Texts& texts = environment_.texts;
  FormSection section{.id = "about", .title = texts.text("About")};
  section.rows = {valueRow("version", texts.text("Version"), backupEnvironment_.bundle.versionOrDefault()),
                  valueRow("medicines", texts.text("Medicines"), std::to_string(medicineCount())),
                  LinkRow{"privacyPolicy", texts.text("Privacy Policy"), "arrow.up.right.square"},
                  LinkRow{"termsOfService", texts.text("Terms of Service"), "arrow.up.right.square"}};
  return section;
}

int64_t SettingsView::medicineCount() const {
  if (const auto count = environment_.context.fetchCount<Medicine>()) medicineCount_ = *count;
  return medicineCount_;
}

bool SettingsView::setToggle(std::string_view id, bool isOn) {
  const Toggle* toggle = controlOf(kToggles, id);
  if (toggle == nullptr) return false;
  settingsInUse(environment_.context).get()->*toggle->field = isOn;
  return true;
}

bool SettingsView::pick(std::string_view id, std::string_view option) {
  const auto set = [&](const auto& cases, auto setter) {
    const auto picked = caseOf(cases, option);
    if (picked) ((*settingsInUse(environment_.context)).*setter)(*picked);
    return picked.has_value();
  };
  if (id == "weekStartDay") return set(kAllWeekStartDays, &AppSettings::setWeekStartDay);
  if (id == "notificationSound") return set(kAllNotificationSounds, &AppSettings::setNotificationSound);
  if (id == "backupFrequency") return set(kAllBackupFrequencies, &AppSettings::setBackupFrequency);
  return false;
}

bool SettingsView::increment(std::string_view id) {
  const Number* number = controlOf(kNumbers, id);
  if (number == nullptr) return false;
  const auto next = number->stepper.above((settingsShown(settings_).*number->field)());
  return next && setNumber(id, *next);
}

bool SettingsView::decrement(std::string_view id) {
  const Number* number = controlOf(kNumbers, id);
  if (number == nullptr) return false;
  const auto next = number->stepper.below((settingsShown(settings_).*number->field)());
  return next && setNumber(id, *next);
}

bool SettingsView::setNumber(std::string_view id, int64_t value) {
  const Number* number = controlOf(kNumbers, id);
  if (number == nullptr || !number->stepper.reaches(value)) return false;
  settingsInUse(environment_.context).get()->*number->field = value;
  return true;
}

}  // namespace pillora

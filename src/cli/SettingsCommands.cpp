// SPDX-License-Identifier: MIT
#include <algorithm>
#include <optional>
#include <string>

#include "cli/Commands.h"
#include "cli/RecordJson.h"
#include "cli/Rendering.h"
#include "cli/Words.h"
#include "screens/SettingsView.h"
#include "store/SettingsInUse.h"
#include "support/Json.h"

namespace pillora {

namespace {

/// The row of the content that edits or shows this, or null.
const FormRow* rowOf(const SettingsContent& content, std::string_view id) {
  for (const FormSection& section : content.sections) {
    for (const FormRow& row : section.rows) {
      if (std::visit([&](const auto& one) { return one.id == id; }, row)) return &row;
    }
  }
  return nullptr;
}

/// The text of a row that only shows a value, or that of the button in its place; nothing when there is no such row.
std::optional<std::string> shownText(const SettingsContent& content, std::string_view id) {
  const FormRow* row = rowOf(content, id);
  const auto* value = row == nullptr ? nullptr : std::get_if<ValueRow>(row);
  if (value == nullptr) return std::nullopt;
  return value->action ? value->action->title : value->text;
}

Result<std::string> settingsJson(const SettingsContent& content, ModelContext& context) {
  const auto record = settingsInUse(context);
  const auto medicines = context.fetchCount<Medicine>();
  if (!medicines) return medicines.error();
  Json json = Json::object({{"title", content.title},
                            {"record", recordJson(*record)},
                            {"notificationStatus", toJson(shownText(content, "notificationStatus"))},
                            {"medicines", *medicines},
                            {"version", toJson(shownText(content, "version"))},
                            {"lastBackup", toJson(shownText(content, "lastBackup"))}});
  const Json rest = toJson(content);
  for (const auto& [name, value] : rest.items()) json[name] = value;
  return jsonLine(json);
}

/// Prints the settings after opening the screen, which makes their record when there is none.
Result<std::string> printedSettings(const ScreenEnvironment& screens, Session& session, SettingsView& view) {
  if (const auto read = session.readPermission(); !read) return read.error();
  view.appeared();
  if (const auto saved = session.save(); !saved) return saved.error();
  const SettingsContent content = view.content();
  if (auto error = screens.context.takeReadError()) return *std::move(error);
  if (session.json()) return settingsJson(content, screens.context);
  return rendered(content, session.terminal(), session.texts());
}

/// A field and its new value in the shape of its control.
struct Change {
  std::string field, value;
  std::optional<bool> isOn;       ///< of a toggle
  std::optional<int64_t> number;  ///< of a stepper
};

/// Errors are wrong usage: a field that there is not, a word of another shape than its control's values.
Result<Change> readChange(const CommandLine& line, const Texts& texts) {
  static constexpr std::array<std::string_view, 3> kChoices = {"weekStartDay", "notificationSound", "backupFrequency"};
  static constexpr std::array<std::string_view, 2> kNumbers = {"defaultSnoozeDurationMinutes", "defaultMaxSnoozeCount"};
  const auto isOneOf = [&](const auto& names) { return std::ranges::find(names, *line.field) != names.end(); };
  if (!line.field || !line.value) return Error{texts.text("'settings set' takes a field and a value")};
  if (!isOneOf(kSettingsFields)) {
    return Error{texts.text("there is no setting '{word}' to change", {{"word", *line.field}})};
  }
  Change change{*line.field, *line.value, std::nullopt, std::nullopt};
  if (isOneOf(kNumbers) || *line.field == "weekStartDay") {
    change.number = wholeNumber(*line.value);
    if (!change.number) return Error{notWhole(*line.field, *line.value, texts)};
  } else if (!isOneOf(kChoices)) {
    change.isOn = yesOrNo(*line.value);
    if (!change.isOn) return Error{notYesOrNo(*line.field, *line.value, texts)};
  }
  return change;
}

/// What the control offers, for somebody who asked for something else.
std::string refusal(const Change& change, const SettingsContent& content, const Texts& texts) {
  const FormRow* row = rowOf(content, change.field);
  if (const auto* stepper = std::get_if<StepperRow>(row)) {
    return outOfRange(change.field, change.value, {stepper->least, stepper->most, stepper->step}, texts);
  }
  std::string offered;
  if (const auto* picker = std::get_if<PickerRow>(row)) {
    for (const PickerOption& option : picker->options) offered += (offered.empty() ? "" : ", ") + option.id;
  }
  return notOffered(change.field, change.value, offered, texts);
}

bool apply(const Change& change, SettingsView& view) {
  if (change.isOn) return view.setToggle(change.field, *change.isOn);
  if (change.field == "weekStartDay") return view.pick(change.field, std::to_string(*change.number));
  return change.number ? view.setNumber(change.field, *change.number) : view.pick(change.field, change.value);
}

/// The changed control as its row reads: "Week Starts On: Monday", "Duration: 15 min".
std::string changedText(const SettingsContent& content, const std::string& field, Session& session) {
  const Texts& texts = session.texts();
  const FormRow* row = rowOf(content, field);
  const auto line = [&](const std::string& label, const std::string& value) {
    return messageLine(texts.text("{setting}: {value}", {{"setting", label}, {"value", value}}), session);
  };
  if (const auto* toggle = std::get_if<ToggleRow>(row)) {
    return line(toggle->label, toggle->isOn ? texts.text("Yes") : texts.text("No"));
  }
  if (const auto* picker = std::get_if<PickerRow>(row)) return line(picker->label, picker->valueText);
  return messageLine(std::get<StepperRow>(*row).label, session);
}

template <typename Work>
Action withSettings(Session& session, Work work) {
  return [&session, work]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    const BackupEnvironment environment = session.backupEnvironment();
    BackupService backups(environment);
    SettingsView view(*screens, environment, backups, session.console());
    view.reminderService = session.reminderService();
    return work(*screens, view);
  };
}

}  // namespace

Result<Action> settingsCommand(const CommandLine& line, Session& session) {
  if (!line.action) {
    return withSettings(session, [&session](const ScreenEnvironment& screens, SettingsView& view) {
      return printedSettings(screens, session, view);
    });
  }
  if (*line.action != "set") return Error{"unknown word '" + *line.action + "' after 'settings'"};
  const auto change = readChange(line, session.texts());
  if (!change) return change.error();
  return withSettings(session, [&session, change = *change](const ScreenEnvironment& screens, SettingsView& view) {
    if (!apply(change, view)) return Result<std::string>(Error{refusal(change, view.content(), session.texts())});
    if (session.json()) return printedSettings(screens, session, view);
    if (const auto saved = session.save(); !saved) return Result<std::string>(saved.error());
    return Result<std::string>(changedText(view.content(), change.field, session));
  });
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "cli/Commands.h"
#include "cli/Rendering.h"
#include "screens/SettingsView.h"
#include "support/Json.h"

namespace pillora {

namespace {

/// The settings screen of one call with its service; what was asked of it is over when finish() returns.
struct Backups {
  Backups(const ScreenEnvironment& opened, Session& session)
      : screens(opened),
        environment(session.backupEnvironment()),
        service(environment),
        view(screens, environment, service, session.console()) {}

  ScreenEnvironment screens;
  BackupEnvironment environment;
  BackupService service;
  SettingsView view;
};

/// Keeps the outcome of what the screen is asked to do, and waits for it.
template <typename T, typename Ask>
Result<T> outcomeOf(Session& session, Ask ask) {
  std::optional<Result<T>> outcome;
  ask([&outcome](const Result<T>& told) { outcome.emplace(told); });
  static_cast<void>(session.endTurn());
  return outcome ? *std::move(outcome) : Result<T>(Error{"the backup was not carried through"});
}

/// Lists the backups; the sheet is that of the screen.
Result<RestoreSheet> listed(Backups& backups, Session& session) {
  const auto done = outcomeOf<void>(session, [&](auto told) { backups.view.openRestoreSheet(told); });
  if (!done) return done.error();
  return *backups.view.content().restoreSheet;
}

/// The path of the listed backup with this path or name; nothing when there is none.
Result<std::optional<std::string>> listedFile(const RestoreSheet& sheet, const std::string& file, const Texts& texts) {
  std::error_code ignored;
  const std::string path = std::filesystem::absolute(file, ignored).lexically_normal().string();
  std::optional<std::string> named;
  for (const BackupSection& section : sheet.sections) {
    for (const BackupRow& row : section.rows) {
      const std::string& url = row.backup.url;
      if (std::filesystem::path(url).lexically_normal() == path) return std::optional(url);
      if (std::filesystem::path(url).filename() != file) continue;
      if (named) return Error{texts.text("several backups are named '{word}': give the path of one", {{"word", file}})};
      named = url;
    }
  }
  return named;
}

Result<std::string> createBackup(Backups& backups, Session& session, bool isCloud) {
  const auto path = outcomeOf<std::string>(session, [&](auto told) {
    isCloud ? backups.view.createiCloudBackup(told) : backups.view.createLocalBackup(told);
  });
  if (!path) return path.error();
  if (const auto saved = session.save(); !saved) {
    return Error{"the backup was written to " + *path + ", but not its date: " + saved.error().description};
  }
  if (session.json()) return jsonLine(Json::object({{"path", *path}}));
  return messageLine(session.texts().text("Created: {path}", {{"path", *path}}), session);
}

Json backupJson(const BackupInfo& backup) {
  return Json::object({{"path", backup.url},
                       {"createdAt", toJson(backup.createdAt)},
                       {"fileSize", backup.fileSize},
                       {"isCloudBackup", backup.isCloudBackup}});
}

Result<std::string> listBackups(Backups& backups, Session& session) {
  const auto sheet = listed(backups, session);
  if (!sheet) return sheet.error();
  if (!session.json()) return rendered(*sheet, session.terminal(), session.texts());
  Json json = Json::object({{"local", Json::array()}, {"cloud", Json::array()}});
  for (const BackupSection& section : sheet->sections) {
    for (const BackupRow& row : section.rows) json[section.id].push_back(backupJson(row.backup));
  }
  return jsonLine(json);
}

std::string restoredText(const RestoredBackup& restored, Session& session) {
  const Texts& texts = session.texts();
  const auto count = static_cast<int64_t>(restored.medicines);
  std::string text = messageLine(
      restored.settings
          ? texts.counted(count, "Restored {n} medicine and the settings.", "Restored {n} medicines and the settings.")
          : texts.counted(count, "Restored {n} medicine.", "Restored {n} medicines."),
      session);
  if (count > 0) {
    text +=
        messageLine(texts.text("Restored medicines have no reminders yet. 'pilloractl edit REF' plans them."), session);
  }
  return text;
}

Result<std::string> restoreBackup(Backups& backups, Session& session, const std::string& file) {
  const auto sheet = listed(backups, session);
  if (!sheet) return sheet.error();
  const auto found = listedFile(*sheet, file, session.texts());
  if (!found) return found.error();
  std::error_code ignored;
  const std::string path = found->value_or(std::filesystem::absolute(file, ignored).string());
  const auto restored = outcomeOf<RestoredBackup>(session, [&](auto told) { backups.view.restoreBackup(path, told); });
  if (!restored) return restored.error();
  if (const auto saved = session.save(); !saved) return saved.error();
  if (!session.json()) return restoredText(*restored, session);
  return jsonLine(Json::object({{"medicines", restored->medicines}, {"settings", restored->settings}}));
}

Result<std::string> deleteBackup(Backups& backups, Session& session, const std::string& file) {
  const auto sheet = listed(backups, session);
  if (!sheet) return sheet.error();
  const auto found = listedFile(*sheet, file, session.texts());
  if (!found) return found.error();
  if (!*found) return Error{session.texts().text("there is no backup '{word}'", {{"word", file}})};
  // Not the screen's operation, which does not tell why it failed.
  const auto deleted = outcomeOf<void>(session, [&](auto told) { backups.service.deleteBackup(**found, told); });
  if (!deleted) return deleted.error();
  if (session.json()) return jsonLine(Json::object({{"path", **found}}));
  return messageLine(session.texts().text("Deleted: {path}", {{"path", **found}}), session);
}

}  // namespace

Result<Action> backupCommand(const CommandLine& line, Session& session) {
  const std::string& action = *line.action;
  const bool takesFile = action == "restore" || action == "delete";
  if (!takesFile && action != "create" && action != "list") {
    return Error{"unknown word '" + action + "' after 'backup'"};
  }
  if (takesFile != line.file.has_value()) {
    return Error{takesFile ? "'backup " + action + "' takes the name of a file"
                           : "too many words: '" + *line.file + "'"};
  }
  if (takesFile && line.file->empty()) return Error{"'backup " + action + "' takes the name of a file"};
  if (line.isCloud && action != "create") return Error{"--cloud goes with 'backup create' only"};
  return Action([&session, action, file = line.file, isCloud = line.isCloud]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    Backups backups(*screens, session);
    if (action == "create") return createBackup(backups, session, isCloud);
    if (action == "list") return listBackups(backups, session);
    return action == "restore" ? restoreBackup(backups, session, *file) : deleteBackup(backups, session, *file);
  });
}

}  // namespace pillora

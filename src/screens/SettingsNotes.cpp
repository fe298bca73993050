// SPDX-License-Identifier: MIT
#include "screens/MedicineEditing.h"
#include "screens/SettingsView.h"

// What the settings screen tells people so that nobody relies on what Pillora does not do.

namespace pillora {

namespace {

ValueRow note(std::string id, std::string text) {
  return {.id = std::move(id), .label = std::nullopt, .text = std::move(text)};
}

}  // namespace

std::optional<FormSection> SettingsView::unsaved() const {
  const auto& failure = environment_.context.saveFailure();
  if (!failure) return std::nullopt;
  const Texts& texts = environment_.texts;
  ValueRow row = note("unsavedChanges", texts.text("Your changes could not be saved."));
  if (failure->since) {
    const bool in24Hours = settingsShown(settings_).use24HourTime();
    row.text = texts.text("Your changes could not be saved since {time}.",
                          {{"time", texts.mediumDateAndShortTime(*failure->since, in24Hours)}});
  }
  row.detail = texts.text("The reason: {reason}", {{"reason", failure->error.description}});
  row.symbol = "exclamationmark.triangle.fill";
  row.color = "red";
  return FormSection{
      .id = "unsaved",
      .title = texts.text("Not Saved"),
      .footer = texts.text("Pillora keeps them as long as it is open and writes them as soon as it can."),
      .rows = {std::move(row), ButtonRow{.id = "saveAgain", .title = texts.text("Try Again")}}};
}

FormSection SettingsView::notes() const {
  const Texts& texts = environment_.texts;
  const NotificationManager& notifications = environment_.notifications;
  FormSection section{.id = "notes", .title = texts.text("Good to Know")};
  const auto add = [&](std::string id, std::string text) {
    section.rows.push_back(note(std::move(id), std::move(text)));
  };
  if (!notifications.isAuthorized()) {
    add("notificationsOff", texts.text("Notifications are not enabled. Nothing reminds you until they are."));
    if (const auto& error = notifications.authorizationError()) {
      add("notificationError", texts.text("They could not be enabled: {reason}", {{"reason", error->description}}));
      add("notificationHelp", texts.text("Log in to a desktop that shows notifications, or install and start a program "
                                         "that does. Then choose Enable above, beside Notifications."));
    }
  }
  if (reminderService == ReminderService::untilLogout) {
    add("notAtLogin",
        texts.text(
            "Reminders do not start when you log in: after each login nothing reminds you until you open Pillora. "
            "Install Pillora, or let Pillora reminders start with your desktop."));
  } else if (reminderService == ReminderService::never) {
    add("noSession", texts.text("Nothing can remind you here, outside of a desktop session. Open Pillora from your "
                                "desktop."));
  }
  add("plannedAhead",
      texts.text("Saving a medicine plans its next {count} reminders, and each dose taken on Today plans one more. A "
                 "medicine that you neither take nor save runs out of reminders. To plan them anew, open the medicine "
                 "and choose Done or Save.",
                 {{"count", std::to_string(kPlannedReminders)}}));
  add("restored",
      texts.text("Restoring a backup plans no reminders. Open each restored medicine and choose Done or Save."));
  add("notRepeating",
      texts.text("A medicine with Repeating switched off gets no reminders but those that you snooze."));
  add("followUps",
      texts.text("After a reminder another one follows every hour until midnight, also when you have taken "
                 "the dose."));
  add("answers",
      texts.text("The buttons in a notification record nothing. Mark as Taken opens Pillora, where you record "
                 "the dose. Snooze and Skip only close the notification."));
  add("sound", texts.text("Reminders use the sound of your device, whichever Sound is chosen here."));
  add("backups", texts.text("Backups are made only when you create one. They bring back medicines and settings, not "
                            "the dose history."));
  return section;
}

}  // namespace pillora

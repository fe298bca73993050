// SPDX-License-Identifier: MIT
// What the settings screen tells people so that nobody relies on what Pillora does not do.
#include <gtest/gtest.h>

#include <map>

#include "SettingsFixture.h"
#include "doubles/Instants.h"
#include "screens/SettingsView.h"

namespace pillora {
namespace {

class SettingsViewNotes : public testing::Test {
 protected:
  SettingsContent content() const { return view_.content(); }

  SettingsFixture fixture_{at("2025-01-10T10:30:00-05:00")};
  SettingsView view_ = fixture_.makeView();
};

/// Ids of the notes with their texts.
std::map<std::string, std::string> notesOf(const SettingsContent& content) {
  std::map<std::string, std::string> notes;
  for (const FormRow& one : content.notes.rows) {
    const auto& note = std::get<ValueRow>(one);
    notes[note.id] = note.text;
  }
  return notes;
}

TEST_F(SettingsViewNotes, notesTellWhatCanLeaveAPersonUnreminded) {
  EXPECT_EQ(content().notes.title, "Good to Know");
  const auto notes = notesOf(content());
  EXPECT_EQ(notes.at("notificationsOff"), "Notifications are not enabled. Nothing reminds you until they are.");
  EXPECT_EQ(notes.at("plannedAhead"),
            "Saving a medicine plans its next 30 reminders, and each dose taken on Today plans one more. A medicine "
            "that you neither take nor save runs out of reminders. To plan them anew, open the medicine and choose "
            "Done or Save.");
  EXPECT_EQ(notes.at("restored"),
            "Restoring a backup plans no reminders. Open each restored medicine and choose Done or Save.");
  EXPECT_EQ(notes.at("notRepeating"),
            "A medicine with Repeating switched off gets no reminders but those that you snooze.");
  EXPECT_EQ(notes.at("followUps"),
            "After a reminder another one follows every hour until midnight, also when you have taken the dose.");
  EXPECT_EQ(notes.at("answers"),
            "The buttons in a notification record nothing. Mark as Taken opens Pillora, where you record the dose. "
            "Snooze and Skip only close the notification.");
  EXPECT_EQ(notes.at("sound"), "Reminders use the sound of your device, whichever Sound is chosen here.");
  EXPECT_EQ(notes.at("backups"),
            "Backups are made only when you create one. They bring back medicines and settings, not the dose history.");
}

TEST_F(SettingsViewNotes, theNoteOnNotificationsGoesOnceTheyAreEnabled) {
  view_.enableNotifications();
  EXPECT_FALSE(notesOf(content()).contains("notificationsOff"));
}

TEST_F(SettingsViewNotes, withoutANotificationServerTheNotesSayWhy) {
  EXPECT_FALSE(notesOf(content()).contains("notificationError"));
  fixture_.center.grantsPermission = false;
  fixture_.center.permissionError = Error{"no notification server"};
  view_.enableNotifications();
  EXPECT_EQ(notesOf(content()).at("notificationError"), "They could not be enabled: no notification server");
  EXPECT_EQ(
      notesOf(content()).at("notificationHelp"),
      "Log in to a desktop that shows notifications, or install and start a program that does. Then choose Enable "
      "above, beside Notifications.");
  fixture_.center.grantsPermission = true;
  fixture_.center.permissionError.reset();
  view_.enableNotifications();
  EXPECT_FALSE(notesOf(content()).contains("notificationError"));
}

TEST_F(SettingsViewNotes, remindersThatDoNotStartByThemselvesAreTold) {
  for (const char* id : {"notAtLogin", "noSession"}) EXPECT_FALSE(notesOf(content()).contains(id)) << id;
  const auto notes = [&](ReminderService service) {
    view_.reminderService = service;
    return notesOf(content());
  };
  const auto untilLogout = notes(ReminderService::untilLogout);
  EXPECT_EQ(untilLogout.at("notAtLogin"),
            "Reminders do not start when you log in: after each login nothing reminds you until you open Pillora. "
            "Install Pillora, or let Pillora reminders start with your desktop.");
  EXPECT_FALSE(untilLogout.contains("noSession"));
  const auto never = notes(ReminderService::never);
  EXPECT_EQ(never.at("noSession"),
            "Nothing can remind you here, outside of a desktop session. Open Pillora from your desktop.");
  EXPECT_FALSE(never.contains("notAtLogin"));
}

}  // namespace
}  // namespace pillora

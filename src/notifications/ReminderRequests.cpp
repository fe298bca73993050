// SPDX-License-Identifier: MIT
#include "notifications/ReminderRequests.h"

#include <chrono>
#include <string>

#include "schedule/Schedule.h"

namespace pillora {

namespace {

std::string categoryIdentifier(const Medicine& medicine) {
  return std::string(medicine.allowSnooze() ? kReminderCategory : kReminderCategoryNoSnooze);
}

UserInfo reminderUserInfo(const Medicine& medicine) {
  return {{std::string(kMedicineIdKey), medicine.id().text()},
          {"medicineName", medicine.name()},
          {"dosage", medicine.dosage()},
          {"unit", medicine.unit()},
          {"allowSnooze", medicine.allowSnooze()},
          {std::string(kSnoozeDurationKey), medicine.snoozeDurationMinutes()}};
}

/// What a reminder and its follow-ups have in common.
UNNotificationContent baseContent(const Medicine& medicine) {
  UNNotificationContent content;
  content.badge = 1;
  content.userInfo = reminderUserInfo(medicine);
  content.categoryIdentifier = categoryIdentifier(medicine);
  return content;
}

}  // namespace

UNNotificationCategory reminderCategory(const Medicine& medicine, const Texts& texts) {
  UNNotificationCategory category{categoryIdentifier(medicine), {}};
  category.actions.push_back({std::string(kTakenAction), texts.text("Mark as Taken"), true, false});
  if (medicine.allowSnooze()) {
    const auto minutes = std::to_string(medicine.snoozeDurationMinutes());
    const auto title = texts.text("Snooze {minutes} min", {{"minutes", minutes}});
    category.actions.push_back({std::string(kSnoozeAction), title, false, false});
  }
  category.actions.push_back({std::string(kSkipAction), texts.text("Skip"), false, true});
  return category;
}

UNNotificationRequest reminderRequest(const Medicine& medicine, Instant dueTime, const Calendar& calendar,
                                      const Texts& texts) {
  UNNotificationContent content = baseContent(medicine);
  content.title = texts.text("Time for your medicine");
  content.body = texts.text(
      "{name} - {dosage} {unit}",
      {{"name", medicine.name()}, {"dosage", medicine.dosage()}, {"unit", unitText(medicine.unit(), texts)}});
  return {doseIdentifier(medicine.id(), dueTime), std::move(content), minuteTrigger(dueTime, calendar)};
}

UNNotificationRequest followUpRequest(const Medicine& medicine, Instant dueTime, Instant time, int64_t ordinal,
                                      const Calendar& calendar, const Texts& texts) {
  UNNotificationContent content = baseContent(medicine);
  content.title = texts.text("Reminder: {name}", {{"name", medicine.name()}});
  content.body = texts.text("You haven't taken {dosage} {unit} yet",
                            {{"dosage", medicine.dosage()}, {"unit", unitText(medicine.unit(), texts)}});
  content.userInfo.emplace_back("isFollowUp", true);
  content.userInfo.emplace_back("originalTime", dueTime.secondsSince1970());
  const std::string identifier = doseIdentifier(medicine.id(), dueTime) + "-followup-" + std::to_string(ordinal);
  return {identifier, std::move(content), minuteTrigger(time, calendar)};
}

UNCalendarNotificationTrigger minuteTrigger(Instant time, const Calendar& calendar) {
  UNCalendarNotificationTrigger trigger;
  trigger.dateComponents = calendar.components(time);
  trigger.dateComponents.second = 0;
  trigger.calendar = calendar.identifier();
  // At the very end of time there is no room for the offset.
  trigger.wallTime =
      utcWallTime(checkedAdd(time, calendar.utcOffset(time).count(), std::chrono::seconds(1)).value_or(time));
  trigger.wallTime.second = {};
  return trigger;
}

}  // namespace pillora

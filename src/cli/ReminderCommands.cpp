// SPDX-License-Identifier: MIT
#include <algorithm>
#include <tuple>

#include "cli/Commands.h"
#include "cli/Rendering.h"
#include "screens/TodayView.h"
#include "support/Json.h"

namespace pillora {

namespace {

/// What stands in a notification centre.
struct Planned {
  std::vector<UNNotificationRequest> requests;
  std::vector<UNNotificationCategory> categories;
  int64_t badge = 0;
};

auto triggerOrder(const UNNotificationRequest& request) {
  const WallTime& wall = request.trigger.wallTime;
  return std::tie(wall.year, wall.month, wall.day, wall.hour, wall.minute, request.identifier);
}

/// Asks the centre, and waits for its answers where they come at the end of a turn.
Result<Planned> planned(UNUserNotificationCenter& center, Session& session) {
  auto found = std::make_shared<Planned>();
  center.getPendingNotificationRequests([found](auto requests) { found->requests = std::move(requests); });
  center.getNotificationCategories([found](auto categories) { found->categories = std::move(categories); });
  center.getBadgeCount([found](int64_t badge) { found->badge = badge; });
  if (const auto answered = session.endTurn(); !answered) return answered.error();
  std::ranges::sort(found->requests, {}, triggerOrder);
  return *found;
}

Json userInfoJson(const UserInfo& userInfo) {
  Json object = Json::object();
  for (const auto& [key, value] : userInfo) {
    object[key] = std::visit([](const auto& plain) { return Json(plain); }, value);
  }
  return object;
}

/// Date and time in the calendar that planned the reminder.
Json triggerJson(const UNCalendarNotificationTrigger& trigger) {
  const DateComponents& date = trigger.dateComponents;
  return Json::object({{"year", date.year},
                       {"month", date.month},
                       {"day", date.day},
                       {"hour", date.hour},
                       {"minute", date.minute},
                       {"calendar", trigger.calendar},
                       {"repeats", trigger.repeats},
                       {"era", toJson(date.era)},
                       {"isLeapMonth", date.isLeapMonth}});
}

Json requestJson(const UNNotificationRequest& request) {
  const UNNotificationContent& content = request.content;
  return Json::object({{"identifier", request.identifier},
                       {"title", content.title},
                       {"body", content.body},
                       {"sound", content.sound},
                       {"badge", toJson(content.badge)},
                       {"categoryIdentifier", content.categoryIdentifier},
                       {"userInfo", userInfoJson(content.userInfo)},
                       {"trigger", triggerJson(request.trigger)}});
}

Json categoryJson(const UNNotificationCategory& category) {
  Json actions = Json::array();
  for (const UNNotificationAction& action : category.actions) {
    Json options = Json::array();
    if (action.foreground) options.push_back("foreground");
    if (action.destructive) options.push_back("destructive");
    actions.push_back(
        Json::object({{"identifier", action.identifier}, {"title", action.title}, {"options", std::move(options)}}));
  }
  return Json::object({{"identifier", category.identifier}, {"actions", std::move(actions)}});
}

std::string plannedJson(const Planned& found) {
  Json requests = Json::array(), categories = Json::array();
  for (const auto& request : found.requests) requests.push_back(requestJson(request));
  for (const auto& category : found.categories) categories.push_back(categoryJson(category));
  return jsonLine(
      Json::object({{"requests", std::move(requests)}, {"categories", std::move(categories)}, {"badge", found.badge}}));
}

/// Under the dates of their days. A wall time that is no time in the zone in use stands under its plain figures.
std::string plannedText(const Planned& found, Session& session) {
  const Texts& texts = session.texts();
  if (found.requests.empty()) return messageLine(texts.text("No reminders are planned."), session);
  const bool in24Hours = session.use24HourTime();
  std::vector<ReminderDay> days;
  for (const auto& request : found.requests) {
    const auto time = session.instantOf(request.trigger.wallTime);
    std::string title = time ? texts.mediumDate(*time) : texts.text("Without a date");
    if (days.empty() || days.back().title != title) days.push_back({std::move(title), {}});
    days.back().rows.push_back(
        {time ? texts.shortTime(*time, in24Hours) : "", request.content.title, request.content.body});
  }
  return rendered(days, session.terminal());
}

}  // namespace

Result<Action> remindersCommand(const CommandLine& line, Session& session) {
  return Action([&session, ref = line.ref]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    std::string prefix;
    if (ref) {
      const auto medicine = session.medicine(*ref);
      if (!medicine) return medicine.error();
      prefix = (*medicine)->id().text();
    }
    const auto center = session.notificationCenter();
    if (!center) return center.error();
    auto found = planned(**center, session);
    if (!found) return found.error();
    std::erase_if(found->requests, [&](const auto& request) { return !request.identifier.starts_with(prefix); });
    return session.json() ? plannedJson(*found) : plannedText(*found, session);
  });
}

Result<Action> snoozeCommand(const CommandLine& line, Session& session) {
  return Action([&session, ref = *line.ref]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    const auto medicine = session.medicine(ref);
    if (!medicine) return medicine.error();
    if (!(*medicine)->allowSnooze()) {
      return Error{session.texts().text("{name} does not allow snooze", {{"name", (*medicine)->name()}})};
    }
    const auto reminder = TodayView(*screens).snooze((*medicine)->id());
    if (!reminder) return reminder.error();
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"reminder", toJson(*reminder)}}));
    const Texts& texts = screens->texts;
    const std::string& name = (*medicine)->name();
    return messageLine(*reminder ? texts.counted((*medicine)->snoozeDurationMinutes(), "Snoozed for {n} minute: {name}",
                                                 "Snoozed for {n} minutes: {name}", {{"name", name}})
                                 : texts.text("No reminder could be planned: {name}", {{"name", name}}),
                       session);
  });
}

}  // namespace pillora

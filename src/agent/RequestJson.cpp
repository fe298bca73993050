// SPDX-License-Identifier: MIT
#include "agent/RequestJson.h"

#include <cmath>

#include "support/Json.h"

namespace pillora {

namespace {

constexpr size_t kMostBytes = 64 * 1024;

Json json(const UserInfo& userInfo) {
  Json list = Json::array();
  for (const auto& [key, value] : userInfo) {
    list.push_back({key, std::visit([](const auto& plain) { return Json(plain); }, value)});
  }
  return list;
}

Json json(const UNCalendarNotificationTrigger& trigger) {
  const DateComponents& date = trigger.dateComponents;
  const WallTime& wall = trigger.wallTime;
  return {{"era", toJson(date.era)},
          {"date", {date.year, date.month, date.isLeapMonth ? 1 : 0, date.day, date.hour, date.minute, date.second}},
          {"calendar", trigger.calendar},
          {"wall", {wall.year, wall.month, wall.day, wall.hour, wall.minute}},
          {"repeats", trigger.repeats}};
}

/// A NUL would end the text on the bus, and no double of ours is infinite.
bool isSound(const Json& value) {
  if (value.is_string()) return value.get_ref<const std::string&>().find('\0') == std::string::npos;
  if (value.is_number_float()) return std::isfinite(value.get<double>());
  if (!value.is_structured()) return true;
  for (const Json& each : value) {
    if (!isSound(each)) return false;
  }
  return true;
}

Result<std::string> written(const Json& value) {
  if (!isSound(value)) return Error{"a text holds a NUL character or a number is not finite"};
  try {
    std::string text = value.dump();
    if (text.size() > kMostBytes) return Error{"more than 64 KiB of text"};
    return text;
  } catch (const Json::exception&) {
    return Error{"a text is not valid UTF-8"};
  }
}

UserInfoValue userInfoValue(const Json& value) {
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number_float()) return value.get<double>();
  if (value.is_number()) return value.get<int64_t>();
  return value.get<std::string>();
}

UNCalendarNotificationTrigger trigger(const Json& value) {
  UNCalendarNotificationTrigger trigger;
  DateComponents& date = trigger.dateComponents;
  if (!value.at("era").is_null()) date.era = value.at("era").get<int64_t>();
  const auto fields = value.at("date").get<std::array<int64_t, 7>>();
  date.year = fields[0];
  date.month = fields[1];
  date.isLeapMonth = fields[2] != 0;
  date.day = fields[3];
  date.hour = fields[4];
  date.minute = fields[5];
  date.second = fields[6];
  trigger.calendar = value.at("calendar").get<std::string>();
  const Json& wall = value.at("wall");
  trigger.wallTime = {wall.at(0).get<int64_t>(),  wall.at(1).get<unsigned>(), wall.at(2).get<unsigned>(),
                      wall.at(3).get<unsigned>(), wall.at(4).get<unsigned>(), {}};
  trigger.repeats = value.at("repeats").get<bool>();
  return trigger;
}

/// Calls `read` on the parsed text; what the file holds in place of our own JSON becomes an error.
template <typename T, typename Read>
Result<T> readBack(std::string_view text, Read read) {
  const auto document = parseJson(text);
  if (!document) return document.error();
  try {
    return read(*document);
  } catch (const Json::exception& failure) {
    return Error{std::string("unreadable stored value: ") + failure.what()};
  }
}

}  // namespace

Result<std::string> storedText(const UNNotificationRequest& request) {
  const UNNotificationContent& content = request.content;
  return written({{"identifier", request.identifier},
                  {"title", content.title},
                  {"body", content.body},
                  {"sound", content.sound},
                  {"badge", toJson(content.badge)},
                  {"userInfo", json(content.userInfo)},
                  {"category", content.categoryIdentifier},
                  {"trigger", json(request.trigger)}});
}

Result<UNNotificationRequest> storedRequest(std::string_view text) {
  return readBack<UNNotificationRequest>(text, [](const Json& value) {
    UNNotificationRequest request;
    request.identifier = value.at("identifier").get<std::string>();
    UNNotificationContent& content = request.content;
    content.title = value.at("title").get<std::string>();
    content.body = value.at("body").get<std::string>();
    content.sound = value.at("sound").get<std::string>();
    if (!value.at("badge").is_null()) content.badge = value.at("badge").get<int64_t>();
    for (const Json& entry : value.at("userInfo")) {
      content.userInfo.emplace_back(entry.at(0).get<std::string>(), userInfoValue(entry.at(1)));
    }
    content.categoryIdentifier = value.at("category").get<std::string>();
    request.trigger = trigger(value.at("trigger"));
    return request;
  });
}

Result<std::string> storedText(const std::vector<UNNotificationCategory>& categories) {
  Json list = Json::array();
  for (const UNNotificationCategory& category : categories) {
    Json actions = Json::array();
    for (const UNNotificationAction& action : category.actions) {
      actions.push_back({action.identifier, action.title, action.foreground, action.destructive});
    }
    list.push_back({{"identifier", category.identifier}, {"actions", actions}});
  }
  return written(list);
}

Result<std::vector<UNNotificationCategory>> storedCategories(std::string_view text) {
  return readBack<std::vector<UNNotificationCategory>>(text, [](const Json& value) {
    std::vector<UNNotificationCategory> categories;
    for (const Json& each : value) {
      UNNotificationCategory category{each.at("identifier").get<std::string>(), {}};
      for (const Json& action : each.at("actions")) {
        category.actions.push_back({action.at(0).get<std::string>(), action.at(1).get<std::string>(),
                                    action.at(2).get<bool>(), action.at(3).get<bool>()});
      }
      categories.push_back(std::move(category));
    }
    return categories;
  });
}

}  // namespace pillora

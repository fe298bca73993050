// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "agent/Operation.h"

namespace pillora {

inline const std::string kAspirin = "6F9619FF-8B86-D011-B42D-00CF4FC964FF";
inline const std::string kIbuprofen = "00000000-0000-4000-8000-000000000001";

/// A request for the local minute `minute`, "2025-01-10T08:00".
inline UNNotificationRequest request(const std::string& identifier, std::string_view minute) {
  const auto parsed = parseTime(minute);
  if (!parsed || parsed->offset) {
    std::cerr << "not a local time: " << minute << '\n';
    std::abort();
  }
  UNNotificationRequest request;
  request.identifier = identifier;
  request.content.title = "Time for your medicine";
  request.content.body = "Aspirin - 1 tablet";
  request.content.badge = 1;
  request.content.userInfo = {{"medicineId", identifier.substr(0, 36)}, {"allowSnooze", true}, {"snoozeDuration", 10}};
  request.content.categoryIdentifier = "MEDICINE_REMINDER";
  const WallTime& wall = parsed->wall;
  request.trigger.dateComponents = {{}, wall.year, wall.month, false, wall.day, wall.hour, wall.minute, 0};
  request.trigger.calendar = "gregorian";
  request.trigger.wallTime = wall;
  return request;
}

inline Operation adding(const std::string& identifier, std::string_view minute) {
  return AddRequest{request(identifier, minute)};
}

inline UNNotificationCategory reminderCategory() {
  return {"MEDICINE_REMINDER",
          {{"TAKEN_ACTION", "Mark as Taken", true, false},
           {"SNOOZE_ACTION", "Snooze 10 min", false, false},
           {"SKIP_ACTION", "Skip", false, true}}};
}

inline std::vector<std::string> identifiersOf(const std::vector<UNNotificationRequest>& requests) {
  std::vector<std::string> identifiers;
  for (const auto& each : requests) identifiers.push_back(each.identifier);
  return identifiers;
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <cerrno>

#include "agent/Wire.h"

namespace pillora {

void WireWriter::put(char type, const void* value) {
  if (status_ >= 0) status_ = sd_bus_message_append_basic(message_, type, value);
}

void WireWriter::text(const std::string& value) {
  // The bus ends a text at a NUL; half a text is worse than none.
  if (value.find('\0') != std::string::npos && status_ >= 0) status_ = -EINVAL;
  put('s', value.c_str());
}

void WireWriter::byte(unsigned value) {
  const auto narrow = static_cast<uint8_t>(value);
  if (value != narrow && status_ >= 0) status_ = -ERANGE;
  put('y', &narrow);
}

void WireWriter::flag(bool value) {
  const int wide = value ? 1 : 0;
  put('b', &wide);
}

void WireWriter::open(char type, const char* contents) {
  if (status_ >= 0) status_ = sd_bus_message_open_container(message_, type, contents);
}

void WireWriter::close() {
  if (status_ >= 0) status_ = sd_bus_message_close_container(message_);
}

void WireWriter::texts(const std::vector<std::string>& values) {
  open('a', "s");
  for (const std::string& value : values) text(value);
  close();
}

void WireWriter::optionalNumber(const std::optional<int64_t>& value) {
  open('a', "x");
  if (value) number(*value);
  close();
}

void WireWriter::request(const UNNotificationRequest& request) {
  const UNNotificationContent& content = request.content;
  open('r', "ssssaxa(sv)s(axxxbxxxs)(xyyyy)b");
  for (const std::string& each : {request.identifier, content.title, content.body, content.sound}) text(each);
  optionalNumber(content.badge);
  open('a', "(sv)");
  for (const auto& [key, value] : content.userInfo) {
    open('r', "sv");
    text(key);
    static constexpr const char* kTypes[] = {"s", "b", "x", "d"};
    open('v', kTypes[value.index()]);
    if (const auto* plain = std::get_if<std::string>(&value)) text(*plain);
    if (const auto* plain = std::get_if<bool>(&value)) flag(*plain);
    if (const auto* plain = std::get_if<int64_t>(&value)) number(*plain);
    if (const auto* plain = std::get_if<double>(&value)) real(*plain);
    close();
    close();
  }
  close();
  text(content.categoryIdentifier);
  const DateComponents& date = request.trigger.dateComponents;
  open('r', "axxxbxxxs");
  optionalNumber(date.era);
  number(date.year);
  number(date.month);
  flag(date.isLeapMonth);
  for (const int64_t each : {date.day, date.hour, date.minute}) number(each);
  text(request.trigger.calendar);
  close();
  const WallTime& wall = request.trigger.wallTime;
  open('r', "xyyyy");
  number(wall.year);
  for (const unsigned each : {wall.month, wall.day, wall.hour, wall.minute}) byte(each);
  close();
  flag(request.trigger.repeats);
  close();
}

void WireWriter::requests(const std::vector<UNNotificationRequest>& requests) {
  open('a', kRequestType);
  for (const UNNotificationRequest& each : requests) request(each);
  close();
}

void WireWriter::category(const UNNotificationCategory& category) {
  open('r', "sa(ssbb)");
  text(category.identifier);
  open('a', "(ssbb)");
  for (const UNNotificationAction& action : category.actions) {
    open('r', "ssbb");
    text(action.identifier);
    text(action.title);
    flag(action.foreground);
    flag(action.destructive);
    close();
  }
  close();
  close();
}

void WireWriter::categories(const std::vector<UNNotificationCategory>& categories) {
  open('a', kCategoryType);
  for (const UNNotificationCategory& each : categories) category(each);
  close();
}

void WireWriter::task(const BGProcessingTaskRequest& task) {
  open('r', "saxbb");
  text(task.identifier);
  const auto& earliest = task.earliestBeginDate;
  optionalNumber(earliest ? std::optional(earliest->microseconds()) : std::nullopt);
  flag(task.requiresNetworkConnectivity);
  flag(task.requiresExternalPower);
  close();
}

void WireWriter::operations(const std::vector<Operation>& operations) {
  const auto named = [this](const char* name, const char* type, auto write) {
    open('r', "sv");
    text(name);
    open('v', type);
    write();
    close();
    close();
  };
  open('a', "(sv)");
  for (const Operation& operation : operations) {
    if (const auto* add = std::get_if<AddRequest>(&operation)) {
      named("add", kRequestType, [&] { request(add->request); });
    } else if (const auto* remove = std::get_if<RemoveRequests>(&operation)) {
      named("remove", "as", [&] { texts(remove->identifiers); });
    } else if (const auto* set = std::get_if<SetCategories>(&operation)) {
      named("categories", "a(sa(ssbb))", [&] { categories(set->categories); });
    } else if (const auto* badge = std::get_if<SetBadge>(&operation)) {
      named("badge", "x", [&] { number(badge->count); });
    } else {
      named("submit", kTaskType, [&] { task(std::get<SubmitTask>(operation).request); });
    }
  }
  close();
}

}  // namespace pillora

// SPDX-License-Identifier: MIT
#include <cerrno>

#include "agent/Wire.h"

namespace pillora {

void WireReader::take(char type, void* value) {
  if (status_ < 0) return;
  const int taken = sd_bus_message_read_basic(message_, type, value);
  status_ = taken == 0 ? -ENXIO : taken;
}

std::string WireReader::text() {
  const char* value = "";
  take('s', &value);
  return status_ < 0 ? "" : value;
}

int64_t WireReader::number() {
  int64_t value = 0;
  take('x', &value);
  return value;
}

uint32_t WireReader::word() {
  uint32_t value = 0;
  take('u', &value);
  return value;
}

unsigned WireReader::byte() {
  uint8_t value = 0;
  take('y', &value);
  return value;
}

bool WireReader::flag() {
  int value = 0;
  take('b', &value);
  return value != 0;
}

void WireReader::enter(char type, const char* contents) {
  if (status_ < 0) return;
  const int entered = sd_bus_message_enter_container(message_, type, contents);
  status_ = entered == 0 ? -ENXIO : entered;
}

void WireReader::leave() {
  if (status_ >= 0) status_ = sd_bus_message_exit_container(message_);
}

bool WireReader::more() {
  if (status_ < 0) return false;
  const int atEnd = sd_bus_message_at_end(message_, 0);
  if (atEnd < 0) status_ = atEnd;
  return atEnd == 0;
}

std::vector<std::string> WireReader::texts() {
  std::vector<std::string> values;
  enter('a', "s");
  while (more()) values.push_back(text());
  leave();
  return values;
}

std::optional<int64_t> WireReader::optionalNumber() {
  std::optional<int64_t> value;
  enter('a', "x");
  while (more()) value = number();
  leave();
  return value;
}

UserInfoValue WireReader::userInfoValue() {
  char type = 0;
  const char* contents = nullptr;
  if (status_ >= 0) status_ = sd_bus_message_peek_type(message_, &type, &contents);
  if (status_ < 0 || type != 'v' || contents == nullptr) {
    status_ = -EBADMSG;
    return {};
  }
  const std::string held = contents;
  UserInfoValue value;
  enter('v', held.c_str());
  if (held == "s") {
    value = text();
  } else if (held == "b") {
    value = flag();
  } else if (held == "x") {
    value = number();
  } else if (held == "d") {
    double real = 0;
    take('d', &real);
    value = real;
  } else {
    status_ = -EBADMSG;
  }
  leave();
  return value;
}

UNNotificationRequest WireReader::request() {
  UNNotificationRequest request;
  UNNotificationContent& content = request.content;
  enter('r', "ssssaxa(sv)s(axxxbxxxs)(xyyyy)b");
  request.identifier = text();
  content.title = text();
  content.body = text();
  content.sound = text();
  content.badge = optionalNumber();
  enter('a', "(sv)");
  while (more()) {
    enter('r', "sv");
    std::string key = text();
    content.userInfo.emplace_back(std::move(key), userInfoValue());
    leave();
  }
  leave();
  content.categoryIdentifier = text();
  DateComponents& date = request.trigger.dateComponents;
  enter('r', "axxxbxxxs");
  date.era = optionalNumber();
  date.year = number();
  date.month = number();
  date.isLeapMonth = flag();
  date.day = number();
  date.hour = number();
  date.minute = number();
  request.trigger.calendar = text();
  leave();
  WallTime& wall = request.trigger.wallTime;
  enter('r', "xyyyy");
  wall.year = number();
  wall.month = byte();
  wall.day = byte();
  wall.hour = byte();
  wall.minute = byte();
  leave();
  request.trigger.repeats = flag();
  leave();
  return request;
}

std::vector<UNNotificationRequest> WireReader::requests() {
  std::vector<UNNotificationRequest> requests;
  enter('a', kRequestType);
  while (more()) requests.push_back(request());
  leave();
  return requests;
}

UNNotificationCategory WireReader::category() {
  UNNotificationCategory category;
  enter('r', "sa(ssbb)");
  category.identifier = text();
  enter('a', "(ssbb)");
  while (more()) {
    UNNotificationAction action;
    enter('r', "ssbb");
    action.identifier = text();
    action.title = text();
    action.foreground = flag();
    action.destructive = flag();
    leave();
    category.actions.push_back(std::move(action));
  }
  leave();
  leave();
  return category;
}

std::vector<UNNotificationCategory> WireReader::categories() {
  std::vector<UNNotificationCategory> categories;
  enter('a', kCategoryType);
  while (more()) categories.push_back(category());
  leave();
  return categories;
}

BGProcessingTaskRequest WireReader::task() {
  BGProcessingTaskRequest task;
  enter('r', "saxbb");
  task.identifier = text();
  if (const auto earliest = optionalNumber()) task.earliestBeginDate = Instant(Instant::Duration(*earliest));
  task.requiresNetworkConnectivity = flag();
  task.requiresExternalPower = flag();
  leave();
  return task;
}

Operation WireReader::operation() {
  const std::string name = text();
  const auto held = [this](const char* type, auto read) -> Operation {
    enter('v', type);
    Operation operation = read();
    leave();
    return operation;
  };
  if (name == "add") return held(kRequestType, [this]() -> Operation { return AddRequest{request()}; });
  if (name == "remove") return held("as", [this]() -> Operation { return RemoveRequests{texts()}; });
  if (name == "categories") return held("a(sa(ssbb))", [this]() -> Operation { return SetCategories{categories()}; });
  if (name == "badge") return held("x", [this]() -> Operation { return SetBadge{number()}; });
  if (name == "submit") return held(kTaskType, [this]() -> Operation { return SubmitTask{task()}; });
  if (status_ >= 0) status_ = -EBADMSG;
  return SetBadge{};
}

std::vector<Operation> WireReader::operations() {
  std::vector<Operation> operations;
  enter('a', "(sv)");
  while (more()) {
    enter('r', "sv");
    operations.push_back(operation());
    leave();
  }
  leave();
  return operations;
}

}  // namespace pillora

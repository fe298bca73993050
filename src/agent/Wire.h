// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

#include "agent/Operation.h"
#include "support/Result.h"

namespace pillora {

// How values travel on the bus. A value that may be absent is an array of none or one.

/// identifier, title, body, sound, badge, user info, category, (era, year, month, leap month, day, hour, minute,
/// calendar), Gregorian (year, month, day, hour, minute), repeats
inline constexpr const char* kRequestType = "(ssssaxa(sv)s(axxxbxxxs)(xyyyy)b)";
/// identifier, actions: (identifier, title, foreground, destructive)
inline constexpr const char* kCategoryType = "(sa(ssbb))";
/// identifier, earliest begin in microseconds since 1970, requires network, requires external power
inline constexpr const char* kTaskType = "(saxbb)";

/// Writes values into a message. After the first failure, for instance a text that is no valid UTF-8, it does nothing.
class WireWriter {
 public:
  explicit WireWriter(sd_bus_message* message) : message_(message) {}

  int status() const { return status_; }

  void text(const std::string& value);
  void number(int64_t value) { put('x', &value); }
  void word(uint32_t value) { put('u', &value); }
  void byte(unsigned value);
  void real(double value) { put('d', &value); }
  void flag(bool value);
  void open(char type, const char* contents);
  void close();

  void texts(const std::vector<std::string>& values);
  void optionalNumber(const std::optional<int64_t>& value);
  void request(const UNNotificationRequest& request);
  void requests(const std::vector<UNNotificationRequest>& requests);
  void category(const UNNotificationCategory& category);
  void categories(const std::vector<UNNotificationCategory>& categories);
  void task(const BGProcessingTaskRequest& task);
  /// An array of ("add" | "remove" | "categories" | "badge" | "submit", variant).
  void operations(const std::vector<Operation>& operations);

 private:
  void put(char type, const void* value);

  sd_bus_message* message_;
  int status_ = 0;
};

/// Reads values out of a message from whomever. After the first failure, such as a wrong type, it yields nothing more
/// and status() is negative.
class WireReader {
 public:
  explicit WireReader(sd_bus_message* message) : message_(message) {}

  int status() const { return status_; }

  std::string text();
  int64_t number();
  uint32_t word();
  unsigned byte();
  bool flag();
  void enter(char type, const char* contents);
  void leave();
  /// Whether the array entered has another element.
  bool more();

  std::vector<std::string> texts();
  std::optional<int64_t> optionalNumber();
  UNNotificationRequest request();
  std::vector<UNNotificationRequest> requests();
  UNNotificationCategory category();
  std::vector<UNNotificationCategory> categories();
  BGProcessingTaskRequest task();
  std::vector<Operation> operations();

 private:
  void take(char type, void* value);
  UserInfoValue userInfoValue();
  Operation operation();

  sd_bus_message* message_;
  int status_ = 0;
};

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/BGTaskScheduler.h"
#include "platform/UNUserNotificationCenter.h"

namespace pillora {

// What a client may change. The changes of one turn form a batch, which is applied in its order in one transaction.

struct AddRequest {
  UNNotificationRequest request;
};
struct RemoveRequests {
  std::vector<std::string> identifiers;
};
struct SetCategories {
  std::vector<UNNotificationCategory> categories;
};
struct SetBadge {
  int64_t count = 0;
};
struct SubmitTask {
  BGProcessingTaskRequest request;
};

using Operation = std::variant<AddRequest, RemoveRequests, SetCategories, SetBadge, SubmitTask>;

/// One entry per operation: why it was refused, or nothing.
using OperationErrors = std::vector<std::optional<Error>>;

}  // namespace pillora

// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/UNUserNotificationCenter.h"

namespace pillora {

// How requests and categories lie in the agent's file. What is stored is read back equal.

/// Refuses texts that are no valid UTF-8 or hold a NUL, numbers that are not finite and requests above 64 KiB.
Result<std::string> storedText(const UNNotificationRequest& request);
Result<UNNotificationRequest> storedRequest(std::string_view text);

Result<std::string> storedText(const std::vector<UNNotificationCategory>& categories);
Result<std::vector<UNNotificationCategory>> storedCategories(std::string_view text);

}  // namespace pillora

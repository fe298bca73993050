// SPDX-License-Identifier: MIT
#include "notifications/NotificationManager.h"
#include "notifications/ReminderRequests.h"

namespace pillora {

namespace {

/// Posts an answer together with the medicine's identity. Without one nobody could act on it.
void post(const BroadcastCentre& broadcasts, std::string_view name, const UserInfo& answered) {
  const auto* medicineId = entryOf<std::string>(answered, kMedicineIdKey);
  if (medicineId == nullptr) return;
  broadcasts.post(name, {{std::string(kMedicineIdKey), *medicineId}});
}

void postSnoozed(const BroadcastCentre& broadcasts, const UserInfo& answered) {
  const auto* medicineId = entryOf<std::string>(answered, kMedicineIdKey);
  const auto* minutes = entryOf<int64_t>(answered, kSnoozeDurationKey);
  if (medicineId == nullptr || minutes == nullptr) return;
  broadcasts.post(kMedicineSnoozed,
                  {{std::string(kMedicineIdKey), *medicineId}, {std::string(kSnoozeDurationKey), *minutes}});
}

}  // namespace

void NotificationManager::willPresent(const UNNotificationRequest&, const std::function<void(unsigned)>& completion) {
  completion(un_options::kBanner | un_options::kSound | un_options::kBadge);
}

// Deliberate: an answer is broadcast and changes no record. A dose is logged on the app's own screens alone.
void NotificationManager::didReceive(const UNNotificationResponse& response, const std::function<void()>& completion) {
  const UserInfo& answered = response.request.content.userInfo;
  const std::string& action = response.actionIdentifier;
  if (action == kTakenAction) {
    post(environment_.broadcasts, kMedicineTaken, answered);
  } else if (action == kSnoozeAction) {
    postSnoozed(environment_.broadcasts, answered);
  } else if (action == kSkipAction) {
    post(environment_.broadcasts, kMedicineSkipped, answered);
  }
  completion();
}

}  // namespace pillora
